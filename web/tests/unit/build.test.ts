import assert from 'node:assert/strict';
import { readdirSync, readFileSync } from 'node:fs';
import { test } from 'node:test';
import { gzipSync } from 'node:zlib';

const page = (name: string): string => readFileSync(`dist/${name}`, 'utf8');

test('Bundle_AtMost200KilobytesCompressed', () => {
    const sizes = readdirSync('dist').map((name) => gzipSync(readFileSync(`dist/${name}`), { level: 9 }).length);
    const total = sizes.reduce((sum, size) => sum + size, 0);
    assert.ok(total <= 200 * 1024, `${total} bytes`);
});

test('Page_AStrictPolicyRefusesNothingOfIt', () => {
    const html = page('index.html');
    assert.doesNotMatch(html, /<style|style=|<script(?![^>]*src=)|\son\w+=/);
    for (const [, link] of html.matchAll(/(?:src|href)="([^"]*)"/g)) assert.doesNotMatch(link, /^(?:\w+:|\/)/);
    assert.doesNotMatch(page('page.css'), /url\(|@import/);
});

test('Licences_OfEveryBundledPackageWithItsText', () => {
    const licences = JSON.parse(page('licences.json')) as { name: string; license: string; text: string }[];
    assert.deepEqual(licences.map(({ name }) => name), ['three']);
    for (const { license, text } of licences) assert.ok(license.length > 0 && text.length > 200);
});

test('Lock_ExactVersionsWithoutAnyHost', () => {
    const lock = readFileSync('package-lock.json', 'utf8');
    assert.doesNotMatch(lock, /"resolved"|https?:\/\/[^"]*registry/);
    const { dependencies, devDependencies } = JSON.parse(readFileSync('package.json', 'utf8')) as Record<string, Record<string, string>>;
    for (const version of Object.values({ ...dependencies, ...devDependencies })) assert.match(version, /^\d+\.\d+\.\d+$/);
});
