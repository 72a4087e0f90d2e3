"""What users give as numbers and as progress."""

from __future__ import annotations

import math
from typing import Any, Callable, Optional

import numpy as np
from numpy.typing import NDArray

#: Numbers beyond it have squares and products that a float64 may not hold. No cloud reaches so far.
FARTHEST = 1e50
#: The corners of longer corridors are too far apart for a float64 to tell their sides.
LONGEST = 1e15


def read_number(value: Any, name: str) -> float:
    """A number as the library takes it."""
    refuse_masked(value, name)
    try:
        if not isinstance(value, (str, bytes)):
            return float(value)
    except OverflowError:
        raise ValueError(f"{name} is too large for a float64") from None
    except (TypeError, ValueError):
        pass
    raise TypeError(f"{name} must be a number, not {value!r}")


def read_bound(value: Any, name: str) -> float:
    """A number that something is compared with, which not-a-number would leave without an answer."""
    number = read_number(value, name)
    if math.isnan(number):
        raise ValueError(f"{name} is not a number")
    return number


def _has_masked(value: Any, depth: int) -> bool:
    """Whether a mask leaves something out of an array or of one in a list."""
    if isinstance(value, np.ma.MaskedArray):
        return bool(np.any(np.ma.getmaskarray(value)))  # type: ignore[no-untyped-call]
    return depth > 0 and isinstance(value, (list, tuple)) and any(_has_masked(each, depth - 1) for each in value)


def refuse_masked(array: Any, name: str) -> None:
    """Refuse what is left out of an array by a mask: as an array without one it would be there."""
    if _has_masked(array, 4):
        raise ValueError(f"{name} has masked elements: leave them out")


def read_floats(values: Any, name: str) -> NDArray[np.float64]:
    """Numbers in an array of float64, which is the user's own where that is one already."""
    refuse_masked(values, name)
    try:
        array = np.asarray(values)
    except ValueError:
        raise ValueError(f"{name} is no array: its parts are of different shape, or nested too deeply") from None
    wrong = array.dtype.kind not in "biufO"
    if array.dtype == np.object_:
        wrong = any(isinstance(each, (str, bytes, complex)) for each in array.flat)
    if wrong:
        raise TypeError(f"{name} must be of numbers, not of {array.dtype}")
    try:
        return np.asarray(array, dtype=np.float64)
    except OverflowError:
        raise ValueError(f"{name} has a number too large for a float64") from None
    except ValueError:
        raise ValueError(f"{name} is no array: its parts are of different shape, or nested too deeply") from None


def refuse_far(array: NDArray[np.float64], name: str, most: float = FARTHEST) -> None:
    """Refuse finite numbers that cannot be computed with."""
    sizes = np.abs(array)
    if np.any((sizes > most) & np.isfinite(sizes)):
        raise ValueError(f"{name} has a coordinate beyond {most:g}, where nothing can be computed")


def read_progress(progress: Optional[Callable[[int], object]]) -> Optional[Callable[[int], object]]:
    """What is told of the progress, known to be callable before the work begins."""
    if progress is None or callable(progress):
        return progress
    raise TypeError(f"progress must be callable, not {progress!r}")
