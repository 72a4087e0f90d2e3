"""Answers in parts."""

from __future__ import annotations

import itertools
import signal
import subprocess
import sys
import threading
import time
import tracemalloc
from pathlib import Path

import numpy as np
import pytest
from conftest import landscape
from test_life import resident

import zor4data
from zor4data import Cloud, Query

QUERIES = [
    Query.all(),
    Query.lod(2.0),
    Query.clip([[1, 0, 0, -40]]),
    Query.lod_clip(2.0, [[1, 0, 0, -40]]),
    Query.rect(1, 2, 30, 40),
    Query.near_line((1, 2), (50, 60), 3.0, start=True, end=True),
    Query.inside(np.array([(0, 0), (40, 0), (40, 40)])),
    Query.rect(-3, -3, -1, -1),
]


@pytest.mark.parametrize("query", QUERIES, ids=lambda q: repr(q).partition("(")[0])
@pytest.mark.parametrize("n", [1, 7, 1000, 2**31 - 1])
def test_batches_are_the_answer_in_parts(terrain: Cloud, query: Query, n: int) -> None:
    if n == 2**31 - 1 and resident() < 0:
        pytest.skip("no room")
    if n == 1:
        terrain = terrain.take(slice(0, 500))
    if n == 2**31 - 1:
        n = 10**6
    whole = terrain.find(query)
    batches = list(terrain.batches(query, n))
    assert all(batch.dtype == np.int32 for batch in batches)
    assert (np.concatenate([whole[:0], *batches]) == whole).all()
    assert all(1 <= len(batch) <= n for batch in batches)


@pytest.mark.parametrize("n", [0, -1, 2**31])
def test_batches_of_a_wrong_size_are_an_error(terrain: Cloud, n: int) -> None:
    with pytest.raises(ValueError, match="n is"):
        terrain.batches(Query.all(), n)


def test_batches_end_early(terrain: Cloud) -> None:
    before = threading.active_count()
    threads = len(list(Path("/proc/self/task").iterdir()))
    batches = terrain.batches(Query.all(), 10)
    assert len(list(itertools.islice(batches, 3))) == 3
    batches.close()
    assert list(batches) == []
    with terrain.batches(Query.all(), 10) as more:
        next(more)
    assert list(more) == []
    del batches, more
    unused = terrain.batches(Query.all(), 10)
    del unused
    assert threading.active_count() == before
    assert len(list(Path("/proc/self/task").iterdir())) == threads


class Enough(Exception):
    """What a signal raises."""


def stop(*_: object) -> None:
    raise Enough


def test_batches_let_go_in_their_midst_leave_other_threads_alone() -> None:
    cloud = zor4data.from_arrays(np.random.default_rng(1).uniform(0, 1000, (100_000, 3)))
    along = np.linspace(0.0, 1000.0, 6000)
    comb = np.column_stack([along, np.where(np.arange(along.size) % 2, 1000.0, 0.0)])
    batches = cloud.batches(Query.inside(np.concatenate([comb, comb[::-1] + (1e-7, 0.0)])), 10)
    times: list[float] = []
    ended = threading.Event()

    def watch() -> None:
        while not ended.is_set():
            times.append(time.monotonic())
            ended.wait(0.01)
        times.append(time.monotonic())

    watcher = threading.Thread(target=watch)
    before = signal.signal(signal.SIGALRM, stop)
    signal.setitimer(signal.ITIMER_REAL, 0.1)
    try:
        with pytest.raises(Enough):
            next(batches)
        watcher.start()
        del batches
        ended.set()
        watcher.join()
    finally:
        signal.signal(signal.SIGALRM, before)
    assert len(times) >= 2 and np.diff(times).max() < 0.4


def test_batches_are_of_a_cloud() -> None:
    with pytest.raises(TypeError):
        zor4data._core.BatchStream(None, Query.all()._asks, 1)  # type: ignore[arg-type]


def test_batches_hold_two_batches_at_most() -> None:
    cloud = zor4data.from_arrays(landscape(3_000_000)[0])
    for _ in cloud.batches(Query.all(), 1000):
        pass
    before = resident()
    most = 0
    tracemalloc.start()
    for count, _ in enumerate(cloud.batches(Query.all(), 10000)):
        if count % 10 == 0:
            most = max(most, resident())
    tracemalloc.stop()
    assert most - before < 3 << 20  # all indices would be 12 MB


NO_ROOM = """
import resource
import numpy as np, zor4data

cloud = zor4data.from_arrays(np.random.default_rng(0).uniform(0, 9, (1000, 3)))
size = int(open("/proc/self/statm").read().split()[0]) * resource.getpagesize()
resource.setrlimit(resource.RLIMIT_AS, (size + 2**20, size + 2**20))
try:
    next(cloud.batches(zor4data.Query.all(), 10))
except MemoryError:
    print("MemoryError")
"""


def test_without_memory_for_their_thread_there_are_no_batches() -> None:
    ended = subprocess.run([sys.executable, "-c", NO_ROOM], capture_output=True, text=True, timeout=60)
    assert (ended.returncode, ended.stdout) == (0, "MemoryError\n"), ended.stderr
