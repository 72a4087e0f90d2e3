import { boxCorner, type Box } from '../math/Box';
import { add, along, distance, dot, scale, sub, type Vec3 } from '../math/vec3';
import { basisOf, eyeOf, halfTan, type Basis, type Camera } from './Camera';

/** A place on the picture: CSS pixels from the upper left, and the distance in front of the viewer. */
export interface ScreenPlace {
    readonly x: number;
    readonly y: number;
    readonly depth: number;
}

export interface Ray {
    readonly from: Vec3;
    readonly direction: Vec3;
    /** Of a cone around the ray that is one CSS pixel in radius. */
    readonly tan: number;
}

const parallelReach = 1e4; // a parallel ray starts this many picture heights away: then a narrow cone is a cylinder

/** A camera with the size of its picture: what lies where. Never changes. */
export class View {
    readonly eye: Vec3;
    readonly basis: Basis;
    /** CSS pixels a unit: at distance 1 in a perspective view, everywhere in a parallel one. */
    readonly focal: number;

    constructor(
        readonly camera: Camera,
        readonly width: number,
        readonly height: number,
    ) {
        this.eye = eyeOf(camera);
        this.basis = basisOf(camera);
        const halfHeight = camera.parallel ? halfTan * camera.distance : halfTan;
        this.focal = height / (2 * halfHeight);
    }

    depthOf(place: Vec3): number {
        return -dot(sub(place, this.eye), this.basis.viewer);
    }

    pixelsPerUnit(depth: number): number {
        return this.camera.parallel ? this.focal : this.focal / Math.max(depth, 1e-9);
    }

    /** Places behind the viewer have a depth not above 0, and no meaningful x and y. */
    project(place: Vec3): ScreenPlace {
        const arm = sub(place, this.eye);
        const depth = -dot(arm, this.basis.viewer);
        const perUnit = this.pixelsPerUnit(depth);
        return {
            x: this.width / 2 + dot(arm, this.basis.right) * perUnit,
            y: this.height / 2 - dot(arm, this.basis.up) * perUnit,
            depth,
        };
    }

    /** The place at a pixel, so far in front of the viewer. */
    unproject(x: number, y: number, depth: number): Vec3 {
        const perUnit = this.pixelsPerUnit(depth);
        const across = add(
            scale(this.basis.right, (x - this.width / 2) / perUnit),
            scale(this.basis.up, (this.height / 2 - y) / perUnit),
        );
        return along(add(this.eye, across), this.basis.viewer, -depth);
    }

    ray(x: number, y: number): Ray {
        if (!this.camera.parallel) {
            const direction = sub(this.unproject(x, y, 1), this.eye);
            return { from: this.eye, direction, tan: 1 / this.focal };
        }
        const back = parallelReach * this.camera.distance;
        return {
            from: this.unproject(x, y, -back),
            direction: scale(this.basis.viewer, -1),
            tan: 1 / (this.focal * (back + this.camera.distance)),
        };
    }

    /** Can anything of a box be seen? May say yes where nothing can. */
    sees(box: Box, margin = 0): boolean {
        const corners = [0, 1, 2, 3, 4, 5, 6, 7].map((corner) => this.#beside(boxCorner(box, corner), margin));
        return corners.reduce((all, sides) => all & sides) === 0;
    }

    /** How far the nearest of a box may be from the viewer. */
    nearest(box: Box): number {
        const centre: Vec3 = scale(add(box.min, box.max), 0.5);
        return this.depthOf(centre) - distance(box.min, box.max) / 2;
    }

    /** Beyond which sides of the picture a place lies: bits for left, right, below, above, behind. */
    #beside(place: Vec3, margin: number): number {
        const arm = sub(place, this.eye);
        const depth = -dot(arm, this.basis.viewer);
        const reach = this.camera.parallel ? 1 : depth;
        const x = dot(arm, this.basis.right) * this.focal;
        const y = dot(arm, this.basis.up) * this.focal;
        const w = (0.5 + margin) * this.width * reach;
        const h = (0.5 + margin) * this.height * reach;
        const behind = !this.camera.parallel && depth <= 0 ? 16 : 0;
        return (x < -w ? 1 : 0) | (x > w ? 2 : 0) | (y < -h ? 4 : 0) | (y > h ? 8 : 0) | behind;
    }
}

/** Where a ray meets a height; null: behind its start, or nowhere. */
export function meetHeight({ from, direction }: Ray, z: number): Vec3 | null {
    const t = (z - from[2]) / direction[2];
    return t > 0 && Number.isFinite(t) ? [from[0] + t * direction[0], from[1] + t * direction[1], z] : null;
}
