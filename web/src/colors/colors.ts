export type Rgb = readonly [number, number, number];

/** From low (dark blue) to high (cream): the ramp of `zorcld view`; lightness rises all the way. */
export const heightStops: readonly Rgb[] = [
    [46, 50, 128],
    [38, 86, 160],
    [30, 126, 166],
    [42, 156, 140],
    [92, 178, 98],
    [160, 196, 76],
    [226, 204, 82],
    [244, 184, 108],
    [252, 232, 206],
];

export function heightColor(share: number): Rgb {
    const pos = Math.min(1, Math.max(0, share)) * (heightStops.length - 1);
    const n = Math.min(Math.floor(pos), heightStops.length - 2);
    const t = pos - n;
    return [0, 1, 2].map((k) => heightStops[n][k] + t * (heightStops[n + 1][k] - heightStops[n][k])) as unknown as Rgb;
}

/** The greys of intensities. */
export function greyColor(share: number): Rgb {
    const f = 62 + Math.min(1, Math.max(0, share)) * (208 - 62);
    return [f, f, f];
}

export function cssColor(color: Rgb, alpha = 1): string {
    const [r, g, b] = color.map(Math.round);
    return alpha < 1 ? `rgba(${r}, ${g}, ${b}, ${alpha})` : `rgb(${r}, ${g}, ${b})`;
}

export type Theme = 'dark' | 'light';

/** What is shown where no points are, and what can be read on it: the backgrounds of `zorcld view`. */
export interface Surround {
    readonly background: Rgb;
    readonly text: Rgb;
    readonly panel: Rgb;
    readonly line: Rgb;
}

export const surrounds: Readonly<Record<Theme, Surround>> = {
    dark: { background: [30, 34, 41], text: [237, 242, 247], panel: [15, 18, 23], line: [170, 178, 190] },
    light: { background: [250, 250, 248], text: [24, 28, 34], panel: [255, 255, 255], line: [84, 92, 104] },
};

export const accent: Readonly<Record<Theme, Rgb>> = { dark: [255, 190, 92], light: [196, 84, 10] };
