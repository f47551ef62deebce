"""What there is to run.

An entry is a program or a check that the build folder knows. A named entry holds many tests, which it lists and runs as
Google Test does; any other entry is one test, and its exit status is the result.
"""

import json
import pathlib
import subprocess
from dataclasses import dataclass, field

DEFAULT_TIMEOUT = 300.0
# What is heeded here; another property could change what a result means.
# CTest itself turns fixtures into DEPENDS.
_PROPERTIES = {"COST", "DEPENDS", "ENVIRONMENT", "FIXTURES_REQUIRED", "FIXTURES_SETUP", "LABELS", "RUN_SERIAL", "SKIP_REGULAR_EXPRESSION", "SKIP_RETURN_CODE", "TIMEOUT", "WORKING_DIRECTORY"}


@dataclass
class Entry:
    name: str
    command: list
    folder: str
    environment: dict = field(default_factory=dict)
    # Seconds for one test.
    timeout: float = DEFAULT_TIMEOUT
    # Needs an X display of its own, with a window manager.
    display: bool = False
    # Runs while no other entry of this kind does.
    alone: bool = False
    # Entries that have to be over before this one begins.
    after: list = field(default_factory=list)
    # The exit status that stands for "skipped", and what is written then.
    skip_status: int = None
    skip_words: list = field(default_factory=list)
    # How long it takes where nothing is known yet; only the order depends on it.
    cost: float = 0.0

    # Files that the tests stand in.
    sources: list = field(default_factory=list)

    # Only of named entries:
    named: bool = False
    prefix: str = ""
    filter: str = ""
    # How many tests one process takes; 0 stands for all of them.
    at_once: int = 0

    def test_names(self, environment):
        """The names of its tests, without the prefix."""
        pick = [f"--gtest_filter={self.filter}"] if self.filter else []
        run = subprocess.run([*self.command, "--gtest_list_tests", *pick], cwd=self.folder, capture_output=True,
                             text=True, env={**environment, **self.environment}, timeout=60, check=False)
        if run.returncode != 0:
            raise RuntimeError(f"{self.name} cannot list its tests:\n{run.stdout}{run.stderr}")
        return list(listed(run.stdout))


def listed(text):
    """The full names in what --gtest_list_tests prints."""
    suite = ""
    for line in text.splitlines():
        name = line.split("#", 1)[0].rstrip()
        if line.startswith("  "):
            yield suite + name.strip()
        elif name.endswith("."):
            suite = name


def named_entries(build):
    path = build / "named-tests.json"
    for row in json.loads(path.read_text(encoding="utf-8")):
        yield Entry(name=row["name"], command=row["command"], folder=row["folder"],
                    environment=dict(pair.split("=", 1) for pair in row["environment"]),
                    timeout=float(row["timeout"] or DEFAULT_TIMEOUT), display=row["display"], alone=row["alone"],
                    named=not row["whole"], prefix=row["prefix"], filter=row["filter"], at_once=int(row["at_once"] or 0),
                    sources=list(whole_paths(row["sources"], build)))


def whole_paths(sources, build):
    """The sources' paths: what ends in two slashes is the folder of those behind it. Without what the build makes."""
    folder = pathlib.Path("/")
    for source in sources:
        if source.endswith("//"):
            folder = pathlib.Path(source)
        elif build not in (folder / source).parents:
            yield str(folder / source)


def made_in(test, graph):
    """The CMake file that adds the test."""
    node = graph["nodes"][test["backtrace"]]
    # The innermost call may be a function's, the outermost is the project's first file.
    while "parent" in node and not graph["files"][node["file"]].endswith("CMakeLists.txt"):
        node = graph["nodes"][node["parent"]]
    return graph["files"][node["file"]]


def plain_entry(test, made_in_file=None):
    properties = {item["name"]: item["value"] for item in test.get("properties", [])}
    labels = properties.get("LABELS", [])
    if not _PROPERTIES.issuperset(properties):
        raise RuntimeError(f"{test['name']} has properties that are not known here: {sorted(properties)}")
    return Entry(name=test["name"], command=test.get("command", []), folder=properties.get("WORKING_DIRECTORY", "."),
                 environment=dict(pair.split("=", 1) for pair in properties.get("ENVIRONMENT", [])),
                 timeout=properties.get("TIMEOUT", DEFAULT_TIMEOUT), display="display" in labels,
                 alone=properties.get("RUN_SERIAL", False), after=properties.get("DEPENDS", []),
                 skip_status=properties.get("SKIP_RETURN_CODE"),
                 skip_words=properties.get("SKIP_REGULAR_EXPRESSION", []), cost=properties.get("COST", 0.0),
                 sources=[made_in_file] * bool(made_in_file) + [word for word in test.get("command", [])[1:]
                                                                if pathlib.Path(word).is_file()])


def read(build):
    """All entries of a build folder that has been configured. A program that is not built yet has no command."""
    named = list(named_entries(build))
    run = subprocess.run(["ctest", "--show-only=json-v1"], cwd=build, capture_output=True, text=True, check=True)
    known = {entry.name for entry in named}
    answer = json.loads(run.stdout)
    plain = [plain_entry(test, made_in(test, answer["backtraceGraph"])) for test in answer["tests"]
             if test["name"] not in known]
    names = [entry.name for entry in plain]
    repeated = {name for name in names if names.count(name) > 1}
    if repeated:
        raise RuntimeError("names that more than one test has: " + " ".join(sorted(repeated)))
    return named + plain
