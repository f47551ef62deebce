"""Plays a scenario and compares transcripts."""
import difflib
import subprocess


def play(program, scenario, *options):
    """Exit status, transcript and messages."""
    run = subprocess.run([program, str(scenario), *options], capture_output=True, timeout=60, check=False)
    return run.returncode, run.stdout.decode(), run.stderr.decode()


def difference(expected, actual, expected_name):
    """A unified diff. Empty if they are the same to the byte."""
    return "".join(
        line if line.endswith("\n") else line + "\n\\ No newline at end\n"
        for line in difflib.unified_diff(
            expected.splitlines(keepends=True), actual.splitlines(keepends=True), expected_name, "as played"))
