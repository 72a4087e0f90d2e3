"""What users give as an index, as the library takes it."""

from __future__ import annotations

from typing import Any, Optional, Union

import numpy as np
from numpy.typing import ArrayLike, NDArray

from ._numbers import refuse_masked

IndexArray = Union[NDArray[np.int32], NDArray[np.int64]]


def read_index(index: Union[ArrayLike, slice], count: int) -> IndexArray:
    """An index as an array of int32 or int64, of any shape.

    Parameters
    ----------
    index : array_like of int or bool, or slice
        A mask has an element a point. Negative numbers are not counted from the end: the library gives -1 for "no
        point".
    count : int
        Points of the cloud.
    """
    if isinstance(index, slice):
        return np.arange(*index.indices(count), dtype=np.int64)
    refuse_masked(index, "the index")
    array = np.asarray(index)
    if array.dtype == np.bool_:
        if array.shape != (count,):
            raise IndexError(f"a mask must have the shape ({count},), not {array.shape}")
        return np.flatnonzero(array).astype(np.int64, copy=False)
    if array.size == 0:
        return np.empty(array.shape, dtype=np.int64)
    if array.dtype == np.object_ and all(_is_integer(each) for each in array.flat):
        try:
            array = array.astype(np.int64)
        except OverflowError:
            raise IndexError(f"an index is not one of the {count} points: it does not fit into 64 bits") from None
    if array.dtype.kind not in "iu":
        raise TypeError(f"an index must be of integers or booleans, not of {array.dtype}")
    if array.dtype == np.int32:
        return np.ascontiguousarray(array, dtype=np.int32).reshape(array.shape)
    if array.dtype == np.uint64 and int(array.max()) > np.iinfo(np.int64).max:
        raise IndexError(f"index {array.max()} is not one of the {count} points")
    return np.ascontiguousarray(array, dtype=np.int64).reshape(array.shape)


def _is_integer(value: Any) -> bool:
    """Whether it is an integer by its type."""
    return isinstance(value, (int, np.integer)) and not isinstance(value, bool)


def shape_of(index: Optional[IndexArray], count: int) -> tuple[int, ...]:
    """The shape of what an index chooses."""
    return (count,) if index is None else index.shape
