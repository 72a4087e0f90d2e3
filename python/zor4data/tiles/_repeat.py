"""The command that does one tile again."""

from __future__ import annotations

import shlex
import sys
from pathlib import Path
from typing import Any, Optional


def _find(names: str, start: Any) -> Any:
    """What a dotted name leads to; None where it leads nowhere."""
    for name in names.split("."):
        start = getattr(start, name, None)
    return start


def _place_of(function: Any) -> Optional[tuple[str, str]]:
    """Code that imports a function, and an expression for it; None where it has no name to be found by."""
    module, name = getattr(function, "__module__", None) or "", getattr(function, "__qualname__", "")
    home = sys.modules.get(module)
    if home is None or not name or _find(name, home) is not function:
        return None
    if module == "__main__":
        script = getattr(home, "__file__", None)
        first, *rest = name.split(".")
        if script is None:
            return None
        found = ".".join([f"runpy.run_path({str(Path(script).resolve())!r})[{first!r}]", *rest])
        return "import runpy", found
    top = getattr(sys.modules.get(module.split(".")[0]), "__file__", None)
    if top is None:
        return None
    folder = Path(top).resolve().parent
    folder = folder.parent if Path(top).name == "__init__.py" else folder
    return f"import sys; sys.path.insert(0, {str(folder)!r}); import {module}", f"{module}.{name}"


#: Characters of a call beyond which no shell takes it, and nobody reads it.
LONGEST = 4000


def _write_in_program(folder: Path, file: str, call: str) -> str:
    """What is to be written in the user's program."""
    return f"in your program: zor4data.tiles.open({str(folder)!r}).only({file!r}).{call}"


def write_command(folder: Path, file: str, call: str, imports: str = "") -> str:
    """A line for a shell.

    Parameters
    ----------
    folder : Path
        Of the tiles.
    file : str
        The tile's.
    call : str
        The method with its arguments, as Python.
    imports : str
        What they need.
    """
    if len(call) > LONGEST:
        return _write_in_program(folder, file, f"{call[:call.index('(')]}(...)")
    start = f"import zor4data.tiles as t; {imports}; " if imports else "import zor4data.tiles as t; "
    code = f"{start}t.open({str(folder)!r}).only({file!r}).{call}"
    return f"{shlex.quote(sys.executable or 'python3')} -c {shlex.quote(code)}"


def write_map_command(folder: Path, file: str, function: Any, arguments: str) -> str:
    """The same for a function of the user's; without a name it is found by, what to write in its program."""
    place = _place_of(function)
    if place is None:
        name = getattr(function, "__qualname__", repr(function))
        return _write_in_program(folder, file, f"map({name}{arguments})")
    imports, found = place
    return write_command(folder, file, f"map({found}{arguments})", imports)
