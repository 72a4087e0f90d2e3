"""Clouds and files that the tests share."""

from __future__ import annotations

import os
import shutil
import subprocess
import sys
from pathlib import Path
from typing import Any, Callable, Iterator, Optional

import numpy as np
import pytest
from numpy.typing import NDArray

import zor4data

Array = NDArray[Any]


def scatter(count: int, seed: int, shape: str = "box") -> Array:
    """Random coordinates in whole steps of 1/10000, near (500, 4000, 20)."""
    rng = np.random.default_rng(seed)
    size = {"box": (60.0, 40.0, 20.0), "flat": (60.0, 40.0, 0.0), "clumps": (3.0, 3.0, 3.0)}[shape]
    xyz: Array = rng.uniform(0.0, 1.0, (count, 3)) * size
    if shape == "clumps":
        xyz += rng.integers(0, 5, (count, 3)) * 12.0
    return np.round(xyz, 4) + (500.0, 4000.0, 20.0)


def landscape(count: int, seed: int = 1) -> tuple[Array, Array]:
    """A hilly square of about four points a square metre with houses on it, and its colours."""
    rng = np.random.default_rng(seed)
    side = (count / 4.0) ** 0.5
    x, y = rng.uniform(0.0, side, (2, count))
    z = 3.0 * np.sin(x / 17.0) + 2.0 * np.cos(y / 13.0)
    house = (np.mod(x, 25.0) < 9.0) & (np.mod(y, 25.0) < 9.0)
    z[house] += 6.0
    rgb = np.stack([80 + 120 * house, 140 - 40 * house, 60 + 0 * house], axis=1).astype(np.uint8)
    return np.stack([x, y, z], axis=1).round(4), rgb


def write_ply(path: Path, xyz: Array, rgb: Optional[Array] = None) -> Path:
    """A binary PLY file with float coordinates."""
    names = [(name, "<f4") for name in "xyz"]
    header = ["ply", "format binary_little_endian 1.0", f"element vertex {len(xyz)}"]
    header += [f"property float {name}" for name in "xyz"]
    if rgb is not None:
        names += [(name, "u1") for name in ("red", "green", "blue")]
        header += [f"property uchar {name}" for name in ("red", "green", "blue")]
    rows = np.zeros(len(xyz), dtype=names)
    for k, name in enumerate("xyz"):
        rows[name] = xyz[:, k]
    if rgb is not None:
        for k, name in enumerate(("red", "green", "blue")):
            rows[name] = rgb[:, k]
    path.write_bytes("\n".join(header + ["end_header", ""]).encode() + rows.tobytes())
    return path


@pytest.fixture(scope="session")
def terrain() -> zor4data.Cloud:
    """A landscape of 40,000 points with colours."""
    return zor4data.from_arrays(*landscape(40000))


@pytest.fixture(scope="session")
def program() -> Path:
    """The command-line host of the same library."""
    name = os.environ.get("ZOR4DATA_HOST") or shutil.which("zorcld")
    if not name:
        pytest.skip("zorcld is not here: ZOR4DATA_HOST names it")
    return Path(name)


@pytest.fixture(scope="session")
def run_program(program: Path) -> Callable[..., None]:
    """Runs the command-line host."""

    def run(*arguments: object) -> None:
        subprocess.run([program, *map(str, arguments)], check=True, stdout=subprocess.DEVNULL)

    return run


@pytest.fixture(scope="session")
def real_files() -> Path:
    """Files as other programs write them."""
    beside = Path(__file__).resolve().parents[3] / "shared" / "data"
    folder = Path(os.environ.get("ZOR4DATA_TEST_DATA") or beside)
    if not folder.is_dir():
        pytest.skip("real files are not here: ZOR4DATA_TEST_DATA names their folder")
    return folder


@pytest.fixture
def unasked() -> Iterator[None]:
    """No thread is asked to let go of the interpreter: one that has it keeps it until it lets go itself."""
    before = sys.getswitchinterval()
    sys.setswitchinterval(100.0)
    yield
    sys.setswitchinterval(before)
