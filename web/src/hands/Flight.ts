import { add, along, scale, type Vec3 } from '../math/vec3';
import { basisOf, type Camera } from '../view/Camera';

const directions: Readonly<Record<string, readonly [number, number, number]>> = {
    // to the right, forward, up
    w: [0, 1, 0],
    s: [0, -1, 0],
    a: [-1, 0, 0],
    d: [1, 0, 0],
    e: [0, 0, 1],
    q: [0, 0, -1],
};

/** Flying with keys held down: the viewer moves, and looks around with the mouse. */
export class Flight {
    readonly #held = new Set<string>();
    #fast = false;
    /** Distances of the target a second. */
    speed = 0.6;

    get isMoving(): boolean {
        return this.#held.size > 0;
    }

    /** @returns whether the key is one of those that fly. */
    press(key: string, fast: boolean): boolean {
        this.#fast = fast;
        if (!(key.toLowerCase() in directions)) return false;
        this.#held.add(key.toLowerCase());
        return true;
    }

    release(key: string, fast: boolean): void {
        this.#fast = fast;
        this.#held.delete(key.toLowerCase());
    }

    stop(): void {
        this.#held.clear();
    }

    step(camera: Camera, seconds: number): Camera {
        const basis = basisOf(camera);
        let way: Vec3 = [0, 0, 0];
        for (const key of this.#held) {
            const [right, ahead, up] = directions[key];
            way = add(way, along(along(scale(basis.right, right), basis.viewer, -ahead), [0, 0, 1], up));
        }
        const reach = camera.distance * this.speed * seconds * (this.#fast ? 4 : 1);
        return { ...camera, target: along(camera.target, way, reach) };
    }
}
