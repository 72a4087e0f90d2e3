"""How clouds are made."""

from __future__ import annotations

import warnings
from typing import Any, Optional

import numpy as np
from numpy.typing import ArrayLike, NDArray

from . import _core
from ._cloud import Cloud, wrap
from ._errors import LossWarning, ReadError
from ._facts import Facts, Kind, PathLike, Progress, bytes_of_path, find_facts, number_of_kind
from ._numbers import read_floats, read_progress, refuse_masked


def _error_from(found: Facts) -> ReadError:
    """What to raise for a file that did not load."""
    if found.number == 0:
        return ReadError(found.path, "its points are damaged, or it changed while it was read", 0)
    return ReadError(found.path, found.cause, found.number)


def _describe_moved(not_finite: int, far: int) -> list[str]:
    """What is to be said of points of a file that no cloud holds where they are."""
    losses = []
    if not_finite:
        losses.append(
            f"{not_finite:,} of its points have coordinates that are not numbers, or infinite: they are moved"
        )
    if far:
        losses.append(f"{far:,} of its points lie farther than 214748.3647 from the first: they are moved to there")
    return losses


def read(path: PathLike, *, kind: Optional[Kind] = None, progress: Optional[Progress] = None) -> Cloud:
    """Load a file: PLY, LAS and LAZ, an ESRI ASCII grid, or a native file.

    Parameters
    ----------
    path : str, bytes or os.PathLike
        The file. Its name does not matter.
    kind : {'native', 'ply', 'grid', 'las'}, optional
        Take it for this kind, whatever its first bytes say.
    progress : callable, optional
        Takes the percentage, an int, each once. An exception that it raises stops the loading and comes out
        of this function, as KeyboardInterrupt does.

    Returns
    -------
    Cloud
        With its octree. Of points at one place in plan within a leaf only the first is kept.

    Raises
    ------
    ReadError
        With the path, the cause and its number.
    MemoryError

    Warns
    -----
    LossWarning
        For what is lost or comes otherwise than the file means it (``facts(path).losses``), that it is cut off among
        it, and for points that are moved, which no head tells: those farther than 214748.3647 from the first on an
        axis come at that distance, those without a place anywhere. Attributes that no cloud holds, intensities say,
        are no reason.
    """
    told = read_progress(progress)
    found = find_facts(path, number_of_kind(kind))
    if not found.loads or found.kind is None:
        raise _error_from(found)
    core, not_finite, far = _core.read(bytes_of_path(path), number_of_kind(found.kind), told)
    if core is None:
        raise _error_from(find_facts(path, number_of_kind(found.kind)))
    losses = [loss.text for loss in found.losses if loss.code != "not-taken"]
    for text in losses + _describe_moved(not_finite, far):
        warnings.warn(f"{found.path}: {text}", LossWarning, stacklevel=2)
    return wrap(core, found.unit)


def _read_xyz(xyz: ArrayLike) -> NDArray[Any]:
    """Coordinates as a C-contiguous N x 3 array of float64 or float32."""
    refuse_masked(xyz, "xyz")
    array = np.asarray(xyz)
    if array.ndim != 2 or array.shape[1] != 3:
        raise ValueError(f"xyz must be an N x 3 array, not one of shape {array.shape}")
    if array.dtype.kind not in "fiu":
        raise ValueError(f"xyz must be of float64 or float32, not of {array.dtype}")
    if array.shape[0] > np.iinfo(np.int32).max:  # before it is copied
        raise ValueError("a cloud holds at most 2147483646 points")
    return np.ascontiguousarray(array, dtype=np.float32 if array.dtype == np.float32 else np.float64)


def _read_rgb(rgb: ArrayLike, count: int) -> NDArray[np.uint8]:
    """Colours as a C-contiguous N x 3 array of uint8."""
    refuse_masked(rgb, "rgb")
    array = np.asarray(rgb)
    if array.shape != (count, 3):
        raise ValueError(f"rgb must have the shape of xyz, ({count}, 3), not {array.shape}")
    if array.dtype.kind not in "iu":
        hint = ": multiply colours from 0 to 1 by 255 and round them" if array.dtype.kind == "f" else ""
        raise ValueError(f"rgb must be of integers from 0 to 255, not of {array.dtype}{hint}")
    if array.size and not (0 <= array.min() and array.max() <= 255):
        raise ValueError(f"rgb must be from 0 to 255; it reaches from {array.min()} to {array.max()}")
    return np.ascontiguousarray(array, dtype=np.uint8)


def _read_origin(origin: ArrayLike) -> tuple[float, float, float]:
    """An origin that a cloud can have."""
    array = read_floats(origin, "origin")
    if array.shape != (3,):
        raise ValueError(f"origin must be a place (x, y, z), not an array of shape {array.shape}")
    if not (np.abs(array) <= np.finfo(np.float32).max).all():
        raise ValueError(f"origin is {array}: it must be finite, as a float32 too")
    return float(array[0]), float(array[1]), float(array[2])


def from_arrays(xyz: ArrayLike, rgb: Optional[ArrayLike] = None, *, origin: Optional[ArrayLike] = None) -> Cloud:
    """Make a cloud of coordinates. The octree puts the points into an order of its own.

    Parameters
    ----------
    xyz : array_like, shape (N, 3)
        Coordinate units, float64 or float32. Each is rounded to a step of 1/10000 of the unit; without `origin` the
        first point, which the steps count from, may be up to one step off.
    rgb : array_like, shape (N, 3), optional
        Red, green and blue, integers from 0 to 255.
    origin : array_like, shape (3,), optional
        Where the steps count from, by default the first point; rounded to float32 either way. Clouds with the
        same origin have the same steps. A cloud reaches 214748.3647 units from it.

    Returns
    -------
    Cloud
        All N points, those at one place too.

    Raises
    ------
    ValueError
        For a wrong shape or type, and for the first row that is not finite or out of reach.
    MemoryError
    """
    places = _read_xyz(xyz)
    colours = None if rgb is None else _read_rgb(rgb, places.shape[0])
    return wrap(_core.from_arrays(places, colours, None if origin is None else _read_origin(origin)), None)
