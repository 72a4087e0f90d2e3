import assert from 'node:assert/strict';
import { test } from 'node:test';
import { ApiError } from '../../src/data/ApiError';
import { decodeTile, estimateSpacing, headerBytes, pointBytes } from '../../src/tiles/decodeTile';
import { Heap } from '../../src/tiles/Heap';
import { selectTiles, type SelectOptions } from '../../src/tiles/selectTiles';
import { TileLoader } from '../../src/tiles/TileLoader';
import { addressKey, childAddress, rootAddress, TileNode, type TileAddress } from '../../src/tiles/TileNode';
import { TileStore } from '../../src/tiles/TileStore';
import { View } from '../../src/view/View';

interface Made {
    centre?: [number, number, number];
    edge?: number;
    octants?: number;
    deeper?: boolean;
    points?: [number, number, number][];
    count?: number;
}

function makeTile(made: Made): ArrayBuffer {
    const points = made.points ?? Array.from({ length: made.count ?? 0 }, () => [0, 0, 0]);
    const buffer = new ArrayBuffer(headerBytes + points.length * pointBytes);
    const view = new DataView(buffer);
    (made.centre ?? [0, 0, 0]).forEach((c, k) => view.setFloat64(8 * k, c, true));
    view.setFloat64(24, made.edge ?? 100, true);
    view.setUint32(32, points.length, true);
    view.setUint32(36, (made.octants ?? 0) | (made.deeper ? 256 : 0), true);
    points.forEach(([x, y, z], i) => {
        const at = headerBytes + i * pointBytes;
        [x, y, z].forEach((c, k) => view.setInt16(at + 2 * k, c, true));
        [10, 20, 30].forEach((c, k) => view.setUint8(at + 8 + k, c));
    });
    return buffer;
}

/** A full octree over a square, four octants a level, each tile with so many points. */
function makeTree(levels: number, count: number): (address: TileAddress) => ArrayBuffer {
    return ({ level, i, j, k }) => {
        const edge = 100 / 2 ** level;
        const centre = [i, j, k].map((n) => -50 + (n + 0.5) * edge) as [number, number, number];
        const lowest = k === 0 && level < levels ? 0b01010101 : 0;
        return makeTile({ centre, edge, octants: lowest, deeper: level < levels, count });
    };
}

const camera = { target: [0, 0, -50] as const, distance: 160, azimuth: 180, elevation: 60, parallel: false };
const view = new View(camera, 800, 600);
const options: SelectOptions = { budget: 1e6, pixels: 1.3, clip: null };

function settle(make: (address: TileAddress) => ArrayBuffer, opts: SelectOptions, at = view) {
    const nodes = new Map<string, TileNode>();
    for (;;) {
        const selection = selectTiles((key) => nodes.get(key), at, opts);
        if (selection.wanted.length === 0) return { selection, nodes };
        for (const address of selection.wanted) nodes.set(addressKey(address), new TileNode(address, make(address)));
    }
}

/** Does one of two tiles lie within the other? */
function overlap(a: TileAddress, b: TileAddress): boolean {
    const [up, down] = a.level <= b.level ? [a, b] : [b, a];
    const shift = down.level - up.level;
    return down.i >> shift === up.i && down.j >> shift === up.j && down.k >> shift === up.k;
}

test('DecodeTile_HeaderAndPointsAsSent', () => {
    const tile = decodeTile(
        makeTile({ centre: [4e6, -2, 0.5], edge: 8, octants: 5, deeper: true, points: [[1, -2, 32767], [-32767, 0, 7]] }),
    );
    assert.deepEqual(tile.centre, [4e6, -2, 0.5]);
    assert.equal(tile.edge, 8);
    assert.equal(tile.octants, 5);
    assert.equal(tile.deeper, true);
    assert.deepEqual([...tile.places], [1, -2, 32767, 0, -32767, 0, 7, 0]);
    assert.deepEqual([...tile.colors], [10, 20, 30, 0, 10, 20, 30, 0]);
});

test('DecodeTile_RefusesOtherLengths', () => {
    assert.throws(() => decodeTile(new ArrayBuffer(39)));
    assert.throws(() => decodeTile(makeTile({ count: 3 }).slice(0, -1)));
});

test('EstimateSpacing_OfAnEvenGridIsItsStep', () => {
    const points: [number, number, number][] = [];
    for (let x = 0; x < 64; ++x) for (let y = 0; y < 64; ++y) points.push([x * 1024 - 32256, y * 1024 - 32256, 0]);
    const spacing = estimateSpacing(decodeTile(makeTile({ edge: 64, points })));
    assert.ok(spacing > 0.9 && spacing < 1.2, String(spacing));
});

test('EstimateSpacing_WithoutPointsIsFinite', () => {
    assert.ok(Number.isFinite(estimateSpacing(decodeTile(makeTile({ points: [] })))));
});

test('Heap_LargestFirst', () => {
    const heap = new Heap<number>();
    for (const n of [5, 1, 9, 3, 9, -2, 7]) heap.push(n, n);
    const out: number[] = [];
    for (let top = heap.pop(); top !== undefined; top = heap.pop()) out.push(top.item);
    assert.deepEqual(out, [9, 9, 7, 5, 3, 1, -2]);
});

test('Octants_ChildrenLieWhereTheirAddressesSay', () => {
    const node = new TileNode(rootAddress, makeTile({ edge: 100, octants: 255, deeper: true, count: 1 }));
    for (const [octant, child] of node.children().entries()) {
        assert.deepEqual(child.address, childAddress(rootAddress, octant));
        const { i, j, k } = child.address;
        assert.deepEqual(child.box.min, [i, j, k].map((n) => -50 + 50 * n));
    }
});

test('SelectTiles_AsksForTheRootFirst', () => {
    const selection = selectTiles(() => undefined, view, options);
    assert.deepEqual(selection.wanted, [rootAddress]);
    assert.equal(selection.drawn.length, 0);
});

test('SelectTiles_NoPlaceTwiceAndNoHoles', () => {
    const { selection, nodes } = settle(makeTree(5, 400), { ...options, pixels: 0.2 });
    const drawn = selection.drawn.map(({ address }) => address);
    assert.ok(drawn.length > 8);
    drawn.forEach((a, i) => drawn.slice(i + 1).forEach((b) => assert.ok(!overlap(a, b))));
    // Whatever has been loaded and can be seen is drawn by itself, by something finer or something coarser.
    for (const node of nodes.values())
        if (view.sees(node.box)) assert.ok(drawn.some((address) => overlap(address, node.address)));
});

test('SelectTiles_ParentStaysUntilAllItsSeenChildrenAreThere', () => {
    const make = makeTree(1, 100);
    const nodes = new Map([['0/0/0/0', new TileNode(rootAddress, make(rootAddress))]]);
    const fine = { ...options, pixels: 0.1 };
    const { wanted } = selectTiles((key) => nodes.get(key), view, fine);
    assert.equal(wanted.length, 4);
    wanted.forEach((address, i) => {
        nodes.set(addressKey(address), new TileNode(address, make(address)));
        const { drawn } = selectTiles((key) => nodes.get(key), view, fine);
        assert.deepEqual(drawn.map(({ address: { level } }) => level), i < 3 ? [0] : [1, 1, 1, 1]);
    });
});

test('SelectTiles_KeepsToTheBudget', () => {
    for (const budget of [500, 2000, 10000, 60000]) {
        const { selection } = settle(makeTree(7, 400), { ...options, pixels: 0.01, budget });
        assert.ok(selection.points <= budget);
        assert.equal(selection.points, selection.drawn.reduce((sum, node) => sum + node.tile.count, 0));
        assert.ok(selection.points > budget / 5, `${selection.points} of ${budget}`);
    }
});

test('SelectTiles_NearTilesAreFiner', () => {
    const close = new View({ ...camera, target: [-40, -40, -50], distance: 8, elevation: 20 }, 800, 600);
    const { selection } = settle(makeTree(7, 400), { ...options, pixels: 0.5 }, close);
    const finest = Math.max(...selection.drawn.map(({ address }) => address.level));
    const nearest = selection.drawn.reduce((a, b) => (close.nearest(a.box) < close.nearest(b.box) ? a : b));
    assert.equal(nearest.address.level, finest);
    assert.ok(selection.drawn.some(({ address }) => address.level < finest));
});

test('SelectTiles_SameViewSamePictureWhateverWasThere', () => {
    const opts = { ...options, pixels: 0.05, budget: 20000 };
    const fresh = settle(makeTree(7, 400), opts).selection.drawn.map(({ key }) => key).sort();
    const make = makeTree(7, 400);
    const nodes = new Map<string, TileNode>();
    for (const at of [new View({ ...camera, distance: 20 }, 800, 600), view])
        for (;;) {
            const { wanted, drawn } = selectTiles((key) => nodes.get(key), at, opts);
            for (const address of wanted) nodes.set(addressKey(address), new TileNode(address, make(address)));
            if (wanted.length > 0) continue;
            if (at === view) assert.deepEqual(drawn.map(({ key }) => key).sort(), fresh);
            break;
        }
});

test('SelectTiles_NothingOutsideTheClipBoxIsAskedFor', () => {
    const clip = { min: [-50, -50, -50], max: [-30, -30, 50] } as const;
    const { nodes } = settle(makeTree(4, 400), { ...options, pixels: 0.1, clip });
    for (const { address, box } of nodes.values()) if (address.level > 0) assert.ok(box.min[0] <= -30 && box.min[1] <= -30);
});

test('TileLoader_CancelsWhatIsNoLongerWanted', () => {
    const signals = new Map<string, AbortSignal>();
    const loader = new TileLoader(
        (address, signal) => {
            signals.set(addressKey(address), signal);
            return new Promise(() => undefined);
        },
        () => undefined,
        () => undefined,
    );
    const [a, b, c] = [0, 1, 2].map((octant) => childAddress(rootAddress, octant));
    loader.want([a, b], 0);
    loader.want([b, c], 0);
    assert.equal(signals.get(addressKey(a))?.aborted, true);
    assert.equal(signals.get(addressKey(b))?.aborted, false);
    assert.equal(loader.numRunning, 2);
});

test('TileLoader_MostWantedFirstAndNotAllAtOnce', () => {
    const asked: string[] = [];
    const loader = new TileLoader(
        (address) => {
            asked.push(addressKey(address));
            return new Promise(() => undefined);
        },
        () => undefined,
        () => undefined,
    );
    const all = Array.from({ length: 20 }, (_, i) => ({ level: 5, i, j: 0, k: 0 }));
    loader.want(all, 0);
    assert.deepEqual(asked, all.slice(0, asked.length).map(addressKey));
    assert.ok(asked.length < 10);
});

test('TileLoader_GoesOnWithoutBeingAskedAgain', async () => {
    const come: string[] = [];
    const loader = new TileLoader(
        () => Promise.resolve(new ArrayBuffer(0)),
        (address) => come.push(addressKey(address)),
        () => undefined,
    );
    const all = Array.from({ length: 20 }, (_, i) => ({ level: 5, i, j: 0, k: 0 }));
    loader.want(all, 0);
    await new Promise((done) => setTimeout(done, 20));
    assert.deepEqual(come, all.map(addressKey));
    assert.equal(loader.numRunning, 0);
});

test('TileLoader_AFailureWaitsBeforeItIsTriedAgain', async () => {
    let asked = 0;
    const failures: unknown[] = [];
    const loader = new TileLoader(
        () => {
            ++asked;
            return Promise.reject(new Error('no'));
        },
        () => undefined,
        (error) => failures.push(error),
    );
    loader.want([rootAddress], performance.now());
    await new Promise((done) => setTimeout(done, 5));
    assert.equal(failures.length, 1);
    loader.want([rootAddress], performance.now());
    assert.equal(asked, 1);
    assert.ok((loader.nextTry(performance.now()) ?? 0) > 0);
    loader.want([rootAddress], performance.now() + 60000);
    assert.equal(asked, 2);
});

test('TileLoader_WhatIsRefusedIsNotAskedForAgain', async () => {
    let asked = 0;
    const loader = new TileLoader(
        () => {
            ++asked;
            return Promise.reject(new ApiError(404, 'there is no such tile'));
        },
        () => undefined,
        () => undefined,
    );
    loader.want([rootAddress], performance.now());
    await new Promise((done) => setTimeout(done, 5));
    loader.want([rootAddress], performance.now() + 1e9);
    assert.equal(asked, 1);
    assert.equal(loader.nextTry(performance.now()), null);
});

test('TileStore_ForgetsTheLeastRecentlyUsedAndNeverWhatIsDrawn', async () => {
    const make = makeTree(6, 400);
    const dropped: string[] = [];
    const store = new TileStore(
        (address) => Promise.resolve(make(address)),
        () => undefined,
        (node) => dropped.push(node.key),
        (error) => assert.fail(String(error)),
    );
    const opts = { ...options, pixels: 0.1, budget: 8000 };
    let last = store.update(view, opts);
    for (let turn = 0; turn < 24; ++turn) {
        const at = new View({ ...camera, target: [40 * Math.cos(turn), 40 * Math.sin(turn), -50], distance: 12 }, 800, 600);
        do {
            last = store.update(at, opts);
            await new Promise((done) => setTimeout(done, 1));
        } while (store.isLoading);
        last = store.update(at, opts);
        assert.ok(last.drawn.every(({ key }) => !dropped.includes(key) || dropped.lastIndexOf(key) >= 0));
    }
    assert.ok(dropped.length > 0);
    assert.ok(!dropped.includes(addressKey(rootAddress)));
    assert.ok(store.cachedPoints <= 4 * opts.budget, String(store.cachedPoints));
});
