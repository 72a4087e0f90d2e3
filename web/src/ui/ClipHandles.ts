import type { App } from '../app/App';
import { formatCoord } from '../math/numbers';
import { along } from '../math/vec3';
import { faceCentre, faces, moveFace, type Face } from '../tools/moveFace';
import type { View } from '../view/View';
import { h } from './dom';

const keySteps = 100; // of the cloud's extent
const axisNames = ['x', 'y', 'z'];

/** A handle on each face of the clip box: dragged, or moved with the arrow keys. */
export class ClipHandles {
    readonly element = h('div', { class: 'handles' });
    readonly #handles = faces.map((face) => this.#make(face));

    constructor(readonly app: App) {
        this.element.append(...this.#handles);
    }

    /** Puts the handles where their faces are seen. */
    place(view: View): void {
        const { clip } = this.app.state;
        this.element.hidden = clip === null;
        if (clip === null) return;
        faces.forEach((face, i) => {
            const handle = this.#handles[i];
            const { x, y, depth } = view.project(faceCentre(this.app.drawnBox(clip), face));
            handle.hidden = depth <= 0 && !view.camera.parallel;
            handle.style.transform = `translate(${x}px, ${y}px)`;
            const value = (face.high ? clip.max : clip.min)[face.axis];
            handle.setAttribute('aria-valuenow', formatCoord(value));
        });
    }

    #make(face: Face): HTMLElement {
        const label = `Clip box, ${face.high ? 'upper' : 'lower'} ${axisNames[face.axis]}`;
        const handle = h('div', {
            class: `handle keeps-arrows axis-${axisNames[face.axis]}`,
            attr: { role: 'slider', tabindex: '0', 'aria-label': label, title: label },
        });
        handle.addEventListener('pointerdown', (event) => this.#drag(event, handle, face));
        handle.addEventListener('keydown', (event) => this.#key(event, face));
        return handle;
    }

    #drag(down: PointerEvent, handle: HTMLElement, face: Face): void {
        const box = this.app.state.clip;
        if (box === null) return;
        down.preventDefault();
        handle.focus();
        handle.setPointerCapture(down.pointerId);
        const view = this.app.view();
        const centre = faceCentre(this.app.drawnBox(box), face);
        const from = view.project(centre);
        const unit = Math.max(1e-9, 20 / view.pixelsPerUnit(Math.max(from.depth, 1e-6)));
        const axis = [0, 1, 2].map((k) => (k === face.axis ? 1 : 0)) as unknown as readonly [number, number, number];
        const to = view.project(along(centre, axis, unit));
        const [ax, ay] = [to.x - from.x, to.y - from.y];
        const square = Math.max(ax * ax + ay * ay, 4); // an axis that points at the viewer moves slowly
        const move = (event: PointerEvent): void => {
            const share = ((event.clientX - down.clientX) * ax + (event.clientY - down.clientY) * ay) / square;
            this.#set(face, (centre[face.axis] + share * unit) / this.app.proportions.stretch[face.axis]);
        };
        const up = (): void => {
            handle.removeEventListener('pointermove', move);
            handle.removeEventListener('pointerup', up);
            handle.removeEventListener('pointercancel', up);
        };
        handle.addEventListener('pointermove', move);
        handle.addEventListener('pointerup', up);
        handle.addEventListener('pointercancel', up);
    }

    #key(event: KeyboardEvent, face: Face): void {
        const ways: Readonly<Record<string, number>> = { ArrowUp: 1, ArrowRight: 1, ArrowDown: -1, ArrowLeft: -1 };
        const way = ways[event.key];
        const box = this.app.state.clip;
        if (way === undefined || box === null) return;
        event.preventDefault();
        const bounds = this.app.bounds();
        const step = (bounds.max[face.axis] - bounds.min[face.axis]) / keySteps;
        const now = (face.high ? box.max : box.min)[face.axis];
        this.#set(face, now + way * step * (event.shiftKey ? 10 : 1));
    }

    #set(face: Face, to: number): void {
        const { clip } = this.app.state;
        if (clip !== null) this.app.change({ clip: moveFace(clip, face, to, this.app.bounds()) });
    }
}
