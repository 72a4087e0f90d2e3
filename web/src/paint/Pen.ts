import { accent, cssColor, surrounds, type Rgb, type Surround, type Theme } from '../colors/colors';
import type { Vec3 } from '../math/vec3';
import { noStretch, toDrawn, type Stretch } from '../math/stretch';
import type { ScreenPlace, View } from '../view/View';

const family = 'system-ui, "Segoe UI", Roboto, "DejaVu Sans", sans-serif';

/** Draws in CSS pixels over the picture of the points; its places are those of the cloud. */
export class Pen {
    readonly surround: Surround;
    readonly accent: Rgb;

    constructor(
        readonly context: CanvasRenderingContext2D,
        readonly view: View,
        theme: Theme,
        readonly stretch: Stretch = noStretch,
    ) {
        this.surround = surrounds[theme];
        this.accent = accent[theme];
    }

    project(place: Vec3): ScreenPlace {
        return this.view.project(toDrawn(place, this.stretch));
    }

    font(size: number, bold = false): void {
        this.context.font = `${bold ? 600 : 400} ${size}px ${family}`;
    }

    widthOf(text: string): number {
        return this.context.measureText(text).width;
    }

    /** @param align  0: the text begins at x, 0.5: its middle lies there, 1: it ends there. */
    text(x: number, y: number, align: number, text: string, alpha = 0.95): void {
        this.context.fillStyle = cssColor(this.surround.text, alpha);
        this.context.fillText(text, x - align * this.widthOf(text), y);
    }

    /** A text that can be read on any points: with a rim. */
    rimmed(x: number, y: number, align: number, text: string, alpha = 0.95): void {
        const { context } = this;
        context.lineJoin = 'round';
        context.lineWidth = 3.5;
        context.strokeStyle = cssColor(this.surround.background, 0.85);
        context.setLineDash([]);
        context.strokeText(text, x - align * this.widthOf(text), y);
        this.text(x, y, align, text, alpha);
    }

    /** A text that can be read on any points: with a panel behind it. */
    tag(x: number, y: number, text: string, bold = false): void {
        this.font(12.5, bold);
        const w = this.widthOf(text) + 14;
        this.panel(x - w / 2, y - 11, w, 22, 6, 0.86);
        this.text(x, y + 4.5, 0.5, text);
    }

    panel(x: number, y: number, w: number, h: number, radius = 8, alpha = 0.62): void {
        const { context } = this;
        context.beginPath();
        context.roundRect(x, y, w, h, radius);
        context.fillStyle = cssColor(this.surround.panel, alpha);
        context.fill();
    }

    rect(x: number, y: number, w: number, h: number, color: Rgb, alpha = 1): void {
        this.context.fillStyle = cssColor(color, alpha);
        this.context.fillRect(x, y, w, h);
    }

    /** Lines between places, as far as they lie in front of the viewer. */
    path(places: readonly Vec3[], closed: boolean, width: number, color: Rgb, dash: number[] = []): void {
        const { context } = this;
        context.beginPath();
        const count = closed ? places.length : places.length - 1;
        const drawn = places.map((place) => toDrawn(place, this.stretch));
        for (let i = 0; i < count; ++i) this.#piece(drawn[i], drawn[(i + 1) % drawn.length], i === 0);
        context.setLineDash(dash);
        context.lineJoin = context.lineCap = 'round';
        context.strokeStyle = cssColor(this.surround.panel, 0.7);
        context.lineWidth = width + 2.5;
        context.stroke();
        context.strokeStyle = cssColor(color);
        context.lineWidth = width;
        context.stroke();
        context.setLineDash([]);
    }

    /** Fills a ring; not where part of it lies behind the viewer. */
    fill(places: readonly Vec3[], color: Rgb, alpha: number): void {
        const seen = places.map((place) => this.project(place));
        if (seen.length < 3 || seen.some((place) => place.depth <= 0)) return;
        const { context } = this;
        context.beginPath();
        seen.forEach(({ x, y }, i) => (i === 0 ? context.moveTo(x, y) : context.lineTo(x, y)));
        context.closePath();
        context.fillStyle = cssColor(color, alpha);
        context.fill();
    }

    dot(place: Vec3, radius: number, color: Rgb): void {
        const { x, y, depth } = this.project(place);
        if (depth <= 0) return;
        const { context } = this;
        context.beginPath();
        context.arc(x, y, radius, 0, 2 * Math.PI);
        context.fillStyle = cssColor(color);
        context.fill();
        context.lineWidth = 1.5;
        context.strokeStyle = cssColor(this.surround.panel, 0.9);
        context.stroke();
    }

    #piece(from: Vec3, to: Vec3, first: boolean): void {
        const near = this.view.camera.parallel ? -Infinity : this.view.camera.distance * 1e-4;
        const depths = [this.view.depthOf(from), this.view.depthOf(to)];
        if (depths[0] <= near && depths[1] <= near) return;
        const cut = (a: Vec3, b: Vec3, da: number, db: number): Vec3 => {
            if (da > near) return a;
            const t = (near - da) / (db - da) + 1e-9;
            return [0, 1, 2].map((k) => a[k] + t * (b[k] - a[k])) as unknown as Vec3;
        };
        const a = this.view.project(cut(from, to, depths[0], depths[1]));
        const b = this.view.project(cut(to, from, depths[1], depths[0]));
        if (first || depths[0] <= near) this.context.moveTo(a.x, a.y);
        this.context.lineTo(b.x, b.y);
    }
}
