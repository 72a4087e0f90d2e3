"""The outline of a cloud."""

from __future__ import annotations

from typing import Any

import numpy as np


class Outline(np.ndarray):  # type: ignore[type-arg]
    """Corners of an outline in plan, an N x 2 array of float64, clockwise, the last corner the first again.

    Whatever takes ``__geo_interface__`` takes it as a polygon. What is computed from it is an array like others.
    """

    @property
    def __geo_interface__(self) -> dict[str, Any]:
        if self.ndim != 2 or self.shape[1] != 2:
            raise AttributeError("__geo_interface__: these are not the corners of an outline")
        corners = np.asarray(self)
        x, y = (corners - corners[:1]).T
        if (x[:-1] * y[1:] - x[1:] * y[:-1]).sum() < 0.0:
            corners = corners[::-1]  # GeoJSON's outer rings run counter-clockwise
        ring = tuple((x, y) for x, y in corners.tolist())
        if ring and ring[0] != ring[-1]:
            ring += ring[:1]  # a part of an outline: GeoJSON's rings are closed
        if 0 < len(ring) < 4:
            raise AttributeError("__geo_interface__: these are fewer than three corners")
        return {"type": "Polygon", "coordinates": (ring,) if ring else ()}

    def __array_finalize__(self, obj: Any) -> None:
        """Nothing but the array is carried over."""

    def __array_wrap__(self, array: Any, context: Any = None, return_scalar: bool = False) -> Any:
        """What is computed is no outline."""
        plain = np.asarray(array)
        return plain[()] if plain.ndim == 0 else plain
