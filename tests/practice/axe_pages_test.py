#!/usr/bin/env python3
"""axe_pages_test.py PROGRAM: axe finds nothing wrong with the pages, wide and narrow, in light and dark, with and without the
server. Exits with 77 where Chromium or axe is not to be had."""
import pathlib
import sys
import tarfile
import unittest

sys.path.append(str(pathlib.Path(__file__).resolve().parent.parent / "documentation"))

import class_on_pages
import headless_chromium
import npm_package

PACKAGE = ("axe-core", "4.14.1", "FHfa+lmNjQZfJz1q8wKqIDwC6DExcHt/pkjNQb09a3NPjCKg2rhu5qb2S4r76ASyFNNtuFooJpZe37OgudVGtQ==")
PROGRAM = AXE = ""
# What axe cannot decide counts too: a contrast over something that it cannot see through, for example.
FINDINGS = ("axe.run(document, {resultTypes: ['violations', 'incomplete']}).then(found => [...found.violations,"
            "...found.incomplete].map(each => `${each.id} (${each.impact}): ${each.nodes.map(node => node.html).join()}`))")
DEVICES = ("--use-fake-device-for-media-stream", "--use-fake-ui-for-media-stream")


class Axe(unittest.TestCase):
    def setUp(self):
        self.server = class_on_pages.start(PROGRAM)
        self.addCleanup(self.server.close)
        class_on_pages.fill(self.server)
        self.browser = headless_chromium.HeadlessChromium(1280, 800, *DEVICES)
        self.addCleanup(self.browser.close)

    def open(self, path, ready):
        self.browser.open(self.server.address + path)
        self.browser.wait_for("document.readyState==='complete'&&" + ready)
        self.browser.value(AXE + ";0")

    def findings(self):
        return self.browser.value(FINDINGS)

    def check(self, state):
        for width, height, scheme in class_on_pages.LOOKS:
            with self.subTest(state=state, width=width, scheme=scheme):
                class_on_pages.look(self.browser, width, height, scheme)
                self.assertEqual(self.findings(), [])
                self.browser.picture(pathlib.Path(f"page-{state}-{width}-{scheme}.png"))

    def test_the_trainers_page(self):
        self.open("", "document.querySelector('tr.lost')!==null")
        self.check("trainer")
        self.browser.click("section[data-code=PROVA] button.end")
        self.browser.wait_for("document.getElementById('ask').open")
        self.check("trainer-asks")
        self.browser.click("#ask-no")
        self.server.close()
        self.browser.wait_for("document.querySelector('.link.broken')!==null")
        self.check("trainer-lost")

    def test_the_meetings_page(self):
        self.open("meet/PROVA", "document.querySelectorAll('[data-state=live]').length===2")
        self.browser.call("Input.insertText", text="Una domanda sul modulo")
        self.browser.press("Enter", "Enter", "\r")
        self.check("meeting")
        self.server.close()
        self.browser.wait_for("document.getElementById('contact').textContent!==''")
        self.check("meeting-lost")

    def test_the_pages_of_no_meeting(self):
        for path in ("meet/IERI", "meet/NESSUNA"):
            self.open(path, "document.querySelector('main')!==null")
            self.check(path.rpartition("/")[2].lower())

    def test_it_sees_a_page_made_bad(self):
        for path, bad, rule in (
                ("meet/PROVA", "(field=>{field.removeAttribute('aria-label');field.placeholder='';})"
                               "(document.querySelector('input'))", "label (critical)"),
                ("meet/PROVA", "document.querySelector('footer').style.color='#9aa7b5'", "color-contrast (serious)"),
                ("", "document.querySelector('.end').setAttribute('aria-label','')||"
                     "document.querySelector('.end').replaceChildren()", "button-name (critical)"),
                ("", "document.querySelector('.counts').style.color='#9aa7b5'", "color-contrast (serious)"),
                ("", "document.documentElement.lang=''", "html-has-lang (serious)")):
            self.open(path, "document.querySelector('.end,input')!==null")
            class_on_pages.look(self.browser, 1280, 800, "light")
            self.assertEqual(self.findings(), [])
            self.browser.value(bad + ";0")
            self.assertTrue(any(finding.startswith(rule) for finding in self.findings()), (bad, self.findings()))


if __name__ == "__main__":
    PROGRAM = sys.argv.pop(1)
    if headless_chromium.find() is None:
        npm_package.skip("THE PAGES WERE NOT TESTED WITH AXE. There is no chromium here.")
    with tarfile.open(npm_package.fetch(*PACKAGE)) as package:
        AXE = package.extractfile("package/axe.min.js").read().decode()
    unittest.main()
