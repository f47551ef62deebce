"""event_kinds_test.py COMPILER ROOT: checks that the compiler distinguishes events. An expectation on a missing kind
or field must not compile, nor a transcript that lacks a line for a kind."""
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

COMPILER, ROOT = sys.argv[1], pathlib.Path(sys.argv[2])
KINDS = [ROOT / "src/platform/virtual/journal" / name for name in ("EventKind.h", "Deed.h")]
LINES = ROOT / "rehearsal/transcript"
HEAD = '#include "platform/virtual/journal/Event.h"\nusing namespace vantrel::virtualmac;\n'


def compiled(path, *folders):
    """The compiler's messages for the file. Empty if it compiles."""
    folders = [f"-I{folder}" for folder in (*folders, ROOT / "src", ROOT)]
    command = [COMPILER, "-std=c++20", "-fsyntax-only", "-Wall", "-Wextra", "-Werror", *folders, str(path)]
    result = subprocess.run(command, capture_output=True, text=True, env=os.environ | {"LC_ALL": "C"}, check=False)
    return "" if result.returncode == 0 else result.stderr or "no word"


class EventKinds(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)

    def said_of(self, statement):
        path = pathlib.Path(self.folder.name) / "expectation.cpp"
        path.write_text(HEAD + "bool expectation(const Event& event) { return " + statement + "; }\n")
        return compiled(path)

    def test_what_exists_compiles(self):
        self.assertEqual(self.said_of("event.kind == WindowEvent::shown && event.has(Field::frame)"), "")

    def test_a_kind_that_does_not_exist_does_not_compile(self):
        self.assertIn("shwon", self.said_of("event.kind == WindowEvent::shwon"))

    def test_a_kind_is_not_a_text(self):
        self.assertNotEqual(self.said_of('event.kind == "window-shown"'), "")
        self.assertNotEqual(self.said_of("event.kind == 3"), "")

    def test_a_field_that_does_not_exist_does_not_compile(self):
        self.assertIn("frmae", self.said_of("event.field(Field::frmae).empty()"))
        self.assertNotEqual(self.said_of('event.field("frame").empty()'), "")

    def test_a_kind_without_a_line_in_the_transcript_does_not_compile(self):
        changed = pathlib.Path(self.folder.name) / "platform/virtual/journal"
        changed.mkdir(parents=True)
        families = []
        for header in KINDS:
            text = header.read_text(encoding="utf-8")
            families += re.findall(r"enum class (\w+) \{", text)
            (changed / header.name).write_text(re.sub(r"(enum class \w+ \{)", r"\1 novelty,", text), encoding="utf-8")
        said = "".join(compiled(path, self.folder.name) for path in sorted(LINES.glob("*Lines.cpp")))
        missing = set(re.findall(r"(\S+:\d+):\d+: error: enumeration value .novelty. not handled", said))
        self.assertTrue(families)
        self.assertEqual(len(missing), len(families), said)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
