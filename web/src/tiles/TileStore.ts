import type { View } from '../view/View';
import { selectTiles, type Selection, type SelectOptions } from './selectTiles';
import { TileLoader, type FetchTile } from './TileLoader';
import { addressKey, parentAddress, plainGrain, TileNode, type Grain } from './TileNode';

const cachedBudgets = 3; // so many times what is drawn at most stays in memory

/** The tiles of one version of the cloud in one kind of colours: fetched, kept, forgotten. */
export class TileStore {
    readonly #nodes = new Map<string, TileNode>();
    readonly #loader: TileLoader;
    #points = 0;
    #turn = 0;

    /**
     * @param onChange   a tile has come, or may be asked for again.
     * @param onDropped  a tile is forgotten: what was made of it can go.
     */
    constructor(
        fetchTile: FetchTile,
        readonly onChange: () => void,
        readonly onDropped: (node: TileNode) => void,
        onFailure: (error: unknown) => void,
        grain: Grain = plainGrain,
    ) {
        this.#loader = new TileLoader(
            fetchTile,
            (address, bytes) => {
                const above = this.#nodes.get(addressKey(parentAddress(address)));
                const node = new TileNode(address, bytes, above, grain);
                node.lastUsed = this.#turn;
                this.#nodes.set(node.key, node);
                this.#points += node.tile.count;
                this.onChange();
            },
            onFailure,
        );
    }

    get isLoading(): boolean {
        return this.#loader.numRunning > 0;
    }

    get cachedPoints(): number {
        return this.#points;
    }

    /** What to draw of what is there; asks for what is missing. */
    update(view: View, options: SelectOptions): Selection {
        ++this.#turn;
        const selection = selectTiles((key) => this.#use(key), view, options);
        const now = performance.now();
        this.#loader.want(selection.wanted, now);
        this.#evict(cachedBudgets * options.budget);
        const wait = this.#loader.nextTry(now);
        if (wait !== null) setTimeout(this.onChange, wait + 20);
        return selection;
    }

    clear(): void {
        this.#loader.cancelAll();
        for (const node of this.#nodes.values()) this.onDropped(node);
        this.#nodes.clear();
        this.#points = 0;
    }

    #use(key: string): TileNode | undefined {
        const node = this.#nodes.get(key);
        if (node !== undefined) node.lastUsed = this.#turn;
        return node;
    }

    /** Forgets what was looked at longest ago; never what the last selection looked at. */
    #evict(maxPoints: number): void {
        if (this.#points <= maxPoints) return;
        const oldest = [...this.#nodes.values()].sort((a, b) => a.lastUsed - b.lastUsed);
        for (const node of oldest) {
            if (this.#points <= maxPoints || node.lastUsed === this.#turn) return;
            this.#nodes.delete(node.key);
            this.#points -= node.tile.count;
            this.onDropped(node);
        }
    }
}
