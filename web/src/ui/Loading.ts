import { parseHash } from '../app/hash';
import { h } from './dom';

/** What is seen until the cloud is there. */
export class Loading {
    readonly #title = h('h1', {}, 'zorcld');
    readonly #text = h('p', {}, 'Opening …');
    readonly #bar = h('progress', { attr: { max: '100', 'aria-label': 'Loading' } });
    readonly element = h('div', { class: 'loading', attr: { role: 'status' } }, this.#title, this.#bar, this.#text);

    constructor(root: HTMLElement) {
        document.documentElement.dataset.theme = parseHash(location.hash).theme ?? 'dark';
        root.replaceChildren(this.element);
    }

    show(file: string, doing: string, percent: number | null): void {
        this.#title.textContent = file;
        this.#bar.hidden = false;
        if (percent === null) this.#bar.removeAttribute('value');
        else this.#bar.value = percent;
        this.#text.textContent = percent === null ? doing : `${doing}, ${percent} %`;
    }

    fail(title: string, cause: string): void {
        this.#title.textContent = title;
        this.#bar.hidden = true;
        this.#text.textContent = cause;
    }
}
