import assert from 'node:assert/strict';
import { test } from 'node:test';
import { Api } from '../../src/data/Api';
import { ApiError } from '../../src/data/ApiError';
import { Connection } from '../../src/data/Connection';
import { NoAnswer } from '../../src/data/NoAnswer';

/** An Api of a server whose requests end like this. */
function makeApi(fetch: () => Promise<Response>): { api: Api; told: boolean[] } {
    Object.assign(globalThis, { location: { search: '' }, fetch });
    const api = new Api();
    const told: boolean[] = [];
    api.onAnswer = (answers) => told.push(answers);
    return { api, told };
}

const broken = new ReadableStream({ start: (body) => body.error(new TypeError('network error')) });

test('NoAnswer_IsToldApartFromARefusal', async () => {
    for (const [fetch, error, told] of [
        [() => Promise.reject(new TypeError('Failed to fetch')), NoAnswer, [false]],
        [() => Promise.resolve(new Response(broken)), NoAnswer, [false]],
        [() => Promise.resolve(new Response('no', { status: 403 })), ApiError, [true]],
        [() => Promise.reject(new DOMException('cancelled', 'AbortError')), DOMException, []],
    ] as const) {
        const each = makeApi(fetch);
        await assert.rejects(each.api.info(), error);
        assert.deepEqual(each.told, told);
    }
});

test('Connection_IsAskedUntilThereIsAnAnswerAndEachChangeIsToldOnce', async () => {
    const told: boolean[] = [];
    let asked = 0;
    const connection = new Connection(
        () => {
            connection.note(++asked > 2);
            return asked > 2 ? Promise.resolve() : Promise.reject(new NoAnswer());
        },
        (answers) => told.push(answers),
        1,
    );
    connection.note(true);
    connection.note(false);
    connection.note(false);
    await new Promise((done) => setTimeout(done, 100));
    assert.deepEqual([told, asked], [[false, true], 3]);
});
