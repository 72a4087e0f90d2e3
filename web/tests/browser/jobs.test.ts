import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import type { PickedPoint } from '../../src/data/info';
import type { Vec3 } from '../../src/math/vec3';
import type { Camera } from '../../src/view/Camera';
import { hashOf, Served, spotOf, tidyUp, Window, writeLas, type ClassedPoint } from './support';

// A field of two classes with a house on it, and a smaller field far off.
const points: ClassedPoint[] = [];
for (let i = 0; i < 60; ++i)
    for (let j = 0; j < 60; ++j) {
        const isHouse = i >= 20 && i < 28 && j >= 30 && j < 38;
        points.push({ place: [i, j, isHouse ? 9 : 0], class: isHouse ? 6 : i < 30 ? 2 : 3 });
    }
for (let i = 0; i < 25; ++i) for (let j = 0; j < 25; ++j) points.push({ place: [150 + i, j, 0], class: 2 });

const map: Camera = { target: [29.5, 29.5, 0], distance: 80, azimuth: 180, elevation: 90, parallel: true };
const flat = '&shading=0&theme=dark';

let served: Served;
let window: Window;

before(async () => {
    served = await Served.start(writeLas('field.las', points));
    window = await Window.open();
});
after(async () => {
    await window.close();
    assert.equal(await served.stop(), 0);
    tidyUp();
});

/** The colour of the picture at a place of the cloud. */
async function colorAt(place: Vec3): Promise<Vec3> {
    const { x, y } = spotOf(map, place);
    return (await window.pixels()).at(x - 0.5, y - 0.5);
}

test('Outline_OfTheLargestPartSaysSo', async () => {
    const told: string[] = [];
    await window.page.exposeFunction('noteTold', (text: string) => told.push(text)); // notes go again after a while
    const { identifier } = await window.page.evaluateOnNewDocument(() => {
        const hear = (changes: MutationRecord[]): void => {
            const { noteTold } = globalThis as unknown as { noteTold: (text: string) => void };
            for (const { target, addedNodes } of changes)
                if ((target as Element).className === 'told') addedNodes.forEach((note) => noteTold(note.textContent ?? ''));
        };
        new MutationObserver(hear).observe(document, { childList: true, subtree: true });
    });
    await window.show(served, hashOf(map, `${flat}&outline=3`));
    await window.page.waitForSelector('[data-kind=outline]');
    assert.deepEqual(told, ['The outline is of the largest part of the cloud']);
    await window.page.removeScriptToEvaluateOnNewDocument(identifier);
});

test('Budget_OfTheLinkTheSliderAndThePageAreTheSame', async () => {
    await window.show(served, hashOf(map, `${flat}&budget=1000`));
    await window.page.keyboard.press('k');
    assert.equal(await window.page.$eval('#budget', (input) => (input as HTMLInputElement).value), '3');
    assert.match(await window.hash(), /budget=1000(&|$)/);
});

test('Ground_InTheColoursOfClassesWithTheIndicesOfTheFile', async () => {
    await window.show(served, hashOf(map, `${flat}&color=class`));
    for (let tries = 0; (await colorAt([10, 10, 0])).join() === '255,255,255'; ++tries) {
        assert.ok(tries < 200);
        await new Promise((done) => setTimeout(done, 50)); // the colours of classes are made first
    }
    await window.settled();
    const whole = [await colorAt([10, 10, 0]), await colorAt([50, 50, 0]), await colorAt([24, 34, 9])];
    await window.show(served, hashOf(map, `${flat}&color=class&ground=1`));
    await window.page.waitForFunction(() => document.querySelector('.drawn')?.textContent?.includes('of the ground'));
    await window.settled();
    const ground = [await colorAt([10, 10, 0]), await colorAt([50, 50, 0]), await colorAt([24, 34, 9])];
    assert.deepEqual(ground.slice(0, 2), whole.slice(0, 2));
    assert.notDeepEqual(ground[2], whole[2]); // the house is gone
    assert.notDeepEqual(whole[0], whole[1]);
    await window.page.keyboard.press('i');
    const { x, y } = spotOf(map, [50, 50, 0]);
    await window.page.mouse.click(x, y);
    const mark = (await window.hashWith('mark=point')).get('mark') ?? '';
    const point = await served.get<PickedPoint>(`api/point?index=${mark.split(':')[1]}`);
    assert.deepEqual([point.x, point.y, point.z], [50, 50, 0]);
});

test('About_SaysWhatOfTheFileIsNotHere', async () => {
    const other = await Served.start(writeLas('doubled.las', [...points.slice(0, 100), ...points.slice(0, 40)]));
    await window.show(other, '#theme=dark');
    await window.page.click('[data-command=about]');
    const note = await window.page.waitForSelector('dialog .note');
    const said = await note?.evaluate((element) => element.textContent);
    assert.match(said ?? '', /^40 points of the file are not here\. .*on top of each other/);
    await window.page.click('dialog .primary');
    assert.equal(await other.stop(), 0);
});

test('AllOfIt_NoErrorIsLogged', () => assert.deepEqual(window.complaints, []));
