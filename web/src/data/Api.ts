import type { Box } from '../math/Box';
import { isStretched, noStretch, type Stretch } from '../math/stretch';
import type { Ray } from '../view/View';
import { ApiError } from './ApiError';
import { NoAnswer } from './NoAnswer';
import type { Job, PickedPoint, ServerInfo } from './info';

export type Parameters = Readonly<Record<string, string | number | readonly string[] | undefined>>;

const busy = 503;

/** What is not drawn is not picked, counted or exported either. */
export interface Choice {
    readonly version?: number;
    readonly box?: Box | null;
    readonly polygon?: readonly (readonly number[])[];
}

/** Asks the server, with the token that the page's own address brings. */
export class Api {
    /** Told with each answer, and where there was none. */
    onAnswer: (answers: boolean) => void = () => undefined;
    readonly #token = new URLSearchParams(location.search).get('token');

    url(path: string, parameters: Parameters = {}): string {
        const query = new URLSearchParams();
        for (const [name, value] of Object.entries(parameters)) {
            if (value === undefined) continue;
            for (const each of typeof value === 'object' ? value : [String(value)]) query.append(name, each);
        }
        if (this.#token !== null) query.set('token', this.#token);
        const text = query.toString().replace(/%2C/g, ','); // shorter: requests have their limit
        return text ? `${path}?${text}` : path;
    }

    async json<T>(path: string, parameters: Parameters = {}, signal?: AbortSignal): Promise<T> {
        return (await this.#get(path, parameters, (response) => response.json(), signal)) as T;
    }

    async bytes(path: string, parameters: Parameters = {}, signal?: AbortSignal): Promise<ArrayBuffer> {
        return this.#get(path, parameters, (response) => response.arrayBuffer(), signal);
    }

    info(): Promise<ServerInfo> {
        return this.json('api/info');
    }

    /** The first point along a ray as drawn, of those that a choice leaves; null: none. */
    async pick(ray: Ray, radius: number, choice: Choice, stretch: Stretch = noStretch): Promise<PickedPoint | null> {
        const point = await this.json<PickedPoint>('api/pick', {
            ...{ ox: ray.from[0], oy: ray.from[1], oz: ray.from[2] },
            ...{ dx: ray.direction[0], dy: ray.direction[1], dz: ray.direction[2] },
            ...{ tan: ray.tan * radius },
            stretch: isStretched(stretch) ? stretch.join(',') : undefined,
            ...choiceParameters({ version: choice.version, box: choice.box }),
        });
        return point.index < 0 ? null : point;
    }

    async count(choice: Choice): Promise<number> {
        return (await this.json<{ points: number }>('api/count', choiceParameters(choice))).points;
    }

    exportUrl(format: 'csv' | 'ply', choice: Choice): string {
        return this.url('api/export', { format, ...choiceParameters(choice) });
    }

    /** Starts a job, or asks how far it is; ends when it has, or is told to. */
    async job<T>(
        path: string,
        parameters: Parameters,
        tell: (doing: string, percent: number | null) => void,
        signal: AbortSignal,
    ): Promise<T> {
        for (let wait = 50; ; wait = Math.min(400, wait * 2)) {
            if (signal.aborted) return this.#cancelJob(path);
            const job = await this.#askJob<T>(path, parameters);
            if (job.state === 'done') return job;
            if (job.state === 'failed') throw new ApiError(200, job.cause);
            if (job.state === 'running') tell(job.doing, job.percent);
            await new Promise((done) => setTimeout(done, wait));
        }
    }

    /** A server that is busy, with the job of another page or one that is just being stopped, is waited for. */
    async #askJob<T>(path: string, parameters: Parameters): Promise<Job<T>> {
        try {
            return await this.json<Job<T>>(path, parameters);
        } catch (error) {
            if (!(error instanceof ApiError) || error.status !== busy) throw error;
            return { state: 'running', doing: `waiting: ${error.message}`, percent: null };
        }
    }

    async #cancelJob(path: string): Promise<never> {
        await this.json(path, { cancel: 1 });
        throw new DOMException('cancelled', 'AbortError');
    }

    async #get<T>(
        path: string,
        parameters: Parameters,
        read: (response: Response) => Promise<T>,
        signal?: AbortSignal,
    ): Promise<T> {
        try {
            const response = await fetch(this.url(path, parameters), { signal });
            const answer = response.ok ? await read(response) : (await response.text()).trim();
            this.onAnswer(true);
            if (!response.ok) throw new ApiError(response.status, answer as string);
            return answer as T;
        } catch (error) {
            // What fetch rejects with where there is no server, or one that ends amid its answer.
            if (!(error instanceof TypeError)) throw error;
            this.onAnswer(false);
            throw new NoAnswer();
        }
    }
}

export function choiceParameters(choice: Choice): Parameters {
    return {
        version: choice.version,
        box: choice.box ? [...choice.box.min, ...choice.box.max].join(',') : undefined,
        polygon: choice.polygon?.length
            ? choice.polygon.map((place) => `${round(place[0])},${round(place[1])}`).join(',')
            : undefined,
    };
}

// To what the library tells apart: the corners of a polygon have to fit into a request.
function round(d: number): number {
    return Number(d.toFixed(4));
}
