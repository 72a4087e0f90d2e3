import type { Box } from '../math/Box';
import type { Vec3 } from '../math/vec3';

export type Attribute = 'class' | 'intensity' | 'return';

export interface Units {
    readonly plan: string | null;
    readonly height: string | null;
    readonly degrees: boolean | null;
    readonly plan_metres: number | null;
    readonly height_metres: number | null;
}

export interface VersionInfo {
    readonly version: number;
    readonly name: string;
    readonly points: number;
    readonly levels: number;
}

/** What `/api/info` tells of a cloud that is loaded; members are named in docs/serve.md. */
export interface CloudInfo {
    readonly file: string;
    readonly budget: number | null;
    readonly points: number;
    readonly announced: number | null;
    readonly type: string;
    readonly bounds: Box | null;
    readonly heights: readonly number[] | null;
    readonly root: { readonly x: number; readonly y: number; readonly z: number; readonly edge: number };
    readonly origin: Vec3;
    readonly color: boolean;
    readonly colored: boolean;
    readonly version: number;
    readonly levels: number;
    readonly versions: readonly VersionInfo[];
    readonly unit: Units;
    readonly coordinate_system: { readonly name: string | null; readonly code: string | null } | null;
    readonly attributes: readonly Attribute[];
}

export type ServerInfo =
    | { readonly state: 'loading'; readonly file: string; readonly doing: string; readonly percent: number | null }
    | { readonly state: 'failed'; readonly file: string; readonly cause: string }
    | ({ readonly state: 'ready' } & CloudInfo);

/** The heights that the colours run over: from the 2nd to the 98th percentile, so that outliers do not take them away. */
export function heightRange(info: CloudInfo): { min: number; max: number } {
    const heights = info.heights;
    if (heights === null || heights.length < 101) return { min: 0, max: 1 };
    return { min: heights[2], max: heights[98] };
}

export interface PickedPoint {
    readonly index: number;
    readonly x: number;
    readonly y: number;
    readonly z: number;
    readonly color: readonly [number, number, number] | null;
}

export function placeOf(point: PickedPoint): Vec3 {
    return [point.x, point.y, point.z];
}

export interface LegendEntry {
    readonly text: string;
    readonly color: string;
    readonly points: number;
}

/** What a job tells of itself; a job that is done has members of its own besides. */
export type Job<T> =
    | { readonly state: 'running'; readonly doing: string; readonly percent: number | null }
    | { readonly state: 'failed'; readonly cause: string }
    | { readonly state: 'idle' }
    | ({ readonly state: 'done' } & T);

export interface OutlineResult {
    readonly distance: number;
    readonly how: string;
    readonly ring: readonly (readonly [number, number])[];
    readonly length: number;
    readonly area: number;
    readonly inside: number;
    /** As good as all of the points lie within. */
    readonly whole: boolean;
}

export interface GroundResult {
    readonly version: number;
    readonly points: number;
    readonly of: number;
    readonly levels: number;
    readonly note: string;
}

export interface ColorResult {
    readonly by: Attribute;
    readonly legend: readonly LegendEntry[];
    readonly min: number | null;
    readonly max: number | null;
}
