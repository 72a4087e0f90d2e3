// Builds the page into dist/: one script, one style sheet, the HTML, and the licences of what is bundled.
import { build } from 'esbuild';
import { copyFile, mkdir, readdir, readFile, rm, writeFile } from 'node:fs/promises';
import { join } from 'node:path';

const out = 'dist';

/** The packages that some of the bundle comes from. */
function bundledPackages(metafile) {
    const names = Object.keys(metafile.inputs)
        .map((path) => /node_modules\/((?:@[^/]+\/)?[^/]+)\//.exec(path)?.[1])
        .filter((name) => name !== undefined);
    return [...new Set(names)].sort();
}

async function readLicence(name) {
    const folder = join('node_modules', name);
    const { version, license } = JSON.parse(await readFile(join(folder, 'package.json'), 'utf8'));
    const file = (await readdir(folder)).find((entry) => /^licen[cs]e/i.test(entry));
    if (file === undefined) throw new Error(`${name} comes without the text of its licence`);
    return { name, version, license, text: await readFile(join(folder, file), 'utf8') };
}

await rm(out, { recursive: true, force: true });
await mkdir(out);
const { metafile } = await build({
    entryPoints: { page: 'src/main.ts' },
    outdir: out,
    bundle: true,
    minify: true,
    format: 'esm',
    target: 'es2021',
    legalComments: 'none', // the whole texts are in licences.json
    metafile: true,
    logLevel: 'warning',
});
await build({ entryPoints: ['page.css'], outdir: out, minify: true, logLevel: 'warning' });
for (const file of ['index.html', 'icon.svg']) await copyFile(file, join(out, file));
const licences = await Promise.all(bundledPackages(metafile).map(readLicence));
await writeFile(join(out, 'licences.json'), JSON.stringify(licences));
