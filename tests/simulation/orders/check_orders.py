#!/usr/bin/env python3
"""check_orders.py PROGRAM FOLDER [--gtest_...]: has PROGRAM (vantrel-orders) play all orders of each moment in FOLDER."""

import pathlib
import re
import subprocess
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "support"))
import named_tests  # noqa: E402


def all_orders(program, moment):
    def test():
        run = subprocess.run([program, str(moment)], capture_output=True, text=True, check=False)
        counted = re.search(r"^all (\d+) orders hold", run.stdout, re.MULTILINE)
        print(run.stdout, end="")
        if run.returncode != 0 or not counted:
            return run.stderr or "not all orders hold"
        return "" if int(counted[1]) > 1 else "there is nothing to order"

    return test


def main():
    program, folder = sys.argv[1], pathlib.Path(sys.argv[2])
    tests = {f"all-hold.{moment.stem}": all_orders(program, moment) for moment in sorted(folder.glob("*.yaml"))}
    return named_tests.main(tests, sys.argv[3:])


if __name__ == "__main__":
    sys.exit(main())
