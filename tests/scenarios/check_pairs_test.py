#!/usr/bin/env python3
"""What the check of scenarios and transcripts objects to."""
import pathlib
import tempfile
import unittest

from check_pairs import problems


class Problems(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.add("keys/a.yaml", "title: A\nbegins: preludes/p\n")
        self.add("keys/a.transcript")
        self.add("preludes/p.yaml")
        self.add("preludes/p.transcript")

    def add(self, name, text=""):
        path = self.folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, encoding="utf-8")

    def test_pairs_are_fine(self):
        self.assertEqual(list(problems(self.folder)), [])

    def test_halves_are_found(self):
        self.add("end/b.yaml")
        self.add("end/c.transcript")
        self.assertEqual(list(problems(self.folder)),
                         ["end/b is there without its other half", "end/c is there without its other half"])

    def test_a_scenario_without_a_theme_is_found(self):
        for name in ("b", "end/deep/c"):
            self.add(name + ".yaml")
            self.add(name + ".transcript")
        self.assertEqual(list(problems(self.folder)), ["b does not stand in the folder of a theme",
                                                       "end/deep/c does not stand in the folder of a theme"])

    def test_a_prelude_that_nothing_begins_with_is_found(self):
        self.add("preludes/q.yaml")
        self.add("preludes/q.transcript")
        self.assertEqual(list(problems(self.folder)), ["no scenario begins with preludes/q"])

    def test_an_empty_folder_is_found(self):
        self.assertEqual(list(problems(self.folder / "keys" / "none")), ["there are no scenarios"])


if __name__ == "__main__":
    unittest.main()
