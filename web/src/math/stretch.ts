import type { Box } from './Box';
import type { Vec3 } from './vec3';

/**
 * What coordinates are multiplied by before they are drawn, and before anything is measured: 1, but where x and y are
 * degrees.
 *
 * Two kinds of places, then. Those of the cloud are the library's: points, marks, boxes, lines. Those that are drawn are
 * the camera's, the view's and the tiles'.
 */
export type Stretch = Vec3;

export const noStretch: Stretch = [1, 1, 1];

export function isStretched(stretch: Stretch): boolean {
    return stretch.some((factor) => factor !== 1);
}

/** Where a place of the cloud is drawn. */
export function toDrawn(place: Vec3, stretch: Stretch): Vec3 {
    return [place[0] * stretch[0], place[1] * stretch[1], place[2] * stretch[2]];
}

/** Which place of the cloud is drawn there. */
export function fromDrawn(place: Vec3, stretch: Stretch): Vec3 {
    return [place[0] / stretch[0], place[1] / stretch[1], place[2] / stretch[2]];
}

export function boxToDrawn(box: Box, stretch: Stretch): Box {
    return { min: toDrawn(box.min, stretch), max: toDrawn(box.max, stretch) };
}
