import { boxCentre, boxCorner, type Box } from '../math/Box';
import { basisOf, halfTan, type Camera } from './Camera';
import { along, dot, sub, type Vec3 } from '../math/vec3';

export interface Direction {
    readonly azimuth: number;
    readonly elevation: number;
    readonly parallel?: boolean;
}

const margin = 1.06;

/** A view from a direction that shows a whole box, as large as the picture allows. */
export function fitView(box: Box, direction: Direction, aspect: number): Camera {
    const basis = basisOf(direction);
    const parallel = direction.parallel ?? false;
    const middle = boxCentre(box);
    const [wide, high] = [halfTan * aspect, halfTan].map((tan) => tan / margin);
    let reach = 1e-3;
    for (let corner = 0; corner < 8; ++corner) {
        const arm = sub(boxCorner(box, corner), middle);
        const near = parallel ? 0 : dot(arm, basis.viewer);
        const across = Math.max(Math.abs(dot(arm, basis.right)) / wide, Math.abs(dot(arm, basis.up)) / high);
        reach = Math.max(reach, across + near);
    }
    return { target: centred(box, basis, middle), distance: reach, ...directionOf(direction), parallel };
}

function directionOf(direction: Direction): { azimuth: number; elevation: number } {
    return { azimuth: direction.azimuth, elevation: direction.elevation };
}

/** What is near looks larger: the box hangs low in a view from above, so the target is moved a little towards it. */
function centred(box: Box, basis: ReturnType<typeof basisOf>, middle: Vec3): Vec3 {
    const height = box.max[2] - box.min[2];
    return along(middle, basis.up, -0.02 * height);
}
