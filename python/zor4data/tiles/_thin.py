"""One point for each cube of a grid that goes by the coordinates alone."""

from __future__ import annotations

import numpy as np
from numpy.typing import NDArray

from .._cloud import Cloud


def choose_thinned(cloud: Cloud, spacing: float) -> NDArray[np.bool_]:
    """Which points stay: of each cube the one nearest its middle.

    Cubes count from 0 of the coordinates. Of several as near, the least in x, y, z, colour stays: what is in the cube
    decides, not its order.
    """
    places, points = cloud.xyz() / spacing, cloud.points
    cubes = np.floor(places)
    beside = ((places - cubes - 0.5) ** 2).sum(axis=1)
    marks = [points[name] for name in reversed(points.dtype.names or ())]
    order = np.lexsort((*marks, beside, *cubes.T))
    cubes = cubes[order]
    first = np.ones(len(cloud), dtype=np.bool_)
    first[1:] = (cubes[1:] != cubes[:-1]).any(axis=1)
    chosen = np.zeros(len(cloud), dtype=np.bool_)
    chosen[order[first]] = True
    return chosen
