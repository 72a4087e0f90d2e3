import type { Proportions } from '../data/Proportions';
import { angleAt, pathLengths, planArea, planCircumference, planDistance } from '../math/measures';
import { formatCoord, formatMeasure, groupDigits, withUnit } from '../math/numbers';
import { toDrawn } from '../math/stretch';
import { distance, type Vec3 } from '../math/vec3';

export type MarkKind = 'point' | 'distance' | 'height' | 'angle' | 'area';
export const markKinds: readonly MarkKind[] = ['point', 'distance', 'height', 'angle', 'area'];

/** Something measured: points of the cloud, with their indices. */
export interface Mark {
    readonly kind: MarkKind;
    readonly places: readonly Vec3[];
    readonly indices: readonly number[];
}

export interface Reading {
    readonly label: string;
    readonly value: string;
}

/**
 * What a mark says, the most important first. Coordinates are the library's, heights are told in their own unit, all else
 * in the plan's.
 */
export function readMark(mark: Mark, proportions: Proportions): Reading[] {
    const { places } = mark;
    const [first, last] = [places[0], places[places.length - 1]];
    const rise = (last[2] - first[2]) * proportions.stretch[2];
    const measured = places.map((place) => toDrawn(place, proportions.measured));
    return readers[mark.kind](mark.kind === 'point' ? mark : { ...mark, places: measured }, proportions, rise);
}

export const markTitles: Readonly<Record<MarkKind, string>> = {
    point: 'Point',
    distance: 'Distance',
    height: 'Height difference',
    angle: 'Angle',
    area: 'Area in plan',
};

const readers: Readonly<Record<MarkKind, (mark: Mark, units: Proportions, rise: number) => Reading[]>> = {
    point: ({ places, indices }) => [
        { label: 'x', value: formatCoord(places[0][0]) },
        { label: 'y', value: formatCoord(places[0][1]) },
        { label: 'z', value: formatCoord(places[0][2]) },
        { label: 'Index', value: groupDigits(indices[0]) },
    ],
    distance: ({ places }, units, rise) => {
        const { pieces, total } = pathLengths(places);
        const first = places[0];
        const last = places[places.length - 1];
        const readings = [
            { label: pieces.length > 1 ? 'Length' : 'Distance', value: withUnit(formatMeasure(total), units.plan) },
            { label: 'In plan', value: withUnit(formatMeasure(planDistance(first, last)), units.plan) },
            { label: 'Height', value: withUnit(formatMeasure(rise), units.height) },
        ];
        if (pieces.length > 1)
            readings.push({ label: 'Straight', value: withUnit(formatMeasure(distance(first, last)), units.plan) });
        return readings;
    },
    height: ({ places: [a, b] }, units, rise) => [
        { label: 'Height', value: withUnit(formatMeasure(rise), units.height) },
        { label: 'In plan', value: withUnit(formatMeasure(planDistance(a, b)), units.plan) },
        { label: 'Slope', value: formatSlope(a, b) },
    ],
    angle: ({ places: [a, corner, b] }) => [{ label: 'Angle', value: `${angleAt(a, corner, b).toFixed(2)}°` }],
    area: ({ places }, units) => [
        { label: 'Area', value: withUnit(formatMeasure(planArea(places)), units.plan, '²') },
        { label: 'Around', value: withUnit(formatMeasure(planCircumference(places)), units.plan) },
    ],
};

function formatSlope(a: Vec3, b: Vec3): string {
    const run = planDistance(a, b);
    return run > 0 ? `${((100 * (b[2] - a[2])) / run).toFixed(1)} %` : 'upright';
}
