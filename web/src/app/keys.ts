import type { App } from './App';
import { commandOf } from './commands';
import { takeBack, takePlace } from './takePlace';

/** The page's keys: commands, and what ends or undoes a tool's clicks. */
export function bindKeys(app: App): void {
    addEventListener('keydown', (event) => {
        if (event.ctrlKey || event.metaKey || event.altKey || isWriting(event)) return;
        if (!handleKey(app, event)) return;
        event.preventDefault();
        app.aimWithKeys(true);
    });
    app.ui.canvas.addEventListener('pointermove', () => app.aimWithKeys(false));
    addEventListener('keyup', (event) => app.flight.release(event.key, event.shiftKey));
    addEventListener('blur', () => app.flight.stop());
}

function isWriting(event: KeyboardEvent): boolean {
    const { target } = event;
    if (!(target instanceof HTMLElement)) return false;
    if (target.closest('dialog[open]') !== null) return true; // it has keys of its own
    const arrows = event.key.startsWith('Arrow') || event.key === 'Home';
    if (target.closest('.keeps-arrows') !== null && (arrows || event.key === '+' || event.key === '-')) return true;
    return target.matches('input:not([type=checkbox]), select, textarea');
}

function handleKey(app: App, event: KeyboardEvent): boolean {
    if (event.key === 'Escape') {
        if (app.gathering === null && !app.flying) app.ui.closeDisplay();
        app.stopTool();
        return true;
    }
    if (app.gathering !== null && handleToolKey(app, event)) return true;
    if (app.flying && app.flight.press(event.key, event.shiftKey)) {
        app.redraw();
        return true;
    }
    const command = commandOf(event.key, event.shiftKey);
    if (command === undefined || (event.repeat && command.group !== 'View')) return false;
    command.run(app);
    return true;
}

/** Without a mouse: the point in the middle of the picture is taken with the space bar. */
function handleToolKey(app: App, event: KeyboardEvent): boolean {
    const onButton = event.target instanceof HTMLButtonElement;
    const { gathering } = app;
    if (event.key === 'Enter' && !onButton && gathering !== null) {
        void gathering.taken.then(() => app.finishTool());
    } else if (event.key === 'Backspace' && gathering !== null) {
        void takeBack(app, gathering);
    } else if (event.key === ' ' && !onButton) void takePlace(app, app.stage.width / 2, app.stage.height / 2);
    else return false;
    return true;
}
