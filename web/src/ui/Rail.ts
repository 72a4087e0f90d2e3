import type { App } from '../app/App';
import { findCommand, showKey, type Command } from '../app/commands';
import { h, icon } from './dom';
import { icons } from './icons';

const railIds = [
    ['fit', 'map', 'fly'],
    ['point', 'distance', 'height', 'angle', 'area'],
    ['clip', 'profile', 'polygon', 'outline', 'ground'],
] as const;

const shortLabels: Readonly<Record<string, string>> = {
    fit: 'All',
    map: 'Map',
    height: 'Height',
    area: 'Area',
    clip: 'Clip',
    profile: 'Profile',
    polygon: 'Select',
    ground: 'Ground',
};

export function commandButton(app: App, id: string, labelled: boolean): HTMLButtonElement {
    const command = findCommand(id);
    const element = h(
        'button',
        { attr: { type: 'button', title: tooltip(command), 'aria-label': command.label }, on: { click: () => command.run(app) } },
        icon(icons[id]),
        labelled ? h('span', {}, shortLabels[id] ?? command.label) : null,
    );
    element.dataset.command = id;
    return element;
}

function tooltip(command: Command): string {
    return command.keys.length > 0 ? `${command.label} (${showKey(command)})` : command.label;
}

/** The tools, at the side of the picture. */
export class Rail {
    readonly element: HTMLElement;
    readonly #buttons = new Map<string, HTMLButtonElement>();

    constructor(readonly app: App) {
        this.element = h('nav', { class: 'rail', attr: { 'aria-label': 'Tools' } });
        for (const group of railIds) {
            const box = h('div', { class: 'rail-group', attr: { role: 'group' } });
            for (const id of group) {
                const element = commandButton(app, id, true);
                this.#buttons.set(id, element);
                box.append(element);
            }
            this.element.append(box);
        }
    }

    /** Which of the buttons are pressed. */
    update(): void {
        const { app } = this;
        const { state } = app;
        const pressed: Readonly<Record<string, boolean>> = {
            map: app.isMap(),
            fly: app.flying,
            clip: state.clip !== null,
            outline: state.outline !== null,
            ground: state.ground,
            profile: state.corridor !== null,
            polygon: state.polygon.length > 0,
        };
        for (const [id, element] of this.#buttons) {
            if (id === 'fit') continue;
            const isOn = app.gathering?.kind.name === id || (pressed[id] ?? false);
            element.setAttribute('aria-pressed', String(isOn));
        }
    }
}
