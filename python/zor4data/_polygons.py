"""Polygons, however they come, as the rings that the library takes."""

from __future__ import annotations

from typing import Any, Iterable, Iterator, Mapping, Sequence

import numpy as np
from numpy.typing import ArrayLike, NDArray

from ._numbers import read_floats

Ring = NDArray[np.float64]
Polygon = tuple[Ring, list[Ring]]


def _ring(coordinates: ArrayLike) -> Ring:
    """A ring as an N x 2 array; further coordinates are left out."""
    ring = read_floats(coordinates, "a ring").copy()  # what is asked does not change with the user's array
    if ring.size == 0:
        return np.empty((0, 2))
    if ring.ndim != 2 or ring.shape[1] < 2:
        raise ValueError(f"a ring must be an N x 2 array of coordinates, not one of shape {ring.shape}")
    finite = np.isfinite(ring[:, :2]).all(axis=1)
    if not finite.all():
        raise ValueError(f"a ring must be of finite coordinates: its corner {np.flatnonzero(~finite)[0]} is not")
    return np.ascontiguousarray(ring[:, :2])


def _polygon(coordinates: Any) -> Polygon:
    """An outer ring and its holes."""
    rings = _parts(coordinates, "coordinates", "Polygon")
    if len(rings) == 0:
        return np.empty((0, 2)), []
    return _ring(rings[0]), [_ring(hole) for hole in rings[1:]]


def _parts(content: Any, member: str, kind: str) -> list[Any]:
    """What an array of GeoJSON consists of."""
    if isinstance(content, Iterable) and not isinstance(content, (str, bytes, Mapping)):
        return list(content)
    raise ValueError(f"the {member} of a {kind} must be an array, not {type(content).__name__}")


#: Where GeoJSON's objects have what they are made of.
_MEMBERS = {
    "Polygon": "coordinates",
    "MultiPolygon": "coordinates",
    "Feature": "geometry",
    "FeatureCollection": "features",
    "GeometryCollection": "geometries",
}


def _from_mapping(shape: Any, depth: int) -> Iterator[Polygon]:
    """Polygons of a GeoJSON object. What is null has no place."""
    if not isinstance(shape, Mapping):
        raise ValueError(f"a __geo_interface__ must be a mapping, not {type(shape).__name__}")
    kind = shape.get("type")
    if not isinstance(kind, str) or kind not in _MEMBERS:
        raise ValueError(f"polygons are wanted, not {kind or 'a mapping without type'}")
    if _MEMBERS[kind] not in shape:
        raise ValueError(f"a {kind} without {_MEMBERS[kind]} is no GeoJSON")
    content = shape[_MEMBERS[kind]]
    if content is None:
        return
    if kind == "Polygon":
        yield _polygon(content)
    elif kind == "MultiPolygon":
        for rings in _parts(content, "coordinates", kind):
            yield _polygon(rings)
    elif kind == "Feature":
        yield from _from_any(content, depth + 1)
    else:
        for part in _parts(content, _MEMBERS[kind], kind):
            if part is not None:
                yield from _from_any(part, depth + 1)


def _from_any(shape: Any, depth: int = 0) -> Iterator[Polygon]:
    """Polygons of one thing: geometry, GeoJSON, ring, or several of them."""
    if depth > 30:
        raise ValueError("polygons are nested too deeply")
    if hasattr(shape, "__geo_interface__"):
        yield from _from_mapping(shape.__geo_interface__, depth)
    elif isinstance(shape, Mapping):
        yield from _from_mapping(shape, depth)
    elif isinstance(shape, np.ndarray) and shape.dtype == np.object_ and not _is_ring(shape.tolist()):
        for part in shape.flat:
            yield from _from_any(part, depth + 1)
    elif isinstance(shape, np.ndarray) and shape.ndim > 2:
        for part in shape:
            yield from _from_any(part, depth + 1)
    elif isinstance(shape, np.ndarray) or _is_ring(shape):
        yield _ring(shape), []
    elif isinstance(shape, Iterable) and not isinstance(shape, (str, bytes)):
        for part in shape:
            yield from _from_any(part, depth + 1)
    else:
        raise TypeError(f"polygons are wanted, not {type(shape).__name__}")


def _is_ring(shape: Any) -> bool:
    """Whether a sequence is one of pairs of numbers."""
    if not isinstance(shape, Sequence) or len(shape) == 0 or isinstance(shape, (str, bytes)):
        return False
    first = shape[0]
    if isinstance(first, Mapping) or hasattr(first, "__geo_interface__") or isinstance(first, (str, bytes)):
        return False
    try:
        place = np.asarray(first)
    except ValueError:  # rings of different length, or a list in itself
        return False
    return place.ndim == 1 and place.size in (2, 3) and place.dtype.kind in "biufO"


def read_polygons(shape: Any) -> list[Polygon]:
    """Every polygon of a shape.

    Parameters
    ----------
    shape : object
        Anything with ``__geo_interface__``, a GeoJSON mapping, an N x 2 array (one ring), or a sequence or an array
        of these.
    """
    return list(_from_any(shape))
