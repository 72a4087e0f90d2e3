import type { PickedPoint } from '../data/info';
import { fromDrawn } from '../math/stretch';
import { meetHeight } from '../view/View';
import type { App } from './App';

/** Where a corner lies that is no point, since a polygon may go around the cloud: at the middle height; null: in the sky. */
export function findCorner(app: App, x: number, y: number): PickedPoint | null {
    const { stretch } = app.proportions;
    const height = app.info.heights?.[50] ?? app.bounds().min[2];
    const place = meetHeight(app.view().ray(x, y), height * stretch[2]);
    if (place === null) return null;
    const [px, py, pz] = fromDrawn(place, stretch);
    return { index: -1, x: px, y: py, z: pz, color: null };
}
