"""Runs the tests of an entry and hands on what became of each."""

import re
import time

from child import Child, how_it_ended
from outcome import FAILED, PASSED, SKIPPED, Outcome

# What a test writes without a newline stands before these on the same line.
_BEGIN = re.compile(r"\[ RUN      \] (.+)$")
_END = re.compile(r"\[(       OK |  FAILED  |  SKIPPED )\] (.+?)(?:, where .*)? \((\d+) ms\)$")
_RESULTS = {"       OK ": PASSED, "  FAILED  ": FAILED, "  SKIPPED ": SKIPPED}
# A test that writes without end does not fill the memory.
_LONGEST_OUTPUT = 2_000_000


class NamedRun:
    """One process with several tests of a named entry. `report` is called with each outcome, `begins` with each name."""

    def __init__(self, entry, names, environment, nice, begins, report):
        self._entry, self._left = entry, list(names)
        self._begins, self._report = begins, report
        command = [*entry.command, f"--gtest_filter={':'.join(names)}", "--gtest_color=no"]
        self._child = Child(command, entry.folder, environment, nice)
        self._current, self._began, self._output = None, 0.0, []

    def run(self):
        """Returns the names of the tests that did not run because the process had ended."""
        try:
            while (line := self._next_line()) is not None:
                self._take(line.rstrip("\n"))
            status = self._child.status()
        except TimeoutError:
            self._finish(FAILED, self._entry.timeout, f"it took longer than {self._entry.timeout:.0f} s\n")
            return self._left
        finally:
            self._child.kill()
        if self._current:
            self._finish(FAILED, time.monotonic() - self._began, f"the process ended in it: {how_it_ended(status)}\n")
        elif self._left:
            self._report(self._at_the_end(f"the process ended before {self._left[0]}: {how_it_ended(status)}\n"))
            self._left = []
        elif status != 0 and not self._failed:
            self._report(self._at_the_end(f"every test passed, and then: {how_it_ended(status)}\n"))
        return self._left

    _failed = False

    def _next_line(self):
        start = self._began if self._current else time.monotonic()
        return self._child.line(start + self._entry.timeout)

    def _take(self, line):
        begin, end = _BEGIN.search(line), _END.search(line)
        if begin and begin[1] in self._left:
            self._current, self._began, self._output = begin[1], time.monotonic(), []
            self._begins(self._entry.prefix + begin[1])
        elif end and end[2] == self._current:
            self._output.append(line[:end.start()])
            self._finish(_RESULTS[end[1]], int(end[3]) / 1000, "")
        elif sum(map(len, self._output[-1000:])) < _LONGEST_OUTPUT:
            self._output.append(line + "\n")

    def _finish(self, result, seconds, last_words):
        if self._current is None:
            self._current = self._left[0]
        self._failed = self._failed or result == FAILED
        output = "" if result == PASSED else "".join(self._output) + last_words
        self._report(Outcome(self._entry.prefix + self._current, result, seconds, output))
        self._left.remove(self._current)
        self._current, self._output = None, []

    def _at_the_end(self, words):
        return Outcome(self._entry.name + " (the process itself)", FAILED, 0.0, "".join(self._output) + words)


def run_named(entry, names, environment, nice, begins, report):
    """Runs these tests of a named entry; a process that dies takes only the test that it was in along."""
    while names:
        names = NamedRun(entry, names, environment, nice, begins, report).run()


def run_plain(entry, environment, nice, begins, report):
    """Runs an entry that is one test."""
    begins(entry.name)
    began = time.monotonic()
    output, status = [], None
    child = Child(entry.command, entry.folder, environment, nice)
    try:
        while (line := child.line(began + entry.timeout)) is not None:
            output.append(line)
        status = child.status()
    except TimeoutError:
        output.append(f"it took longer than {entry.timeout:.0f} s\n")
    finally:
        child.kill()
    seconds = time.monotonic() - began
    said_so = any(re.search(words, "".join(output)) for words in entry.skip_words)
    if status == 0 and not said_so:
        report(Outcome(entry.name, PASSED, seconds))
    elif status is not None and (said_so or status == entry.skip_status):
        report(Outcome(entry.name, SKIPPED, seconds, "".join(output)))
    else:
        if status is not None:
            output.append(how_it_ended(status) + "\n")
        report(Outcome(entry.name, FAILED, seconds, "".join(output)))
