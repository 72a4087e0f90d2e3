import {
    Camera as SceneCamera,
    DepthTexture,
    FloatType,
    GLSL3,
    NearestFilter,
    NoBlending,
    RawShaderMaterial,
    Scene,
    Vector2,
    Vector3,
    WebGLRenderer,
    WebGLRenderTarget,
} from 'three';
import { accent, heightStops, surrounds, type Rgb, type Theme } from '../colors/colors';
import { boxCentre, type Box } from '../math/Box';
import { distance, type Vec3 } from '../math/vec3';
import type { TileNode } from '../tiles/TileNode';
import type { View } from '../view/View';
import { maxRing, pointFragment, pointVertex } from './shaders';
import { Shading } from './Shading';
import { TileMesh, type PointLook } from './TileMesh';

export interface Look {
    readonly theme: Theme;
    readonly background: Rgb | null;
    readonly byHeight: boolean;
    readonly heights: { readonly min: number; readonly max: number };
    /** 1: points as wide as the gaps between them. */
    readonly pointSize: number;
    readonly shading: boolean;
    /** As drawn, like the ring. */
    readonly clip: Box | null;
    readonly ring: readonly Vec3[];
}

const cover = 1.35; // discs reach a little beyond half the way to the next: no gaps on even ground
const sizeRange = [1.5, 24] as const; // CSS pixels

/** Draws tiles: points into a picture of colours and depths, then that picture, shaded, to the canvas. */
export class Renderer {
    readonly #renderer: WebGLRenderer;
    readonly #scene = new Scene();
    readonly #camera = new SceneCamera();
    readonly #meshes = new Map<TileNode, TileMesh>();
    readonly #shared = sharedUniforms();
    readonly #pointMaterial: RawShaderMaterial;
    readonly #shading: Shading;
    readonly #target: WebGLRenderTarget;
    #scale = 1;

    constructor(readonly canvas: HTMLCanvasElement) {
        this.#renderer = new WebGLRenderer({
            canvas,
            antialias: false,
            alpha: false,
            depth: false,
            powerPreference: 'high-performance',
            preserveDrawingBuffer: true, // pictures are taken from the canvas
        });
        this.#renderer.autoClear = false;
        this.#scene.matrixWorldAutoUpdate = true;
        this.#camera.matrixAutoUpdate = false;
        this.#pointMaterial = makePointMaterial();
        this.#target = new WebGLRenderTarget(1, 1, {
            minFilter: NearestFilter,
            magFilter: NearestFilter,
            depthTexture: new DepthTexture(1, 1, FloatType),
        });
        this.#shading = new Shading(this.#target);
    }

    /** @param scale  device pixels a CSS pixel. */
    resize(width: number, height: number, scale: number): void {
        this.#scale = scale;
        this.#renderer.setPixelRatio(scale);
        this.#renderer.setSize(width, height, false);
        const size = this.#renderer.getDrawingBufferSize(new Vector2());
        this.#target.setSize(Math.max(1, size.x), Math.max(1, size.y));
        this.#shading.resize(size.x, size.y);
    }

    draw(view: View, tiles: readonly TileNode[], look: Look): void {
        const range = depthRange(view, tiles);
        this.#aim(view, range);
        this.#setShared(view, look);
        const pointLook: PointLook = {
            ...{ heights: look.heights, clip: look.clip, ring: look.ring },
            pixelsPerUnit: view.focal * this.#scale * look.pointSize * cover,
        };
        this.#scene.clear();
        for (const node of tiles) {
            const mesh = this.#meshOf(node);
            mesh.place(view.eye, pointLook);
            this.#scene.add(mesh.points);
        }
        this.#renderer.setRenderTarget(this.#target);
        this.#renderer.setClearColor(0x000000, 0);
        this.#renderer.clear(true, true, false);
        this.#renderer.render(this.#scene, this.#camera);
        this.#shading.draw(this.#renderer, view, range, {
            background: look.background ?? surrounds[look.theme].background,
            strength: look.shading ? (look.byHeight ? 1 : 0.8) : 0,
            scale: this.#scale,
        });
    }

    /** What was made of a tile is let go. */
    forget(node: TileNode): void {
        this.#meshes.get(node)?.dispose();
        this.#meshes.delete(node);
    }

    #meshOf(node: TileNode): TileMesh {
        let mesh = this.#meshes.get(node);
        if (mesh === undefined) {
            const material = this.#pointMaterial.clone();
            Object.assign(material.uniforms, ownUniforms(), this.#shared);
            mesh = new TileMesh(node, material);
            this.#meshes.set(node, mesh);
        }
        return mesh;
    }

    #aim(view: View, [near, far]: readonly [number, number]): void {
        const { right, up, viewer } = view.basis;
        this.#camera.matrixWorldInverse.set(...right, 0, ...up, 0, ...viewer, 0, 0, 0, 0, 1);
        this.#camera.matrixWorld.copy(this.#camera.matrixWorldInverse).invert();
        this.#camera.matrixWorldAutoUpdate = false;
        const sx = (2 * view.focal) / view.width;
        const sy = (2 * view.focal) / view.height;
        const m = this.#camera.projectionMatrix;
        if (view.camera.parallel)
            m.set(sx, 0, 0, 0, 0, sy, 0, 0, 0, 0, -2 / (far - near), -(far + near) / (far - near), 0, 0, 0, 1);
        else
            m.set(sx, 0, 0, 0, 0, sy, 0, 0, ...perspectiveRows(near, far));
        this.#camera.projectionMatrixInverse.copy(m).invert();
    }

    #setShared(view: View, look: Look): void {
        const shared = this.#shared;
        shared.uParallel.value = view.camera.parallel;
        shared.uBall.value = look.shading ? 1 : 0;
        shared.uScale.value = this.#scale;
        shared.uByHeight.value = look.byHeight;
        shared.uSizeRange.value.set(sizeRange[0] * this.#scale, sizeRange[1] * this.#scale * look.pointSize);
        shared.uAccent.value.set(...accent[look.theme]).divideScalar(255);
    }
}

function perspectiveRows(near: number, far: number): [number, number, number, number, number, number, number, number] {
    return [0, 0, -(far + near) / (far - near), (-2 * far * near) / (far - near), 0, 0, -1, 0];
}

/** Distances between which all tiles lie. */
export function depthRange(view: View, tiles: readonly TileNode[]): readonly [number, number] {
    let near = Infinity;
    let far = -Infinity;
    for (const node of tiles) {
        const reach = distance(node.box.min, node.box.max) / 2;
        const depth = view.depthOf(boxCentre(node.box));
        near = Math.min(near, depth - reach);
        far = Math.max(far, depth + reach);
    }
    if (!(far > near)) [near, far] = [0, 1];
    if (view.camera.parallel) return [near - 1, far + 1];
    far = Math.max(far, 1e-3);
    return [Math.max(near, Math.min(view.camera.distance * 0.02, far * 0.01), far * 2e-5), far * 1.001];
}

function sharedUniforms() {
    return {
        uParallel: { value: false },
        uByHeight: { value: false },
        uBall: { value: 0 },
        uScale: { value: 1 },
        uSizeRange: { value: new Vector2() },
        uAccent: { value: new Vector3() },
        uRamp: { value: heightStops.map((stop) => new Vector3(...stop).divideScalar(255)) },
    };
}

function ownUniforms() {
    return {
        uPixels: { value: 1 },
        uHeight: { value: new Vector2() },
        uClip: { value: false },
        uClipMin: { value: new Vector3() },
        uClipMax: { value: new Vector3() },
        uRingCount: { value: 0 },
        uRing: { value: Array.from({ length: maxRing }, () => new Vector2()) },
    };
}

function makePointMaterial(): RawShaderMaterial {
    return new RawShaderMaterial({
        glslVersion: GLSL3,
        vertexShader: pointVertex,
        fragmentShader: pointFragment,
        blending: NoBlending,
    });
}
