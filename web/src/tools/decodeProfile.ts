/** The points of a corridor, as `/api/profile` sends them. */
export interface Profile {
    readonly length: number;
    /** What heights are counted from. */
    readonly base: number;
    readonly count: number;
    readonly color: boolean;
    /** Five 32-bit words a point: distance along, height above the base, offset, index, colour. */
    readonly floats: Float32Array;
    readonly ints: Int32Array;
    readonly bytes: Uint8Array;
}

const headerBytes = 24;
export const profileWords = 5;

/** @throws Error where the bytes are no profile. */
export function decodeProfile(buffer: ArrayBuffer): Profile {
    if (buffer.byteLength < headerBytes) throw new Error('a profile without a whole header');
    const view = new DataView(buffer);
    const count = view.getUint32(16, true);
    if (buffer.byteLength !== headerBytes + count * 4 * profileWords) throw new Error('a profile of another length');
    return {
        length: view.getFloat64(0, true),
        base: view.getFloat64(8, true),
        count,
        color: (view.getUint32(20, true) & 1) !== 0,
        floats: new Float32Array(buffer, headerBytes),
        ints: new Int32Array(buffer, headerBytes),
        bytes: new Uint8Array(buffer, headerBytes),
    };
}

export function profileHeights(profile: Profile): { min: number; max: number } {
    let min = Infinity;
    let max = -Infinity;
    for (let i = 1; i < profile.floats.length; i += profileWords) {
        min = Math.min(min, profile.floats[i]);
        max = Math.max(max, profile.floats[i]);
    }
    return min <= max ? { min: profile.base + min, max: profile.base + max } : { min: 0, max: 1 };
}
