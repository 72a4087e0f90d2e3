import assert from 'node:assert/strict';
import { test } from 'node:test';
import { heightColor } from '../../src/colors/colors';
import type { Proportions } from '../../src/data/Proportions';
import { noStretch } from '../../src/math/stretch';
import { Motion } from '../../src/hands/Motion';
import { Flight } from '../../src/hands/Flight';
import { decodeProfile, profileHeights, profileWords } from '../../src/tools/decodeProfile';
import { markKinds, readMark } from '../../src/tools/marks';
import { moveFace } from '../../src/tools/moveFace';
import { findDrawn, fitAxes } from '../../src/tools/paintProfile';
import { Gathering, toolKinds } from '../../src/tools/tools';

const proportions: Proportions = { stretch: noStretch, measured: noStretch, note: '', plan: 'm', height: 'm' };

function makeProfile(points: [number, number][], length = 10, base = 100): ArrayBuffer {
    const buffer = new ArrayBuffer(24 + points.length * 4 * profileWords);
    const view = new DataView(buffer);
    view.setFloat64(0, length, true);
    view.setFloat64(8, base, true);
    view.setUint32(16, points.length, true);
    points.forEach(([along, height], i) => {
        view.setFloat32(24 + 20 * i, along, true);
        view.setFloat32(28 + 20 * i, height, true);
        view.setInt32(36 + 20 * i, 1000 + i, true);
    });
    return buffer;
}

test('HeightColor_EndsAndMiddleAreThoseOfThePictures', () => {
    assert.deepEqual(heightColor(-1), [46, 50, 128]);
    assert.deepEqual(heightColor(0.5), [92, 178, 98]);
    assert.deepEqual(heightColor(2), [252, 232, 206]);
});

test('Gathering_EndsWithItsLastPoint', () => {
    const angle = new Gathering(toolKinds.angle);
    assert.deepEqual([5, 6, 7].map((index) => angle.add([index, 0, 0], index)), [false, false, true]);
    const distance = new Gathering(toolKinds.distance);
    distance.add([0, 0, 0], 1);
    assert.equal(distance.canFinish, false);
    distance.add([0, 0, 0], 1); // the second click of a double click
    assert.equal(distance.count, 1);
    distance.add([3, 4, 0], 2);
    assert.equal(distance.canFinish, true);
    distance.removeLast();
    assert.equal(distance.canFinish, false);
});

test('Gathering_CornersBesideTheCloudAreToldApartByPlace', () => {
    const polygon = new Gathering(toolKinds.polygon);
    polygon.add([0, 0, 0], -1);
    polygon.add([0, 0, 0], -1); // the second click of a double click
    polygon.add([4, 0, 0], -1);
    assert.equal(polygon.count, 2);
});

test('ReadMark_SaysWhatWasMeasured', () => {
    const places = [[0, 0, 0], [3, 4, 12], [3, 0, 12]] as const;
    const read = (kind: (typeof markKinds)[number], count: number) =>
        readMark({ kind, places: places.slice(0, count), indices: [9, 8, 7].slice(0, count) }, proportions).map(({ value }) => value);
    assert.deepEqual(read('point', 1), ['0', '0', '0', '9']);
    assert.deepEqual(read('distance', 2), ['13.00 m', '5.000 m', '12.00 m']);
    assert.deepEqual(read('distance', 3), ['17.00 m', '3.000 m', '12.00 m', '12.37 m']);
    assert.deepEqual(read('height', 2), ['12.00 m', '5.000 m', '240.0 %']);
    assert.equal(read('area', 3)[0], '6.000 m²');
    assert.equal(readMark({ kind: 'height', places: [[1, 1, 0], [1, 1, 2]], indices: [1, 2] }, proportions)[2].value, 'upright');
});

test('MoveFace_NeverBeyondTheOppositeOneNorTheLimits', () => {
    const limits = { min: [0, 0, 0], max: [10, 10, 10] } as const;
    const box = { min: [2, 2, 2], max: [8, 8, 8] } as const;
    assert.deepEqual(moveFace(box, { axis: 0, high: true }, 5, limits).max, [5, 8, 8]);
    assert.deepEqual(moveFace(box, { axis: 0, high: true }, 50, limits).max, [10, 8, 8]);
    assert.deepEqual(moveFace(box, { axis: 1, high: true }, -50, limits).max, [8, 2, 8]);
    assert.deepEqual(moveFace(box, { axis: 2, high: false }, 9, limits).min, [2, 2, 8]);
    assert.deepEqual(moveFace(box, { axis: 2, high: false }, -9, limits).min, [2, 2, 0]);
});

test('Profile_DecodedAndFoundWhereItIsDrawn', () => {
    const profile = decodeProfile(makeProfile([[0, 0], [5, 2], [10, 1]]));
    assert.equal(profile.count, 3);
    assert.deepEqual(profileHeights(profile), { min: 100, max: 102 });
    const axes = fitAxes(profile, 800, 300);
    assert.ok(axes.minY <= 100 && axes.maxY >= 102);
    const x = axes.x + axes.width / 2;
    const y = axes.y + ((axes.maxY - 102) / (axes.maxY - axes.minY)) * axes.height;
    assert.equal(findDrawn(profile, axes, x + 2, y - 2), 1);
    assert.equal(findDrawn(profile, axes, x + 60, y), -1);
});

test('Profile_RefusesOtherLengthsAndTakesNone', () => {
    assert.throws(() => decodeProfile(makeProfile([[1, 1]]).slice(0, -4)));
    assert.throws(() => decodeProfile(new ArrayBuffer(3)));
    const empty = decodeProfile(makeProfile([]));
    assert.ok(Number.isFinite(fitAxes(empty, 400, 200).exaggeration));
});

test('Motion_EndsExactlyWhereItWasGoing', () => {
    const from = { target: [0, 0, 0], distance: 100, azimuth: 350, elevation: 10, parallel: false } as const;
    const to = { target: [9, 9, 9], distance: 1, azimuth: 10, elevation: 80, parallel: true } as const;
    const motion = new Motion(from, to, 1000);
    const half = motion.at(1225);
    assert.ok(half.camera.azimuth > 359 && half.camera.azimuth < 361); // the shorter way round
    assert.equal(half.done, false);
    assert.deepEqual(motion.at(5000), { camera: to, done: true });
});

test('Flight_AheadIsWhereTheViewerLooks', () => {
    const camera = { target: [0, 0, 0], distance: 10, azimuth: 180, elevation: 0, parallel: false } as const;
    const flight = new Flight();
    assert.equal(flight.press('x', false), false);
    assert.equal(flight.press('W', false), true);
    const { target } = flight.step(camera, 1);
    assert.ok(target[1] > 1 && Math.abs(target[0]) < 1e-9);
    flight.release('w', false);
    assert.equal(flight.isMoving, false);
});
