"""What is refused, and what is said of it."""

from __future__ import annotations

from typing import Any, Callable

import numpy as np
import pytest
from conftest import Array, scatter

import zor4data
from zor4data import Cloud, Query

TRIANGLE = [(0.0, 0.0), (60.0, 0.0), (60.0, 60.0)]


def masked_row() -> Array:
    """Three numbers, of which one is left out."""
    return np.ma.array([1, 2, 3], mask=[True, False, False])  # type: ignore[no-untyped-call,no-any-return]


WRONG: list[tuple[Callable[[Cloud], Any], type[Exception], str]] = [
    (lambda cloud: cloud.lod("a"), TypeError, "spacing must be a number, not 'a'"),  # type: ignore[arg-type]
    (lambda cloud: cloud.lod(None), TypeError, "spacing"),  # type: ignore[arg-type]
    (lambda cloud: cloud.lod_clip("1", []), TypeError, "spacing"),  # type: ignore[arg-type]
    (lambda cloud: cloud.rect(0, 0, 1, "b"), TypeError, "ymax"),  # type: ignore[arg-type]
    (lambda cloud: cloud.near_line((0, 0), (1, 1), None), TypeError, "distance"),  # type: ignore[arg-type]
    (lambda cloud: cloud.outline("3"), TypeError, "distance"),  # type: ignore[arg-type]
    (lambda cloud: cloud.pick((0, 0, 0), (0, 0, 1), "x"), TypeError, "angle"),  # type: ignore[arg-type]
    (lambda cloud: cloud.pick((0, 0, 0), (0, 0, 1), np.inf), ValueError, "angle"),
    (lambda cloud: cloud.nearest((0, 0, 0), "x"), TypeError, "max_distance"),  # type: ignore[arg-type]
    (lambda cloud: cloud.find("all"), TypeError, "Query"),  # type: ignore[arg-type]
    (lambda cloud: cloud.batches("all", 3), TypeError, "Query"),  # type: ignore[arg-type]
    (lambda cloud: cloud.batches(Query.all(), 1.5), TypeError, "integer"),  # type: ignore[arg-type]
    (lambda cloud: cloud.xyz(out=[1]), TypeError, "out"),  # type: ignore[arg-type]
    (lambda cloud: cloud.clip([[1.0, 0.0, 0.0, 0.0], [np.nan, 0.0, 0.0, 0.0]]), ValueError, r"planes\[1\]"),
    (lambda cloud: cloud.clip([[np.inf, 0, 0, 0]]), ValueError, "finite"),
    (lambda cloud: cloud.pick((0, 0, 0), (0, 0, 1), 0.1, planes=[[0, 0, 0, np.nan]]), ValueError, "finite"),
    (lambda cloud: cloud.rect(np.nan, 2, 8, 8), ValueError, "xmin is not a number"),
    (lambda cloud: cloud.rect(1, 2, 8, np.nan), ValueError, "ymax is not a number"),
    (lambda cloud: cloud.near_line((0, 0), (1, 1), np.nan), ValueError, "distance is not a number"),
    (lambda cloud: cloud.near_line((0, 0), (1, np.nan), 1), ValueError, "p2 is not finite"),
    (lambda cloud: cloud.nearest((0, 0, 0), np.nan), ValueError, "max_distance"),
    (lambda cloud: cloud.nearest((0, 0, 0), -1), ValueError, "max_distance"),
    (lambda cloud: cloud.xyz(np.array([2**63 + 5], np.uint64)), IndexError, "index 9223372036854775813 "),
    (lambda cloud: cloud.xyz(2**100), IndexError, "64 bits"),
    (lambda cloud: cloud.take([-(2**70), 1]), IndexError, "64 bits"),
    (lambda cloud: cloud.xyz([None, 1]), TypeError, "object"),  # type: ignore[arg-type]
    (lambda cloud: cloud.lod(10**400), ValueError, "spacing is too large"),
    (lambda cloud: cloud.rect(0, 0, 10**400, 1), ValueError, "xmax is too large"),
    (lambda cloud: cloud.xyz(masked_row()), ValueError, "the index has masked"),
    (lambda cloud: cloud.nearest(masked_row()), ValueError, "xyz has masked"),
    (lambda cloud: cloud.pick(masked_row(), (0, 0, 1), 0.1), ValueError, "origin has masked"),
    (lambda cloud: cloud.inside([masked_row()[:2]] * 3), ValueError, "ring has masked"),
    (lambda cloud: cloud.clip([[1, 0, 0, np.ma.masked]]), ValueError, "planes has masked"),  # type: ignore[arg-type]
    (lambda cloud: cloud.near_line(masked_row(), (9, 9), 1), ValueError, "p1 has masked"),
    (lambda cloud: cloud.nearest([masked_row(), masked_row()]), ValueError, "xyz has masked"),
    (lambda cloud: cloud.xyz([masked_row()]), ValueError, "the index has masked"),
    (lambda cloud: cloud.lod(masked_row()[0]), ValueError, "spacing has masked"),
    (lambda cloud: zor4data.from_arrays(np.zeros((3, 3)), origin=masked_row()), ValueError, "origin has masked"),
    (lambda cloud: zor4data.from_arrays(masked_row()[np.newaxis]), ValueError, "xyz has masked"),
    (lambda cloud: cloud.near_line((0, 0), (9, 9), np.inf), ValueError, "distance is inf"),
    (lambda cloud: cloud.near_line((0, 0), (9, 9), 1e16), ValueError, "distance is 1e[+]16"),
    (lambda cloud: cloud.near_line((0, 1e99), (9, 9), 1), ValueError, "p1 has a coordinate beyond"),
    (lambda cloud: cloud.nearest((50, 50, 1e155)), ValueError, "xyz has a coordinate beyond"),
    (lambda cloud: cloud.pick((50, 50, 1e155), (0, 0, -1), 0.1), ValueError, "origin has a coordinate beyond"),
    (lambda cloud: cloud.nearest(["1", "2", "3"]), TypeError, "xyz must be of numbers"),
    (lambda cloud: cloud.nearest([1, 2, 3 + 1j]), TypeError, "xyz must be of numbers, not of complex128"),
    (lambda cloud: cloud.clip([["1", "0", "0", "0"]]), TypeError, "planes must be of numbers"),
    (lambda cloud: zor4data.from_arrays(np.zeros((3, 3)), origin=["1", "2", "3"]), TypeError, "origin must be"),
    (lambda cloud: cloud.inside([("0", "0"), ("1", "0"), ("1", "1")]), TypeError, "polygons are wanted, not str"),
    (lambda cloud: cloud.xyz(np.array([True, False], dtype=object)), TypeError, "object"),
    (lambda cloud: zor4data.from_arrays([[1e39, 0, 0]]), ValueError, "is 1e[+]39, which no float32 holds"),
    (lambda cloud: zor4data.from_arrays([[0.0, 0.0, 0.0], [1e308, 0.0, 0.0]]), ValueError, "is 1e[+]308, farther than"),
    (lambda cloud: zor4data.from_arrays(np.broadcast_to(np.zeros(3, np.float32), (2**31, 3))), ValueError, "at most"),
    (lambda cloud: cloud.ground(progress=3), TypeError, "progress"),  # type: ignore[arg-type]
    (lambda cloud: cloud.ground_mask(progress="x"), TypeError, "progress"),  # type: ignore[arg-type]
    (lambda cloud: cloud.outline(1, progress=[]), TypeError, "progress"),  # type: ignore[arg-type]
]


@pytest.mark.parametrize("run, kind, reason", WRONG)
def test_what_is_wrong_is_named(run: Callable[[Cloud], Any], kind: type[Exception], reason: str) -> None:
    with pytest.raises(kind, match=reason):
        run(zor4data.from_arrays(scatter(10, 4)))


class Geometry:
    """What says that it is a geometry."""

    def __init__(self, shape: object) -> None:
        self.__geo_interface__ = shape


def within_itself() -> list[Any]:
    """A list that holds itself."""
    endless: list[Any] = []
    endless.append(endless)
    return endless


@pytest.mark.parametrize(
    "shape, reason",
    [
        ({}, "without type"),
        ({"type": "Polygon"}, "without coordinates"),
        ({"type": "Feature"}, "without geometry"),
        ({"type": "LineString", "coordinates": TRIANGLE}, "LineString"),
        ({"type": "GeometryCollection", "geometries": [{"type": "Point", "coordinates": (1, 1)}]}, "Point"),
        (np.zeros((1, 3, 1)), "ring"),
        ({"type": "Polygon", "coordinates": 5}, "coordinates of a Polygon must be an array, not int"),
        ({"type": "MultiPolygon", "coordinates": [5]}, "must be an array, not int"),
        ({"type": ["Polygon"]}, "polygons are wanted"),
        ({"type": "FeatureCollection", "features": 5}, "features of a FeatureCollection must be an array"),
        (Geometry(None), "__geo_interface__ must be a mapping, not NoneType"),
        (Geometry("text"), "__geo_interface__ must be a mapping, not str"),
        (within_itself(), "nested too deeply"),
        ([[(0, 0), (1, 1), (2, 0, 1)]], "of different shape"),
        ([(0, 0), (np.nan, 1), (3, 3)], "corner 1"),
        (np.array([(0, 0), (4, 1), (3, np.inf)]), "corner 2"),
        ([[0, 0], [1, 2, 3], [3, 3]], ""),
    ],
)
def test_shapes_that_are_no_polygons_are_refused(terrain: Cloud, shape: object, reason: str) -> None:
    with pytest.raises(ValueError, match=reason):
        terrain.inside(shape)
