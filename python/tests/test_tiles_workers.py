"""Workers give the same as none, however many they are and whatever becomes of them."""

from __future__ import annotations

import fcntl
import os
import pty
import resource
import signal
import subprocess
import sys
import threading
import time
from contextlib import contextmanager
from functools import partial
from pathlib import Path
from typing import Any, Iterator

import numpy as np
import pytest
from conftest import landscape, write_ply
from survey import Run, Survey, hash_files

import zor4data
from zor4data.tiles import Core, Tiles, TilesError
from zor4data.tiles._tidy import remove_abandoned

# Workers are forked from a process that has imported what they need. What docs/tiles.md shows is tested with workers as
# they come by themselves.
os.environ.setdefault("DASK_DISTRIBUTED__WORKER__MULTIPROCESSING_METHOD", "forkserver")
distributed = pytest.importorskip("distributed")

#: Seconds after which what must come at last does not come any more, however slow the machine.
LONG = 120.0


@pytest.fixture(scope="module")
def tiles(tmp_path_factory: pytest.TempPathFactory, run_program: Run) -> Tiles:
    """A landscape in 16 tiles."""
    xyz, rgb = landscape(90000)
    made = write_ply(tmp_path_factory.mktemp("survey") / "survey.ply", xyz[::5], rgb[::5])
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
    with distributed.LocalCluster(dashboard_address=":0", **options) as cluster:
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


class Meeting:
    """Of the threads of a process."""

    def __init__(self) -> None:
        self.changed = threading.Condition()
        self.inside = self.most = 0


MEETING = Meeting()


def meet(wanted: int, cloud: zor4data.Cloud, core: Core) -> int:
    """How many have been here at the same time so far: waits for more if more are wanted, and a little for too many."""
    with MEETING.changed:
        MEETING.inside += 1
        MEETING.most = max(MEETING.most, MEETING.inside)
        MEETING.changed.notify_all()
        MEETING.changed.wait_for(lambda: MEETING.most >= wanted, LONG)
        MEETING.changed.wait_for(lambda: MEETING.most > wanted, 0.1)
        MEETING.inside -= 1
        return MEETING.most


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
            assert max(tiles.map(partial(meet, threads), client)) == threads
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


def die_while_writing() -> None:
    """Has the system kill this process in the midst of the first file that it writes."""
    signal.signal(signal.SIGXFSZ, signal.SIG_DFL)
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
    resource.setrlimit(resource.RLIMIT_FSIZE, (1000, resource.getrlimit(resource.RLIMIT_FSIZE)[1]))


def test_a_worker_killed_while_it_writes_changes_nothing(
    tiles: Tiles, client: Any, ground: dict[str, str], tmp_path: Path
) -> None:
    assert all((tiles.folder / name).stat().st_size > 1000 for name in ground)
    before = client.run(os.getpid)
    client.run(die_while_writing, workers=[min(before)])
    tiles.ground(tmp_path / "ground", client)
    client.wait_for_workers(2, LONG)
    assert before[min(before)] not in client.run(os.getpid).values()
    assert hash_files(tmp_path / "ground") == ground  # and nothing else lies there


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
        assert max(few.map(partial(meet, 1), client)) == 1
    with started(n_workers=1, threads_per_worker=3, memory_limit=1_000_000_000) as client:
        assert max(few.map(partial(meet, 3), client)) == 3


def test_what_killed_runs_left_goes_and_what_is_in_use_stays(tiles: Tiles, tmp_path: Path) -> None:
    name = tiles.tiles[0].file
    (tmp_path / f"{name}.zorcld-abc123").write_bytes(b"left")
    (tmp_path / f"{name}.zorcld-empty0").touch()  # perhaps somebody has just made it, which it stays here
    os.utime(tmp_path / f"{name}.zorcld-empty0", (time.time() + 3600.0,) * 2)
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
import sys, time
from pathlib import Path
import zor4data.tiles
from distributed import Client, LocalCluster

def wait(cloud, core):
    Path(sys.argv[2]).touch()
    while not Path(sys.argv[3]).exists():
        time.sleep(0.01)
    return len(cloud)

if __name__ == "__main__":
    tiles = zor4data.tiles.open(sys.argv[1])
    if sys.argv[4] == "none":
        tiles.map(wait)
    else:
        with LocalCluster(n_workers=2, threads_per_worker=1, dashboard_address=":0") as cluster:
            with Client(cluster) as client:
                try:
                    tiles.map(wait, client)
                except KeyboardInterrupt:
                    Path(sys.argv[3]).touch()
                    tiles.only(tiles.tiles[0].file).map(wait, client)  # nothing of before is in the way
                    sys.exit(7)
"""


def write_script(tiles: Tiles, folder: Path, workers: str) -> list[str]:
    """A program that makes the file `begun`, and waits at each tile until there is the file `go`."""
    (folder / "script.py").write_text(SCRIPT, encoding="utf-8")
    return [sys.executable, *map(str, (folder / "script.py", tiles.folder, folder / "begun", folder / "go")), workers]


@pytest.mark.parametrize("workers, shown", [("none", b"16 of 16 tiles"), ("two", b"100% Completed")])
def test_a_terminal_shows_progress(tiles: Tiles, tmp_path: Path, workers: str, shown: bytes) -> None:
    command = write_script(tiles, tmp_path, workers)
    (tmp_path / "go").touch()
    try:
        ours, theirs = pty.openpty()
    except OSError:
        pytest.skip("there are no terminals here")
    with subprocess.Popen(command, stdin=theirs, stdout=theirs, stderr=theirs) as process:
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
    command = write_script(tiles, tmp_path, workers)
    with subprocess.Popen(command, stderr=subprocess.DEVNULL) as process:
        until = time.monotonic() + LONG
        while not (tmp_path / "begun").exists() and process.poll() is None and time.monotonic() < until:
            time.sleep(0.01)
        process.send_signal(signal.SIGINT)
        try:
            assert process.wait(LONG) == status
        finally:
            process.kill()


def test_an_asynchronous_client_is_refused(tiles: Tiles) -> None:
    class Asynchronous:
        asynchronous = True

    with pytest.raises(TypeError, match="asynchronous"):
        tiles.map(count_core, Asynchronous())
