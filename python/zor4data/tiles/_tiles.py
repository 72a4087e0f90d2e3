"""The tiles of a survey."""

from __future__ import annotations

import math
import os
from pathlib import Path
from typing import Any, Callable, Iterable, Optional, Union

import numpy as np
from numpy.typing import NDArray

from .._cloud import COLOR_POINT, POINT
from .._facts import PathLike, bytes_of_path
from .._make import from_arrays
from .._numbers import read_bound, read_number
from .._outline import Outline
from .._polygons import read_polygons
from .._query import Query
from .._unit import read_scale
from ._grid import find_margin
from ._manifest import MANIFEST, Manifest, Tile, read_manifest
from ._parts import Parts, Points
from ._repeat import write_command, write_map_command
from ._run import Job, run
from ._tasks import Count, Find, Function, Ground, Map, Share, Task, Thin, Write
from ._tidy import remove_abandoned

Repeat = Callable[[Tile], str]

#: Metres of buffer that make the ground exact: 3 + 5 + 9 + 17 + 33, the windows of the filter.
GROUND_BUFFER = 67.0
#: The step of coordinates: cubes that are smaller would each hold one place.
LEAST_SPACING = 0.0001
#: Points that an outline is made of at most: of more, a share.
MAX_OUTLINE = 10_000_000
#: Bytes a task takes: of its own, and a point.
TASK_BYTES, POINT_BYTES = 100_000_000, 150


def _path_from(path: PathLike) -> Path:
    """A path as this package takes it."""
    return Path(os.fsdecode(bytes_of_path(path)))


def open(folder: PathLike) -> Tiles:
    """The tiles in a folder that `zorcld tile` has made. No tile is opened.

    Parameters
    ----------
    folder : str, bytes or os.PathLike
        The folder, or its manifest.

    Raises
    ------
    ReadError
        Where the manifest is missing, or is none.
    """
    manifest = read_manifest(_path_from(folder))
    return Tiles(manifest, manifest.tiles)


class Tiles:
    """Tiles of a survey, made by `zor4data.tiles.open`.

    What takes a `client`, a ``distributed.Client``, is done by its workers, who must see the tiles under the same path;
    without one in sequence, here. A tile that fails does not stop the others: it is told on standard error with the
    command that repeats it, and at the end `TilesError` is raised.
    """

    def __init__(self, manifest: Manifest, tiles: tuple[Tile, ...]) -> None:
        self._manifest = manifest
        self._tiles = tiles

    def __len__(self) -> int:
        return len(self._tiles)

    def __repr__(self) -> str:
        return f"<zor4data.tiles.Tiles: {len(self)} tiles of {self.count():,} points; {self.folder}>"

    @property
    def folder(self) -> Path:
        """Where the tiles lie."""
        return self._manifest.folder

    @property
    def tiles(self) -> tuple[Tile, ...]:
        """Each tile, by row and column."""
        return self._tiles

    @property
    def buffer(self) -> float:
        """How far around their cores tiles have points, coordinate units."""
        return self._manifest.buffer

    def only(self, files: Union[str, Iterable[str]]) -> Tiles:
        """Some of the tiles, by their files; a file that is none of theirs: ValueError."""
        wanted = {files} if isinstance(files, str) else set(files)
        missing = wanted - {tile.file for tile in self._tiles}
        if missing:
            raise ValueError(f"there is no tile {min(missing)}")
        return Tiles(self._manifest, tuple(tile for tile in self._tiles if tile.file in wanted))

    def map(self, function: Function, client: Any = None, buffer: Optional[float] = None) -> list[Any]:
        """What a function makes of each tile.

        Parameters
        ----------
        function : callable
            Takes a `zor4data.Cloud`, the tile with what lies around it, and its `Core`, which has `Core.mask`.
        client : distributed.Client, optional
        buffer : float, optional
            How far around the core points are wanted, coordinate units; by default as far as there are some.

        Returns
        -------
        list
            In the order of `tiles`.
        """
        reach = None if buffer is None else read_number(buffer, "buffer")
        if reach is not None and not 0.0 <= reach <= self.buffer:
            raise ValueError(f"buffer is {buffer}: the tiles were cut with {self.buffer:g}")
        arguments = "" if reach is None else f", buffer={reach!r}"

        def repeat(tile: Tile) -> str:
            return write_map_command(self.folder, tile.file, function, arguments)

        return self._run("map", Map(self.folder, self._manifest.unit, function, reach), repeat, self._tiles, client)

    def ground(self, out: PathLike, client: Any = None, *, unit_scale: Optional[float] = None) -> Parts:
        """The ground of each core as a native file of the tile's name: what the whole survey would keep there.

        Parameters
        ----------
        out : str, bytes or os.PathLike
            A folder, another one than that of the tiles. Made where it is missing.
        client : distributed.Client, optional
        unit_scale : float, optional
            How many metres a coordinate unit is, as for `zor4data.Cloud.ground`. By default what the files state,
            else 1.

        Returns
        -------
        Parts

        Raises
        ------
        ValueError
            Where the buffer is below the 67 metres that make it exact, or what was added to it for the rounding of
            floats is too little for `unit_scale`; where x and y are angles.
        """
        scale, _ = read_scale(unit_scale, self._manifest.unit)
        self._check_reach(scale)
        arguments = [] if unit_scale is None else [f"unit_scale={scale!r}"]
        task = Ground(self.folder, self._manifest.unit, self._make_out(out), unit_scale)
        return self._write("ground", task, client, arguments)

    def thin(self, spacing: float, out: PathLike, client: Any = None) -> Parts:
        """One point for each cube of a grid of its own, as native files: the same points for any tiling.

        Parameters
        ----------
        spacing : float
            Size of the cubes, coordinate units, from 1/10000 to the buffer. They count from 0 of the coordinates; the
            point nearest the middle stays.
        out, client
            As for `ground`.

        Returns
        -------
        Parts
        """
        size = read_number(spacing, "spacing")
        if not LEAST_SPACING <= size <= self.buffer:
            raise ValueError(
                f"spacing is {spacing}: it must be at least {LEAST_SPACING}, and at most the buffer, {self.buffer:g}"
            )
        task = Thin(self.folder, self._manifest.unit, self._make_out(out), size)
        return self._write("thin", task, client, [f"spacing={size!r}"])

    def count(self, rect: Optional[tuple[float, float, float, float]] = None, client: Any = None) -> int:
        """How many points there are, or in a rectangle xmin, ymin, xmax, ymax, its edges included.

        Points are judged by their coordinates alone, as by ``zorcld count``; `zor4data.Cloud.rect` compares in whole
        steps of 1/10000, so that it may differ in points on an edge.

        Only tiles that the edges cut are opened.
        """
        if rect is None:
            return sum(tile.points for tile in self._tiles)
        xmin, ymin, xmax, ymax = (read_bound(value, "rect") for value in rect)
        edges = xmin, ymin, xmax, ymax
        whole = sum(tile.points for tile in self._tiles if tile.lies_in(*edges))
        cut = tuple(tile for tile in self._tiles if tile.touches(*edges) and not tile.lies_in(*edges))
        repeat = self._repeat(f"count({edges!r})")
        counts: list[int] = self._run("count", Count(self.folder, self._manifest.unit, edges), repeat, cut, client)
        return whole + sum(counts)

    def inside(self, polygons: Any, client: Any = None) -> Points:
        """Exactly the points inside any of the polygons, as `zor4data.Cloud.inside` takes them.

        Only tiles near a polygon are opened.
        """
        parts = [(ring, *holes) for ring, holes in read_polygons(polygons) if len(ring)]
        boxes = [(*part[0].min(axis=0), *part[0].max(axis=0)) for part in parts]
        near = tuple(tile for tile in self._tiles if any(tile.touches(*box) for box in boxes))
        rings = [[ring.tolist() for ring in part] for part in parts]
        shape = {"type": "MultiPolygon", "coordinates": rings}
        repeat = self._repeat(f"inside({shape!r})")
        found = self._run("inside", Find(self.folder, self._manifest.unit, Query.inside(shape)), repeat, near, client)
        return Points(self._join(found), self._manifest.origin)

    def outline(self, distance: float, client: Any = None) -> Outline:
        """The outline of all cores, see `zor4data.Cloud.outline`.

        Points are gathered in one cloud, at most ten million: of more, an even share of each tile. Where they lie alike
        their order decides where it goes, so that it may differ a little from that of one cloud.
        """
        reach = read_number(distance, "distance")
        if not reach > 0.0:
            raise ValueError(f"distance is {distance}: it must be above 0")
        step = max(1, math.ceil(self.count() / MAX_OUTLINE))
        repeat = self._repeat(f"outline({reach!r})")
        records = self._run("outline", Share(self.folder, self._manifest.unit, step), repeat, self._tiles, client)
        origin = self._manifest.origin
        return from_arrays(Points(self._join(records), origin).xyz(), origin=origin).outline(reach)

    # --- how it is done --------------------------------------------------------------------------

    def _join(self, records: list[Any]) -> NDArray[np.void]:
        """Records of several tiles, of none, too."""
        return np.concatenate([np.empty(0, COLOR_POINT if self._manifest.has_color else POINT), *records])

    def _check_reach(self, scale: float) -> None:
        """Refuse tiles that do not have all points that the ground of their cores goes by."""
        cut = self._manifest
        needed = GROUND_BUFFER / scale
        if self.buffer < needed * (1.0 - 1e-12):
            raise ValueError(
                f"the tiles were cut with a buffer of {self.buffer:g}: the ground needs {needed:g}"
                + (f", {GROUND_BUFFER:g} metres" if scale != 1.0 else "")
            )
        spare, margin = self.buffer + cut.margin - needed, find_margin(cut.origin, self.buffer, scale)
        if spare < margin - needed * 1e-11:
            raise ValueError(
                f"the tiles were cut with a buffer of {self.buffer:g} and a margin of {cut.margin:g}: where a unit is "
                f"{scale:g} metres, floats round so much there that the ground needs {needed + margin:g} together"
            )

    def _make_out(self, out: PathLike) -> Path:
        """The folder for files of the tiles' names."""
        folder = _path_from(out).resolve()
        if folder == self.folder:
            raise ValueError(f"{folder}: the files would take the place of the tiles")
        folder.mkdir(parents=True, exist_ok=True)
        return folder

    def _repeat(self, call: str) -> Repeat:
        """The command that does a tile again, by a method and its arguments."""
        return lambda tile: write_command(self.folder, tile.file, call)

    def _write(self, name: str, task: Write, client: Any, arguments: list[str]) -> Parts:
        files = tuple(tile.file for tile in self._tiles)
        remove_abandoned(task.out, files)
        try:
            repeat = self._repeat(f"{name}({', '.join([*arguments, f'out={str(task.out)!r}'])})")
            counts = self._run(name, task, repeat, self._tiles, client)
        finally:
            remove_abandoned(task.out, files)
        return Parts(task.out, files, tuple(counts))

    def _run(self, name: str, task: Task, repeat: Repeat, tiles: tuple[Tile, ...], client: Any) -> list[Any]:
        job = Job(name, task, repeat, lambda tile: TASK_BYTES + POINT_BYTES * (tile.points + tile.buffer_points))
        return run(job, tiles, client, str(self.folder / MANIFEST))
