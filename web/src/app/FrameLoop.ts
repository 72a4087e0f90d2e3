import type { App } from './App';
import { heightRange } from '../data/info';
import type { Rgb } from '../colors/colors';
import { boxToDrawn, toDrawn } from '../math/stretch';
import { isByHeight } from './start';

const finest = 1.3; // CSS pixels between points that are fine enough
const longestStep = 0.1; // seconds that a flight goes on for at most, after a pause of the browser's

/** Draws when something has changed, and goes on while something moves. */
export class FrameLoop {
    #requested = false;
    #last = 0;

    constructor(readonly app: App) {}

    request(): void {
        if (this.#requested) return;
        this.#requested = true;
        document.documentElement.dataset.settled = 'no';
        requestAnimationFrame((now) => this.#frame(now));
    }

    #frame(now: number): void {
        this.#requested = false;
        const moves = this.#move(now);
        this.#last = now;
        this.#draw();
        const settled = !moves && this.app.stage.isComplete;
        if (settled) document.documentElement.dataset.settled = 'yes';
        this.app.ui.showDrawn(this.app.stage.selection.points, this.app.stage.isComplete);
        if (moves) this.request();
    }

    #move(now: number): boolean {
        const { app } = this;
        if (app.motion !== null) {
            const { camera, done } = app.motion.at(now);
            const motion = done ? null : app.motion;
            app.setCamera(camera);
            app.motion = motion;
            return !done;
        }
        if (!app.flying || !app.flight.isMoving) return false;
        const seconds = Math.min(longestStep, (now - this.#last) / 1000);
        app.setCamera(app.flight.step(app.state.camera, seconds));
        return true;
    }

    #draw(): void {
        const { app } = this;
        const { state } = app;
        const { stretch } = app.proportions;
        const clip = state.clip === null ? null : boxToDrawn(state.clip, stretch);
        app.stage.draw(
            {
                camera: state.camera,
                look: {
                    theme: state.theme,
                    background: state.background === null ? null : parseColor(state.background),
                    byHeight: isByHeight(app),
                    heights: heightRange(app.info),
                    pointSize: state.pointSize,
                    shading: state.shading,
                    clip,
                    ring: state.polygon.map((place) => toDrawn(place, stretch)),
                },
                options: { budget: state.budget, pixels: finest, clip },
            },
            (context, view) => app.painter.paint(context, view),
        );
    }
}

function parseColor(text: string): Rgb {
    const n = parseInt(text.slice(1), 16);
    return [n >> 16, (n >> 8) & 255, n & 255];
}
