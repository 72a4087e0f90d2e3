import type { App } from './App';
import type { ToolName } from '../tools/tools';
import { halfTan, orbit, pan, zoom } from '../view/Camera';

export interface Command {
    readonly id: string;
    readonly label: string;
    /** As KeyboardEvent.key has them; the first is shown. */
    readonly keys: readonly string[];
    /** An arrow's: with Shift held. */
    readonly shift?: boolean;
    readonly group: 'View' | 'Measure' | 'Cut and choose' | 'Page';
    readonly run: (app: App) => void;
}

const step = { degrees: 7.5, zoom: 0.8, shift: 0.03 } as const; // shift: of the picture's height

function tool(id: ToolName, label: string, key: string, group: Command['group'] = 'Measure'): Command {
    return { id, label, keys: [key], group, run: (app) => app.startTool(id) };
}

function look(id: string, label: string, key: string, azimuth: number, elevation: number): Command {
    return { id, label, keys: [key], group: 'View', run: (app) => app.lookFrom({ azimuth, elevation }) };
}

function turnBy(app: App, azimuth: number, elevation: number): void {
    const { camera } = app.state;
    app.setCamera(orbit(camera, camera.target, azimuth, elevation));
}

function zoomBy(app: App, factor: number): void {
    const { camera } = app.state;
    app.setCamera(zoom(camera, camera.target, factor));
}

function shiftBy(app: App, right: number, up: number): void {
    const { camera } = app.state;
    const reach = step.shift * 2 * halfTan * camera.distance;
    app.setCamera(pan(camera, right * reach, up * reach));
}

function shift(id: string, where: string, key: string, right: number, up: number): Command {
    return { id, label: `Shift the view ${where}`, keys: [key], shift: true, group: 'View', run: (app) => shiftBy(app, right, up) };
}

/** All that the page can be told to do: its buttons, its keys and their list have it from here. */
export const commands: readonly Command[] = [
    { id: 'fit', label: 'Show everything', keys: ['0', 'Home'], group: 'View', run: (app) => app.fit() },
    { id: 'map', label: 'Map from above', keys: ['m'], group: 'View', run: (app) => app.showMap() },
    { id: 'fly', label: 'Fly', keys: ['f'], group: 'View', run: (app) => app.toggleFlight() },
    look('from-southwest', 'From the south-west, above', '1', 215, 35),
    look('from-top', 'From above', '2', 180, 90),
    look('from-south', 'From the south', '3', 180, 5),
    look('from-east', 'From the east', '4', 90, 5),
    look('from-north', 'From the north', '5', 0, 5),
    look('from-west', 'From the west', '6', 270, 5),
    look('from-below', 'As a depth camera sees it', '7', 180, -90),
    { id: 'parallel', label: 'Parallel or perspective', keys: ['o'], group: 'View', run: (app) => app.toggleParallel() },
    { id: 'nearer', label: 'Nearer', keys: ['+', '='], group: 'View', run: (app) => zoomBy(app, step.zoom) },
    { id: 'farther', label: 'Farther', keys: ['-'], group: 'View', run: (app) => zoomBy(app, 1 / step.zoom) },
    { id: 'left', label: 'Turn to the left', keys: ['ArrowLeft'], group: 'View', run: (app) => turnBy(app, -step.degrees, 0) },
    { id: 'right', label: 'Turn to the right', keys: ['ArrowRight'], group: 'View', run: (app) => turnBy(app, step.degrees, 0) },
    { id: 'up', label: 'Look from higher', keys: ['ArrowUp'], group: 'View', run: (app) => turnBy(app, 0, step.degrees) },
    { id: 'down', label: 'Look from lower', keys: ['ArrowDown'], group: 'View', run: (app) => turnBy(app, 0, -step.degrees) },
    shift('shift-left', 'to the left', 'ArrowLeft', -1, 0),
    shift('shift-right', 'to the right', 'ArrowRight', 1, 0),
    shift('shift-up', 'up', 'ArrowUp', 0, 1),
    shift('shift-down', 'down', 'ArrowDown', 0, -1),
    tool('point', 'Point', 'i'),
    tool('distance', 'Distance', 'd'),
    tool('height', 'Height difference', 'v'),
    tool('angle', 'Angle', 'g'),
    tool('area', 'Area in plan', 'a'),
    { id: 'clip', label: 'Clip box', keys: ['c'], group: 'Cut and choose', run: (app) => app.toggleClip() },
    tool('profile', 'Profile along a line', 'p', 'Cut and choose'),
    tool('polygon', 'Select with a polygon', 's', 'Cut and choose'),
    { id: 'outline', label: 'Outline', keys: ['b'], group: 'Cut and choose', run: (app) => app.toggleOutline() },
    { id: 'ground', label: 'Ground only', keys: ['u'], group: 'Cut and choose', run: (app) => app.toggleGround() },
    { id: 'shading', label: 'Depth shading', keys: ['h'], group: 'Page', run: (app) => app.change({ shading: !app.state.shading }) },
    { id: 'theme', label: 'Light or dark', keys: ['l'], group: 'Page', run: (app) => app.toggleTheme() },
    { id: 'display', label: 'Display settings', keys: ['k'], group: 'Page', run: (app) => app.ui.toggleDisplay() },
    { id: 'screenshot', label: 'Save a picture', keys: ['x'], group: 'Page', run: (app) => void app.saveScreenshot() },
    { id: 'help', label: 'Keys and mouse', keys: ['?', 'F1'], group: 'Page', run: (app) => app.ui.showHelp() },
    { id: 'about', label: 'About', keys: [], group: 'Page', run: (app) => void app.ui.showAbout() },
];

export function findCommand(id: string): Command {
    const command = commands.find((each) => each.id === id);
    if (command === undefined) throw new Error(`no command ${id}`);
    return command;
}

/** The command of a key, as KeyboardEvent.key has it. Of Shift only the arrows ask: other keys need it to be typed. */
export function commandOf(key: string, withShift: boolean): Command | undefined {
    const fits = ({ keys, shift }: Command): boolean => keys.some((each) => each === key || each === key.toLowerCase())
        && (!key.startsWith('Arrow') || (shift ?? false) === withShift);
    return commands.find(fits);
}

/** How a command's key is shown: arrows as arrows, letters as on the keys. */
export function showKey({ keys: [key], shift }: Command): string {
    const arrows: Readonly<Record<string, string>> = {
        ArrowLeft: '←',
        ArrowRight: '→',
        ArrowUp: '↑',
        ArrowDown: '↓',
    };
    return `${shift ? 'Shift ' : ''}${arrows[key] ?? (key.length === 1 ? key.toUpperCase() : key)}`;
}
