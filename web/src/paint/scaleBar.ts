import { roundDown } from '../math/numbers';
import { cssColor, type Rgb } from '../colors/colors';
import type { Pen } from './Pen';

const light: Rgb = [240, 243, 247];
const dark: Rgb = [92, 100, 112];
const frame: Rgb = [10, 12, 15];

/** How long the bar is: a round number of units, about 160 pixels. */
export function chooseScale(pixelsPerUnit: number): { units: number; pixels: number } {
    const units = roundDown(180 / pixelsPerUnit);
    return { units, pixels: units * pixelsPerUnit };
}

/** A bar for lengths across the view at the distance of what is looked at; true everywhere in a parallel view. */
export function paintScaleBar(pen: Pen, x: number, y: number, unit: string | null): void {
    const perUnit = pen.view.pixelsPerUnit(pen.view.camera.distance);
    const { units, pixels } = chooseScale(perUnit);
    pen.rect(x - 1, y - 1, pixels + 2, 8, frame, 0.9);
    for (let k = 0; k < 4; ++k) pen.rect(x + (k * pixels) / 4, y, pixels / 4, 6, k % 2 === 0 ? light : dark);
    pen.font(12.5);
    pen.rimmed(x, y - 7, 0, '0');
    const label = formatUnits(units);
    if (pixels > 90) pen.rimmed(x + pixels / 2, y - 7, 0.5, formatUnits(units / 2));
    pen.rimmed(x + pixels, y - 7, 0.5, label);
    pen.rimmed(x + pixels + pen.widthOf(label) / 2 + 5, y - 7, 0, unit ?? 'units', 0.8);
}

function formatUnits(units: number): string {
    return String(Number(units.toPrecision(3)));
}

/** An arrow to the north, as it lies on the picture. */
export function paintNorth(pen: Pen, x: number, y: number): void {
    const { basis } = pen.view;
    const [dx, dy] = [basis.right[1], -basis.up[1]];
    const length = Math.hypot(dx, dy);
    if (length < 0.05) return; // it points at the viewer
    const [nx, ny] = [dx / length, dy / length];
    const size = 13 * Math.max(0.45, length);
    const { context } = pen;
    const wing = (side: number, alpha: number): void => {
        context.beginPath();
        context.moveTo(x + nx * size, y + ny * size);
        context.lineTo(x - nx * size + side * -ny * 8, y - ny * size + side * nx * 8);
        context.lineTo(x - nx * size * 0.45, y - ny * size * 0.45);
        context.closePath();
        const [r, g, b] = pen.surround.text;
        context.setLineDash([]);
        context.lineWidth = 2;
        context.strokeStyle = cssColor(pen.surround.background, 0.85);
        context.stroke();
        context.fillStyle = `rgba(${r}, ${g}, ${b}, ${alpha})`;
        context.fill();
    };
    wing(1, 0.95);
    wing(-1, 0.55);
    pen.font(12, true);
    pen.rimmed(x + nx * (size + 10), y + ny * (size + 10) + 4, 0.5, 'N');
}
