"""Compares how the sources label CoreFoundation objects with the names of the calls that return them.

The analyzer does not look through CFReference, so it would believe any label. Needs neither the tools nor a build.
Every label is first replaced by each of the others, which the check must find.
"""

import re

from checks import ROOT

LABEL = re.compile(r"CFReference<\w+>::(created|copied|borrowed)\(")
LABELS = ("created", "copied", "borrowed")
# A call whose result the caller owns, by the frameworks' naming rule.
OWNING = re.compile(r"\b(?:AX|CF|CG)\w*?(Create|Copy)\w*\(")


def argument(text, start):
    """The text between the bracket before `start` and its closing bracket."""
    depth, at = 1, start
    while depth:
        depth += {"(": 1, ")": -1}.get(text[at], 0)
        at += 1
    return text[start:at - 1].strip()


def is_written_by_a_copy(name, text):
    return any(re.search(rf"&{name}\b", argument(text, call.end()))
               for call in OWNING.finditer(text) if call[1] == "Copy")


def problems(text):
    taken = []
    for label in LABEL.finditer(text):
        given = argument(text, label.end())
        taken.append(range(label.end(), label.end() + len(given) + 1))
        call = OWNING.match(given)
        kind = call[1] if call else None
        if label[1] == "created" and kind != "Create":
            yield f"created({given}): nothing is created there"
        elif label[1] == "copied" and kind != "Copy" and not is_written_by_a_copy(given, text):
            yield f"copied({given}): nothing is copied there"
        elif label[1] == "borrowed" and (OWNING.search(given) or is_written_by_a_copy(given, text)):
            yield f"borrowed({given}): it is the caller's"
    for call in OWNING.finditer(text):
        given = argument(text, call.end())
        written = re.search(r"&(\w+)", given) if call[1] == "Copy" else None
        handed_on = (any(call.start() in place for place in taken)
                     or text[:call.start()].rstrip().endswith("CFBridgingRelease(")
                     or (written and f"::copied({written[1]})" in text))
        if not handed_on:
            yield f"{call[0]}…): nobody takes what it gives"


def main():
    files = sorted(path for folder in ("src/platform/macos", "src/app", "tests/macos")
                   for path in (ROOT / folder).rglob("*.mm")
                   # The stand-ins are the other side: they provide these functions.
                   if "standins" not in path.parts)
    labels = mistakes = 0
    for path in files:
        text = path.read_text(encoding="utf-8")
        assert list(problems(text)) == [], (path, list(problems(text)))
        for label in LABEL.finditer(text):
            labels += 1
            for other in set(LABELS) - {label[1]}:
                changed = text[:label.start(1)] + other + text[label.end(1):]
                assert list(problems(changed)), (path, label[0], other)
                mistakes += 1
    assert list(problems("void f() { CFArrayRef list = CGWindowListCopyWindowInfo(0, 0); }"))
    assert list(problems("void f() { CFTypeRef out; AXUIElementCopyAttributeValue(e, n, &out); }"))
    assert labels >= 8, labels
    print(f"{labels} labels in {len(files)} files fit their calls; {mistakes + 2} mistakes, all of them found")


main()
