"""Tasks on the workers of a client. No worker gets more at once than its memory holds."""

from __future__ import annotations

import uuid
from asyncio import CancelledError
from typing import Any, Callable, Generator, Optional, Sequence

Outcome = tuple[int, Any, Optional[BaseException]]

#: What of a worker's memory tasks may take by what they declare: beyond that Dask itself begins to act.
SHARE = 0.6
#: In place of a worker while there is none: who scales workers by the tasks that wait needs one to begin.
ANYWHERE = ""


def _find_workers(client: Any) -> dict[str, Any]:
    """All workers of a client, by their addresses: later versions of Dask list five unless asked."""
    try:
        info = client.scheduler_info(n_workers=-1)
    except TypeError:
        info = client.scheduler_info()
    workers: dict[str, Any] = info["workers"]
    return workers


class _Load:
    """Which worker has which tasks, by their sizes."""

    def __init__(self, client: Any) -> None:
        self._client = client
        self._given: dict[Any, tuple[str, int]] = {}

    def __len__(self) -> int:
        return len(self._given)

    def put(self, future: Any, worker: str, size: int) -> None:
        self._given[future.key] = worker, size

    def drop(self, future: Any) -> None:
        del self._given[future.key]

    def find_room(self, size: int) -> Optional[str]:
        """A worker with a thread and memory free for a task; a task too large for any gets an empty one, the largest.

        What was given to a worker that is gone runs on another one, nobody knows which: it counts for all.
        """
        workers = _find_workers(self._client)
        if not workers:
            return None if self._given else ANYWHERE
        lost = [size for worker, size in self._given.values() if worker not in workers]
        best: Optional[tuple[float, str]] = None
        largest = max((facts["memory_limit"] or float("inf") for facts in workers.values()), default=0)
        for worker, facts in workers.items():
            mine = [size for other, size in self._given.values() if other == worker]
            limit = facts["memory_limit"] or float("inf")
            room = SHARE * limit - sum(mine) - sum(lost)
            fits = size <= room or (not mine and not lost and limit == largest)
            if fits and len(mine) < facts["nthreads"] and (best is None or room > best[0]):
                best = room, worker
        return None if best is None else best[1]


def _do(task: Callable[[Any], Any], item: Any) -> Any:
    """What a worker does."""
    return task(item)


def _keep(task: Any) -> Any:
    """The task as a result, which a worker fetches once, however many of the items it gets."""
    return task


def _wait(future: Any) -> tuple[Any, Optional[BaseException]]:
    """What came of a task: its result, or what was raised, here with the worker's traceback."""
    try:
        return future.result(), None
    except (Exception, CancelledError) as error:
        return None, error


def run_on(
    client: Any, name: str, task: Callable[[Any], Any], items: Sequence[Any], sizes: Sequence[int]
) -> Generator[Outcome, None, None]:
    """Outcomes as they come: the number of the item, and its result or what was raised."""
    from distributed import as_completed

    if client.asynchronous:
        raise TypeError("the client is asynchronous: what it is wanted for waits for its results")
    load, running, numbers = _Load(client), as_completed(loop=client.loop), {}
    waiting = sorted(range(len(items)), key=lambda number: sizes[number])  # the largest is popped first
    run_id = uuid.uuid4().hex[:8]
    shared = client.submit(_keep, task, key=f"{name}-{run_id}", pure=False) if waiting else None
    try:
        while waiting or len(load):
            worker = load.find_room(sizes[waiting[-1]]) if waiting else None
            if worker is not None:
                number = waiting.pop()
                key = f"{name}-{run_id}-{number}"
                place = {"workers": [worker], "allow_other_workers": True} if worker else {}
                future = client.submit(_do, shared, items[number], key=key, pure=False, **place)
                numbers[future] = number
                load.put(future, worker, sizes[number])
                running.add(future)
            else:
                future = next(running)
                load.drop(future)
                result, error = _wait(future)
                yield numbers.pop(future), result, error
    finally:
        client.cancel([*numbers, shared] if shared is not None else [])
