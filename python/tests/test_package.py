"""The package as it is installed."""

from __future__ import annotations

import importlib.metadata
import inspect
import os
import re
import subprocess
import sys
from pathlib import Path
from typing import Any, Callable

import zor4data

PACKAGE = Path(zor4data.__file__).parent
OURS = [module for name, module in sys.modules.items() if name.startswith("zor4data")]


def test_the_wheel_brings_the_library() -> None:
    names = {path.name for path in PACKAGE.iterdir()}
    assert {"py.typed", "_core.pyi", "libzor4data.so.0"} <= names
    mapped = Path("/proc/self/maps").read_text(encoding="utf-8")
    lines = [line.split()[-1] for line in mapped.splitlines() if "zor4data.so" in line or "laszip.so" in line]
    assert lines
    for line in lines:
        assert Path(line).parent == PACKAGE or line.startswith(("/usr/lib", "/lib"))


def test_the_version_is_that_of_the_wheel() -> None:
    assert importlib.metadata.version("zor4data") == zor4data.__version__


def test_every_public_name_tells_what_it_is() -> None:
    for name in zor4data.__all__:
        thing = getattr(zor4data, name)
        if inspect.isclass(thing) or inspect.isfunction(thing):
            assert inspect.getdoc(thing), name
        if inspect.isclass(thing) and thing.__module__.startswith("zor4data"):
            for member, value in inspect.getmembers(thing):
                if not inspect.getmodule(getattr(value, "fget", value)) in (None, *OURS):
                    continue
                if not member.startswith("_") and (inspect.isfunction(value) or isinstance(value, property)):
                    assert inspect.getdoc(value), f"{name}.{member}"


def test_every_parameter_and_result_is_told() -> None:
    functions: list[Callable[..., Any]] = [zor4data.read, zor4data.from_arrays, zor4data.facts]
    functions += [value for name, value in inspect.getmembers(zor4data.Cloud, inspect.isfunction) if name[0] != "_"]
    for function in functions:
        text = inspect.getdoc(function) or ""
        signature = inspect.signature(function)
        listed = text.partition("Parameters\n----------\n")[2].partition("\n\n")[0]
        told = [name for names in re.findall(r"^(\w[\w, ]*) :", listed, re.MULTILINE) for name in names.split(", ")]
        assert told == [name for name in signature.parameters if name != "self"], function
        assert ("Returns\n-------\n" in text) == (signature.return_annotation != "None"), function


def test_methods_that_give_arrays_tell_shapes_and_types() -> None:
    for name in ("xyz", "rgb", "lod", "clip", "rect", "inside", "pick", "nearest", "ground_mask"):
        text = inspect.getdoc(getattr(zor4data.Cloud, name)) or ""
        assert "Returns\n-------\nndarray of " in text and "shape" in text, name


def test_import_needs_numpy_alone(tmp_path: Path) -> None:
    code = "import sys; before = set(sys.modules); import zor4data; print(*sorted(set(sys.modules) - before))"
    environment = {**os.environ, "PYTHONDONTWRITEBYTECODE": "1"}
    done = subprocess.run(
        [sys.executable, "-c", code], cwd=tmp_path, env=environment, check=True, capture_output=True, text=True
    )
    loaded = {name.partition(".")[0] for name in done.stdout.split()}
    assert not loaded & {"matplotlib", "shapely", "scipy", "pandas", "pytest"}
    assert os.listdir(tmp_path) == []
