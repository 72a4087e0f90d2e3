import { heightRange, type CloudInfo } from '../data/info';
import type { Proportions } from '../data/Proportions';
import type { Legend } from '../paint/legend';
import { greyColor, heightColor } from '../colors/colors';
import { boxSize } from '../math/Box';
import { boxToDrawn, isStretched } from '../math/stretch';
import { plainGrain, type Grain } from '../tiles/TileNode';
import type { App } from './App';
import { budgets, type ColorBy, type State } from './State';
import type { TileSource } from './Stage';

/** What a page shows of a cloud whose link says nothing. */
export function firstState(info: CloudInfo, aspect: number): State {
    const isPhone = matchMedia('(pointer: coarse)').matches && Math.min(screen.width, screen.height) < 800;
    const budget = info.budget ?? (isPhone ? budgets.phone : budgets.desktop);
    return {
        camera: { target: [0, 0, 0], distance: Math.max(1, aspect), azimuth: 215, elevation: 35, parallel: false },
        theme: 'dark',
        background: null,
        color: info.colored ? 'file' : 'height',
        pointSize: 1,
        shading: true,
        budget,
        ground: false,
        clip: null,
        marks: [],
        polygon: [],
        corridor: null,
        outline: null,
    };
}

/** Of a profile's corridor, as drawn: one and a half times what lies between points spread evenly over the plan. */
export function leastWidth(app: App): number {
    const [x, y] = boxSize(app.drawnBox(app.bounds()));
    return Math.max(1e-3, 1.5 * Math.sqrt((x * y) / Math.max(1, app.info.points)));
}

/** How tiles of this cloud are drawn. */
export function grainOf(info: CloudInfo, { stretch }: Proportions): Grain {
    if (!isStretched(stretch) || info.bounds === null) return plainGrain;
    const bounds = boxToDrawn(info.bounds, stretch);
    const [x, y] = boxSize(bounds);
    const slopes = 1.25; // points lie further apart there, and in one direction than in the other
    return { stretch, bounds, spacing: slopes * Math.sqrt((x * y) / Math.max(1, info.points)) };
}

/** Ways of colouring that this cloud has. */
export function colorsOf(info: CloudInfo): ColorBy[] {
    return [...(info.colored ? (['file'] as const) : []), 'height', ...(info.attributes ?? [])];
}

/** The tiles that are to be shown; until a job has made others, those that are there. */
export function sourceOf({ info, state, ground, colors }: App): TileSource {
    const byAttribute = state.color !== 'file' && state.color !== 'height' && colors?.by === state.color;
    return {
        version: state.ground && ground !== null ? ground.version : info.version,
        color: byAttribute ? colors.by : null,
    };
}

/** Are the points drawn by height? Also while the colours that are wanted are still being made. */
export function isByHeight({ info, state, colors }: App): boolean {
    if (state.color === 'file') return !info.colored;
    return state.color === 'height' || (colors?.by !== state.color && !info.colored);
}

export function legendOf(app: App): Legend | null {
    const { info, state, colors } = app;
    if (isByHeight(app)) {
        const unit = info.unit.height;
        return { kind: 'ramp', title: unit ? `Height, ${unit}` : 'Height', ...heightRange(info), color: heightColor };
    }
    if (state.color === 'file' || colors?.by !== state.color) return null;
    if (colors.by === 'intensity')
        return { kind: 'ramp', title: 'Intensity', min: colors.min ?? 0, max: colors.max ?? 1, color: greyColor };
    const title = colors.by === 'class' ? 'Class' : 'Return';
    return { kind: 'list', title, entries: colors.legend, counted: !state.ground };
}
