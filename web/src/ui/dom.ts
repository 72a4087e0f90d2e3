type Child = Node | string | null;
type Listeners = { [K in keyof HTMLElementEventMap]?: (event: HTMLElementEventMap[K]) => void };

export interface Props {
    readonly class?: string;
    readonly id?: string;
    /** Attributes as they stand in HTML. */
    readonly attr?: Readonly<Record<string, string>>;
    readonly on?: Listeners;
}

/** An element with its children. */
export function h<K extends keyof HTMLElementTagNameMap>(
    tag: K,
    props: Props = {},
    ...children: Child[]
): HTMLElementTagNameMap[K] {
    const element = document.createElement(tag);
    if (props.class !== undefined) element.className = props.class;
    if (props.id !== undefined) element.id = props.id;
    for (const [name, value] of Object.entries(props.attr ?? {})) element.setAttribute(name, value);
    for (const [name, listener] of Object.entries(props.on ?? {}))
        element.addEventListener(name, listener as EventListener);
    element.append(...children.filter((child) => child !== null));
    return element;
}

/** A drawn sign: paths on a field of 24 by 24. */
export function icon(path: string): SVGSVGElement {
    const space = 'http://www.w3.org/2000/svg';
    const svg = document.createElementNS(space, 'svg');
    svg.setAttribute('viewBox', '0 0 24 24');
    svg.setAttribute('aria-hidden', 'true');
    const line = document.createElementNS(space, 'path');
    line.setAttribute('d', path);
    svg.append(line);
    return svg;
}

export function button(label: string, run: () => void, props: Props = {}): HTMLButtonElement {
    return h('button', { ...props, attr: { type: 'button', ...props.attr }, on: { click: run } }, label);
}

/** Saves a file: the browser asks where, or puts it with the others. */
export function download(url: string, name: string): void {
    const link = h('a', { attr: { href: url, download: name } });
    document.body.append(link);
    link.click();
    link.remove();
}
