#!/usr/bin/env python3
"""half_hour_test.py DOCUMENT: the boxes for a Mac have one cause each, and their numbers and times agree.

Each box says what is done, what is seen and what is written down, in that order. Boxes count within their part, parts
count from 1, and the minutes of the parts make what the text says of all and of the half hour. Each check is first shown
to find a mistake.
"""
import pathlib
import re
import sys

HEADING = re.compile(r"^\*\*(\d+)\. ([^*(]+?)( \(half hour, (\d+) minutes\)| \((\d+) minutes\))\*\*", re.MULTILINE)
BOX = re.compile(r"^- \[ \] \*\*(\d+)\.(\d+)\*\* (.*(?:\n {6}.*)*)", re.MULTILINE)
STEPS = re.compile(r"\*Do:\*\s+\S.*\s\*See:\*\s+\S.*\s\*Write:\*\s+\S.*", re.DOTALL)
TOTAL = re.compile(r"(\d+)\s+boxes,\s+about\s+(\d+)\s+minutes")


def section(document):
    begin = document.index("\n## The half hour on a Mac\n")
    return document[begin:document.index("\n## ", begin + 4)]


def problems(text):
    found = []
    headings = [(int(match[1]), int(match[4] or match[5]), bool(match[4])) for match in HEADING.finditer(text)]
    boxes = [(int(match[1]), int(match[2]), match[3].rstrip()) for match in BOX.finditer(text)]
    if [number for number, _, _ in headings] != list(range(1, len(headings) + 1)):
        found.append("the parts do not count from 1")
    if len(boxes) != text.count("- [ ]"):
        found.append("a box has no number")
    for part, _, _ in headings:
        inside = [number for of, number, _ in boxes if of == part]
        if not inside or inside != list(range(1, len(inside) + 1)):
            found.append(f"the boxes of part {part} do not count from 1")
    found += [f"{part}.{number} does not say what is done, seen and written down" for part, number, content in boxes
              if not STEPS.fullmatch(content) or len(re.findall(r"\*(?:Do|See|Write):\*", content)) != 3]
    minutes = sum(length for _, length, _ in headings)
    said = TOTAL.search(text)
    if not said or (int(said[1]), int(said[2])) != (len(boxes), minutes):
        found.append(f"there are {len(boxes)} boxes and {minutes} minutes")
    if sum(length for _, length, counted in headings if counted) != 30:
        found.append("the half hour is none")
    if "log-out" not in text[text.rindex("**" + str(len(headings)) + "."):].lower():
        found.append("the log-out is not the last part")
    return found


MISTAKES = [
    (r"\*See:\* ", "", "does not say"),
    (r"\*Do:\* ", "*Do:* a. *Do:* ", "does not say"),
    (r"\s\*Write:\* [^*]+\n- ", "\n- ", "does not say"),
    (r"\*\*2\.3\*\*", "**2.4**", "the boxes of part 2"),
    (r"- \[ \] \*\*1\.2\*\*", "- [ ]", "a box has no number"),
    (r"\*\*3\. ", "**4. ", "the parts do not count"),
    (r"\d+\s+boxes,\s+about", "1 boxes, about", "boxes and"),
    (r"half hour, (\d+) minutes", "half hour, 99 minutes", "the half hour is none"),
]


def main(path):
    text = section(pathlib.Path(path).read_text(encoding="utf-8"))
    found = problems(text)
    for line in found:
        print(line)
    for pattern, instead, complaint in MISTAKES:
        changed, count = re.subn(pattern, instead, text, count=1)
        assert count == 1, f"{pattern} is nowhere"
        assert any(complaint in line for line in problems(changed)), f"not found: {pattern}"
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
