import type { Api } from '../data/Api';
import type { Attribute } from '../data/info';
import { Renderer, type Look } from '../draw/Renderer';
import type { Grain, TileNode } from '../tiles/TileNode';
import { TileStore } from '../tiles/TileStore';
import type { Selection, SelectOptions } from '../tiles/selectTiles';
import { View } from '../view/View';
import type { Camera } from '../view/Camera';

/** Which points, and in which colours, the tiles are of. */
export interface TileSource {
    readonly version: number;
    readonly color: Attribute | null;
}

export interface StageScene {
    readonly camera: Camera;
    readonly look: Look;
    readonly options: SelectOptions;
}

const maxScale = 2; // more pixels are not seen, and cost time

/** The picture: tiles as the view needs them, drawn when something has changed. */
export class Stage {
    readonly #renderer: Renderer;
    readonly #context: CanvasRenderingContext2D;
    #store: TileStore | null = null;
    #next: TileStore | null = null; // takes its place when it has all that the view needs
    #source: TileSource | null = null;
    #width = 1;
    #height = 1;
    selection: Selection = { drawn: [], wanted: [], points: 0 };

    constructor(
        readonly canvas: HTMLCanvasElement,
        readonly overlay: HTMLCanvasElement,
        readonly api: Api,
        readonly grain: Grain,
        readonly onChange: () => void,
        readonly onFailure: (error: unknown) => void,
    ) {
        this.#renderer = new Renderer(canvas);
        this.#context = overlay.getContext('2d')!;
        new ResizeObserver(() => this.#resize()).observe(canvas.parentElement ?? canvas);
        this.#resize();
    }

    get width(): number {
        return this.#width;
    }

    get height(): number {
        return this.#height;
    }

    /** Is everything drawn that the view needs? */
    get isComplete(): boolean {
        return this.#store !== null && this.#next === null && this.selection.wanted.length === 0;
    }

    show(source: TileSource): void {
        if (this.#source?.version === source.version && this.#source.color === source.color) return;
        this.#source = source;
        const fetchTile = (
            { level, i, j, k }: { level: number; i: number; j: number; k: number },
            signal: AbortSignal,
        ): Promise<ArrayBuffer> =>
            this.api.bytes(
                `api/tile/${source.version}/${level}/${i}/${j}/${k}`,
                { color: source.color ?? undefined },
                signal,
            );
        const drop = (node: TileNode): void => this.#renderer.forget(node);
        this.#next?.clear();
        this.#next = new TileStore(fetchTile, this.onChange, drop, this.onFailure, this.grain);
        this.onChange();
    }

    viewOf(camera: Camera): View {
        return new View(camera, this.#width, this.#height);
    }

    /** Draws the points; what is painted over them comes from `paint`. */
    draw(scene: StageScene, paint: (context: CanvasRenderingContext2D, view: View) => void): void {
        const view = this.viewOf(scene.camera);
        this.#update(view, scene.options);
        // In a fixed order, so that the same view is the same picture.
        const tiles = [...this.selection.drawn].sort((a, b) => (a.key < b.key ? -1 : 1));
        this.#renderer.draw(view, tiles, scene.look);
        this.#paint(view, paint);
    }

    /** The picture with what is painted over it. */
    compose(paint: (context: CanvasRenderingContext2D) => void): HTMLCanvasElement {
        const picture = document.createElement('canvas');
        picture.width = this.canvas.width;
        picture.height = this.canvas.height;
        const context = picture.getContext('2d')!;
        context.drawImage(this.canvas, 0, 0);
        context.drawImage(this.overlay, 0, 0);
        context.scale(picture.width / this.#width, picture.height / this.#height);
        paint(context);
        return picture;
    }

    #update(view: View, options: SelectOptions): void {
        if (this.#next !== null) {
            const selection = this.#next.update(view, options);
            const isBetter = this.#store === null ? selection.drawn.length > 0 : selection.wanted.length === 0;
            if (isBetter) {
                this.#store?.clear();
                this.#store = this.#next;
                this.#next = null;
                this.selection = selection;
                return;
            }
        }
        if (this.#store !== null) this.selection = this.#store.update(view, options);
    }

    #paint(view: View, paint: (context: CanvasRenderingContext2D, view: View) => void): void {
        const scale = this.overlay.width / this.#width;
        this.#context.setTransform(scale, 0, 0, scale, 0, 0);
        this.#context.clearRect(0, 0, this.#width, this.#height);
        paint(this.#context, view);
    }

    #resize(): void {
        const rect = (this.canvas.parentElement ?? this.canvas).getBoundingClientRect();
        this.#width = Math.max(1, Math.round(rect.width));
        this.#height = Math.max(1, Math.round(rect.height));
        const scale = Math.min(maxScale, window.devicePixelRatio || 1);
        this.#renderer.resize(this.#width, this.#height, scale);
        this.overlay.width = Math.round(this.#width * scale);
        this.overlay.height = Math.round(this.#height * scale);
        this.onChange();
    }
}
