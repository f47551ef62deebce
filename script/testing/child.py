"""A process of the tests: its lines as they come, and its end together with all that it has started."""

import os
import queue
import signal
import subprocess
import threading
import time


_living = set()
_stopping = threading.Event()


def stop_all():
    """Ends every process of the tests, and those that begin from now on at once. Any thread."""
    _stopping.set()
    for child in list(_living):
        child.end()


class Child:
    def __init__(self, command, folder, environment, nice):
        self._process = subprocess.Popen(
            command, cwd=folder, env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
            stderr=subprocess.STDOUT, text=True, encoding="utf-8", errors="replace", start_new_session=True,
            preexec_fn=(lambda: os.nice(nice)) if nice else None)
        _living.add(self)
        if _stopping.is_set():
            self.end()
        self._lines = queue.Queue()
        threading.Thread(target=self._read, daemon=True).start()

    def _read(self):
        for line in self._process.stdout:
            self._lines.put(line)
        self._lines.put(None)

    def line(self, deadline):
        """The next line; None at the end of the output, which is also that of a process whose children keep it open.
        TimeoutError when there is none by then."""
        ended = None
        while True:
            try:
                return self._lines.get(timeout=0.2)
            except queue.Empty:
                now = time.monotonic()
                if now > deadline:
                    raise TimeoutError from None
                if self._process.poll() is not None:
                    ended = ended or now
                    if now > ended + 1:
                        return None

    def status(self):
        return self._process.wait()

    def end(self):
        """Ends the process and what it has started; harmless once they are gone."""
        try:
            os.killpg(self._process.pid, signal.SIGKILL)
        except (ProcessLookupError, PermissionError):
            pass

    def kill(self):
        """Ends them and waits for the process."""
        self.end()
        self._process.wait()
        _living.discard(self)


def how_it_ended(status):
    if status >= 0:
        return f"exit status {status}"
    try:
        return f"signal {-status}, {signal.Signals(-status).name}"
    except ValueError:
        return f"signal {-status}"
