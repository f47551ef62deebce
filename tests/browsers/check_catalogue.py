#!/usr/bin/env python3
"""check_catalogue.py ROOT: docs/browsers.md, the recordings beside this file and the scenarios agree."""
import json
import re
import sys
import unittest
from pathlib import Path

ROOT = Path()
ROW = re.compile(r"^\| `([a-z-]+)` \|(.*)\|$", re.MULTILINE)
# What the client says of the meeting's windows and of the end. That the full screen came late is Linux's.
SAID = ("[MONITOR] ", "[SESSION] Fine sessione: ")
COMPLETE = "✅✅✅ LOCKDOWN COMPLETO E ATTIVO ✅✅✅"
LATE = "[MONITOR] Space cambiato ma Meet è sullo Space corrente — OK"


def rows():
    page = (ROOT / "docs/browsers.md").read_text(encoding="utf-8")
    return {match[1]: match[2] for match in ROW.finditer(page)}


def recordings():
    return {path.stem: json.loads(path.read_text(encoding="utf-8")) for path in (ROOT / "tests/browsers").glob("*.json")}


def said(lines):
    return {line for line in lines if line.startswith(SAID) and line != LATE}


def after_the_start(lines):
    """A scenario with a prelude begins in the lockdown."""
    return said(lines[lines.index(COMPLETE):] if COMPLETE in lines else lines)


def in_lockdown(recording):
    return after_the_start([line for look in recording["looks"] for line in look.get("log", [])])


def in_scenario(name):
    text = (ROOT / "tests/scenarios" / f"{name}.transcript").read_text(encoding="utf-8")
    return after_the_start(re.findall(r"^ *[\d.]+  log +(.*)$", text, re.MULTILINE))


class Catalogue(unittest.TestCase):
    def test_the_page_names_every_recording_and_no_other(self):
        self.assertEqual(sorted(rows()), sorted(recordings()))

    def test_every_recording_is_of_a_whole_lockdown(self):
        for name, recording in recordings().items():
            with self.subTest(name):
                self.assertTrue(recording["lockdown"] and recording["ended"])
                self.assertEqual([look["at"] for look in recording["looks"] if "windows" in look or "log" in look],
                                 sorted(look["at"] for look in recording["looks"] if "windows" in look or "log" in look))
                self.assertTrue(any(look.get("elements") for look in recording["looks"]))

    def test_where_a_scenario_is_named_the_client_says_the_same_in_it(self):
        # A small window above all takes the keyboard on Linux, and has none on the virtual Mac.
        for name, row in rows().items():
            scenario = re.search(r"`((?:real-browsers|browser)/[a-z-]+)`", row)
            if scenario is None or name == "document-in-picture":
                continue
            with self.subTest(name):
                self.assertEqual(in_lockdown(recordings()[name]), in_scenario(scenario[1]))

    def test_every_recording_is_played_or_has_no_window_anywhere(self):
        page = (ROOT / "docs/browsers.md").read_text(encoding="utf-8")
        played = {name for name, row in rows().items() if "nothing" not in row.split("|")[-1]}
        for item in re.findall(r"^- (.*?`real-browsers/[^`]+`\))", page, re.MULTILINE | re.DOTALL):
            *named, scenario = re.findall(r"`([^`]+)`", item)
            self.assertTrue((ROOT / "tests/scenarios" / f"{scenario}.transcript").is_file(), scenario)
            played.update(named)
        self.assertEqual(sorted(set(recordings()) - played), ["crash-page"])

    def test_where_nothing_is_played_the_client_says_nothing_of_windows(self):
        for name, row in rows().items():
            if "nothing to play" in row:
                with self.subTest(name):
                    self.assertEqual(in_lockdown(recordings()[name]), {
                        "[MONITOR] Monitoraggio fermato", "[SESSION] Fine sessione: Sessione terminata dall'utente"})

    def test_what_is_left_running_is_said(self):
        left = [name for name, recording in recordings().items() if recording["browser-left"]]
        self.assertEqual(left, ["relaunch"])


if __name__ == "__main__":
    ROOT = Path(sys.argv.pop(1))
    unittest.main()
