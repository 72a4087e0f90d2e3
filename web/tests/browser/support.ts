import { spawn, type ChildProcess } from 'node:child_process';
import { mkdtempSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import puppeteer, { type Browser, type Page } from 'puppeteer-core';
import type { Vec3 } from '../../src/math/vec3';
import type { Camera } from '../../src/view/Camera';
import { View } from '../../src/view/View';

export const size = { width: 480, height: 360 };
const patience = 120_000; // milliseconds: software draws slowly, and builds may run beside

export interface KnownPoint {
    readonly place: Vec3;
    readonly color: Vec3;
}

/** A folder for the files of a test run. */
export const folder = mkdtempSync(join(tmpdir(), 'zorcld-page-'));

export function writePly(name: string, points: readonly KnownPoint[]): string {
    const header = `ply\nformat binary_little_endian 1.0\nelement vertex ${points.length}\n${['x', 'y', 'z']
        .map((axis) => `property float ${axis}\n`)
        .join('')}${['red', 'green', 'blue'].map((color) => `property uchar ${color}\n`).join('')}end_header\n`;
    const body = Buffer.alloc(points.length * 15);
    points.forEach(({ place, color }, i) => {
        place.forEach((c, k) => body.writeFloatLE(c, 15 * i + 4 * k));
        color.forEach((c, k) => body.writeUInt8(c, 15 * i + 12 + k));
    });
    const path = join(folder, name);
    writeFileSync(path, Buffer.concat([Buffer.from(header, 'latin1'), body]));
    return path;
}

export function writeGrid(name: string, corner: readonly [number, number], heights: readonly number[][], cell = 1): string {
    const head = [`ncols ${heights[0].length}`, `nrows ${heights.length}`, `xllcorner ${corner[0]}`, `yllcorner ${corner[1]}`];
    const lines = [...head, `cellsize ${cell}`, 'NODATA_value -9999', ...heights.map((row) => row.join(' '))];
    const path = join(folder, name);
    writeFileSync(path, `${lines.join('\n')}\n`);
    return path;
}

export interface ClassedPoint {
    readonly place: Vec3;
    readonly class: number;
}

/** LAS 1.2 without colours, coordinates to a thousandth. */
export function writeLas(name: string, points: readonly ClassedPoint[]): string {
    const [headerSize, recordSize, scale] = [227, 20, 0.001];
    const header = Buffer.alloc(headerSize);
    header.write('LASF', 0, 'latin1');
    header.set([1, 2], 24);
    header.writeUInt16LE(headerSize, 94);
    header.writeUInt32LE(headerSize, 96);
    header.writeUInt16LE(recordSize, 105);
    header.writeUInt32LE(points.length, 107);
    header.writeUInt32LE(points.length, 111);
    for (let k = 0; k < 3; ++k) {
        header.writeDoubleLE(scale, 131 + 8 * k);
        header.writeDoubleLE(Math.max(...points.map(({ place }) => place[k])), 179 + 16 * k);
        header.writeDoubleLE(Math.min(...points.map(({ place }) => place[k])), 187 + 16 * k);
    }
    const body = Buffer.alloc(points.length * recordSize);
    points.forEach((point, i) => {
        point.place.forEach((c, k) => body.writeInt32LE(Math.round(c / scale), recordSize * i + 4 * k));
        body.writeUInt8(0x09, recordSize * i + 14); // the first return of one
        body.writeUInt8(point.class, recordSize * i + 15);
    });
    const path = join(folder, name);
    writeFileSync(path, Buffer.concat([header, body]));
    return path;
}

/** `zorcld serve` with a file, until it is told to end. */
export class Served {
    private constructor(
        readonly process: ChildProcess,
        readonly url: string,
    ) {}

    static async start(file: string): Promise<Served> {
        const child = spawn(process.env.ZORCLD ?? 'zorcld', ['serve', file], { stdio: ['ignore', 'pipe', 'ignore'] });
        const url = await new Promise<string>((found, fail) => {
            let text = '';
            child.stdout.on('data', (piece: Buffer) => {
                text += piece.toString();
                if (text.includes('\n')) found(text.split('\n')[0].trim());
            });
            child.on('exit', () => fail(new Error('zorcld serve ended')));
        });
        return new Served(child, url);
    }

    async get<T>(path: string): Promise<T> {
        const url = new URL(this.url);
        const token = url.searchParams.get('token') ?? '';
        const response = await fetch(`${url.origin}/${path}${path.includes('?') ? '&' : '?'}token=${token}`);
        return (await response.json()) as T;
    }

    stop(): Promise<number | null> {
        return new Promise((ended) => {
            this.process.on('exit', (status) => ended(status));
            this.process.kill('SIGINT');
        });
    }
}

export interface Pixels {
    readonly width: number;
    readonly height: number;
    readonly data: Buffer;
    at(x: number, y: number): Vec3;
}

/** A browser that keeps what went wrong in it, and what it asked for. */
export class Window {
    readonly complaints: string[] = [];
    readonly hosts = new Set<string>();

    private constructor(
        readonly browser: Browser,
        readonly page: Page,
    ) {}

    static async open(): Promise<Window> {
        const browser = await puppeteer.launch({
            executablePath: process.env.CHROMIUM ?? 'chromium',
            args: ['--no-sandbox', '--use-angle=swiftshader', '--enable-unsafe-swiftshader', '--disable-dev-shm-usage'],
            defaultViewport: size,
            timeout: patience,
            protocolTimeout: patience,
        });
        const window = new Window(browser, await browser.newPage());
        window.page.setDefaultTimeout(patience);
        window.#watch();
        return window;
    }

    #watch(): void {
        this.page.on('console', (message) => {
            if (message.type() === 'error') this.complaints.push(message.text());
        });
        this.page.on('pageerror', (error) => this.complaints.push(String(error)));
        this.page.on('response', (response) => {
            if (response.status() >= 400) this.complaints.push(`${response.status()} ${response.url()}`);
        });
        this.page.on('request', (request) => {
            const { protocol, hostname } = new URL(request.url());
            if (protocol.startsWith('http')) this.hosts.add(hostname);
        });
    }

    /** Opens a link as one that was typed, and waits until all is drawn. */
    async show(served: Served, hash: string): Promise<void> {
        await this.page.goto('about:blank');
        await this.page.goto(`${served.url}${hash}`);
        await this.settled();
    }

    async settled(): Promise<void> {
        await new Promise((done) => setTimeout(done, 120)); // what was done has been taken up
        await this.page.waitForFunction(() => document.documentElement.dataset.settled === 'yes', { timeout: patience });
    }

    /** What the picture of the points shows. */
    async pixels(): Promise<Pixels> {
        const [width, height, text] = await this.page.evaluate(() => {
            const canvas = document.querySelector<HTMLCanvasElement>('canvas.picture')!;
            const copy = document.createElement('canvas');
            [copy.width, copy.height] = [canvas.width, canvas.height];
            const context = copy.getContext('2d')!;
            context.drawImage(canvas, 0, 0);
            const { data } = context.getImageData(0, 0, copy.width, copy.height);
            let bytes = '';
            for (let i = 0; i < data.length; i += 8192) bytes += String.fromCharCode(...data.subarray(i, i + 8192));
            return [copy.width, copy.height, btoa(bytes)] as const;
        });
        const data = Buffer.from(text, 'base64');
        const at = (x: number, y: number): Vec3 => {
            const i = 4 * (Math.round(y) * width + Math.round(x));
            return [data[i], data[i + 1], data[i + 2]];
        };
        return { width, height, data, at };
    }

    hash(): Promise<string> {
        return this.page.evaluate(() => location.hash);
    }

    /** Waits until the address says something. */
    async hashWith(part: string): Promise<URLSearchParams> {
        await this.page.waitForFunction((text) => location.hash.includes(text), { timeout: patience }, part);
        return new URLSearchParams((await this.hash()).slice(1));
    }

    /** The address as the page itself has written it. */
    async writtenHash(): Promise<string> {
        await this.page.waitForFunction(() => location.hash.includes('budget='));
        return this.hash();
    }

    /** The address when it has changed and comes to rest: it follows a while after the view. */
    async restingHash(before: string): Promise<URLSearchParams> {
        await this.page.waitForFunction((text) => location.hash !== text, {}, before);
        for (let last = '', now = await this.hash(); ; now = await this.hash()) {
            if (now === last) return new URLSearchParams(now.slice(1));
            last = now;
            await this.settled();
            await new Promise((done) => setTimeout(done, 1000));
        }
    }

    /** Waits until the hint at the foot of the page begins with these words: a click has been taken up. */
    /** Waits until exactly this is told, or this with more behind a comma. */
    async hinted(words: string): Promise<void> {
        const isTold = (text: string): boolean => `${document.querySelector('.hint')?.textContent},`.startsWith(`${text},`);
        await this.page.waitForFunction(isTold, {}, words);
    }

    async close(): Promise<void> {
        await this.browser.close();
    }
}

export function hashOf(camera: Camera, more = ''): string {
    const view = [...camera.target, camera.distance, camera.azimuth, camera.elevation].join(',');
    return `#view=${view}&projection=${camera.parallel ? 'parallel' : 'perspective'}${more}`;
}

export function spotOf(camera: Camera, place: Vec3): { x: number; y: number } {
    return new View(camera, size.width, size.height).project(place);
}

export function tidyUp(): void {
    rmSync(folder, { recursive: true, force: true });
}
