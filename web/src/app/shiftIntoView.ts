import { toDrawn } from '../math/stretch';
import type { Vec3 } from '../math/vec3';
import { pan } from '../view/Camera';
import { hiddenBy } from '../view/fitView';
import type { App } from './App';

const rim = 30; // CSS pixels

/** Moves the view up or down where places would be hidden behind what lies above or below the picture. */
export function shiftIntoView(app: App, places: readonly Vec3[]): void {
    const { top, bottom } = app.ui.freeArea();
    const view = app.view();
    const drawn = places.map((place) => toDrawn(place, app.proportions.stretch));
    const below = hiddenBy(drawn.map((place) => view.project(place).y), top, bottom - rim);
    if (below === 0) return;
    const depth = Math.min(...drawn.map((place) => view.depthOf(place)));
    app.move(pan(view.camera, 0, -below / view.pixelsPerUnit(Math.max(depth, 1e-6))));
}
