import { BufferAttribute, BufferGeometry, Points, Vector2, Vector3, type RawShaderMaterial } from 'three';
import type { Box } from '../math/Box';
import { sub, type Vec3 } from '../math/vec3';
import type { TileNode } from '../tiles/TileNode';
import { maxRing } from './shaders';

/** What colours and cuts the points of every tile. */
export interface PointLook {
    readonly heights: { readonly min: number; readonly max: number };
    /** As drawn, like the ring. */
    readonly clip: Box | null;
    readonly ring: readonly Vec3[];
    /** Device pixels a unit, at distance 1 where the view is perspective; times the wanted size. */
    readonly pixelsPerUnit: number;
}

/** A tile on the graphics card: places in steps from the centre, which is placed relative to the viewer. */
export class TileMesh {
    readonly points: Points<BufferGeometry, RawShaderMaterial>;

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
    }

    /** Differences are taken in double precision, so that nothing trembles far from the origin. */
    place(eye: Vec3, look: PointLook): void {
        const { centre, steps, grain } = this.node;
        const offset = sub(centre, eye);
        this.points.matrix.set(
            ...[steps[0], 0, 0, offset[0]] as const,
            ...[0, steps[1], 0, offset[1]] as const,
            ...[0, 0, steps[2], offset[2]] as const,
            ...[0, 0, 0, 1] as const,
        );
        this.points.matrixWorldNeedsUpdate = true;
        const uniforms = this.points.material.uniforms;
        uniforms.uPixels.value = this.node.pointSpacing * look.pixelsPerUnit;
        const range = look.heights.max - look.heights.min;
        const perUnit = range > 0 ? 1 / range : 0;
        const share = range > 0 ? (this.node.tile.centre[2] - look.heights.min) * perUnit : 0.5;
        (uniforms.uHeight.value as Vector2).set(share, (steps[2] / grain.stretch[2]) * perUnit);
        this.#cut(look);
    }

    dispose(): void {
        this.points.geometry.dispose();
        this.points.material.dispose();
    }

    #cut(look: PointLook): void {
        const { centre, steps } = this.node;
        const step = new Vector3(...steps);
        const uniforms = this.points.material.uniforms;
        uniforms.uClip.value = look.clip !== null;
        if (look.clip !== null) {
            const slack = 1e-3; // of a step: a face through a point keeps it
            const min = sub(look.clip.min, centre);
            const max = sub(look.clip.max, centre);
            (uniforms.uClipMin.value as Vector3).set(...min).divide(step).subScalar(slack);
            (uniforms.uClipMax.value as Vector3).set(...max).divide(step).addScalar(slack);
        }
        const ring = look.ring.length <= maxRing ? look.ring : [];
        uniforms.uRingCount.value = ring.length;
        ring.forEach((place, i) => {
            const [x, y] = sub(place, centre);
            (uniforms.uRing.value as Vector2[])[i].set(x / steps[0], y / steps[1]);
        });
    }
}
