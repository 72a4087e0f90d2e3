/** The item of the largest weight first; of equal ones any. */
export class Heap<T> {
    readonly #items: { weight: number; item: T }[] = [];

    get size(): number {
        return this.#items.length;
    }

    push(weight: number, item: T): void {
        const items = this.#items;
        let i = items.length;
        items.push({ weight, item });
        while (i > 0) {
            const parent = (i - 1) >> 1;
            if (items[parent].weight >= items[i].weight) return;
            [items[parent], items[i]] = [items[i], items[parent]];
            i = parent;
        }
    }

    pop(): { weight: number; item: T } | undefined {
        const items = this.#items;
        const top = items[0];
        const last = items.pop();
        if (last === undefined || items.length === 0) return top;
        items[0] = last;
        this.#sink();
        return top;
    }

    #sink(): void {
        const items = this.#items;
        for (let i = 0; ; ) {
            let largest = i;
            for (const child of [2 * i + 1, 2 * i + 2])
                if (child < items.length && items[child].weight > items[largest].weight) largest = child;
            if (largest === i) return;
            [items[largest], items[i]] = [items[i], items[largest]];
            i = largest;
        }
    }
}
