"""An X desktop of its own, used the way a person uses one."""

import os
import pathlib
import re
import subprocess
import tempfile
import time


class Window:
    def __init__(self, identifier, x, y, width, height):
        self.identifier, self.x, self.y, self.width, self.height = identifier, x, y, width, height


class Desktop:
    def __init__(self, root):
        self.root = root
        self.display = None

    def __enter__(self):
        self._folder = tempfile.TemporaryDirectory()
        name = pathlib.Path(self._folder.name) / "display"
        self._process = subprocess.Popen([self.root / "script/desktop", name], stdin=subprocess.DEVNULL)
        deadline = time.monotonic() + 30
        while not name.exists():
            if self._process.poll() is not None or time.monotonic() > deadline:
                self.__exit__()
                raise RuntimeError("no X desktop came up")
            time.sleep(0.05)
        self.display = name.read_text().strip()
        return self

    def __exit__(self, *_):
        self._process.terminate()
        self._process.wait()
        self._folder.cleanup()

    @property
    def environment(self):
        return {**os.environ, "DISPLAY": self.display}

    def run(self, *command):
        return subprocess.run([str(part) for part in command], env=self.environment, check=True, capture_output=True,
                              text=True).stdout

    def windows(self, name):
        """The viewable windows with exactly that name."""
        found = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", f"^{re.escape(name)}$"],
                               env=self.environment, capture_output=True, text=True).stdout.split()
        result = []
        for identifier in found:
            text = subprocess.run(["xwininfo", "-id", identifier], env=self.environment, capture_output=True,
                                  text=True).stdout
            values = {key.strip(): value.strip() for key, _, value in
                      (line.partition(":") for line in text.splitlines())}
            if "Width" in values:
                result.append(Window(identifier, int(values["Absolute upper-left X"]),
                                     int(values["Absolute upper-left Y"]), int(values["Width"]),
                                     int(values["Height"])))
        return result

    def click(self, x, y):
        self.run("xdotool", "mousemove", x, y)
        time.sleep(0.1)
        self.run("xdotool", "click", 1)

    def type(self, text):
        self.run("xdotool", "type", "--delay", 15, text)

    def key(self, *keys):
        self.run("xdotool", "key", *keys)

    def picture(self, path):
        """The whole screen as a PNG."""
        self.run("import", "-window", "root", path)

    def pixels(self, path, area, matches):
        """How many pixels of the picture's area (x, y, width, height) match; `matches` takes red, green and blue."""
        x, y, width, height = area
        raw = subprocess.run(["convert", path, "-crop", f"{width}x{height}+{x}+{y}", "+repage", "-depth", "8", "rgb:-"],
                             check=True, capture_output=True).stdout
        return sum(1 for at in range(0, len(raw), 3) if matches(raw[at], raw[at + 1], raw[at + 2]))
