import { commands, showKey } from '../app/commands';
import type { Api } from '../data/Api';
import type { CloudInfo } from '../data/info';
import { formatCoord, groupDigits } from '../math/numbers';
import { button, h } from './dom';

function openDialog(title: string, ...content: (Node | string)[]): void {
    const close = button('Close', () => dialog.close(), { class: 'primary' });
    const head = h('div', { class: 'dialog-head' }, h('h2', {}, title), close);
    const dialog = h('dialog', { class: 'panel', attr: { 'aria-label': title } }, head, ...content);
    dialog.addEventListener('close', () => dialog.remove());
    dialog.addEventListener('click', (event) => {
        if (event.target === dialog) dialog.close(); // beside it
    });
    document.body.append(dialog);
    dialog.showModal();
}

const handling: readonly (readonly [string, string])[] = [
    ['Drag', 'turn around the point under the pointer; on the map: shift'],
    ['Right button, or Shift and drag', 'shift'],
    ['Wheel', 'zoom to the pointer'],
    ['Double click', 'go there'],
    ['One finger', 'turn; on the map: shift'],
    ['Two fingers', 'shift, zoom and turn'],
    ['W A S D Q E, flying', 'ahead, left, back, right, down, up; with Shift faster; drag to look around'],
    ['Space, with a tool', 'take the point in the middle, where the cross is'],
    ['Backspace, with a tool', 'take back the last point'],
    ['Enter, Escape', 'end a tool; leave it'],
];

export function showHelp(): void {
    const lists = ['View', 'Measure', 'Cut and choose', 'Page'].map((group) => {
        const list = h('dl', { class: 'keys' });
        for (const command of commands.filter((each) => each.group === group && each.keys.length > 0))
            list.append(h('dt', {}, h('kbd', {}, showKey(command))), h('dd', {}, command.label));
        return h('div', {}, h('h3', {}, group), list);
    });
    const hands = h('dl', { class: 'hands' });
    for (const [what, does] of handling) hands.append(h('dt', {}, what), h('dd', {}, does));
    openDialog('Keys and mouse', h('div', { class: 'columns' }, ...lists), h('h3', {}, 'Mouse and fingers'), hands);
}

interface Licence {
    readonly name: string;
    readonly version: string;
    readonly license: string;
    readonly text: string;
}

/** The cloud's facts, and the packages that the page is made with. */
export async function showAbout(info: CloudInfo, api: Api): Promise<void> {
    const facts = h('dl', { class: 'hands' });
    for (const [label, value] of describeCloud(info)) facts.append(h('dt', {}, label), h('dd', {}, value));
    const { announced, points } = info;
    const lacking = announced === null || announced <= points ? [] : [h('p', { class: 'note' }, describeLack(announced - points))];
    const box = h('div', {});
    openDialog('About', h('p', {}, 'zorcld serve: a cloud of points, shown from memory. Nothing leaves this machine.'), facts, ...lacking, h('h3', {}, 'Made with'), box);
    try {
        for (const each of await api.json<Licence[]>('licences.json'))
            box.append(h('details', {}, h('summary', {}, `${each.name} ${each.version}, ${each.license}`), h('pre', {}, each.text)));
    } catch {
        box.append('The list of licences could not be had.');
    }
}

/** Why a cloud has fewer points than its file says. */
export function describeLack(count: number): string {
    const points = count === 1 ? '1 point of the file is' : `${groupDigits(count)} points of the file are`;
    return (
        `${points} not here. Of points that lie on top of each other, at the same x and y, the cloud keeps one. ` +
        'Points that the file announces and does not hold are missing, too.'
    );
}

function describeCloud(info: CloudInfo): [string, string][] {
    const facts: [string, string][] = [
        ['File', info.file],
        ['Points', groupDigits(info.points)],
    ];
    if (info.announced !== null && info.announced !== info.points)
        facts.push(['In the file', groupDigits(info.announced)]);
    if (info.bounds !== null)
        ['x', 'y', 'z'].forEach((axis, k) =>
            facts.push([axis, `${formatCoord(info.bounds!.min[k])} to ${formatCoord(info.bounds!.max[k])}`]),
        );
    if (info.coordinate_system?.name)
        facts.push(['Coordinates', [info.coordinate_system.name, info.coordinate_system.code].filter(Boolean).join(', ')]);
    return facts;
}
