"""Where the borders of tiles lie, and what is added to their buffers: both as `zorcld tile` finds them."""

from __future__ import annotations

import math
from typing import Optional

import numpy as np

#: Steps a coordinate unit, and how far a cloud reaches from its origin.
SCALE = 10000.0
REACH = (2**31 - 1) / SCALE
#: Coordinates up to here are doubles finer than a fiftieth of a step.
MAX_PLACE = 1.0e10
#: Times the size: a point is then in some thousand tiles.
MOST_MARGINS = 16.0
#: Ends of windows and coordinates that are rounded, each by half of what floats lie apart.
ROUNDINGS = 12.0

Origin = tuple[float, ...]


def find_margin(origin: Origin, buffer: float, metres: Optional[float]) -> float:
    """What floats may round in the windows of the ground filter, coordinate units.

    The filter has coordinates in metres where a unit is so many. Where it is not known, or no number yet, twice as much
    does for any: what floats lie apart doubles where the number does.
    """
    farthest = max(abs(origin[0]), abs(origin[1])) + REACH + buffer + 1.0

    def apart(place: float) -> float:
        return float(np.spacing(np.float32(place)))

    if metres is None:
        return ROUNDINGS * apart(farthest)
    return ROUNDINGS / 2.0 * max(apart(farthest), apart(farthest * metres) / metres)


class Grid:
    """Borders of cores: on the half steps next below the multiples of the size.

    Raises
    ------
    ValueError
        Where the size is too small for the origin.
    """

    def __init__(self, size: float, buffer: float, origin: Origin, metres: Optional[float]) -> None:
        self._size = size
        self._origin = origin
        for start in origin[:2]:
            farthest = abs(start) + 2.0 * REACH
            if farthest > MAX_PLACE or farthest / size > 0.5 * (2**31 - 1):
                raise ValueError("is too small for the origin")
        if buffer > 0.0 and find_margin(origin, buffer, metres) > MOST_MARGINS * size:
            raise ValueError("is too small for the origin")

    def _border(self, axis: int, cell: int) -> float:
        start = self._origin[axis]
        return (math.ceil((cell * self._size - start) * SCALE) - 0.5) / SCALE + start

    def core(self, column: int, row: int) -> tuple[float, float, float, float]:
        """xmin, ymin, xmax, ymax of a core."""
        borders = self._border(0, column), self._border(1, row), self._border(0, column + 1), self._border(1, row + 1)
        return borders
