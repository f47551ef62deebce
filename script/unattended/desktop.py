"""A separate X desktop, used as a person uses one."""

import os
import pathlib
import re
import subprocess
import tempfile
import time

from client import until
from places import MANAGER

# A session bus, as on every desktop. Otherwise the first program that wants one would leave one running. It starts no
# services.
BUS = """<busconfig>
  <type>session</type>
  <listen>{address}</listen>
  <policy context="default">
    <allow send_destination="*"/>
    <allow receive_sender="*"/>
    <allow own="*"/>
  </policy>
</busconfig>
"""


class Window:
    def __init__(self, identifier, x, y, width, height):
        self.identifier, self.x, self.y, self.width, self.height = identifier, x, y, width, height


class Desktop:
    @property
    def settling(self):
        """Seconds until what was done is painted. Mutter slides and scales what it shows, slowly without a graphics card."""
        return 4 if MANAGER == "mutter" else 0.4

    def __init__(self, root):
        self.root = root
        self.display = None
        self._bus = None

    def __enter__(self):
        self._folder = tempfile.TemporaryDirectory()
        self._address = f"unix:path={self._folder.name}/bus"
        name = pathlib.Path(self._folder.name) / "display"
        self._process = subprocess.Popen([self.root / "script/desktop", name, "2880x900", MANAGER],
                                         stdin=subprocess.DEVNULL)
        deadline = time.monotonic() + 30
        while not name.exists():
            if self._process.poll() is not None or time.monotonic() > deadline:
                self.__exit__()
                raise RuntimeError("no X desktop came up")
            time.sleep(0.05)
        self.display = name.read_text().strip()
        configuration = pathlib.Path(self._folder.name) / "bus.conf"
        configuration.write_text(BUS.format(address=self._address))
        self._bus = subprocess.Popen(["dbus-daemon", f"--config-file={configuration}", "--nofork", "--nopidfile"],
                                     env=self.environment, stdin=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        return self

    def __exit__(self, *_):
        for process in filter(None, (self._bus, self._process)):
            process.terminate()
            process.wait()
        self._folder.cleanup()

    @property
    def environment(self):
        return {**os.environ, "DISPLAY": self.display, "DBUS_SESSION_BUS_ADDRESS": self._address}

    def run(self, *command):
        return subprocess.run([str(part) for part in command], env=self.environment, check=True, capture_output=True,
                              text=True).stdout

    def windows(self, name):
        """The visible windows with exactly that name."""
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

    def managed(self, window_class):
        """The windows of that class on all desktops, by the window manager's list."""
        listed = self.run("xprop", "-root", "_NET_CLIENT_LIST").partition("#")[2]
        found = []
        for identifier in filter(None, (part.strip() for part in listed.split(","))):
            named = subprocess.run(["xprop", "-id", identifier, "WM_CLASS"], env=self.environment, capture_output=True,
                                   text=True).stdout
            if f'"{window_class}"' in named:
                found.append(identifier)
        return found

    def focused(self):
        """The name of the window that gets the keys."""
        return subprocess.run(["xdotool", "getwindowfocus", "getwindowname"], env=self.environment,
                              capture_output=True, text=True).stdout.strip()

    def focused_class(self):
        """The class of the window that gets the keys, by the window manager."""
        # Some window managers give two values, the second one empty.
        active = self.run("xprop", "-root", "_NET_ACTIVE_WINDOW").partition("#")[2].partition(",")[0].strip()
        return subprocess.run(["xprop", "-id", active, "WM_CLASS"], env=self.environment, capture_output=True,
                              text=True).stdout

    def activate(self, window):
        """Brings the window to the front and gives it the keyboard, like a click."""
        self.run("xdotool", "windowactivate", window.identifier)

    def click(self, x, y):
        self.run("xdotool", "mousemove", x, y)
        time.sleep(0.1)
        self.run("xdotool", "click", 1)

    def type(self, text):
        self.run("xdotool", "type", "--delay", 15, text)

    def key(self, *keys):
        self.run("xdotool", "key", *keys)

    def keys_pass(self):
        """Whether keys reach an ordinary window, also one that a class swallows."""
        tester = subprocess.Popen(["xev", "-event", "keyboard", "-name", "Tasti"], env=self.environment,
                                  stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, text=True)
        try:
            until(lambda: self.windows("Tasti"), 30)
            self.activate(self.windows("Tasti")[0])
            until(lambda: self.focused() == "Tasti", 30)
            self.key("super+q", "x")
            time.sleep(0.5)
        finally:
            tester.terminate()
        said = tester.communicate()[0]
        return "keysym 0x71, q" in said and "keysym 0x78, x" in said

    def picture(self, path):
        """The whole screen as a PNG."""
        self.run("import", "-window", "root", path)

    def pixels(self, path, area, matches):
        """How many pixels of the picture's area (x, y, width, height) match. `matches` takes red, green and blue."""
        raw = self._raw(path, area)
        return sum(1 for at in range(0, len(raw), 3) if matches(raw[at], raw[at + 1], raw[at + 2]))

    def changed(self, path, other, area):
        """How many pixels of the area differ between two pictures."""
        first, second = self._raw(path, area), self._raw(other, area)
        return sum(1 for at in range(0, len(first), 3) if first[at:at + 3] != second[at:at + 3])

    @staticmethod
    def _raw(path, area):
        x, y, width, height = area
        return subprocess.run(["convert", path, "-crop", f"{width}x{height}+{x}+{y}", "+repage", "-depth", "8", "rgb:-"],
                              check=True, capture_output=True).stdout
