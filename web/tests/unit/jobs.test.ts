import assert from 'node:assert/strict';
import { test } from 'node:test';
import { Api } from '../../src/data/Api';
import { ApiError } from '../../src/data/ApiError';

type Answer = readonly [status: number, body: string];

/** An Api whose server answers so, one after the other; what it was asked for. */
function makeApi(answers: Answer[]): { api: Api; asked: string[] } {
    const asked: string[] = [];
    Object.assign(globalThis, {
        location: { search: '?token=1' },
        fetch: (url: string) => {
            asked.push(url);
            const [status, body] = answers.shift() ?? [500, 'nothing more'];
            return Promise.resolve(new Response(body, { status }));
        },
    });
    return { api: new Api(), asked };
}

const done: Answer = [200, '{"state":"done","points":7}'];

test('Job_AnotherOneThatRunsIsWaitedFor', async () => {
    const busy: Answer = [503, 'another job is running\n'];
    const { api } = makeApi([busy, busy, [200, '{"state":"running","doing":"finding","percent":40}'], done]);
    const told: string[] = [];
    const job = await api.job<{ points: number }>('api/ground', {}, (doing) => told.push(doing), new AbortController().signal);
    assert.equal(job.points, 7);
    assert.deepEqual(told, ['waiting: another job is running', 'waiting: another job is running', 'finding']);
});

test('Job_WhileItWaitsItCanBeCancelled', async () => {
    const { api, asked } = makeApi([[503, 'another job is running'], [200, '{"state":"idle"}']]);
    const controller = new AbortController();
    await assert.rejects(api.job('api/outline', {}, () => controller.abort(), controller.signal), { name: 'AbortError' });
    assert.match(asked[1], /cancel=1/);
});

test('Job_WhatIsRefusedOrFailsIsToldAtOnce', async () => {
    for (const answer of [[400, 'no'], [500, 'no'], [200, '{"state":"failed","cause":"no"}']] as Answer[]) {
        const { api, asked } = makeApi([answer, done]);
        await assert.rejects(api.job('api/ground', {}, () => undefined, new AbortController().signal), ApiError);
        assert.equal(asked.length, 1);
    }
});
