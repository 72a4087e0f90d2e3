"""What users may give by mistake, and what is rare."""

from __future__ import annotations

import copy
import os
import pickle
import subprocess
import sys
import warnings
from collections import OrderedDict
from pathlib import Path
from typing import Optional

import numpy as np
import pytest
from conftest import Array, landscape, scatter, write_ply

import zor4data
from zor4data import Cloud, LossWarning, Query, ReadError

TRIANGLE = [(0.0, 0.0), (60.0, 0.0), (60.0, 60.0)]


@pytest.mark.parametrize("colours", [False, True])
def test_a_cloud_without_points_answers_everything(colours: bool) -> None:
    cloud = zor4data.from_arrays(np.empty((0, 3)), np.empty((0, 3), np.uint8) if colours else None)
    assert len(cloud) == 0 and cloud.points.shape == (0,) and cloud.has_color == colours
    assert (cloud.origin == 0.0).all() and np.isnan(cloud.bounds).all()
    assert cloud.xyz().shape == (0, 3) and np.asarray(cloud).shape == (0, 3)
    for query in (
        Query.all(),
        Query.lod(1),
        Query.rect(0, 0, 1, 1),
        Query.clip([[1, 0, 0, 0]]),
        Query.inside(TRIANGLE),
    ):
        assert cloud.find(query).shape == (0,) and list(cloud.batches(query, 3)) == []
    assert cloud.nearest((0, 0, 0)) == -1 and cloud.pick((0, 0, 0), (0, 0, 1), 0.1) == -1
    assert cloud.ground_mask().shape == (0,) and cloud.outline(1.0).shape == (0, 2)
    for again in (cloud.ground(), cloud.take([]), cloud.without([]), cloud.take(np.zeros(0, bool))):
        assert len(again) == 0 and again.has_color == colours


def test_a_cloud_without_points_keeps_its_origin_on_its_way() -> None:
    made = zor4data.from_arrays(np.empty((0, 3)), origin=(1, 2, 3))
    left = zor4data.from_arrays(scatter(10, 1), origin=(1, 2, 3)).take([])
    for cloud in (made, left):
        for protocol in range(pickle.HIGHEST_PROTOCOL + 1):
            assert pickle.loads(pickle.dumps(cloud, protocol)).origin.tolist() == [1.0, 2.0, 3.0]


@pytest.mark.parametrize("name", [">f4", "<f4", "f2", ">f8", "g", ">i4", "u2"])
def test_from_arrays_takes_every_type_of_number(name: str) -> None:
    xyz: Array = np.arange(60.0).reshape(20, 3).astype(name)
    assert (np.sort(zor4data.from_arrays(xyz).xyz(), axis=0) == np.arange(60.0).reshape(20, 3)).all()


def test_from_arrays_takes_parts_of_arrays() -> None:
    table = np.random.default_rng(2).uniform(0, 9, (90, 8)).round(4)
    for part in (table[::3, ::3], table[::-2, 5:2:-1], table.T[:3].T, np.broadcast_to(table[:1, :3], (7, 3))):
        cloud = zor4data.from_arrays(part, origin=(0, 0, 0))
        assert np.allclose(np.sort(cloud.xyz(), axis=0), np.sort(part, axis=0), rtol=0, atol=1e-9)


def test_parts_of_an_outline_are_closed(terrain: Cloud) -> None:
    outline = terrain.outline(3.0)
    part = outline[1:4]
    assert isinstance(part, zor4data.Outline)
    ring = part.__geo_interface__["coordinates"][0]
    assert len(ring) == 4 and ring[0] == ring[-1]
    assert not hasattr(outline[:2], "__geo_interface__") and hasattr(outline[:0], "__geo_interface__")


def test_masked_rows_are_refused() -> None:
    xyz = scatter(10, 3)
    masked = np.ma.array(xyz, mask=xyz < xyz.mean())  # type: ignore[no-untyped-call]
    with pytest.raises(ValueError, match="masked"):
        zor4data.from_arrays(masked)
    colours = np.ma.array(np.zeros((10, 3), int), mask=xyz < xyz.mean())  # type: ignore[no-untyped-call]
    with pytest.raises(ValueError, match="rgb has masked"):
        zor4data.from_arrays(xyz, colours)


def test_several_rings_come_in_every_form(terrain: Cloud) -> None:
    ring = np.array(TRIANGLE)
    square = np.array([(30.0, 0.0), (90.0, 0.0), (90.0, 60.0), (30.0, 60.0)])
    two = terrain.inside([ring, ring + 20.0])
    assert len(two) > len(terrain.inside(ring))
    assert (terrain.inside(np.array([ring, ring + 20.0])) == two).all()
    assert (terrain.inside(np.array([[ring, ring + 20.0]])) == two).all()
    both = terrain.inside([ring, square])
    assert (terrain.inside([[ring.tolist(), square.tolist()]]) == both).all()
    assert (terrain.inside([[square.tolist(), square.tolist()]]) == terrain.inside(square)).all()


def test_integers_are_an_index_whatever_holds_them(terrain: Cloud) -> None:
    numbers = np.array([1, 2, np.int64(7)], dtype=object)
    assert (terrain.xyz(numbers) == terrain.xyz([1, 2, 7])).all()


def test_directions_are_of_any_length(terrain: Cloud) -> None:
    places = terrain.xyz(slice(0, 500, 50)) + (0.0, 0.0, 50.0)
    found = terrain.pick(places, (0, 0, -1), 0.01)
    assert (found >= 0).all()
    for length in (1e-300, 1e-170, 1e170, 1e300):
        assert (terrain.pick(places, (0, 0, -length), 0.01) == found).all()


def test_far_lines_and_places_are_right_up_to_where_they_are_refused(terrain: Cloud) -> None:
    assert len(terrain.near_line((0, 50), (100, 50), 1e15)) == len(terrain.near_line((0, 50), (100, 50), 1e9))
    assert terrain.nearest([(50, 50, 1e50), (50, 1e40, 0)]).min() >= 0
    assert terrain.nearest((np.inf, 0, 0)) == terrain.nearest((0, np.nan)) == -1


def test_polygons_come_in_every_form(terrain: Cloud) -> None:
    count = len(terrain.inside(TRIANGLE))
    assert 0 < count < len(terrain)
    ring = np.array(TRIANGLE)
    polygon = {"type": "Polygon", "coordinates": [TRIANGLE]}
    feature = OrderedDict(type="Feature", geometry=polygon)
    objects = np.empty(2, dtype=object)
    objects[:] = [polygon, feature]
    forms = [ring, ring.astype(">f4"), ring[::-1], ring.tolist(), list(ring), [ring], (polygon,), feature, objects]
    forms += [np.column_stack([ring, [7, 8, 9]]), {"type": "FeatureCollection", "features": [feature]}, [ring, feature]]
    for form in forms:
        assert len(terrain.inside(form)) == count
    assert len(terrain.inside(part for part in (polygon, feature))) == count
    nothing = [[], np.empty((0, 2)), {"type": "Polygon", "coordinates": []}, {"type": "Feature", "geometry": None}]
    nothing += [TRIANGLE[:2], iter([]), {"type": "Polygon", "coordinates": None}]
    nothing += [{"type": "FeatureCollection", "features": [None, {"type": "Feature", "geometry": None}]}]
    for form in nothing:
        assert len(terrain.inside(form)) == 0
        assert len(terrain.inside(form, outside=True)) == len(terrain)


def test_bounds_of_facts_stay_as_they_are(tmp_path: Path, terrain: Cloud) -> None:
    terrain.write(tmp_path / "a.cld")
    found = zor4data.facts(tmp_path / "a.cld")
    for facts in (found, pickle.loads(pickle.dumps(found)), copy.deepcopy(found)):
        assert facts == found and facts.bounds is not None and not facts.bounds.flags.writeable


def test_a_query_does_not_change_with_what_it_was_made_of(terrain: Cloud) -> None:
    ring, planes = np.array(TRIANGLE), np.array([[1.0, 0.0, 0.0, -40.0]])
    queries = [Query.inside(ring), Query.clip(planes), Query.lod_clip(1.0, planes)]
    before = [terrain.find(query) for query in queries]
    ring += 20.0
    planes += 3.0
    for query, wanted in zip(queries, before):
        assert (terrain.find(query) == wanted).all()
        assert (terrain.find(pickle.loads(pickle.dumps(query))) == wanted).all()


def test_facts_are_compared_and_hashed(tmp_path: Path, terrain: Cloud) -> None:
    terrain.write(tmp_path / "a.cld")
    found, again = zor4data.facts(tmp_path / "a.cld"), zor4data.facts(tmp_path / "a.cld")
    assert found == again and hash(found) == hash(again) and found != zor4data.facts(tmp_path)
    assert pickle.loads(pickle.dumps(found)) == found
    assert found.bounds is not None and not found.bounds.flags.writeable


def cut(path: Path, count: int) -> Path:
    """The first bytes of a file as a file of its own."""
    short = path.with_suffix(f".{count}")
    short.write_bytes(path.read_bytes()[:count])
    return short


@pytest.mark.parametrize("given", [False, True], ids=["by content", "kind given"])
def test_a_file_cut_off_anywhere_is_refused_or_warned_of(tmp_path: Path, given: bool) -> None:
    xyz, rgb = landscape(400)
    ply, cld = write_ply(tmp_path / "a.ply", xyz, rgb), tmp_path / "a.cld"
    zor4data.from_arrays(xyz, rgb).write(cld)
    kinds: list[tuple[Path, zor4data.Kind]] = [(ply, "ply"), (cld, "native")]
    for path, kind in kinds:
        size = path.stat().st_size
        for count in sorted({0, 1, 5, 10, 60, size // 3, size // 2, size - 9, size - 1}):
            short = cut(path, count)
            with warnings.catch_warnings(record=True) as told:
                warnings.simplefilter("always")
                try:
                    assert len(zor4data.read(short, kind=kind if given else None)) <= 400
                    assert told and all(one.category is LossWarning for one in told)
                    assert str(told[0].message).startswith(str(short))
                except ReadError as error:
                    assert error.path == str(short) and error.cause and error.number > 0


def told_of(path: Path) -> list[str]:
    """Reads a file. @return what is warned of."""
    with warnings.catch_warnings(record=True) as told:
        warnings.simplefilter("always")
        zor4data.read(path)
    assert all(one.category is LossWarning and one.filename == __file__ for one in told)
    return [str(one.message) for one in told]


@pytest.mark.parametrize("colours", [False, True])
def test_points_that_are_moved_are_counted(tmp_path: Path, colours: bool) -> None:
    near = np.array([[0.0, 0.0, 0.0], [1.0, 1.0, 0.0], [214748.0, -214748.0, 3.0]])
    far = np.array([[5e6, 5e6, 0.0], [6e6, 7e6, 0.0], [0.0, 0.0, -3e38]])
    none = np.array([[np.nan, np.nan, 2.0], [3.0, np.inf, 4.0]])
    for rows, count_far, count_none in ((near, 0, 0), ([*near, *far], 3, 0), ([*near, *far, *none], 3, 2)):
        xyz = np.array(rows)
        path = write_ply(tmp_path / "a.ply", xyz, np.full((len(xyz), 3), 7) if colours else None)
        told = told_of(path)
        assert len(told) == (count_far > 0) + (count_none > 0)
        assert not count_far or any(f"{count_far} of its points lie farther" in text for text in told)
        assert not count_none or any(f"{count_none} of its points have coordinates" in text for text in told)
    assert len(told_of(write_ply(tmp_path / "b.ply", np.array([[np.nan, 0, 0], [1, 2, 3]])))) == 1


def test_points_of_a_grid_that_are_moved_are_counted(tmp_path: Path) -> None:
    head = "ncols 2\nnrows 2\nxllcorner 5\nyllcorner 5\ncellsize 1\nNODATA_value -9\n"
    (tmp_path / "a.asc").write_text(head + "1 2\n3 400000\n", encoding="ascii")
    assert ["1 of its points lie" in text for text in told_of(tmp_path / "a.asc")] == [True]


def test_a_las_file_cut_off_is_warned_of(tmp_path: Path, real_files: Path) -> None:
    whole = tmp_path / "a.las"
    whole.write_bytes((real_files / "las" / "autzen_trim.las").read_bytes()[:30000])
    with pytest.warns(LossWarning, match="cut off"):
        zor4data.read(whole)


def test_a_pipe_is_refused(tmp_path: Path) -> None:
    os.mkfifo(tmp_path / "pipe")
    kinds: tuple[Optional[zor4data.Kind], ...] = (None, "native", "ply", "grid", "las")
    for kind in kinds:
        with pytest.raises(ReadError) as raised:
            zor4data.read(tmp_path / "pipe", kind=kind)
        assert raised.value.number == 4


NO_ROOM = """
import resource, sys
import numpy as np, zor4data
xyz = np.zeros((800_000, 3)); xyz[:] = np.arange(800_000)[:, None] * 0.01
cloud = zor4data.from_arrays(xyz)
cloud.write(sys.argv[1])
before = cloud.points.copy()
runs = {"from_arrays": lambda: zor4data.from_arrays(xyz), "xyz": cloud.xyz, "take": lambda: cloud.take(slice(None)),
        "read": lambda: zor4data.read(sys.argv[1]), "ground": cloud.ground, "bytes": cloud._core.to_bytes,
        "all": lambda: cloud.find(zor4data.Query.all())}
used = int(open("/proc/self/statm").read().split()[0]) * resource.getpagesize()
resource.setrlimit(resource.RLIMIT_AS, (used + (2 << 20), resource.RLIM_INFINITY))
for name, run in runs.items():
    try:
        run()
        raise SystemExit(name + " found room")
    except MemoryError:
        pass
resource.setrlimit(resource.RLIMIT_AS, (resource.RLIM_INFINITY, resource.RLIM_INFINITY))
assert (cloud.points == before).all() and len(cloud.lod(1.0)) > 0
for run in runs.values():
    run()
print("done")
"""


def test_without_memory_there_is_a_memory_error_and_nothing_else(tmp_path: Path) -> None:
    done = subprocess.run(
        [sys.executable, "-c", NO_ROOM, tmp_path / "a.cld"], check=False, capture_output=True, text=True
    )
    assert done.returncode == 0 and done.stdout == "done\n", done.stderr
