"""What the manifest of a folder of tiles says."""

from __future__ import annotations

import sys
from dataclasses import dataclass
from pathlib import Path
from typing import NamedTuple, Optional

import numpy as np
from numpy.typing import NDArray

from .._cloud import Cloud
from .._errors import ReadError
from .._unit import Unit
from ._field import Field, FieldError, parse_json
from ._grid import Grid, find_margin
from ._seal import calc_seal

MANIFEST = "manifest.json"
FORMAT = "zor4data-tiles"
VERSION = 1

#: Whole numbers that every reader of JSON keeps; a cloud's points; what no coordinate and no size comes near.
MOST = 2**53
MOST_POINTS = 2**31 - 1
FARTHEST = 1.0e12

Corners = tuple[tuple[float, ...], tuple[float, ...]]


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
    bytes : int
        Of the file.
    xxh128 : str
        Of the file, as ``xxh128sum`` prints it.
    """

    file: str
    core: Core
    points: int
    buffer_points: int
    bounds: Corners
    bytes: int
    xxh128: str

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


def _read_corners(field: Field) -> Corners:
    """The least and the greatest x, y, z."""
    low, high = (tuple(place.number(-FARTHEST, FARTHEST) for place in field.at(name).row(3)) for name in ("min", "max"))
    if any(least > greatest for least, greatest in zip(low, high)):
        raise field.fail("has a minimum above its maximum")
    return low, high


def _read_tile(field: Field) -> tuple[Tile, tuple[int, int]]:
    """A tile, and its column and row."""
    file = field.at("file").text()
    column, row = (field.at(name).whole(-(2**31), 2**31 - 1) for name in ("column", "row"))
    core = Core(*(border.number(-FARTHEST, FARTHEST) for border in field.at("core").row(4)))
    points = field.at("points").whole(1, MOST_POINTS)
    around = field.at("buffer_points").whole(0, MOST_POINTS - points)
    bounds = _read_corners(field.at("bounds"))
    size, xxh128 = field.at("bytes").whole(0, MOST), field.at("xxh128").hash()
    return Tile(file, core, points, around, bounds, size, xxh128), (column, row)


def _check_tile(tile: Tile, cell: tuple[int, int], grid: Grid, field: Field) -> None:
    """What its fields say together with those of all tiles."""
    if tile.file != "tile_{}_{}.cld".format(*cell):
        raise field.at("file").fail("is not the name of that column and row")
    if tile.core != grid.core(*cell):
        raise field.at("core").fail("is not that of column, row, size and origin")
    (west, south, _), (east, north, _) = tile.bounds
    xmin, ymin, xmax, ymax = tile.core
    if not (xmin <= west and ymin <= south and east < xmax and north < ymax):
        raise field.at("bounds").fail("lie beyond the core")


def _read_tiles(all_of_it: Field, grid: Grid) -> tuple[Tile, ...]:
    """The tiles, of which there is one, and no two of one column and row."""
    tiles: dict[tuple[int, int], Tile] = {}
    for field in all_of_it.at("tiles").each():
        tile, cell = _read_tile(field)
        _check_tile(tile, cell, grid, field)
        if cell in tiles:
            raise field.fail("is of a column and row that another tile has")
        tiles[cell] = tile
    if not tiles:
        raise all_of_it.at("tiles").fail("is empty")
    return tuple(tiles.values())


def _read_source(field: Field) -> int:
    """How many points of a file were read."""
    field.at("file").text()
    field.at("bytes").whole(0, MOST)
    field.at("xxh128").hash()
    return field.at("points").whole(0, MOST)


def _read_origin(field: Field) -> tuple[float, ...]:
    """x, y, z, each a float of 32 bits."""
    origin = []
    for place in field.row(3):
        origin.append(place.number(-FARTHEST, FARTHEST))
        if float(np.float32(origin[-1])) != origin[-1]:
            raise place.fail("is no float")
    return tuple(origin)


def _read_metres(field: Field) -> Optional[float]:
    """Of a unit; None: not known."""
    return None if field.value is None else field.number(sys.float_info.min, FARTHEST)


def _make_unit(metres: Optional[float], height: Optional[float], is_angle: bool) -> Optional[Unit]:
    """The unit that the files stated, or None."""
    if is_angle:
        return Unit("an angle", None, height, True)
    if metres is None:
        return None if height is None else Unit("", None, height, False)
    return Unit(f"{metres:g} m", metres, height, False)


def _check_sums(manifest: Manifest, read: int, removed: int, bounds: Corners, is_exact: bool, data: Field) -> None:
    """What is said of all tiles is what they say together."""
    points = sum(tile.points for tile in manifest.tiles)
    if points != manifest.points:
        raise data.at("points").fail(f"is not the sum of the tiles' points, {points}")
    low = tuple(map(min, zip(*(tile.bounds[0] for tile in manifest.tiles))))
    high = tuple(map(max, zip(*(tile.bounds[1] for tile in manifest.tiles))))
    if (low, high) != bounds:
        raise data.at("bounds").fail("are not those of all tiles")
    if read != points + removed or (removed and not is_exact):
        raise data.at("duplicates_removed").fail("does not fit the points of sources and tiles")


def _check_margin(manifest: Manifest, metres: Optional[float], data: Field) -> None:
    """The margin follows from the rest."""
    margin = find_margin(manifest.origin, manifest.buffer, metres) if manifest.buffer > 0.0 else 0.0
    if manifest.margin != margin:
        raise data.at("margin").fail(f"is not that of origin, buffer and unit, {margin:g}")


def _check_seal(data: Field) -> None:
    """Nothing was changed since `zorcld` has written it."""
    seal = data.at("seal")
    if seal.hash() != calc_seal(data.value):
        raise seal.fail("is not that of the rest, which was changed by hand")


def _read_fields(data: Field, folder: Path) -> Manifest:
    """FieldError for what is missing, of another type, out of range, or contradicts the rest."""
    data.at("program").text()
    options = data.at("options")
    dedupe = options.at("dedupe")
    if dedupe.text() not in ("none", "exact"):
        raise dedupe.fail('is neither "none" nor "exact"')
    size, buffer = options.at("size").number(0.01, 1.0e6), options.at("buffer").number(0.0, 1.0e5)
    if "unit_scale" in options.value:  # given by hand
        for scale in options.at("unit_scale").row(2):
            scale.number(1.0e-6, 1.0e6)
    margin, origin = data.at("margin").number(0.0, FARTHEST), _read_origin(data.at("origin"))
    has_color = data.at("color").truth()
    metres, height = _read_metres(data.at("metres_per_unit")), _read_metres(data.at("metres_per_height_unit"))
    unit = _make_unit(metres, height, data.at("angles").truth())
    points, removed = data.at("points").whole(1, MOST), data.at("duplicates_removed").whole(0, MOST)
    bounds = _read_corners(data.at("bounds"))
    read = sum(map(_read_source, data.at("sources").each()))
    try:
        grid = Grid(size, buffer, origin, metres)
    except ValueError as error:
        raise options.at("size").fail(str(error)) from None
    tiles = _read_tiles(data, grid)
    manifest = Manifest(folder, tiles, points, size, buffer, margin, origin, has_color, unit)
    _check_sums(manifest, read, removed, bounds, dedupe.value == "exact", data)
    _check_margin(manifest, metres, data)
    return manifest


def read_manifest(path: Path) -> Manifest:
    """Read the manifest of a folder, or that of this name.

    Raises
    ------
    ReadError
        Where it cannot be read, is none, or says what cannot be: of its numbers every sum and every core is compared.
    """
    file = (path / MANIFEST if path.is_dir() else path).resolve()
    try:
        data = parse_json(file.read_bytes())
    except OSError as error:
        raise ReadError(str(file), f"it cannot be read: {error.strerror}", 0) from error
    except ValueError as error:
        raise ReadError(str(file), "it is no manifest of tiles", 0) from error
    if not isinstance(data, dict) or data.get("format") != FORMAT:
        raise ReadError(str(file), "it is no manifest of tiles", 0)
    version = data.get("format_version")
    if isinstance(version, bool) or version != VERSION:
        raise ReadError(str(file), "it is a manifest of another version of the format", 0)
    try:
        manifest = _read_fields(Field(data), file.parent)
        _check_seal(Field(data))
        return manifest
    except FieldError as error:
        raise ReadError(str(file), f"it is damaged: {error}", 0) from None
