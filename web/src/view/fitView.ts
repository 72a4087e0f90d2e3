import { boxCentre, boxCorner, type Box } from '../math/Box';
import { along, dot, sub, type Vec3 } from '../math/vec3';
import { basisOf, halfTan, type Camera } from './Camera';

export interface Direction {
    readonly azimuth: number;
    readonly elevation: number;
    readonly parallel?: boolean;
}

/** The part of the picture that something is to fill: from its middle to the right and upwards, in half heights. */
export interface Frame {
    readonly left: number;
    readonly right: number;
    readonly bottom: number;
    readonly top: number;
}

/** The whole picture. */
export function wholeFrame(aspect: number): Frame {
    return { left: -aspect, right: aspect, bottom: -1, top: 1 };
}

/** @param area  what is free of a picture, CSS pixels from its upper left; where that is little: the whole. */
export function frameOf(area: { left: number; top: number; right: number; bottom: number }, width: number, height: number): Frame {
    const half = height / 2;
    const whole = wholeFrame(width / height);
    const wide = area.right - area.left > least * width;
    const high = area.bottom - area.top > least * height;
    return {
        left: wide ? (area.left - width / 2) / half : whole.left,
        right: wide ? (area.right - width / 2) / half : whole.right,
        bottom: high ? 1 - area.bottom / half : whole.bottom,
        top: high ? 1 - area.top / half : whole.top,
    };
}

/** By how much heights on the picture lie outside of two bounds; the middle of more than fits goes to their middle. */
export function hiddenBy(ys: readonly number[], top: number, bottom: number): number {
    const [least, most] = [Math.min(...ys), Math.max(...ys)];
    if (least >= top && most <= bottom) return 0;
    if (most - least > bottom - top) return (least + most - top - bottom) / 2;
    return least < top ? least - top : most - bottom;
}

const least = 0.3; // of the picture
const margin = 0.02; // of the frame, on either side

/** A view from a direction that shows a whole box as large as a frame allows, in its middle. */
export function fitView(box: Box, direction: Direction, frame: Frame): Camera {
    const { azimuth, elevation, parallel = false } = direction;
    const basis = basisOf(direction);
    const centre = boxCentre(box);
    const arms = [0, 1, 2, 3, 4, 5, 6, 7].map((corner) => sub(boxCorner(box, corner), centre));
    const towards = arms.map((arm) => (parallel ? 0 : dot(arm, basis.viewer)));
    const across = new Extent(arms, towards, basis.right, frame.left, frame.right);
    const upwards = new Extent(arms, towards, basis.up, frame.bottom, frame.top);
    const distance = Math.max(across.leastDistance(), upwards.leastDistance(), 1e-3);
    const shifted = along(centre, basis.right, -across.shiftAt(distance));
    const target = along(shifted, basis.up, -upwards.shiftAt(distance));
    return { target, distance, azimuth, elevation, parallel };
}

/** Places along one axis of the picture, which are to be seen between two bounds. */
class Extent {
    readonly #arms: readonly number[];
    readonly #low: number;
    readonly #high: number;

    /** @param towards  how much nearer to the viewer the places are than the target. */
    constructor(arms: readonly Vec3[], readonly towards: readonly number[], axis: Vec3, low: number, high: number) {
        this.#arms = arms.map((arm) => dot(arm, axis));
        const inset = margin * (high - low);
        this.#low = halfTan * (low + inset);
        this.#high = halfTan * (high - inset);
    }

    /** From which on all places fit between the bounds, shifted as they may be. */
    leastDistance(): number {
        const highs = this.#arms.map((arm, i) => arm + this.#high * this.towards[i]);
        const lows = this.#arms.map((arm, i) => arm + this.#low * this.towards[i]);
        return (Math.max(...highs) - Math.min(...lows)) / (this.#high - this.#low);
    }

    /** By how much all places are to be shifted to lie in the middle. */
    shiftAt(distance: number): number {
        const most = Math.min(...this.#arms.map((arm, i) => this.#high * (distance - this.towards[i]) - arm));
        const fewest = Math.max(...this.#arms.map((arm, i) => this.#low * (distance - this.towards[i]) - arm));
        return (most + fewest) / 2;
    }
}

/** Where a cloud is first seen from: as the camera did, where its coordinates look like a depth camera's. */
export function firstDirection({ min, max }: Box): Direction {
    const deep = max[2] - min[2];
    const around = [0, 1].every((k) => min[k] < 0 && max[k] > 0 && deep > 0.5 * (max[k] - min[k]));
    return around && min[2] > 0 ? { azimuth: 180, elevation: -90 } : { azimuth: 215, elevation: 35 };
}
