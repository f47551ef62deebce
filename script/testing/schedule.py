"""Which tests run when, and beside which.

Tests on a display mostly wait, so several desktops stand side by side and take turns with the processors. The others
keep the processors busy; they are nicer, so that a test on a display is never late because of them.
"""

import os
import threading
from dataclasses import dataclass

from child import stop_all
from desktop import Desktop
from running import run_named, run_plain

_NICE = 10


@dataclass
class Job:
    """What one process runs."""
    entry: object
    names: list
    # Expected seconds.
    cost: float = 0.0

    def lane(self):
        if self.entry.display:
            return "display"
        return "alone" if self.entry.alone else "processor"


def split(entry, names, cost_of):
    """The jobs of an entry; `cost_of` gives the expected seconds of a test."""
    if not entry.named:
        return [Job(entry, names, max(entry.cost, cost_of(entry.name)))]
    size = entry.at_once or len(names)
    parts = [names[start:start + size] for start in range(0, len(names), size)]
    return [Job(entry, part, sum(cost_of(entry.prefix + name) for name in part)) for part in parts]


def _lasting(jobs):
    """For each entry, the seconds of the longest chain of jobs that wait for it."""
    lasting = {}
    for _ in range(len({job.entry.name for job in jobs})):
        before = dict(lasting)
        for job in jobs:
            chain = job.cost + lasting.get(job.entry.name, 0.0)
            for name in job.entry.after:
                lasting[name] = max(lasting.get(name, 0.0), chain)
        if lasting == before:
            break
    return lasting


class Schedule:
    def __init__(self, jobs, environment, progress, script):
        # The longest first, counted with what comes after it: what begins late should be short.
        lasting = _lasting(jobs)
        self._waiting = sorted(jobs, key=lambda job: -job.cost - lasting.get(job.entry.name, 0.0))
        self._names = {job.entry.name for job in jobs}
        self._unfinished = {}
        for job in jobs:
            self._unfinished[job.entry.name] = self._unfinished.get(job.entry.name, 0) + 1
        self._environment, self._progress, self._script = environment, progress, script
        self._changed = threading.Condition()
        self._problems = []

    def run(self, desktops):
        workers = [("processor", None)] * (os.cpu_count() or 2) + [("alone", None)]
        workers += [("display", number) for number in range(desktops)]
        threads = [threading.Thread(target=self._work, args=worker) for worker in workers]
        try:
            for thread in threads:
                thread.start()
            # A signal that the system gave to another thread is only seen when this one wakes.
            while any(thread.is_alive() for thread in threads):
                for thread in threads:
                    thread.join(0.2)
        except BaseException:
            self._stop(threads)
            raise
        if self._problems:
            raise self._problems[0]

    def _stop(self, threads):
        """Somebody does not want to wait for the rest."""
        self._progress.close()
        with self._changed:
            self._waiting = []
            self._changed.notify_all()
        stop_all()
        for thread in threads:
            if thread.is_alive():
                thread.join()

    def _work(self, lane, number):
        try:
            if lane != "display":
                return self._take_turns(lane, self._environment, _NICE if lane == "processor" else 0)
            if not any(job.lane() == lane for job in self._waiting):
                return None
            with Desktop(self._script) as desktop:
                return self._take_turns(lane, {**self._environment, **desktop.environment}, 0)
        except Exception as problem:  # The other workers go on; run() raises it.
            self._problems.append(problem)
            with self._changed:
                self._waiting = []
                self._changed.notify_all()

    def _take_turns(self, lane, environment, nice):
        while (job := self._next(lane)) is not None:
            own = {**environment, **job.entry.environment}
            if job.entry.named:
                run_named(job.entry, job.names, own, nice, self._progress.begins, self._progress.report)
            else:
                run_plain(job.entry, own, nice, self._progress.begins, self._progress.report)
            with self._changed:
                self._unfinished[job.entry.name] -= 1
                self._changed.notify_all()

    def _next(self, lane):
        """The next job of the lane, once what it comes after is over; None when there is no more."""
        with self._changed:
            while True:
                mine = [job for job in self._waiting if job.lane() == lane]
                if not mine:
                    return None
                for job in mine:
                    if all(self._unfinished.get(name, 0) == 0 for name in job.entry.after):
                        self._waiting.remove(job)
                        return job
                self._changed.wait()
