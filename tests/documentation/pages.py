"""Reads the documentation's pages."""
import functools
import pathlib
import re

ROOT = pathlib.Path(__file__).resolve().parents[2]


def read(name):
    return (ROOT / name).read_text(encoding="utf-8")


def every():
    """The names of all pages, but those that a build or another tool has left."""
    paths = (path.relative_to(ROOT) for path in sorted(ROOT.rglob("*.md")))
    return [str(path) for path in paths if path.parts[0] != "build" and not any(part.startswith(".") for part in path.parts)]


def section(page, heading):
    """What stands under the heading, up to the next one of the same or a higher level."""
    found = re.search(rf"^(#+) {re.escape(heading)}$\n(.*)", page, re.MULTILINE | re.DOTALL)
    if not found:
        raise ValueError(f"there is no heading {heading!r}")
    following = re.search(rf"^#{{1,{len(found[1])}}} ", without_blocks(found[2]), re.MULTILINE)
    return found[2][: following.start()] if following else found[2]


def without_blocks(page):
    """The page with blanks in the place of what is shown as a block, so that places stay."""
    fenced = re.compile(r"^```.*?^```$", re.MULTILINE | re.DOTALL)
    return fenced.sub(lambda block: re.sub(r"[^\n]", " ", block[0]), page)


def first_cells(page, heading):
    """The first cell of each row of the tables under the heading, without the head. A cell in backquotes comes as it is
    inside them."""
    rows = [line for line in section(page, heading).splitlines() if line.startswith("|")]
    cells = []
    for row in rows:
        if set(row) <= set("|- "):
            cells.pop()
            continue
        cell = re.split(r"(?<!\\)\|", row)[1].strip().replace("\\|", "|")
        cells.append(cell[1:-1] if re.fullmatch(r"`[^`]*`", cell) else cell)
    return cells


@functools.cache
def pattern(row):
    return re.compile(".*".join(map(re.escape, row.split("…"))), re.DOTALL)


def fits(row, text):
    """Whether the text is the row, with anything in the place of each "…"."""
    return text.startswith(row.partition("…")[0]) and pattern(row).fullmatch(text) is not None


def sets_differ(what, shown, possible):
    """Complaints about what is possible and not shown, and the reverse."""
    return "".join(
        [f"{what}: {text!r} can be shown and does not stand there\n" for text in sorted(possible - shown)] +
        [f"{what}: {text!r} stands there and is never shown\n" for text in sorted(shown - possible)])


def matches_differ(what, rows, texts):
    """Complaints about rows that no text matches, and texts that not exactly one row matches."""
    wrong = "".join(f"{what}: {row!r} stands there twice\n" for row in sorted(set(rows)) if rows.count(row) > 1)
    hits = {row: 0 for row in rows}
    for text in sorted(texts):
        fitting = [row for row in hits if fits(row, text)]
        # A row without a gap goes before those that have one.
        exact = [row for row in fitting if row == text] or fitting
        if len(exact) != 1:
            wrong += f"{what}: {text!r} has {len(exact)} rows {exact}\n"
        for row in exact:
            hits[row] += 1
    return wrong + "".join(f"{what}: {row!r} stands there and is never shown\n" for row, count in hits.items() if not count)
