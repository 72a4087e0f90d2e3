import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import type { Camera } from '../../src/view/Camera';
import { hashOf, Served, size, tidyUp, Window, writePly, type KnownPoint } from './support';

const points: KnownPoint[] = [];
for (let i = 0; i < 40; ++i) for (let j = 0; j < 40; ++j) points.push({ place: [i, j, 0], color: [200, 120, 40] });
const map: Camera = { target: [19.5, 19.5, 0], distance: 60, azimuth: 180, elevation: 90, parallel: true };

let served: Served;
let window: Window;

before(async () => {
    served = await Served.start(writePly('short.ply', points));
    window = await Window.open();
});
after(async () => {
    await window.close();
    tidyUp();
});

function told(): Promise<(string | null)[]> {
    return window.page.$$eval('.told p', (notes) => notes.map((note) => note.textContent));
}

async function isDisplayOpen(): Promise<boolean> {
    return window.page.$eval('#display', (element) => !element.hasAttribute('hidden'));
}

test('Display_IsClosedByItsKeyAndByEscapeFromWithin', async () => {
    await window.show(served, hashOf(map, '&shading=0'));
    for (const key of ['k', 'Escape'] as const) {
        await window.page.keyboard.press('k');
        assert.equal(await window.page.evaluate(() => document.activeElement?.id), 'color');
        await window.page.keyboard.press(key);
        assert.equal(await isDisplayOpen(), false, key);
    }
});

test('Space_TakesThePointInTheMiddleAndMarksTheMiddleUntilTheMouseMoves', async () => {
    const painted = (): Promise<number> =>
        window.page.$eval('canvas.overlay', (canvas) => {
            const [x, y] = [Math.round(canvas.width / 2), Math.round(canvas.height / 2)];
            const { data } = canvas.getContext('2d')!.getImageData(x - 14, y - 14, 28, 28);
            return data.filter((value, i) => i % 4 === 3 && value > 0).length;
        });
    // The overlay is painted with the next picture.
    const becomes = async (isPainted: boolean): Promise<void> => {
        for (let tries = 0; (await painted()) > 0 !== isPainted; ++tries) {
            assert.ok(tries < 200, `${isPainted}`);
            await new Promise((done) => setTimeout(done, 50));
        }
    };
    await window.show(served, hashOf(map, '&shading=0'));
    await becomes(false);
    await window.page.keyboard.press('d');
    await becomes(true);
    await window.page.keyboard.press(' ');
    await window.hinted('Click where to');
    await window.page.keyboard.press('Backspace');
    await window.page.mouse.move(size.width / 2 + 90, size.height / 2);
    await becomes(false);
    await window.page.keyboard.press('Escape');
});

// The last one: there is no server afterwards.
test('ServerEnds_ThatIsSaidForAsLongAsItIsSoAndNothingFalseIs', async () => {
    await window.show(served, hashOf(map, '&shading=0&clip=0,0,-1,30,30,1'));
    assert.equal(await served.stop(), 0);
    await window.page.keyboard.press('i');
    await window.page.mouse.click(size.width / 2, size.height / 2);
    await window.page.waitForSelector('.told .ended');
    const corners = [[5, 5, 0], [25, 5, 0], [25, 25, 0]];
    await window.page.evaluate((part) => (location.hash += part), `&polygon=${corners.map((place) => place.join(',')).join(';')}`);
    await window.page.waitForFunction(() => document.querySelector('[data-kind=polygon] dd')?.textContent === 'could not be counted');
    assert.match((await told()).join('|'), /^zorcld has ended: [^|]*$/);
    await window.page.$eval('[data-kind=clip] [aria-label="Save points as CSV"]', (button) => (button as HTMLElement).click());
    await window.page.waitForFunction(() => document.querySelectorAll('.told p').length === 2);
    assert.match((await told())[1] ?? '', /^short-clip\.csv was not saved: zorcld has ended$/);
    await window.page.waitForFunction(() => document.querySelectorAll('.told p').length === 1);
    assert.match((await told()).join('|'), /^zorcld has ended: [^|]*$/);
});
