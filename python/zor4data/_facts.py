"""Files: what they say of themselves, and how they become clouds."""

from __future__ import annotations

import os
from dataclasses import dataclass, fields
from typing import Any, Callable, Literal, Optional, Union

import numpy as np
from numpy.typing import NDArray

from . import _core
from ._unit import Unit, find_unit

Kind = Literal["native", "ply", "grid", "las"]
PathLike = Union[str, bytes, "os.PathLike[str]", "os.PathLike[bytes]"]
Progress = Callable[[int], object]

#: Kinds by the library's numbers.
_KINDS: tuple[Kind, ...] = ("native", "ply", "grid", "las")


@dataclass(frozen=True)
class Loss:
    """Something that is lost when a file is loaded, or comes otherwise than the file means it."""

    code: str  #: short and lasting, for programs: ``"ply-coordinates"``
    text: str  #: one line of English


@dataclass(frozen=True, eq=False)
class Facts:
    """What a file says of itself before it is loaded. Facts are equal where all of them are."""

    path: str
    kind: Optional[Kind]  #: by its first bytes, or as asked for; None: not known
    cause: str  #: why it would not load, without full stop; empty: nothing found that would keep it from it
    number: int  #: the cause's number, 0 where there is none
    announced: Optional[int]  #: points; None: it does not say, as no ASCII grid does
    has_color: bool  #: it would be loaded with colour
    bounds: Optional[NDArray[np.float64]]  #: [[xmin, ymin, zmin], [xmax, ymax, zmax]], read-only; they may be untrue
    losses: tuple[Loss, ...]  #: what would be lost if it were loaded
    unit: Optional[Unit] = None  #: of its coordinates, as a LAS file states it; None: not stated

    @property
    def loads(self) -> bool:
        """Whether nothing was found that would keep the file from loading."""
        return self.number == 0

    def _key(self) -> tuple[Any, ...]:
        """All of it, to be compared."""
        bounds = None if self.bounds is None else self.bounds.tobytes()
        return tuple(bounds if field.name == "bounds" else getattr(self, field.name) for field in fields(self))

    def __setstate__(self, state: dict[str, Any]) -> None:
        """What comes out of a pickle is as unchanging as what went in."""
        self.__dict__.update(state)
        if self.bounds is not None:
            self.bounds.flags.writeable = False

    def __eq__(self, other: object) -> bool:
        if not isinstance(other, Facts):
            return NotImplemented
        return self._key() == other._key()

    def __hash__(self) -> int:
        return hash(self._key())


def number_of_kind(kind: Optional[Kind]) -> int:
    """The library's number of a kind; -1: by content."""
    if kind is None:
        return -1
    if kind not in _KINDS:
        raise ValueError(f"kind is {kind!r}: it must be one of {', '.join(_KINDS)}")
    return _KINDS.index(kind)


def bytes_of_path(path: PathLike) -> bytes:
    """A path as the system takes it."""
    name = os.fsencode(path)
    if b"\0" in name:
        raise ValueError("a path cannot hold a null byte")
    return name


def _bounds(box: tuple[float, ...]) -> NDArray[np.float64]:
    """Bounds as an array that does not change."""
    bounds = np.array(box, dtype=np.float64).reshape(2, 3)
    bounds.flags.writeable = False
    return bounds


def find_facts(path: PathLike, number: int) -> Facts:
    """Look at a file as one of a kind, by the library's number."""
    kind, cause_number, cause, announced, has_color, box, losses = _core.facts(bytes_of_path(path), number)
    return Facts(
        path=os.fsdecode(path),
        kind=_KINDS[kind] if 0 <= kind < len(_KINDS) else None,
        cause=cause,
        number=cause_number,
        announced=announced if announced >= 0 else None,
        has_color=has_color,
        bounds=None if box is None else _bounds(box),
        losses=tuple(Loss(code, text) for code, text in losses),
        unit=find_unit(bytes_of_path(path), kind),
    )


def facts(path: PathLike, *, kind: Optional[Kind] = None) -> Facts:
    """Tell what a file says of itself, and why it would not load, without loading it.

    Parameters
    ----------
    path : str, bytes or os.PathLike
        The file. Its name does not matter.
    kind : {'native', 'ply', 'grid', 'las'}, optional
        Take it for this kind, whatever its first bytes say.

    Returns
    -------
    Facts
        Points are not read, so that it takes milliseconds whatever the size. A file that is missing is no
        exception: it is a cause.
    """
    return find_facts(path, number_of_kind(kind))
