"""What the manifest of a folder of tiles says."""

from __future__ import annotations

import json
import os
from dataclasses import dataclass
from pathlib import Path
from typing import Any, NamedTuple, Optional

import numpy as np
from numpy.typing import NDArray

from .._cloud import Cloud
from .._errors import ReadError
from .._unit import Unit

MANIFEST = "manifest.json"
FORMAT = "zor4data-tiles"
VERSION = 1


class Core(NamedTuple):
    """A rectangle in plan, half open: its lower borders belong to it. Coordinate units."""

    xmin: float
    ymin: float
    xmax: float
    ymax: float

    def mask(self, cloud: Cloud, buffer: float = 0.0) -> NDArray[np.bool_]:
        """Which points of a cloud lie in it, or up to `buffer` units beside it, in x and in y.

        Parameters
        ----------
        cloud : Cloud
        buffer : float
            Coordinate units.

        Returns
        -------
        ndarray of bool, shape (N,)
        """
        points, origin = cloud.points, cloud.origin
        chosen = np.ones(len(cloud), dtype=np.bool_)
        for axis, low, high, start in (("x", self.xmin, self.xmax, origin[0]), ("y", self.ymin, self.ymax, origin[1])):
            steps = points[axis]
            chosen &= steps >= np.ceil((low - buffer - start) * 10000.0)
            chosen &= steps < np.ceil((high + buffer - start) * 10000.0)
        return chosen


@dataclass(frozen=True)
class Tile:
    """A tile: its file, its core, and how many points it has.

    Attributes
    ----------
    file : str
        Beside the manifest.
    core : Core
    points, buffer_points : int
        In the core, and around it.
    bounds : tuple of tuple of float
        Least and greatest x, y, z of the points in the core.
    """

    file: str
    core: Core
    points: int
    buffer_points: int
    bounds: tuple[tuple[float, ...], tuple[float, ...]]

    def touches(self, xmin: float, ymin: float, xmax: float, ymax: float) -> bool:
        """Whether a point of the core may lie in a rectangle, its edges included."""
        low, high = self.bounds
        return bool(low[0] <= xmax and xmin <= high[0] and low[1] <= ymax and ymin <= high[1])

    def lies_in(self, xmin: float, ymin: float, xmax: float, ymax: float) -> bool:
        """Whether all points of the core lie in a rectangle."""
        low, high = self.bounds
        return bool(xmin < low[0] and high[0] < xmax and ymin < low[1] and high[1] < ymax)


@dataclass(frozen=True)
class Manifest:
    """What is known of all tiles."""

    folder: Path
    tiles: tuple[Tile, ...]
    points: int
    size: float
    buffer: float
    margin: float
    origin: tuple[float, ...]
    has_color: bool
    unit: Optional[Unit]


def _unit_from(data: Any) -> Optional[Unit]:
    """The unit that the files stated, or None."""
    metres, height = (
        None if data[name] is None else float(data[name]) for name in ("metres_per_unit", "metres_per_height_unit")
    )
    if data["angles"]:
        return Unit("an angle", None, height, True)
    return None if metres is None else Unit(f"{metres:g} m", metres, height, False)


def _tile_from(entry: Any) -> Tile:
    """A tile as the manifest has it; its file lies beside it, whatever its name says."""
    low, high = entry["bounds"]["min"], entry["bounds"]["max"]
    return Tile(
        os.path.basename(entry["file"]),
        Core(*map(float, entry["core"])),
        int(entry["points"]),
        int(entry["buffer_points"]),
        (tuple(map(float, low)), tuple(map(float, high))),
    )


def read_manifest(path: Path) -> Manifest:
    """Read the manifest of a folder, or that of this name."""
    file = (path / MANIFEST if path.is_dir() else path).resolve()
    try:
        data = json.loads(file.read_bytes())
    except OSError as error:
        raise ReadError(str(file), f"it cannot be read: {error.strerror}", 0) from error
    except ValueError as error:
        raise ReadError(str(file), "it is no manifest of tiles", 0) from error
    if not isinstance(data, dict) or data.get("format") != FORMAT:
        raise ReadError(str(file), "it is no manifest of tiles", 0)
    if data.get("format_version") != VERSION:
        raise ReadError(str(file), "it is a manifest of another version of the format", 0)
    try:
        return Manifest(
            file.parent,
            tuple(map(_tile_from, data["tiles"])),
            int(data["points"]),
            float(data["options"]["size"]),
            float(data["options"]["buffer"]),
            float(data["margin"]),
            tuple(map(float, data["origin"])),
            bool(data["color"]),
            _unit_from(data),
        )
    except (KeyError, TypeError, ValueError) as error:
        raise ReadError(str(file), f"it is damaged: {error!r}", 0) from error
