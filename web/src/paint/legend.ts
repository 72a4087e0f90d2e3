import { cssColor, type Rgb } from '../colors/colors';
import type { LegendEntry } from '../data/info';
import { groupDigits, makeTicks, roundDown, type Tick } from '../math/numbers';
import type { Pen } from './Pen';

/** What the colours stand for: a ramp over a range, or a list. */
export type Legend =
    | {
          readonly kind: 'ramp';
          readonly title: string;
          readonly min: number;
          readonly max: number;
          readonly color: (share: number) => Rgb;
      }
    | { readonly kind: 'list'; readonly title: string; readonly entries: readonly LegendEntry[]; readonly counted: boolean };

/** Paints a legend whose panel ends at `right`, in the middle between two heights. */
export function paintLegend(pen: Pen, legend: Legend, right: number, top: number, bottom: number): void {
    if (bottom - top < 120) return;
    if (legend.kind === 'ramp') paintRamp(pen, legend, right, top, bottom);
    else paintList(pen, legend, right, top, bottom);
}

type Ramp = Extract<Legend, { kind: 'ramp' }>;
type List = Extract<Legend, { kind: 'list' }>;

const highest = 300; // CSS pixels of a ramp
const opacity = 0.78; // to be read on bright points, too

/** CSS pixels of the panel, as wide as it may be. */
export function legendWidth(pen: Pen, legend: Legend): number {
    return legend.kind === 'ramp' ? rampWidth(pen, legend, rampTicks(legend, highest)) : listWidth(pen, legend, legend.entries);
}

function rampTicks(legend: Ramp, height: number): Tick[] {
    const range = legend.max - legend.min;
    const ticks = range > 0 ? makeTicks(legend.min, legend.max, tickStep(range, height)) : [];
    return ticks.length > 0 ? ticks : [{ value: legend.min, label: String(Number(legend.min.toFixed(3))) }];
}

function rampWidth(pen: Pen, legend: Ramp, ticks: readonly Tick[]): number {
    pen.font(13, true);
    const titleWidth = pen.widthOf(legend.title);
    pen.font(12.5);
    return Math.max(Math.max(...ticks.map((tick) => pen.widthOf(tick.label))) + 54, titleWidth + 28);
}

function listWidth(pen: Pen, { counted }: List, entries: readonly LegendEntry[]): number {
    pen.font(12.5);
    const texts = Math.max(...entries.map((entry) => pen.widthOf(entry.text)), 40);
    const counts = counted ? Math.max(...entries.map(({ points }) => pen.widthOf(groupDigits(points))), 0) + 66 : 49;
    return texts + counts;
}

function paintRamp(
    pen: Pen,
    legend: Ramp,
    right: number,
    top: number,
    bottom: number,
): void {
    const height = Math.min(highest, bottom - top - 60);
    const range = legend.max - legend.min;
    const ticks = rampTicks(legend, height);
    const width = rampWidth(pen, legend, ticks);
    const x = right - width + 14;
    const yPanel = top + (bottom - top - height - 58) / 2;
    const y = yPanel + 42;
    pen.panel(right - width, yPanel, width, height + 58, 8, opacity);
    pen.font(13, true);
    pen.text(x, yPanel + 24, 0, legend.title);
    const gradient = pen.context.createLinearGradient(0, y, 0, y + height);
    for (let k = 0; k <= 32; ++k) gradient.addColorStop(k / 32, cssColor(legend.color(1 - k / 32)));
    pen.context.fillStyle = gradient;
    pen.context.fillRect(x, y, 16, height);
    pen.font(12.5);
    for (const tick of ticks) {
        const share = range > 0 ? (legend.max - tick.value) / range : 0.5;
        const yTick = Math.round(y + height * share);
        pen.rect(x + 16, yTick - 0.5, 5, 1, pen.surround.text, 0.9);
        pen.text(x + 26, yTick + 4.5, 0, tick.label);
    }
}

function tickStep(range: number, height: number): number {
    let step = roundDown(range / 4);
    while ((range / step) * 22 > height) step = roundDown(2.51 * step); // labels, one above the other
    return step;
}

function paintList(
    pen: Pen,
    legend: List,
    right: number,
    top: number,
    bottom: number,
): void {
    const row = 22;
    const most = Math.max(1, Math.floor((bottom - top - 60) / row));
    const entries = legend.entries.slice(0, most);
    const width = listWidth(pen, legend, entries);
    const height = entries.length * row + 46;
    const yPanel = top + (bottom - top - height) / 2;
    const x = right - width + 14;
    pen.panel(right - width, yPanel, width, height, 8, opacity);
    pen.font(13, true);
    pen.text(x, yPanel + 24, 0, legend.title);
    pen.font(12.5);
    entries.forEach((entry, i) => {
        const y = yPanel + 40 + i * row;
        pen.context.fillStyle = entry.color;
        pen.context.fillRect(x, y, 13, 13);
        pen.text(x + 21, y + 11, 0, entry.text);
        if (legend.counted) pen.text(right - 14, y + 11, 1, groupDigits(entry.points), 0.7);
    });
}
