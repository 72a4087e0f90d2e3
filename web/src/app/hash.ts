import type { Box } from '../math/Box';
import type { Vec3 } from '../math/vec3';
import { markKinds, type Mark, type MarkKind } from '../tools/marks';
import { toolKinds } from '../tools/tools';
import type { Camera } from '../view/Camera';
import { budgets, colorWays, pointSizes, type ColorBy, type Corridor, type State } from './State';

/** The state as it stands behind the # of the address: numbers in full, so that the same link is the same picture. */
export function formatHash(state: State): string {
    const { camera } = state;
    const parts: string[] = [
        `view=${[...camera.target, camera.distance, camera.azimuth, camera.elevation].join(',')}`,
        `projection=${camera.parallel ? 'parallel' : 'perspective'}`,
        `theme=${state.theme}`,
        `color=${state.color}`,
        `size=${state.pointSize}`,
        `shading=${state.shading ? 1 : 0}`,
        `budget=${state.budget}`,
    ];
    if (state.background !== null) parts.push(`background=${state.background.slice(1)}`);
    if (state.ground) parts.push('ground=1');
    if (state.clip !== null) parts.push(`clip=${[...state.clip.min, ...state.clip.max].join(',')}`);
    if (state.outline !== null) parts.push(`outline=${state.outline}`);
    if (state.corridor !== null) {
        const { from, to, width } = state.corridor;
        parts.push(`profile=${[...from, ...to, width].join(',')}`);
    }
    if (state.polygon.length > 0) parts.push(`polygon=${formatPlaces(state.polygon)}`);
    for (const mark of state.marks)
        parts.push(`mark=${mark.kind}:${mark.indices.join(',')}:${formatPlaces(mark.places)}`);
    return `#${parts.join('&')}`;
}

/** What of a hash is understood; the rest is left as it was. */
export function parseHash(hash: string): Partial<State> {
    const values = new URLSearchParams(hash.replace(/^#/, ''));
    const all: { [K in keyof State]: State[K] | undefined } = {
        camera: parseCamera(values.get('view'), values.get('projection')),
        theme: oneOf(['dark', 'light'] as const, values.get('theme')),
        background: parseBackground(values.get('background')),
        color: oneOf<ColorBy>(colorWays, values.get('color')),
        pointSize: parseIn(values.get('size'), pointSizes.min, pointSizes.max),
        shading: parseFlag(values.get('shading')),
        budget: parseIn(values.get('budget'), budgets.min, budgets.max),
        ground: parseFlag(values.get('ground')),
        clip: parseClip(values.get('clip')),
        marks: values.getAll('mark').map(parseMark).filter((mark) => mark !== undefined),
        polygon: parsePolygon(values.get('polygon') ?? ''),
        corridor: parseCorridor(values.get('profile')),
        outline: parseOutline(values.get('outline')),
    };
    return Object.fromEntries(Object.entries(all).filter(([, value]) => value !== undefined));
}

function parseNumbers(text: string | null, count: number): number[] | undefined {
    if (text === null || text === '') return undefined;
    const numbers = text.split(',').map(Number);
    return numbers.length === count && numbers.every(Number.isFinite) ? numbers : undefined;
}

function parseCamera(text: string | null, projection: string | null): Camera | undefined {
    const n = parseNumbers(text, 6);
    if (n === undefined || !(n[3] > 0) || Math.abs(n[5]) > 90) return undefined;
    return {
        target: [n[0], n[1], n[2]],
        distance: n[3],
        azimuth: n[4],
        elevation: n[5],
        parallel: projection === 'parallel',
    };
}

function parseClip(text: string | null): Box | undefined {
    const n = parseNumbers(text, 6);
    if (n === undefined || [0, 1, 2].some((k) => n[k] > n[k + 3])) return undefined;
    return { min: [n[0], n[1], n[2]], max: [n[3], n[4], n[5]] };
}

function parseCorridor(text: string | null): Corridor | undefined {
    const n = parseNumbers(text, 7);
    if (n === undefined || !(n[6] > 0) || (n[0] === n[3] && n[1] === n[4])) return undefined;
    return { from: [n[0], n[1], n[2]], to: [n[3], n[4], n[5]], width: n[6] };
}

function parseOutline(text: string | null): 'auto' | number | undefined {
    if (text === 'auto') return text;
    return text !== null && Number(text) > 0 && Number.isFinite(Number(text)) ? Number(text) : undefined;
}

function parseBackground(text: string | null): string | undefined {
    return text !== null && /^[0-9a-f]{6}$/i.test(text) ? `#${text}` : undefined;
}

function parseFlag(text: string | null): boolean | undefined {
    return text === '1' ? true : text === '0' ? false : undefined;
}

function parseIn(text: string | null, min: number, max: number): number | undefined {
    const n = text === null || text === '' ? NaN : Number(text);
    return n >= min && n <= max ? n : undefined;
}

function oneOf<T extends string>(words: readonly T[], text: string | null): T | undefined {
    return words.find((word) => word === text);
}

function formatPlaces(places: readonly Vec3[]): string {
    return places.map((place) => place.join(',')).join(';');
}

function parsePlaces(text: string): Vec3[] {
    const places = text.split(';').map((part) => parseNumbers(part, 3));
    return places.every((place) => place !== undefined) ? (places as unknown as Vec3[]) : [];
}

function parsePolygon(text: string): Vec3[] {
    const places = parsePlaces(text);
    return places.length >= toolKinds.polygon.least ? places : [];
}

const numPlaces: Readonly<Record<MarkKind, readonly [number, number]>> = {
    point: [1, 1],
    distance: [2, Infinity],
    height: [2, 2],
    angle: [3, 3],
    area: [3, Infinity],
};

function parseMark(text: string): Mark | undefined {
    const [word, indexText, placeText] = text.split(':');
    const kind = oneOf(markKinds, word ?? null);
    const places = parsePlaces(placeText ?? '');
    const indices = (indexText ?? '').split(',').map(Number);
    if (kind === undefined || indices.length !== places.length || !indices.every(Number.isInteger)) return undefined;
    const [least, most] = numPlaces[kind];
    return places.length >= least && places.length <= most ? { kind, places, indices } : undefined;
}
