import type { App } from '../app/App';
import { findCommand } from '../app/commands';
import { colorsOf } from '../app/start';
import { budgets, pointSizes, type ColorBy, type State } from '../app/State';
import { surrounds } from '../colors/colors';
import { clamp, groupDigits } from '../math/numbers';
import { button, h } from './dom';

const colorNames: Readonly<Record<ColorBy, string>> = {
    file: 'As in the file',
    height: 'Height',
    class: 'Class',
    intensity: 'Intensity',
    return: 'Return',
};

// The slider has powers of ten: it is as fine for few points as for many.
const budgetPowers = { min: Math.log10(budgets.min), max: Math.log10(budgets.max), step: 0.05 };

const views = [
    ['SW', 'the south-west, above', 215, 35],
    ['S', 'the south', 180, 5],
    ['E', 'the east', 90, 5],
    ['N', 'the north', 0, 5],
    ['W', 'the west', 270, 5],
] as const;

/** How the points look. */
export class DisplayPanel {
    readonly element: HTMLElement;
    readonly #color = h('select', { id: 'color', on: { change: () => this.app.change({ color: this.#color.value as ColorBy }) } });
    readonly #size = this.#slider('point-size', pointSizes, (pointSize) => ({ pointSize }));
    readonly #budget = this.#slider('budget', budgetPowers, (power) => ({
        budget: clamp(Number((10 ** power).toPrecision(2)), budgets.min, budgets.max),
    }));
    readonly #budgetText = h('output', { attr: { for: 'budget' } });
    readonly #sizeText = h('output', { attr: { for: 'point-size' } });
    readonly #shading = this.#check('shading', (shading) => ({ shading }));
    readonly #parallel = h('input', { id: 'parallel', attr: { type: 'checkbox' }, on: { change: () => this.app.toggleParallel() } });
    readonly #background = h('input', {
        id: 'background',
        attr: { type: 'color' },
        on: { input: () => this.app.change({ background: this.#background.value }) },
    });

    constructor(readonly app: App) {
        for (const way of colorsOf(app.info)) this.#color.append(h('option', { attr: { value: way } }, colorNames[way]));
        this.element = h(
            'section',
            { class: 'panel display', id: 'display', attr: { 'aria-label': 'Display settings' } },
            h('h2', {}, 'Display'),
            this.#row('Colour', 'color', this.#color),
            this.#row('Point size', 'point-size', this.#size, this.#sizeText),
            this.#row('Most points', 'budget', this.#budget, this.#budgetText),
            this.#row('Depth shading', 'shading', this.#shading),
            this.#row('Parallel view', 'parallel', this.#parallel),
            this.#row('Background', 'background', this.#backgroundBox()),
            this.#viewButtons(),
        );
        this.element.addEventListener('keydown', (event) => this.#closeBy(event));
    }

    /** Its controls have the page's keys for themselves, but for those that close it. */
    #closeBy(event: KeyboardEvent): void {
        if (event.ctrlKey || event.metaKey || event.altKey) return;
        if (event.key !== 'Escape' && !findCommand('display').keys.includes(event.key.toLowerCase())) return;
        event.preventDefault();
        event.stopPropagation();
        this.app.ui.closeDisplay();
    }

    update(state: State): void {
        this.#color.value = state.color;
        this.#size.value = String(state.pointSize);
        this.#sizeText.value = `${state.pointSize.toFixed(1)}×`;
        this.#budget.value = String(Math.log10(state.budget));
        this.#budgetText.value = groupDigits(state.budget);
        this.#shading.checked = state.shading;
        this.#parallel.checked = state.camera.parallel;
        const [r, g, b] = surrounds[state.theme].background;
        const hex = `#${((r << 16) | (g << 8) | b).toString(16).padStart(6, '0')}`;
        this.#background.value = state.background ?? hex;
    }

    #row(label: string, id: string, ...controls: HTMLElement[]): HTMLElement {
        return h('div', { class: 'row' }, h('label', { attr: { for: id } }, label), ...controls);
    }

    #slider(
        id: string,
        range: { readonly min: number; readonly max: number; readonly step: number },
        changes: (value: number) => Partial<State>,
    ): HTMLInputElement {
        const attr = { type: 'range', min: String(range.min), max: String(range.max), step: String(range.step) };
        const input = h('input', { id, class: 'keeps-arrows', attr });
        input.addEventListener('input', () => this.app.change(changes(Number(input.value))));
        return input;
    }

    #check(id: string, changes: (value: boolean) => Partial<State>): HTMLInputElement {
        const input = h('input', { id, attr: { type: 'checkbox' } });
        input.addEventListener('change', () => this.app.change(changes(input.checked)));
        return input;
    }

    #backgroundBox(): HTMLElement {
        const reset = button('Reset', () => this.app.change({ background: null }), {
            class: 'small',
            attr: { 'aria-label': "The theme's background" },
        });
        return h('span', { class: 'pair' }, this.#background, reset);
    }

    #viewButtons(): HTMLElement {
        const box = h('div', { class: 'views', attr: { role: 'group', 'aria-label': 'Look from' } });
        for (const [sign, where, azimuth, elevation] of views) {
            const label = `Look from ${where}`;
            box.append(button(sign, () => this.app.lookFrom({ azimuth, elevation }), { class: 'small', attr: { 'aria-label': label, title: label } }));
        }
        return h('div', { class: 'row' }, h('span', { class: 'label' }, 'Look from'), box);
    }
}
