#!/usr/bin/env python3
"""accept_test.py PROGRAM: what accepting shows, keeps and refuses."""
import pathlib
import subprocess
import sys
import tempfile
import unittest

PROGRAM = ""
ACCEPT = pathlib.Path(__file__).with_name("accept.py")
SCENARIO = "title: T\ntimeline: []\nuntil: 0.5\n"
PRELUDE = "title: P\ntimeline: []\nuntil: 2\n"
BEGINS = "title: T\nbegins: preludes/p\ntimeline: []\nuntil: 3\n"


class Accept(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def scenario(self, name, text=SCENARIO):
        path = self.folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, encoding="utf-8")
        return path

    def accept(self, *files):
        done = subprocess.run([sys.executable, "-B", str(ACCEPT), PROGRAM, *map(str, files)], capture_output=True,
                              timeout=60, check=False)
        return done.returncode, done.stdout.decode(), done.stderr.decode()

    def played(self, path):
        return subprocess.run([PROGRAM, str(path)], capture_output=True, timeout=60, check=False).stdout

    def kept(self, path):
        return path.with_suffix(".transcript").read_bytes()

    def test_a_new_transcript_is_kept_to_the_byte(self):
        path = self.scenario("a.yaml")
        lines = len(self.played(path).splitlines())
        self.assertEqual(self.accept(path), (0, f"{path.with_suffix('.transcript')}: new, {lines} lines\n", ""))
        self.assertEqual(self.kept(path), self.played(path))

    def test_a_transcript_that_is_the_same_is_left_alone(self):
        path = self.scenario("a.yaml")
        self.accept(path)
        before = path.with_suffix(".transcript").stat()
        self.assertEqual(self.accept(path), (0, f"{path.with_suffix('.transcript')}: unchanged\n", ""))
        after = path.with_suffix(".transcript").stat()
        self.assertEqual((after.st_ino, after.st_mtime_ns), (before.st_ino, before.st_mtime_ns))

    def test_the_difference_is_shown_and_counted_before_the_rewriting(self):
        path = self.scenario("a.yaml")
        transcript = path.with_suffix(".transcript")
        played = self.played(path)
        first, rest = played.split(b"\n", 1)
        transcript.write_bytes(b"old\n" + rest + b"more\n")
        status, said, messages = self.accept(path)
        self.assertEqual((status, messages), (0, ""))
        self.assertIn(f"--- {transcript}\n+++ as played\n", said)
        self.assertIn("\n-old\n+" + first.decode() + "\n", said)
        self.assertIn("\n-more\n", said)
        self.assertTrue(said.endswith(f"{transcript}: 3 lines changed, 2 removed and 1 added\n"), said)
        self.assertEqual(transcript.read_bytes(), played)
        self.assertEqual(sorted(file.name for file in self.folder.iterdir()), ["a.transcript", "a.yaml"])

    def test_several_are_summed_up(self):
        first, second = self.scenario("a.yaml"), self.scenario("b.yaml", SCENARIO.replace("0.5", "0.6"))
        self.accept(first)
        lines = len(self.played(second).splitlines())
        status, said, _ = self.accept(first, second, first)
        self.assertEqual(status, 0)
        self.assertTrue(said.endswith(f"2 scenarios, transcripts changed: 1, lines: {lines}\n"), said)

    def test_preludes_are_accepted_before_what_begins_with_them(self):
        path, prelude = self.scenario("theme/a.yaml", BEGINS), self.scenario("preludes/p.yaml", PRELUDE)
        self.assertEqual(self.accept(path, prelude)[0], 0)
        self.assertTrue(self.kept(path).startswith(b"    2.000  prelude      preludes/p\n"))

    def test_a_scenario_is_not_accepted_before_its_prelude(self):
        path, prelude = self.scenario("a.yaml", BEGINS), self.scenario("preludes/p.yaml", PRELUDE)
        status, said, messages = self.accept(path)
        self.assertEqual((status, said), (1, ""))
        self.assertIn("preludes/p has no kept transcript", messages)
        self.accept(path, prelude)
        before = self.kept(path)
        self.scenario("preludes/p.yaml", PRELUDE + "server: {latency: 0.5}\n")
        self.scenario("a.yaml", BEGINS.replace("until: 3", "until: 4"))
        status, said, messages = self.accept(path)
        self.assertEqual((status, said), (1, ""))
        self.assertIn("the part of preludes/p is not as it is kept", messages)
        self.assertIn(f"{path}: not accepted: its prelude is not as it is kept; accept that first\n", messages)
        self.assertEqual(self.kept(path), before)
        self.assertEqual(self.accept(path, prelude)[0], 0)

    def test_what_cannot_be_played_is_not_accepted(self):
        path, good = self.scenario("a.yaml", "title: T\n"), self.scenario("b.yaml")
        status, said, messages = self.accept(path, good)
        self.assertEqual(status, 1)
        self.assertIn(f"{path}:1: the file lacks 'timeline'\n", messages)
        self.assertIn(f"{path}: not accepted: it cannot be played\n", messages)
        self.assertFalse(path.with_suffix(".transcript").exists())
        self.assertTrue(good.with_suffix(".transcript").exists())
        self.assertIn("2 scenarios, transcripts changed: 1", said)

    def test_a_misuse_is_not_accepted(self):
        player = self.folder / "player"
        player.write_text("#!/bin/sh\necho '    0.000  misuse       a wait with a lock held'\nexit 1\n",
                          encoding="utf-8")
        player.chmod(0o755)
        path = self.scenario("a.yaml")
        done = subprocess.run([sys.executable, "-B", str(ACCEPT), str(player), str(path)], capture_output=True,
                              timeout=60, check=False)
        self.assertEqual((done.returncode, done.stderr.decode()),
                         (1, f"{path}: not accepted: the client misuses its platform\n"))
        self.assertFalse(path.with_suffix(".transcript").exists())

    def test_a_transcript_is_no_scenario(self):
        path = self.scenario("a.yaml")
        self.accept(path)
        transcript = path.with_suffix(".transcript")
        self.assertEqual(self.accept(transcript),
                         (1, "", f"{transcript}: not accepted: no scenario, which is a .yaml file\n"))

    def test_a_file_is_needed(self):
        self.assertEqual(self.accept(), (2, "", "accept: no file is given\n"))


if __name__ == "__main__":
    PROGRAM = str(pathlib.Path(sys.argv.pop(1)).absolute())
    unittest.main()
