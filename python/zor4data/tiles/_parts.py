"""What comes out of tiles."""

from __future__ import annotations

from dataclasses import dataclass
from pathlib import Path
from typing import Any, Iterator

import numpy as np
from numpy.typing import NDArray

from .._cloud import Cloud
from .._make import read


@dataclass(frozen=True)
class Parts:
    """A folder with one native file a tile, of the points of its core.

    Attributes
    ----------
    folder : Path
    files : tuple of str
        Where no point is left there is no file.
    counts : tuple of int
        Points of each file, 0 where there is none.
    """

    folder: Path
    files: tuple[str, ...]
    counts: tuple[int, ...]

    def __len__(self) -> int:
        return sum(self.counts)

    def clouds(self) -> Iterator[Cloud]:
        """The clouds one after another, those without points left out."""
        for file, count in zip(self.files, self.counts):
            if count:
                yield read(self.folder / file, kind="native")

    def xyz(self) -> NDArray[np.float64]:
        """All coordinates, tile after tile, shape (N, 3)."""
        return np.concatenate([np.empty((0, 3))] + [cloud.xyz() for cloud in self.clouds()])


@dataclass(frozen=True)
class Points:
    """Points of several tiles.

    Attributes
    ----------
    records : ndarray
        As `zor4data.Cloud.points`, tile after tile.
    origin : tuple of float
        Where all of them count from.
    """

    records: NDArray[np.void]
    origin: tuple[float, ...]

    def __len__(self) -> int:
        return len(self.records)

    def xyz(self) -> NDArray[np.float64]:
        """Coordinates, shape (N, 3)."""
        steps = np.stack([self.records[axis] for axis in "xyz"], axis=1)
        places: NDArray[np.float64] = steps / 10000.0 + np.array(self.origin)
        return places

    def rgb(self) -> NDArray[Any]:
        """Colours, uint8, shape (N, 3). Points without colour: ValueError."""
        if "r" not in (self.records.dtype.names or ()):
            raise ValueError("the points have no colours")
        return np.stack([self.records[axis] for axis in "rgb"], axis=1)
