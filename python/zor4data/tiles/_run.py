"""Tasks, one a tile: in sequence, or by the workers of a client."""

from __future__ import annotations

from contextlib import closing
from dataclasses import dataclass
from typing import Any, Callable, Generator, Optional, Sequence

from .._errors import Error, show_text
from ._client import run_on
from ._manifest import Tile
from ._progress import Progress

Outcome = tuple[int, Any, Optional[BaseException]]


class TilesError(Error):
    """Tiles that failed, after all others have been worked on.

    Attributes
    ----------
    failures : dict
        The exception of each, by the tile's file.
    results : list
        What the others gave, in the order of the tiles; None where one failed.
    """

    def __init__(self, path: str, cause: str, failures: dict[str, BaseException], results: list[Any]) -> None:
        super().__init__(path, cause, 0)
        self.args = (path, cause, failures, results)
        self.failures = failures
        self.results = results


@dataclass(frozen=True)
class Job:
    """Something to do with many tiles, and how it is told.

    Attributes
    ----------
    name : str
        What it is called on the terminal.
    task : callable
        Takes a tile; is sent to workers.
    repeat : callable
        The command that does one tile again.
    memory : callable
        How many bytes a tile takes.
    """

    name: str
    task: Callable[[Tile], Any]
    repeat: Callable[[Tile], str]
    memory: Callable[[Tile], int]


def _run_here(job: Job, tiles: Sequence[Tile]) -> Generator[Outcome, None, None]:
    """One tile after the other."""
    for number, tile in enumerate(tiles):
        try:
            yield number, job.task(tile), None
        except Exception as error:
            yield number, None, error


def run(job: Job, tiles: Sequence[Tile], client: Any, manifest: str) -> list[Any]:
    """Results in the order of the tiles.

    Raises
    ------
    TilesError
        At the end, where tiles failed.
    """
    results: list[Any] = [None] * len(tiles)
    failures: dict[str, BaseException] = {}
    sizes = [job.memory(tile) for tile in tiles]
    outcomes = _run_here(job, tiles) if client is None else run_on(client, job.name, job.task, tiles, sizes)
    with closing(outcomes), Progress(job.name, len(tiles), client) as progress:
        for number, result, error in outcomes:
            tile, told = tiles[number], None
            results[number] = result
            if error is not None:
                failures[tile.file] = error
                told = show_text(f"{job.name}: {tile.file} failed: {error!r}") + f"\n    {job.repeat(tile)}"
            progress.add(told)
    if failures:
        first, error = next(iter(failures.items()))
        cause = f"{job.name}: {len(failures)} of {len(tiles)} tiles failed, {first} first: {error!r}"
        raise TilesError(manifest, cause, failures, results) from error
    return results
