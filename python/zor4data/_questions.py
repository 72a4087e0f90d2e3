"""What clouds are asked."""

from __future__ import annotations

import math
from operator import index as to_int
from typing import Any, Iterator

import numpy as np
from numpy.typing import ArrayLike, NDArray

from . import _core
from ._numbers import FARTHEST, read_floats, read_number, refuse_far
from ._query import Query, read_planes


def _read_places(places: ArrayLike, widths: tuple[int, ...], name: str) -> NDArray[np.float64]:
    """Places as an array whose last dimension has one of the widths."""
    array = read_floats(places, name)
    if array.ndim == 0 or array.shape[-1] not in widths:
        wanted = " or ".join(map(str, widths))
        raise ValueError(f"{name} must have {wanted} coordinates in its last dimension, not the shape {array.shape}")
    return array


def _asks_of(query: Query) -> _core.Query:
    """What the library takes for a query."""
    if not isinstance(query, Query):
        raise TypeError(f"a Query is wanted, not {query!r}")
    return query._asks


def _as_rows(places: NDArray[np.float64]) -> NDArray[np.float64]:
    """The same places one under the other."""
    return np.ascontiguousarray(places).reshape(-1, places.shape[-1])


def _in_reach(directions: NDArray[np.float64]) -> NDArray[np.float64]:
    """The same directions, of a length whose square is neither infinite nor nothing."""
    sizes = np.abs(directions).max(axis=1, initial=0.0)
    odd = np.isfinite(sizes) & (sizes > 0.0) & ~((1.0 / FARTHEST < sizes) & (sizes < FARTHEST))
    if not odd.any():
        return directions
    scaled = directions.copy()
    scaled[odd] /= sizes[odd, np.newaxis]
    return scaled


class Batches(Iterator[NDArray[np.int32]]):
    """The answer to a query batch by batch, see `Cloud.batches`. Ends early with `close`, or as a context."""

    def __init__(self, stream: _core.BatchStream) -> None:
        self._stream = stream

    def __next__(self) -> NDArray[np.int32]:
        batch = self._stream.next()
        if batch.size == 0:
            raise StopIteration
        return batch

    def close(self) -> None:
        """Stop the query. There are no batches after it."""
        self._stream.close()

    def __enter__(self) -> Batches:
        return self

    def __exit__(self, *_: object) -> None:
        self.close()


class Questions:
    """The questions that a `Cloud` answers, with int32 indices in the order in which the octree delivers."""

    __slots__ = ()

    _core: _core.Cloud

    def find(self, query: Query) -> NDArray[np.int32]:
        """The indices that answer a query.

        Parameters
        ----------
        query : Query

        Returns
        -------
        ndarray of int32, shape (M,)
        """
        return self._core.find(_asks_of(query))

    def batches(self, query: Query, n: int) -> Batches:
        """The same indices `n` at a time, with memory for no more than two batches.

        Parameters
        ----------
        query : Query
        n : int
            Indices a batch, at least 1; the last batch may be shorter.

        Returns
        -------
        Batches
            An iterator of int32 arrays, each of its own. The query runs in a thread beside.
        """
        count = to_int(n)
        if not 1 <= count <= np.iinfo(np.int32).max:
            raise ValueError(f"n is {n}: a batch holds at least 1 index, and less than 2**31")
        return Batches(_core.BatchStream(self._core, _asks_of(query), count))

    def all(self) -> NDArray[np.int32]:
        """Every point, ascending.

        Returns
        -------
        ndarray of int32, shape (N,)
        """
        return np.arange(len(self._core), dtype=np.int32)  # what the query gives, since no point is ever marked deleted

    def lod(self, spacing: float) -> NDArray[np.int32]:
        """A level of detail: about one point for each cube of the octree of that size.

        Parameters
        ----------
        spacing : float
            Coordinate units. Not above 0, not-a-number, or four times the size of the cloud: every point.

        Returns
        -------
        ndarray of int32, shape (M,)
            Cubes come at their sizes, which are the cloud's divided by powers of two; where the octree ends
            above that size, all points of its leaf come.
        """
        return self.find(Query.lod(spacing))

    def clip(self, planes: ArrayLike) -> NDArray[np.int32]:
        """The points in front of none of the planes.

        Parameters
        ----------
        planes : array_like, shape (P, 4)
            a, b, c, d: a point is in front where a x + b y + c z + d > 0. Coordinate units, finite.

        Returns
        -------
        ndarray of int32, shape (M,)
            The octree decides for whole cubes: a point a few steps of 1/10000 from a plane may come or not. In a
            cloud wider or higher than 214748 cubes are not where their points are: points far from a plane may come,
            and others be missing. `inside`, `nearest` and `pick` are right there, too.
        """
        return self.find(Query.clip(planes))

    def lod_clip(self, spacing: float, planes: ArrayLike) -> NDArray[np.int32]:
        """A level of detail of the points in front of none of the planes.

        Cubes that the planes cut give their point without a look at the planes.

        Parameters
        ----------
        spacing : float
            As for `lod`; but four times the size of the cloud: one point of each leaf.
        planes : array_like, shape (P, 4)
            As for `clip`.

        Returns
        -------
        ndarray of int32, shape (M,)
        """
        return self.find(Query.lod_clip(spacing, planes))

    def rect(self, xmin: float, ymin: float, xmax: float, ymax: float) -> NDArray[np.int32]:
        """The points in a rectangle in plan, its edges included; heights do not matter.

        Parameters
        ----------
        xmin, ymin, xmax, ymax : float
            Coordinate units. None is inside where a minimum is above its maximum. Infinite ones are no bound,
            not-a-number is a ValueError.

        Returns
        -------
        ndarray of int32, shape (M,)
            As for `clip` the octree decides for whole cubes: a point a few steps of 1/10000 from an edge may come or
            not, and in a cloud wider than 214748 points far from it. `inside` is exact.
        """
        return self.find(Query.rect(xmin, ymin, xmax, ymax))

    def near_line(
        self, p1: ArrayLike, p2: ArrayLike, distance: float, *, start: bool = False, end: bool = False
    ) -> NDArray[np.int32]:
        """The points along a line in plan: a profile.

        Parameters
        ----------
        p1, p2 : array_like, shape (2,)
            The ends of the line, coordinate units, up to 1e15.
        distance : float
            How far the corridor reaches to either side, at most 1e15; it ends square at the ends of the line.
        start, end : bool
            Begin with the point exactly at `p1`, and finish with the one exactly at `p2`, if there are such.

        Returns
        -------
        ndarray of int32, shape (M,)
            A point at an end that lies in the corridor too comes twice. Beside the edges of the corridor, and in a
            cloud wider than 214748, the same holds as for `clip`.
        """
        return self.find(Query.near_line(p1, p2, distance, start=start, end=end))

    def inside(self, polygons: Any, *, outside: bool = False) -> NDArray[np.int32]:
        """Exactly the points inside any of the polygons, or outside all of them, in plan.

        Parameters
        ----------
        polygons : object
            Anything with ``__geo_interface__`` (shapely, an outline), a GeoJSON mapping, an array of shape
            (N, 2) (one ring), or several of these, in a sequence, an array or an iterator. Holes count; a point on
            an edge, of a hole too, is inside. Coordinates are finite.
        outside : bool
            The points outside instead.

        Returns
        -------
        ndarray of int32, shape (M,)
            Ascending. The decision is exact for the coordinates of `xyz`.
        """
        return self.find(Query.inside(polygons, outside=outside))

    def pick(
        self, origin: ArrayLike, direction: ArrayLike, angle: float, *, planes: ArrayLike = ()
    ) -> NDArray[np.int32]:
        """The point under a cursor: the nearest along a ray within a cone about it.

        Parameters
        ----------
        origin, direction : array_like, shape (3,) or (..., 3)
            Where rays begin, up to 1e50, and go to; of any length. Broadcast against each other.
        angle : float
            Between the ray and the cone's side, radians, 0 to less than a right angle.
        planes : array_like, shape (P, 4)
            Points in front of one of them are not seen, as for `clip`.

        Returns
        -------
        ndarray of int32, shape () or (...)
            For each ray an index, or -1: no point.
        """
        half = read_number(angle, "angle")
        if not 0.0 <= half < math.pi / 2:
            raise ValueError(f"angle is {angle}: it must be at least 0 and less than a right angle, in radians")
        origins, directions = np.broadcast_arrays(
            _read_places(origin, (3,), "origin"), _read_places(direction, (3,), "direction")
        )
        refuse_far(origins, "origin")
        found = self._core.pick(_as_rows(origins), _in_reach(_as_rows(directions)), math.tan(half), read_planes(planes))
        return found.reshape(origins.shape[:-1])

    def nearest(self, xyz: ArrayLike, max_distance: float = math.inf) -> NDArray[np.int32]:
        """The points nearest to places; of several at the same distance the one of the lowest index.

        Parameters
        ----------
        xyz : array_like, shape (3,) or (..., 3), or (2,) or (..., 2)
            Places, coordinate units, up to 1e50; with two coordinates distances are those in plan.
        max_distance : float
            Coordinate units, included; at least 0.

        Returns
        -------
        ndarray of int32, shape () or (...)
            For each place an index, or -1: no point so near, or a place that is not finite.
        """
        places = _read_places(xyz, (2, 3), "xyz")
        refuse_far(places, "xyz")
        most = read_number(max_distance, "max_distance")
        if not most >= 0.0:
            raise ValueError(f"max_distance is {max_distance}: it must be at least 0")
        return self._core.nearest(_as_rows(places), most).reshape(places.shape[:-1])
