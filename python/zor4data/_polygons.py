"""Polygons, however they come, as the rings that the library takes."""

from __future__ import annotations

from typing import Any, Iterable, Iterator, Mapping, Sequence

import numpy as np
from numpy.typing import ArrayLike, NDArray

Ring = NDArray[np.float64]
Polygon = tuple[Ring, list[Ring]]


def _ring(coordinates: ArrayLike) -> Ring:
    """A ring as an N x 2 array; further coordinates are left out."""
    ring = np.array(coordinates, dtype=np.float64)  # a copy: what is asked does not change with the user's array
    if ring.size == 0:
        return np.empty((0, 2))
    if ring.ndim != 2 or ring.shape[1] < 2:
        raise ValueError(f"a ring must be an N x 2 array of coordinates, not one of shape {ring.shape}")
    finite = np.isfinite(ring[:, :2]).all(axis=1)
    if not finite.all():
        raise ValueError(f"a ring must be of finite coordinates: its corner {np.flatnonzero(~finite)[0]} is not")
    return np.ascontiguousarray(ring[:, :2])


def _polygon(rings: Sequence[ArrayLike]) -> Polygon:
    """An outer ring and its holes."""
    if len(rings) == 0:
        return np.empty((0, 2)), []
    return _ring(rings[0]), [_ring(hole) for hole in rings[1:]]


#: Where GeoJSON's objects have what they are made of.
_MEMBERS = {
    "Polygon": "coordinates",
    "MultiPolygon": "coordinates",
    "Feature": "geometry",
    "FeatureCollection": "features",
    "GeometryCollection": "geometries",
}


def _from_mapping(shape: Mapping[str, Any]) -> Iterator[Polygon]:
    """Polygons of a GeoJSON object. What is null has no place."""
    kind = shape.get("type")
    if kind not in _MEMBERS:
        raise ValueError(f"polygons are wanted, not {kind or 'a mapping without type'}")
    if _MEMBERS[kind] not in shape:
        raise ValueError(f"a {kind} without {_MEMBERS[kind]} is no GeoJSON")
    content = shape[_MEMBERS[kind]]
    if content is None:
        return
    if kind == "Polygon":
        yield _polygon(content)
    elif kind == "MultiPolygon":
        for rings in content:
            yield _polygon(rings)
    elif kind == "Feature":
        yield from _from_any(content)
    else:
        for part in content:
            if part is not None:
                yield from _from_any(part)


def _from_any(shape: Any) -> Iterator[Polygon]:
    """Polygons of one thing: geometry, GeoJSON, ring, or several of them."""
    if hasattr(shape, "__geo_interface__"):
        yield from _from_mapping(shape.__geo_interface__)
    elif isinstance(shape, Mapping):
        yield from _from_mapping(shape)
    elif isinstance(shape, np.ndarray) and shape.dtype == np.object_ and not _is_ring(shape.tolist()):
        for part in shape.flat:
            yield from _from_any(part)
    elif isinstance(shape, np.ndarray) or _is_ring(shape):
        yield _ring(shape), []
    elif isinstance(shape, Iterable) and not isinstance(shape, (str, bytes)):
        for part in shape:
            yield from _from_any(part)
    else:
        raise TypeError(f"polygons are wanted, not {type(shape).__name__}")


def _is_ring(shape: Any) -> bool:
    """Whether a sequence is one of pairs of numbers."""
    if not isinstance(shape, Sequence) or len(shape) == 0 or isinstance(shape, (str, bytes)):
        return False
    first = shape[0]
    if isinstance(first, Mapping) or hasattr(first, "__geo_interface__") or isinstance(first, (str, bytes)):
        return False
    return np.ndim(first) == 1 and np.size(first) in (2, 3)


def read_polygons(shape: Any) -> list[Polygon]:
    """Every polygon of a shape.

    Parameters
    ----------
    shape : object
        Anything with ``__geo_interface__``, a GeoJSON mapping, an N x 2 array (one ring), or a sequence or an array
        of these.
    """
    return list(_from_any(shape))
