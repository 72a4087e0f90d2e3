"""The tour of docs/python.md: its code, one piece after the other, and the pictures that it draws.

tour.py renews the pictures in docs/images.
"""

from __future__ import annotations

import os
import re
import shutil
import tempfile
from pathlib import Path
from typing import Any

ROOT = Path(__file__).resolve().parents[2]
PAGE = ROOT / "docs" / "python.md"
IMAGES = ROOT / "docs" / "images"


def read_code() -> list[tuple[int, str]]:
    """The pieces of code, with the numbers of their first lines."""
    text = PAGE.read_text(encoding="utf-8")
    pieces = re.finditer(r"^```python\n(.*?)^```$", text, re.MULTILINE | re.DOTALL)
    return [(text[: piece.start()].count("\n") + 2, piece.group(1)) for piece in pieces]


def read_pictures() -> list[str]:
    """The pictures that the page shows, by the names under which the code saves them."""
    return re.findall(r"\]\(images/python-(\w+\.png)\)", PAGE.read_text(encoding="utf-8"))


def run_code(folder: Path) -> None:
    """Runs all pieces in a folder, as one program."""
    names: dict[str, Any] = {"__name__": "tour"}
    before = Path.cwd()
    os.chdir(folder)
    try:
        for line, code in read_code():
            exec(compile("\n" * (line - 1) + code, str(PAGE), "exec"), names)
    finally:
        os.chdir(before)


if __name__ == "__main__":
    with tempfile.TemporaryDirectory() as made:
        run_code(Path(made))
        for picture in read_pictures():
            shutil.copy(Path(made) / picture, IMAGES / f"python-{picture}")
