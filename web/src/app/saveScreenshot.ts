import type { App } from './App';
import { Pen } from '../paint/Pen';
import { groupDigits } from '../math/numbers';
import { download } from '../ui/dom';

/** Saves what is seen as PNG, with the file's name above it as `zorcld view` writes it. */
export async function saveScreenshot(app: App): Promise<void> {
    const { info, stage, state } = app;
    const picture = stage.compose((context) => {
        const pen = new Pen(context, app.view(), state.theme);
        pen.font(17, true);
        pen.rimmed(22, 32, 0, info.file);
        pen.font(13);
        pen.rimmed(22, 52, 0, `${groupDigits(stage.selection.points)} of ${groupDigits(info.points)} points`, 0.72);
    });
    const blob = await new Promise<Blob | null>((done) => picture.toBlob(done, 'image/png'));
    if (blob === null) return app.ui.tell('The picture could not be made');
    const url = URL.createObjectURL(blob);
    download(url, `${info.file.replace(/\.[^.]*$/, '')}.png`);
    setTimeout(() => URL.revokeObjectURL(url), 10_000);
}
