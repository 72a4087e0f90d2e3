"""Manifests that are damaged, or contradict themselves, and tiles that are other than theirs says: none is believed."""

from __future__ import annotations

import copy
import json
import random
import subprocess
from pathlib import Path
from typing import Any, Callable, Optional

import numpy as np
import pytest
from conftest import write_ply
from survey import Run, Survey, write_manifest
from tour import ROOT

import zor4data
import zor4data.tiles
from zor4data.tiles import Tiles, TilesError
from zor4data.tiles._grid import find_margin

#: What the tests of the command-line host go by, too: `put` in the place of what stands `at`, and the field told.
DAMAGES = json.loads((ROOT / "tests" / "host" / "tile" / "damaged_manifests.json").read_text(encoding="utf-8"))


@pytest.fixture(scope="module")
def tiles(tmp_path_factory: pytest.TempPathFactory, run_program: Run) -> Tiles:
    """6,000 points in 16 tiles."""
    xyz = np.random.default_rng(3).uniform((-90, -90, 0), (90, 90, 9), (6000, 3)).round(3)
    made = write_ply(tmp_path_factory.mktemp("survey") / "scan.ply", xyz)
    return Survey(made, run_program).cut(50.0, 9.0)


@pytest.fixture(scope="module")
def whole(tiles: Tiles) -> Any:
    """Its manifest."""
    return json.loads((tiles.folder / "manifest.json").read_text(encoding="utf-8"))


def damage(whole: Any, place: list[Any], put: Any) -> Any:
    """The manifest with one thing changed."""
    manifest = copy.deepcopy(whole)
    *way, last = place
    inner = manifest
    for step in way:
        inner = inner[step]
    if put == "drop":
        del inner[last]
    elif put == "twice":
        inner.insert(2, inner[last])
    else:
        inner[last] = put
    return manifest


def find_cause(file: Path) -> str:
    """What is said of a manifest here; empty: it is taken."""
    try:
        zor4data.tiles.open(file)
    except zor4data.ReadError as error:
        assert error.path == str(file)
        return error.cause[len("it ") :]
    return ""


def find_cause_of_program(program: Path, file: Path) -> str:
    """What the command-line host says of it."""
    done = subprocess.run([program, "info", file], capture_output=True, text=True)
    assert done.returncode == (1 if done.stderr else 0)
    return done.stderr.rstrip("\n").partition(f"{file}: ")[2]


@pytest.mark.parametrize("case", DAMAGES, ids=lambda case: f"{case['field']}-{json.dumps(case['put'])}")
def test_a_damaged_manifest_is_refused_by_its_field_in_the_words_of_the_program(
    whole: Any, program: Path, tmp_path: Path, case: Any
) -> None:
    file = tmp_path / "manifest.json"
    file.write_text(json.dumps(damage(whole, case["at"], case["put"])), encoding="utf-8")
    cause = find_cause(file)
    assert cause.startswith(f"is damaged: {case['field']} ") and "\n" not in cause
    assert cause == find_cause_of_program(program, file)


def list_places(value: Any, way: tuple[Any, ...] = ()) -> list[tuple[Any, ...]]:
    """The way to each value in it, itself among them."""
    inner = value.items() if isinstance(value, dict) else enumerate(value) if isinstance(value, list) else ()
    return [way, *(place for key, one in inner for place in list_places(one, (*way, key)))]


def test_what_one_reader_refuses_the_other_does(whole: Any, program: Path, tmp_path: Path) -> None:
    rng = random.Random(5)
    places = [place for place in list_places({**whole, "tiles": whole["tiles"][:2]}) if place]
    odd: list[Any] = [None, True, 0, -1, 1, 2**31, 2**63, 10**20, 0.5, 1e300, -0.0, "", "a", [], {}, [1]]
    odd += ["twice", "drop"]
    file = tmp_path / "manifest.json"
    for _ in range(100):
        place, put = list(rng.choice(places)), rng.choice(odd)
        if put == "twice" and not isinstance(place[-1], int):
            continue
        file.write_text(json.dumps(damage(whole, place, put)), encoding="utf-8")
        cause = find_cause(file)
        assert cause == find_cause_of_program(program, file), (place, put)


@pytest.mark.parametrize(
    "change, cause",
    [
        (lambda text: "", "no manifest"),
        (lambda text: text[:-9], "no manifest"),
        (lambda text: text + "\0", "no manifest"),
        (lambda text: text.replace("scan", "\\ud800"), "no manifest"),
        (lambda text: text.replace('"points": 6000', '"points": 1' + "0" * 400), "no manifest"),
        (lambda text: text.replace('"points": 6000', '"points": 1e400'), "no manifest"),
        (lambda text: text.replace('"margin": ', '"margin": NaN, "m": '), "no manifest"),
        (lambda text: text.replace('"margin": ', '"margin": -Infinity, "m": '), "no manifest"),
        (lambda text: "[" * 100_000, "no manifest"),
        (lambda text: "[]", "no manifest"),
        (lambda text: text.replace("scan", "\xff").encode("latin-1"), "no manifest"),
        (lambda text: text.replace('"format_version": 1', '"format_version": true'), "another version"),
        (lambda text: text.replace('"format_version": 1', '"format_version": 2'), "another version"),
    ],
)
def test_what_is_no_manifest_is_said_to_be_none(
    tiles: Tiles, program: Path, tmp_path: Path, change: Any, cause: str
) -> None:
    text = (tiles.folder / "manifest.json").read_text(encoding="utf-8")
    damaged = change(text)
    assert damaged != text
    (tmp_path / "manifest.json").write_bytes(damaged if isinstance(damaged, bytes) else damaged.encode())
    with pytest.raises(zor4data.ReadError, match=cause):
        zor4data.tiles.open(tmp_path)
    file = tmp_path / "manifest.json"
    assert find_cause(file) == find_cause_of_program(program, file)


def test_a_manifest_changed_by_hand_is_refused_by_its_seal(whole: Any, program: Path, tmp_path: Path) -> None:
    file = tmp_path / "manifest.json"
    deep: Any = 1
    for _ in range(70):
        deep = [deep]
    for changed in (
        {**whole, "color": True},
        {**whole, "sources": [{**whole["sources"][0], "file": "\u00e9.ply"}]},
        {**whole, "more": 1},
        {**whole, "more": deep},
    ):
        file.write_text(json.dumps(changed), encoding="utf-8")
        cause = find_cause(file)
        assert cause.startswith("is damaged: seal is ")
        assert cause == find_cause_of_program(program, file)
    write_manifest(
        file, {**whole, "more": [None, True, "\u00e9\U0001f600", -0.0, 5e-324, 2**63, 10**20, {"b": 1, "a": {}}]}
    )
    assert find_cause(file) == find_cause_of_program(program, file) == ""


@pytest.mark.parametrize("scale, field", [([1], ""), ([1, None], "[1]"), ([0, 1], "[0]"), (0.3048, "")])
def test_a_unit_given_by_hand_is_two_numbers(whole: Any, tmp_path: Path, scale: Any, field: str) -> None:
    file = tmp_path / "manifest.json"
    for given, cause in (([0.3048, 1], ""), (scale, f"is damaged: options.unit_scale{field} is no ")):
        write_manifest(file, {**whole, "options": {**whole["options"], "unit_scale": given}})
        assert find_cause(file).startswith(cause) and bool(find_cause(file)) == bool(cause)


def test_the_order_of_keys_does_not_matter(tiles: Tiles, whole: Any, tmp_path: Path) -> None:
    file = tmp_path / "sorted.json"
    file.write_text("\ufeff" + json.dumps(whole, sort_keys=True, indent=4), encoding="utf-8")
    assert zor4data.tiles.open(file).tiles == tiles.tiles


def test_a_tile_with_a_changed_byte_fails_wherever_it_is_read(
    tiles: Tiles, tmp_path: Path, capfd: pytest.CaptureFixture[str]
) -> None:
    for file in tiles.folder.iterdir():
        (tmp_path / file.name).write_bytes(file.read_bytes())
    name = tiles.tiles[5].file
    data = bytearray((tmp_path / name).read_bytes())
    data[len(data) // 2] ^= 1
    (tmp_path / name).write_bytes(data)
    copied = zor4data.tiles.open(tmp_path)
    ring = np.array([(-90.0, -90.0), (90.0, -90.0), (0.0, 90.0)])
    works: list[Callable[[], object]] = [
        lambda: copied.map(lambda cloud, core: len(cloud)),
        lambda: copied.thin(5.0, tmp_path / "thin"),
        lambda: copied.count((-1.0, -90.0, 1.0, 90.0)),
        lambda: copied.inside(ring),
        lambda: copied.outline(9.0),
    ]
    for work in works:
        with pytest.raises(TilesError, match="1 of [0-9]+ tiles failed") as failed:
            work()
        ((failing, error),) = failed.value.failures.items()
        assert failing == name and isinstance(error, zor4data.ReadError)
        assert error.path == str(tmp_path / name)
        assert error.cause.startswith("it is not the tile that its manifest tells of: xxh128 ")
    assert not (tmp_path / "thin" / name).exists()
    (tmp_path / name).write_bytes(data[:-1])
    with pytest.raises(TilesError, match=f"{len(data) - 1} bytes, not {len(data)}"):
        copied.only(name).map(lambda cloud, core: None)
    (tmp_path / name).unlink()
    with pytest.raises(TilesError, match="it cannot be read: No such file"):
        copied.only(name).map(lambda cloud, core: None)
    assert copied.count() == 6000  # no tile is opened


def test_what_failed_is_told_in_one_line_whatever_the_folder_is_called(tiles: Tiles, tmp_path: Path) -> None:
    folder = tmp_path / "two\nlines\x1b[2J"
    folder.mkdir()
    (folder / "manifest.json").write_bytes((tiles.folder / "manifest.json").read_bytes())
    with pytest.raises(TilesError) as failed:
        zor4data.tiles.open(folder).map(lambda cloud, core: None)
    assert "two\\nlines\\x1b[2J" in str(failed.value) and str(failed.value).isprintable()
    assert failed.value.path == str(folder / "manifest.json")


def test_a_margin_too_small_for_a_unit_by_hand_is_refused(tmp_path: Path, run_program: Run) -> None:
    # Where floats lie 0.25 feet apart, and in metres 0.41 of one.
    rng = np.random.default_rng(11)
    xyz = (rng.uniform((0, 0, 0), (400, 400, 9), (500, 3)) + (3_500_000.0, 0.0, 0.0)).round(3)
    tiles = Survey(write_ply(tmp_path / "feet.ply", xyz), run_program).cut(200.0, 220.0)
    manifest = json.loads((tiles.folder / "manifest.json").read_text(encoding="utf-8"))

    def state(metres: Optional[float]) -> Tiles:
        file = tiles.folder / "stated.json"
        write_manifest(file, {**manifest, "metres_per_unit": metres})
        return zor4data.tiles.open(file)

    with pytest.raises(ValueError, match="buffer of 220 and a margin of 1.5: .* needs 222.277 together"):
        state(1.0).ground(tmp_path / "ground", unit_scale=0.3048)
    assert len(state(None).ground(tmp_path / "ground", unit_scale=0.3048)) > 0
    assert len(state(0.3048).ground(tmp_path / "ground")) > 0
    assert len(state(1.0).ground(tmp_path / "ground")) > 0


def test_twice_the_margin_does_for_any_unit() -> None:
    rng = np.random.default_rng(2)
    for exponent, metres in zip(rng.uniform(-2.0, 9.0, 2000), 10.0 ** rng.uniform(-6.0, 6.0, 2000)):
        origin, buffer = (10.0**exponent, 0.0, 0.0), 67.0 / metres
        assert find_margin(origin, buffer, float(metres)) <= find_margin(origin, buffer, None)
    assert find_margin((0.0, 0.0, 0.0), 67.0, 1.0) == 6 / 64
