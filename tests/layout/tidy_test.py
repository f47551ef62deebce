"""clang-tidy with .clang-tidy finds what it must find, and script/tidy passes over no source."""

import importlib.machinery
import importlib.util
import pathlib
import subprocess
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
# Code and the check that objects to it.
MISTAKES = {
    "struct A { virtual ~A() = default; virtual void f(); };\nstruct B : A { virtual void f(); };": "modernize-use-override",
    "char *f() { return 0; }": "modernize-use-nullptr",
    "#include <string>\nvoid g(std::string);\nvoid f(std::string a) { g(std::move(a)); if (a.empty()) g(a); }":
        "bugprone-use-after-move",
    "#include <string>\nbool f(const std::string &a) { return a.size() == 0; }": "readability-container-size-empty",
    "#include <string>\n#include <vector>\nint f(const std::vector<std::string> &a) { int n = 0;"
    " for (auto b : a) n += b.size() > 1; return n; }": "performance-for-range-copy",
}
# Compiled on a Mac only.
ELSEWHERE = [ROOT / "tests/macos/contracts", ROOT / "tests/macos/peer"]


def load_tidy():
    loader = importlib.machinery.SourceFileLoader("tidy", str(ROOT / "script/tidy"))
    module = importlib.util.module_from_spec(importlib.util.spec_from_loader("tidy", loader))
    loader.exec_module(module)
    return module


def main():
    with tempfile.TemporaryDirectory() as folder:
        path = pathlib.Path(folder) / "code.cpp"
        for code, check in MISTAKES.items():
            path.write_text(code + "\n", encoding="utf-8")
            run = subprocess.run(["clang-tidy-22", "--quiet", f"--config-file={ROOT}/.clang-tidy", path, "--", "-std=c++20"],
                                 capture_output=True, text=True, check=False)
            assert run.returncode and check in run.stdout, (code, run.stdout, run.stderr)
    tidy = load_tidy()
    read = {source for unit in tidy.units() for source in unit.sources()}
    there = {path for folder in ("src", "practice", "rehearsal", "tests", "fuzz", "bench")
             for path in (ROOT / folder).rglob("*.cpp")}
    there = {path for path in there if not any(folder in path.parents for folder in ELSEWHERE)}
    assert there, "there are no sources"
    assert not there - read, sorted(map(str, there - read))
    print(f"{len(MISTAKES)} mistakes, all of them found; {len(read)} sources are read")


main()
