import type { App } from './App';
import { formatHash, parseHash } from './hash';

/** What a link that does not speak of it leaves out. */
const nothingChosen = { background: null, ground: false, clip: null, corridor: null, outline: null } as const;
const quiet = 200; // milliseconds without a change before the address follows

/** Keeps the state behind the # of the address, and takes it from there when the address changes. */
export class Memory {
    #timer: ReturnType<typeof setTimeout> | undefined;

    constructor(readonly app: App) {
        addEventListener('hashchange', () => app.change({ ...nothingChosen, ...parseHash(location.hash) }));
        addEventListener('pagehide', () => this.#write());
    }

    save(): void {
        clearTimeout(this.#timer);
        this.#timer = setTimeout(() => this.#write(), quiet);
    }

    #write(): void {
        history.replaceState(null, '', `${location.pathname}${location.search}${formatHash(this.app.state)}`);
    }
}
