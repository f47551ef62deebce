#!/usr/bin/env python3
"""check_transcripts.py PROGRAM FOLDER: a test for each scenario of the folder, called THEME.NAME: its transcript must
match the one beside it, to the byte."""
import pathlib
import sys

from player import difference, play

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "support"))
import named_tests  # noqa: E402


def check(program, scenario):
    """What is wrong; nothing if all is well."""
    expected_file = scenario.with_suffix(".transcript")
    status, actual, messages = play(program, scenario)
    if not expected_file.exists():
        return (f"{messages}{actual}\nthere is no {expected_file.name}; if every line above is right: "
                f"script/rehearse --accept {scenario}")
    diff = difference(expected_file.read_bytes().decode(), actual, expected_file.name)
    if diff or status != 0:
        return f"{messages}{diff}exit status {status}"
    return None


def main():
    program, folder, *options = sys.argv[1:]
    scenarios = {f"{file.parent.name}.{file.stem}": file for file in sorted(pathlib.Path(folder).glob("*/*.yaml"))}
    return named_tests.main({name: lambda file=file: check(program, file) for name, file in scenarios.items()}, options)


if __name__ == "__main__":
    sys.exit(main())
