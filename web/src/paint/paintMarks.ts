import type { Corridor } from '../app/State';
import type { Proportions } from '../data/Proportions';
import { boxCorner, boxEdges, type Box } from '../math/Box';
import { mix, sub, type Vec3 } from '../math/vec3';
import { readMark, type Mark } from '../tools/marks';
import type { Gathering } from '../tools/tools';
import type { Pen } from './Pen';

export function paintMark(pen: Pen, mark: Mark, proportions: Proportions): void {
    const { places, kind } = mark;
    const closed = kind === 'area';
    if (closed) pen.fill(places, pen.accent, 0.18);
    if (kind === 'height') paintHeight(pen, places[0], places[1]);
    else if (places.length > 1) pen.path(places, closed, 2, pen.accent);
    for (const place of places) pen.dot(place, 4.5, pen.accent);
    const reading = readMark(mark, proportions);
    const label = kind === 'point' ? reading.slice(0, 3).map(({ value }) => value).join('  ') : reading[0].value;
    const at = pen.project(anchorOf(mark));
    if (at.depth > 0) pen.tag(at.x, at.y - 20, label, true);
}

function anchorOf({ kind, places }: Mark): Vec3 {
    if (kind === 'point') return places[0];
    if (kind === 'angle') return places[1];
    if (kind === 'height') return [places[1][0], places[1][1], (places[0][2] + places[1][2]) / 2];
    if (kind === 'area') {
        const sum = places.reduce<Vec3>((s, place) => [s[0] + place[0], s[1] + place[1], s[2] + place[2]], [0, 0, 0]);
        return [sum[0] / places.length, sum[1] / places.length, sum[2] / places.length];
    }
    const half = Math.floor((places.length - 1) / 2);
    return mix(places[half], places[half + 1], 0.5);
}

/** From the lower place across to below the upper one, and up. */
function paintHeight(pen: Pen, a: Vec3, b: Vec3): void {
    const corner: Vec3 = [b[0], b[1], a[2]];
    pen.path([a, corner], false, 1.5, pen.accent, [5, 5]);
    pen.path([corner, b], false, 2.5, pen.accent);
}

/** What has been clicked so far, with a line to where the next click would be. */
export function paintGathering(pen: Pen, gathering: Gathering, hover: Vec3 | null): void {
    const path = hover === null ? gathering.places : [...gathering.places, hover];
    if (gathering.kind.closed && path.length > 2) pen.fill(path, pen.accent, 0.16);
    if (path.length > 1) pen.path(path, gathering.kind.closed ?? false, 2, pen.accent, [7, 5]);
    for (const place of gathering.places) pen.dot(place, 4.5, pen.accent);
}

/** Where a click would snap to. */
export function paintHover(pen: Pen, place: Vec3): void {
    const { x, y, depth } = pen.project(place);
    if (depth > 0) strokeRimmed(pen, () => pen.context.arc(x, y, 7, 0, 2 * Math.PI));
}

/** A cross around the middle of the picture, which itself stays free. */
export function paintMiddle(pen: Pen): void {
    const { context, view } = pen;
    const [x, y] = [view.width / 2, view.height / 2];
    strokeRimmed(pen, () => {
        for (const [dx, dy] of [[1, 0], [-1, 0], [0, 1], [0, -1]]) {
            context.moveTo(x + 4 * dx, y + 4 * dy);
            context.lineTo(x + 12 * dx, y + 12 * dy);
        }
    });
}

function strokeRimmed({ context, surround, accent }: Pen, trace: () => void): void {
    for (const [width, color] of [[4, surround.panel], [1.75, accent]] as const) {
        context.beginPath();
        trace();
        context.lineWidth = width;
        context.strokeStyle = `rgb(${color.join(',')})`;
        context.stroke();
    }
}

export function paintClipBox(pen: Pen, box: Box): void {
    for (const [a, b] of boxEdges) pen.path([boxCorner(box, a), boxCorner(box, b)], false, 1, pen.surround.line);
}

/** The rim of a profile's corridor, at the height of its line, and the line. */
export function paintCorridor(pen: Pen, corridor: Corridor): void {
    const { from, to, width } = corridor;
    pen.path(corridorRing(from, to, width), true, 1, pen.accent, [4, 4]);
    pen.path([from, to], false, 2, pen.accent);
    pen.dot(from, 4.5, pen.accent);
    pen.dot(to, 4.5, pen.accent);
}

export function corridorRing(from: Vec3, to: Vec3, width: number): Vec3[] {
    const [dx, dy] = sub(to, from);
    const length = Math.hypot(dx, dy);
    if (!(length > 0)) return [from];
    const [nx, ny] = [(-dy / length) * (width / 2), (dx / length) * (width / 2)];
    return [
        [from[0] + nx, from[1] + ny, from[2]],
        [to[0] + nx, to[1] + ny, to[2]],
        [to[0] - nx, to[1] - ny, to[2]],
        [from[0] - nx, from[1] - ny, from[2]],
    ];
}
