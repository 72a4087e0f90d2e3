"""Clouds of arrays, and arrays of clouds."""

from __future__ import annotations

import gc
import time

import numpy as np
import pytest
from conftest import Array, landscape, scatter
from test_life import resident

import zor4data
from zor4data import Cloud


@pytest.mark.parametrize("dtype", [np.float64, np.float32])
def test_from_arrays_holds_every_point_to_half_a_step(dtype: type) -> None:
    xyz: Array = scatter(5000, 1).astype(dtype)
    cloud = zor4data.from_arrays(xyz)
    assert len(cloud) == 5000
    nearest = cloud.nearest(xyz)
    assert len(np.unique(nearest)) == 5000
    assert np.abs(cloud.xyz(nearest) - xyz).max() <= 0.5000001e-4


def test_from_arrays_keeps_points_at_one_place() -> None:
    assert len(zor4data.from_arrays(np.ones((300, 3)))) == 300


def test_from_arrays_and_back_with_the_same_origin_changes_nothing() -> None:
    cloud = zor4data.from_arrays(scatter(3000, 2), origin=(400.0, 4100.0, 0.0))
    again = cloud
    for _ in range(3):
        again = zor4data.from_arrays(again.xyz(), origin=cloud.origin)
    assert (np.sort(again.points) == np.sort(cloud.points)).all()


def test_from_arrays_colours_stay_with_their_points() -> None:
    xyz, rgb = landscape(4000)
    cloud = zor4data.from_arrays(xyz, rgb)
    assert cloud.has_color
    rows = cloud.nearest(xyz)
    assert (np.abs(cloud.xyz(rows) - xyz) < 1e-4).all()
    assert (cloud.rgb(rows) == rgb).all()


def test_from_arrays_takes_any_layout() -> None:
    xyz = scatter(100, 3)
    wanted = zor4data.from_arrays(xyz).points
    for same in (np.asfortranarray(xyz), xyz[::-1][::-1], xyz.astype(">f8"), xyz.tolist()):
        assert (zor4data.from_arrays(same).points == wanted).all()
    whole = np.arange(30).reshape(10, 3)
    assert (np.sort(zor4data.from_arrays(whole).xyz()[:, 0]) == whole[:, 0]).all()


@pytest.mark.parametrize(
    "xyz, reason",
    [
        (np.zeros(3), r"N x 3 array, not one of shape \(3,\)"),
        (np.zeros((2, 4)), r"N x 3 array, not one of shape \(2, 4\)"),
        (np.zeros((2, 3), dtype=complex), "float64 or float32"),
        ([["a", "b", "c"]], "float64 or float32"),
        ([[0, 0, 0], [0, float("nan"), 0]], r"xyz\[1, 1\] is -?nan: .*finite"),
        ([[0, 0, 0], [0, 0, float("inf")]], r"xyz\[1, 2\] is inf: .*finite"),
        ([[float("nan"), 0, 0]], r"xyz\[0, 0\] .*finite"),
        ([[0, 0, 0], [214748.4, 0, 0]], r"xyz\[1, 0\].*farther than 214748.3647"),
        ([[0, 0, 0], [-214748.4, 0, 0]], r"xyz\[1, 0\].*farther than 214748.3647"),
        ([[1e300, 0, 0]], r"xyz\[0, 0\].*which no float32 holds"),
    ],
)
def test_from_arrays_of_what_is_no_cloud_says_why(xyz: object, reason: str) -> None:
    with pytest.raises(ValueError, match=reason):
        zor4data.from_arrays(xyz)  # type: ignore[arg-type]


@pytest.mark.parametrize(
    "rgb, reason",
    [
        (np.zeros((2, 3), np.uint8), "shape of xyz"),
        (np.zeros((4, 3)), "multiply colours from 0 to 1 by 255"),
        (np.full((4, 3), 256), "from 0 to 255"),
        (np.full((4, 3), -1), "from 0 to 255"),
    ],
)
def test_from_arrays_of_wrong_colours_says_why(rgb: Array, reason: str) -> None:
    with pytest.raises(ValueError, match=reason):
        zor4data.from_arrays(np.zeros((4, 3)), rgb)


@pytest.mark.parametrize("origin", [(1, 2), (np.nan, 0, 0), (1e300, 0, 0), [[1, 2, 3]]])
def test_from_arrays_with_a_wrong_origin_says_so(origin: object) -> None:
    with pytest.raises(ValueError, match="origin"):
        zor4data.from_arrays(np.zeros((4, 3)), origin=origin)  # type: ignore[arg-type]


def test_points_at_the_ends_of_the_reach_are_taken() -> None:
    cloud = zor4data.from_arrays(np.array([[0, 0, 0], [214748.3647, -214748.3647, 1.0]]))
    assert cloud.bounds[1, 0] == pytest.approx(214748.3647, abs=1e-9)


def test_points_is_the_records_themselves() -> None:
    for colours in (False, True):
        xyz, rgb = landscape(2000)
        cloud = zor4data.from_arrays(xyz, rgb if colours else None)
        points = cloud.points
        assert points.dtype == (zor4data.COLOR_POINT if colours else zor4data.POINT)
        assert points.shape == (2000,)
        assert points.itemsize == (16 if colours else 12)
        same = np.stack([points[axis] / 10000 + cloud.origin[k] for k, axis in enumerate("xyz")], axis=1)
        assert (same == cloud.xyz()).all()
        assert points.__array_interface__["data"] == cloud.points.__array_interface__["data"]


def test_points_cannot_be_written() -> None:
    points = zor4data.from_arrays(scatter(100, 4)).points
    with pytest.raises(ValueError, match="read-only"):
        points["x"][3] = 1
    with pytest.raises(ValueError, match="read-only"):
        points[3] = points[4]
    with pytest.raises(ValueError):
        points.flags.writeable = True


def test_fields_renamed_in_one_view_stay_in_all_others() -> None:
    for rgb in (None, np.zeros((9, 3), np.uint8)):
        cloud = zor4data.from_arrays(scatter(9, 1), rgb)
        kept, renamed = cloud.points, cloud.points
        names = kept.dtype.names
        renamed.dtype.names = ("X", "Y", "Z", "R", "G", "B")[: len(names or ())]
        assert kept.dtype.names == names == cloud.points.dtype.names
        assert (zor4data.POINT if rgb is None else zor4data.COLOR_POINT).names == names
        assert (renamed["X"] == kept["x"]).all()


def test_points_outlives_the_cloud() -> None:
    cloud = zor4data.from_arrays(scatter(200000, 5))
    points, copy = cloud.points, cloud.points.copy()
    del cloud
    gc.collect()
    others = [zor4data.from_arrays(np.zeros((200000, 3))) for _ in range(3)]
    assert (points == copy).all()
    assert len(others) == 3


def test_points_of_a_large_cloud_is_at_once() -> None:
    cloud = zor4data.from_arrays(scatter(1_000_000, 6))
    views, times = [cloud.points], []
    memory = resident()
    for _ in range(5):
        start = time.perf_counter()
        views.append(cloud.points)
        times.append(time.perf_counter() - start)
    assert min(times) < 0.001
    assert resident() - memory < 1 << 20


def test_scale_and_origin_tell_coordinates() -> None:
    cloud = zor4data.from_arrays(scatter(10, 7), origin=(500.25, 4000.5, 0.1))
    assert cloud.scale == 1 / 10000
    assert cloud.origin.dtype == np.float64
    assert (cloud.origin == np.array((500.25, 4000.5, 0.1), np.float32).astype(np.float64)).all()


def test_bounds_are_exact() -> None:
    cloud = zor4data.from_arrays(scatter(3000, 8))
    xyz = cloud.xyz()
    assert (cloud.bounds == [xyz.min(axis=0), xyz.max(axis=0)]).all()
    assert np.isnan(zor4data.from_arrays(np.empty((0, 3))).bounds).all()


def test_xyz_takes_every_kind_of_index() -> None:
    cloud = zor4data.from_arrays(scatter(1000, 9))
    xyz = cloud.xyz()
    some = np.array([5, 999, 5, 0])
    mask = np.arange(1000) % 7 == 0
    for name in ("i4", "i8", "u1", "u8", ">i4"):
        dtype = np.dtype(name)
        assert (cloud.xyz(some.astype(dtype) % 200) == xyz[some.astype(dtype) % 200]).all()
    assert (cloud.xyz(mask) == xyz[mask]).all()
    assert (cloud.xyz(slice(10, 900, 3)) == xyz[10:900:3]).all()
    assert (cloud.xyz([3, 4]) == xyz[[3, 4]]).all()
    assert cloud.xyz(7).shape == (3,)
    assert cloud.xyz(np.zeros((2, 5), int)).shape == (2, 5, 3)
    assert cloud.xyz([]).shape == (0, 3)


@pytest.mark.parametrize("colour", [False, True])
@pytest.mark.parametrize("count", [1, 3, 4, 5, 40_001])
def test_xyz_of_all_is_that_of_each_to_the_last_bit(colour: bool, count: int) -> None:
    rng = np.random.default_rng(count)
    offsets = rng.integers(-(2**31) + 1, 2**31 - 1, (count, 3))
    rgb = np.full((count, 3), 7, dtype=np.uint8) if colour else None
    cloud = zor4data.from_arrays(offsets / 10000 + 0.5, rgb, origin=(0.5, 0.5, 0.5))
    assert (np.sort(cloud.points["x"]) == np.sort(offsets[:, 0])).all()
    wanted = np.stack([cloud.points[axis] for axis in "xyz"], axis=1) / 10000.0 + cloud.origin
    assert (cloud.xyz() == wanted).all()
    assert (cloud.xyz(slice(None)) == wanted).all()


def test_xyz_of_no_point_is_an_error() -> None:
    cloud = zor4data.from_arrays(scatter(10, 10))
    for index in (-1, 10, [0, -1], np.int64(2**40), np.uint64(2**64 - 1), np.zeros(9, bool)):
        with pytest.raises(IndexError):
            cloud.xyz(index)  # type: ignore[arg-type]
    with pytest.raises(TypeError):
        cloud.xyz([0.5])


def test_xyz_fills_out() -> None:
    cloud = zor4data.from_arrays(scatter(1000, 11))
    out = np.empty((1000, 3))
    assert cloud.xyz(out=out) is out
    assert (out == cloud.xyz()).all()
    few = np.empty((2, 3))
    assert (cloud.xyz([1, 2], out=few) == out[1:3]).all()
    read_only = np.empty((1000, 3))
    read_only.flags.writeable = False
    for bad in (np.empty((999, 3)), np.empty((1000, 3), np.float32), np.empty((1000, 6))[:, ::2], read_only):
        with pytest.raises(ValueError, match="out must"):
            cloud.xyz(out=bad)  # type: ignore[arg-type]


def test_rgb_of_a_cloud_without_colour_is_an_error() -> None:
    with pytest.raises(ValueError, match="no colours"):
        zor4data.from_arrays(scatter(10, 12)).rgb()


def test_asarray_is_the_coordinates() -> None:
    cloud = zor4data.from_arrays(scatter(100, 13))
    assert (np.asarray(cloud) == cloud.xyz()).all()
    assert np.asarray(cloud, dtype=np.float32).dtype == np.float32
    with pytest.raises(ValueError, match="copy"):
        cloud.__array__(copy=False)


def test_repr_tells() -> None:
    assert repr(zor4data.from_arrays([[1, 2, 3]], [[9, 9, 9]])) == (
        "<zor4data.Cloud: 1 point with colour; x 1.0000 to 1.0000, y 2.0000 to 2.0000, z 3.0000 to 3.0000>"
    )
    assert repr(zor4data.from_arrays(np.empty((0, 3)))) == "<zor4data.Cloud: 0 points>"
    assert "1,234 points;" in repr(zor4data.from_arrays(scatter(1234, 14)))


def test_clouds_are_not_made_or_changed_by_hand() -> None:
    with pytest.raises(TypeError):
        Cloud()
    cloud = zor4data.from_arrays(scatter(10, 15))
    for name in ("points", "origin", "bounds", "colour"):
        with pytest.raises(AttributeError):
            setattr(cloud, name, 1)


def test_take_and_without_make_clouds_of_their_own() -> None:
    cloud = zor4data.from_arrays(scatter(2000, 16))
    before = cloud.points.copy()
    west = cloud.rect(0, 0, 530, 5000)
    taken, rest = cloud.take(west), cloud.without(west)
    assert len(taken) == len(west) and len(taken) + len(rest) == 2000
    assert (np.sort(taken.points) == np.sort(before[west])).all()
    assert (np.sort(rest.points) == np.sort(np.delete(before, west))).all()
    assert (taken.origin == cloud.origin).all()
    assert (cloud.points == before).all()
    assert len(cloud.take([])) == 0 and len(cloud.without(slice(None))) == 0


def test_take_refuses_what_is_no_choice() -> None:
    cloud = zor4data.from_arrays(scatter(10, 17))
    with pytest.raises(ValueError, match="twice"):
        cloud.take([1, 2, 1])
    for wrong in ([10], [-1]):
        with pytest.raises(IndexError):
            cloud.take(wrong)
        with pytest.raises(IndexError):
            cloud.without(wrong)
