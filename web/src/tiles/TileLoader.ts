import { ApiError } from '../data/ApiError';
import { addressKey, type TileAddress } from './TileNode';

export type FetchTile = (address: TileAddress, signal: AbortSignal) => Promise<ArrayBuffer>;

const maxAtOnce = 6; // what a browser opens to one server
const firstWait = 500; // milliseconds, doubled with each failure of the same tile
const maxWait = 8000;

/** Fetches the tiles that are wanted, most wanted first; what is no longer wanted is cancelled. */
export class TileLoader {
    readonly #running = new Map<string, AbortController>();
    readonly #failed = new Map<string, { at: number; wait: number }>();
    #wanted: readonly TileAddress[] = [];

    constructor(
        readonly fetchTile: FetchTile,
        readonly onTile: (address: TileAddress, bytes: ArrayBuffer) => void,
        readonly onFailure: (error: unknown) => void,
    ) {}

    get numRunning(): number {
        return this.#running.size;
    }

    /** What is wanted from now on, most wanted first. */
    want(addresses: readonly TileAddress[], now: number): void {
        this.#wanted = addresses;
        const keys = new Set(addresses.map(addressKey));
        for (const [key, controller] of this.#running)
            if (!keys.has(key)) {
                controller.abort();
                this.#running.delete(key);
            }
        this.#startNext(now);
    }

    /** Milliseconds until a tile that failed may be asked for again; null: none has. */
    nextTry(now: number): number | null {
        const times = this.#wanted
            .map((address) => this.#failed.get(addressKey(address)))
            .filter((failure) => failure !== undefined)
            .map((failure) => Math.max(0, failure.at + failure.wait - now))
            .filter(Number.isFinite);
        return times.length > 0 ? Math.min(...times) : null;
    }

    cancelAll(): void {
        this.want([], 0);
    }

    /** Does not wait for the next picture: where drawing is slow, fetching goes on. */
    #startNext(now: number): void {
        for (const address of this.#wanted) {
            if (this.#running.size >= maxAtOnce) return;
            if (this.#mayStart(addressKey(address), now)) void this.#start(address);
        }
    }

    #mayStart(key: string, now: number): boolean {
        const failure = this.#failed.get(key);
        return !this.#running.has(key) && (failure === undefined || now >= failure.at + failure.wait);
    }

    async #start(address: TileAddress): Promise<void> {
        const key = addressKey(address);
        const controller = new AbortController();
        this.#running.set(key, controller);
        try {
            const bytes = await this.fetchTile(address, controller.signal);
            if (this.#running.get(key) !== controller) return;
            this.#running.delete(key);
            this.#failed.delete(key);
            this.#wanted = this.#wanted.filter((each) => addressKey(each) !== key);
            this.onTile(address, bytes);
            this.#startNext(performance.now());
        } catch (error) {
            if (this.#running.get(key) !== controller) return; // cancelled
            this.#running.delete(key);
            this.#fail(key, error);
            this.onFailure(error);
            this.#startNext(performance.now());
        }
    }

    /** What the server has refused it refuses again: that is not asked for any more. */
    #fail(key: string, error: unknown): void {
        const before = this.#failed.get(key)?.wait;
        const refused = error instanceof ApiError && error.status < 500;
        const wait = refused ? Infinity : before === undefined ? firstWait : Math.min(maxWait, 2 * before);
        this.#failed.set(key, { at: performance.now(), wait });
    }
}
