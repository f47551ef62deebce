"""Looks at the browser twice a second and keeps what has changed."""
import json
import re
import subprocess
import sys
import threading
import time
from pathlib import Path

PAUSE = 0.5
# What differs from run to run.
PORT = re.compile(r"127\.0\.0\.1:\d+")
NUMBER = re.compile(r"(PID[^:]*: |PID |processo |→ )\d+")


def steady(text):
    return NUMBER.sub(r"\1N", PORT.sub("127.0.0.1:PORT", text))


class Watcher:
    def __init__(self, desktop, client):
        self._desktop, self._client = desktop, client
        self._ended = threading.Event()
        self.looks = []

    def __enter__(self):
        self._begin = time.monotonic()
        self._seen = len(self._client.lines)
        self._thread = threading.Thread(target=self._run, daemon=True)
        self._thread.start()
        return self

    def __exit__(self, *_):
        self._ended.set()
        self._thread.join()

    def note(self, what):
        """Something that the person or the world does now."""
        self.looks.append({"at": self._now(), "done": what})

    def _now(self):
        return round(time.monotonic() - self._begin, 1)

    def _run(self):
        last = {}
        while not self._ended.wait(PAUSE):
            at, look = self._now(), {"windows": self._windows(), "elements": self._elements()}
            changed = {key: value for key, value in look.items() if value != last.get(key)}
            last = look
            lines, self._seen = self._client.lines[self._seen:], len(self._client.lines)
            if lines:
                changed["log"] = [steady(line) for line in lines]
            if changed:
                self.looks.append({"at": at, **changed})

    def _ask(self, *command):
        return subprocess.run(command, env=self._desktop.environment, capture_output=True, text=True, check=False,
                              timeout=10).stdout

    def _windows(self):
        """The browser's windows on the screen, those that the window manager does not manage included."""
        managed = {int(number, 16) for number in
                   re.findall(r"0x[0-9a-f]+", self._ask("xprop", "-root", "_NET_CLIENT_LIST"))}
        found = []
        for identifier in self._ask("xdotool", "search", "--onlyvisible", "--class", "hromium").split():
            text = self._ask("xwininfo", "-id", identifier)
            place = [re.search(label + r":\s+(-?\d+)", text) for label in
                     ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height")]
            if not all(place) or int(place[2][1]) < 2:
                continue
            state = self._ask("xprop", "-id", identifier, "_NET_WM_STATE", "_NET_WM_NAME")
            title = re.search(r'_NET_WM_NAME\(UTF8_STRING\) = "(.*)"', state)
            entry = {"title": steady(title[1]) if title else "", "frame": [int(part[1]) for part in place],
                     "managed": int(identifier) in managed}
            for word in ("FULLSCREEN", "ABOVE", "MODAL"):
                if "_NET_WM_STATE_" + word in state:
                    entry[word.lower()] = True
            found.append(entry)
        return sorted(found, key=str)

    def _elements(self):
        text = self._ask("/usr/bin/python3", "-B", str(Path(__file__).with_name("elements.py")))
        try:
            return json.loads(PORT.sub("127.0.0.1:PORT", text))
        except ValueError:
            if not text:
                print("record-browser: no accessibility elements", file=sys.stderr)
            return []
