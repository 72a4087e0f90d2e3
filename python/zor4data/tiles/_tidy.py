"""What workers leave behind that were killed while they wrote."""

from __future__ import annotations

import fcntl
import os
import re
import time
from pathlib import Path
from typing import Iterable

#: What the library puts behind a file's name while it writes.
SUFFIX = re.compile(r"\.zorcld-[0-9a-z]{6}$")
#: Seconds for which a file that is still empty may belong to somebody who has not locked it yet.
GRACE = 1.0


def _is_abandoned(path: Path) -> bool:
    """Whether nobody writes to it: who does holds a lock, which ends with the process."""
    file = os.open(path, os.O_RDONLY | os.O_NOFOLLOW | os.O_NONBLOCK | os.O_CLOEXEC)
    try:
        facts = os.fstat(file)
        if facts.st_size == 0 and time.time() - facts.st_mtime < GRACE:
            return False
        fcntl.flock(file, fcntl.LOCK_EX | fcntl.LOCK_NB)
        return True
    finally:
        os.close(file)


def remove_abandoned(folder: Path, files: Iterable[str]) -> None:
    """Remove what is left of attempts to write these files. What is in use, or cannot be removed, stays."""
    wanted = set(files)
    for path in folder.iterdir():
        found = SUFFIX.search(path.name)
        if found is None or path.name[: found.start()] not in wanted:
            continue
        try:
            if _is_abandoned(path):
                path.unlink()
        except OSError:
            pass
