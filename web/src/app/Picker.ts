import type { Api, Choice } from '../data/Api';
import type { PickedPoint } from '../data/info';
import type { Stretch } from '../math/stretch';
import type { View } from '../view/View';

const radius = 6; // CSS pixels around the pointer

/** The point under the pointer, asked of the full cloud: one question at a time, the latest place wins. */
export class Picker {
    #busy = false;
    #latest: { x: number; y: number } | null = null;

    constructor(
        readonly api: Api,
        readonly view: () => View,
        readonly choice: () => Choice,
        readonly stretch: Stretch,
        readonly fail: (error: unknown) => void,
    ) {}

    /** @returns null: there is no point; undefined: that could not be asked for, which has been told. */
    async pick(x: number, y: number): Promise<PickedPoint | null | undefined> {
        try {
            const ray = this.view().ray(x, y);
            // What lies right under the pointer goes before what lies in front of it but beside.
            const exact = await this.api.pick(ray, 1.5, this.choice(), this.stretch);
            return exact ?? (await this.api.pick(ray, radius, this.choice(), this.stretch));
        } catch (error) {
            this.fail(error);
            return undefined;
        }
    }

    hover(x: number, y: number, tell: (point: PickedPoint | null) => void): void {
        this.#latest = { x, y };
        if (!this.#busy) void this.#follow(tell);
    }

    forget(): void {
        this.#latest = null;
    }

    async #follow(tell: (point: PickedPoint | null) => void): Promise<void> {
        this.#busy = true;
        while (this.#latest !== null) {
            const { x, y } = this.#latest;
            this.#latest = null;
            tell((await this.pick(x, y)) ?? null);
        }
        this.#busy = false;
    }
}
