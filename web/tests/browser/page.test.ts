import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import type { CloudInfo, PickedPoint } from '../../src/data/info';
import { findProportions } from '../../src/data/Proportions';
import { formatMeasure } from '../../src/math/numbers';
import { toDrawn } from '../../src/math/stretch';
import { distance, type Vec3 } from '../../src/math/vec3';
import type { Camera } from '../../src/view/Camera';
import { hashOf, Served, size, spotOf, tidyUp, Window, writeGrid, writePly, type KnownPoint } from './support';

// A square of four colours, a point every half unit, and a tower of one point above its middle.
const colors: readonly Vec3[] = [[200, 30, 30], [30, 180, 60], [40, 70, 220], [230, 200, 40]];
const side = 100;
const points: KnownPoint[] = [];
for (let i = 0; i < side; ++i)
    for (let j = 0; j < side; ++j)
        points.push({ place: [i / 2, j / 2, 0], color: colors[(i < side / 2 ? 0 : 1) + (j < side / 2 ? 0 : 2)] });

const map: Camera = { target: [24.75, 24.75, 0], distance: 70, azimuth: 180, elevation: 90, parallel: true };
const oblique: Camera = { target: [24.75, 24.75, 0], distance: 60, azimuth: 205, elevation: 40, parallel: false };
const flat = '&shading=0&theme=dark&color=file';
const background: Vec3 = [30, 34, 41];

let served: Served;
let window: Window;

before(async () => {
    served = await Served.start(writePly('square.ply', points));
    window = await Window.open();
});
after(async () => {
    await window.close();
    assert.equal(await served.stop(), 0);
    tidyUp();
});

function isColor(a: Vec3, b: Vec3): boolean {
    return a.every((c, k) => Math.abs(c - b[k]) <= 1);
}

test('Opening_ShowsTheWholeCloudWithoutBeingTold', async () => {
    await window.show(served, '');
    const pixels = await window.pixels();
    let drawn = 0;
    for (let y = 0; y < pixels.height; y += 4)
        for (let x = 0; x < pixels.width; x += 4) drawn += isColor(pixels.at(x, y), background) ? 0 : 1;
    assert.ok(drawn > (0.1 * pixels.width * pixels.height) / 16, String(drawn));
    const text = await window.page.$eval('.drawn', (element) => element.textContent);
    assert.match(text, /10\u202f000 of 10\u202f000 points/);
});

for (const [name, camera] of [['Map', map], ['Oblique', oblique]] as const)
    test(`${name}_PixelsOfKnownPointsHaveTheirColours`, async () => {
        await window.show(served, hashOf(camera, flat));
        const pixels = await window.pixels();
        for (let n = 7; n < points.length; n += 97) {
            const { place, color } = points[n];
            const { x, y } = spotOf(camera, place);
            const near = [0.5, 49.5].some((edge) => place.some((c, k) => k < 2 && Math.abs(c - edge) < 1))
                || place.some((c, k) => k < 2 && Math.abs(c - 24.75) < 1); // another colour may lie over it
            const inside = x > 2 && y > 2 && x < size.width - 2 && y < size.height - 2;
            if (!near && inside) assert.ok(isColor(pixels.at(x - 0.5, y - 0.5), color), `${place.join()} at ${x}, ${y}`);
        }
    });

test('Clip_NothingIsDrawnOutsideTheBox', async () => {
    const box = { min: [10, 10, -1], max: [30, 25, 1] };
    await window.show(served, hashOf(map, `${flat}&clip=${[...box.min, ...box.max].join(',')}`));
    const pixels = await window.pixels();
    const a = spotOf(map, [10, 25, 0]);
    const b = spotOf(map, [30, 10, 0]);
    const reach = 4; // half of a disc
    let inside = 0;
    for (let y = 0; y < pixels.height; ++y)
        for (let x = 0; x < pixels.width; ++x) {
            if (isColor(pixels.at(x, y), background)) continue;
            ++inside;
            assert.ok(x > a.x - reach && x < b.x + reach && y > a.y - reach && y < b.y + reach, `${x}, ${y}`);
        }
    assert.ok(inside > 0.9 * (b.x - a.x) * (b.y - a.y), String(inside));
});

test('Pick_IndexAndCoordinatesAreTheLibrarys', async () => {
    await window.show(served, hashOf(oblique, flat));
    const known = points[63 * side + 40];
    const { x, y } = spotOf(oblique, known.place);
    await window.page.keyboard.press('i');
    await window.page.mouse.click(x, y);
    const [, index, place] = ((await window.hashWith('mark=point')).get('mark') ?? '').split(':');
    const point = await served.get<PickedPoint>(`api/point?index=${index}`);
    assert.deepEqual([point.x, point.y, point.z], known.place);
    assert.deepEqual(place.split(',').map(Number), known.place);
    assert.deepEqual(point.color, known.color);
    const card = await window.page.$eval('[data-kind=point]', (element) => element.textContent);
    assert.match(card, /31\.5/);
});

test('Distance_BetweenKnownPoints', async () => {
    await window.show(served, hashOf(map, flat));
    await window.page.keyboard.press('d');
    for (const [place, hint] of [[[6, 4.5, 0], 'Click where to'], [[36, 44.5, 0], 'Click on']] as const) {
        const { x, y } = spotOf(map, place);
        await window.page.mouse.click(x, y);
        await window.hinted(hint);
        await new Promise((done) => setTimeout(done, 400)); // no double click
    }
    await window.page.keyboard.press('Enter');
    await window.hashWith('mark=distance');
    const text = await window.page.$eval('[data-kind=distance] dd', (element) => element.textContent);
    assert.equal(text, '50.00');
});

test('DoubleClick_FliesToThePoint', async () => {
    await window.show(served, hashOf(map, flat));
    const before = await window.writtenHash();
    const { x, y } = spotOf(map, [36, 44.5, 0]);
    await window.page.mouse.click(x, y, { count: 2 });
    const n = ((await window.restingHash(before)).get('view') ?? '').split(',').map(Number);
    assert.ok(Math.hypot(n[0] - 36, n[1] - 44.5) < 0.3, n.join());
    assert.ok(n[3] < 0.5 * map.distance, n.join());
});

test('Polygon_CountsThePointsInside', async () => {
    const ring = [[9.8, 9.8, 0], [20.2, 9.8, 0], [20.2, 15.2, 0], [9.8, 15.2, 0]].map((place) => place.join(',')).join(';');
    await window.show(served, hashOf(map, `${flat}&polygon=${ring}`));
    const count = '[data-kind=polygon] dd';
    await window.page.waitForFunction((path) => document.querySelector(path)?.textContent !== '…', {}, count);
    assert.equal(await window.page.$eval(count, (element) => element.textContent), String(21 * 11));
});

test('Polygon_GoesAroundTheCloud', async () => {
    const far = { ...map, distance: 250 };
    await window.show(served, hashOf(far, flat));
    await window.page.keyboard.press('s');
    for (const place of [[-6, -6, 0], [56, -6, 0], [56, 56, 0], [-6, 56, 0]] as const) {
        const { x, y } = spotOf(far, place);
        await window.page.mouse.click(x, y);
        await new Promise((done) => setTimeout(done, 400)); // no double click
    }
    await window.page.keyboard.press('Enter');
    const count = '[data-kind=polygon] dd';
    await window.page.waitForFunction((path) => /\d/.test(document.querySelector(path)?.textContent ?? ''), {}, count);
    assert.equal(await window.page.$eval(count, (element) => element.textContent), '10\u202f000');
});

test('Profile_HoldsEveryPointOfItsCorridor', async () => {
    await window.show(served, hashOf(map, `${flat}&profile=0,10,0,49.5,10,0,2.2`));
    await window.page.waitForSelector('.profile[data-points]');
    assert.equal(await window.page.$eval('.profile', (element) => element.getAttribute('data-points')), String(5 * side));
});

test('Reload_TheSameLinkIsTheSamePicture', async () => {
    await window.show(served, hashOf({ ...oblique, azimuth: 201.234567 }, '&color=height&size=1.3&clip=3,3,-1,40,40,1'));
    const link = await window.writtenHash();
    await window.page.keyboard.press('ArrowLeft');
    await window.page.keyboard.press('+');
    await window.restingHash(link);
    const first = await window.pixels();
    await window.page.reload();
    await window.settled();
    const second = await window.pixels();
    assert.ok(second.data.equals(first.data));
});

test('FarFromTheOrigin_ThePictureIsTheSame', async () => {
    const heights = Array.from({ length: 40 }, (_, i) => Array.from({ length: 40 }, (__, j) => ((i * j) % 7) / 2));
    const pictures = [];
    for (const [name, x, y] of [['near.asc', 1000, 1000], ['far.asc', 4001000, 5001000]] as const) {
        const each = await Served.start(writeGrid(name, [x, y], heights));
        const camera: Camera = { target: [x + 20, y + 20, 1], distance: 8, azimuth: 215, elevation: 30, parallel: false };
        await window.show(each, hashOf(camera, '&shading=0&theme=dark'));
        pictures.push(await window.pixels());
        await each.stop();
    }
    const [near, far] = pictures;
    let other = 0;
    for (let v = 0; v < near.height; ++v)
        for (let u = 0; u < near.width; ++u) other += isColor(near.at(u, v), far.at(u, v)) ? 0 : 1;
    assert.ok(other < 0.002 * near.width * near.height, `${other} pixels differ`);
});

test('Degrees_AreDrawnInMetresAndPickedWhereTheyAreSeen', async () => {
    const heights = Array.from({ length: 60 }, (_, i) => Array.from({ length: 60 }, (__, j) => 400 + 40 * Math.sin(i / 4) * Math.cos(j / 5)));
    const grid = await Served.start(writeGrid('degrees.asc', [8, 47], heights, 0.002));
    await window.show(grid, '');
    const { stretch } = findProportions(await grid.get<CloudInfo>('api/info'));
    const points = [];
    for (const index of [60 * 20 + 25, 60 * 40 + 35]) points.push(await grid.get<PickedPoint>(`api/point?index=${index}`));
    const camera: Camera = {
        ...{ target: toDrawn([8.06, 47.06, 400], stretch), distance: 14000 },
        ...{ azimuth: 215, elevation: 50, parallel: false },
    };
    await window.show(grid, hashOf(camera, flat));
    for (const [tool, reached] of [['i', 'mark=point'], ['d', 'mark=distance']] as const) {
        await window.page.keyboard.press(tool);
        for (const [i, point] of points.entries()) {
            const { x, y } = spotOf(camera, toDrawn([point.x, point.y, point.z], stretch));
            await window.page.mouse.click(x, y);
            await new Promise((done) => setTimeout(done, 400)); // no double click
            if (tool === 'd') await window.hinted(['Click where to', 'Click on'][i]);
            else await window.hashWith(`mark=point:${point.index}:${point.x},${point.y},${point.z}`);
        }
        if (tool === 'd') await window.page.keyboard.press('Enter');
        await window.hashWith(reached);
    }
    const text = await window.page.$eval('[data-kind=distance] dd', (element) => element.textContent);
    const [a, b] = points.map((point) => toDrawn([point.x, point.y, point.z], stretch));
    assert.equal(text, `${formatMeasure(distance(a, b))} m`);
    await grid.stop();
});

test('Drag_TurnsAroundThePointUnderThePointer', async () => {
    await window.show(served, hashOf(oblique, flat));
    const place: Vec3 = [12, 30, 0];
    const { x, y } = spotOf(oblique, place);
    const before = await window.writtenHash();
    await window.page.mouse.move(x, y);
    await window.page.mouse.down();
    await window.page.mouse.move(x + 90, y + 20, { steps: 6 });
    await window.settled();
    await window.page.mouse.up();
    const n = ((await window.restingHash(before)).get('view') ?? '').split(',').map(Number);
    const turned: Camera = { ...oblique, target: [n[0], n[1], n[2]], distance: n[3], azimuth: n[4], elevation: n[5] };
    assert.ok(Math.abs(turned.azimuth - oblique.azimuth) > 10);
    const moved = spotOf(turned, place);
    assert.ok(Math.hypot(moved.x - x, moved.y - y) < 2, `${moved.x - x}, ${moved.y - y}`);
});

test('Keyboard_EveryControlHasANameAndHelpListsTheKeys', async () => {
    await window.show(served, hashOf(map, `${flat}&clip=10,10,-1,30,25,1`));
    await window.page.keyboard.press('k');
    const nameless = await window.page.evaluate(() =>
        [...document.querySelectorAll<HTMLElement>('button, input, select, [tabindex]')]
            .filter((element) => {
                const labels = (element as HTMLInputElement).labels?.length ?? 0;
                return !element.getAttribute('aria-label') && labels === 0 && !element.textContent?.trim();
            })
            .map((element) => element.outerHTML),
    );
    assert.deepEqual(nameless, []);
    await window.page.evaluate(() => (document.activeElement as HTMLElement | null)?.blur());
    await window.page.keyboard.press('?');
    const help = await window.page.$eval('dialog', (element) => element.textContent);
    assert.match(help, /Distance/);
    await window.page.keyboard.press('Escape');
    await window.page.waitForFunction(() => document.querySelector('dialog') === null);
    await window.page.focus('[aria-label="Clip box, upper x"]');
    await window.page.keyboard.press('ArrowLeft');
    const clip = ((await window.hashWith('clip=10,10,-1,29')).get('clip') ?? '').split(',').map(Number);
    assert.ok(Math.abs(clip[3] - (30 - 0.495)) < 1e-9);
});

test('About_NamesTheBundledPackagesWithTheirLicences', async () => {
    await window.page.click('[data-command=about]');
    await window.page.waitForSelector('dialog details');
    const text = await window.page.$eval('dialog', (element) => element.textContent);
    assert.match(text, /three .*MIT[^]*Permission is hereby granted/);
    await window.page.keyboard.press('Escape');
});

test('Phone_NothingIsWiderThanTheScreenAndFingersTurn', async () => {
    await window.page.setViewport({ width: 390, height: 780, hasTouch: true, isMobile: true });
    await window.show(served, hashOf(oblique, flat));
    const wide = await window.page.evaluate(() => document.documentElement.scrollWidth);
    assert.ok(wide <= 390, String(wide));
    const finger = await window.page.touchscreen.touchStart(200, 300);
    for (let step = 1; step <= 8; ++step) await finger.move(200 + 12 * step, 300);
    await finger.end();
    await window.page.waitForFunction(() => !location.hash.includes(',205,40&'));
    await window.page.setViewport(size);
});

// The last one: it looks back on all.
test('AllOfIt_NoErrorIsLoggedAndNothingIsAskedOfOtherMachines', () => {
    assert.deepEqual(window.complaints, []);
    assert.deepEqual([...window.hosts], ['127.0.0.1']);
});
