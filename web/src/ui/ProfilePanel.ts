import type { App } from '../app/App';
import { isByHeight } from '../app/start';
import type { Corridor } from '../app/State';
import { choiceParameters, type Parameters } from '../data/Api';
import { formatCoord, formatMeasure, groupDigits, withUnit } from '../math/numbers';
import { drawnWidth, scalesOf, stretchProfile } from '../tools/corridor';
import { decodeProfile, profileWords, type Profile } from '../tools/decodeProfile';
import { findDrawn, fitAxes, paintProfile, type Axes } from '../tools/paintProfile';
import { button, download, h, icon } from './dom';
import { icons } from './icons';

const quiet = 120; // milliseconds before a changed corridor is asked for

/** The diagram of a profile, beside the picture: every point of the corridor. */
export class ProfilePanel {
    readonly element: HTMLElement;
    readonly #canvas = h('canvas', { attr: { role: 'img', 'aria-label': 'Heights along the line' } });
    readonly #text = h('p', { class: 'profile-text', attr: { 'aria-live': 'polite' } });
    readonly #width = h('input', { id: 'profile-width', attr: { type: 'number', min: '0', step: 'any' } });
    #profile: Profile | null = null;
    #axes: Axes | null = null;
    #asked = '';
    #timer: ReturnType<typeof setTimeout> | undefined;

    constructor(readonly app: App) {
        const close = h(
            'button',
            { class: 'close', attr: { type: 'button', title: 'Remove', 'aria-label': 'Remove: Profile' }, on: { click: () => app.change({ corridor: null }) } },
            icon(icons.close),
        );
        const csv = button('CSV', () => this.#export(), { class: 'small', attr: { title: 'Save points as CSV', 'aria-label': 'Save points as CSV' } });
        const png = button('PNG', () => this.#save(), { class: 'small', attr: { title: 'Save the diagram', 'aria-label': 'Save the diagram' } });
        const width = h('span', { class: 'pair' }, h('label', { attr: { for: 'profile-width' } }, 'Width'), this.#width);
        const head = h('div', { class: 'profile-head' }, h('h2', {}, 'Profile'), this.#text, width, csv, png, close);
        this.element = h('section', { class: 'panel profile', attr: { 'aria-label': 'Profile' } }, head, this.#canvas);
        this.element.hidden = true;
        this.#width.addEventListener('change', () => this.#setWidth(Number(this.#width.value)));
        this.#canvas.addEventListener('pointermove', (event) => this.#hover(event.offsetX, event.offsetY));
        new ResizeObserver(() => this.#paint()).observe(this.#canvas);
    }

    update(): void {
        const { corridor } = this.app.state;
        this.element.hidden = corridor === null;
        if (corridor === null) {
            this.#profile = null;
            this.#asked = '';
            return;
        }
        this.#width.value = String(drawnWidth(corridor, this.app.proportions.stretch));
        const asked = JSON.stringify(this.#parameters(corridor));
        if (asked === this.#asked) return this.#paint();
        this.#asked = asked;
        clearTimeout(this.#timer);
        this.#timer = setTimeout(() => void this.#load(corridor, asked), quiet);
    }

    #parameters({ from, to, width }: Corridor): Parameters {
        return { x1: from[0], y1: from[1], x2: to[0], y2: to[1], width, ...choiceParameters(this.app.choice()) };
    }

    async #load(corridor: Corridor, asked: string): Promise<void> {
        try {
            const bytes = await this.app.api.bytes('api/profile', this.#parameters(corridor));
            if (asked !== this.#asked) return;
            this.#profile = stretchProfile(decodeProfile(bytes), corridor, this.app.proportions.stretch);
            this.#paint();
        } catch (error) {
            this.app.ui.tellFailure('The profile could not be had', error);
            if (asked !== this.#asked) return;
            this.#asked = ''; // the next change asks again
            this.#text.textContent = 'The profile could not be had';
        }
    }

    #paint(): void {
        const profile = this.#profile;
        const { clientWidth, clientHeight } = this.#canvas;
        if (profile === null || clientWidth === 0) return;
        const scale = Math.min(2, window.devicePixelRatio || 1);
        this.#canvas.width = Math.round(clientWidth * scale);
        this.#canvas.height = Math.round(clientHeight * scale);
        this.#axes = fitAxes(profile, clientWidth, clientHeight);
        const { theme } = this.app.state;
        paintProfile(this.#canvas, profile, this.#axes, { theme, byHeight: isByHeight(this.app), scale });
        this.#text.textContent = this.#describe(profile, this.#axes);
        this.element.dataset.points = String(profile.count);
    }

    #describe(profile: Profile, axes: Axes): string {
        const { plan } = this.app.proportions;
        const times = axes.exaggeration === 1 ? '' : `, heights ${axes.exaggeration} times as large`;
        return `${groupDigits(profile.count)} points, ${withUnit(formatMeasure(profile.length), plan)}${times}`;
    }

    #hover(x: number, y: number): void {
        if (this.#profile === null || this.#axes === null) return;
        const profile = this.#profile;
        const { info, proportions } = this.app;
        const n = findDrawn(profile, this.#axes, x, y);
        if (n < 0) {
            this.#text.textContent = this.#describe(profile, this.#axes);
            return;
        }
        const [along, height] = profile.floats.subarray(n * profileWords, n * profileWords + 2);
        const index = groupDigits(profile.ints[n * profileWords + 3]);
        const z = withUnit(formatCoord(profile.base + height), info.unit.height);
        this.#text.textContent = `${withUnit(formatMeasure(along), proportions.plan)} along, height ${z}, point ${index}`;
    }

    #setWidth(width: number): void {
        const { corridor } = this.app.state;
        if (corridor === null || !(width > 0)) return;
        const { across } = scalesOf(corridor.from, corridor.to, this.app.proportions.stretch);
        this.app.change({ corridor: { ...corridor, width: width / across } });
    }

    #export(): void {
        const { corridor } = this.app.state;
        if (corridor === null) return;
        const url = this.app.api.url('api/profile', { ...this.#parameters(corridor), format: 'csv' });
        void this.app.ui.save(url, `${this.app.info.file.replace(/\.[^.]*$/, '')}-profile.csv`);
    }

    #save(): void {
        this.#canvas.toBlob((blob) => {
            if (blob === null) return;
            const url = URL.createObjectURL(blob);
            download(url, `${this.app.info.file.replace(/\.[^.]*$/, '')}-profile.png`);
            setTimeout(() => URL.revokeObjectURL(url), 10_000);
        });
    }
}
