#!/usr/bin/env python3
"""check_transcript.py PROGRAM SCENARIO: checks that the transcript equals the one beside the scenario, to the byte."""
import pathlib
import sys

from player import difference, play


def main():
    program, scenario = sys.argv[1], pathlib.Path(sys.argv[2])
    expected_file = scenario.with_suffix(".transcript")
    status, actual, messages = play(program, scenario)
    sys.stderr.write(messages)
    if not expected_file.exists():
        print(actual)
        print(f"there is no {expected_file.name}; if every line above is right: script/rehearse --accept {scenario}")
        return 1
    diff = difference(expected_file.read_bytes().decode(), actual, expected_file.name)
    sys.stdout.write(diff)
    if status != 0:
        print(f"exit status {status}")
    return 1 if diff or status != 0 else 0


if __name__ == "__main__":
    sys.exit(main())
