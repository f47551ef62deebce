#!/usr/bin/env python3
"""package_test.py BUILD ROOT CLIENT GUARD: the Debian package that CPack makes of the build."""
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

BUILD = ROOT = CLIENT = pathlib.Path()
PARTS = {
    "./usr/bin/vantrel", "./usr/lib/vantrel/vantrel", "./usr/lib/vantrel/vantrel-guard",
    "./usr/share/applications/biz.quorrin.vantrel.desktop", "./usr/share/metainfo/biz.quorrin.vantrel.metainfo.xml",
    "./usr/share/icons/hicolor/scalable/apps/biz.quorrin.vantrel.svg", "./usr/share/doc/vantrel/copyright",
    "./usr/share/doc/vantrel/changelog.gz", "./usr/share/man/man1/vantrel.1.gz", "./usr/share/man/it/man1/vantrel.1.gz",
}


def run(*command, **more):
    return subprocess.run([str(part) for part in command], capture_output=True, text=True, check=False, **more)


class Package(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(cls.folder.cleanup)
        made = run("cpack", "--config", BUILD / "CPackConfig.cmake", "-B", cls.folder.name)
        assert made.returncode == 0, made.stdout + made.stderr
        (cls.package,) = pathlib.Path(cls.folder.name).glob("*.deb")
        cls.unpacked = pathlib.Path(cls.folder.name, "unpacked")
        run("dpkg-deb", "-x", cls.package, cls.unpacked)

    def field(self, name):
        return run("dpkg-deb", "-f", self.package, name).stdout.strip()

    def test_holds_these_files_and_no_others(self):
        lines = run("dpkg-deb", "-c", self.package).stdout.splitlines()
        self.assertEqual({line.split()[5] for line in lines if not line.startswith("d")}, PARTS)

    def test_lintian_finds_no_error(self):
        found = run("lintian", "--allow-root", self.package)
        self.assertEqual([line for line in found.stdout.splitlines() if line.startswith("E:")], [])
        self.assertNotEqual(found.returncode, 2, found.stderr)

    def test_names_its_libraries_by_their_packages_and_recommends_a_browser(self):
        for name in ("libqt6widgets6", "libcurl4", "libxcb-xinput0", "libc6"):
            self.assertRegex(self.field("Depends"), rf"\b{re.escape(name)}\b")
        self.assertIn("chromium | google-chrome-stable", self.field("Recommends"))

    def test_the_installed_client_answers_with_the_packages_version(self):
        client = self.unpacked / "usr/bin/vantrel"
        self.assertTrue(client.resolve().is_relative_to(self.unpacked / "usr/lib/vantrel"))
        self.assertEqual(run(client, "--version").stdout, f"Vantrel {self.field('Version')}-macOS\n")

    def test_its_programs_are_optimised_and_without_what_only_a_debugger_needs(self):
        for name in ("vantrel", "vantrel-guard"):
            program = self.unpacked / "usr/lib/vantrel" / name
            self.assertNotIn(".debug_info", run("readelf", "-S", "--wide", program).stdout)
            self.assertIn(".debug_info", run("readelf", "-S", "--wide", CLIENT.parent / name).stdout)

    def test_the_menu_entry_is_valid_and_starts_what_is_installed(self):
        entry = self.unpacked / "usr/share/applications/biz.quorrin.vantrel.desktop"
        self.assertEqual(run("desktop-file-validate", entry).stdout, "")
        text = entry.read_text(encoding="utf-8")
        self.assertIn("\nExec=vantrel\n", text)
        icon = re.search(r"^Icon=(.*)$", text, re.MULTILINE)[1]
        self.assertTrue((self.unpacked / f"usr/share/icons/hicolor/scalable/apps/{icon}.svg").exists())

    def test_software_centres_can_read_what_it_is(self):
        found = run("appstreamcli", "validate", "--no-net",
                    self.unpacked / "usr/share/metainfo/biz.quorrin.vantrel.metainfo.xml")
        self.assertEqual(found.returncode, 0, found.stdout)

    def test_both_manual_pages_are_shown_without_a_warning(self):
        for page, word in (("man/man1", "DESCRIPTION"), ("man/it/man1", "DESCRIZIONE")):
            shown = run("man", "--warnings", "-l", self.unpacked / "usr/share" / page / "vantrel.1.gz",
                        env={"PATH": "/usr/bin:/bin", "LC_ALL": "C.UTF-8", "MANWIDTH": "80"})
            self.assertEqual(shown.stderr, "")
            self.assertIn(word, shown.stdout)
            for option in ("--help", "--version"):
                self.assertIn(option, shown.stdout)


if __name__ == "__main__":
    BUILD, ROOT, CLIENT = map(pathlib.Path, sys.argv[1:4])
    unittest.main(argv=sys.argv[:1] + sys.argv[5:])
