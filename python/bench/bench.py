"""The module beside numpy and Open3D on the same points: prints rows for docs/benchmarks.md.

    bench.py [FILE.ply] [--points N] [--rounds N] [--quick]

Without FILE the terrain comes from `zorcld make-sample` (ZOR4DATA_HOST names the program). Both sides run in turns in
this process, on one thread; times are CPU time of the process. Results are compared before a time counts.
--quick: few points and one round: that everything runs and the results match, not how fast.
"""

from __future__ import annotations

import argparse
import os
import shutil
import statistics
import subprocess
import sys
import tempfile
import time
from pathlib import Path
from typing import Any, Callable, Optional

os.environ.setdefault("OMP_NUM_THREADS", "1")

import numpy as np  # noqa: E402

import zor4data  # noqa: E402

Side = Callable[[], Any]


def measure(run: Side) -> tuple[float, Any]:
    """CPU seconds of one run, and its result. What is very short is run until it is not."""
    result, repeats = None, 1
    while True:
        start = time.process_time_ns()
        for _ in range(repeats):
            result = None  # the memory of the last result is free for this one
            result = run()
        seconds = (time.process_time_ns() - start) * 1e-9
        if seconds > 0.002 or repeats >= 4096:
            return seconds / repeats, result
        repeats *= 4


def tell(seconds: float) -> str:
    """A time with a unit that suits it."""
    for size, unit in ((1.0, "s"), (1e-3, "ms")):
        if seconds >= size:
            return f"{seconds / size:.2f} {unit}"
    return f"{seconds * 1e6:.2f} us"


class Table:
    """The rows, as they come."""

    def __init__(self, rounds: int) -> None:
        self.rounds = rounds
        print("| Item | product (min / median) | peer | peer (min / median) | ratio | must | held |")
        print("|---|---|---|---|---|---|---|")

    def row(
        self, item: str, ours: Side, peer: str, theirs: Optional[Side], must: Optional[float], same: bool = True
    ) -> None:
        """Measures one row in turns. `must`: the ratio of the medians at most, without peer seconds at most."""
        times: tuple[list[float], list[float]] = ([], [])
        if theirs is not None and same:
            assert np.array_equal(np.asarray(ours()), np.asarray(theirs())), item
        for _ in range(self.rounds):
            times[0].append(measure(ours)[0])
            if theirs is not None:
                times[1].append(measure(theirs)[0])
        told = [f"{tell(min(side))} / {tell(statistics.median(side))}" if side else "-" for side in times]
        value = statistics.median(times[0])
        if theirs is not None:
            value /= statistics.median(times[1])
            ratio = f"{value:.3f}" if value > 0.02 else f"1/{1 / value:.0f}"
        else:
            ratio = "-"
        held = "" if must is None else "yes" if value <= must else "no"
        bar = "-" if must is None else f"{must:g}" if theirs is not None or must >= 1 else tell(must)
        print(f"| {item} | {told[0]} | {peer} | {told[1]} | {ratio} | {bar} | {held} |", flush=True)


def make_sample(count: int, folder: Path) -> Path:
    """The made-up terrain as a file."""
    program = os.environ.get("ZOR4DATA_HOST") or shutil.which("zorcld")
    if not program:
        raise SystemExit("bench: zorcld is not here: ZOR4DATA_HOST names it")
    path = folder / "terrain.ply"
    subprocess.run([program, "make-sample", "--points", str(count), path, "-q"], check=True, stdout=subprocess.DEVNULL)
    return path


def bytes_of_view(cloud: zor4data.Cloud) -> int:
    """Resident memory that a view of all points takes."""

    def resident() -> int:
        return int(Path("/proc/self/statm").read_text(encoding="ascii").split()[1]) * os.sysconf("SC_PAGE_SIZE")

    before = resident()
    view = cloud.points
    return resident() - before if view.size else 0


def run_numpy(table: Table, cloud: zor4data.Cloud) -> None:
    """The rows beside numpy."""
    xyz = cloud.xyz()
    low, high = cloud.bounds
    x, y = xyz[:, 0], xyz[:, 1]
    middle = (low + high) / 2.0
    out = np.empty_like(xyz)

    table.row("the view, points", lambda: cloud.points, "-", None, 0.001)
    table.row("coordinates, xyz()", cloud.xyz, "numpy, a copy of them", xyz.copy, None)
    table.row(
        "coordinates, xyz(out=)", lambda: cloud.xyz(out=out), "numpy, copyto", lambda: np.copyto(out, xyz), None, False
    )

    half = 50.00005  # between two steps
    box = (middle[0] - half, middle[1] - half, middle[0] + half, middle[1] + half)

    def mask() -> Any:
        return np.flatnonzero((x >= box[0]) & (x <= box[2]) & (y >= box[1]) & (y <= box[3]))

    count = len(cloud.rect(*box))
    table.row(f"rectangle of {count:,} points", lambda: cloud.rect(*box), "numpy, a mask", mask, 0.01)

    plane = np.array([[1.0, 0.0, 0.0, -middle[0]], [0.0, 1.0, 0.0, -middle[1]]])
    table.row(
        "a quarter behind 2 planes",
        lambda: cloud.clip(plane),
        "numpy, products",
        lambda: np.flatnonzero(((xyz @ plane[:, :3].T + plane[:, 3]) <= 0).all(axis=1)),
        None,
        False,
    )
    table.row(
        "every index, by the query",
        lambda: cloud.find(zor4data.Query.all()),
        "numpy, arange",
        lambda: np.arange(len(cloud), dtype=np.int32),
        None,
    )
    place = middle + 0.3
    table.row(
        "nearest point",
        lambda: cloud.nearest(place),
        "numpy, distances",
        lambda: ((xyz - place) ** 2).sum(axis=1).argmin(),
        None,
    )


def run_open3d(table: Table, cloud: zor4data.Cloud) -> None:
    """The rows beside Open3D."""
    try:
        import open3d
    except ImportError:
        print("Open3D's Python module (Debian: python3-open3d) was not there: its rows are left out.", file=sys.stderr)
        return
    xyz = cloud.xyz()

    def take() -> Any:
        theirs = open3d.geometry.PointCloud()
        theirs.points = open3d.utility.Vector3dVector(xyz)
        return theirs

    theirs = take()
    table.row("from_arrays, octree included", lambda: zor4data.from_arrays(xyz), "Open3D, no index", take, None, False)
    for spacing in (5.0, 50.0):
        ours = len(cloud.lod(spacing))
        voxels = len(theirs.voxel_down_sample(spacing).points)
        table.row(
            f"level of detail at {spacing:g} m ({ours:,} and {voxels:,} points)",
            lambda spacing=spacing: cloud.lod(spacing),  # type: ignore[misc]
            "Open3D voxel_down_sample",
            lambda spacing=spacing: theirs.voxel_down_sample(spacing),  # type: ignore[misc]
            None,
            False,
        )
    low, high = cloud.bounds
    middle = (low + high) / 2.0
    corners = np.array([middle - 50.00005, middle + 50.00005])
    corners[:, 2] = low[2] - 1, high[2] + 1
    box = open3d.geometry.AxisAlignedBoundingBox(*corners)
    table.row(
        "rectangle of 100 m",
        lambda: cloud.rect(*corners[0, :2], *corners[1, :2]),
        "Open3D, indices in a box",
        lambda: box.get_point_indices_within_bounding_box(theirs.points),
        None,
    )


def main() -> None:
    """Runs all rows."""
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("file", nargs="?", type=Path)
    parser.add_argument("--points", type=int, default=10_000_000)
    parser.add_argument("--rounds", type=int, default=5)
    parser.add_argument("--quick", action="store_true")
    options = parser.parse_args()
    if options.quick:
        options.points, options.rounds = 200_000, 1
    with tempfile.TemporaryDirectory() as folder:
        cloud = zor4data.read(options.file or make_sample(options.points, Path(folder)))
    print(f"{len(cloud):,} points; a view of them takes {bytes_of_view(cloud) / 2**20:.2f} MiB\n")
    table = Table(options.rounds)
    run_numpy(table, cloud)
    run_open3d(table, cloud)


if __name__ == "__main__":
    main()
