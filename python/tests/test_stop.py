"""Ctrl-C and exceptions stop what takes long."""

from __future__ import annotations

import os
import signal
import threading
import time
from pathlib import Path
from typing import Any, Callable

import numpy as np
import pytest
from conftest import Array, landscape, write_ply
from test_life import resident

import zor4data
from zor4data import Cloud, Query


class Enough(Exception):
    """What a user raises."""


class Stopper:
    """Raises at a percentage."""

    def __init__(self, at: int) -> None:
        self.at = at
        self.told: list[int] = []

    def __call__(self, percent: int) -> None:
        self.told.append(percent)
        if percent >= self.at:
            raise Enough(percent)


@pytest.fixture(scope="module")
def ply(tmp_path_factory: pytest.TempPathFactory) -> Path:
    """A file of half a million points."""
    return write_ply(tmp_path_factory.mktemp("stop") / "a.ply", *landscape(500000))


@pytest.mark.parametrize("at", [0, 1, 50, 99])
def test_an_exception_in_the_progress_stops_a_load(ply: Path, at: int) -> None:
    stopper = Stopper(at)
    with pytest.raises(Enough) as raised:
        zor4data.read(ply, progress=stopper)
    assert raised.value.args == (stopper.told[-1],)
    assert stopper.told[-1] < 100


def test_an_exception_in_the_progress_stops_a_native_load(tmp_path: Path, terrain: Cloud) -> None:
    terrain.write(tmp_path / "a.cld")
    with pytest.raises(Enough):
        zor4data.read(tmp_path / "a.cld", progress=Stopper(0))


def write_grid(path: Path, side: int) -> Path:
    """An ASCII grid."""
    row = " ".join(map(str, range(side)))
    header = f"ncols {side}\nnrows {side}\nxllcorner 5\nyllcorner 5\ncellsize 1\nNODATA_value -9\n"
    path.write_text(header + "\n".join([row] * side), encoding="ascii")
    return path


@pytest.mark.parametrize("at", [0, 1, 50, 99])
def test_an_exception_in_the_progress_stops_a_grid(tmp_path: Path, at: int) -> None:
    stopper = Stopper(at)
    with pytest.raises(Enough):
        zor4data.read(write_grid(tmp_path / "a.asc", 90), progress=stopper)
    assert stopper.told == list(range(at + 1))


def test_an_exception_in_the_progress_stops_a_las_load(real_files: Path) -> None:
    with pytest.raises(Enough):
        zor4data.read(real_files / "las" / "autzen_trim.las", progress=Stopper(5))


@pytest.mark.parametrize("name", ["ground", "ground_mask", "outline"])
@pytest.mark.parametrize("at", [0, 1, 60, 99])
def test_an_exception_in_the_progress_stops_an_analysis(terrain: Cloud, name: str, at: int) -> None:
    before = terrain.points.copy(), terrain.lod(2.0), terrain._core.to_bytes()
    arguments = (2.0,) if name == "outline" else ()
    with pytest.raises(Enough):
        getattr(terrain, name)(*arguments, progress=Stopper(at))
    assert (terrain.points == before[0]).all() and (terrain.lod(2.0) == before[1]).all()
    assert terrain._core.to_bytes() == before[2]


def test_progress_rises_from_0_to_100(ply: Path, tmp_path: Path, terrain: Cloud) -> None:
    grids = [write_grid(tmp_path / f"{side}.asc", side) for side in (1, 7, 120)]
    runs: list[Callable[[zor4data.Progress], Any]] = [
        lambda progress: zor4data.read(ply, progress=progress),
        *(lambda progress, grid=grid: zor4data.read(grid, progress=progress) for grid in grids),
        lambda progress: terrain.ground(progress=progress),
        lambda progress: terrain.ground_mask(progress=progress),
        lambda progress: terrain.outline(2.0, progress=progress),
    ]
    for run in runs:
        told: list[int] = []
        run(told.append)
        assert told == sorted(set(told))
        assert told[0] == 0 and told[-1] == 100 and len(told) <= 101


def test_a_progress_that_is_none_is_an_error(ply: Path) -> None:
    with pytest.raises(TypeError):
        zor4data.read(ply, progress=3)  # type: ignore[arg-type]


def test_stopping_leaks_nothing(ply: Path, terrain: Cloud) -> None:
    runs: list[Callable[[zor4data.Progress], Any]] = [
        lambda stop: zor4data.read(ply, progress=stop),
        lambda stop: terrain.ground(progress=stop),
        lambda stop: terrain.outline(2.0, progress=stop),
    ]

    def stop_all() -> None:
        for run in runs:
            with pytest.raises(Enough):
                run(Stopper(20))

    files = len(os.listdir("/proc/self/fd"))
    for _ in range(5):
        stop_all()
    memory = resident()
    for _ in range(40):
        stop_all()
    assert resident() - memory < 4 << 20
    assert len(os.listdir("/proc/self/fd")) == files


def interrupted(run: Callable[[], Any], after: float) -> bool:
    """Runs something and sends Ctrl-C after some seconds. @return whether it came out of it."""

    def send() -> None:
        time.sleep(after)
        os.kill(os.getpid(), signal.SIGINT)

    old = signal.signal(signal.SIGINT, signal.default_int_handler)
    thread = threading.Thread(target=send)
    ended = False
    try:
        thread.start()
        run()
        ended = True
        time.sleep(30)
    except KeyboardInterrupt:
        pass
    finally:
        thread.join()
        signal.signal(signal.SIGINT, old)
    return not ended


def test_ctrl_c_stops_a_load(tmp_path: Path) -> None:
    xyz = np.tile(landscape(500000)[0], (12, 1))
    path = write_ply(tmp_path / "large.ply", xyz)
    assert interrupted(lambda: zor4data.read(path), 0.06)


def test_ctrl_c_stops_a_grid(tmp_path: Path) -> None:
    path = write_grid(tmp_path / "large.asc", 2000)
    assert interrupted(lambda: zor4data.read(path), 0.05)


def test_ctrl_c_stops_the_analyses() -> None:
    cloud = zor4data.from_arrays(landscape(3_000_000)[0])
    before = cloud.points.copy()
    assert interrupted(cloud.ground_mask, 0.1)
    assert interrupted(cloud.ground, 0.1)
    assert interrupted(lambda: cloud.outline(2.0), 0.1)
    assert (cloud.points == before).all()


def test_ctrl_c_stops_many_small_questions(terrain: Cloud) -> None:
    places = np.random.default_rng(1).uniform(-500, 500, (3_000_000, 3))
    assert interrupted(lambda: terrain.nearest(places), 0.2)


def test_ctrl_c_stops_making_a_cloud_of_arrays() -> None:
    xyz = np.tile(landscape(500000)[0], (16, 1))
    assert interrupted(lambda: zor4data.from_arrays(xyz), 0.1)


def test_ctrl_c_stops_a_question_with_many_answers() -> None:
    cloud = zor4data.from_arrays(landscape(1_000_000)[0])
    squares = [np.array([(x, 0.0), (x + 0.4, 0.0), (x + 0.4, 500.0), (x, 500.0)]) for x in np.arange(0.0, 500.0, 0.05)]
    assert interrupted(lambda: cloud.inside(squares), 0.1)


def comb(count: int) -> Array:
    """A ring of slivers, which has hardly any point in it."""
    along = np.linspace(0.0, 1000.0, count)
    up = np.column_stack([along, np.where(np.arange(count) % 2, 1000.0, 0.0)])
    return np.concatenate([up, up[::-1] + (1e-7, 0.0)])


def test_ctrl_c_stops_questions_with_hardly_an_answer() -> None:
    cloud = zor4data.from_arrays(np.random.default_rng(1).uniform(0, 1000, (200_000, 3)))
    turns = np.random.default_rng(2).uniform(0, 2 * np.pi, 200_000)
    planes = np.column_stack([np.cos(turns), np.sin(turns), 0.0 * turns, -500 * (np.cos(turns) + np.sin(turns)) - 450])
    runs: list[Callable[[], Any]] = [
        lambda: cloud.inside(comb(20_000)),
        lambda: next(cloud.batches(Query.inside(comb(20_000)), 10), None),
        lambda: cloud.clip(planes),
    ]
    for run in runs:
        begun = time.monotonic()
        assert interrupted(run, 0.3)
        assert time.monotonic() - begun < 1.5


def test_ctrl_c_comes_out_of_batches(terrain: Cloud) -> None:
    def ask_for_ever() -> None:
        while True:
            for _ in terrain.batches(Query.all(), 5):
                pass

    assert interrupted(ask_for_ever, 0.2)
