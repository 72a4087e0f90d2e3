/** The largest of 1, 2, 5, 10, 20... (and 0.5, 0.2...) not above `d`. */
export function roundDown(d: number): number {
    const power = 10 ** Math.floor(Math.log10(d));
    const step = [5, 2].find((n) => n * power <= d * (1 + 1e-9));
    return (step ?? 1) * power;
}

export interface Tick {
    readonly value: number;
    readonly label: string;
}

const maxTicks = 1000; // a step lost in the size of the numbers would never arrive
const maxDecimals = 4;

/** The multiples of a step between two numbers, with labels of as many decimals as the step has. */
export function makeTicks(min: number, max: number, step: number): Tick[] {
    if (!(step > 0) || !Number.isFinite(step)) return [];
    const decimals = Math.min(maxDecimals, Math.max(0, -Math.floor(Math.log10(step) + 1e-9)));
    const first = Math.ceil(min / step - 1e-9);
    const ticks: Tick[] = [];
    for (let i = 0; i < maxTicks; ++i) {
        const value = (first + i) * step + 0; // no negative zero
        if (value > max + 1e-9 * step) break;
        ticks.push({ value, label: formatTick(value, decimals) });
    }
    return ticks;
}

export function formatTick(value: number, decimals: number): string {
    return Math.abs(value) < 1e9 ? value.toFixed(decimals) : value.toPrecision(6);
}

/** 1 234 567: thin spaces between groups of three. */
export function groupDigits(n: number): string {
    return String(n).replace(/\B(?=(\d{3})+(?!\d))/g, '\u202f');
}

/** A coordinate as the library has it: to 1/10000, without zeros at its end. */
export function formatCoord(d: number): string {
    return String(Number(d.toFixed(4)));
}

/** A measured length or area: four decimals below 1, else at least a thousandth of what it is. */
export function formatMeasure(d: number): string {
    const size = Math.abs(d);
    const decimals = size < 10 ? 3 : size < 1000 ? 2 : size < 100000 ? 1 : 0;
    const [whole, rest] = d.toFixed(decimals).split('.');
    const grouped = whole.replace(/\B(?=(\d{3})+(?!\d))/g, '\u202f');
    return rest ? `${grouped}.${rest}` : grouped;
}

export function withUnit(text: string, unit: string | null, power = ''): string {
    return unit ? `${text} ${unit}${power}` : text;
}

export function clamp(d: number, min: number, max: number): number {
    return Math.min(max, Math.max(min, d));
}
