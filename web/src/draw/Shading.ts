import {
    BufferAttribute,
    BufferGeometry,
    Camera as SceneCamera,
    GLSL3,
    LinearFilter,
    Mesh,
    NoBlending,
    RawShaderMaterial,
    Vector2,
    Vector3,
    WebGLRenderTarget,
    type IUniform,
    type WebGLRenderer,
} from 'three';
import type { Rgb } from '../colors/colors';
import type { View } from '../view/View';
import { noiseCell, noiseFragment, screenVertex, shadeFragment } from './shaders';

export interface ShadingLook {
    readonly background: Rgb;
    /** 0: no shading. */
    readonly strength: number;
    /** Device pixels a CSS pixel. */
    readonly scale: number;
}

/** Makes the picture that is seen of the picture of colours and depths. */
export class Shading {
    readonly #camera = new SceneCamera();
    readonly #noise = new WebGLRenderTarget(1, 1, { minFilter: LinearFilter, magFilter: LinearFilter, depthBuffer: false });
    readonly #uniforms: Record<string, IUniform>;
    readonly #noisePass: Mesh<BufferGeometry, RawShaderMaterial>;
    readonly #shadePass: Mesh<BufferGeometry, RawShaderMaterial>;

    /** @param target  what has been drawn, with a depth texture. */
    constructor(target: WebGLRenderTarget) {
        this.#uniforms = {
            uColor: { value: target.texture },
            uDepth: { value: target.depthTexture },
            uNoise: { value: this.#noise.texture },
            uNearFar: { value: new Vector2() },
            uParallel: { value: false },
            uFocal: { value: 1 },
            uBackground: { value: new Vector3() },
            uStrength: { value: 0 },
            uScale: { value: 1 },
        };
        this.#noisePass = makePass(noiseFragment, this.#uniforms);
        this.#shadePass = makePass(shadeFragment, this.#uniforms);
    }

    /** @param width  device pixels, as the height. */
    resize(width: number, height: number): void {
        this.#noise.setSize(Math.max(1, Math.ceil(width / noiseCell)), Math.max(1, Math.ceil(height / noiseCell)));
    }

    /** Draws to the canvas. */
    draw(renderer: WebGLRenderer, view: View, range: readonly [number, number], look: ShadingLook): void {
        const uniforms = this.#uniforms;
        (uniforms.uNearFar.value as Vector2).set(...range);
        uniforms.uParallel.value = view.camera.parallel;
        uniforms.uFocal.value = view.focal * look.scale;
        uniforms.uScale.value = look.scale;
        uniforms.uStrength.value = look.strength;
        (uniforms.uBackground.value as Vector3).set(...look.background).divideScalar(255);
        if (look.strength > 0) {
            renderer.setRenderTarget(this.#noise);
            renderer.render(this.#noisePass, this.#camera);
        }
        renderer.setRenderTarget(null);
        renderer.render(this.#shadePass, this.#camera);
    }
}

/** A pass over every pixel: one triangle that covers the picture. */
function makePass(fragmentShader: string, uniforms: Record<string, IUniform>): Mesh<BufferGeometry, RawShaderMaterial> {
    const geometry = new BufferGeometry();
    geometry.setAttribute('position', new BufferAttribute(new Float32Array([-1, -1, 0, 3, -1, 0, -1, 3, 0]), 3));
    const material = new RawShaderMaterial({
        ...{ glslVersion: GLSL3, vertexShader: screenVertex, fragmentShader, uniforms },
        ...{ blending: NoBlending, depthTest: false, depthWrite: false },
    });
    const pass = new Mesh(geometry, material);
    pass.frustumCulled = false;
    return pass;
}
