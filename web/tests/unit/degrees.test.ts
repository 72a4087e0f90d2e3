import assert from 'node:assert/strict';
import { test } from 'node:test';
import { findProportions } from '../../src/data/Proportions';
import { fromDrawn, noStretch, toDrawn } from '../../src/math/stretch';
import type { Vec3 } from '../../src/math/vec3';
import { selectTiles } from '../../src/tiles/selectTiles';
import { rootAddress, addressKey, TileNode, type Grain } from '../../src/tiles/TileNode';
import { drawnWidth, makeCorridor, stretchProfile } from '../../src/tools/corridor';
import { readMark } from '../../src/tools/marks';
import { View } from '../../src/view/View';

const unit = { plan: 'degrees', height: 'm', degrees: true, plan_metres: null, height_metres: 1 };
const unknown = { plan: null, height: null, degrees: null, plan_metres: null, height_metres: null };
const bounds = { min: [8, 59.9, 100] as Vec3, max: [8.2, 60.1, 400] as Vec3 };
const degrees = findProportions({ bounds, unit });

test('Proportions_DegreesAreDrawnInMetres', () => {
    assert.ok(Math.abs(degrees.stretch[0] - 55660) < 1e-6);
    assert.equal(degrees.stretch[1], 111320);
    assert.equal(degrees.stretch[2], 1);
    assert.equal(degrees.plan, 'm');
    assert.equal(degrees.note, 'x and y taken for degrees');
});

test('Proportions_WithoutAWordOfTheFileByHeightsThatAreFarTooLarge', () => {
    assert.deepEqual(findProportions({ bounds, unit: unknown }).stretch, degrees.stretch);
    const room = { min: [0, 0, 0] as Vec3, max: [8, 5, 3] as Vec3 };
    assert.deepEqual(findProportions({ bounds: room, unit: unknown }).stretch, noStretch);
    const map = { min: [4e5, 5e6, 0] as Vec3, max: [400001, 5000001, 900] as Vec3 };
    assert.deepEqual(findProportions({ bounds: map, unit: unknown }).stretch, noStretch);
    assert.deepEqual(findProportions({ bounds, unit: { ...unit, degrees: false } }).stretch, noStretch);
});

test('ReadMark_InDegreesCoordinatesAreTheLibrarysAndLengthsMetres', () => {
    const places: Vec3[] = [[8, 60, 100], [8, 60.001, 100]];
    assert.equal(readMark({ kind: 'distance', places, indices: [1, 2] }, degrees)[0].value, '111.32 m');
    assert.equal(readMark({ kind: 'point', places: [places[1]], indices: [2] }, degrees)[1].value, '60.001');
});

test('Corridor_WidthsAndDistancesAreMetres', () => {
    const corridor = makeCorridor([8, 60, 0], [8.1, 60, 0], degrees.stretch);
    assert.equal(drawnWidth(corridor, degrees.stretch), 110); // of 5566 m
    assert.ok(Math.abs(corridor.width - 110 / 111320) < 1e-12);
    assert.equal(drawnWidth(makeCorridor([8, 60, 0], [8.1, 60, 0], degrees.stretch, 243), degrees.stretch), 240);
    const floats = new Float32Array([0.05, 7, 0, 0, 0]);
    const parts = { base: 0, count: 1, color: false, ints: new Int32Array(5), bytes: new Uint8Array(20) };
    const profile = stretchProfile({ length: 0.1, floats, ...parts }, corridor, degrees.stretch);
    assert.ok(Math.abs(profile.length - 5566) < 1e-6);
    assert.ok(Math.abs(profile.floats[0] - 2783) < 0.01);
    assert.equal(profile.floats[1], 7);
});

test('TileNode_OfDegreesLiesWhereItsPointsAreDrawn', () => {
    const buffer = new ArrayBuffer(40 + 12);
    const header = new DataView(buffer);
    [8.1, 60, 250, 300].forEach((d, k) => header.setFloat64(8 * k, d, true));
    header.setUint32(32, 1, true);
    const { stretch } = degrees;
    const drawn = { min: toDrawn(bounds.min, stretch), max: toDrawn(bounds.max, stretch) };
    const grain: Grain = { stretch, bounds: drawn, spacing: 50 };
    const node = new TileNode(rootAddress, buffer, undefined, grain);
    assert.deepEqual(node.box, drawn);
    assert.equal(node.pointSpacing, 50);
    assert.deepEqual(node.centre, toDrawn([8.1, 60, 250], stretch));
    assert.ok(Math.abs(node.steps[1] / node.steps[2] - 111320) < 1e-6);
    const camera = { target: node.centre, distance: 30000, azimuth: 215, elevation: 35, parallel: false };
    const options = { budget: 1e6, pixels: 1.3, clip: null };
    const find = (key: string): TileNode | undefined => (key === addressKey(rootAddress) ? node : undefined);
    assert.equal(selectTiles(find, new View(camera, 800, 600), options).points, 1);
    fromDrawn(node.centre, stretch).forEach((c, k) => assert.ok(Math.abs(c - [8.1, 60, 250][k]) < 1e-9));
});

test('ReadMark_WhereHeightsHaveAnotherUnitEachIsToldInItsOwnAndDistancesInThePlans', () => {
    const feet = { plan: 'ft', height: 'm', degrees: false, plan_metres: 0.3048, height_metres: 1 };
    const map = { min: [4e5, 5e6, 0] as Vec3, max: [400001, 5000001, 900] as Vec3 };
    const mixed = findProportions({ bounds: map, unit: feet });
    assert.deepEqual(mixed.stretch, noStretch);
    const places: Vec3[] = [[4e5, 5e6, 0], [4e5 + 40, 5e6, 9.144], [4e5 + 40, 5e6 + 30, 9.144]];
    const read = (kind: 'distance' | 'height' | 'angle', count: number) =>
        readMark({ kind, places: places.slice(0, count), indices: [1, 2, 3].slice(0, count) }, mixed).map(({ value }) => value);
    assert.deepEqual(read('distance', 2), ['50.00 ft', '40.00 ft', '9.144 m']);
    assert.deepEqual(read('distance', 3), ['80.00 ft', '50.00 ft', '9.144 m', '58.31 ft']);
    assert.deepEqual(read('height', 2), ['9.144 m', '40.00 ft', '75.0 %']);
    assert.deepEqual(read('angle', 3), ['90.00°']);
    assert.deepEqual(findProportions({ bounds: map, unit: { ...feet, height_metres: null } }).measured, noStretch);
});
