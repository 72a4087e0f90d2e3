"""Surveys cut into tiles, for the tests."""

from __future__ import annotations

import json
from hashlib import sha256
from pathlib import Path
from typing import Any, Callable

import numpy as np
from conftest import Array

import zor4data
import zor4data.tiles
from zor4data.tiles import Tiles
from zor4data.tiles._grid import find_margin
from zor4data.tiles._seal import calc_seal

Run = Callable[..., None]


class Survey:
    """A file, and what it is cut into, each once."""

    def __init__(self, file: Path, run_program: Run) -> None:
        self.file = file
        self._run = run_program

    def cut(self, size: float, buffer: float = 67.0) -> Tiles:
        """Its tiles."""
        made = self.file.with_suffix(f".{size:g}.{buffer:g}")
        if not made.exists():
            self._run("tile", self.file, "-o", made, "--size", size, "--buffer", buffer)
        return zor4data.tiles.open(made)

    def whole(self) -> zor4data.Cloud:
        """All its points as one cloud, none removed: a tile that has everything, in its buffer what is beyond 0."""
        tiles = self.cut(1.0e6, 1.0e5)
        return zor4data.read(tiles.folder / tiles.tiles[0].file)


def sort(rows: Array) -> Array:
    """Rows in an order of their own."""
    ordered: Array = rows[np.lexsort(rows.T)]
    return ordered


def sort_steps(records: Any) -> Array:
    """Records as rows of whole numbers, sorted: what has to be equal to the last bit."""
    return sort(np.stack([records[name].astype(np.int64) for name in records.dtype.names], axis=1))


def join_steps(parts: zor4data.tiles.Parts) -> Array:
    """The records of all files, sorted."""
    return sort_steps(np.concatenate([cloud.points for cloud in parts.clouds()]))


def hash_files(folder: Path) -> dict[str, str]:
    """Every file of a folder."""
    return {path.name: sha256(path.read_bytes()).hexdigest() for path in folder.iterdir()}


def write_manifest(file: Path, manifest: dict[str, Any]) -> None:
    """A manifest as `zorcld` would have written it: its margin and its seal are those of the rest."""
    buffer, metres = manifest["options"]["buffer"], manifest["metres_per_unit"]
    stated = {**manifest, "margin": find_margin(tuple(manifest["origin"]), buffer, metres)}
    file.write_text(json.dumps({**stated, "seal": calc_seal(stated)}), encoding="utf-8")
