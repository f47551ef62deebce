"""What is said while the tests run, and at the end."""

import threading
import time

from outcome import FAILED, SKIPPED

# The ticker looks once a second.
_SILENCE = 9.0


def plural(count, one, many):
    return f"{count:,} {one if count == 1 else many}"


class Progress:
    """Called from many threads. Writes a line at least every ten seconds until it is closed."""

    def __init__(self, total, silence=_SILENCE, tick=1.0):
        self.outcomes = []
        self._silence, self._interval = silence, tick
        self._total = total
        self._running = {}
        self._lock = threading.RLock()
        self._spoke = self._began = time.monotonic()
        self._closed = threading.Event()
        self._ticker = threading.Thread(target=self._tick, daemon=True)
        self._ticker.start()

    def say(self, text):
        with self._lock:
            self._spoke = time.monotonic()
            print(text, flush=True)

    def begins(self, name):
        with self._lock:
            self._running[threading.get_ident()] = (name, time.monotonic())

    def report(self, outcome):
        with self._lock:
            if self._closed.is_set():
                return
            self._running.pop(threading.get_ident(), None)
            self.outcomes.append(outcome)
            if outcome.result == FAILED:
                self.say(f"FAILED {outcome.name} ({outcome.seconds:.1f} s)\n{indented(outcome.output)}")

    def close(self):
        self._closed.set()
        self._ticker.join()

    def _tick(self):
        while not self._closed.wait(self._interval):
            with self._lock:
                if time.monotonic() < self._spoke + self._silence:
                    continue
                now = time.monotonic()
                running = ", ".join(f"{name} ({now - since:.0f} s)" for name, since in self._running.values())
                self.say(f"... {len(self.outcomes):,} of {self._total:,} after {now - self._began:.0f} s; "
                         f"running: {running or 'nothing'}")


def indented(text):
    return "".join("    " + line + "\n" for line in text.splitlines())


def slowest(outcomes):
    print("\nThe slowest tests:")
    for outcome in sorted(outcomes, key=lambda one: -one.seconds)[:10]:
        print(f"  {outcome.seconds:6.1f} s  {outcome.name}")


def skipped(outcomes):
    """Tells why tests were skipped: they neither passed nor failed."""
    reasons = {}
    for outcome in outcomes:
        if outcome.result == SKIPPED:
            reasons.setdefault(outcome.reason(), []).append(outcome.name)
    if reasons:
        print("\nSKIPPED, and so neither passed nor failed:")
    for reason, names in reasons.items():
        print(f"  {reason}\n      " + " ".join(names))


def failed(outcomes):
    names = [outcome.name for outcome in outcomes if outcome.result == FAILED]
    if names:
        print("\nFAILED:", *names, sep="\n  ")


def summary(outcomes):
    """The closing lines; whether nothing failed. The last one counts all tests; skipped ones have not failed."""
    slowest(outcomes)
    skipped(outcomes)
    failed(outcomes)
    count = sum(outcome.result == FAILED for outcome in outcomes)
    share = (len(outcomes) - count) * 100 // len(outcomes)
    print(f"\n{share}% tests passed, {count} tests failed out of {len(outcomes)}", flush=True)
    return count == 0
