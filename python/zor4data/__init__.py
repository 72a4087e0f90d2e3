"""Clouds of measured points in memory: octree, queries, files, analysis.

`read` loads a file, `from_arrays` takes coordinates, `facts` looks at a file without loading it. A `Cloud` gives
its records as a numpy array without a copy, and the indices of the points that its queries find.

`POINT` and `COLOR_POINT` are the dtypes of `Cloud.points`, without and with colour: x, y, z int32, then r, g, b uint8.
For type hints, `Kind` is a kind of file ('native', 'ply', 'grid', 'las'), `Progress` what is told a percentage, an int.
"""

from __future__ import annotations

from ._cloud import COLOR_POINT, POINT, Cloud
from ._errors import Error, LossWarning, ReadError, WriteError
from ._facts import Facts, Kind, Loss, Progress, facts
from ._make import from_arrays, read
from ._outline import Outline
from ._query import Query
from ._questions import Batches
from ._unit import Unit

__version__ = "0.1.0"

__all__ = [
    "COLOR_POINT",
    "POINT",
    "Batches",
    "Cloud",
    "Error",
    "Facts",
    "Kind",
    "Loss",
    "LossWarning",
    "Outline",
    "Progress",
    "Query",
    "ReadError",
    "Unit",
    "WriteError",
    "facts",
    "from_arrays",
    "read",
]
