import { clamp } from '../math/numbers';
import { add, along, dot, scale, sub, type Vec3 } from '../math/vec3';

/**
 * Where the viewer stands, as `zorcld view --from` has it: azimuth in degrees clockwise from north (+y), elevation in
 * degrees above the horizon, both of the viewer as seen from the target.
 *
 * `distance` is that of the viewer from the target. A parallel view shows as much as a perspective one does at the
 * target, so that the two can take each other's place.
 */
export interface Camera {
    readonly target: Vec3;
    readonly distance: number;
    readonly azimuth: number;
    readonly elevation: number;
    readonly parallel: boolean;
}

/** Unit vectors: towards the viewer, to the right, upwards. */
export interface Basis {
    readonly viewer: Vec3;
    readonly right: Vec3;
    readonly up: Vec3;
}

/** Half of the vertical opening of a perspective view, as tangent: 50 degrees in all. */
export const halfTan = Math.tan((25 * Math.PI) / 180);

export function basisOf(camera: Pick<Camera, 'azimuth' | 'elevation'>): Basis {
    const a = (camera.azimuth * Math.PI) / 180;
    const e = (camera.elevation * Math.PI) / 180;
    const [sinA, cosA, sinE, cosE] = [Math.sin(a), Math.cos(a), Math.sin(e), Math.cos(e)];
    return {
        viewer: [sinA * cosE, cosA * cosE, sinE],
        right: [-cosA, sinA, 0],
        up: [-sinA * sinE, -cosA * sinE, cosE],
    };
}

export function eyeOf(camera: Camera): Vec3 {
    return along(camera.target, basisOf(camera).viewer, camera.distance);
}

/** Turns the view around a pivot, which keeps its place on the picture. */
export function orbit(camera: Camera, pivot: Vec3, azimuth: number, elevation: number): Camera {
    const turned = {
        azimuth: wrap(camera.azimuth + azimuth),
        elevation: clamp(camera.elevation + elevation, -90, 90),
    };
    const before = basisOf(camera);
    const after = basisOf(turned);
    const arm = sub(camera.target, pivot);
    const moved = add(
        add(scale(after.right, dot(arm, before.right)), scale(after.up, dot(arm, before.up))),
        scale(after.viewer, dot(arm, before.viewer)),
    );
    return { ...camera, ...turned, target: add(pivot, moved) };
}

/** Comes nearer (factor below 1) or goes away; the anchor keeps its place on the picture. */
export function zoom(camera: Camera, anchor: Vec3, factor: number): Camera {
    return {
        ...camera,
        target: along(anchor, sub(camera.target, anchor), factor),
        distance: camera.distance * factor,
    };
}

/** Shifts the view across: to the right and upwards, coordinate units. */
export function pan(camera: Camera, right: number, up: number): Camera {
    const basis = basisOf(camera);
    return { ...camera, target: along(along(camera.target, basis.right, right), basis.up, up) };
}

/** The view with another target, which lies at the given distance from an eye that stays. */
export function refocus(camera: Camera, target: Vec3): Camera {
    const eye = eyeOf(camera);
    const distance = dot(sub(eye, target), basisOf(camera).viewer);
    if (camera.parallel || !(distance > 0)) return camera;
    return { ...camera, distance, target: along(eye, basisOf(camera).viewer, -distance) };
}

function wrap(degrees: number): number {
    const turned = degrees % 360;
    return turned < 0 ? turned + 360 : turned;
}
