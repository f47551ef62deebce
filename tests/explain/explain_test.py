#!/usr/bin/env python3
"""explain_test.py PLAYER ROOT SIMULATE [CLASS]: script/explain on logs of the client, as they are and with a line changed.

VANTREL_EXPLAIN_CLASSES: of how many random classes the logs are explained, 24 by default.
"""
import concurrent.futures
import os
import re
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

PLAYER = ROOT = SIMULATE = ""
EXPLAINED = re.compile(r"^(?:All )?(\d+) (?:of \d+ )?entries are explained", re.MULTILINE)
# Of all scenarios; what the search does not find takes two causes for one line, or a change of the past.
LEAST = 160
CLASSES = int(os.environ.get("VANTREL_EXPLAIN_CLASSES", "24"))


def client_log(scenario):
    """What the client prints in a scenario, as a participant would save it."""
    played = subprocess.run([PLAYER, scenario, "--whole"], capture_output=True, text=True, check=False).stdout
    lines, heard = [], False
    for line in played.splitlines():
        entry = re.fullmatch(r" {0,10}\d+\.\d{3}  (\S+(?: \S+)*)\s*  (.*)", line)
        if entry:
            heard = entry[1] == "log"
            if heard:
                lines.append(entry[2])
        elif heard:
            lines.append(line[26:])
    return "".join(re.sub(r"\\x([0-9a-f]{2})", lambda match: chr(int(match[1], 16)), line) + "\n" for line in lines)


class Explain(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)

    def explain(self, text, *arguments, name="client.log"):
        log = self.folder / name
        log.write_text(text, encoding="utf-8")
        return subprocess.run([sys.executable, "-B", Path(ROOT, "script/explaining/main.py"), PLAYER, log, *arguments],
                              capture_output=True, text=True, check=False)

    def scenario_log(self, name):
        return client_log(Path(ROOT, "tests/scenarios", name + ".yaml"))


class Lines(Explain):
    def test_every_line_of_a_whole_session_is_explained(self):
        run = self.explain(self.scenario_log("displays/a-second-display-is-covered-and-followed"))
        self.assertEqual(run.returncode, 0, run.stdout + run.stderr)
        self.assertIn("press: Avvia sessione protetta", run.stdout)
        self.assertRegex(run.stdout, r"All \d+ entries are explained")

    def test_the_first_line_that_departs_is_marked(self):
        lines = self.scenario_log("end/a-session-ended-from-the-status-menu").splitlines()
        changes = {
            "[HOOK] Hook tastiera attivato": "[HOOK] Hook tastiera disattivato",
            "[HEARTBEAT] Fermato": "[HEARTBEAT] Troppi errori — fine sessione",
            "✅ Step 2/4: Keyboard hook attivato": "✅ Step 3/4: Window monitor avviato",
            "[BROWSER] Kill Google Chrome": "[BROWSER] Kill Safari",
        }
        for line, instead in changes.items():
            with self.subTest(line):
                number = lines.index(line) + 1
                run = self.explain("\n".join([*lines[:number - 1], instead, *lines[number:]]) + "\n")
                self.assertEqual(run.returncode, 1)
                self.assertIn(f"line {number} departs: {instead}\nthe client would have printed: {line}\n", run.stdout)

    def test_a_line_that_is_missing_or_stands_twice_is_marked(self):
        lines = self.scenario_log("end/a-session-ended-from-the-status-menu").splitlines()
        place = lines.index("[MONITOR] Monitoraggio fermato")
        for changed in (lines[:place] + lines[place + 1:], lines[:place + 1] + lines[place:]):
            run = self.explain("\n".join(changed) + "\n")
            departs = place + (1 if len(changed) < len(lines) else 2)
            self.assertIn(f"line {departs} departs: ", run.stdout)

    def test_a_log_that_was_cut_off_is_explained(self):
        lines = self.scenario_log("end/a-session-ended-from-the-status-menu").splitlines()
        for count in (1, 9, 30):
            self.assertEqual(self.explain("\n".join(lines[:count]) + "\n").returncode, 0)

    def test_what_other_programs_print_in_between_does_not_matter(self):
        lines = self.scenario_log("end/a-session-ended-from-the-status-menu").splitlines()
        place = next(number for number, line in enumerate(lines) if line.startswith("[BROWSER] Lancio")) + 1
        run = self.explain("\r\n".join([*lines[:place], "Opening in existing browser session.", *lines[place:]]))
        self.assertEqual(run.returncode, 0, run.stdout)

    def test_the_scenario_that_was_found_plays_the_log_again(self):
        text = self.scenario_log("heartbeat/twenty-failed-heartbeats-end-the-session")
        kept = self.folder / "found.yaml"
        self.assertEqual(self.explain(text, "--keep", str(kept)).returncode, 0)
        self.assertTrue(client_log(kept).startswith(text))

    def test_what_is_no_log_is_refused(self):
        for text in ("", "\n", "Good morning\n", "\0\1\2\xff"):
            run = self.explain(text)
            self.assertEqual(run.returncode, 2, text)
            self.assertIn("explain: ", run.stderr)
        missing = subprocess.run([sys.executable, "-B", Path(ROOT, "script/explaining/main.py"), PLAYER, "/none.log"],
                                 capture_output=True, check=False)
        self.assertEqual(missing.returncode, 2)


class Corpus(Explain):
    def test_the_logs_of_real_sessions_are_explained(self):
        for log in sorted(Path(ROOT, "tests/explain/logs").glob("*.log")):
            with self.subTest(log.name):
                run = self.explain(log.read_text(encoding="utf-8"))
                self.assertEqual(run.returncode, 0, run.stdout)

    def explained(self, scenarios):
        """How many of their logs are explained wholly, and how many logs there are. Some clients print nothing."""
        def held(scenario):
            text = client_log(scenario)
            if not text:
                return None
            run = self.explain(text, "--plays", "120", name=f"{scenario.parent.name}-{scenario.stem}.log")
            # However far it comes, it never says more than there is, and its status says the same.
            self.assertLessEqual(int(EXPLAINED.search(run.stdout)[1]), len(text.splitlines()), scenario)
            return run.returncode == 0

        with concurrent.futures.ThreadPoolExecutor(2) as pool:
            results = [result for result in pool.map(held, scenarios) if result is not None]
        print(f"{sum(results)} of {len(results)} logs are explained")
        return sum(results), len(results)

    def test_the_logs_of_the_scenarios_are_explained(self):
        count, _ = self.explained(sorted(Path(ROOT, "tests/scenarios").glob("*/*.yaml")))
        self.assertGreaterEqual(count, LEAST)

    def test_most_logs_of_random_classes_are_explained(self):
        scenarios = []
        for number in range(1, CLASSES + 1):
            scenarios.append(self.folder / f"class-{number}.yaml")
            with open(scenarios[-1], "w", encoding="utf-8") as file:
                subprocess.run([SIMULATE, "--show", str(number)], stdout=file, check=True)
        count, of = self.explained(scenarios)
        self.assertGreaterEqual(count, 0.6 * of)


if __name__ == "__main__":
    PLAYER, ROOT, SIMULATE = sys.argv[1:4]
    unittest.main(argv=sys.argv[:1] + sys.argv[4:])
