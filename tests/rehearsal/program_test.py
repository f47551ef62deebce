#!/usr/bin/env python3
"""program_test.py PROGRAM: checks the player's messages and exit status for good and bad input."""
import pathlib
import subprocess
import sys
import tempfile
import unittest

PROGRAM = ""
GOOD = "title: T\ntimeline: []\nuntil: 0.5\n"
PRELUDE = "title: P\ntimeline: []\nuntil: 2\n"
BEGINS = "title: T\nbegins: preludes/p\ntimeline: []\nuntil: 3\n"
AFTER = """    2.000  prelude      preludes/p
    3.000  end          the client is running
                        | left: windows 1, visible windows 1
"""


def run(*arguments):
    done = subprocess.run([PROGRAM, *map(str, arguments)], capture_output=True, timeout=60, check=False)
    return done.returncode, done.stdout.decode(), done.stderr.decode()


class Program(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def file(self, text):
        path = self.folder / "scenario.yaml"
        path.write_bytes(text if isinstance(text, bytes) else text.encode())
        return path

    def scenario(self, name, text):
        path = self.folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, encoding="utf-8")
        return path

    def kept(self, name, text=PRELUDE):
        """A prelude with its transcript."""
        path = self.scenario(name, text)
        path.with_suffix(".transcript").write_text(run(path)[1], encoding="utf-8")
        return path

    def test_a_good_file_is_played_in_silence_on_standard_error(self):
        status, transcript, messages = run(self.file(GOOD))
        self.assertEqual((status, messages), (0, ""))
        self.assertTrue(transcript.startswith("    0.000  client       has activation policy 0\n"))

    def test_a_seed_is_taken(self):
        self.assertEqual(run(self.file(GOOD), "--seed", "3")[0], 0)

    def test_every_problem_is_named_with_file_and_line(self):
        path = self.file("title: T\ntimeline: 7\nuntil: soon\n")
        self.assertEqual(
            run(path), (2, "", f"{path}:2: 'timeline' is not a list\n{path}:3: 'until' is not a number\n"))

    def test_a_syntax_error_is_named_with_file_and_line(self):
        path = self.file("title: T\ntimeline: [\n")
        status, transcript, messages = run(path)
        self.assertEqual((status, transcript), (2, ""))
        self.assertTrue(messages.startswith(f"{path}:3: this is not YAML: "), messages)

    def test_an_empty_file_is_refused(self):
        path = self.file("")
        self.assertEqual(run(path), (2, "", f"{path}:1: the file is empty\n"))

    def test_bytes_that_are_no_text_are_refused(self):
        path = self.file(b"title: T\n\xff\xfe\n")
        self.assertEqual(run(path), (2, "", f"{path}:2: this is not UTF-8\n"))

    def test_a_missing_file_and_a_folder_cannot_be_read(self):
        missing = self.folder / "none.yaml"
        self.assertEqual(run(missing), (2, "", f"{missing}:1: the file cannot be read\n"))
        self.assertEqual(run(self.folder), (2, "", f"{self.folder}:1: the file cannot be read\n"))

    def test_a_prelude_in_the_scenarios_folder_is_found(self):
        self.kept("preludes/p.yaml")
        self.assertEqual(run(self.scenario("a.yaml", BEGINS)), (0, AFTER, ""))

    def test_a_prelude_in_the_folder_above_is_found(self):
        self.kept("preludes/p.yaml")
        self.assertEqual(run(self.scenario("theme/a.yaml", BEGINS)), (0, AFTER, ""))

    def test_the_prelude_in_the_scenarios_folder_goes_first(self):
        self.kept("preludes/p.yaml", PRELUDE + "server: {latency: 0.5}\n")
        self.kept("theme/preludes/p.yaml")
        path = self.scenario("theme/a.yaml", BEGINS)
        self.assertIn("\n    1.050  reply ", run(path, "--whole")[1])

    def test_a_prelude_is_found_whatever_the_working_folder(self):
        self.kept("preludes/p.yaml")
        self.scenario("theme/a.yaml", BEGINS)
        for folder, name in (("theme", "a.yaml"), (".", "theme/a.yaml"), ("preludes", "../theme/a.yaml")):
            done = subprocess.run([str(pathlib.Path(PROGRAM).absolute()), name], cwd=self.folder / folder,
                                  capture_output=True, timeout=60, check=False)
            self.assertEqual((done.returncode, done.stdout.decode()), (0, AFTER), done.stderr)

    def test_a_prelude_two_folders_above_is_not_found(self):
        self.kept("preludes/p.yaml")
        path = self.scenario("theme/deeper/a.yaml", BEGINS)
        self.assertEqual(
            run(path), (2, "", f"{path}:2: there is no preludes/p: neither {path.parent}/preludes/p.yaml nor "
                        f"{path.parent.parent}/preludes/p.yaml\n"))

    def test_every_problem_of_a_prelude_is_named(self):
        prelude = self.scenario("preludes/p.yaml", "title: P\ntimeline: 7\nuntil: soon\n")
        path = self.scenario("a.yaml", BEGINS)
        self.assertEqual(run(path), (2, "", f"{path}:2: {prelude}:2: 'timeline' is not a list\n"
                                     f"{path}:2: {prelude}:3: 'until' is not a number\n"))

    def test_a_prelude_begins_with_no_other(self):
        self.kept("preludes/q.yaml")
        prelude = self.scenario("preludes/p.yaml", BEGINS.replace("/p", "/q"))
        path = self.scenario("a.yaml", BEGINS)
        self.assertEqual(run(path), (2, "", f"{path}:2: {prelude}:2: a prelude begins with no other\n"))
        self.assertEqual(run(prelude), (2, "", f"{prelude}:2: a prelude begins with no other\n"))

    def test_a_prelude_does_not_begin_with_itself(self):
        prelude = self.scenario("preludes/p.yaml", BEGINS)
        self.assertEqual(run(prelude), (2, "", f"{prelude}:2: a prelude begins with no other\n"))

    def test_a_prelude_needs_a_kept_transcript_in_the_natural_order_only(self):
        prelude = self.scenario("preludes/p.yaml", PRELUDE)
        path = self.scenario("a.yaml", BEGINS)
        wanted = (2, "", f"{path}:2: preludes/p has no kept transcript, {prelude.with_suffix('.transcript')}\n")
        self.assertEqual(run(path), wanted)
        self.assertEqual(run(path, "--seed", "0"), wanted)
        self.assertEqual(run(path, "--seed", "1"), (0, AFTER, ""))

    def test_a_prelude_that_is_not_as_it_is_kept_is_told(self):
        transcript = self.kept("preludes/p.yaml").with_suffix(".transcript")
        path = self.scenario("a.yaml", BEGINS)
        text = transcript.read_text(encoding="utf-8")
        transcript.write_text(text.replace("activation policy 0", "activation policy 1", 1), encoding="utf-8")
        self.assertEqual(run(path), (4, AFTER, f"{path}: the part of preludes/p is not as it is kept, from line 1\n"
                                     "  kept:       0.000  client       has activation policy 1\n"
                                     "  played:     0.000  client       has activation policy 0\n"))
        self.assertEqual(run(path, "--seed", "1"), (0, AFTER, ""))

    def test_the_whole_transcript_has_the_preludes_lines(self):
        prelude = self.kept("preludes/p.yaml")
        lines = run(prelude)[1].splitlines(keepends=True)
        self.assertEqual(run(self.scenario("a.yaml", BEGINS), "--whole"), (0, "".join(lines[:-2]) + AFTER, ""))
        self.assertEqual(run(prelude, "--whole"), run(prelude))

    def test_a_wrong_command_line_is_explained(self):
        for arguments in ((), ("--sed",), ("a", "b"), ("a", "--seed", "x")):
            status, transcript, messages = run(*arguments)
            self.assertEqual((status, transcript), (2, ""))
            self.assertIn("vantrel-rehearse FILE [--seed N] [--whole]", messages)

    @unittest.skipUnless(pathlib.Path("/dev/full").exists(), "there is no full device")
    def test_a_transcript_that_cannot_be_written_is_told(self):
        with open("/dev/full", "wb") as full:
            done = subprocess.run([PROGRAM, str(self.file(GOOD))], stdout=full, stderr=subprocess.PIPE, timeout=60,
                                  check=False)
        self.assertEqual(
            (done.returncode, done.stderr), (3, b"vantrel-rehearse: the transcript cannot be written\n"))

    def test_help_is_given(self):
        status, transcript, messages = run("--help")
        self.assertEqual((status, messages), (0, ""))
        self.assertIn("Exit status", transcript)


if __name__ == "__main__":
    PROGRAM = sys.argv.pop(1)
    unittest.main()
