import { distance, dot, length, sub, type Vec3 } from './vec3';

/** Lengths of the pieces of a path, and of all of it. */
export function pathLengths(path: readonly Vec3[]): { pieces: number[]; total: number } {
    const pieces = path.slice(1).map((place, i) => distance(path[i], place));
    return { pieces, total: pieces.reduce((sum, piece) => sum + piece, 0) };
}

/** Distance as seen from above. */
export function planDistance(a: Vec3, b: Vec3): number {
    return Math.hypot(b[0] - a[0], b[1] - a[1]);
}

/** Degrees between the two legs that start at the corner; 0 where a leg has no length. */
export function angleAt(from: Vec3, corner: Vec3, to: Vec3): number {
    const a = sub(from, corner);
    const b = sub(to, corner);
    const lengths = length(a) * length(b);
    if (!(lengths > 0)) return 0;
    return (Math.acos(Math.min(1, Math.max(-1, dot(a, b) / lengths))) * 180) / Math.PI;
}

/** Area of a ring as seen from above; places far from the origin lose nothing. */
export function planArea(ring: readonly Vec3[]): number {
    if (ring.length < 3) return 0;
    const [x0, y0] = ring[0];
    let twice = 0;
    for (let i = 1; i + 1 < ring.length; ++i) {
        const [xa, ya] = [ring[i][0] - x0, ring[i][1] - y0];
        const [xb, yb] = [ring[i + 1][0] - x0, ring[i + 1][1] - y0];
        twice += xa * yb - xb * ya;
    }
    return Math.abs(twice) / 2;
}

/** Length of a ring as seen from above, the way back included. */
export function planCircumference(ring: readonly Vec3[]): number {
    return ring.reduce((sum, place, i) => sum + planDistance(place, ring[(i + 1) % ring.length]), 0);
}
