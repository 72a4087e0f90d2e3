"""A value in a JSON text, with the way to it."""

from __future__ import annotations

import json
import math
import re
from typing import Any, Iterator, Optional, Union

HASH = re.compile(r"[0-9a-f]{32}\Z")


class FieldError(Exception):
    """A field is missing, or is not what it is to be: one line that names it, without the file."""


def _read_float(text: str) -> float:
    value = float(text)
    if math.isinf(value):
        raise ValueError(f"{text} is no number")
    return value


def _read_int(text: str) -> int:
    value = int(text)
    _read_float(text)
    return value


def _refuse(text: str) -> Any:
    raise ValueError(f"{text} is no number")


def parse_json(data: bytes) -> Any:
    """What a text holds: ValueError where it is no JSON, as is what only Python takes for it."""
    try:
        text = data.decode("utf-8-sig")
        value = json.loads(text, parse_int=_read_int, parse_float=_read_float, parse_constant=_refuse)
        json.dumps(value, ensure_ascii=False).encode("utf-8")  # half a pair of UTF-16 is no text
        return value
    except RecursionError as error:
        raise ValueError("it has too many brackets") from error


class Field:
    """Takes no value for another one: a whole number has no fraction, ``true`` is none, a number is finite.

    What is asked raises FieldError. The rules, and the words, are those of ``zorcld``.
    """

    __slots__ = ("value", "_outer", "_key")

    def __init__(self, value: Any, outer: Optional[Field] = None, key: Union[str, int] = "") -> None:
        self.value = value
        self._outer = outer
        self._key = key

    @property
    def name(self) -> str:
        """The way to it."""
        outer = "" if self._outer is None else self._outer.name
        if isinstance(self._key, int):
            return f"{outer}[{self._key}]"
        return f"{outer}.{self._key}" if outer else self._key

    def fail(self, cause: str) -> FieldError:
        """What to raise."""
        return FieldError(f"{self.name or 'all of it'} {cause}")

    def at(self, key: str) -> Field:
        """A field of an object."""
        if not isinstance(self.value, dict):
            raise self.fail("holds no fields")
        if key not in self.value:
            raise Field(None, self, key).fail("is missing")
        return Field(self.value[key], self, key)

    def each(self) -> Iterator[Field]:
        """The values of a list."""
        if not isinstance(self.value, list):
            raise self.fail("is no list")
        return (Field(value, self, number) for number, value in enumerate(self.value))

    def row(self, count: int) -> list[Field]:
        """The values of a list of so many."""
        if not isinstance(self.value, list) or len(self.value) != count:
            raise self.fail(f"is no list of {count}")
        return list(self.each())

    def whole(self, low: int, high: int) -> int:
        """A whole number."""
        if type(self.value) is not int or not low <= self.value <= high:
            raise self.fail(f"is no whole number from {low} to {high}")
        return self.value

    def number(self, low: float, high: float) -> float:
        """Any number."""
        if type(self.value) not in (int, float) or not low <= self.value <= high:
            raise self.fail(f"is no number from {low:g} to {high:g}")
        return float(self.value)

    def truth(self) -> bool:
        """``true`` or ``false``."""
        if not isinstance(self.value, bool):
            raise self.fail("is neither true nor false")
        return self.value

    def text(self) -> str:
        """A string."""
        if not isinstance(self.value, str):
            raise self.fail("is no text")
        return self.value

    def hash(self) -> str:
        """32 hexadecimal digits."""
        if not isinstance(self.value, str) or not HASH.match(self.value):
            raise self.fail("is no hash of 32 hexadecimal digits")
        return self.value
