"""The documents hold."""

from __future__ import annotations

import inspect
import re
import subprocess
import sys
from pathlib import Path
from typing import Callable

import pytest
from tour import IMAGES, PAGE, ROOT, read_code, read_pictures, run_code

import zor4data

pytest.importorskip("matplotlib")
pytest.importorskip("shapely")


def test_every_piece_of_the_tour_runs_and_draws(tmp_path: Path, capsys: pytest.CaptureFixture[str]) -> None:
    run_code(tmp_path)
    printed = capsys.readouterr().out
    for line in re.findall(r"print\(.*\)  # (.*)$", "\n".join(code for _, code in read_code()), re.MULTILINE):
        assert line in printed
    shown = re.search(r"^# (<zor4data.Cloud: .*>)$", PAGE.read_text(encoding="utf-8"), re.MULTILINE)
    assert shown is not None and shown.group(1) in printed
    assert len(read_pictures()) >= 4
    for picture in read_pictures():
        drawn = (tmp_path / picture).read_bytes()
        assert drawn.startswith(b"\x89PNG") and len(drawn) > 5000
        assert (IMAGES / f"python-{picture}").is_file()


def test_the_first_lines_lead_to_a_picture(tmp_path: Path) -> None:
    lines = re.findall(r"^    (\S.*)$", PAGE.read_text(encoding="utf-8"), re.MULTILINE)[:2]
    assert lines[0] == "scripts/python"
    program, script, picture = lines[1].split()
    assert program == "build/python/venv/bin/python"
    out = tmp_path / picture
    subprocess.run([sys.executable, "-B", ROOT / script, out], check=True, stdout=subprocess.DEVNULL, cwd=tmp_path)
    assert out.read_bytes().startswith(b"\x89PNG") and out.stat().st_size > 20000


def test_every_method_is_in_the_table_of_names() -> None:
    text = PAGE.read_text(encoding="utf-8")
    table = text[text.index("## Names") : text.index("## Errors")]
    for name in dir(zor4data.Cloud):
        if not name.startswith("_") and name != "find":
            assert f"`Cloud.{name}" in table, name
    functions: list[Callable[..., object]] = [zor4data.read, zor4data.from_arrays, zor4data.facts]
    for function in functions:
        names = re.search(rf"`{function.__name__}\((.*?)\)`", table)
        assert names is not None
        wanted = [name for name in inspect.signature(function).parameters]
        assert [part.split("=")[0] for part in names.group(1).split(", ") if part != "*"] == wanted
