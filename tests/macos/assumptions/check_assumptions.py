#!/usr/bin/env python3
"""check_assumptions.py SOURCE DOCUMENT: every assumption of SOURCE is in DOCUMENT's table, with its page, and no other."""

import re
import sys

TEST = re.compile(r'TEST_F\(MacAssumptions, (\w+)\) \{\s+page\(\s*("[^;]+")\);')
LITERALS = re.compile(r'"\s+"')
ROW = re.compile(r"^\| `(\w+)` \| <(https://[^>]+)> \|", re.MULTILINE)


def main(source, document):
    with open(source, encoding="utf-8") as stream:
        text = stream.read()
    made = {(name, LITERALS.sub("", page).strip('"')) for name, page in TEST.findall(text)}
    if len(made) != text.count("TEST_F("):
        sys.exit("an assumption does not begin with its page")
    with open(document, encoding="utf-8") as stream:
        listed = set(ROW.findall(stream.read()))
    for name, page in sorted(made - listed):
        print(f"not listed: | `{name}` | <{page}> |")
    for name, page in sorted(listed - made):
        print(f"listed and not made: {name}, {page}")
    return 0 if made == listed and made else 1


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
