// Bundles the tests of a folder and runs them with node's own runner: `node test.mjs unit`, `node test.mjs browser`.
import { build } from 'esbuild';
import { spawnSync } from 'node:child_process';
import { existsSync, readdirSync, rmSync } from 'node:fs';
import { delimiter, join } from 'node:path';

const kind = process.argv[2];
const folder = join('tests', kind);
const out = join('out', kind);
const files = readdirSync(folder).filter((name) => name.endsWith('.test.ts'));
if (files.length === 0) throw new Error(`no tests in ${folder}`);

// Tests in a browser need one, and the program whose page they open.
if (kind === 'browser') {
    const skipped = 77; // what ctest takes for a test that was skipped
    const folders = (process.env.PATH ?? '').split(delimiter);
    const found = ['chromium', 'chromium-browser'].flatMap((name) => folders.map((each) => join(each, name))).find(existsSync);
    process.env.CHROMIUM ??= found;
    if (process.env.CHROMIUM === undefined) {
        console.log('page/browser: chromium is not here; scripts/setup --test installs it. Skipped.');
        process.exit(skipped);
    }
    if (!process.env.ZORCLD) {
        console.log('page/browser: no zorcld was built (ZORCLD names it). Skipped.');
        process.exit(skipped);
    }
}

rmSync(out, { recursive: true, force: true });
await build({
    entryPoints: files.map((name) => join(folder, name)),
    outdir: out,
    outExtension: { '.js': '.mjs' },
    bundle: true,
    platform: 'node',
    format: 'esm',
    target: 'node18',
    packages: 'external',
    logLevel: 'warning',
});
const tests = files.map((name) => join(out, name.replace(/\.ts$/, '.mjs')));
const runs = kind === 'browser' ? tests.map((test) => [test]) : [tests]; // one browser at a time
const results = runs.map((each) => spawnSync(process.execPath, ['--test', ...each], { stdio: 'inherit' }).status);
process.exit(results.find((status) => status !== 0) === undefined ? 0 : 1);
