import { findCorner } from './findCorner';
import type { App } from './App';

/** What lies at a pixel is taken for the tool that is on, by mouse or by key: a point, or the corner of a polygon. */
export async function takePlace(app: App, x: number, y: number): Promise<void> {
    const { gathering } = app;
    if (gathering === null) return;
    const picked = await app.picker.pick(x, y);
    if (picked === undefined || app.gathering !== gathering) return;
    const point = picked ?? (gathering.kind.name === 'polygon' ? findCorner(app, x, y) : null);
    if (point === null) return app.ui.tellOnce('There is no point of the cloud here');
    app.setHovered(picked);
    app.addPoint(point);
}
