import { findCorner } from './findCorner';
import type { App } from './App';
import type { Gathering } from '../tools/tools';

/**
 * What lies at a pixel is taken for the tool that is on, by mouse or by key: a point, or the corner of a polygon. Places
 * that are taken quickly keep their order, whichever answer comes first.
 */
export function takePlace(app: App, x: number, y: number): Promise<void> {
    const { gathering } = app;
    if (gathering === null) return Promise.resolve();
    const before = gathering.taken;
    const asked = app.picker.pick(x, y);
    const corner = gathering.kind.name === 'polygon' ? findCorner(app, x, y) : null;
    gathering.taken = (async () => {
        const picked = await asked;
        await before;
        if (picked === undefined || app.gathering !== gathering) return;
        const point = picked ?? corner;
        if (point === null) return app.ui.tellOnce('There is no point of the cloud here');
        app.setHovered(picked);
        app.addPoint(point);
    })();
    return gathering.taken;
}

/** The last place goes again, also one that is still on its way. */
export function takeBack(app: App, gathering: Gathering): Promise<void> {
    gathering.taken = gathering.taken.then(() => {
        gathering.removeLast();
        if (app.gathering !== gathering) return;
        app.ui.updateTool();
        app.redraw();
    });
    return gathering.taken;
}
