"""What is done with one tile, by whoever does it: all of it can be sent to another process."""

from __future__ import annotations

import os
from dataclasses import dataclass
from pathlib import Path
from typing import Any, Callable, Optional

import numpy as np
from numpy.typing import NDArray

from .. import _core
from .._cloud import Cloud, wrap
from .._errors import ReadError
from .._make import read
from .._query import Query
from .._unit import Unit
from ._manifest import Core, Tile
from ._thin import choose_thinned

Function = Callable[[Cloud, Core], Any]


def _find_change(path: Path, tile: Tile) -> str:
    """What its file has that the manifest does not say; empty: it is the file of then, byte for byte."""
    size = path.stat().st_size
    if size != tile.bytes:
        return f"{size} bytes, not {tile.bytes}"
    xxh128 = _core.hash_file(os.fsencode(path))
    return "" if xxh128 == tile.xxh128 else f"xxh128 {xxh128}, not {tile.xxh128}"


@dataclass(frozen=True)
class Task:
    """Something to do with the cloud of any tile."""

    folder: Path
    unit: Optional[Unit]

    def load(self, tile: Tile) -> Cloud:
        """The tile with its buffer, and with its unit, which native files do not keep.

        Raises
        ------
        ReadError
            Where it is another file than its manifest tells of.
        """
        path = self.folder / tile.file
        try:
            change = _find_change(path, tile)
        except OSError as error:
            raise ReadError(str(path), f"it cannot be read: {error.strerror}", 0) from error
        if not change:
            cloud = read(path, kind="native")
            if len(cloud) == tile.points + tile.buffer_points:
                return wrap(cloud._core, self.unit)
            change = f"{len(cloud)} points, not {tile.points + tile.buffer_points}"
        raise ReadError(str(path), f"it is not the tile that its manifest tells of: {change}", 0)

    def __call__(self, tile: Tile) -> Any:
        raise NotImplementedError


@dataclass(frozen=True)
class Map(Task):
    """A user's function."""

    function: Function
    buffer: Optional[float]

    def __call__(self, tile: Tile) -> Any:
        cloud = self.load(tile)
        if self.buffer is not None:
            cloud = cloud.take(tile.core.mask(cloud, self.buffer))
        return self.function(cloud, tile.core)


@dataclass(frozen=True)
class Write(Task):
    """Points of the core, into a file of the tile's name, which appears whole or not at all."""

    out: Path

    def choose(self, cloud: Cloud, core: Core) -> NDArray[np.bool_]:
        """Which points of the cloud are to be in the file, but for those beside the core."""
        raise NotImplementedError

    def __call__(self, tile: Tile) -> int:
        cloud = self.load(tile)
        kept = cloud.take(self.choose(cloud, tile.core) & tile.core.mask(cloud))
        path = self.out / tile.file
        if len(kept) == 0:
            path.unlink(missing_ok=True)  # of an earlier run: a native file holds at least one point
        else:
            kept.write(path)
        return len(kept)


@dataclass(frozen=True)
class Ground(Write):
    """The ground."""

    unit_scale: Optional[float]

    def choose(self, cloud: Cloud, core: Core) -> NDArray[np.bool_]:
        return cloud.ground_mask(unit_scale=self.unit_scale)


@dataclass(frozen=True)
class Thin(Write):
    """One point for each cube of a grid."""

    spacing: float

    def choose(self, cloud: Cloud, core: Core) -> NDArray[np.bool_]:
        return choose_thinned(cloud, self.spacing)


@dataclass(frozen=True)
class Find(Task):
    """The records of the core that answer a query."""

    query: Query

    def __call__(self, tile: Tile) -> NDArray[np.void]:
        cloud = self.load(tile)
        found = np.sort(cloud.find(self.query))
        chosen: NDArray[np.void] = cloud.points[found[tile.core.mask(cloud)[found]]]
        return chosen


@dataclass(frozen=True)
class Count(Task):
    """How many points of the core lie in a rectangle, by their coordinates alone.

    A cloud's own query compares in whole steps, and by the cubes of its octree: of points on an edge it may leave some.
    """

    rect: tuple[float, float, float, float]

    def __call__(self, tile: Tile) -> int:
        cloud = self.load(tile)
        x, y, _ = cloud.xyz(tile.core.mask(cloud)).T
        xmin, ymin, xmax, ymax = self.rect
        return int(((xmin <= x) & (x <= xmax) & (ymin <= y) & (y <= ymax)).sum())


@dataclass(frozen=True)
class Share(Task):
    """An even share of the core's records."""

    step: int

    def __call__(self, tile: Tile) -> NDArray[np.void]:
        cloud = self.load(tile)
        return cloud.points[tile.core.mask(cloud)][:: self.step]
