"""Each row of the table of exactness: what tiles give is what the whole cloud gives, however it is cut."""

from __future__ import annotations

import json
import math
from pathlib import Path

import numpy as np
import pytest
from conftest import Array, write_ply
from survey import Run, Survey, join_steps, sort, sort_steps, write_manifest

import zor4data
import zor4data.tiles

#: Where random surveys lie: around 0, west and south of it, and where floats lie half a unit apart.
PLACES = [(0.0, 0.0), (-3000.0, -150.0), (350000.0, 5000000.0)]


def scan(seed: int, count: int, place: tuple[float, float]) -> Array:
    """Random ground, roofs and masts some 200 units wide, with points on the borders and corners of tilings."""
    rng = np.random.default_rng(seed)
    xy = np.round(rng.uniform(-100.0, 100.0, (count, 2)), 3)
    xy = np.where(rng.random((count, 2)) < 0.2, np.round(xy / 12.5) * 12.5, xy)  # borders; both: corners
    xy = np.where(rng.random((count, 1)) < 0.05, np.round(xy / 50.0) * 50.0, xy)
    z = 4.0 * np.sin(xy[:, 0] / 20.0) + 3.0 * np.cos(xy[:, 1] / 30.0)
    roof = (np.mod(xy[:, 0], 40.0) < 16.0) & (np.mod(xy[:, 1], 32.0) < 14.0)
    z += 9.0 * roof + rng.exponential(1.0, count) * (rng.random(count) < 0.3)
    xyz: Array = np.column_stack([xy + place, z])[rng.permutation(count)]
    return xyz


class RandomSurvey(Survey):
    """One with colours where the seed is odd."""

    def __init__(self, folder: Path, run_program: Run, seed: int) -> None:
        self.rng = np.random.default_rng(seed)
        self.place = PLACES[seed % len(PLACES)]
        xyz = scan(seed, 3000, self.place)
        rgb = self.rng.integers(0, 256, xyz.shape).astype(np.uint8) if seed % 2 else None
        super().__init__(write_ply(folder / "scan.ply", xyz, rgb), run_program)
        #: Of tiles: two whose borders go through the points on purpose, and one that is no round number.
        self.sizes = [50.0, 100.0, round(float(self.rng.uniform(30.0, 250.0)), 3)]


@pytest.fixture(scope="module", params=range(6))
def survey(request: pytest.FixtureRequest, tmp_path_factory: pytest.TempPathFactory, run_program: Run) -> RandomSurvey:
    """By its seed."""
    return RandomSurvey(tmp_path_factory.mktemp("random"), run_program, request.param)


def test_cores_have_every_point_once(survey: RandomSurvey, tmp_path: Path) -> None:
    whole = survey.whole()
    for size in survey.sizes:
        tiles = survey.cut(size)
        assert tiles.count() == len(whole) == 3000
        cores = tiles.map(lambda cloud, core: cloud.points[core.mask(cloud)])
        assert [len(core) for core in cores] == [tile.points for tile in tiles.tiles]
        np.testing.assert_array_equal(sort_steps(np.concatenate(cores)), sort_steps(whole.points))


def test_buffers_have_all_points_around_their_core(survey: RandomSurvey, tmp_path: Path) -> None:
    whole, tiles = survey.whole(), survey.cut(50.0, 20.0)
    for reach in (0.0, 7.3, 20.0):
        near = tiles.map(lambda cloud, core: cloud.points, buffer=reach)
        for tile, records in zip(tiles.tiles, near):
            wanted = whole.points[tile.core.mask(whole, reach)]
            np.testing.assert_array_equal(sort_steps(records), sort_steps(wanted))


def test_ground_is_that_of_the_whole(survey: RandomSurvey, tmp_path: Path) -> None:
    wanted = sort_steps(survey.whole().ground().points)
    assert 300 < len(wanted) < 2900
    for size in survey.sizes:
        parts = survey.cut(size).ground(tmp_path / f"ground{size}")
        np.testing.assert_array_equal(join_steps(parts), wanted)


@pytest.mark.parametrize("scale", [0.3048, 1200 / 3937, 2.5])
def test_ground_in_other_units_is_that_of_the_whole(survey: RandomSurvey, tmp_path: Path, scale: float) -> None:
    wanted = sort_steps(survey.whole().ground(unit_scale=scale).points)
    for size in survey.sizes:
        parts = survey.cut(size, 220.0).ground(tmp_path / f"ground{size}", unit_scale=scale)
        np.testing.assert_array_equal(join_steps(parts), wanted)


def test_rectangles_are_counted_by_the_coordinates_alone(survey: RandomSurvey, run_program: Run) -> None:
    (x, y, _), rng = survey.whole().xyz().T, survey.rng
    west, south = survey.place
    corners = [(-50.0, 50.0), (50.0, 50.0), (-1000.0, 1000.0), (200.0, 300.0), (20.0, -20.0), (-100.0, 0.0)]
    rects = [(west + low, south + low, west + high, south + high) for low, high in corners]
    for _ in range(5):
        i, k = rng.integers(0, len(x), 2)  # its corners are points
        rects.append((min(x[i], x[k]), min(y[i], y[k]), max(x[i], x[k]), max(y[i], y[k])))
    for size in survey.sizes:
        tiles = survey.cut(size)
        for xmin, ymin, xmax, ymax in rects:
            wanted = ((xmin <= x) & (x <= xmax) & (ymin <= y) & (y <= ymax)).sum()
            assert tiles.count((xmin, ymin, xmax, ymax)) == wanted


def test_polygons_hold_the_points_of_the_whole(survey: RandomSurvey, tmp_path: Path) -> None:
    whole, rng = survey.whole(), survey.rng
    for size in survey.sizes:
        tiles = survey.cut(size)
        for corners in (3, 4, 9):
            turn = np.sort(rng.uniform(0.0, 2.0 * np.pi, corners))
            star = np.column_stack([np.cos(turn), np.sin(turn)]) * rng.uniform(20.0, 110.0, (corners, 1))
            ring = np.round(star / 12.5) * 12.5 + survey.place  # its corners are points
            found = tiles.inside(ring)
            wanted = whole.points[whole.inside(ring)]
            np.testing.assert_array_equal(sort_steps(found.records), sort_steps(wanted))


def test_thinned_points_are_one_a_cube_for_any_tiling(survey: RandomSurvey, tmp_path: Path) -> None:
    whole = survey.whole()
    for spacing in (0.7, 12.5, 50.0):
        # A slow way to the same: the cubes one after the other.
        best: dict[tuple[float, ...], tuple[object, ...]] = {}
        for (x, y, z), record in zip((whole.xyz() / spacing).tolist(), whole.points.tolist()):
            cube = math.floor(x), math.floor(y), math.floor(z)
            beside = (x - cube[0] - 0.5) ** 2 + (y - cube[1] - 0.5) ** 2 + (z - cube[2] - 0.5) ** 2
            best[cube] = min(best.get(cube, (math.inf,)), (beside, *record))
        wanted = sort(np.array([row[1:] for row in best.values()]))
        for size, buffer in [(size, 67.0) for size in survey.sizes] + [(77.7, 50.0), (64.0, 90.0)]:
            parts = survey.cut(size, buffer).thin(spacing, tmp_path / f"{spacing}-{size}")
            np.testing.assert_array_equal(join_steps(parts), wanted)


#: Points one behind the other. The first stays if another one does not, which stays if the last does not: that one
#: lies 50 units from the first. What lies beside them keeps a point from staying by itself.
CHAIN_50 = [
    (99.5, 0, 0),
    (83.5, 0, -100),
    (116, 0, 0),
    (132.5, 0, -4),
    (133.5, 8.5, -100),
    (141, -8.5, -4),
    (149.5, -8.5, -8),
]

#: The same with a link more: the last lies 59 units from the first.
CHAIN_59 = [
    (99.5, 0, 0),
    (83.5, 0, -100),
    (116, 0, 0),
    (132.5, 0, -4),
    (133, 8.5, -100),
    (141, -8.5, -4),
    (149.5, -8.5, -8),
    (150, -4, -100),
    (154, -13, -8),
    (158.5, -13, -12),
]


def has(xyz: Array, place: tuple[float, ...]) -> bool:
    """Whether a point is among some."""
    return bool((np.abs(xyz - place) < 0.001).all(axis=1).any())


@pytest.mark.parametrize("turn", range(4))
@pytest.mark.parametrize("distance, chain", [(50, CHAIN_50), (59, CHAIN_59)])
def test_a_point_far_away_decides_and_a_buffer_of_33_fails(
    tmp_path: Path, run_program: Run, turn: int, distance: int, chain: list[tuple[float, ...]]
) -> None:
    def place(points: list[tuple[float, ...]]) -> Array:
        """Along x, back, along y, and back."""
        xyz = np.array(points, dtype=float)
        xyz[:, 0] *= [1, -1, 1, -1][turn]
        return xyz if turn < 2 else xyz[:, [1, 0, 2]]

    full, short = place(chain), place(chain[:-1])
    reach = np.abs(full[-1] - full[0])[:2]
    assert reach.max() == distance
    survey = Survey(write_ply(tmp_path / "chain.ply", full), run_program)
    ground = survey.whole().ground()
    assert has(ground.xyz(), full[0]) != has(zor4data.from_arrays(short).ground().xyz(), full[0])
    for size in (100.0, 20.0):
        parts = survey.cut(size).ground(tmp_path / f"ground{size}")
        np.testing.assert_array_equal(join_steps(parts), sort_steps(ground.points))

    narrow = survey.cut(100.0, 33.0)
    with pytest.raises(ValueError, match="a buffer of 33: the ground needs 67"):
        narrow.ground(tmp_path / "narrow")
    kept = narrow.map(lambda cloud, core: cloud.xyz(cloud.ground_mask() & core.mask(cloud)))
    assert has(np.concatenate(kept), full[0]) != has(ground.xyz(), full[0])


def test_each_window_reaches_one_width_and_no_farther() -> None:
    """The links of the proof: what lies beyond the sum of the windows changes nothing, whatever lies between."""
    widths = [3.0, 5.0, 9.0, 17.0, 33.0]
    assert sum(widths) == 67.0
    rng = np.random.default_rng(7)
    for _ in range(60):
        count = 400
        xyz = rng.uniform((0.0, -9.0, -30.0), (160.0, 9.0, 30.0), (count, 3)).round(4)
        xyz[0, :2] = 0.0
        near = xyz[xyz[:, 0] <= 67.01]
        found = [has(zor4data.from_arrays(points).ground().xyz(), xyz[0]) for points in (xyz, near)]
        assert found[0] == found[1]


def test_outline_and_level_of_detail_differ_a_little(tmp_path: Path, run_program: Run) -> None:
    def area(corners: Array) -> float:
        (x, y), (u, v) = corners[:-1].T, corners[1:].T
        return abs(float(np.sum(x * v - u * y))) / 2.0

    run_program("make-sample", tmp_path / "terrain.ply", "--points", 200000)
    survey = Survey(tmp_path / "terrain.ply", run_program)
    whole, tiles = survey.whole(), survey.cut(45.0)
    assert len(tiles) == 16
    assert area(tiles.outline(3.2)) == pytest.approx(area(whole.outline(3.2)), rel=0.001)
    thinned = sum(tiles.map(lambda cloud, core: int(core.mask(cloud)[cloud.lod(2.0)].sum())))
    assert 0.25 < thinned / len(whole.lod(2.0)) < 4.0  # cubes of octrees differ by less than half and double


def test_ground_goes_by_the_units_that_the_files_state(survey: RandomSurvey, run_program: Run, tmp_path: Path) -> None:
    tiles = survey.cut(50.0, 220.0)
    stated = json.loads((tiles.folder / "manifest.json").read_text())
    one = survey.cut(1.0e6, 1.0e5)

    def state(**units: object) -> zor4data.tiles.Tiles:
        """The same tiles, as of files that state other units."""
        manifest = tiles.folder / "stated.json"
        write_manifest(manifest, {**stated, **units})
        return zor4data.tiles.open(manifest)

    in_feet = state(metres_per_unit=0.3048, metres_per_height_unit=1.0)
    parts = in_feet.ground(tmp_path / "ground")
    run_program("ground", one.folder / one.tiles[0].file, "--unit-scale=0.3048,1", "-o", tmp_path / "whole.cld")
    wanted = sort_steps(zor4data.read(tmp_path / "whole.cld").points)
    np.testing.assert_array_equal(join_steps(parts), wanted)
    kept = in_feet.map(lambda cloud, core: cloud.points[cloud.ground_mask() & core.mask(cloud)])
    np.testing.assert_array_equal(sort_steps(np.concatenate(kept)), wanted)
    only_heights = state(metres_per_height_unit=0.3048)
    parts = only_heights.ground(tmp_path / "heights")
    run_program("ground", one.folder / one.tiles[0].file, "--unit-scale=1,0.3048", "-o", tmp_path / "whole.cld")
    np.testing.assert_array_equal(join_steps(parts), sort_steps(zor4data.read(tmp_path / "whole.cld").points))
    with pytest.raises(ValueError, match="angles"):
        state(angles=True).ground(tmp_path / "ground")
    with pytest.raises(ValueError, match="the ground needs 268, 67 metres"):
        state(metres_per_unit=0.25, metres_per_height_unit=0.25).ground(tmp_path / "ground")
