#!/usr/bin/env python3
"""check_pairs.py FOLDER: checks that every scenario has a transcript and the other way round, in a folder for their
theme, and that a scenario begins with every prelude."""
import pathlib
import re
import sys


def names(folder, pattern):
    return {file.relative_to(folder).with_suffix("").as_posix() for file in folder.rglob(pattern)}


def begun_with(folder):
    """The preludes that scenarios name."""
    begins = re.compile(r"^begins: *(\S+) *$", re.MULTILINE)
    return {name for file in folder.rglob("*.yaml") for name in begins.findall(file.read_text(encoding="utf-8"))}


def problems(folder):
    scenarios, transcripts = names(folder, "*.yaml"), names(folder, "*.transcript")
    for name in sorted(scenarios ^ transcripts):
        yield f"{name} is there without its other half"
    for name in sorted(scenarios):
        if name.count("/") != 1:
            yield f"{name} does not stand in the folder of a theme"
    for name in sorted(scenarios - begun_with(folder)):
        if name.startswith("preludes/"):
            yield f"no scenario begins with {name}"
    if not scenarios:
        yield "there are no scenarios"


def main():
    found = list(problems(pathlib.Path(sys.argv[1])))
    for problem in found:
        print(problem)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
