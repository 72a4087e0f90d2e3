import type { Theme } from '../colors/colors';
import type { Attribute } from '../data/info';
import type { Box } from '../math/Box';
import type { Vec3 } from '../math/vec3';
import type { Mark } from '../tools/marks';
import type { Camera } from '../view/Camera';

export type ColorBy = 'file' | 'height' | Attribute;
export const colorWays: readonly ColorBy[] = ['file', 'height', 'class', 'intensity', 'return'];

export interface Corridor {
    readonly from: Vec3;
    readonly to: Vec3;
    readonly width: number;
}

/** All that a link to a view holds. Never changes in place: each change makes another one. */
export interface State {
    readonly camera: Camera;
    readonly theme: Theme;
    readonly background: string | null; // #rrggbb; null: the theme's
    readonly color: ColorBy;
    readonly pointSize: number;
    readonly shading: boolean;
    readonly budget: number;
    readonly ground: boolean;
    readonly clip: Box | null;
    readonly marks: readonly Mark[];
    readonly polygon: readonly Vec3[];
    readonly corridor: Corridor | null;
    readonly outline: 'auto' | number | null;
}

export const pointSizes = { min: 0.5, max: 3, step: 0.1 } as const;
/** As `--budget` has them. */
export const budgets = { min: 1000, max: 10_000_000, desktop: 1_000_000, phone: 333_000 } as const;
