#!/usr/bin/env python3
"""program_test.py PROGRAM: what the player says and returns for good and bad input."""
import pathlib
import subprocess
import sys
import tempfile
import unittest

PROGRAM = ""
GOOD = "title: T\ntimeline: []\nuntil: 0.5\n"


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

    def test_a_wrong_command_line_is_explained(self):
        for arguments in ((), ("--sed",), ("a", "b"), ("a", "--seed", "x")):
            status, transcript, messages = run(*arguments)
            self.assertEqual((status, transcript), (2, ""))
            self.assertIn("vantrel-rehearse FILE [--seed N]", messages)

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
