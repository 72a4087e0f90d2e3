"""What a run tells while it goes on: a line on a terminal, and what failed."""

from __future__ import annotations

import sys
import threading
import time
from typing import Any, Optional, Protocol

#: Seconds after which the line is written again, for its clock.
BEAT = 0.5


class Line(Protocol):
    """A line that is written over and over."""

    def draw(self, done: int, count: int, failed: int) -> None:
        """Write it."""

    def clear(self) -> None:
        """Make place for something else."""

    def end(self) -> None:
        """Leave it."""


class PlainLine:
    """On standard error."""

    def __init__(self, name: str) -> None:
        self._name = name
        self._start = time.monotonic()

    def draw(self, done: int, count: int, failed: int) -> None:
        tail = f", {failed} failed" if failed else ""
        seconds = time.monotonic() - self._start
        text = f"\r{self._name}: {done} of {count} tiles{tail}, {seconds:.0f} s"
        print(text, end="", file=sys.stderr, flush=True)

    def clear(self) -> None:
        print("\r\33[2K", end="", file=sys.stderr, flush=True)

    def end(self) -> None:
        print(file=sys.stderr, flush=True)


class DaskLine:
    """The bar of ``distributed.progress``, on standard output.

    That function itself wants all tasks at the beginning, which get handed out as there is memory, keeps their
    results, and stops at the first that fails.
    """

    def __init__(self, client: Any) -> None:
        from distributed.diagnostics.progressbar import TextProgressBar

        self._bar = TextProgressBar([], scheduler=client.scheduler.address, loop=client.loop, start=False)

    def draw(self, done: int, count: int, failed: int) -> None:
        self._bar._draw_bar(remaining=count - done, all=count)

    def clear(self) -> None:
        self._bar._draw_stop()

    end = clear


def _choose_line(name: str, client: Any) -> Optional[Line]:
    """A line where somebody sees it."""
    if client is not None and sys.stdout.isatty():
        return DaskLine(client)
    if client is None and sys.stderr.isatty():
        return PlainLine(name)
    return None


class Progress:
    """Tells how many of the tiles of a run are done, from its ``with`` on, and what fails."""

    def __init__(self, name: str, count: int, client: Any) -> None:
        self._line = _choose_line(name, client) if count else None
        self._count, self._done, self._failed = count, 0, 0
        self._lock = threading.Lock()
        self._ended = threading.Event()
        self._clock = threading.Thread(target=self._tick, daemon=True)

    def __enter__(self) -> Progress:
        if self._line is not None:
            self._clock.start()
        return self

    def __exit__(self, *_: object) -> None:
        self._ended.set()
        if self._line is not None:
            self._clock.join()
            self._line.end()

    def add(self, failure: Optional[str]) -> None:
        """A tile is done; what is to be told where it failed."""
        with self._lock:
            self._done += 1
            if failure is not None:
                self._failed += 1
                if self._line is not None:
                    self._line.clear()
                print(failure, file=sys.stderr, flush=True)
        self._draw()

    def _draw(self) -> None:
        with self._lock:
            if self._line is not None:
                self._line.draw(self._done, self._count, self._failed)

    def _tick(self) -> None:
        self._draw()
        while not self._ended.wait(BEAT):
            self._draw()
