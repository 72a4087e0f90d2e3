import type { App } from '../app/App';
import type { JobShown } from '../app/Jobs';
import type { State } from '../app/State';
import { NoAnswer } from '../data/NoAnswer';
import type { OutlineResult, PickedPoint } from '../data/info';
import { formatCoord, groupDigits } from '../math/numbers';
import { Cards } from './Cards';
import { ClipHandles } from './ClipHandles';
import { showAbout, showHelp } from './dialogs';
import { DisplayPanel } from './DisplayPanel';
import { button, download, h } from './dom';
import { ProfilePanel } from './ProfilePanel';
import { commandButton, Rail } from './Rail';

export interface Area {
    readonly left: number;
    readonly top: number;
    readonly right: number;
    readonly bottom: number;
}

const narrow = 700; // CSS pixels: below, the tools lie at the bottom
const roomBelow = 330; // CSS pixels: enough for a legend under what lies at the side, and the arrow to the north
const toldFor = 6000; // milliseconds
const ended =
    'zorcld has ended: what is drawn stays, and no more can be loaded, measured or saved. ' +
    'Start it again, and open the address that it prints.';
const headHeight = 56; // CSS pixels of the file's name and what is drawn
const scaleHeight = 40; // and of the scale bar

/** All that is around the picture. */
export class Ui {
    readonly canvas: HTMLCanvasElement;
    readonly overlay = h('canvas', { class: 'overlay', attr: { 'aria-hidden': 'true' } });
    readonly handles: ClipHandles;
    readonly #rail: Rail;
    readonly #display: DisplayPanel;
    readonly #cards: Cards;
    readonly #profile: ProfilePanel;
    readonly #drawn = h('p', { class: 'drawn' });
    readonly #hint = h('p', { class: 'hint', attr: { role: 'status' } });
    readonly #hovered = h('p', { class: 'hovered' });
    readonly #job = h('div', { class: 'job panel', attr: { role: 'status' } });
    readonly #told = h('div', { class: 'told', attr: { role: 'alert' } });
    readonly #ended = h('p', { class: 'panel ended' }, ended);
    #beforeDisplay: Element | null = null;
    readonly #header: HTMLElement;
    readonly #side: HTMLElement;

    constructor(
        readonly root: HTMLElement,
        readonly app: App,
    ) {
        const label = 'The cloud. Arrow keys turn the view, with Shift they shift it, plus and minus zoom.';
        this.canvas = h('canvas', { class: 'picture', attr: { tabindex: '0', role: 'application', 'aria-label': label } });
        this.handles = new ClipHandles(app);
        this.#rail = new Rail(app);
        this.#display = new DisplayPanel(app);
        this.#cards = new Cards(app);
        this.#profile = new ProfilePanel(app);
        this.#display.element.hidden = true;
        this.#job.hidden = true;
        this.#header = h('header', {}, h('h1', {}, app.info.file), this.#drawn);
        const buttons = ['screenshot', 'theme', 'display', 'help', 'about'].map((id) => commandButton(app, id, false));
        const page = h('div', { class: 'page-buttons', attr: { role: 'group', 'aria-label': 'Page' } }, ...buttons);
        this.#side = h('div', { class: 'side' }, this.#display.element, this.#job, this.#cards.element);
        const foot = h('footer', {}, this.#hint, this.#hovered);
        const stage = h('main', { class: 'stage' }, this.canvas, this.overlay, this.handles.element, foot);
        root.replaceChildren(stage, this.#header, page, this.#rail.element, this.#side, this.#profile.element, this.#told);
    }

    update(state: State, before: State): void {
        document.documentElement.dataset.theme = state.theme;
        this.#rail.update();
        this.#display.update(state);
        const cards: (keyof State)[] = ['marks', 'polygon', 'clip', 'ground', 'outline'];
        if (cards.some((key) => state[key] !== before[key])) this.updateCards();
        this.#profile.update();
        document.body.classList.toggle('with-profile', state.corridor !== null);
    }

    get isNarrow(): boolean {
        return window.innerWidth < narrow;
    }

    /** Where nothing covers the picture, CSS pixels. */
    freeArea(): Area {
        const { innerWidth: width, innerHeight: height } = window;
        const profile = this.#profile.element.hidden ? 0 : this.#profile.element.offsetHeight + 8;
        const below = this.#side.offsetTop + this.#side.offsetHeight;
        if (this.isNarrow) return { left: 0, top: Math.max(70, below), right: width, bottom: height - profile - 92 };
        const area = { left: this.#rail.element.offsetWidth + 12, top: 64, right: width, bottom: height - profile - 8 };
        const side = this.#sideWidth();
        if (side === 0) return area;
        if (area.bottom - below >= roomBelow) return { ...area, top: below };
        return { ...area, right: width - side };
    }

    /** Where a cloud can be seen as a whole, beside a legend so wide (0: none). */
    roomForCloud(legend: number): Area {
        const area = this.freeArea();
        if (this.isNarrow) return { ...area, bottom: area.bottom - scaleHeight };
        const beside = Math.max(area.right === window.innerWidth ? this.#sideWidth() : 0, legend);
        return { ...area, top: headHeight, right: area.right - beside, bottom: area.bottom - scaleHeight };
    }

    #sideWidth(): number {
        const shown = [this.#display.element, this.#job, this.#cards.element].filter((each) => each.offsetHeight > 0);
        return shown.length === 0 ? 0 : Math.max(...shown.map((each) => each.offsetWidth)) + 12;
    }

    updateTool(): void {
        const { gathering, flying } = this.app;
        this.#rail.update();
        this.canvas.classList.toggle('picks', gathering !== null);
        // The tool's own keys, Space among them, are no more those of the button that it was begun with.
        if (gathering !== null && document.activeElement instanceof HTMLButtonElement) this.canvas.focus({ preventScroll: true });
        const hint = flying
            ? 'W A S D fly, Q and E sink and rise, Shift is faster, drag to look around, Escape ends'
            : (gathering?.kind.hint(gathering.count) ?? '');
        this.#hint.replaceChildren(hint);
        if (gathering?.canFinish) this.#hint.append(button('Done', () => this.app.finishTool(), { class: 'small' }));
        this.#hint.classList.toggle('shown', hint !== '');
    }

    showHovered(point: PickedPoint | null): void {
        this.#hovered.textContent =
            point === null ? '' : [point.x, point.y, point.z].map(formatCoord).join('  ');
        this.#hovered.classList.toggle('shown', point !== null);
    }

    showDrawn(points: number, complete: boolean): void {
        const { info, state, ground } = this.app;
        const all = state.ground && ground !== null ? ground.points : info.points;
        const what = state.ground && ground !== null ? ' of the ground' : '';
        const { note } = this.app.proportions;
        const text = `${groupDigits(points)} of ${groupDigits(all)} points${what}${note ? `, ${note}` : ''}${complete ? '' : ' …'}`;
        if (this.#drawn.textContent !== text) this.#drawn.textContent = text;
    }

    updateCards(): void {
        this.#cards.update();
    }

    showOutline(outline: OutlineResult): void {
        this.updateCards();
        if (!outline.whole) this.tell('The outline is of the largest part of the cloud');
    }

    showJob(job: JobShown | null): void {
        this.#job.hidden = job === null;
        if (job === null) return;
        const bar = h('progress', { attr: { max: '100', 'aria-label': job.title } });
        if (job.percent !== null) bar.value = job.percent;
        const cancel = button('Cancel', job.cancel, { class: 'small' });
        const line = h('div', { class: 'row' }, bar, cancel);
        this.#job.replaceChildren(h('h2', {}, job.title), h('p', {}, job.doing), line);
    }

    tell(text: string): void {
        const note = h('p', { class: 'panel' }, text);
        this.#told.append(note);
        setTimeout(() => note.remove(), toldFor);
    }

    /** Says for as long as the server does not answer that it does not. */
    showAnswers(answers: boolean): void {
        if (!answers) return this.#told.prepend(this.#ended);
        this.#ended.remove();
        this.#cards.countAgain();
        this.app.redraw();
    }

    /** Saves what the server is to send, or says that it could not. */
    async save(url: string, name: string): Promise<void> {
        try {
            await this.app.api.info(); // a download that gets no answer would say nothing
            download(url, name);
        } catch (error) {
            this.tellOnce(`${name} was not saved: ${causeOf(error)}`);
        }
    }

    /** Where the server has ended, that is said anyway. */
    tellFailure(what: string, error: unknown): void {
        if (!(error instanceof NoAnswer)) this.tellOnce(`${what}: ${causeOf(error)}`);
    }

    /** Not again while it still can be read. */
    tellOnce(text: string): void {
        if (![...this.#told.children].some((note) => note.textContent === text)) this.tell(text);
    }

    toggleDisplay(): void {
        if (!this.#display.element.hidden) return this.closeDisplay();
        this.#beforeDisplay = document.activeElement;
        this.#display.element.hidden = false;
        this.#display.element.querySelector('select')?.focus();
        this.app.redraw();
    }

    /** The keys then are where they were before. */
    closeDisplay(): void {
        const { element } = this.#display;
        const hadFocus = element.contains(document.activeElement);
        element.hidden = true;
        if (hadFocus && this.#beforeDisplay instanceof HTMLElement) this.#beforeDisplay.focus();
        this.app.redraw();
    }

    showHelp(): void {
        showHelp();
    }

    showAbout(): Promise<void> {
        return showAbout(this.app.info, this.app.api);
    }
}

function causeOf(error: unknown): string {
    return error instanceof Error ? error.message : String(error);
}
