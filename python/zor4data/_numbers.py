"""What users give as numbers and as progress."""

from __future__ import annotations

import math
from typing import Any, Callable, Optional


def read_number(value: Any, name: str) -> float:
    """A number as the library takes it."""
    try:
        if not isinstance(value, (str, bytes)):
            return float(value)
    except (TypeError, ValueError):
        pass
    raise TypeError(f"{name} must be a number, not {value!r}")


def read_bound(value: Any, name: str) -> float:
    """A number that something is compared with, which not-a-number would leave without an answer."""
    number = read_number(value, name)
    if math.isnan(number):
        raise ValueError(f"{name} is not a number")
    return number


def read_progress(progress: Optional[Callable[[int], object]]) -> Optional[Callable[[int], object]]:
    """What is told of the progress, known to be callable before the work begins."""
    if progress is None or callable(progress):
        return progress
    raise TypeError(f"progress must be callable, not {progress!r}")
