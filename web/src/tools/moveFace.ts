import type { Box } from '../math/Box';
import { clamp } from '../math/numbers';
import type { Vec3 } from '../math/vec3';

/** A face of a box: its axis, and whether it is the one at the high end. */
export interface Face {
    readonly axis: 0 | 1 | 2;
    readonly high: boolean;
}

export const faces: readonly Face[] = ([0, 1, 2] as const).flatMap((axis) => [
    { axis, high: false },
    { axis, high: true },
]);

export function faceCentre(box: Box, { axis, high }: Face): Vec3 {
    return [0, 1, 2].map((k) =>
        k === axis ? (high ? box.max : box.min)[k] : (box.min[k] + box.max[k]) / 2,
    ) as unknown as Vec3;
}

/** The box with a face elsewhere, never beyond the opposite one and not outside the limits. */
export function moveFace(box: Box, { axis, high }: Face, to: number, limits: Box): Box {
    const place = high
        ? clamp(to, box.min[axis], Math.max(limits.max[axis], box.min[axis]))
        : clamp(to, Math.min(limits.min[axis], box.max[axis]), box.max[axis]);
    const change = (corner: Vec3): Vec3 => corner.map((c, k) => (k === axis ? place : c)) as unknown as Vec3;
    return high ? { min: box.min, max: change(box.max) } : { min: change(box.min), max: box.max };
}
