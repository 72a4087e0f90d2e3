"""Several threads ask one cloud at once."""

from __future__ import annotations

import ctypes
import sys
import threading
import time
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path
from typing import Any, Callable, Iterator

import numpy as np
import pytest
from conftest import landscape

import zor4data
from zor4data import Cloud, Query

THREADS = 4
PLANES = [[1.0, 0.5, 0.0, -60.0], [0.0, 0.0, 1.0, -4.0]]
RING = np.array([(5.0, 5.0), (40.0, 8.0), (30.0, 44.0)])

#: Every question, by its name.
QUESTIONS: dict[str, Callable[[Cloud], Any]] = {
    "points": lambda cloud: cloud.points,
    "xyz": lambda cloud: cloud.xyz(),
    "rgb": lambda cloud: cloud.rgb(slice(0, 1000)),
    "bounds": lambda cloud: cloud.bounds,
    "all": lambda cloud: cloud.all(),
    "lod": lambda cloud: cloud.lod(3.0),
    "clip": lambda cloud: cloud.clip(PLANES),
    "lod_clip": lambda cloud: cloud.lod_clip(3.0, PLANES),
    "rect": lambda cloud: cloud.rect(5, 5, 30, 40),
    "near_line": lambda cloud: cloud.near_line((2, 2), (45, 40), 2.0, start=True, end=True),
    "inside": lambda cloud: cloud.inside(RING),
    "pick": lambda cloud: cloud.pick((20, 20, 90), (0.1, 0.0, -1.0), 0.02),
    "nearest": lambda cloud: cloud.nearest(np.random.default_rng(1).uniform(0, 40, (50, 3))),
    "batches": lambda cloud: np.concatenate(list(cloud.batches(Query.lod(2.0), 64))),
    "outline": lambda cloud: np.asarray(cloud.outline(3.0)),
    "ground_mask": lambda cloud: cloud.ground_mask(),
    "take": lambda cloud: cloud.take(cloud.lod(4.0)).points,
    "bytes": lambda cloud: np.frombuffer(cloud._core.to_bytes(), np.uint8),
    "search_distance": lambda cloud: cloud.search_distance(),
}


def ask(cloud: Cloud, first: int) -> dict[str, Any]:
    """Asks everything, beginning somewhere."""
    names = list(QUESTIONS)
    return {name: QUESTIONS[name](cloud) for name in names[first:] + names[:first]}


def test_every_question_is_answered_as_to_one_alone() -> None:
    xyz, rgb = landscape(8000)
    expected = ask(zor4data.from_arrays(xyz, rgb), 0)
    cloud = zor4data.from_arrays(xyz, rgb)  # bounds not asked yet
    with ThreadPoolExecutor(THREADS) as pool:
        for apart in (0, 5):
            for answers in pool.map(lambda n: ask(cloud, n * apart % len(QUESTIONS)), range(THREADS)):
                for name, answer in answers.items():
                    assert np.array_equal(answer, expected[name]), name


#: What takes long, by its name.
LONG: dict[str, Callable[[Cloud, Path], Any]] = {
    "from_arrays": lambda cloud, path: zor4data.from_arrays(cloud.xyz()),
    "read": lambda cloud, path: zor4data.read(path),
    "write": lambda cloud, path: cloud.write(path),
    "to bytes": lambda cloud, path: cloud._core.to_bytes(),
    "take": lambda cloud, path: cloud.take(slice(None, None, 2)),
    "xyz": lambda cloud, path: cloud.xyz(np.tile(np.arange(len(cloud)), 20)),
    "inside": lambda cloud, path: cloud.inside([RING + x for x in np.arange(0.0, 250.0, 0.05)]),
    "nearest": lambda cloud, path: cloud.nearest(cloud.xyz(slice(20000))),
    "ground_mask": lambda cloud, path: cloud.ground_mask(),
    "ground": lambda cloud, path: cloud.ground(),
    "outline": lambda cloud, path: cloud.outline(3.0),
}


@pytest.fixture
def unasked() -> Iterator[None]:
    """No thread is asked to let go of the interpreter: one that has it keeps it until it lets go itself."""
    before = sys.getswitchinterval()
    sys.setswitchinterval(100.0)
    yield
    sys.setswitchinterval(before)


def count_turns(work: Callable[[], Any]) -> int:
    """How often this thread has its turn between the first and the last moment of another one's work."""
    begin = end = 0.0

    def run() -> None:
        nonlocal begin, end
        begin = time.perf_counter()
        work()
        end = time.perf_counter()

    thread = threading.Thread(target=run)
    turns: list[float] = []
    thread.start()
    while thread.is_alive():
        time.sleep(0.00005)
        turns.append(time.perf_counter())
    thread.join()
    return sum(begin < turn < end for turn in turns)


def hold_interpreter() -> None:
    """Works long without letting go."""
    ctypes.PyDLL(None).usleep(20000)


@pytest.mark.usefixtures("unasked")
def test_turns_are_none_while_the_interpreter_is_held() -> None:
    assert [count_turns(hold_interpreter) for _ in range(10)] == [0] * 10


@pytest.mark.usefixtures("unasked")
@pytest.mark.parametrize("name", LONG)
def test_the_interpreter_goes_on_during_long_work(name: str, tmp_path: Path) -> None:
    cloud = zor4data.from_arrays(landscape(400000)[0])
    cloud.write(tmp_path / "a.cld")
    # Several times: where the machine has other things to do, a thread may not be asked for long.
    assert any(count_turns(lambda: LONG[name](cloud, tmp_path / "a.cld")) > 0 for _ in range(100))


def test_one_stream_of_batches_serves_several_threads() -> None:
    cloud = zor4data.from_arrays(landscape(20000)[0])
    batches = cloud.batches(Query.all(), 16)
    with ThreadPoolExecutor(THREADS) as pool:
        parts = pool.map(lambda _: list(batches), range(THREADS))
        found = np.concatenate([batch for part in parts for batch in part])
    assert (np.sort(found) == np.arange(20000)).all()
