"""Units of coordinates."""

from __future__ import annotations

from dataclasses import dataclass
from typing import Any, Optional

from . import _core
from ._numbers import read_number


@dataclass(frozen=True)
class Unit:
    """The unit of coordinates that a file states."""

    name: str  #: of x and y, in the file's words; empty: only that of heights is stated
    metres: Optional[float]  #: metres a unit of x and y; None: an angle, or its size is not known
    height_metres: Optional[
        float
    ]  #: metres a unit of z, which has that of x and y where none is stated; None: not known
    is_angle: bool  #: x and y are degrees, for instance


def find_unit(path: bytes, kind: int) -> Optional[Unit]:
    """The unit that a file states; None: it states none."""
    name, metres, is_angle, height = _core.units(path, kind)
    if not name and not height:
        return None
    return Unit(name, metres or None, height or None, is_angle)


def read_scale(unit_scale: Any, unit: Optional[Unit]) -> tuple[float, float]:
    """How many metres the ground filter takes a unit for, in plan and in height."""
    if unit_scale is not None:
        scale = read_number(unit_scale, "unit_scale")
        if not 1e-6 <= scale <= 1e6:
            raise ValueError(f"unit_scale is {unit_scale}: it must be from 1e-6 to 1e6 metres")
        return scale, scale
    if unit is None:
        return 1.0, 1.0
    if unit.is_angle:
        raise ValueError(
            f"x and y are angles ({unit.name}), the ground filter goes by metres: they must be projected first; "
            "if they are none, unit_scale tells how many metres a unit is"
        )
    return unit.metres or 1.0, unit.height_metres or 1.0
