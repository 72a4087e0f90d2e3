import { BufferAttribute, BufferGeometry, Points, Vector2, Vector3, type RawShaderMaterial } from 'three';
import type { Box } from '../math/Box';
import { sub, type Vec3 } from '../math/vec3';
import { stepsPerEdge } from '../tiles/decodeTile';
import type { TileNode } from '../tiles/TileNode';
import { maxRing } from './shaders';

/** What colours and cuts the points of every tile. */
export interface PointLook {
    readonly heights: { readonly min: number; readonly max: number };
    readonly clip: Box | null;
    readonly ring: readonly Vec3[];
    /** Device pixels a unit, at distance 1 where the view is perspective; times the wanted size. */
    readonly pixelsPerUnit: number;
}

/** A tile on the graphics card: places in steps from the centre, which is placed relative to the viewer. */
export class TileMesh {
    readonly points: Points<BufferGeometry, RawShaderMaterial>;
    readonly #step: number;

    constructor(
        readonly node: TileNode,
        material: RawShaderMaterial,
    ) {
        const geometry = new BufferGeometry();
        const places = new BufferAttribute(node.tile.places, 4);
        const colors = new BufferAttribute(node.tile.colors, 4, true);
        geometry.setAttribute('position', places);
        geometry.setAttribute('color', colors);
        geometry.setDrawRange(0, node.tile.count);
        this.points = new Points(geometry, material);
        this.points.frustumCulled = false;
        this.points.matrixAutoUpdate = false;
        this.#step = node.tile.edge / stepsPerEdge;
    }

    /** Differences are taken in double precision, so that nothing trembles far from the origin. */
    place(eye: Vec3, look: PointLook): void {
        const { centre } = this.node.tile;
        const offset = sub(centre, eye);
        const s = this.#step;
        this.points.matrix.set(s, 0, 0, offset[0], 0, s, 0, offset[1], 0, 0, s, offset[2], 0, 0, 0, 1);
        this.points.matrixWorldNeedsUpdate = true;
        const uniforms = this.points.material.uniforms;
        uniforms.uPixels.value = this.node.pointSpacing * look.pixelsPerUnit;
        const range = look.heights.max - look.heights.min;
        const perUnit = range > 0 ? 1 / range : 0;
        const share = range > 0 ? (centre[2] - look.heights.min) * perUnit : 0.5;
        (uniforms.uHeight.value as Vector2).set(share, s * perUnit);
        this.#cut(look);
    }

    dispose(): void {
        this.points.geometry.dispose();
        this.points.material.dispose();
    }

    #cut(look: PointLook): void {
        const { centre } = this.node.tile;
        const uniforms = this.points.material.uniforms;
        uniforms.uClip.value = look.clip !== null;
        if (look.clip !== null) {
            const slack = 1e-3; // of a step: a face through a point keeps it
            const min = sub(look.clip.min, centre);
            const max = sub(look.clip.max, centre);
            const step = this.#step;
            (uniforms.uClipMin.value as Vector3).set(...min).divideScalar(step).subScalar(slack);
            (uniforms.uClipMax.value as Vector3).set(...max).divideScalar(step).addScalar(slack);
        }
        const ring = look.ring.length <= maxRing ? look.ring : [];
        uniforms.uRingCount.value = ring.length;
        ring.forEach((place, i) => {
            const [x, y] = sub(place, centre);
            (uniforms.uRing.value as Vector2[])[i].set(x / this.#step, y / this.#step);
        });
    }
}
