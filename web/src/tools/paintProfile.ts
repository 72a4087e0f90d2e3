import { heightColor, surrounds, type Theme } from '../colors/colors';
import { makeTicks, roundDown } from '../math/numbers';
import { profileHeights, profileWords, type Profile } from './decodeProfile';

/** Where the diagram lies, and what it reaches over. */
export interface Axes {
    readonly x: number;
    readonly y: number;
    readonly width: number;
    readonly height: number;
    readonly maxX: number;
    readonly minY: number;
    readonly maxY: number;
    /** Heights are drawn so many times as large as distances. */
    readonly exaggeration: number;
}

const maxExaggeration = 100;

/** Heights as large as they fit in round steps. */
export function fitAxes(profile: Profile, width: number, height: number): Axes {
    const { min, max } = profileHeights(profile);
    const area = { x: 62, y: 12, width: Math.max(1, width - 78), height: Math.max(1, height - 46) };
    const perUnit = area.width / Math.max(profile.length, 1e-9);
    const needed = Math.max((max - min) * 1.08, 1e-9);
    const exaggeration = Math.min(roundDown(area.height / needed / perUnit), maxExaggeration);
    const shown = area.height / (perUnit * exaggeration);
    const middle = (min + max) / 2;
    return { ...area, maxX: profile.length, minY: middle - shown / 2, maxY: middle + shown / 2, exaggeration };
}

export interface ProfileLook {
    readonly theme: Theme;
    readonly byHeight: boolean;
    /** Device pixels a CSS pixel. */
    readonly scale: number;
}

export function paintProfile(canvas: HTMLCanvasElement, profile: Profile, axes: Axes, look: ProfileLook): void {
    const context = canvas.getContext('2d', { willReadFrequently: true })!;
    context.setTransform(1, 0, 0, 1, 0, 0);
    context.clearRect(0, 0, canvas.width, canvas.height);
    paintPoints(context, profile, axes, look);
    context.setTransform(look.scale, 0, 0, look.scale, 0, 0);
    paintAxes(context, axes, look.theme);
}

/** Point by point into the picture's bytes: millions take no longer than a moment. */
function paintPoints(context: CanvasRenderingContext2D, profile: Profile, axes: Axes, look: ProfileLook): void {
    const { canvas } = context;
    const image = context.getImageData(0, 0, canvas.width, canvas.height);
    const pixels = new Uint32Array(image.data.buffer);
    const side = Math.max(1, Math.round((profile.count > 20000 ? 1.5 : profile.count > 1000 ? 2.5 : 4) * look.scale));
    const { min, max } = profileHeights(profile);
    const ramp = Uint32Array.from({ length: 256 }, (_, i) => packColor(heightColor(i / 255)));
    const { floats, ints } = profile;
    const perX = (axes.width / axes.maxX) * look.scale;
    const perY = (axes.height / (axes.maxY - axes.minY)) * look.scale;
    for (let i = 0; i < floats.length; i += profileWords) {
        const z = profile.base + floats[i + 1];
        const x = Math.round(axes.x * look.scale + floats[i] * perX - side / 2);
        const y = Math.round(axes.y * look.scale + (axes.maxY - z) * perY - side / 2);
        const share = max > min ? (z - min) / (max - min) : 0.5;
        const byHeight = look.byHeight || !profile.color;
        const color = byHeight ? ramp[Math.round(255 * share)] : (ints[i + 4] | 0xff000000) >>> 0;
        for (let v = Math.max(0, y); v < Math.min(canvas.height, y + side); ++v)
            pixels.fill(color, v * canvas.width + Math.max(0, x), v * canvas.width + Math.min(canvas.width, x + side));
    }
    context.putImageData(image, 0, 0);
}

function packColor(color: readonly number[]): number {
    const [r, g, b] = color.map(Math.round);
    return (0xff000000 | (b << 16) | (g << 8) | r) >>> 0;
}

function paintAxes(context: CanvasRenderingContext2D, axes: Axes, theme: Theme): void {
    const { text, line } = surrounds[theme];
    context.font = '12px system-ui, sans-serif';
    context.fillStyle = `rgb(${text.join(',')})`;
    context.strokeStyle = `rgba(${line.join(',')}, 0.22)`;
    context.lineWidth = 1;
    context.beginPath();
    const bottom = axes.y + axes.height;
    for (const tick of makeTicks(0, axes.maxX, roundDown((axes.maxX / Math.max(1, axes.width / 90)) * 1.9))) {
        const x = Math.round(axes.x + (tick.value / axes.maxX) * axes.width) + 0.5;
        context.moveTo(x, axes.y);
        context.lineTo(x, bottom);
        context.fillText(tick.label, x - context.measureText(tick.label).width / 2, bottom + 18);
    }
    const range = axes.maxY - axes.minY;
    for (const tick of makeTicks(axes.minY, axes.maxY, roundDown((range / Math.max(1, axes.height / 36)) * 1.9))) {
        const y = Math.round(axes.y + ((axes.maxY - tick.value) / range) * axes.height) + 0.5;
        context.moveTo(axes.x, y);
        context.lineTo(axes.x + axes.width, y);
        context.fillText(tick.label, axes.x - 8 - context.measureText(tick.label).width, y + 4);
    }
    context.stroke();
    context.strokeStyle = `rgb(${line.join(',')})`;
    context.strokeRect(axes.x + 0.5, axes.y + 0.5, axes.width - 1, axes.height - 1);
}

/** The point drawn nearest to a pixel, at most a few pixels away; -1: none. */
export function findDrawn(profile: Profile, axes: Axes, x: number, y: number): number {
    const perX = axes.width / axes.maxX;
    const perY = axes.height / (axes.maxY - axes.minY);
    let best = -1;
    let nearest = 64; // squared pixels
    for (let i = 0; i < profile.floats.length; i += profileWords) {
        const dx = axes.x + profile.floats[i] * perX - x;
        const dy = axes.y + (axes.maxY - profile.base - profile.floats[i + 1]) * perY - y;
        const square = dx * dx + dy * dy;
        if (square >= nearest) continue;
        nearest = square;
        best = i / profileWords;
    }
    return best;
}
