"""The cloud."""

from __future__ import annotations

import math
import os
import pickle
from typing import Any, Callable, Iterator, Optional, SupportsIndex, Union

import numpy as np
from numpy.typing import ArrayLike, DTypeLike, NDArray

from . import _core
from ._errors import make_write_error
from ._facts import PathLike, Progress, bytes_of_path
from ._index import read_index, shape_of
from ._outline import Outline
from ._query import Query, read_planes

Index = Union[ArrayLike, slice]

_XYZ = ["x", "y", "z"]
#: Record of a point, as the cloud itself holds it.
POINT = np.dtype({"names": _XYZ, "formats": ["<i4"] * 3, "itemsize": 12})
#: Record of a point with colour; its last byte is without meaning.
COLOR_POINT = np.dtype(
    {
        "names": _XYZ + ["r", "g", "b"],
        "formats": ["<i4"] * 3 + ["u1"] * 3,
        "offsets": [0, 4, 8, 12, 13, 14],
        "itemsize": 16,
    }
)


def _read_places(places: ArrayLike, widths: tuple[int, ...], name: str) -> NDArray[np.float64]:
    """Places as an array whose last dimension has one of the widths."""
    array = np.asarray(places, dtype=np.float64)
    if array.ndim == 0 or array.shape[-1] not in widths:
        wanted = " or ".join(map(str, widths))
        raise ValueError(f"{name} must have {wanted} coordinates in its last dimension, not the shape {array.shape}")
    return array


def _as_rows(places: NDArray[np.float64]) -> NDArray[np.float64]:
    """The same places one under the other."""
    return np.ascontiguousarray(places).reshape(-1, places.shape[-1])


class Cloud:
    """A cloud of points in memory, with an octree over them. It never changes.

    Made by `zor4data.read` and `zor4data.from_arrays`. A point is known by its index, a position in `points`;
    the octree orders them, not the file. Coordinates are kept in steps of 1/10000 of the coordinate unit.

    Queries give int32 indices, in the order in which the octree delivers. They may be asked from any number of
    threads at once, and let other threads of Python run meanwhile.
    """

    __slots__ = ("_core", "__weakref__")

    _core: _core.Cloud

    def __init__(self) -> None:
        raise TypeError("clouds are made by zor4data.read and zor4data.from_arrays")

    # --- what it holds ---------------------------------------------------------------------------

    def __len__(self) -> int:
        return len(self._core)

    def __repr__(self) -> str:
        count = len(self)
        colour = " with colour" if self.has_color else ""
        head = f"<zor4data.Cloud: {count:,} point{'' if count == 1 else 's'}{colour}"
        if count == 0:
            return head + ">"
        low, high = self.bounds
        spans = (f"{axis} {a:.4f} to {b:.4f}" for axis, a, b in zip(_XYZ, low, high))
        return f"{head}; {', '.join(spans)}>"

    @property
    def has_color(self) -> bool:
        """Whether points have colours."""
        return self._core.has_color()

    @property
    def points(self) -> NDArray[np.void]:
        """The records themselves, read-only: no copy is made, whatever their number.

        A structured array of shape (N,): ``x``, ``y``, ``z`` int32, steps of `scale` from `origin`; with colour
        also ``r``, ``g``, ``b`` uint8. It keeps the records alive when the cloud is gone.
        """
        return self._core.points(COLOR_POINT if self.has_color else POINT)

    @property
    def origin(self) -> NDArray[np.float64]:
        """Where offsets count from, coordinate units, shape (3,): a coordinate is ``offset / 10000 + origin``."""
        return np.array(self._core.origin(), dtype=np.float64)

    @property
    def scale(self) -> float:
        """Size of a step of the offsets in `points`, coordinate units: 1/10000."""
        return 1.0 / 10000.0

    @property
    def bounds(self) -> NDArray[np.float64]:
        """Least and greatest coordinates, [[xmin, ymin, zmin], [xmax, ymax, zmax]], exact; nan without points.

        The first time every point is looked at.
        """
        return np.array(self._core.bounds(), dtype=np.float64).reshape(2, 3)

    def xyz(self, index: Optional[Index] = None, out: Optional[NDArray[np.float64]] = None) -> NDArray[np.float64]:
        """Coordinates.

        Parameters
        ----------
        index : array_like of int or bool, or slice, optional
            The points wanted, by default all. Negative numbers are an IndexError: -1 stands for "no point".
        out : ndarray of float64, optional
            C-contiguous, of the shape of the result: it is filled and returned.

        Returns
        -------
        ndarray of float64, shape (N, 3)
            For an index of another shape, that shape and 3. Coordinate units.
        """
        chosen = None if index is None else read_index(index, len(self))
        shape = shape_of(chosen, len(self)) + (3,)
        if out is None:
            out = np.empty(shape, dtype=np.float64)
        elif out.shape != shape or out.dtype != np.float64:
            raise ValueError(f"out must be of float64 and have the shape {shape}, not {out.dtype} and {out.shape}")
        elif not (out.flags.c_contiguous and out.flags.writeable and out.flags.aligned):
            raise ValueError("out must be C-contiguous, aligned and writeable")
        self._core.fill_xyz(chosen, out)
        return out

    def rgb(self, index: Optional[Index] = None) -> NDArray[np.uint8]:
        """Colours.

        Parameters
        ----------
        index : array_like of int or bool, or slice, optional
            As for `xyz`.

        Returns
        -------
        ndarray of uint8, shape (N, 3)
            Red, green and blue, 0 to 255. A cloud without colour: ValueError.
        """
        if not self.has_color:
            raise ValueError("the cloud has no colours")
        chosen = None if index is None else read_index(index, len(self))
        out = np.empty(shape_of(chosen, len(self)) + (3,), dtype=np.uint8)
        self._core.fill_rgb(chosen, out)
        return out

    def __array__(self, dtype: Optional[DTypeLike] = None, copy: Optional[bool] = None) -> NDArray[Any]:
        """Coordinates, as `xyz` gives them."""
        if copy is False:
            raise ValueError("coordinates are made of the records: they are a copy. See Cloud.points")
        xyz = self.xyz()
        return xyz if dtype is None else xyz.astype(dtype, copy=False)

    # --- queries ---------------------------------------------------------------------------------

    def find(self, query: Query) -> NDArray[np.int32]:
        """The indices that answer a query.

        Parameters
        ----------
        query : Query

        Returns
        -------
        ndarray of int32, shape (M,)
        """
        return self._core.find(query._asks)

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
        if not 1 <= n <= np.iinfo(np.int32).max:
            raise ValueError(f"n is {n}: a batch holds at least 1 index, and less than 2**31")
        return Batches(_core.BatchStream(self._core, query._asks, n))

    def all(self) -> NDArray[np.int32]:
        """Every point, ascending.

        Returns
        -------
        ndarray of int32, shape (N,)
        """
        return np.arange(len(self), dtype=np.int32)  # what the query gives, since no point is ever marked deleted

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
            a, b, c, d: a point is in front where a x + b y + c z + d > 0. Coordinate units.

        Returns
        -------
        ndarray of int32, shape (M,)
            The octree decides for whole cubes: a point a few steps of 1/10000 from a plane may come or not.
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
            Coordinate units. None is inside where a minimum is above its maximum. On an edge rounding decides:
            leave half a step of 1/10000 of room.

        Returns
        -------
        ndarray of int32, shape (M,)
        """
        return self.find(Query.rect(xmin, ymin, xmax, ymax))

    def near_line(
        self, p1: ArrayLike, p2: ArrayLike, distance: float, *, start: bool = False, end: bool = False
    ) -> NDArray[np.int32]:
        """The points along a line in plan: a profile.

        Parameters
        ----------
        p1, p2 : array_like, shape (2,)
            The ends of the line, coordinate units.
        distance : float
            How far the corridor reaches to either side; it ends square at the ends of the line.
        start, end : bool
            Begin with the point exactly at `p1`, and finish with the one exactly at `p2`, if there are such.

        Returns
        -------
        ndarray of int32, shape (M,)
            A point at an end that lies in the corridor too comes twice.
        """
        return self.find(Query.near_line(p1, p2, distance, start, end))

    def inside(self, polygons: Any, *, outside: bool = False) -> NDArray[np.int32]:
        """Exactly the points inside any of the polygons, or outside all of them, in plan.

        Parameters
        ----------
        polygons : object
            Anything with ``__geo_interface__`` (shapely, an outline), a GeoJSON mapping, an array of shape
            (N, 2) (one ring), or a sequence of these. Holes count; a point on an edge, of a hole too, is inside.
        outside : bool
            The points outside instead.

        Returns
        -------
        ndarray of int32, shape (M,)
            Ascending. The decision is exact for the coordinates of `xyz`.
        """
        return self.find(Query.inside(polygons, outside))

    def pick(
        self, origin: ArrayLike, direction: ArrayLike, angle: float, *, planes: ArrayLike = ()
    ) -> NDArray[np.int32]:
        """The point under a cursor: the nearest along a ray within a cone about it.

        Parameters
        ----------
        origin, direction : array_like, shape (3,) or (..., 3)
            Where rays begin and go to; of any length. Broadcast against each other.
        angle : float
            Between the ray and the cone's side, radians, 0 to less than a right angle.
        planes : array_like, shape (P, 4)
            Points in front of one of them are not seen, as for `clip`.

        Returns
        -------
        ndarray of int32, shape () or (...)
            For each ray an index, or -1: no point.
        """
        if not 0.0 <= angle < math.pi / 2:
            raise ValueError(f"angle is {angle}: it must be at least 0 and less than a right angle, in radians")
        origins, directions = np.broadcast_arrays(
            _read_places(origin, (3,), "origin"), _read_places(direction, (3,), "direction")
        )
        found = self._core.pick(_as_rows(origins), _as_rows(directions), math.tan(angle), read_planes(planes))
        return found.reshape(origins.shape[:-1])

    def nearest(self, xyz: ArrayLike, max_distance: float = math.inf) -> NDArray[np.int32]:
        """The points nearest to places; of several at the same distance the one of the lowest index.

        Parameters
        ----------
        xyz : array_like, shape (3,) or (..., 3), or (2,) or (..., 2)
            Places, coordinate units; with two coordinates distances are those in plan.
        max_distance : float
            Coordinate units, included.

        Returns
        -------
        ndarray of int32, shape () or (...)
            For each place an index, or -1: no point so near.
        """
        places = _read_places(xyz, (2, 3), "xyz")
        return self._core.nearest(_as_rows(places), max_distance).reshape(places.shape[:-1])

    # --- analysis --------------------------------------------------------------------------------

    def ground_mask(self, progress: Optional[Progress] = None) -> NDArray[np.bool_]:
        """Which points are ground, by a progressive morphological filter for airborne scans in metres.

        Parameters
        ----------
        progress : callable, optional
            Takes the percentage, an int. An exception that it raises stops the filter.

        Returns
        -------
        ndarray of bool, shape (N,)
        """
        mask = np.zeros(len(self), dtype=np.bool_)
        mask[self._core.ground_index(progress)] = True
        return mask

    def ground(self, progress: Optional[Progress] = None) -> Cloud:
        """A cloud of the ground points, see `ground_mask`. Their indices are new.

        Parameters
        ----------
        progress : callable, optional
            As for `ground_mask`.
        """
        return wrap(self._core.ground(progress))

    def outline(self, distance: float, progress: Optional[Progress] = None) -> Outline:
        """The outline of the cloud in plan.

        Parameters
        ----------
        distance : float
            Coordinate units: points at most so far apart belong together, and the largest such cluster is
            outlined. Below about three times the spacing of the points the cloud falls into several. See
            `search_distance`.
        progress : callable, optional
            As for `ground_mask`.

        Returns
        -------
        Outline, shape (M, 2)
            Its corners are points of the cloud. None where there is no closed outline.
        """
        if not distance > 0.0:
            raise ValueError(f"distance is {distance}: it must be above 0")
        corners = self._core.outline(distance, progress)
        return corners.reshape(-1, 2).view(Outline)

    def search_distance(self) -> float:
        """A distance suited to the density, for `outline`.

        Five times the mean spacing of the points in plan, at least 1, coordinate units; infinite without points.
        """
        return self._core.search_distance()

    # --- new clouds and files --------------------------------------------------------------------

    def take(self, index: Index) -> Cloud:
        """A cloud of the points chosen, with the same origin. Their indices are new.

        Parameters
        ----------
        index : array_like of int or bool, or slice
            As for `xyz`, each point once.
        """
        return wrap(self._core.take(read_index(index, len(self)).ravel()))

    def without(self, index: Index) -> Cloud:
        """A cloud of all other points, see `take`."""
        kept = np.ones(len(self), dtype=np.bool_)
        chosen = read_index(index, len(self))
        if chosen.size and not (0 <= chosen.min() and chosen.max() < len(self)):
            raise IndexError(f"an index is not one of the {len(self)} points")
        kept[chosen] = False
        return self.take(kept)

    def write(self, path: PathLike) -> None:
        """Save as a native file, which loads with its octree, and appears whole or not at all.

        Parameters
        ----------
        path : str, bytes or os.PathLike
            By custom it ends in ``.cld``. Where it cannot be saved (WriteError) an older file stays as it was.
        """
        number, errno = self._core.write(bytes_of_path(path))
        if number != 0:
            raise make_write_error(os.fsdecode(path), number, errno)

    def __copy__(self) -> Cloud:
        return self

    def __deepcopy__(self, memo: Any) -> Cloud:
        return self

    def __reduce_ex__(self, protocol: SupportsIndex) -> tuple[Callable[..., Cloud], tuple[Any, ...]]:
        if len(self) == 0:
            return _empty, (self.has_color,)
        data: Any = self._core.to_bytes()
        if protocol.__index__() >= 5:
            data = pickle.PickleBuffer(data)
        return _from_native, (data,)


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


def wrap(core: _core.Cloud) -> Cloud:
    """A cloud around the library's."""
    cloud = object.__new__(Cloud)
    cloud._core = core
    return cloud


def _from_native(data: Any) -> Cloud:
    """A cloud of the bytes of a native file."""
    core = _core.from_bytes(memoryview(data).cast("B"))
    if core is None:
        raise pickle.UnpicklingError("these are not the bytes of a cloud")
    return wrap(core)


def _empty(has_color: bool) -> Cloud:
    """A cloud without points."""
    rgb = np.empty((0, 3), dtype=np.uint8) if has_color else None
    return wrap(_core.from_arrays(np.empty((0, 3)), rgb, None))
