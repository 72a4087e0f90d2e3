import type { App } from '../app/App';
import type { OutlineResult } from '../data/info';
import { boxSize } from '../math/Box';
import { planArea, planCircumference } from '../math/measures';
import { formatMeasure, groupDigits, withUnit } from '../math/numbers';
import { isStretched, toDrawn, type Stretch } from '../math/stretch';
import { markTitles, readMark, type Mark, type Reading } from '../tools/marks';
import { button, h, icon } from './dom';
import { icons } from './icons';

/** Of an outline as drawn; what the server says of it, where that is the same. */
function outlineSize({ area, length, ring }: OutlineResult, stretch: Stretch): { area: number; length: number } {
    if (!isStretched(stretch)) return { area, length };
    const drawn = ring.map(([x, y]) => toDrawn([x, y, 0], stretch));
    return { area: planArea(drawn), length: planCircumference(drawn) };
}

/** What has been measured, cut and chosen: a card each, with what can be done about it. */
export class Cards {
    readonly element = h('aside', { class: 'cards', attr: { 'aria-label': 'Results' } });
    #countFor = '';
    #count: number | 'failed' | null = null;

    constructor(readonly app: App) {}

    update(): void {
        const { state, outline } = this.app;
        const cards: HTMLElement[] = [];
        if (state.clip !== null) cards.push(this.#clipCard());
        if (state.polygon.length > 0) cards.push(this.#polygonCard());
        if (outline !== null) cards.push(this.#outlineCard());
        state.marks.forEach((mark, i) => cards.push(this.#markCard(mark, i)));
        this.element.replaceChildren(...cards);
    }

    #card(title: string, readings: readonly Reading[], remove: () => void, ...more: HTMLElement[]): HTMLElement {
        const close = h(
            'button',
            { class: 'close', attr: { type: 'button', title: 'Remove', 'aria-label': `Remove: ${title}` }, on: { click: remove } },
            icon(icons.close),
        );
        const list = h('dl', {});
        for (const { label, value } of readings) list.append(h('dt', {}, label), h('dd', {}, value));
        return h('section', { class: 'panel card', attr: { 'aria-label': title } }, h('h2', {}, title), close, list, ...more);
    }

    #markCard(mark: Mark, i: number): HTMLElement {
        const remove = (): void => this.app.change({ marks: this.app.state.marks.filter((_, k) => k !== i) });
        const card = this.#card(markTitles[mark.kind], readMark(mark, this.app.proportions), remove);
        card.dataset.kind = mark.kind;
        return card;
    }

    #clipCard(): HTMLElement {
        const { proportions, state } = this.app;
        const size = state.clip === null ? [0, 0, 0] : boxSize(this.app.drawnBox(state.clip));
        const readings = ['x', 'y', 'z'].map((axis, k) => ({
            label: `Length in ${axis}`,
            value: withUnit(formatMeasure(size[k]), k < 2 ? proportions.plan : proportions.height),
        }));
        const whole = button('Whole cloud', () => this.app.change({ clip: this.app.bounds() }), { class: 'small' });
        const row = h('div', { class: 'actions' }, ...this.#exports('clip'), whole);
        const card = this.#card('Clip box', readings, () => this.app.change({ clip: null }), row);
        card.dataset.kind = 'clip';
        return card;
    }

    #polygonCard(): HTMLElement {
        this.#askCount();
        const count = this.#count;
        const value = count === null ? '…' : count === 'failed' ? 'could not be counted' : groupDigits(count);
        const remove = (): void => this.app.change({ polygon: [] });
        const row = h('div', { class: 'actions' }, ...this.#exports('polygon'));
        const card = this.#card('Selection', [{ label: 'Points', value }], remove, row);
        card.dataset.kind = 'polygon';
        return card;
    }

    /** Counted once for each polygon, within the clip box where there is one. */
    #askCount(): void {
        const { app } = this;
        const choice = { ...app.choice(), polygon: app.state.polygon };
        const key = JSON.stringify(choice);
        if (key === this.#countFor) return;
        this.#countFor = key;
        this.#count = null;
        app.api.count(choice).then(
            (count) => {
                if (key !== this.#countFor) return;
                this.#count = count;
                this.update();
            },
            (error: unknown) => {
                app.ui.tellFailure('The points could not be counted', error);
                if (key !== this.#countFor) return;
                this.#count = 'failed';
                this.update();
            },
        );
    }

    /** What could not be counted may be now. */
    countAgain(): void {
        if (this.#count !== 'failed') return;
        this.#countFor = '';
        this.update();
    }

    #exports(what: 'clip' | 'polygon'): HTMLElement[] {
        return (['csv', 'ply'] as const).map((format) => {
            const label = `Save points as ${format.toUpperCase()}`;
            const save = (): void => {
                const { state, info } = this.app;
                const choice = { ...this.app.choice(), ...(what === 'polygon' ? { polygon: state.polygon } : {}) };
                const name = `${info.file.replace(/\.[^.]*$/, '')}-${what}.${format}`;
                void this.app.ui.save(this.app.api.exportUrl(format, choice), name);
            };
            return button(format.toUpperCase(), save, { class: 'small', attr: { 'aria-label': label, title: label } });
        });
    }

    #outlineCard(): HTMLElement {
        const { outline, info, proportions } = this.app;
        const size = outline === null ? null : outlineSize(outline, proportions.stretch);
        const readings = outline === null || size === null ? [] : [
            { label: 'Area', value: withUnit(formatMeasure(size.area), proportions.plan, '²') },
            { label: 'Length', value: withUnit(formatMeasure(size.length), proportions.plan) },
            { label: 'Corners', value: groupDigits(outline.ring.length) },
            { label: 'Points inside', value: groupDigits(outline.inside) },
            { label: 'Distance', value: withUnit(formatMeasure(outline.distance), info.unit.plan) },
        ];
        const card = this.#card('Outline', readings, () => this.app.change({ outline: null }), this.#distanceBox());
        card.dataset.kind = 'outline';
        return card;
    }

    #distanceBox(): HTMLElement {
        const input = h('input', { id: 'outline-distance', attr: { type: 'number', min: '0', step: 'any' } });
        input.value = String(Number((this.app.outline?.distance ?? 1).toPrecision(4)));
        input.addEventListener('change', () => {
            const distance = Number(input.value);
            this.app.change({ outline: distance > 0 ? distance : 'auto' });
        });
        return h('div', { class: 'row' }, h('label', { attr: { for: 'outline-distance' } }, 'Other distance'), input);
    }
}
