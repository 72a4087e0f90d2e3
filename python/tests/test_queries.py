"""Every query against a look at every point with numpy."""

from __future__ import annotations

from pathlib import Path
from typing import Callable

import numpy as np
import pytest
from conftest import scatter, write_ply
from numpy.typing import NDArray

import zor4data
from zor4data import Cloud, Query

Mask = NDArray[np.bool_]

#: Near a border the octree's whole cubes may decide, a few steps of 1/10000 beside it.
NEAR = 5e-4
CLOUDS = [(0, "box"), (1, "box"), (2, "box"), (50, "box"), (4000, "box"), (4000, "flat"), (6000, "clumps")]


@pytest.fixture(params=CLOUDS, ids=lambda p: f"{p[1]}{p[0]}")
def cloud(request: pytest.FixtureRequest) -> Cloud:
    count, shape = request.param
    return zor4data.from_arrays(scatter(count, count + len(shape), shape))


def check(found: NDArray[np.int32], distances: NDArray[np.float64]) -> None:
    """Compare with the points of negative distance to a border, those next to it apart."""
    assert found.dtype == np.int32 and found.ndim == 1
    sure = np.abs(distances) > NEAR
    is_found = np.zeros(len(distances), dtype=bool)
    is_found[found] = True
    assert (is_found[sure] == (distances < 0)[sure]).all()
    assert (np.diff(found) > 0).all()  # in an octree as built the order of the walk is that of the records


def test_all_is_every_point(cloud: Cloud) -> None:
    assert cloud.all().dtype == np.int32
    assert (cloud.all() == np.arange(len(cloud))).all()
    assert (cloud.find(Query.all()) == cloud.all()).all()


@pytest.mark.parametrize("seed", range(12))
def test_clip_same_as_numpy(cloud: Cloud, seed: int) -> None:
    rng = np.random.default_rng(seed)
    normals = rng.normal(size=(rng.integers(1, 6), 3))
    normals /= np.linalg.norm(normals, axis=1)[:, None]
    through = rng.uniform((505, 4005, 20), (555, 4035, 40), (len(normals), 3))
    planes = np.column_stack([normals, -(normals * through).sum(axis=1)])
    check(cloud.clip(planes), (cloud.xyz() @ planes[:, :3].T + planes[:, 3]).max(axis=1, initial=-np.inf))


def test_clip_by_no_plane_is_every_point(cloud: Cloud) -> None:
    assert len(cloud.clip([])) == len(cloud)


@pytest.mark.parametrize("seed", range(12))
def test_rect_same_as_numpy(cloud: Cloud, seed: int) -> None:
    rng = np.random.default_rng(seed)
    x = np.sort(rng.uniform(495, 565, 2))
    y = np.sort(rng.uniform(3995, 4045, 2))
    px, py, _ = cloud.xyz().T
    distances = np.max([x[0] - px, px - x[1], y[0] - py, py - y[1]], axis=0)
    check(cloud.rect(x[0], y[0], x[1], y[1]), distances)


def test_rect_turned_inside_out_is_none(cloud: Cloud) -> None:
    assert len(cloud.rect(560, 4040, 500, 4000)) == 0


@pytest.mark.parametrize("seed", range(12))
def test_near_line_same_as_numpy(cloud: Cloud, seed: int) -> None:
    rng = np.random.default_rng(seed)
    p1, p2 = rng.uniform((495, 3995), (565, 4045), (2, 2))
    distance = rng.uniform(0.1, 10.0)
    along = (p2 - p1) / np.linalg.norm(p2 - p1)
    places = cloud.xyz()[:, :2] - p1
    t, beside = places @ along, places @ (-along[1], along[0])
    distances = np.max([-t, t - np.linalg.norm(p2 - p1), np.abs(beside) - distance], axis=0)
    check(cloud.near_line(p1, p2, distance), distances)


def test_near_line_with_its_ends_first_and_last() -> None:
    grid = np.stack(np.meshgrid(np.arange(20.0), np.arange(20.0), [1.0]), axis=-1).reshape(-1, 3)
    cloud = zor4data.from_arrays(grid, origin=(0, 0, 0))
    corridor = cloud.near_line((2, 3), (12, 3), 0.5)
    assert len(corridor) == 11
    both = cloud.near_line((2, 3), (12, 3), 0.5, start=True, end=True)
    assert (cloud.xyz(both[0])[:2] == (2, 3)).all() and (cloud.xyz(both[-1])[:2] == (12, 3)).all()
    assert (both[1:-1] == corridor).all()


@pytest.mark.parametrize("spacing", [0.01, 0.3, 1.0, 2.5, 9.0, 260.0, 0.0, float("nan"), -1.0])
def test_lod_is_a_thinned_cloud(cloud: Cloud, spacing: float) -> None:
    found = cloud.lod(spacing)
    assert found.dtype == np.int32
    assert len(np.unique(found)) == len(found)
    if not spacing > 0 or spacing > 240:
        assert len(found) == len(cloud)
    if len(cloud):
        assert 0 < len(found) <= len(cloud)


@pytest.mark.parametrize("spacing", [0.4, 1.0, 2.5, 9.0])
def test_lod_same_as_the_command_line(spacing: float, tmp_path: Path, run_program: Callable[..., None]) -> None:
    cloud = zor4data.from_arrays(scatter(5000, 3))
    cloud.write(tmp_path / "in.cld")
    planes = [[0.5, 0.25, 0.1, -1300.0]]
    asked: list[tuple[str, NDArray[np.int32], list[str]]] = [
        ("lod", cloud.lod(spacing), []),
        ("both", cloud.lod_clip(spacing, planes), ["--clip", "0.5,0.25,0.1,-1300"]),
    ]
    for name, found, more in asked:
        out = tmp_path / f"{name}.csv"
        run_program("points", tmp_path / "in.cld", "--lod", spacing, *more, "-o", out, "-q")
        rows = np.loadtxt(out, delimiter=",", skiprows=1, usecols=(0, 1, 2), ndmin=2)
        assert np.abs(cloud.xyz(found) - rows).max(initial=0) < 0.51e-4


def test_lod_clip_of_planes_far_away_is_the_level_of_detail(cloud: Cloud) -> None:
    for spacing in (0.3, 1.0, 2.5):
        assert set(cloud.lod_clip(spacing, [[0, 0, 1, -1e6]])) <= set(cloud.all())
        assert len(cloud.lod_clip(spacing, [[0, 0, 1, 1e6]])) == 0


def even_odd(ring: NDArray[np.float64], x: NDArray[np.float64], y: NDArray[np.float64]) -> Mask:
    """Which places a ring holds."""
    inside = np.zeros(len(x), dtype=bool)
    for (x1, y1), (x2, y2) in zip(ring, np.roll(ring, -1, axis=0)):
        crosses = (y1 > y) != (y2 > y)
        inside ^= crosses & (x < (x2 - x1) * (y - y1) / np.where(y2 == y1, 1.0, y2 - y1) + x1)
    return inside


@pytest.mark.parametrize("seed", range(12))
def test_inside_same_as_numpy(cloud: Cloud, seed: int) -> None:
    rng = np.random.default_rng(seed)
    rings = [rng.uniform((495, 3995), (565, 4045), (rng.integers(3, 9), 2)) for _ in range(3)]
    x, y, _ = cloud.xyz().T
    wanted = (even_odd(rings[0], x, y) & ~even_odd(rings[1], x, y)) | even_odd(rings[2], x, y)
    shape = {
        "type": "MultiPolygon",
        "coordinates": [[rings[0].tolist(), rings[1].tolist()], [rings[2].tolist()]],
    }
    assert (cloud.inside(shape) == np.flatnonzero(wanted)).all()
    assert (cloud.inside(shape, outside=True) == np.flatnonzero(~wanted)).all()


def test_inside_counts_points_on_edges_and_corners() -> None:
    grid = np.stack(np.meshgrid(np.arange(9.0), np.arange(9.0), [1.0]), axis=-1).reshape(-1, 3)
    cloud = zor4data.from_arrays(grid, origin=(0, 0, 0))
    outer = [(1, 1), (7, 1), (7, 7), (1, 7), (1, 1)]
    hole = [(3, 3), (5, 3), (5, 5), (3, 5), (3, 3)]
    assert len(cloud.inside({"type": "Polygon", "coordinates": [outer, hole]})) == 49 - 1
    assert len(cloud.inside(np.array([(0, 0), (4, 0), (4, 4)]))) == 15


@pytest.mark.parametrize("seed", range(6))
def test_nearest_same_as_numpy(cloud: Cloud, seed: int) -> None:
    rng = np.random.default_rng(seed)
    places = rng.uniform((490, 3990, 10), (570, 4050, 50), (40, 3))
    for width in (2, 3):
        for most in (np.inf, 5.0):
            squares = ((places[:, None, :width] - cloud.xyz()[None, :, :width]) ** 2).sum(axis=2)
            found = cloud.nearest(places[:, :width], most)
            assert found.dtype == np.int32 and found.shape == (40,)
            if len(cloud) == 0:
                assert (found == -1).all()
                continue
            best = squares.argmin(axis=1)
            wanted = np.where(squares.min(axis=1) <= most * most, best, -1)
            assert (found == wanted).all()


@pytest.mark.parametrize("seed", range(6))
def test_pick_same_as_numpy(cloud: Cloud, seed: int) -> None:
    rng = np.random.default_rng(seed)
    origins = rng.uniform((490, 3990, 60), (570, 4050, 90), (30, 3))
    directions = rng.uniform((505, 4005, 20), (555, 4035, 40), (30, 3)) - origins
    angle = rng.uniform(0.001, 0.05)
    planes = np.array([[0.0, 0.0, 1.0, -33.3]])
    units = directions / np.linalg.norm(directions, axis=1)[:, None]
    xyz = cloud.xyz()
    for some_planes in (np.empty((0, 4)), planes):
        hidden = (xyz @ some_planes[:, :3].T + some_planes[:, 3] > 0).any(axis=1)
        found = cloud.pick(origins, directions, angle, planes=some_planes)
        for ray, (at, unit) in enumerate(zip(origins, units)):
            along = (xyz - at) @ unit
            beside = np.linalg.norm(np.cross(xyz - at, unit), axis=1)
            seen = ~hidden & (along > 0) & (beside <= np.tan(angle) * along)
            best = np.where(seen, along, np.inf)
            assert found[ray] == (best.argmin() if seen.any() else -1)


def test_pick_and_nearest_take_one_or_many() -> None:
    cloud = zor4data.from_arrays(scatter(100, 5))
    assert cloud.nearest((530, 4020, 30)).shape == ()
    assert cloud.nearest(np.zeros((2, 3, 3))).shape == (2, 3)
    assert cloud.pick((530, 4020, 90), (0, 0, -1), 0.3).shape == ()
    assert cloud.pick(np.zeros((4, 1, 3)), np.ones((5, 3)), 0.1).shape == (4, 5)
    for wrong in (np.zeros(1), np.zeros(4), np.zeros((2, 4))):
        with pytest.raises(ValueError, match="coordinates"):
            cloud.nearest(wrong)
    for angle in (-0.1, 1.6, float("nan")):
        with pytest.raises(ValueError, match="angle"):
            cloud.pick((0, 0, 0), (0, 0, 1), angle)


def test_queries_of_wrong_shapes_say_so(terrain: Cloud) -> None:
    with pytest.raises(ValueError, match="planes"):
        terrain.clip([1, 2, 3, 4])
    with pytest.raises(ValueError, match="planes"):
        terrain.lod_clip(1.0, [[1, 2, 3]])
    with pytest.raises(ValueError, match="p2"):
        terrain.near_line((1, 2), (1,), 3.0)
    with pytest.raises(ValueError, match="Point"):
        terrain.inside({"type": "Point", "coordinates": (1, 2)})
    with pytest.raises(TypeError, match="polygons"):
        terrain.inside(3)
    with pytest.raises(ValueError, match="ring"):
        terrain.inside(np.zeros((3, 1)))


def test_query_tells_what_it_asks_and_travels(terrain: Cloud) -> None:
    import pickle

    queries = [
        Query.all(),
        Query.lod(2.0),
        Query.clip([[1, 0, 0, -40]]),
        Query.lod_clip(2.0, [[1, 0, 0, -40]]),
        Query.rect(1, 2, 30, 40),
        Query.near_line((1, 2), (50, 60), 3.0, start=True),
        Query.inside([(0, 0), (40, 0), (40, 40)], outside=True),
        Query.inside(np.array([(0, 0), (40, 0), (40, 40)])),
    ]
    for query in queries:
        assert repr(query).startswith("Query.") and repr(pickle.loads(pickle.dumps(query))) == repr(query)
        again = pickle.loads(pickle.dumps(query))
        assert (terrain.find(again) == terrain.find(query)).all()
    assert repr(queries[5]) == "Query.near_line((1.0, 2.0), (50.0, 60.0), 3.0, start=True, end=False)"
    with pytest.raises(TypeError):
        Query.inside([], True)  # type: ignore[misc]
    with pytest.raises(TypeError):
        Query.near_line((1, 2), (50, 60), 3.0, True)  # type: ignore[misc]
    with pytest.raises(TypeError):
        Query()


def test_shapely_shapes_are_polygons(terrain: Cloud) -> None:
    geometry = pytest.importorskip("shapely.geometry")
    circle = geometry.Point(50, 50).buffer(20).difference(geometry.Point(50, 50).buffer(5))
    x, y, _ = terrain.xyz().T
    radius = np.hypot(x - 50, y - 50)
    found = terrain.inside(circle)
    assert radius[found].min() > 4.9 and radius[found].max() <= 20.0
    assert len(found) == pytest.approx(4 * np.pi * (400 - 25), rel=0.05)
    both = terrain.inside([circle, geometry.box(0, 0, 10, 10)])
    assert len(both) == len(found) + len(terrain.inside(geometry.box(0, 0, 10, 10)))
    assert len(terrain.inside(geometry.MultiPolygon([circle]))) == len(found)


def test_real_clouds_same_as_numpy(real_files: Path) -> None:
    cloud = zor4data.read(real_files / "las" / "autzen_trim.las")
    (x0, y0, _), (x1, y1, _) = cloud.bounds
    px, py, _ = cloud.xyz().T
    for share in (0.1, 0.5):
        x, y = x0 + share * (x1 - x0), y0 + share * (y1 - y0)
        check(cloud.rect(x0 - 1, y0 - 1, x, y), np.max([px - x, py - y], axis=0))


def test_read_points_same_as_written(tmp_path: Path) -> None:
    xyz = scatter(500, 3)
    cloud = zor4data.read(write_ply(tmp_path / "a.ply", xyz))
    assert len(cloud) == 500
    assert np.abs(np.sort(cloud.xyz(), axis=0) - np.sort(xyz.astype(np.float32).astype(float), axis=0)).max() < 1.1e-4
