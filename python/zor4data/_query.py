"""Questions to clouds."""

from __future__ import annotations

from typing import Any, Callable

import numpy as np
from numpy.typing import ArrayLike, NDArray

from . import _core
from ._numbers import LONGEST, read_bound, read_floats, read_number, refuse_far
from ._polygons import read_polygons


def read_planes(planes: ArrayLike) -> NDArray[np.float64]:
    """Planes as the N x 4 array that the library takes, one of their own."""
    array = read_floats(planes, "planes").copy()
    if array.size == 0:
        return np.empty((0, 4))
    if array.ndim != 2 or array.shape[1] != 4:
        raise ValueError(f"planes must be an N x 4 array of a, b, c, d, not one of shape {array.shape}")
    if not np.isfinite(array).all():
        raise ValueError(f"planes[{np.flatnonzero(~np.isfinite(array).all(axis=1))[0]}] is not finite")
    return np.ascontiguousarray(array)


def _read_place(place: ArrayLike, name: str) -> tuple[float, float]:
    """A place in plan."""
    array = read_floats(place, name)
    if array.ndim != 1 or array.size not in (2, 3):
        raise ValueError(f"{name} must be a place (x, y), not an array of shape {array.shape}")
    if not np.isfinite(array[:2]).all():
        raise ValueError(f"{name} is not finite: {place!r}")
    refuse_far(array[:2], name, LONGEST)
    return float(array[0]), float(array[1])


#: Arguments by keyword only, the last ones.
_NAMED = {"near_line": ("start", "end"), "inside": ("outside",)}


def _split(name: str, args: tuple[Any, ...]) -> tuple[tuple[Any, ...], dict[str, Any]]:
    """What a query was made of, by position and by keyword."""
    names = _NAMED.get(name, ())
    plain = len(args) - len(names)
    return args[:plain], dict(zip(names, args[plain:]))


class Query:
    """A question to a cloud: what `Cloud.find` answers at once, and `Cloud.batches` in parts.

    Made by the class methods, which are named, and take what the methods of `Cloud` of their names take. A query
    belongs to no cloud, never changes, and can be pickled.
    """

    __slots__ = ("_args", "_asks", "_name")

    _asks: _core.Query
    _name: str
    _args: tuple[Any, ...]

    def __init__(self) -> None:
        raise TypeError("queries are made by Query.all, Query.lod and the others")

    @classmethod
    def _make(cls, name: str, args: tuple[Any, ...], make: Callable[[], _core.Query]) -> Query:
        query = object.__new__(cls)
        query._name = name
        query._args = args
        query._asks = make()
        return query

    def __repr__(self) -> str:
        plain, named = _split(self._name, self._args)
        shown = [*map(repr, plain), *(f"{name}={value!r}" for name, value in named.items())]
        return f"Query.{self._name}({', '.join(shown)})"

    def __reduce__(self) -> tuple[Callable[..., Query], tuple[Any, ...]]:
        return _again, (self._name, self._args)

    @classmethod
    def all(cls) -> Query:
        """Every point."""
        return cls._make("all", (), _core.query_all)

    @classmethod
    def lod(cls, spacing: float) -> Query:
        """A level of detail, see `Cloud.lod`."""
        size = read_number(spacing, "spacing")
        return cls._make("lod", (size,), lambda: _core.query_lod(size))

    @classmethod
    def clip(cls, planes: ArrayLike) -> Query:
        """The points behind planes, see `Cloud.clip`."""
        array = read_planes(planes)
        return cls._make("clip", (array,), lambda: _core.query_clip(array))

    @classmethod
    def lod_clip(cls, spacing: float, planes: ArrayLike) -> Query:
        """A level of detail of the points behind planes, see `Cloud.lod_clip`."""
        size, array = read_number(spacing, "spacing"), read_planes(planes)
        return cls._make("lod_clip", (size, array), lambda: _core.query_lod_clip(size, array))

    @classmethod
    def rect(cls, xmin: float, ymin: float, xmax: float, ymax: float) -> Query:
        """The points in a rectangle, see `Cloud.rect`."""
        args = (
            read_bound(xmin, "xmin"),
            read_bound(ymin, "ymin"),
            read_bound(xmax, "xmax"),
            read_bound(ymax, "ymax"),
        )
        return cls._make("rect", args, lambda: _core.query_rect(*args))

    @classmethod
    def near_line(
        cls, p1: ArrayLike, p2: ArrayLike, distance: float, *, start: bool = False, end: bool = False
    ) -> Query:
        """The points along a line, see `Cloud.near_line`."""
        reach = read_bound(distance, "distance")
        if reach > LONGEST:
            raise ValueError(f"distance is {distance}: it must be at most {LONGEST:g}")
        args = (_read_place(p1, "p1"), _read_place(p2, "p2"), reach, bool(start), bool(end))
        return cls._make("near_line", args, lambda: _core.query_line(*args))

    @classmethod
    def inside(cls, polygons: Any, *, outside: bool = False) -> Query:
        """The points inside polygons, or outside, see `Cloud.inside`."""
        parts, others = read_polygons(polygons), bool(outside)
        shape = {"type": "MultiPolygon", "coordinates": [[outer, *holes] for outer, holes in parts]}
        return cls._make("inside", (shape, others), lambda: _core.query_polygons(parts, others))


def _again(name: str, args: tuple[Any, ...]) -> Query:
    """A query out of a pickle."""
    plain, named = _split(name, args)
    query: Query = getattr(Query, name)(*plain, **named)
    return query
