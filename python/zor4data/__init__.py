"""Clouds of measured points in memory: octree, queries, files, analysis.

`read` loads a file, `from_arrays` takes coordinates, `facts` looks at a file without loading it. A `Cloud` gives
its records as a numpy array without a copy, and the indices of the points that its queries find.
"""

from __future__ import annotations

from ._cloud import COLOR_POINT, POINT, Cloud
from ._errors import Error, LossWarning, ReadError, WriteError
from ._facts import Facts, Kind, Loss, Progress, facts
from ._make import from_arrays, read
from ._outline import Outline
from ._query import Query
from ._questions import Batches

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
    "WriteError",
    "facts",
    "from_arrays",
    "read",
]
