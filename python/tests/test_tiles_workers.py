"""Workers give the same as none, however many they are and whatever becomes of them."""

from __future__ import annotations

import fcntl
import os
import pty
import signal
import subprocess
import sys
import threading
import time
from contextlib import contextmanager
from pathlib import Path
from typing import Any, Callable, Iterator

import numpy as np
import pytest
from conftest import landscape, write_ply
from survey import Run, Survey, hash_files

import zor4data
from zor4data.tiles import Core, Tiles, TilesError
from zor4data.tiles._tidy import remove_abandoned

distributed = pytest.importorskip("distributed")


@pytest.fixture(scope="module")
def tiles(tmp_path_factory: pytest.TempPathFactory, run_program: Run) -> Tiles:
    """A landscape in 16 tiles."""
    made = write_ply(tmp_path_factory.mktemp("survey") / "survey.ply", *landscape(90000))
    return Survey(made, run_program).cut(37.5)


@pytest.fixture(scope="module")
def ground(tiles: Tiles, tmp_path_factory: pytest.TempPathFactory) -> dict[str, str]:
    """The files of its ground, made without workers."""
    out = tmp_path_factory.mktemp("ground")
    tiles.ground(out)
    return hash_files(out)


@contextmanager
def started(**options: Any) -> Iterator[Any]:
    """Workers."""
    with distributed.LocalCluster(dashboard_address=None, **options) as cluster:
        with distributed.Client(cluster, set_as_default=False) as made:
            yield made


@pytest.fixture(scope="module")
def client() -> Iterator[Any]:
    """Two workers, each a process."""
    with started(n_workers=2, threads_per_worker=1) as made:
        yield made


def count_core(cloud: zor4data.Cloud, core: Core) -> int:
    """Can be sent to workers by its name."""
    return int(core.mask(cloud).sum())


def refuse_west(cloud: zor4data.Cloud, core: Core) -> int:
    """Fails in the first column."""
    if core.xmin < 1.0:
        raise ValueError("not in the west")
    return len(cloud)


def stay(cloud: zor4data.Cloud, core: Core) -> tuple[float, float]:
    """When it begins and ends."""
    start = time.monotonic()
    time.sleep(0.2)
    return start, time.monotonic()


def count_at_once(spans: list[tuple[float, float]]) -> int:
    """How many there were at the same time."""
    return max(sum(start <= now < end for start, end in spans) for now, _ in spans)


def test_processes_give_the_same_as_none(tiles: Tiles, client: Any, ground: dict[str, str], tmp_path: Path) -> None:
    tiles.ground(tmp_path / "ground", client)
    assert hash_files(tmp_path / "ground") == ground
    tiles.thin(2.0, tmp_path / "here")
    tiles.thin(2.0, tmp_path / "there", client)
    assert hash_files(tmp_path / "here") == hash_files(tmp_path / "there")
    assert tiles.map(count_core, client) == [tile.points for tile in tiles.tiles]
    rect = (10.0, 20.0, 90.0, 33.0)
    assert tiles.count(rect, client) == tiles.count(rect)
    triangle = np.array([(10.0, 10.0), (140.0, 30.0), (60.0, 145.0)])
    np.testing.assert_array_equal(tiles.inside(triangle, client).records, tiles.inside(triangle).records)


@pytest.mark.parametrize("threads", [1, 3])
def test_threads_give_the_same_as_none(tiles: Tiles, ground: dict[str, str], tmp_path: Path, threads: int) -> None:
    with started(n_workers=1, threads_per_worker=threads, processes=False) as client:
        tiles.ground(tmp_path, client)
        if threads > 1:
            assert count_at_once(tiles.map(stay, client)) == threads
    assert hash_files(tmp_path) == ground


def test_functions_without_a_name_and_large_results(tiles: Tiles, client: Any) -> None:
    weight = np.full(100_000, 2.5)
    sums = tiles.map(lambda cloud, core: float(weight[0]) * core.mask(cloud).sum(), client)
    assert sums == [2.5 * tile.points for tile in tiles.tiles]
    arrays = tiles.map(lambda cloud, core: np.full(1_000_000, len(cloud)), client)
    for array, tile in zip(arrays, tiles.tiles):
        assert array.shape == (1_000_000,) and (array == tile.points + tile.buffer_points).all()


def test_what_fails_is_told_and_the_others_go_on(tiles: Tiles, client: Any, capfd: pytest.CaptureFixture[str]) -> None:
    west = [tile.file for tile in tiles.tiles if tile.core.xmin < 1.0]
    with pytest.raises(TilesError, match="4 of 16 tiles failed") as failed:
        tiles.map(refuse_west, client)
    assert sorted(failed.value.failures) == sorted(west)
    assert all(isinstance(error, ValueError) for error in failed.value.failures.values())
    assert [result is None for result in failed.value.results] == [tile.file in west for tile in tiles.tiles]
    told = capfd.readouterr().err
    (command,) = (line.strip() for line in told.splitlines() if line.startswith("    ") and west[0] in line)
    again = subprocess.run(command, shell=True, capture_output=True, text=True)
    assert again.returncode == 1 and "1 of 1 tiles failed" in again.stderr and "not in the west" in again.stderr


def test_a_result_that_cannot_be_sent_is_a_failure(tiles: Tiles, client: Any) -> None:
    few = tiles.only([tile.file for tile in tiles.tiles[:2]])
    with pytest.raises(TilesError, match="2 of 2 tiles failed"):
        few.map(lambda cloud, core: threading.Lock(), client)


def kill_while_written(client: Any, out: Path) -> Callable[[], bool]:
    """Kills a worker in the midst of a file, or at least of the work; what is returned waits for it."""
    victims = list(client.run(os.getpid).values())
    killed: list[bool] = []

    def kill() -> None:
        while not out.exists() or len(list(out.glob("*.cld"))) < 3:
            time.sleep(0.001)
        until = time.monotonic() + 3.0
        while time.monotonic() < until and not list(out.glob("*.zorcld-*")):
            pass
        killed.append(len(list(out.glob("*.cld"))) < 16)
        os.kill(victims[0], signal.SIGKILL)

    killer = threading.Thread(target=kill)
    killer.start()

    def wait() -> bool:
        killer.join()
        return killed[0]

    return wait


def test_a_killed_worker_changes_nothing(tiles: Tiles, client: Any, ground: dict[str, str], tmp_path: Path) -> None:
    out = tmp_path / "ground"
    wait = kill_while_written(client, out)
    tiles.ground(out, client)
    assert wait()  # the work was not done yet
    if any(out.glob("*.zorcld-*")):  # killed before it wrote: for a moment an empty file may be somebody's
        time.sleep(1.1)
        tiles.ground(out, client)
    assert hash_files(out) == ground  # and nothing else lies there


def test_a_worker_killed_in_a_function_changes_nothing(tiles: Tiles, client: Any, tmp_path: Path) -> None:
    mark = tmp_path / "died"

    def die_once(cloud: zor4data.Cloud, core: Core) -> int:
        if core.xmin > 70.0 and not mark.exists():
            mark.touch()
            os.kill(os.getpid(), signal.SIGKILL)
        return count_core(cloud, core)

    assert tiles.map(die_once, client) == [tile.points for tile in tiles.tiles]
    assert mark.exists()


def test_a_tile_that_kills_its_workers_is_told_and_the_others_go_on(tiles: Tiles, tmp_path: Path) -> None:
    def die(cloud: zor4data.Cloud, core: Core) -> int:
        if core.xmin < 1.0 and core.ymin < 1.0:
            os.kill(os.getpid(), signal.SIGKILL)
        return len(cloud)

    four = tiles.only([tile.file for tile in tiles.tiles[:4]])
    with started(n_workers=2, threads_per_worker=1) as client:
        with pytest.raises(TilesError, match="1 of 4 tiles failed, tile_0_0.cld first: KilledWorker") as failed:
            four.map(die, client)
    assert sum(result is not None for result in failed.value.results) == 3


def test_a_worker_with_little_memory_does_one_tile_at_a_time(tiles: Tiles) -> None:
    few = tiles.only([tile.file for tile in tiles.tiles[:6]])
    with started(n_workers=1, threads_per_worker=3, memory_limit=280_000_000) as client:
        assert count_at_once(few.map(stay, client)) == 1
    with started(n_workers=1, threads_per_worker=3, memory_limit=1_000_000_000) as client:
        assert count_at_once(few.map(stay, client)) == 3


def test_what_killed_runs_left_goes_and_what_is_in_use_stays(tiles: Tiles, tmp_path: Path) -> None:
    name = tiles.tiles[0].file
    (tmp_path / f"{name}.zorcld-abc123").write_bytes(b"left")
    (tmp_path / f"{name}.zorcld-empty0").touch()  # perhaps somebody has just made it
    (tmp_path / "other.cld.zorcld-abc123").write_bytes(b"not ours")
    with open(tmp_path / f"{name}.zorcld-held00", "wb") as held:
        held.write(b"in use")
        held.flush()
        fcntl.flock(held, fcntl.LOCK_EX)
        tiles.only(name).ground(tmp_path)
        left = {path.name for path in tmp_path.iterdir()}
        assert left == {name, f"{name}.zorcld-empty0", f"{name}.zorcld-held00", "other.cld.zorcld-abc123"}
    os.utime(tmp_path / f"{name}.zorcld-empty0", (0, 0))
    remove_abandoned(tmp_path, [name])
    assert {path.name for path in tmp_path.iterdir()} == {name, "other.cld.zorcld-abc123"}


SCRIPT = """
import os, sys, time
import zor4data.tiles
from distributed import Client, LocalCluster

def wait(cloud, core):
    time.sleep(float(sys.argv[2]))
    return len(cloud)

if __name__ == "__main__":
    tiles = zor4data.tiles.open(sys.argv[1])
    if sys.argv[3] == "none":
        print("begun", flush=True)
        tiles.map(wait)
    else:
        with LocalCluster(n_workers=2, threads_per_worker=1, dashboard_address=None) as cluster:
            with Client(cluster) as client:
                print("begun", flush=True)
                try:
                    tiles.map(wait, client)
                except KeyboardInterrupt:
                    tiles.only(tiles.tiles[0].file).map(wait, client)  # nothing of before is in the way
                    sys.exit(7)
"""


@pytest.mark.parametrize("workers, shown", [("none", b"16 of 16 tiles"), ("two", b"100% Completed")])
def test_a_terminal_shows_progress(tiles: Tiles, tmp_path: Path, workers: str, shown: bytes) -> None:
    script = tmp_path / "script.py"
    script.write_text(SCRIPT, encoding="utf-8")
    try:
        ours, theirs = pty.openpty()
    except OSError:
        pytest.skip("there are no terminals here")
    with subprocess.Popen(
        [sys.executable, str(script), str(tiles.folder), "0.05", workers], stdin=theirs, stdout=theirs, stderr=theirs
    ) as process:
        os.close(theirs)
        said = b""
        try:
            while piece := os.read(ours, 4096):
                said += piece
        except OSError:  # all have closed it
            pass
        os.close(ours)
    assert process.returncode == 0, said
    assert shown in said and said.count(b"\r") > 5


@pytest.mark.parametrize("workers, status", [("none", -signal.SIGINT), ("two", 7)])
def test_ctrl_c_ends_it(tiles: Tiles, tmp_path: Path, workers: str, status: int) -> None:
    script = tmp_path / "script.py"
    script.write_text(SCRIPT, encoding="utf-8")
    command = [sys.executable, str(script), str(tiles.folder), "0.5", workers]
    with subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL) as process:
        assert process.stdout is not None and process.stdout.readline() == b"begun\n"
        time.sleep(1.0)
        process.send_signal(signal.SIGINT)
        assert process.wait(20.0) == status


def test_an_asynchronous_client_is_refused(tiles: Tiles) -> None:
    class Asynchronous:
        asynchronous = True

    with pytest.raises(TypeError, match="asynchronous"):
        tiles.map(count_core, Asynchronous())
