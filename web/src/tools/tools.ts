import type { Vec3 } from '../math/vec3';
import type { MarkKind } from './marks';

export type ToolName = MarkKind | 'profile' | 'polygon';

export interface ToolKind {
    readonly name: ToolName;
    readonly label: string;
    readonly least: number;
    readonly most: number;
    /** What to do next, by the number of points that are there. */
    readonly hint: (count: number) => string;
    readonly closed?: boolean;
}

const finish = 'Enter or a double click ends';

export const toolKinds: Readonly<Record<ToolName, ToolKind>> = {
    point: { name: 'point', label: 'Point', least: 1, most: 1, hint: () => 'Click a point to see where it is' },
    distance: {
        ...{ name: 'distance', label: 'Distance', least: 2, most: 200 },
        hint: (n) => (n < 1 ? 'Click where to measure from' : n < 2 ? 'Click where to' : `Click on, ${finish}`),
    },
    height: {
        ...{ name: 'height', label: 'Height', least: 2, most: 2 },
        hint: (n) => (n < 1 ? 'Click the first point' : 'Click the second point'),
    },
    angle: {
        ...{ name: 'angle', label: 'Angle', least: 3, most: 3 },
        hint: (n) => ['Click a point of the first leg', 'Click the corner', 'Click a point of the second leg'][n] ?? '',
    },
    area: {
        ...{ name: 'area', label: 'Area', least: 3, most: 200, closed: true },
        hint: (n) => (n < 3 ? 'Click the corners of the area' : `Click on, ${finish}`),
    },
    profile: {
        ...{ name: 'profile', label: 'Profile', least: 2, most: 2 },
        hint: (n) => (n < 1 ? 'Click where the profile begins' : 'Click where it ends'),
    },
    polygon: {
        ...{ name: 'polygon', label: 'Select', least: 3, most: 64, closed: true },
        hint: (n) => (n < 3 ? 'Click the corners of a polygon around the points' : `Click on, ${finish}`),
    },
};

/** Points of the cloud, clicked one by one for a tool. */
export class Gathering {
    readonly places: Vec3[] = [];
    readonly indices: number[] = [];
    /** Done when all that was clicked so far is here. */
    taken: Promise<void> = Promise.resolve();

    constructor(readonly kind: ToolKind) {}

    get count(): number {
        return this.places.length;
    }

    get canFinish(): boolean {
        return this.count >= this.kind.least;
    }

    /** @returns whether no more points are needed. A point that is there already, as of a double click, is no other. */
    add(place: Vec3, index: number): boolean {
        const last = this.places[this.count - 1];
        const same = index < 0 ? last?.join() === place.join() : this.indices[this.count - 1] === index;
        if (!same) {
            this.places.push(place);
            this.indices.push(index);
        }
        return this.count >= this.kind.most;
    }

    removeLast(): void {
        this.places.pop();
        this.indices.pop();
    }
}
