import type { Api, Parameters } from '../data/Api';

export interface JobShown {
    readonly title: string;
    readonly doing: string;
    readonly percent: number | null;
    readonly cancel: () => void;
}

/** What takes the server long: one after the other, with progress, and to be cancelled. */
export class Jobs {
    #last: Promise<unknown> = Promise.resolve();

    constructor(
        readonly api: Api,
        readonly show: (job: JobShown | null) => void,
        readonly fail: (title: string, error: unknown) => void,
    ) {}

    /** @returns what the job has found; null where it failed, which has been told, or was cancelled. */
    run<T>(title: string, path: string, parameters: Parameters): Promise<T | null> {
        const next = this.#last.then(() => this.#run<T>(title, path, parameters));
        this.#last = next;
        return next;
    }

    async #run<T>(title: string, path: string, parameters: Parameters): Promise<T | null> {
        const controller = new AbortController();
        const cancel = (): void => controller.abort();
        const tell = (doing: string, percent: number | null): void => this.show({ title, doing, percent, cancel });
        tell('', null);
        try {
            return await this.api.job<T>(path, parameters, tell, controller.signal);
        } catch (error) {
            if (!controller.signal.aborted) this.fail(title, error);
            return null;
        } finally {
            this.show(null);
        }
    }
}
