"""The hash of all that a manifest says."""

from __future__ import annotations

import struct
from typing import Any

from .. import _core
from ._field import Field

#: Of brackets in each other; a manifest has five.
MAX_DEPTH = 64


def _add_text(text: str, parts: list[bytes]) -> None:
    data = text.encode("utf-8")
    parts += (b"s%d:" % len(data), data)


def _add(value: Any, depth: int, parts: list[bytes]) -> None:
    if depth > MAX_DEPTH:
        raise Field(None, None, "seal").fail("is of too many brackets in each other")
    if isinstance(value, dict):
        parts.append(b"{")
        for key in sorted(value, key=str.encode):
            if depth > 0 or key != "seal":
                _add_text(key, parts)
                _add(value[key], depth + 1, parts)
        parts.append(b"}")
    elif isinstance(value, list):
        parts.append(b"[")
        for one in value:
            _add(one, depth + 1, parts)
        parts.append(b"]")
    elif isinstance(value, str):
        _add_text(value, parts)
    elif value is None or isinstance(value, bool):
        parts.append(b"n" if value is None else b"t" if value else b"f")
    else:
        parts.append(b"d" + struct.pack(">d", value).hex().encode("ascii"))


def calc_seal(manifest: dict[str, Any]) -> str:
    """The hash of all values but the field "seal", whatever the order of keys: as `zorcld` finds it."""
    parts: list[bytes] = []
    _add(manifest, 0, parts)
    return _core.hash_bytes(b"".join(parts))
