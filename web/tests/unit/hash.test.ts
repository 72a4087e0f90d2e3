import assert from 'node:assert/strict';
import { test } from 'node:test';
import { formatHash, parseHash } from '../../src/app/hash';
import { budgets, type State } from '../../src/app/State';

const state: State = {
    camera: { target: [4000000.123456789, -0.1, 1 / 3], distance: 0.1 + 0.2, azimuth: 214.7, elevation: -89.5, parallel: true },
    theme: 'light',
    background: '#12ab9f',
    color: 'intensity',
    pointSize: 1.4,
    shading: false,
    budget: 250000,
    ground: true,
    clip: { min: [1, 2, 3], max: [4.5, 5.25, 6.125] },
    marks: [
        { kind: 'point', places: [[1, 2, 3.5]], indices: [77] },
        { kind: 'area', places: [[0, 0, 0], [1, 0, 0], [1, 1, 1e-7]], indices: [3, 2, 1] },
    ],
    polygon: [[0, 0, 1], [5, 0, 1], [5, 5, 1]],
    corridor: { from: [1, 1, 1], to: [2, 2, 2], width: 0.5 },
    outline: 2.5,
};

test('Hash_ReadBackIsTheWholeState', () => assert.deepEqual(parseHash(formatHash(state)), state));

test('Hash_StateWithoutAnythingChosen', () => {
    const plain: State = {
        ...state,
        ...{ background: null, ground: false, clip: null, marks: [], polygon: [], corridor: null, outline: null },
    };
    assert.deepEqual({ ...plain, ...parseHash(formatHash(plain)) }, plain);
});

test('Hash_WhatIsNotUnderstoodIsLeftOut', () => {
    for (const text of [
        '#view=1,2,3', '#view=1,2,3,-4,5,6', '#view=1,2,3,4,5,91', '#view=a,b,c,d,e,f', '#view=1,2,3,NaN,5,6',
        '#theme=pink', '#color=taste', '#size=1e9', '#size=', '#budget=-5', '#clip=4,4,4,1,1,1', '#clip=1',
        '#mark=point:1', '#mark=nothing:1:1,2,3', '#mark=angle:1:1,2,3', '#mark=point:x:1,2,3', '#profile=1,2,3,4,5,6,0',
        '#outline=-1', '#outline=Infinity', '#background=<b>', '#shading=2', '#polygon=1,2;3', '#polygon=1,2,3', '#polygon=1,2,3;4,5,6',
        '#profile=1,2,3,1,2,9,4', '#=&&=', '#%',
    ]) {
        const { marks, polygon, ...rest } = parseHash(text);
        assert.deepEqual([marks, polygon, rest], [[], [], {}], text);
    }
});

test('Hash_BudgetsAreThoseOfTheProgramAndTheSlider', () => {
    for (const [text, budget] of [['1000', 1000], ['10000000', 10_000_000], ['999', undefined], ['10000001', undefined]] as const)
        assert.equal(parseHash(`#budget=${text}`).budget, budget);
    assert.deepEqual([budgets.min, budgets.max], [1000, 10_000_000]);
});
