import assert from 'node:assert/strict';
import { test } from 'node:test';
import type { App } from '../../src/app/App';
import { commandOf, commands, showKey } from '../../src/app/commands';
import { takeBack, takePlace } from '../../src/app/takePlace';
import type { PickedPoint } from '../../src/data/info';
import type { Vec3 } from '../../src/math/vec3';
import { Gathering, toolKinds, type ToolName } from '../../src/tools/tools';
import type { Camera } from '../../src/view/Camera';
import { View } from '../../src/view/View';

const map: Camera = { target: [10, 20, 5], distance: 100, azimuth: 180, elevation: 90, parallel: true };

/** As much of an App as keys and clicks ask for. */
function makeApp(camera: Camera, tool: ToolName, picked: PickedPoint | null | undefined) {
    const told: string[] = [];
    const taken: PickedPoint[] = [];
    const app = {
        state: { camera },
        gathering: new Gathering(toolKinds[tool]) as Gathering | null,
        proportions: { stretch: [1, 1, 1] },
        info: { heights: null },
        bounds: () => ({ min: [0, 0, 0], max: [1, 1, 1] }),
        picker: { pick: (): Promise<PickedPoint | null | undefined> => Promise.resolve(picked) },
        ui: { tellOnce: (text: string) => told.push(text), updateTool: () => undefined },
        redraw: () => undefined,
        view: () => new View(app.state.camera, 200, 100),
        setCamera: (to: Camera) => (app.state.camera = to),
        setHovered: () => undefined,
        addPoint: (point: PickedPoint) => taken.push(point),
    };
    return { app, told, taken, asApp: app as unknown as App };
}

test('ShiftAndArrows_ShiftTheViewAndDoNotTurnIt', () => {
    for (const elevation of [90, 30])
        for (const [key, axis, sign] of [['ArrowLeft', 0, -1], ['ArrowRight', 0, 1], ['ArrowUp', 1, 1], ['ArrowDown', 1, -1]] as const) {
            const camera = { ...map, elevation };
            const { app, asApp } = makeApp(camera, 'point', null);
            commandOf(key, true)?.run(asApp);
            const { target, ...rest } = app.state.camera;
            assert.deepEqual({ ...rest, target: camera.target }, camera, key);
            const seen = new View(camera, 200, 100).project(target);
            const way = [seen.x - 100, 50 - seen.y];
            assert.ok(Math.abs(way[axis] - 3 * sign) < 1e-9 && Math.abs(way[1 - axis]) < 1e-9, `${key} ${way.join()}`);
        }
});

test('Arrows_WithoutShiftTurn', () => {
    const { app, asApp } = makeApp({ ...map, elevation: 30 }, 'point', null);
    commandOf('ArrowUp', false)?.run(asApp);
    assert.equal(app.state.camera.elevation, 37.5);
    assert.deepEqual(app.state.camera.target, map.target);
});

test('Keys_EachIsOfOneCommandAndShownAsTyped', () => {
    const shown = commands.filter(({ keys }) => keys.length > 0).map(showKey);
    assert.equal(new Set(shown).size, shown.length);
    assert.ok(shown.includes('Shift ←') && shown.includes('←') && shown.includes('D'));
    assert.equal(commandOf('?', true)?.id, 'help');
    assert.equal(commandOf('K', true)?.id, 'display');
});

test('TakePlace_AMissIsToldUnlessTheServerDidNotAnswer', async () => {
    for (const [picked, expected] of [[null, ['There is no point of the cloud here']], [undefined, []]] as const) {
        const { told, taken, asApp } = makeApp(map, 'distance', picked);
        await takePlace(asApp, 100, 50);
        assert.deepEqual([told, taken], [expected, []]);
    }
});

test('TakePlace_CornersOfAPolygonMayLieBesideTheCloud', async () => {
    const { told, taken, asApp } = makeApp(map, 'polygon', null);
    await takePlace(asApp, 100, 50);
    assert.deepEqual([told, taken.length], [[], 1]);
    const place: Vec3 = [taken[0].x, taken[0].y, taken[0].z];
    assert.ok(Math.hypot(place[0] - 10, place[1] - 20, place[2]) < 1e-6, place.join());
    const silent = makeApp(map, 'polygon', undefined);
    await takePlace(silent.asApp, 100, 50);
    assert.equal(silent.taken.length, 0);
});

test('TakePlace_AnotherToolThatWasBegunMeanwhileGetsNothing', async () => {
    const { app, taken, asApp } = makeApp(map, 'point', { index: 1, x: 0, y: 0, z: 0, color: null });
    const taking = takePlace(asApp, 100, 50);
    app.gathering = new Gathering(toolKinds.area);
    await taking;
    assert.equal(taken.length, 0);
});

test('ClicksOneAfterTheOther_KeepTheirOrderWhicheverAnswerComesFirst', async () => {
    const { app, taken, asApp } = makeApp(map, 'polygon', null);
    const answers: ((point: PickedPoint) => void)[] = [];
    app.picker.pick = () => new Promise((done) => answers.push(done));
    const clicks = [0, 1, 2].map((k) => takePlace(asApp, 10 * k, 5));
    for (const k of [2, 0, 1]) answers[k]({ index: k, x: k, y: 0, z: 0, color: null });
    await Promise.all(clicks);
    assert.deepEqual(taken.map(({ index }) => index), [0, 1, 2]);
});

test('TakeBack_TheLastPlaceGoesAlsoWhereItIsStillOnItsWay', async () => {
    const { app, asApp } = makeApp(map, 'area', null);
    const { gathering } = app;
    assert.ok(gathering !== null);
    app.addPoint = (point) => (gathering.add([point.x, point.y, point.z], point.index), 0);
    const answers: ((point: PickedPoint) => void)[] = [];
    app.picker.pick = () => new Promise((done) => answers.push(done));
    const clicks = [0, 1].map((k) => takePlace(asApp, 10 * k, 5));
    const back = takeBack(asApp, gathering);
    for (const k of [1, 0]) answers[k]({ index: k, x: k, y: 0, z: 0, color: null });
    await Promise.all([...clicks, back]);
    assert.deepEqual(gathering.indices, [0]);
    await takeBack(asApp, gathering);
    await takeBack(asApp, gathering); // nothing is left
    assert.deepEqual(gathering.indices, []);
});
