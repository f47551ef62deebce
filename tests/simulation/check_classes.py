#!/usr/bin/env python3
"""check_classes.py PROGRAM FIRST LAST PIECE [--gtest_...]: has PROGRAM (vantrel-simulate) play and judge the random classes
from FIRST to LAST, PIECE of them in one test. What a failing number prints tells how to play it again."""

import pathlib
import subprocess
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "support"))
import named_tests  # noqa: E402


def classes(program, first, last):
    def test():
        command = [program, "--seeds", f"{first}..{last}", "--shrink", "1"]
        run = subprocess.run(command, capture_output=True, check=False)
        return "" if run.returncode == 0 else run.stdout.decode() + run.stderr.decode()

    return test


def main():
    program, first, last, piece = sys.argv[1], *map(int, sys.argv[2:5])
    tests = {}
    for start in range(first, last + 1, piece):
        end = min(last, start + piece - 1)
        tests[f"classes.{start}-to-{end}-hold-every-rule"] = classes(program, start, end)
    return named_tests.main(tests, sys.argv[5:])


if __name__ == "__main__":
    sys.exit(main())
