"""Files in and out."""

from __future__ import annotations

import os
import pickle
import stat
from pathlib import Path
from typing import Callable

import numpy as np
import pytest
from conftest import landscape, write_ply

import zor4data
from zor4data import Cloud, Facts, ReadError, WriteError


@pytest.fixture
def ply(tmp_path: Path) -> Path:
    return write_ply(tmp_path / "a.ply", *landscape(3000))


def test_read_finds_the_kind_itself(ply: Path, tmp_path: Path) -> None:
    cloud = zor4data.read(ply)
    assert cloud.has_color and 2900 < len(cloud) <= 3000
    cloud.write(tmp_path / "no.extension")
    assert (zor4data.read(tmp_path / "no.extension").points == cloud.points).all()


@pytest.mark.parametrize("convert", [str, os.fsencode, Path], ids=["str", "bytes", "Path"])
def test_paths_come_in_every_form(ply: Path, convert: Callable[[Path], object]) -> None:
    path = convert(ply)
    assert len(zor4data.read(path)) > 0  # type: ignore[arg-type]
    assert zor4data.facts(path).loads  # type: ignore[arg-type]
    zor4data.read(ply).write(path)  # type: ignore[arg-type]
    assert zor4data.facts(ply).kind == "native"


def test_paths_hold_any_bytes_but_null(ply: Path, tmp_path: Path) -> None:
    strange = os.path.join(os.fsencode(tmp_path), b"\xff \xc3\xa4.cld")
    zor4data.read(ply).write(strange)
    assert len(zor4data.read(strange)) == len(zor4data.read(ply))
    with pytest.raises(ValueError, match="null"):
        zor4data.read(str(ply) + "\0x")


@pytest.mark.parametrize(
    "content, kind, number, cause",
    [
        (b"", None, 5, ""),
        (b"GIF89a....", None, 6, "no known type"),
        (b"ply\nformat ascii 1.0\nend_header\n", None, 41, ""),
        (b"ply\nformat binary_big_endian 1.0\nend_header\n", None, 42, "big"),
        (b"GIF89a....", "ply", 40, "PLY"),
        (b"LASF" + bytes(10), "las", 81, "header"),
        (b"\1", "native", 20, ""),
    ],
)
def test_read_error_tells_path_cause_and_number(
    tmp_path: Path, content: bytes, kind: zor4data.Kind, number: int, cause: str
) -> None:
    path = tmp_path / "bad"
    path.write_bytes(content)
    with pytest.raises(ReadError) as raised:
        zor4data.read(path, kind=kind)
    error = raised.value
    assert isinstance(error, zor4data.Error)
    assert error.path == str(path) and error.number == number and cause in error.cause
    assert str(error) == f"{path}: {error.cause}"
    found = zor4data.facts(path, kind=kind)
    assert not found.loads and found.number == number and found.cause == error.cause


def test_read_error_of_a_missing_file_and_a_folder(tmp_path: Path) -> None:
    for path, number in ((tmp_path / "none", 1), (tmp_path, 3)):
        with pytest.raises(ReadError) as raised:
            zor4data.read(path)
        assert raised.value.number == number


def test_read_error_of_a_file_cut_off(ply: Path) -> None:
    ply.write_bytes(ply.read_bytes()[:-100])
    with pytest.raises(ReadError) as raised:
        zor4data.read(ply)
    assert raised.value.number == 48


def test_errors_can_be_pickled() -> None:
    for error in (ReadError("a", "b", 3), WriteError("a", "b", 3, 28)):
        again = pickle.loads(pickle.dumps(error))
        assert str(again) == str(error) and again.number == 3
    assert "No space" in str(WriteError("a", "b", 121, 28))


def test_a_kind_that_there_is_not_is_an_error(ply: Path) -> None:
    with pytest.raises(ValueError, match="native, ply, grid, las"):
        zor4data.read(ply, kind="obj")  # type: ignore[arg-type]
    with pytest.raises(ValueError, match="native, ply, grid, las"):
        zor4data.facts(ply, kind="obj")  # type: ignore[arg-type]


def test_facts_tell_without_loading(ply: Path, tmp_path: Path) -> None:
    found = zor4data.facts(ply)
    assert found == Facts(str(ply), "ply", "", 0, 3000, True, None, ())
    cloud = zor4data.read(ply)
    cloud.write(tmp_path / "a.cld")
    native = zor4data.facts(tmp_path / "a.cld")
    assert native.kind == "native" and native.announced == len(cloud) and native.bounds is not None
    assert np.abs(native.bounds - cloud.bounds).max() < 1e-3


def test_facts_tell_what_is_lost(tmp_path: Path) -> None:
    path = tmp_path / "extra.ply"
    header = "ply\nformat binary_little_endian 1.0\nelement vertex 1\n"
    header += "".join(f"property float {name}\n" for name in ("x", "y", "z", "intensity"))
    path.write_bytes((header + "end_header\n").encode() + bytes(16))
    assert any("intensity" in loss.text for loss in zor4data.facts(path).losses)


def test_write_is_whole_or_not_there(tmp_path: Path, terrain: Cloud) -> None:
    path = tmp_path / "a.cld"
    terrain.write(path)
    again = zor4data.read(path)
    assert (again.points == terrain.points).all() and (again.lod(1.0) == terrain.lod(1.0)).all()
    before = path.read_bytes()
    with pytest.raises(WriteError) as raised:
        terrain.write(tmp_path / "no" / "a.cld")
    assert raised.value.number == 120 and raised.value.errno == 2
    with pytest.raises(WriteError) as raised:
        terrain.write(tmp_path)
    assert raised.value.number == 3
    assert path.read_bytes() == before
    assert os.listdir(tmp_path) == ["a.cld"]


def test_write_keeps_rights_of_an_older_file(tmp_path: Path, terrain: Cloud) -> None:
    path = tmp_path / "a.cld"
    path.write_bytes(b"old")
    path.chmod(0o640)
    terrain.write(path)
    assert stat.S_IMODE(path.stat().st_mode) == 0o640


def test_ground_is_what_the_command_line_writes(tmp_path: Path, run_program: Callable[..., None]) -> None:
    path = write_ply(tmp_path / "a.ply", *landscape(30000))
    run_program("ground", path, "-o", tmp_path / "theirs.cld", "-q")
    cloud = zor4data.read(path)
    cloud.ground().write(tmp_path / "ours.cld")
    assert (tmp_path / "ours.cld").read_bytes() == (tmp_path / "theirs.cld").read_bytes()
    mask = cloud.ground_mask()
    assert mask.dtype == np.bool_ and 0 < mask.sum() < len(cloud)
    cloud.take(mask).write(tmp_path / "mask.cld")
    assert (tmp_path / "mask.cld").read_bytes() == (tmp_path / "theirs.cld").read_bytes()


@pytest.mark.parametrize("name", ["4_6_crop.las", "autzen_trim.las"])
def test_ground_of_a_file_in_feet_is_what_the_command_line_writes(
    tmp_path: Path, run_program: Callable[..., None], real_files: Path, name: str
) -> None:
    path = real_files / "las" / name
    cloud = zor4data.read(path)
    assert cloud.unit is not None and cloud.unit.metres == pytest.approx(0.3048, rel=1e-5) and not cloud.unit.is_angle
    assert cloud.unit == zor4data.facts(path).unit == pickle.loads(pickle.dumps(cloud)).unit == cloud.take([0]).unit
    for scale in (None, 1.0, 0.5):
        given = [] if scale is None else ["--unit-scale", scale]
        run_program("ground", path, "-o", tmp_path / "theirs.cld", "-q", "--force", *given)
        told: list[int] = []
        cloud.ground(told.append, unit_scale=scale).write(tmp_path / "ours.cld")
        assert (tmp_path / "ours.cld").read_bytes() == (tmp_path / "theirs.cld").read_bytes() and told[-1] == 100
        cloud.take(cloud.ground_mask(unit_scale=scale)).write(tmp_path / "mask.cld")
        assert (tmp_path / "mask.cld").read_bytes() == (tmp_path / "theirs.cld").read_bytes()


@pytest.mark.parametrize(
    "name, read", [(b"m\xe8tre", "m\u00e8tre"), (b"m\xc3\xa8tre", "m\u00e8tre"), (b"\xff", "\u00ff")]
)
def test_a_unit_has_a_name_whatever_its_bytes(tmp_path: Path, real_files: Path, name: bytes, read: str) -> None:
    path = tmp_path / "a.las"
    whole = (real_files / "las" / "test1_4.las").read_bytes()
    path.write_bytes(whole.replace(b"US survey foot", name.ljust(14)))
    found = zor4data.facts(path)
    assert found.loads and found.unit is not None and found.unit.name.strip() == read
    assert zor4data.read(path).unit == found.unit


def test_ground_of_a_file_in_degrees_is_refused(real_files: Path) -> None:
    cloud = zor4data.read(real_files / "las" / "epsg_4326.las")
    assert cloud.unit is not None and cloud.unit.is_angle and cloud.unit.metres is None
    with pytest.raises(ValueError, match="angles.*unit_scale"):
        cloud.ground()
    with pytest.raises(ValueError, match="angles.*unit_scale"):
        cloud.ground_mask()
    assert len(cloud.ground(unit_scale=1.0)) == cloud.ground_mask(unit_scale=1.0).sum() > 0


def test_ground_takes_a_scale_that_can_be_one(terrain: Cloud) -> None:
    assert terrain.unit is None
    assert (terrain.ground(unit_scale=1).points == terrain.ground().points).all()
    wrong: list[object] = [0, -1, np.nan, np.inf, 1e7]
    for scale in wrong:
        with pytest.raises(ValueError, match="unit_scale"):
            terrain.ground(unit_scale=scale)  # type: ignore[arg-type]
    with pytest.raises(TypeError, match="unit_scale"):
        terrain.ground_mask(unit_scale="ft")  # type: ignore[arg-type]
    for filtered in (terrain.ground, terrain.ground_mask):
        with pytest.raises(ValueError, match="wider or higher"):
            filtered(unit_scale=1e5)


def test_outline_is_what_the_command_line_writes(tmp_path: Path, run_program: Callable[..., None]) -> None:
    import json

    geometry = pytest.importorskip("shapely.geometry")
    cloud = zor4data.from_arrays(landscape(20000)[0])
    cloud.write(tmp_path / "a.cld")
    run_program("outline", tmp_path / "a.cld", "--distance", 3, "-o", tmp_path / "a.geojson", "-q")
    theirs = json.loads((tmp_path / "a.geojson").read_text(encoding="utf-8"))
    while "geometry" not in theirs and "coordinates" not in theirs:
        theirs = theirs["features"][0]
    theirs = theirs.get("geometry", theirs)
    ours = cloud.outline(3.0)
    assert ours.shape[1] == 2 and (ours[0] == ours[-1]).all()
    assert np.abs(np.array(theirs["coordinates"][0]) - ours.__geo_interface__["coordinates"][0]).max() < 1e-4
    polygon = geometry.shape(ours)
    assert polygon.area == pytest.approx(5000, rel=0.05)
    assert len(cloud.inside(ours)) == len(cloud.inside(polygon)) > 19000


def test_outline_is_an_array_like_others() -> None:
    cloud = zor4data.from_arrays(landscape(3000)[0])
    outline = cloud.outline(3.0)
    assert isinstance(outline, zor4data.Outline) and isinstance(outline, np.ndarray)
    assert type(outline + 1.0) is np.ndarray and type(outline[:, 0].sum()) is np.float64
    assert not hasattr(outline[0], "__geo_interface__")
    none = zor4data.from_arrays([[0, 0, 0]]).outline(1.0)
    assert none.shape == (0, 2) and none.__geo_interface__ == {"type": "Polygon", "coordinates": ()}
    for wrong in (0, -1, float("nan")):
        with pytest.raises(ValueError, match="distance"):
            cloud.outline(wrong)


def test_search_distance_suits_the_density() -> None:
    assert zor4data.from_arrays(landscape(20000)[0]).search_distance() == pytest.approx(2.5, rel=0.1)
    assert zor4data.from_arrays(np.empty((0, 3))).search_distance() == float("inf")


@pytest.mark.parametrize(
    "name",
    [
        "las/autzen_trim.las",
        "las/ahn3_delft.laz",
        "las/pdrf8-1.4.las",
        "ply/lidar_source_cc.ply",
        "asc/bijou_no_nodata.asc",
    ],
)
def test_real_files_are_read(real_files: Path, name: str) -> None:
    found = zor4data.facts(real_files / name)
    if not found.loads:
        with pytest.raises(ReadError, match=found.cause[:20]):
            zor4data.read(real_files / name)
        return
    cloud = zor4data.read(real_files / name)
    assert len(cloud) > 0 and cloud.has_color == found.has_color
    if found.announced is not None:
        assert len(cloud) <= found.announced


def test_every_real_file_is_read_or_refused_with_a_cause(real_files: Path) -> None:
    count = 0
    for path in sorted(real_files.rglob("*")):
        if not path.is_file() or path.stat().st_size > 5 << 20:
            continue
        count += 1
        try:
            assert len(zor4data.read(path)) >= 0
        except ReadError as error:
            assert error.cause and error.path == str(path)
    assert count > 20
