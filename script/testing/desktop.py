"""An X display with a window manager for as long as it is needed (script/desktop)."""

import pathlib
import subprocess
import tempfile
import time


class Desktop:
    def __init__(self, script):
        self._script = script

    def __enter__(self):
        self._folder = tempfile.TemporaryDirectory()
        name = pathlib.Path(self._folder.name) / "display"
        self._process = subprocess.Popen([self._script, name], stdin=subprocess.DEVNULL)
        deadline = time.monotonic() + 60
        while not name.exists():
            if self._process.poll() is not None or time.monotonic() > deadline:
                self.__exit__()
                raise RuntimeError("no X display came up")
            time.sleep(0.05)
        # Without an address libdbus starts a bus by itself, and waits for every process that was started meanwhile: they
        # hold the pipe that it reads from.
        self.environment = {"DISPLAY": name.read_text(encoding="utf-8").strip(),
                            "DBUS_SESSION_BUS_ADDRESS": "disabled:"}
        return self

    def __exit__(self, *_):
        self._process.terminate()
        self._process.wait()
        self._folder.cleanup()
