import type { Vec3 } from '../math/vec3';

/** A cube of the octree with its points, as `/api/tile` sends it. */
export interface Tile {
    readonly centre: Vec3;
    readonly edge: number;
    readonly count: number;
    /** Bit k: octant k holds points; bit 2 of k is x high, bit 1 y, bit 0 z. */
    readonly octants: number;
    /** Deeper levels have more points of this cube. */
    readonly deeper: boolean;
    /** Four numbers a point: x, y, z in steps from the centre, and 0. */
    readonly places: Int16Array;
    /** Four bytes a point: red, green, blue, and 0. */
    readonly colors: Uint8Array;
}

export const headerBytes = 40;
export const pointBytes = 12;
export const stepsPerEdge = 65534;

/** @throws Error where the bytes are no tile. */
export function decodeTile(buffer: ArrayBuffer): Tile {
    if (buffer.byteLength < headerBytes) throw new Error('a tile without a whole header');
    const view = new DataView(buffer);
    const count = view.getUint32(32, true);
    if (buffer.byteLength !== headerBytes + count * pointBytes) throw new Error('a tile of another length');
    const flags = view.getUint32(36, true);
    const tile = {
        centre: [0, 8, 16].map((offset) => view.getFloat64(offset, true)) as unknown as Vec3,
        edge: view.getFloat64(24, true),
        count,
        octants: flags & 255,
        deeper: (flags & 256) !== 0,
    };
    return { ...tile, ...splitPoints(buffer, count) };
}

function splitPoints(buffer: ArrayBuffer, count: number): Pick<Tile, 'places' | 'colors'> {
    const words = new Int32Array(buffer, headerBytes, count * 3);
    const places = new Int32Array(count * 2);
    const colors = new Int32Array(count);
    for (let i = 0; i < count; ++i) {
        places[2 * i] = words[3 * i];
        places[2 * i + 1] = words[3 * i + 1];
        colors[i] = words[3 * i + 2];
    }
    return { places: new Int16Array(places.buffer), colors: new Uint8Array(colors.buffer) };
}

/** How far the points of a tile lie apart, coordinate units: told by the cells of a coarse grid that hold any. */
export function estimateSpacing(tile: Tile): number {
    const cells = 16;
    const seen = new Uint8Array(cells ** 3);
    const perStep = cells / 65536;
    let occupied = 0;
    for (let i = 0; i < tile.places.length; i += 4) {
        const x = Math.floor((tile.places[i] + 32768) * perStep);
        const y = Math.floor((tile.places[i + 1] + 32768) * perStep);
        const z = Math.floor((tile.places[i + 2] + 32768) * perStep);
        const cell = (x * cells + y) * cells + z;
        occupied += 1 - seen[cell];
        seen[cell] = 1;
    }
    if (occupied === 0) return tile.edge / 128;
    // A surface crosses a cell in about 1.3 times the area of its face, rims take less.
    return (tile.edge / cells) * Math.sqrt((1.1 * occupied) / tile.count);
}
