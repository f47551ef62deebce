"""Which tests a pattern means, and what has to be built for them.

A pattern is a regular expression that is looked for in the full names of tests and in the names of entries, or the path
of a source or folder: the tests that stand there, and for one of the rules' modules those of its module. Before
anything is built the names are read from the sources; they then only have to find the right programs.
"""

import pathlib
import re

_TEST = re.compile(r"^\s*TEST(?:_F|_P)?\(\s*(\w+)\s*,\s*(\w+)\s*\)", re.MULTILINE)
_PARAMETERS = re.compile(r"^\s*INSTANTIATE_TEST_SUITE_P\(\s*(\w+)\s*,\s*(\w+)", re.MULTILINE)
# In a script: the functions without parameters, and the suite that they are put into.
_FUNCTION = re.compile(r"^def (\w+)\(\):", re.MULTILINE)
_SUITE = re.compile(r'\{"(\w+)\." \+')

# Where the tests of what stands elsewhere are; the first that fits holds.
_TESTED_IN = {"src/platform/virtual": ["virtual", "contracts"], "src/platform/linux": ["linux", "contracts"],
              "src/platform/macos": ["macos", "contracts"],
              "src/platform/portable": ["virtual/portable", "contracts"], "src/platform": ["contracts"], "practice": ["practice"],
              "rehearsal": ["rehearsal", "scenarios"]}


def tested_in(root, path):
    """The folders and files whose tests are those of a path of the project."""
    for folder, tests in _TESTED_IN.items():
        if (root / folder) in [path, *path.parents]:
            return [root / "tests" / name for name in tests]
    module = root / "tests" / path.relative_to(root / "src").parts[0] if (root / "src") in path.parents else path
    return [module if module.exists() else path]


class Pattern:
    def __init__(self, root, text):
        self.text = text
        self._expression = re.compile(text)
        path = (root / text).resolve()
        self.is_path = path.exists()
        self._paths = tested_in(root, path) if self.is_path else []

    def names(self, name):
        return not self.is_path and bool(self._expression.search(name))

    def stands(self, source):
        """Whether the source is, or lies in, what the pattern names as a path."""
        source = pathlib.Path(source)
        return any(path == source or path in source.parents for path in self._paths)


def names_in(source):
    """The names of the tests in a C++ source, those with parameters without the number at their end, or in a script;
    any other file is a test called FOLDER.FILE."""
    path = pathlib.Path(source)
    if path.suffix not in (".cpp", ".mm", ".py"):
        return [f"{path.parent.name}.{path.stem}"]
    try:
        text = path.read_text(encoding="utf-8")
    except OSError:
        return []
    if path.suffix == ".py":
        suite = _SUITE.search(text)
        return [f"{suite[1]}.{name}" for name in _FUNCTION.findall(text)] if suite else []
    sets = {}
    for name, suite in _PARAMETERS.findall(text):
        sets.setdefault(suite, []).append(name + "/")
    return [begin + suite + "." + name for suite, name in _TEST.findall(text) for begin in sets.get(suite, [""])]


def may_hold(entry, pattern):
    """Whether tests that the pattern means can be in the entry, as far as its sources tell."""
    if pattern.names(entry.name) or any(pattern.stands(source) for source in entry.sources):
        return True
    return entry.named and any(pattern.names(entry.prefix + name) for source in entry.sources for name in names_in(source))


def chosen(entry, names, patterns):
    """Those of an entry's tests that the patterns mean."""
    if not patterns:
        return names
    picked = set()
    for pattern in patterns:
        here = [source for source in entry.sources if pattern.stands(source)]
        if pattern.names(entry.name) or (here and len(here) == len(entry.sources)):
            return names
        there = {name for source in here for name in names_in(source)}
        picked |= {name for name in names if pattern.names(entry.prefix + name) or re.sub(r"/\w+$", "", name) in there}
    return [name for name in names if name in picked]


def targets(entries, build, known):
    """What the build tool has to make for these entries, in its own words; None when that is everything."""
    wanted = set()
    for entry in entries:
        if not entry.command:
            return None
        for word in [*entry.command, *entry.environment.values()]:
            path = pathlib.Path(word)
            if path.is_absolute() and build in path.parents and str(path.relative_to(build)) in known:
                wanted.add(str(path.relative_to(build)))
    return sorted(wanted)
