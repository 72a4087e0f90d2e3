import assert from 'node:assert/strict';
import { test } from 'node:test';
import { boxCorner } from '../../src/math/Box';
import { angleAt, planArea } from '../../src/math/measures';
import { formatMeasure, makeTicks, roundDown } from '../../src/math/numbers';
import { distance, dot, length, unit, type Vec3 } from '../../src/math/vec3';
import { basisOf, eyeOf, orbit, pan, refocus, zoom, type Camera } from '../../src/view/Camera';
import { firstDirection, fitView, frameOf, hiddenBy, wholeFrame } from '../../src/view/fitView';
import { meetHeight, View } from '../../src/view/View';

const far: Vec3 = [4000000.1234, 5500000.4321, 123.45];
const camera: Camera = { target: far, distance: 200, azimuth: 215, elevation: 35, parallel: false };
const parallel: Camera = { ...camera, parallel: true };

function near(a: number, b: number, by: number): void {
    assert.ok(Math.abs(a - b) <= by, `${a} is not ${b}`);
}

function sameSpot(a: Camera, b: Camera, place: Vec3): void {
    const [p, q] = [a, b].map((each) => new View(each, 1000, 700).project(place));
    near(p.x, q.x, 1e-4);
    near(p.y, q.y, 1e-4);
}

test('Basis_FromSouthWestLooksToNorthEastAndDown', () => {
    const { viewer, right, up } = basisOf(camera);
    assert.ok(viewer[0] < 0 && viewer[1] < 0 && viewer[2] > 0);
    near(dot(viewer, right), 0, 1e-12);
    near(dot(viewer, up), 0, 1e-12);
    assert.ok(up[2] > 0);
});

test('Plan_NorthIsUpAndEastToTheRight', () => {
    const { right, up } = basisOf({ azimuth: 180, elevation: 90 });
    near(distance(right, [1, 0, 0]), 0, 1e-12);
    near(distance(up, [0, 1, 0]), 0, 1e-12);
});

for (const [name, each] of [
    ['Perspective', camera],
    ['Parallel', parallel],
] as const) {
    const view = new View(each, 1000, 700);
    const anchor = view.unproject(730, 210, 180);

    test(`${name}_UnprojectUndoesProjectFarFromTheOrigin`, () => {
        const seen = view.project(anchor);
        near(seen.x, 730, 1e-4);
        near(seen.y, 210, 1e-4);
        near(seen.depth, 180, 1e-6);
    });

    test(`${name}_RayThroughAPixelMeetsWhatIsSeenThere`, () => {
        const { from, direction } = view.ray(730, 210);
        const arm: Vec3 = [anchor[0] - from[0], anchor[1] - from[1], anchor[2] - from[2]];
        const beside = length(arm) ** 2 - dot(arm, unit(direction)) ** 2;
        near(Math.sqrt(Math.max(0, beside)), 0, each.parallel ? 2 : 1e-3);
    });

    test(`${name}_ZoomKeepsItsAnchorInPlace`, () => sameSpot(each, zoom(each, anchor, 0.5), anchor));
    test(`${name}_OrbitKeepsItsPivotInPlace`, () => sameSpot(each, orbit(each, anchor, 33, -12), anchor));
    test(`${name}_PanShiftsByWhatItIsTold`, () => {
        const moved = new View(pan(each, 10, -4), 1000, 700).project(each.target);
        near(moved.x, 500 - 10 * view.pixelsPerUnit(200), 1e-3);
        near(moved.y, 350 - 4 * view.pixelsPerUnit(200), 1e-3);
    });

    test(`${name}_FitShowsTheWholeBox`, () => {
        const box = { min: [4e6, 5e6, 0], max: [4e6 + 900, 5e6 + 300, 120] } as const;
        for (const [azimuth, elevation] of [[215, 35], [180, 90], [0, 5], [180, -90], [90, 0]]) {
            const fitted = new View(fitView(box, { azimuth, elevation, parallel: each.parallel }, wholeFrame(1.4)), 980, 700);
            for (let corner = 0; corner < 8; ++corner) {
                const { x, y } = fitted.project(boxCorner(box, corner));
                assert.ok(x >= 0 && x <= 980 && y >= 0 && y <= 700, `${x}, ${y}`);
            }
            assert.ok(fitted.sees(box));
        }
    });

    test(`${name}_FitKeepsToWhatIsFree`, () => {
        const box = { min: [4e6, 5e6, 0], max: [4e6 + 900, 5e6 + 300, 120] } as const;
        for (const area of [
            { left: 80, top: 56, right: 720, bottom: 660 },
            { left: 0, top: 300, right: 980, bottom: 640 },
            { left: 600, top: 0, right: 980, bottom: 700 },
        ])
            for (const [azimuth, elevation] of [[215, 35], [180, 90], [0, 5], [180, -90], [90, 0]]) {
                const direction = { azimuth, elevation, parallel: each.parallel };
                const fitted = new View(fitView(box, direction, frameOf(area, 980, 700)), 980, 700);
                const spots = [0, 1, 2, 3, 4, 5, 6, 7].map((corner) => fitted.project(boxCorner(box, corner)));
                const [xs, ys] = [spots.map(({ x }) => x), spots.map(({ y }) => y)];
                const gaps = [Math.min(...xs) - area.left, area.right - Math.max(...xs)];
                gaps.push(Math.min(...ys) - area.top, area.bottom - Math.max(...ys));
                assert.ok(Math.min(...gaps) > 0, `inside: ${gaps.join(', ')}`);
                const least = [(area.right - area.left) * 0.03, (area.bottom - area.top) * 0.03];
                assert.ok(Math.max(gaps[0], gaps[1]) < least[0] || Math.max(gaps[2], gaps[3]) < least[1], 'as large as it may be');
            }
    });
}

test('Frame_OfLittleRoomIsTheWholePicture', () => {
    assert.deepEqual(frameOf({ left: 0, top: 0, right: 1400, bottom: 1000 }, 1400, 1000), wholeFrame(1.4));
    assert.deepEqual(frameOf({ left: 700, top: 900, right: 900, bottom: 1000 }, 1400, 1000), wholeFrame(1.4));
});

test('HiddenBy_NoFurtherThanNeeded', () => {
    assert.equal(hiddenBy([100, 200], 60, 300), 0);
    assert.equal(hiddenBy([150, 350], 60, 300), 50);
    assert.equal(hiddenBy([10, 200], 60, 300), -50);
    assert.equal(hiddenBy([0, 500], 60, 300), 70);
});

test('View_SeesNothingBesideAndBehind', () => {
    const view = new View({ ...camera, target: [0, 0, 0] }, 1000, 700);
    const { viewer, right } = basisOf(camera);
    const at = (v: Vec3, f: number) => ({
        min: v.map((c) => c * f - 1) as unknown as Vec3,
        max: v.map((c) => c * f + 1) as unknown as Vec3,
    });
    assert.ok(view.sees(at(viewer, 0)));
    assert.ok(!view.sees(at(viewer, 400)));
    assert.ok(!view.sees(at(right, 400)));
});

test('Elevation_EndsStraightAboveAndBelow', () => {
    assert.equal(orbit(camera, far, 0, 300).elevation, 90);
    assert.equal(orbit(camera, far, 0, -300).elevation, -90);
    assert.ok(orbit(camera, far, 400, 0).azimuth < 360);
});

test('Refocus_EyeStays', () => {
    const moved = refocus(camera, [far[0] + 20, far[1] + 10, far[2]]);
    near(distance(eyeOf(moved), eyeOf(camera)), 0, 1e-6);
});

test('Measures_AngleAndArea', () => {
    near(angleAt([1, 0, 0], [0, 0, 0], [0, 2, 0]), 90, 1e-9);
    assert.equal(angleAt([1, 0, 0], [1, 0, 0], [0, 2, 0]), 0);
    const square: Vec3[] = [far, [far[0] + 30, far[1], 9], [far[0] + 30, far[1] + 20, 2], [far[0], far[1] + 20, 1]];
    near(planArea(square), 600, 1e-6);
    near(planArea([...square].reverse()), 600, 1e-6);
    assert.equal(planArea(square.slice(0, 2)), 0);
});

test('Numbers_RoundStepsAndTicks', () => {
    assert.deepEqual([0.3, 1, 7.9, 49, 50, 1234].map(roundDown), [0.2, 1, 5, 20, 50, 1000]);
    assert.deepEqual(makeTicks(-0.5, 0.5, 0.5).map(({ label }) => label), ['-0.5', '0.0', '0.5']);
    assert.deepEqual(makeTicks(0, 1, 0), []);
    assert.ok(makeTicks(0, 1e30, 1e-9).length <= 1000);
});

test('Numbers_MeasuresHaveDecimalsThatMatter', () => {
    assert.equal(formatMeasure(1.23456), '1.235');
    assert.equal(formatMeasure(12.3456), '12.35');
    assert.equal(formatMeasure(1234567.8), '1\u202f234\u202f568');
});

test('FirstDirection_DepthCamerasAsTheySaw', () => {
    assert.equal(firstDirection({ min: [-2, -1.5, 1], max: [1.5, 1.5, 5] }).elevation, -90);
    assert.equal(firstDirection({ min: [0, 0, 290], max: [500, 500, 330] }).elevation, 35);
    assert.equal(firstDirection({ min: [-50, -50, -1], max: [50, 50, 20] }).elevation, 35);
});

test('MeetHeight_OnTheRayAheadOrNowhere', () => {
    const ray = { from: [0, 0, 10], direction: [1, 2, -2], tan: 0.001 } as const;
    assert.deepEqual(meetHeight(ray, 0), [5, 10, 0]);
    assert.equal(meetHeight(ray, 12), null);
    assert.equal(meetHeight({ ...ray, direction: [1, 0, 0] }, 0), null);
});
