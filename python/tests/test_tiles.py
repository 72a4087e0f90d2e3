"""Tiles give what the whole cloud gives, whoever works on them."""

from __future__ import annotations

import subprocess
import sys
from pathlib import Path
from typing import Callable

import numpy as np
import pytest
from conftest import Array, landscape, write_ply
from survey import Run, hash_files, sort

import zor4data
import zor4data.tiles
from zor4data.tiles import Tiles, TilesError


@pytest.fixture(scope="module")
def folder(tmp_path_factory: pytest.TempPathFactory) -> Path:
    """A landscape of about 150 by 150 m, as a PLY file, and what is made of it."""
    made = tmp_path_factory.mktemp("survey")
    write_ply(made / "survey.ply", *landscape(90000))
    return made


@pytest.fixture(scope="module")
def cut(folder: Path, run_program: Run) -> Callable[[float], Tiles]:
    """Cuts it into tiles of any size, once each."""

    def tiles_of(size: float) -> Tiles:
        made = folder / f"tiles{size:g}"
        if not made.exists():
            run_program("tile", folder / "survey.ply", "-o", made, "--size", size)
        return zor4data.tiles.open(made)

    return tiles_of


@pytest.fixture(scope="module")
def whole(folder: Path, run_program: Run) -> zor4data.Cloud:
    """All its points as one cloud, none removed: one tile."""
    run_program("tile", folder / "survey.ply", "-o", folder / "one", "--size", 1000)
    return zor4data.read(folder / "one" / "tile_0_0.cld")


def count_core(cloud: zor4data.Cloud, core: zor4data.tiles.Core) -> int:
    """Can be sent to workers."""
    return int(core.mask(cloud).sum())


def refuse_west(cloud: zor4data.Cloud, core: zor4data.tiles.Core) -> int:
    """Fails in the first column."""
    if core.xmin < 1.0:
        raise ValueError("not in the west")
    return len(cloud)


@pytest.mark.parametrize("size", [37.5, 60.0, 200.0])
def test_ground_of_all_cores_is_the_ground_of_the_whole(
    cut: Callable[[float], Tiles], whole: zor4data.Cloud, tmp_path: Path, size: float
) -> None:
    parts = cut(size).ground(tmp_path / "ground")
    assert 0 < len(parts) < len(whole)
    np.testing.assert_array_equal(sort(parts.xyz()), sort(whole.ground().xyz()))


def test_ground_is_what_the_program_writes(cut: Callable[[float], Tiles], run_program: Run, tmp_path: Path) -> None:
    tiles = cut(60.0)
    parts = tiles.ground(tmp_path / "ground")
    for tile in tiles.tiles:
        core = ",".join(map(repr, tile.core))
        run_program("ground", tiles.folder / tile.file, f"--core={core}", "-o", tmp_path / tile.file)
        ours, theirs = zor4data.read(parts.folder / tile.file), zor4data.read(tmp_path / tile.file)
        np.testing.assert_array_equal(sort(ours.xyz()), sort(theirs.xyz()))


def test_counts_and_polygons_are_those_of_the_whole(cut: Callable[[float], Tiles], whole: zor4data.Cloud) -> None:
    tiles = cut(37.5)
    assert tiles.count() == len(whole) == sum(tiles.map(count_core, buffer=0.0))
    for rect in ((10.0, 20.0, 90.0, 33.0), (-5.0, -5.0, 500.0, 500.0), (300.0, 0.0, 400.0, 9.0)):
        assert tiles.count(rect) == len(whole.rect(*rect))
    triangle = np.array([(10.0, 10.0), (140.0, 30.0), (60.0, 145.0)])
    found, wanted = tiles.inside(triangle), whole.inside(triangle)
    np.testing.assert_array_equal(sort(found.xyz()), sort(whole.xyz(wanted)))
    assert found.rgb().shape == (len(wanted), 3)
    assert len(tiles.inside([])) == 0


def test_thinned_points_are_the_same_for_any_tiling(cut: Callable[[float], Tiles], tmp_path: Path) -> None:
    thinned = [sort(cut(size).thin(2.5, tmp_path / str(size)).xyz()) for size in (37.5, 60.0, 200.0)]
    np.testing.assert_array_equal(thinned[0], thinned[1])
    np.testing.assert_array_equal(thinned[0], thinned[2])
    cubes = np.floor(thinned[0] / 2.5)
    assert len(np.unique(cubes, axis=0)) == len(cubes) > 3000


def test_outline_is_near_that_of_the_whole(cut: Callable[[float], Tiles], whole: zor4data.Cloud) -> None:
    def area(outline: Array) -> float:
        (x, y), (u, v) = outline[:-1].T, outline[1:].T
        return abs(float(np.sum(x * v - u * y))) / 2.0

    assert area(cut(60.0).outline(2.0)) == pytest.approx(area(whole.outline(2.0)), rel=0.001)


def test_a_failing_tile_is_told_and_the_others_go_on(
    cut: Callable[[float], Tiles], capfd: pytest.CaptureFixture[str]
) -> None:
    tiles = cut(60.0)
    with pytest.raises(TilesError, match=r"3 of 9 tiles failed, tile_0_\d.cld first") as failed:
        tiles.map(refuse_west)
    assert sorted(failed.value.failures) == ["tile_0_0.cld", "tile_0_1.cld", "tile_0_2.cld"]
    assert sum(result is not None for result in failed.value.results) == 6
    told = capfd.readouterr().err
    for file in failed.value.failures:
        assert f"map: {file} failed" in told and f".only('\"'\"'{file}'\"'\"')" in told


def test_the_command_of_a_failed_tile_repeats_it(
    cut: Callable[[float], Tiles], capfd: pytest.CaptureFixture[str], tmp_path: Path
) -> None:
    tiles = cut(60.0)
    out = tmp_path / "out with 'quotes'"
    (out / "tile_1_1.cld").mkdir(parents=True)
    with pytest.raises(TilesError, match="1 of 9 tiles failed"):
        tiles.ground(out)
    (command,) = (line for line in capfd.readouterr().err.splitlines() if line.startswith(f"    {sys.executable} -c "))
    (out / "tile_1_1.cld").rmdir()
    subprocess.run(command, shell=True, check=True)
    assert len(zor4data.read(out / "tile_1_1.cld")) > 0
    tiles.ground(tmp_path / "again")
    assert hash_files(out) == hash_files(tmp_path / "again")


def test_a_core_without_ground_has_no_file(folder: Path, run_program: Run, tmp_path: Path) -> None:
    # A deck 10 m above two points at its sides: what is in the middle tile is not ground.
    x, y = np.meshgrid(np.arange(0.5, 30.0), np.arange(0.5, 10.0))
    deck = (x > 9.0) & (x < 21.0)
    write_ply(tmp_path / "deck.ply", np.stack([x, y, 10.0 * deck], axis=-1).reshape(-1, 3))
    run_program("tile", tmp_path / "deck.ply", "-o", tmp_path / "tiles", "--size", 10)
    out = tmp_path / "ground"
    out.mkdir()
    (out / "tile_1_0.cld").write_bytes(b"of an earlier run")
    parts = zor4data.tiles.open(tmp_path / "tiles").ground(out)
    assert parts.counts[1] == 0 and len(parts) == 180
    assert sorted(path.name for path in out.iterdir()) == ["tile_0_0.cld", "tile_2_0.cld"]
    assert len(parts.xyz()) == 180


def test_wrong_use_is_refused(cut: Callable[[float], Tiles], folder: Path, run_program: Run, tmp_path: Path) -> None:
    tiles = cut(60.0)
    with pytest.raises(ValueError, match="take the place of the tiles"):
        tiles.ground(tiles.folder)
    with pytest.raises(ValueError, match="cut with 67"):
        tiles.map(count_core, buffer=68.0)
    with pytest.raises(ValueError, match="at most the buffer"):
        tiles.thin(70.0, tmp_path)
    with pytest.raises(ValueError, match="no tile tile_9_9.cld"):
        tiles.only("tile_9_9.cld")
    with pytest.raises(zor4data.ReadError, match="cannot be read"):
        zor4data.tiles.open(tmp_path)
    (tmp_path / "manifest.json").write_text("{}")
    with pytest.raises(zor4data.ReadError, match="no manifest"):
        zor4data.tiles.open(tmp_path)
    run_program("tile", folder / "survey.ply", "-o", tmp_path / "narrow", "--size", 60, "--buffer", 33)
    with pytest.raises(ValueError, match="buffer of 33"):
        zor4data.tiles.open(tmp_path / "narrow").ground(tmp_path / "ground")
