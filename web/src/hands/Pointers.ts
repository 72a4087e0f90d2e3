import { clamp } from '../math/numbers';
import type { Vec3 } from '../math/vec3';
import { orbit, pan, zoom, type Camera } from '../view/Camera';
import type { View } from '../view/View';

/** What the hands need of the rest. */
export interface HandsHost {
    view(): View;
    setCamera(camera: Camera): void;
    /** The place of the cloud under a pixel; null: none. */
    pickPlace(x: number, y: number): Promise<Vec3 | null>;
    hover(x: number, y: number): void;
    leave(): void;
    click(x: number, y: number): void;
    doubleClick(x: number, y: number): void;
    /** What a drag with the main button does. */
    drag(): 'orbit' | 'pan' | 'look';
}

interface Spot {
    readonly x: number;
    readonly y: number;
}

type Way = 'orbit' | 'pan' | 'look' | 'pinch';

/** A drag that goes on: moves that come before its anchor is known wait for it. */
interface Grip {
    readonly way: Way;
    anchor: Vec3 | null;
    waiting: (() => void)[];
}

const clickReach = 5; // pixels that a click may wander
const doubleTap = 350; // milliseconds
const degreesPerPixel = 0.3;

/** Mouse, pen and fingers on the picture. */
export class Pointers {
    readonly #down = new Map<number, Spot>();
    readonly #lastTap = { x: 0, y: 0, time: -Infinity };
    #grip: Grip | null = null;
    #wandered = 0;
    #wheel: { at: Spot; anchor: Promise<Vec3> } | null = null;

    constructor(
        readonly element: HTMLElement,
        readonly host: HandsHost,
    ) {
        element.addEventListener('pointerdown', (event) => this.#press(event));
        element.addEventListener('pointermove', (event) => this.#move(event));
        element.addEventListener('pointerup', (event) => this.#release(event));
        element.addEventListener('pointercancel', (event) => this.#release(event));
        element.addEventListener('pointerleave', () => host.leave());
        element.addEventListener('contextmenu', (event) => event.preventDefault());
        element.addEventListener('wheel', (event) => this.#turnWheel(event), { passive: false });
    }

    get isBusy(): boolean {
        return this.#down.size > 0;
    }

    #spot(event: MouseEvent): Spot {
        const rect = this.element.getBoundingClientRect();
        return { x: event.clientX - rect.left, y: event.clientY - rect.top };
    }

    #press(event: PointerEvent): void {
        this.element.setPointerCapture(event.pointerId);
        this.element.focus({ preventScroll: true });
        this.#down.set(event.pointerId, this.#spot(event));
        if (this.#down.size === 1) this.#wandered = 0;
        this.#takeHold(this.#down.size > 1 ? 'pinch' : this.#wayOf(event));
    }

    #wayOf(event: PointerEvent): Way {
        const across = event.button === 1 || event.button === 2 || event.shiftKey;
        return across ? 'pan' : this.host.drag();
    }

    #takeHold(way: Way): void {
        const grip: Grip = { way, anchor: null, waiting: [] };
        this.#grip = grip;
        const { x, y } = this.#middle();
        void this.#anchorAt(x, y).then((anchor) => {
            grip.anchor = anchor;
            for (const move of grip.waiting) move();
            grip.waiting = [];
        });
    }

    /** The place under a pixel, or one as far away as what is looked at. */
    async #anchorAt(x: number, y: number): Promise<Vec3> {
        const view = this.host.view();
        return (await this.host.pickPlace(x, y)) ?? view.unproject(x, y, view.camera.distance);
    }

    #middle(): Spot {
        const spots = [...this.#down.values()];
        return {
            x: spots.reduce((sum, spot) => sum + spot.x, 0) / spots.length,
            y: spots.reduce((sum, spot) => sum + spot.y, 0) / spots.length,
        };
    }

    #move(event: PointerEvent): void {
        const spot = this.#spot(event);
        if (!this.#down.has(event.pointerId)) {
            if (event.pointerType !== 'touch') this.host.hover(spot.x, spot.y);
            return;
        }
        const before = this.#gesture();
        this.#down.set(event.pointerId, spot);
        const after = this.#gesture();
        const [dx, dy] = [after.x - before.x, after.y - before.y];
        this.#wandered += Math.abs(dx) + Math.abs(dy) + Math.abs(after.spread - before.spread);
        const grip = this.#grip;
        if (grip === null || this.#wandered <= clickReach) return;
        const apply = (): void =>
            this.#drag(grip, dx, dy, after.spread / before.spread, after.turn - before.turn);
        if (grip.anchor === null) grip.waiting.push(apply);
        else apply();
    }

    /** Where the fingers are, how far apart, and how they are turned, degrees. */
    #gesture(): Spot & { spread: number; turn: number } {
        const spots = [...this.#down.values()];
        if (spots.length < 2) return { ...this.#middle(), spread: 1, turn: 0 };
        const [dx, dy] = [spots[1].x - spots[0].x, spots[1].y - spots[0].y];
        const spread = Math.max(1, Math.hypot(dx, dy));
        return { ...this.#middle(), spread, turn: (Math.atan2(dy, dx) * 180) / Math.PI };
    }

    #drag(grip: Grip, dx: number, dy: number, spread: number, turn: number): void {
        const view = this.host.view();
        const anchor = grip.anchor ?? view.camera.target;
        if (grip.way === 'orbit' || grip.way === 'look') {
            const pivot = grip.way === 'look' ? view.eye : anchor;
            const sign = grip.way === 'look' ? -0.5 : 1;
            const [azimuth, elevation] = [dx, dy].map((d) => sign * d * degreesPerPixel);
            this.host.setCamera(orbit(view.camera, pivot, azimuth, elevation));
            return;
        }
        const perUnit = view.pixelsPerUnit(Math.max(view.depthOf(anchor), 1e-6));
        let camera = pan(view.camera, -dx / perUnit, dy / perUnit);
        if (grip.way === 'pinch') {
            const turned = Math.abs(turn) < 180 ? turn : 0;
            camera = orbit(zoom(camera, anchor, 1 / spread), anchor, turned, 0);
        }
        this.host.setCamera(camera);
    }

    #release(event: PointerEvent): void {
        const spot = this.#down.get(event.pointerId);
        this.#down.delete(event.pointerId);
        if (this.#down.size > 0) {
            this.#takeHold(this.host.drag());
            return;
        }
        this.#grip = null;
        const isClick = event.type === 'pointerup' && event.button === 0 && this.#wandered <= clickReach;
        if (spot !== undefined && isClick) this.#tap(spot, event.timeStamp);
    }

    /** @param now  when it was, which on a busy page is long before it is heard of. */
    #tap({ x, y }: Spot, now: number): void {
        const last = this.#lastTap;
        const double = now - last.time < doubleTap && Math.hypot(x - last.x, y - last.y) < 4 * clickReach;
        Object.assign(last, { x, y, time: double ? -Infinity : now });
        if (double) this.host.doubleClick(x, y);
        else this.host.click(x, y);
    }

    #turnWheel(event: WheelEvent): void {
        event.preventDefault();
        const spot = this.#spot(event);
        const lines = event.deltaMode === 1 ? event.deltaY * 16 : event.deltaY;
        const factor = Math.exp(clamp(lines, -240, 240) * 0.0016);
        const held = this.#wheel;
        if (held === null || Math.hypot(spot.x - held.at.x, spot.y - held.at.y) > clickReach)
            this.#wheel = { at: spot, anchor: this.#anchorAt(spot.x, spot.y) };
        void this.#wheel?.anchor.then((anchor) => {
            const { camera } = this.host.view();
            this.host.setCamera(zoom(camera, anchor, factor));
        });
    }

    /** The wheel's anchor holds until the view changes in another way. */
    letGo(): void {
        this.#wheel = null;
    }
}
