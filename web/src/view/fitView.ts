import { boxCentre, boxCorner, type Box } from '../math/Box';
import { along, dot, sub, type Vec3 } from '../math/vec3';
import { basisOf, halfTan, type Basis, type Camera } from './Camera';

export interface Direction {
    readonly azimuth: number;
    readonly elevation: number;
    readonly parallel?: boolean;
}

const margin = 1.08;
const rounds = 5; // each brings the box nearer to the middle of a perspective view; after these it is there

/** A view from a direction that shows a whole box in the middle, as large as the picture allows. */
export function fitView(box: Box, direction: Direction, aspect: number): Camera {
    const { azimuth, elevation, parallel = false } = direction;
    const basis = basisOf(direction);
    const corners = [0, 1, 2, 3, 4, 5, 6, 7].map((corner) => boxCorner(box, corner));
    let target = boxCentre(box);
    let distance = findDistance(corners, target, basis, parallel, aspect);
    for (let round = 0; round < rounds && !parallel; ++round) {
        target = centre(corners, target, basis, distance);
        distance = findDistance(corners, target, basis, parallel, aspect);
    }
    return { target, distance, azimuth, elevation, parallel };
}

/** Where a cloud is first seen from: as the camera did, where its coordinates look like a depth camera's. */
export function firstDirection({ min, max }: Box): Direction {
    const deep = max[2] - min[2];
    const around = [0, 1].every((k) => min[k] < 0 && max[k] > 0 && deep > 0.5 * (max[k] - min[k]));
    return around && min[2] > 0 ? { azimuth: 180, elevation: -90 } : { azimuth: 215, elevation: 35 };
}

/** The least from which all corners are seen. */
function findDistance(
    corners: readonly Vec3[],
    target: Vec3,
    basis: Basis,
    parallel: boolean,
    aspect: number,
): number {
    const [wide, high] = [(halfTan * aspect) / margin, halfTan / margin];
    const distances = corners.map((corner) => {
        const arm = sub(corner, target);
        const across = Math.max(Math.abs(dot(arm, basis.right)) / wide, Math.abs(dot(arm, basis.up)) / high);
        return across + (parallel ? 0 : dot(arm, basis.viewer));
    });
    return Math.max(...distances, 1e-3);
}

/** The target moved across, so that as much of the picture is free on either side. */
function centre(corners: readonly Vec3[], target: Vec3, basis: Basis, distance: number): Vec3 {
    const shift = (axis: Vec3): number => {
        const seen = corners.map((corner) => {
            const arm = sub(corner, target);
            return dot(arm, axis) / Math.max(distance - dot(arm, basis.viewer), 1e-9);
        });
        return ((Math.min(...seen) + Math.max(...seen)) / 2) * distance;
    };
    return along(along(target, basis.right, shift(basis.right)), basis.up, shift(basis.up));
}
