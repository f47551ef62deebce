#!/usr/bin/env python3
"""check_pairs.py FOLDER: checks that every transcript belongs to a scenario and every scenario has one, in a folder
for their theme."""
import pathlib
import sys


def names(folder, pattern):
    return {file.relative_to(folder).with_suffix("").as_posix() for file in folder.rglob(pattern)}


def main():
    folder = pathlib.Path(sys.argv[1])
    scenarios, transcripts = names(folder, "*.yaml"), names(folder, "*.transcript")
    wrong = [f"{name} is there without its other half" for name in sorted(scenarios ^ transcripts)]
    wrong += [f"{name} does not stand in the folder of a theme" for name in sorted(scenarios) if name.count("/") != 1]
    if not scenarios:
        wrong.append("there are no scenarios")
    for problem in wrong:
        print(problem)
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
