#!/usr/bin/env python3
"""check_documentation.py PROGRAM PAGE PRELUDES: checks that the page's example has the transcript shown there, and that
every other piece of a scenario on the page is accepted."""
import pathlib
import re
import shutil
import sys
import tempfile

from player import difference, play


def blocks(page, language):
    return re.findall(r"^```" + re.escape(language) + r"\n(.*?)^```$", page, re.MULTILINE | re.DOTALL)


def whole(piece):
    """The piece, completed with what a scenario needs."""
    for word, default in (("title", "title: A piece\n"), ("timeline", "timeline: []\n"), ("until", "until: 1000\n")):
        if not re.search(rf"^{word}:", piece, re.MULTILINE):
            piece += default
    return piece


def main():
    program, page_file = sys.argv[1], pathlib.Path(sys.argv[2])
    page = page_file.read_text(encoding="utf-8")
    examples, transcripts, pieces = blocks(page, "yaml scenario"), blocks(page, "text transcript"), blocks(page, "yaml")
    if len(examples) != 1 or len(transcripts) != 1 or len(pieces) < 3:
        print(f"{page_file.name} has {len(examples)} examples, {len(transcripts)} transcripts and {len(pieces)} pieces")
        return 1
    failed = False
    with tempfile.TemporaryDirectory() as folder:
        shutil.copytree(sys.argv[3], pathlib.Path(folder) / "preludes")
        file = pathlib.Path(folder) / "page.yaml"
        file.write_text(examples[0], encoding="utf-8")
        status, actual, messages = play(program, file)
        diff = difference(transcripts[0], actual, page_file.name)
        sys.stdout.write(messages + diff)
        failed = status != 0 or bool(diff)
        for piece in pieces:
            file.write_text(whole(piece), encoding="utf-8")
            status, _, messages = play(program, file)
            if status != 0:
                print(f"{piece}exit status {status}\n{messages}")
                failed = True
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
