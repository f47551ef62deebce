"""The client as a process, with its own home."""

import subprocess
import threading
import time


class Client:
    def __init__(self, program, desktop, folder, log, under=()):
        """`under`: a command that runs it as a child, such as one that watches its system calls."""
        self._command = [str(part) for part in (*under, program)]
        self._desktop, self._folder, self._log = desktop, folder, log
        self.lines = []
        self._grown = threading.Condition()

    def __enter__(self):
        environment = self._desktop.environment
        for variable in ("WAYLAND_DISPLAY", "XDG_SESSION_TYPE", "http_proxy", "HTTP_PROXY"):
            environment.pop(variable, None)
        environment["HOME"] = str(self._folder)
        environment["XDG_CONFIG_HOME"] = str(self._folder / ".config")
        runtime = self._folder / "runtime"
        runtime.mkdir(mode=0o700, exist_ok=True)
        environment["XDG_RUNTIME_DIR"] = str(runtime)
        self.process = subprocess.Popen(self._command, env=environment, stdin=subprocess.DEVNULL,
                                        stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        self._readers = [threading.Thread(target=self._read, args=(self.process.stdout, True), daemon=True),
                         threading.Thread(target=self._read, args=(self.process.stderr, False), daemon=True)]
        self.complaints = []
        for reader in self._readers:
            reader.start()
        return self

    def _read(self, stream, is_log):
        with open(self._log, "ab") as copy:
            for line in stream:
                copy.write(line)
                copy.flush()
                with self._grown:
                    (self.lines if is_log else self.complaints).append(line.decode("utf-8", "replace").rstrip("\n"))
                    self._grown.notify_all()

    def wait_for(self, line, seconds=20):
        """Whether the line has been logged, or is within the time."""
        with self._grown:
            return self._grown.wait_for(lambda: line in self.lines, seconds)

    def ended(self, seconds=10):
        """The exit status. None while it runs."""
        try:
            return self.process.wait(seconds)
        except subprocess.TimeoutExpired:
            return None

    def __exit__(self, *_):
        if self.process.poll() is None:
            self.process.kill()
            self.process.wait()
        # If a run was aborted, a browser may still hold the pipes.
        for reader in self._readers:
            reader.join(10)


def until(condition, seconds=10):
    """The condition's first true answer within the time, or its last answer."""
    deadline = time.monotonic() + seconds
    while True:
        answer = condition()
        if answer or time.monotonic() > deadline:
            return answer
        time.sleep(0.1)
