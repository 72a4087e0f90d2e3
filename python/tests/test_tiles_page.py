"""What docs/tiles.md shows holds, and workers get what their memory holds."""

from __future__ import annotations

import re
import subprocess
import sys
from pathlib import Path
from typing import Any

import pytest
from tour import ROOT

from zor4data.tiles._client import _Load


def read_piece(language: str) -> str:
    """The one piece of code in a language."""
    text = (ROOT / "docs" / "tiles.md").read_text(encoding="utf-8")
    (piece,) = re.findall(rf"^```{language}\n(.*?)^```$", text, re.MULTILINE | re.DOTALL)
    return str(piece)


def test_the_page_leads_from_nothing_to_a_picture(program: Path, tmp_path: Path) -> None:
    pytest.importorskip("distributed")
    pytest.importorskip("matplotlib")
    for line in read_piece("sh").splitlines():
        name, *arguments = line.split()
        assert name == "zorcld"
        subprocess.run([program, *arguments], check=True, cwd=tmp_path, stdout=subprocess.DEVNULL)
    assert len(list((tmp_path / "survey").glob("*.cld"))) == 8
    (tmp_path / "demo.py").write_text(read_piece("python"), encoding="utf-8")
    subprocess.run([sys.executable, "-B", "demo.py"], check=True, cwd=tmp_path, stdout=subprocess.DEVNULL)
    assert len(list((tmp_path / "ground").glob("*.cld"))) == 8
    picture = (tmp_path / "ground.png").read_bytes()
    assert picture.startswith(b"\x89PNG") and len(picture) > 20000
    shown = ROOT / "docs" / "images" / "tiles-ground.png"
    assert f"(images/{shown.name})" in (ROOT / "docs" / "tiles.md").read_text(encoding="utf-8")
    assert shown.read_bytes().startswith(b"\x89PNG") and shown.stat().st_size < 150_000


class FakeClient:
    """Two workers, one with twice the other's memory."""

    def __init__(self) -> None:
        self.workers = {"small": {"memory_limit": 1000, "nthreads": 4}, "large": {"memory_limit": 2000, "nthreads": 2}}

    def scheduler_info(self) -> dict[str, Any]:
        return {"workers": self.workers}


class Future:
    """A name."""

    def __init__(self, key: str) -> None:
        self.key = key


def test_workers_get_what_their_memory_and_threads_hold() -> None:
    client = FakeClient()
    load = _Load(client)
    assert load.find_room(5000) == "large"  # too large for any: alone, on the largest
    load.put(Future("a"), "large", 5000)
    assert load.find_room(700) is None and load.find_room(600) == "small"
    load.put(Future("b"), "small", 500)
    assert load.find_room(101) is None and load.find_room(100) == "small"
    load.drop(Future("a"))
    load.put(Future("c"), "large", 1)
    load.put(Future("d"), "large", 1)
    assert load.find_room(200) is None  # no thread is free
    del client.workers["small"]  # what it had runs elsewhere
    load.drop(Future("c"))
    assert load.find_room(700) is None and load.find_room(600) == "large"
