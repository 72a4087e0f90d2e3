import { boxesMeet, type Box } from '../math/Box';
import type { View } from '../view/View';
import { Heap } from './Heap';
import { addressKey, rootAddress, type TileAddress, type TileNode } from './TileNode';

export interface SelectOptions {
    /** Points to be drawn at most; the first tile is drawn whatever it holds. */
    readonly budget: number;
    /** Spacing that is fine enough, CSS pixels. */
    readonly pixels: number;
    readonly clip: Box | null;
}

export interface Selection {
    /** Tiles to be drawn: each place once, by the finest level that is there. */
    readonly drawn: TileNode[];
    /** Tiles that are missed, most wanted first. */
    readonly wanted: TileAddress[];
    readonly points: number;
}

const margin = 0.15; // of the picture's width and height: what may be seen next
const growth = 4; // a level deeper has about so many times the points: surfaces, mostly

/**
 * Which tiles to draw, and which to ask for: from the root on, the tile with the largest projected spacing is replaced
 * by its children as long as the budget allows.
 *
 * A tile is replaced only when all of its children that can be seen are there. Whether children are asked for depends
 * on what can be seen and on counts alone, never on what happens to be there: the same view ends with the same picture.
 */
export function selectTiles(
    find: (key: string) => TileNode | undefined,
    view: View,
    options: SelectOptions,
): Selection {
    const root = find(addressKey(rootAddress));
    if (root === undefined) return { drawn: [], wanted: [rootAddress], points: 0 };
    const selector = new Selector(find, view, options);
    return selector.run(root);
}

class Selector {
    readonly #heap = new Heap<TileNode>();
    readonly #drawn: TileNode[] = [];
    readonly #wanted: TileAddress[] = [];
    #points = 0;
    #planned = 0; // points when all that is wanted has come

    constructor(
        readonly find: (key: string) => TileNode | undefined,
        readonly view: View,
        readonly options: SelectOptions,
    ) {}

    run(root: TileNode): Selection {
        this.#points = this.#planned = root.tile.count;
        this.#heap.push(this.#pixelsOf(root), root);
        for (let top = this.#heap.pop(); top !== undefined; top = this.#heap.pop()) {
            const node = top.item;
            const fine = top.weight <= this.options.pixels || !node.tile.deeper;
            if (fine || !this.#refine(node)) this.#drawn.push(node);
        }
        return { drawn: this.#drawn, wanted: this.#wanted, points: this.#points };
    }

    /** @returns whether the tile's children take its place. */
    #refine(node: TileNode): boolean {
        const seen = node.children().filter((child) => this.#isSeen(child.box));
        const guess = Math.min(growth, seen.length) * node.tile.count;
        if (this.#planned + guess - node.tile.count > this.options.budget) return false;
        const children = seen.map((child) => this.find(addressKey(child.address)));
        seen.forEach((child, i) => {
            if (children[i] === undefined) this.#wanted.push(child.address);
        });
        const there = children.filter((child): child is TileNode => child !== undefined);
        if (there.length < seen.length) {
            this.#planned += guess - node.tile.count;
            return false;
        }
        const more = there.reduce((sum, child) => sum + child.tile.count, 0) - node.tile.count;
        if (this.#planned + more > this.options.budget) return false;
        this.#points += more;
        this.#planned += more;
        for (const child of there) this.#heap.push(this.#pixelsOf(child), child);
        return true;
    }

    #isSeen(box: Box): boolean {
        const { clip } = this.options;
        return this.view.sees(box, margin) && (clip === null || boxesMeet(box, clip));
    }

    #pixelsOf(node: TileNode): number {
        const nearest = Math.max(this.view.nearest(node.box), node.edge / 8);
        return node.spacing * this.view.pixelsPerUnit(nearest);
    }
}
