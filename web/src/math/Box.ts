import type { Vec3 } from './vec3';

/** A box along the axes, its faces included. */
export interface Box {
    readonly min: Vec3;
    readonly max: Vec3;
}

export function boxCentre(box: Box): Vec3 {
    return [0, 1, 2].map((k) => 0.5 * (box.min[k] + box.max[k])) as unknown as Vec3;
}

export function boxSize(box: Box): Vec3 {
    return [0, 1, 2].map((k) => box.max[k] - box.min[k]) as unknown as Vec3;
}

/** Bit 0 of the number of a corner is x high, bit 1 y, bit 2 z. */
export function boxCorner(box: Box, corner: number): Vec3 {
    return [0, 1, 2].map((k) => ((corner >> k) & 1 ? box.max : box.min)[k]) as unknown as Vec3;
}

/** The twelve edges, as pairs of numbers of corners. */
export const boxEdges: readonly (readonly [number, number])[] = [0, 1, 2].flatMap((k) =>
    [0, 1, 2, 3, 4, 5, 6, 7].filter((n) => !((n >> k) & 1)).map((n): [number, number] => [n, n | (1 << k)]),
);

export function boxesMeet(a: Box, b: Box): boolean {
    return [0, 1, 2].every((k) => a.min[k] <= b.max[k] && b.min[k] <= a.max[k]);
}

/** What two boxes have in common; where that is nothing, the first. */
export function boxWithin(a: Box, b: Box): Box {
    if (!boxesMeet(a, b)) return a;
    return {
        min: [0, 1, 2].map((k) => Math.max(a.min[k], b.min[k])) as unknown as Vec3,
        max: [0, 1, 2].map((k) => Math.min(a.max[k], b.max[k])) as unknown as Vec3,
    };
}

export function cubeBox(centre: Vec3, edge: number): Box {
    const h = edge / 2;
    return {
        min: [centre[0] - h, centre[1] - h, centre[2] - h],
        max: [centre[0] + h, centre[1] + h, centre[2] + h],
    };
}

/** How far a place is from a box; 0 inside. */
export function distanceToBox(place: Vec3, box: Box): number {
    const gaps = [0, 1, 2].map((k) => Math.max(box.min[k] - place[k], 0, place[k] - box.max[k]));
    return Math.hypot(...gaps);
}
