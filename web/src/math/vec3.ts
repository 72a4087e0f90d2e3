/** A place or a direction: double precision throughout, in the cloud's coordinates. */
export type Vec3 = readonly [number, number, number];

export function add(a: Vec3, b: Vec3): Vec3 {
    return [a[0] + b[0], a[1] + b[1], a[2] + b[2]];
}

export function sub(a: Vec3, b: Vec3): Vec3 {
    return [a[0] - b[0], a[1] - b[1], a[2] - b[2]];
}

export function scale(a: Vec3, f: number): Vec3 {
    return [a[0] * f, a[1] * f, a[2] * f];
}

/** a + f b */
export function along(a: Vec3, b: Vec3, f: number): Vec3 {
    return [a[0] + b[0] * f, a[1] + b[1] * f, a[2] + b[2] * f];
}

export function dot(a: Vec3, b: Vec3): number {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

export function length(a: Vec3): number {
    return Math.hypot(a[0], a[1], a[2]);
}

export function distance(a: Vec3, b: Vec3): number {
    return Math.hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]);
}

export function unit(a: Vec3): Vec3 {
    const n = length(a);
    return n > 0 ? scale(a, 1 / n) : a;
}

export function mix(a: Vec3, b: Vec3, t: number): Vec3 {
    return along(scale(a, 1 - t), b, t);
}
