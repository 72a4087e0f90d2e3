import { boxSize, boxWithin, cubeBox, type Box } from '../math/Box';
import { boxToDrawn, noStretch, toDrawn, type Stretch } from '../math/stretch';
import type { Vec3 } from '../math/vec3';
import { decodeTile, estimateSpacing, stepsPerEdge, type Tile } from './decodeTile';

/** Level and position: what names a tile. */
export interface TileAddress {
    readonly level: number;
    readonly i: number;
    readonly j: number;
    readonly k: number;
}

export const rootAddress: TileAddress = { level: 0, i: 0, j: 0, k: 0 };

export function addressKey(address: TileAddress): string {
    return `${address.level}/${address.i}/${address.j}/${address.k}`;
}

export function childAddress(address: TileAddress, octant: number): TileAddress {
    return {
        level: address.level + 1,
        i: 2 * address.i + ((octant >> 2) & 1),
        j: 2 * address.j + ((octant >> 1) & 1),
        k: 2 * address.k + (octant & 1),
    };
}

export function parentAddress({ level, i, j, k }: TileAddress): TileAddress {
    return { level: level - 1, i: i >> 1, j: j >> 1, k: k >> 1 };
}

const spacingsPerEdge = 128;

/** How the cloud of a tile is drawn. */
export interface Grain {
    readonly stretch: Stretch;
    /** Of a stretched cloud, whose cubes are drawn much wider than it is: what is drawn lies within this box. */
    readonly bounds: Box | null;
    /** Of a stretched cloud, whose cubes do not tell: how far its points lie apart as drawn. */
    readonly spacing: number | null;
}

export const plainGrain: Grain = { stretch: noStretch, bounds: null, spacing: null };

/** A tile that is there; all lengths and places but those of `tile` are as drawn. */
export class TileNode {
    readonly key: string;
    readonly tile: Tile;
    readonly box: Box;
    readonly centre: Vec3;
    /** The longest side of the box. */
    readonly edge: number;
    /** A step of the points' places, along each axis. */
    readonly steps: Vec3;
    /** What the level thins to. */
    readonly spacing: number;
    /** How far the points really lie apart, as far as can be told; never more than in the tile above. */
    readonly pointSpacing: number;
    /** Number of the selection that last looked at it. */
    lastUsed = 0;

    /** @param above  the tile that this is an octant of: few points in it are no sparse surface. */
    constructor(
        readonly address: TileAddress,
        bytes: ArrayBuffer,
        above?: TileNode,
        readonly grain: Grain = plainGrain,
    ) {
        const { stretch, bounds } = grain;
        this.key = addressKey(address);
        this.tile = decodeTile(bytes);
        const { centre, edge } = this.tile;
        this.centre = toDrawn(centre, stretch);
        this.box = this.#drawnBox(centre, edge);
        this.edge = bounds === null ? edge : Math.max(...boxSize(this.box));
        const step = edge / stepsPerEdge;
        this.steps = toDrawn([step, step, step], stretch);
        this.spacing = (edge * Math.max(...stretch)) / spacingsPerEdge;
        this.pointSpacing =
            grain.spacing ?? Math.min(estimateSpacing(this.tile), above?.pointSpacing ?? 4 * this.spacing);
    }

    /** The octants that hold points. */
    children(): { address: TileAddress; box: Box }[] {
        const octants = [0, 1, 2, 3, 4, 5, 6, 7].filter((k) => (this.tile.octants >> k) & 1);
        return octants.map((k) => ({ address: childAddress(this.address, k), box: this.#octantBox(k) }));
    }

    #octantBox(octant: number): Box {
        const quarter = this.tile.edge / 4;
        const centre = this.tile.centre.map((c, axis) => c + ((octant >> (2 - axis)) & 1 ? quarter : -quarter));
        return this.#drawnBox(centre as unknown as Vec3, this.tile.edge / 2);
    }

    #drawnBox(centre: Vec3, edge: number): Box {
        const box = boxToDrawn(cubeBox(centre, edge), this.grain.stretch);
        return this.grain.bounds === null ? box : boxWithin(box, this.grain.bounds);
    }
}
