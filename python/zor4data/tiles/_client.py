"""Tasks on the workers of a client. No worker gets more at once than its memory holds."""

from __future__ import annotations

import uuid
from typing import Any, Callable, Iterator, Optional, Sequence

Outcome = tuple[int, Any, Optional[BaseException]]

#: What of a worker's memory tasks may take by what they declare: beyond that Dask itself begins to act.
SHARE = 0.6


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
        workers = self._client.scheduler_info()["workers"]
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


def run_on(
    client: Any, name: str, task: Callable[[Any], Any], items: Sequence[Any], sizes: Sequence[int]
) -> Iterator[Outcome]:
    """Outcomes as they come: the number of the item, and its result or what was raised."""
    from distributed import as_completed

    load, running, numbers = _Load(client), as_completed(), {}
    waiting = sorted(range(len(items)), key=lambda number: sizes[number])  # the largest is popped first
    run_id = uuid.uuid4().hex[:8]
    try:
        while waiting or len(load):
            worker = load.find_room(sizes[waiting[-1]]) if waiting else None
            if worker is not None:
                number = waiting.pop()
                key = f"{name}-{run_id}-{number}"
                future = client.submit(
                    task, items[number], key=key, workers=[worker], allow_other_workers=True, pure=False
                )
                numbers[future] = number
                load.put(future, worker, sizes[number])
                running.add(future)
            elif len(load):
                future = next(running)
                load.drop(future)
                error = future.exception()
                yield numbers.pop(future), None if error is not None else future.result(), error
            else:
                client.wait_for_workers(1)
    finally:
        client.cancel(list(numbers))
