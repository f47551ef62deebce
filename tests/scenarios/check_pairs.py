#!/usr/bin/env python3
"""check_pairs.py FOLDER: every transcript belongs to a rehearsal, and the other way round."""
import pathlib
import sys


def main():
    folder = pathlib.Path(sys.argv[1])
    rehearsals = {file.stem for file in folder.glob("*.yaml")}
    transcripts = {file.stem for file in folder.glob("*.transcript")}
    for name in sorted(rehearsals ^ transcripts):
        print(f"{name} is there without its other half")
    if not rehearsals:
        print("there are no rehearsals")
    return 1 if rehearsals != transcripts or not rehearsals else 0


if __name__ == "__main__":
    sys.exit(main())
