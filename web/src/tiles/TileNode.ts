import { cubeBox, type Box } from '../math/Box';
import type { Vec3 } from '../math/vec3';
import { decodeTile, estimateSpacing, type Tile } from './decodeTile';

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

/** A tile that is there. */
export class TileNode {
    readonly key: string;
    readonly tile: Tile;
    readonly box: Box;
    /** What the level thins to, coordinate units. */
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
    ) {
        this.key = addressKey(address);
        this.tile = decodeTile(bytes);
        this.box = cubeBox(this.tile.centre, this.tile.edge);
        this.spacing = this.tile.edge / spacingsPerEdge;
        this.pointSpacing = Math.min(estimateSpacing(this.tile), above?.pointSpacing ?? 4 * this.spacing);
    }

    /** The octants that hold points. */
    children(): { address: TileAddress; box: Box }[] {
        const octants = [0, 1, 2, 3, 4, 5, 6, 7].filter((k) => (this.tile.octants >> k) & 1);
        return octants.map((k) => ({ address: childAddress(this.address, k), box: this.#octantBox(k) }));
    }

    #octantBox(octant: number): Box {
        const quarter = this.tile.edge / 4;
        const centre = this.tile.centre.map((c, axis) => c + ((octant >> (2 - axis)) & 1 ? quarter : -quarter));
        return cubeBox(centre as unknown as Vec3, this.tile.edge / 2);
    }
}
