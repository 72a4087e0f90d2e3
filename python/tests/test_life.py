"""Lives: what is kept, what is let go, and how clouds travel."""

from __future__ import annotations

import copy
import gc
import multiprocessing
import pickle
import resource
import subprocess
import sys
import weakref
from pathlib import Path

import numpy as np
import pytest
from conftest import landscape, scatter

import zor4data
from zor4data import Cloud, Query


def resident() -> int:
    """Bytes of memory in use."""
    fields = Path("/proc/self/statm").read_text(encoding="ascii").split()
    return int(fields[1]) * resource.getpagesize()


def one_round(cloud: Cloud) -> None:
    """Everything that makes or holds something, once."""
    points = cloud.points
    assert len(points[cloud.rect(0, 0, 20, 20)]) > 0
    cloud.xyz(cloud.lod(5.0))
    cloud.rgb([1, 2, 3])
    cloud.inside(np.array([(0, 0), (20, 0), (20, 20)]))
    cloud.nearest((10, 10, 0))
    cloud.outline(3.0, progress=lambda percent: None)
    cloud.bounds.sum()
    with pytest.raises(IndexError):
        cloud.xyz(-1)


def one_stream(cloud: Cloud) -> None:
    """A query in parts, left before its end."""
    with cloud.batches(Query.all(), 100) as batches:
        next(batches)


def test_memory_and_references_are_flat_over_ten_thousand_rounds() -> None:
    cloud = zor4data.from_arrays(*landscape(100))
    held = (zor4data.POINT, zor4data.COLOR_POINT, None, zor4data.Cloud, cloud._core)
    for _ in range(300):
        one_round(cloud)
        one_stream(cloud)
    gc.collect()
    references, memory = [sys.getrefcount(thing) for thing in held], resident()
    for count in range(10000):
        one_round(cloud)
        if count % 10 == 0:  # each has a thread
            one_stream(cloud)
    gc.collect()
    grown = [sys.getrefcount(thing) - before for thing, before in zip(held, references)]
    assert max(grown) < 50 and min(grown) > -50
    assert resident() - memory < 4 << 20


def pickle_within(cloud: Cloud, size: int) -> bytes:
    """A pickle where no file may be larger than so many bytes."""
    limits = resource.getrlimit(resource.RLIMIT_FSIZE)
    resource.setrlimit(resource.RLIMIT_FSIZE, (size, limits[1]))
    try:
        return pickle.dumps(cloud)
    finally:
        resource.setrlimit(resource.RLIMIT_FSIZE, limits)


def test_a_pickle_is_whole_or_an_error() -> None:
    cloud = zor4data.from_arrays(scatter(50000, 1))
    whole = len(cloud._core.to_bytes())
    for size in (0, 600_000, 600_020, 600_100, (600_000 + whole) // 2, whole - 1):
        with pytest.raises(OSError, match="too large"):
            pickle_within(cloud, size)
    again = pickle.loads(pickle_within(cloud, whole))
    assert (again.lod(1.0) == cloud.lod(1.0)).all() and len(again.rect(500, 4000, 530, 4020)) > 0


def test_a_pickle_without_a_descriptor_left_is_an_error_that_says_so() -> None:
    cloud = zor4data.from_arrays(scatter(50, 1))
    limits = resource.getrlimit(resource.RLIMIT_NOFILE)
    resource.setrlimit(resource.RLIMIT_NOFILE, (0, limits[1]))
    try:
        with pytest.raises(OSError, match="[Tt]oo many open files"):
            pickle.dumps(cloud)
    finally:
        resource.setrlimit(resource.RLIMIT_NOFILE, limits)


def test_memory_is_flat_over_clouds_made_and_let_go() -> None:
    xyz, rgb = landscape(20000)

    def make() -> None:
        cloud = pickle.loads(pickle.dumps(zor4data.from_arrays(xyz, rgb)))
        cloud.take(cloud.lod(2.0)).ground()

    for _ in range(10):
        make()
    memory = resident()
    for _ in range(150):
        make()
    assert resident() - memory < 8 << 20


def test_a_view_keeps_the_records_and_nothing_else() -> None:
    cloud = zor4data.from_arrays(scatter(1000, 1))
    watched = weakref.ref(cloud)
    points = cloud.points
    del cloud
    gc.collect()
    assert watched() is None
    assert len(points) == 1000


def test_batches_keep_the_cloud() -> None:
    batches = zor4data.from_arrays(scatter(1000, 2)).batches(Query.all(), 7)
    gc.collect()
    assert sum(len(batch) for batch in batches) == 1000


@pytest.mark.parametrize("protocol", range(2, pickle.HIGHEST_PROTOCOL + 1))
@pytest.mark.parametrize("count", [0, 1, 5000])
@pytest.mark.parametrize("colours", [False, True])
def test_pickled_clouds_are_the_same(protocol: int, count: int, colours: bool) -> None:
    xyz, rgb = landscape(count)
    cloud = zor4data.from_arrays(xyz, rgb if colours else None)
    again = pickle.loads(pickle.dumps(cloud, protocol))
    assert again.has_color == colours and len(again) == count
    assert (again.points == cloud.points).all()
    assert (again.lod(3.0) == cloud.lod(3.0)).all()
    if count:
        assert (again.origin == cloud.origin).all()


def test_pickled_clouds_travel_out_of_band() -> None:
    cloud = zor4data.from_arrays(scatter(5000, 3))
    buffers: list[pickle.PickleBuffer] = []
    data = pickle.dumps(cloud, 5, buffer_callback=buffers.append)
    assert len(data) < 300 and len(buffers) == 1
    assert (pickle.loads(data, buffers=buffers).points == cloud.points).all()


def test_bytes_of_no_cloud_are_refused() -> None:
    from zor4data import _cloud

    for data in (b"", b"abc", bytearray(b"\xff" * 50)):
        with pytest.raises(pickle.UnpicklingError, match="bytes of a cloud"):
            _cloud._from_native(data, len(data), _cloud._digest(data), None)


def test_bytes_that_changed_on_their_way_are_refused() -> None:
    cloud = zor4data.from_arrays(scatter(500, 3))
    buffers: list[pickle.PickleBuffer] = []
    state = pickle.dumps(cloud, 5, buffer_callback=buffers.append)
    whole = bytes(buffers[0])
    flipped = bytearray(whole)
    flipped[len(whole) // 2] ^= 1
    for data in (b"", whole[:5], whole[: len(whole) // 2], whole[:-1], whole + b"x", flipped):
        with pytest.raises(pickle.UnpicklingError, match="cut off or damaged"):
            pickle.loads(state, buffers=[data])
    assert (pickle.loads(state, buffers=[whole]).points == cloud.points).all()


def test_copies_are_the_cloud_itself() -> None:
    cloud = zor4data.from_arrays(scatter(10, 4))
    assert copy.copy(cloud) is cloud and copy.deepcopy(cloud) is cloud


def count_west(cloud: Cloud) -> int:
    """What a worker does."""
    return len(cloud.rect(0, 0, 25, 1000))


@pytest.mark.parametrize("method", ["fork", "spawn"])
def test_clouds_travel_to_worker_processes(method: str) -> None:
    cloud = zor4data.from_arrays(*landscape(5000))
    with multiprocessing.get_context(method).Pool(2) as pool:
        assert pool.map(count_west, [cloud] * 3) == [count_west(cloud)] * 3


def in_child(batches: zor4data.Batches) -> None:
    """What a forked process does with somebody else's batches."""
    with pytest.raises(RuntimeError, match="forked"):
        next(batches)
    batches.close()


def test_batches_do_not_hang_a_forked_process() -> None:
    batches = zor4data.from_arrays(scatter(1000, 5)).batches(Query.all(), 10)
    next(batches)
    child = multiprocessing.get_context("fork").Process(target=in_child, args=(batches,))
    child.start()
    child.join(20)
    assert child.exitcode == 0
    assert len(list(batches)) == 99


ENDING = """
import sys, threading, time
import numpy as np, zor4data

xyz = np.random.default_rng(0).uniform(0, 300, (200_000, 3)) * (1, 1, 0.02)
cloud = zor4data.from_arrays(xyz)
work = {
    "ground": cloud.ground,
    "progress": lambda: cloud.ground(lambda percent: sum(range(1000))),
    "nearest": lambda: cloud.nearest(np.tile(xyz, (5, 1))),
    "queries": lambda: [cloud.lod(0.0001) for _ in range(99999)],
    "arrays": lambda: [cloud.xyz() for _ in range(99999)],
    "batches": lambda: [None for batch in cloud.batches(zor4data.Query.all(), 1)],
}[sys.argv[1]]
threading.Thread(target=work, daemon=True).start()
time.sleep(0.1)
"""


@pytest.mark.parametrize("work", ["ground", "progress", "nearest", "queries", "arrays", "batches"])
def test_the_interpreter_may_end_during_long_work(work: str) -> None:
    ended = subprocess.run([sys.executable, "-c", ENDING, work], capture_output=True, text=True, timeout=120)
    assert (ended.returncode, ended.stderr) == (0, "")
