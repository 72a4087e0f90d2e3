import { boxSize, type Box } from '../math/Box';
import { noStretch, type Stretch } from '../math/stretch';
import type { CloudInfo } from './info';

/** How a cloud is drawn and measured: as it is, or, where x and y are degrees, in metres. */
export interface Proportions {
    readonly stretch: Stretch;
    /** What coordinates are multiplied by before distances in space, slopes and angles are taken: to units of the plan. */
    readonly measured: Stretch;
    /** What must be told of it; empty: nothing. */
    readonly note: string;
    /** Units of what is drawn; null: not known. */
    readonly plan: string | null;
    readonly height: string | null;
}

const metresPerDegree = 111320; // to the north, and at the equator to the east
const steepest = 300; // heights by width: of a cloud in one unit hardly ever

/** As the pictures of `zorcld view` have it: by what the file says, else by heights that are far too large for x and y. */
export function findProportions(info: Pick<CloudInfo, 'bounds' | 'unit'>): Proportions {
    const { bounds, unit } = info;
    if (bounds === null || !isPlaces(bounds) || !areDegrees(bounds, unit.degrees))
        return { stretch: noStretch, measured: [1, 1, heightsInPlan(unit)], note: '', plan: unit.plan, height: unit.height };
    const middle = ((bounds.min[1] + bounds.max[1]) / 2) * (Math.PI / 180);
    const stretch: Stretch = [metresPerDegree * Math.max(Math.cos(middle), 0.01), metresPerDegree, unit.height_metres ?? 1];
    return {
        stretch,
        measured: stretch,
        note: 'x and y taken for degrees',
        plan: 'm',
        height: 'm',
    };
}

/** How many units of the plan a unit of the heights is; what is not stated is taken to be the same. */
function heightsInPlan({ plan_metres: plan, height_metres: height }: CloudInfo['unit']): number {
    return plan !== null && height !== null && plan > 0 && height > 0 ? height / plan : 1;
}

/** Could x and y be longitudes and latitudes? */
function isPlaces({ min, max }: Box): boolean {
    return min[0] >= -360 && max[0] <= 360 && min[1] >= -90 && max[1] <= 90;
}

function areDegrees(bounds: Box, stated: boolean | null): boolean {
    const [x, y, z] = boxSize(bounds);
    const width = Math.max(x, y);
    return width > 0 && (stated ?? z >= steepest * width);
}
