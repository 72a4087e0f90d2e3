import { clamp } from '../math/numbers';
import { mix } from '../math/vec3';
import type { Camera } from '../view/Camera';

const milliseconds = 450;

/** A flight from one view to another. */
export class Motion {
    readonly #turn: number;

    constructor(
        readonly from: Camera,
        readonly to: Camera,
        readonly start: number,
    ) {
        this.#turn = ((((to.azimuth - from.azimuth) % 360) + 540) % 360) - 180; // the shorter way round
    }

    /** The view at a time; the last one exactly the one flown to. */
    at(now: number): { camera: Camera; done: boolean } {
        const t = clamp((now - this.start) / milliseconds, 0, 1);
        if (t >= 1) return { camera: this.to, done: true };
        const s = t * t * (3 - 2 * t);
        const { from, to } = this;
        const camera: Camera = {
            target: mix(from.target, to.target, s),
            distance: from.distance * (to.distance / from.distance) ** s,
            azimuth: from.azimuth + this.#turn * s,
            elevation: from.elevation + (to.elevation - from.elevation) * s,
            parallel: from.parallel && to.parallel,
        };
        return { camera, done: false };
    }
}
