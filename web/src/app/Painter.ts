import type { App } from './App';
import { placeOf } from '../data/info';
import { Pen } from '../paint/Pen';
import { legendWidth, paintLegend } from '../paint/legend';
import { paintClipBox, paintCorridor, paintGathering, paintHover, paintMark, paintMiddle } from '../paint/paintMarks';
import { paintNorth, paintScaleBar } from '../paint/scaleBar';
import type { Vec3 } from '../math/vec3';
import type { View } from '../view/View';
import { legendOf } from './start';

const beside = 12; // CSS pixels
const narrowLegend = 220; // CSS pixels: the middle of a small picture is the cloud's

/** What lies over the points: measures, boxes and lines, the scale, the legend. */
export class Painter {
    constructor(readonly app: App) {}

    paint(context: CanvasRenderingContext2D, view: View): void {
        const { app } = this;
        const { state, proportions } = app;
        const pen = new Pen(context, view, state.theme, proportions.stretch);
        if (state.clip !== null) paintClipBox(pen, state.clip);
        if (app.outline !== null) pen.path(this.#outlineRing(), true, 2, pen.accent);
        if (state.corridor !== null) paintCorridor(pen, state.corridor);
        if (state.polygon.length > 0) {
            pen.fill(state.polygon, pen.accent, 0.1);
            pen.path(state.polygon, true, 2, pen.accent);
        }
        for (const mark of state.marks) paintMark(pen, mark, proportions);
        this.#paintTool(pen);
        this.#paintScales(pen, view);
        app.ui.handles.place(view);
    }

    /** From the right edge of what is free, CSS pixels; 0: there is no legend, or it lies over the picture. */
    legendWidth(): number {
        const { app } = this;
        const legend = legendOf(app);
        const context = app.ui.overlay.getContext('2d');
        if (legend === null || context === null || app.ui.isNarrow) return 0;
        return legendWidth(new Pen(context, app.view(), app.state.theme), legend) + 2 * beside;
    }

    #paintTool(pen: Pen): void {
        const { gathering, hovered, aimsWithKeys } = this.app;
        if (gathering === null) return;
        if (aimsWithKeys) paintMiddle(pen);
        const place = hovered === null ? null : placeOf(hovered);
        paintGathering(pen, gathering, place);
        if (place !== null) paintHover(pen, place);
    }

    #paintScales(pen: Pen, view: View): void {
        const { app } = this;
        const area = app.ui.freeArea();
        paintScaleBar(pen, area.left + 18, area.bottom - 22, app.proportions.plan);
        const legend = legendOf(app);
        const top = area.top + (app.ui.isNarrow ? 0 : 12);
        const bottom = Math.min(area.bottom - 70, app.ui.isNarrow ? top + narrowLegend : Infinity);
        if (legend !== null) paintLegend(pen, legend, area.right - beside, top, bottom);
        if (view.width > 420) paintNorth(pen, view.width - 34, area.bottom - 36);
    }

    /** The outline has no heights: it is drawn where most of the ground is. */
    #outlineRing(): Vec3[] {
        const { outline, info } = this.app;
        const z = info.heights?.[5] ?? info.bounds?.min[2] ?? 0;
        return (outline?.ring ?? []).map(([x, y]) => [x, y, z]);
    }
}
