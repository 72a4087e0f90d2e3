"""The cloud."""

from __future__ import annotations

import hashlib
import os
import pickle
from typing import Any, Callable, Optional, SupportsIndex, Union

import numpy as np
from numpy.typing import ArrayLike, DTypeLike, NDArray

from . import _core
from ._errors import make_write_error
from ._facts import PathLike, Progress, bytes_of_path
from ._index import read_index, shape_of
from ._numbers import read_number, read_progress
from ._outline import Outline
from ._questions import Questions
from ._unit import Unit, read_scale

Index = Union[ArrayLike, slice]

_TOO_WIDE = "the cloud is wider or higher than 214748 metres"

_XYZ = ["x", "y", "z"]


def _make_dtype(has_color: bool) -> np.dtype[np.void]:
    """Type of a record, one of its own: numpy lets users rename the fields of the one that they have."""
    if not has_color:
        return np.dtype({"names": _XYZ, "formats": ["<i4"] * 3, "itemsize": 12})
    return np.dtype(
        {
            "names": _XYZ + ["r", "g", "b"],
            "formats": ["<i4"] * 3 + ["u1"] * 3,
            "offsets": [0, 4, 8, 12, 13, 14],
            "itemsize": 16,
        }
    )


#: Record of a point, as the cloud itself holds it.
POINT = _make_dtype(False)
#: Record of a point with colour; its last byte is without meaning.
COLOR_POINT = _make_dtype(True)


class Cloud(Questions):
    """A cloud of points in memory, with an octree over them. It never changes.

    Made by `zor4data.read` and `zor4data.from_arrays`. A point is known by its index, a position in `points`;
    the octree orders them, not the file. Coordinates are kept in steps of 1/10000 of the coordinate unit.

    Queries give int32 indices, in the order in which the octree delivers. They may be asked from any number of
    threads at once, and let other threads of Python run meanwhile.
    """

    __slots__ = ("_core", "_unit", "__weakref__")

    _core: _core.Cloud
    _unit: Optional[Unit]

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
        return self._core.points(_make_dtype(self.has_color))

    @property
    def origin(self) -> NDArray[np.float64]:
        """Where offsets count from, float64, shape (3,), coordinate units.

        A coordinate is ``offset / 10000 + origin``. Without points what `from_arrays` was given, and what the cloud
        had that they were taken from, else 0; a native file without points does not keep it.
        """
        return np.array(self._core.origin(), dtype=np.float64)

    @property
    def scale(self) -> float:
        """Size of a step of the offsets in `points`, coordinate units: 1/10000."""
        return 1.0 / 10000.0

    @property
    def unit(self) -> Optional[Unit]:
        """The unit of the coordinates, as the LAS file stated it that the cloud was read from; None: not stated.

        Clouds made of this one have it, too; native files do not keep it.
        """
        return self._unit

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
        elif not isinstance(out, np.ndarray):
            raise TypeError(f"out must be an array, not {type(out).__name__}")
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

    # --- analysis --------------------------------------------------------------------------------

    def ground_mask(
        self, progress: Optional[Progress] = None, *, unit_scale: Optional[float] = None
    ) -> NDArray[np.bool_]:
        """Which points are ground, by a progressive morphological filter for airborne scans.

        Its sizes are fixed, in metres: windows of 3 to 33, slopes up to 1, heights above the ground from 0.5 to 3.

        Parameters
        ----------
        progress : callable, optional
            Takes the percentage, an int. An exception that it raises stops the filter.
        unit_scale : float, optional
            How many metres a coordinate unit is, heights included. By default what `unit` says, else 1: where
            coordinates are feet, a copy in metres goes through the filter.

        Returns
        -------
        ndarray of bool, shape (N,)

        Raises
        ------
        ValueError
            Where `unit` is an angle and `unit_scale` is not given; for a cloud wider than 214748 metres.
        """
        found = self._core.ground_index(*read_scale(unit_scale, self._unit), read_progress(progress))
        if found is None:
            raise ValueError(_TOO_WIDE)
        mask = np.zeros(len(self), dtype=np.bool_)
        mask[found] = True
        return mask

    def ground(self, progress: Optional[Progress] = None, *, unit_scale: Optional[float] = None) -> Cloud:
        """A cloud of the ground points, see `ground_mask`. Their indices are new.

        Parameters
        ----------
        progress : callable, optional
        unit_scale : float, optional
            Both as for `ground_mask`.

        Returns
        -------
        Cloud
            What ``zorcld ground`` writes for the same file and scale.

        Raises
        ------
        ValueError
            As for `ground_mask`.
        """
        core = self._core.ground(*read_scale(unit_scale, self._unit), read_progress(progress))
        if core is None:
            raise ValueError(_TOO_WIDE)
        return wrap(core, self._unit)

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
        reach = read_number(distance, "distance")
        if not reach > 0.0:
            raise ValueError(f"distance is {distance}: it must be above 0")
        corners = self._core.outline(reach, read_progress(progress))
        return corners.reshape(-1, 2).view(Outline)

    def search_distance(self) -> float:
        """A distance suited to the density, for `outline`.

        Returns
        -------
        float
            Five times the mean spacing of the points in plan, at least 1, coordinate units; infinite without points.
        """
        return self._core.search_distance()

    # --- new clouds and files --------------------------------------------------------------------

    def take(self, index: Index) -> Cloud:
        """A cloud of the points chosen, with the same origin. Their indices are new.

        Parameters
        ----------
        index : array_like of int or bool, or slice
            As for `xyz`, each point once; else ValueError. Their order does not matter.

        Returns
        -------
        Cloud
        """
        return wrap(self._core.take(read_index(index, len(self)).ravel()), self._unit)

    def without(self, index: Index) -> Cloud:
        """A cloud of all other points, see `take`.

        Parameters
        ----------
        index : array_like of int or bool, or slice
            As for `xyz`.

        Returns
        -------
        Cloud
        """
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
            By custom it ends in ``.cld``.

        Raises
        ------
        WriteError
            With the path, the cause, its number and errno. An older file stays as it was.
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
            return _empty, (self.has_color, tuple(self._core.origin()), self._unit)
        data: Any = self._core.to_bytes()
        check = len(data), _digest(data), self._unit
        if protocol.__index__() >= 5:
            data = pickle.PickleBuffer(data)
        return _from_native, (data, *check)


def wrap(core: _core.Cloud, unit: Optional[Unit]) -> Cloud:
    """A cloud around the library's."""
    cloud = object.__new__(Cloud)
    cloud._core = core
    cloud._unit = unit
    return cloud


def _digest(data: Any) -> bytes:
    """What tells whether bytes are those that were pickled."""
    return hashlib.blake2b(data, digest_size=16).digest()


def _from_native(data: Any, size: int, digest: bytes, unit: Optional[Unit]) -> Cloud:
    """A cloud of the bytes of a native file, which the library would load damaged, too."""
    view = memoryview(data).cast("B")
    if len(view) != size or _digest(view) != digest:
        raise pickle.UnpicklingError(
            "these are not the bytes of the cloud that was pickled: they are cut off or damaged"
        )
    core = _core.from_bytes(view)
    if core is None:
        raise pickle.UnpicklingError("these are not the bytes of a cloud")
    return wrap(core, unit)


def _empty(has_color: bool, origin: tuple[float, float, float], unit: Optional[Unit]) -> Cloud:
    """A cloud without points."""
    rgb = np.empty((0, 3), dtype=np.uint8) if has_color else None
    return wrap(_core.from_arrays(np.empty((0, 3)), rgb, origin), unit)
