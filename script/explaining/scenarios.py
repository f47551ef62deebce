"""A scenario that is being rebuilt, and playing it."""
import copy
import json
import re
import subprocess
import tempfile
from pathlib import Path

ENTRY = re.compile(r" {0,10}(\d+\.\d{3})  (\S+(?: \S+)*)\s*  (.*)")
MORE = re.compile(r" {24}\| ?(.*)")
# The control characters of a transcript.
ESCAPED = re.compile(r"\\x([0-9a-f]{2})")
# Seconds after the last step. Twenty heartbeats that fail take 285.
QUIET = 400


class Scenario:
    def __init__(self):
        self.mac = {"displays": [{"name": "Schermo integrato", "frame": [0, 0, 1440, 900]}], "browsers": ["chrome"]}
        self.replies = []
        self.steps = []

    def changed(self, change):
        other = copy.deepcopy(self)
        change(other)
        return other

    def at(self, moment, **action):
        """Adds a step. The dashes of the words are written as underscores."""
        ((word, value),) = action.items()
        self.steps.append({"at": round(moment, 3), word.replace("_", "-"): value})
        self.steps.sort(key=lambda step: step["at"])

    def browser(self, name, **behaviour):
        """Gives the only browser a behaviour."""
        known = next((entry for entry in self.mac["browsers"] if isinstance(entry, dict) and entry["name"] == name),
                     {"name": name})
        self.mac["browsers"] = [{**known, **{word.replace("_", "-"): value for word, value in behaviour.items()}}]

    def text(self):
        last = self.steps[-1]["at"] if self.steps else 0
        # JSON is YAML.
        return json.dumps({"title": "What a log tells, in a class that may have been like this", "mac": self.mac,
                           "server": {"sessions": [{"code": "PROVA"}], "replies": self.replies},
                           "timeline": self.steps, "until": last + QUIET}, ensure_ascii=False, indent=1)


class Unplayable(Exception):
    """The scenario cannot be played: a change that makes no sense here."""


class Player:
    def __init__(self, program):
        self._program = program
        self._known = {}
        self.plays = 0

    def play(self, scenario):
        """The client's entries, each with its moment."""
        text = scenario.text()
        if text not in self._known:
            self.plays += 1
            self._known[text] = self._played(text)
        if self._known[text] is None:
            raise Unplayable
        return self._known[text]

    def _played(self, text):
        with tempfile.TemporaryDirectory() as folder:
            file = Path(folder, "log.yaml")
            file.write_text(text, encoding="utf-8")
            run = subprocess.run([self._program, file], capture_output=True, text=True, check=False)
        if run.returncode not in (0, 1):
            return None
        found, heard = [], False
        for line in run.stdout.splitlines():
            entry, more = ENTRY.fullmatch(line), MORE.fullmatch(line)
            if entry:
                heard = entry[2] == "log"
                if heard:
                    found.append([float(entry[1]), entry[3]])
            elif more and heard:
                found[-1][1] += "\n" + more[1]
        return [(moment, ESCAPED.sub(lambda match: chr(int(match[1], 16)), text)) for moment, text in found]
