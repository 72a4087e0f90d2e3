"""Tasks, one a tile: in sequence, or by the workers of a client."""

from __future__ import annotations

import sys
from dataclasses import dataclass
from typing import Any, Callable, Iterator, Optional, Sequence

from .._errors import Error
from ._client import run_on
from ._manifest import Tile

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


def _run_here(job: Job, tiles: Sequence[Tile]) -> Iterator[Outcome]:
    """One tile after the other."""
    for number, tile in enumerate(tiles):
        try:
            yield number, job.task(tile), None
        except Exception as error:
            yield number, None, error


def _tell_progress(job: Job, done: int, count: int, failed: int) -> None:
    """A line on a terminal, written over and over."""
    if sys.stderr.isatty():
        tail = f", {failed} failed" if failed else ""
        end = "\n" if done == count else ""
        print(f"\r{job.name}: {done} of {count} tiles{tail}", end=end, file=sys.stderr, flush=True)


def _tell_failure(job: Job, tile: Tile, error: BaseException) -> None:
    """What failed, and how it is done again."""
    start = "\n" if sys.stderr.isatty() else ""
    print(f"{start}{job.name}: {tile.file} failed: {error!r}\n    {job.repeat(tile)}", file=sys.stderr, flush=True)


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
    for done, (number, result, error) in enumerate(outcomes, 1):
        results[number] = result
        if error is not None:
            failures[tiles[number].file] = error
            _tell_failure(job, tiles[number], error)
        _tell_progress(job, done, len(tiles), len(failures))
    if failures:
        first, error = next(iter(failures.items()))
        cause = f"{job.name}: {len(failures)} of {len(tiles)} tiles failed, {first} first: {error!r}"
        raise TilesError(manifest, cause, failures, results) from error
    return results
