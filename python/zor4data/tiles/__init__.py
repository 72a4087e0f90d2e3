"""Surveys in tiles: what `zorcld tile` has cut, worked on tile by tile, in sequence or by Dask.

`open` takes the folder. A `Tiles` gives the ground, counts, what lies inside polygons, a thinned survey, an outline,
and whatever a function makes of each tile; with a ``distributed.Client`` its workers do it. Results do not depend on
how many there are.
"""

from __future__ import annotations

from ._manifest import Core, Tile
from ._parts import Parts, Points
from ._run import TilesError
from ._tiles import Tiles, open

__all__ = ["Core", "Parts", "Points", "Tile", "Tiles", "TilesError", "open"]
