import { App } from './app/App';
import { Api } from './data/Api';
import type { CloudInfo } from './data/info';
import { Loading } from './ui/Loading';

const firstWait = 60; // milliseconds between two questions how far loading is
const longestWait = 400;

function show(api: Api, info: CloudInfo, root: HTMLElement, loading: Loading): void {
    try {
        new App(api, info, root);
    } catch (error) {
        // Most often a browser without WebGL 2.
        root.replaceChildren(loading.element);
        loading.fail('The cloud cannot be shown here', error instanceof Error ? error.message : String(error));
    }
}

async function start(root: HTMLElement): Promise<void> {
    const api = new Api();
    const loading = new Loading(root);
    for (let wait = firstWait; ; wait = Math.min(longestWait, wait * 1.3)) {
        const info = await api.info().catch((error: unknown) => {
            loading.fail('No answer', error instanceof Error ? error.message : String(error));
            wait = longestWait; // the server may be back
            return null;
        });
        if (info !== null) document.title = `${info.file} - zorcld`;
        if (info?.state === 'ready') return show(api, info, root, loading);
        if (info?.state === 'failed') return loading.fail(info.file, info.cause);
        if (info !== null) loading.show(info.file, info.doing, info.percent);
        await new Promise((done) => setTimeout(done, wait));
    }
}

const root = document.getElementById('root');
if (root !== null) void start(root);
