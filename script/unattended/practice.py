"""The practice server and its control interface."""

import contextlib
import json
import signal
import subprocess
import urllib.request


class Practice:
    def __init__(self, program, *arguments):
        self._command = [str(program), "--port", "0", "--exit-with-stdin", *arguments]

    def __enter__(self):
        self._process = subprocess.Popen(self._command, stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
        line = self._process.stdout.readline()
        prefix = "Practice server on "
        if not line.startswith(prefix):
            raise RuntimeError(f"the practice server said {line!r}")
        self.address = line[len(prefix):].strip()
        return self

    def __exit__(self, *_):
        self._process.stdin.close()
        try:
            self._process.wait(10)
        except subprocess.TimeoutExpired:
            self._process.kill()
            self._process.wait()

    def _ask(self, method, path, body=None):
        data = None if body is None else json.dumps(body).encode()
        request = urllib.request.Request(self.address + path, data=data, method=method,
                                         headers={"Content-Type": "application/json"})
        with urllib.request.urlopen(request, timeout=10) as reply:
            return json.loads(reply.read() or b"null")

    def change_reply(self, **rule):
        return self._ask("POST", "/control/reply-rule", rule)

    @contextlib.contextmanager
    def stopped(self):
        """It takes connections, and answers nothing."""
        self._process.send_signal(signal.SIGSTOP)
        try:
            yield
        finally:
            self._process.send_signal(signal.SIGCONT)

    def received(self):
        return self._ask("GET", "/control/received")

    def heartbeats(self):
        """The bodies of all heartbeats, oldest first."""
        return [json.loads(exchange["body"]) for exchange in self.received() if exchange["path"] == "/api/heartbeat"]

    def reports(self):
        """The reports of the meeting pages."""
        return self._ask("GET", "/control/reports")
