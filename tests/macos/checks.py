"""Shared by the tests of the macOS checks."""

import pathlib
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
WORK = ROOT / "build/macos"
PACKAGING = ROOT / "packaging/macos"
CLANG = "clang++-22"
# The same header as in script/check-macos.
PREFIX = ["-include-pch", str(WORK / "mm.pch")]
ANALYZER = [f"@{PACKAGING}/cross/analyzer.txt"]

sys.path.insert(0, str(PACKAGING / "tools"))


def prepare():
    """The tools, or exits with the code of a skipped test."""
    code = subprocess.run([ROOT / "script/macos-tools"], check=False).returncode
    if code:
        sys.exit(code)


def clang(*arguments):
    command = [CLANG, f"@{WORK}/flags", "-fobjc-arc", *arguments]
    return subprocess.run(command, capture_output=True, text=True, check=False)
