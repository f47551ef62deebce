#!/usr/bin/env python3
"""reachable_pages_test.py PROGRAM: the pages by keyboard, as a screen reader gets them, without room to the side, and without
their server. Exits with 77 if there is no Chromium."""
import sys
import unittest

import class_on_pages
import headless_chromium
from practice_server import Server

PROGRAM = ""
DEVICES = ("--use-fake-device-for-media-stream", "--use-fake-ui-for-media-stream")
# What a stop of the Tab key lacks: it is seen, nothing covers it, and it has an outline.
STOP_LACKS = """(() => {
    const stop = document.activeElement, box = stop.getBoundingClientRect(), style = getComputedStyle(stop);
    const x = Math.max(box.left, 0) + 4, y = Math.max(box.top, 0) + 4, above = document.elementFromPoint(x, y);
    const lacks = [];
    if (!stop.checkVisibility() || box.width < 8 || box.height < 8) lacks.push('size');
    if (box.left < 0 || box.right > innerWidth || box.bottom < 8 || box.top > innerHeight - 8) lacks.push('place');
    if (above === null || !stop.contains(above)) lacks.push('free sight');
    if (style.outlineStyle === 'none' || parseFloat(style.outlineWidth) < 2) lacks.push('outline');
    return lacks;
})()"""
SPILLS = """[...document.querySelectorAll('body *')].filter(each => each.checkVisibility() && !each.closest('.unseen, thead') &&
    !each.closest('.face') && each.getBoundingClientRect().right > document.documentElement.clientWidth + 1)
    .map(each => each.outerHTML.slice(0, 80))
    .concat(document.documentElement.scrollWidth > document.documentElement.clientWidth ? ['the page'] : [])"""
NAMED_ROLES = {"button", "textbox", "table", "region", "complementary", "meter", "list", "dialog", "heading", "columnheader"}


class ReachablePages(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.browser = headless_chromium.HeadlessChromium(1280, 800, *DEVICES)
        cls.addClassCleanup(cls.browser.close)
        cls.browser.call("Emulation.setFocusEmulationEnabled", enabled=True)

    def setUp(self):
        self.server = class_on_pages.start(PROGRAM)
        self.addCleanup(lambda: self.server.close())
        class_on_pages.fill(self.server)

    def open(self, path, ready):
        self.browser.open(self.server.address + path)
        self.browser.wait_for("document.readyState==='complete'&&" + ready)

    def open_trainer(self):
        self.open("", "document.querySelector('tr.lost')!==null")

    def open_meeting(self):
        self.open("meet/PROVA", "document.querySelectorAll('[data-state=live]').length===2")

    def tree(self):
        """(role, name, properties) of all that a screen reader gets."""
        nodes = self.browser.call("Accessibility.getFullAXTree")["nodes"]
        return [(node["role"]["value"], node.get("name", {}).get("value", ""),
                 {each["name"]: each["value"].get("value") for each in node.get("properties", [])})
                for node in nodes if not node["ignored"]]

    def stops(self):
        """(role, name, what it lacks) of each stop of the Tab key, from the top of the page to the end."""
        # Where the focus was last is where the next Tab begins.
        self.browser.value("document.body.tabIndex=-1;document.body.focus();document.body.removeAttribute('tabindex');"
                           "scrollTo(0,0);window.stops=new Set();0")
        found = []
        for _ in range(50):
            self.browser.press("Tab", "Tab")
            # After the last stop comes the page itself, or the first one again.
            if self.browser.value("document.activeElement===document.body||stops.has(document.activeElement)"):
                return found
            self.browser.value("stops.add(document.activeElement);0")
            role, name, _ = next((each for each in self.tree() if each[2].get("focused") and each[0] != "RootWebArea"),
                                 ("", "", {}))
            found.append((role, name, self.browser.value(STOP_LACKS)))
        return found

    def check_everywhere(self, stops):
        for width, height, scheme in class_on_pages.LOOKS:
            with self.subTest(width=width, scheme=scheme):
                class_on_pages.look(self.browser, width, height, scheme)
                self.assertEqual(self.browser.value(SPILLS), [])
                self.assertEqual([stop for stop in self.stops() if stop[:2] not in stops or stop[2]], [])
                self.assertEqual([stop for stop in stops if stop not in [each[:2] for each in self.stops()]], [])
                self.assertEqual([(role, name) for role, name, _ in self.tree() if role in NAMED_ROLES and not name.strip()],
                                 [])

    def has(self, *wanted):
        found = [(role, name) for role, name, _ in self.tree()]
        self.assertEqual([each for each in wanted if each not in found], [])
        return found

    def test_the_trainers_page(self):
        self.open_trainer()
        self.check_everywhere([("button", "Termina sessione PROVA"), ("list", "Violazioni, la più recente in alto"),
                               ("button", "Termina sessione ATTESA-2")])
        # The table is one on a narrow page too, where its rows are boxes.
        found = self.has(("main", ""), ("heading", "Sicurezza sul lavoro, modulo 1"),
                         ("region", "Sicurezza sul lavoro, modulo 1"), ("table", "Partecipanti"),
                         ("columnheader", "Blocco"), ("status", ""))
        people = 2 + len(class_on_pages.NAMES)
        self.assertEqual([sum(role == each for each, _ in found) for role in ("rowheader", "cell")], [people, 5 * people])

    def test_the_meetings_page(self):
        self.open_meeting()
        for number in range(20):
            self.browser.value("document.querySelector('input').focus()")
            self.browser.call("Input.insertText", text=f"Messaggio {number}")
            self.browser.press("Enter", "Enter", "\r")
        class_on_pages.look(self.browser, 390, 844, "light")
        self.assertEqual(self.browser.value(SPILLS), [])
        for width, height, scheme in class_on_pages.LOOKS:
            with self.subTest(width=width, scheme=scheme):
                class_on_pages.look(self.browser, width, height, scheme)
                self.assertEqual(self.browser.value(SPILLS), [])
                self.assertEqual(self.stops(), [("list", "Partecipanti", [])] * (width > 900) +
                                 [("list", "Messaggi", []), ("textbox", "Scrivi un messaggio", []), ("button", "Invia", [])])
        self.has(("main", ""), ("banner", ""), ("contentinfo", ""), ("complementary", "Messaggi"),
                 ("meter", "Livello del microfono"), ("status", ""))

    def test_it_sees_a_page_made_bad(self):
        self.open_trainer()
        class_on_pages.look(self.browser, 390, 844, "light")
        self.browser.value("document.querySelector('.end').style.outline='none';0")
        self.assertIn(("button", "Termina sessione PROVA", ["outline"]), self.stops())
        self.browser.value("document.querySelector('.end').removeAttribute('aria-label');"
                           "document.querySelector('.end').replaceChildren();0")
        self.assertIn("", [name for _, name, _ in self.stops()])
        self.browser.value("document.querySelector('.card').style.width='500px';0")
        self.assertIn("the page", self.browser.value(SPILLS))

    def test_a_question_takes_the_focus_and_gives_it_back(self):
        self.open_trainer()
        self.browser.value("document.querySelector('.end').focus()")
        self.browser.press("Enter", "Enter", "\r")
        self.browser.wait_for("document.activeElement.id==='ask-no'")
        self.has(("dialog", "Terminare la sessione PROVA?"))
        # A dialog hears the key's number only.
        self.browser.call("Input.dispatchKeyEvent", type="rawKeyDown", key="Escape", code="Escape",
                          windowsVirtualKeyCode=27)
        self.browser.wait_for("document.activeElement.matches('section[data-code=PROVA] .end')")
        self.browser.press("Enter", "Enter", "\r")
        self.browser.press("Tab", "Tab")
        self.browser.press("Enter", "Enter", "\r")
        self.browser.wait_for("document.activeElement.matches('section[data-code=PROVA] h2')")

    def test_what_is_new_is_told_politely_and_in_few_words(self):
        self.open_trainer()
        self.browser.value("window.told=[];new MutationObserver(()=>{const text=document.getElementById('news').textContent;"
                           "if(text!=='')told.push([performance.now(),text]);})"
                           ".observe(document.getElementById('news'),{childList:true});0")
        token = self.server.join("Elena Fontana", "elena@example.org")
        for number in range(20):
            self.server.beat(token, ("KEY_BLOCKED", f"Cmd+{number}"))
        count = "told.reduce((sum,[,text])=>sum+Number(/(\\d+) nuove violazioni/.exec(text)?.[1]??/Nuova viol/.test(text)),0)"
        self.browser.wait_for(count + ">=20")
        told = self.browser.value("told")
        self.assertEqual(self.browser.value(count), 20)
        self.assertTrue(any("Ingresso: Elena Fontana" in text for _, text in told), told)
        self.assertTrue(any("l'ultima: Cmd+19, Elena Fontana" in text for _, text in told), told)
        self.assertTrue(all(later[0] - earlier[0] >= 5900 for earlier, later in zip(told, told[1:])), told)
        self.assertEqual(self.browser.value("document.getElementById('news').getAttribute('role')"), "status")

    def test_what_happens_again_is_told_again(self):
        # Nobody is lost soon there.
        self.server.close()
        self.server = Server(PROGRAM, "--session", "PROVA=Sicurezza")
        self.open("", "document.querySelector('.card')!==null")
        self.browser.value("window.told=[];new MutationObserver(()=>{const text=document.getElementById('news').textContent;"
                           "if(text!=='')told.push(text);}).observe(document.getElementById('news'),{childList:true});0")
        token = self.server.join("Elena Fontana", "elena@example.org")
        self.browser.wait_for("told.length===1")
        for count in (2, 3):
            # It comes before the pause after the last sentence is over.
            self.server.beat(token, ("KEY_BLOCKED", "Cmd+Tab"))
            self.browser.wait_for(f"told.length==={count}")
        self.assertEqual(self.browser.value("told"), ["Ingresso: Elena Fontana"] + ["Nuova violazione: Cmd+Tab, Elena Fontana"] * 2)

    def test_a_second_failure_to_end_a_session_is_told_too(self):
        self.open_trainer()
        self.browser.value("document.querySelector('.end').click()")
        self.browser.wait_for("document.getElementById('ask').open")
        self.server.close()
        self.browser.value("window.told=[];new MutationObserver(changes=>changes.forEach(change=>told.push(change.oldValue===null)))"
                           ".observe(document.getElementById('ask-failed'),{attributeFilter:['hidden'],attributeOldValue:true});0")
        for _ in range(2):
            self.browser.wait_for("!document.getElementById('ask-yes').disabled")
            self.browser.value("document.getElementById('ask-yes').click()")
            self.browser.wait_for("document.activeElement.id==='ask-yes'&&!document.getElementById('ask-failed').hidden")
        # It went and came back.
        self.assertEqual(self.browser.value("told")[-2:], [True, False])
        self.server = class_on_pages.start(PROGRAM)

    def test_the_trainers_header_reaches_the_scrollbar(self):
        self.server.close()
        # A page that needs no scrolling.
        self.server = Server(PROGRAM, "--session", "PROVA=Sicurezza")
        self.open("", "document.querySelector('.card')!==null")
        class_on_pages.look(self.browser, 1280, 800, "light")
        beside = self.browser.value("innerWidth-document.querySelector('.bar').getBoundingClientRect().right")
        bar = self.browser.value("getComputedStyle(document.documentElement).overflowY==='scroll'")
        self.assertTrue(beside == 0 or bar, beside)

    def without_its_server(self, lost, back, place):
        title = self.browser.value("document.title")
        self.server.close()
        self.browser.wait_for(f"document.getElementById('{place}').textContent.includes('{lost}')")
        self.assertTrue(any(role == "StaticText" and lost in name for role, name, _ in self.tree()))
        self.assertTrue(self.browser.value(f"document.getElementById('{place}').matches('[role=status]')"))
        self.assertNotEqual(self.browser.value("document.title"), title)
        self.server = class_on_pages.start(PROGRAM, self.server.port)
        self.browser.wait_for(f"document.getElementById('{place}').textContent==='{back}'")
        self.assertFalse(any(lost in name for _, name, _ in self.tree()))

    def test_the_trainers_page_says_when_the_server_is_gone_and_goes_on_by_itself(self):
        self.open_trainer()
        self.without_its_server("Il server non risponde: dati delle", "Collegata al server", "link")
        self.assertEqual(self.browser.value("document.title"), "Vantrel · Pagina della formazione")
        self.server.join("Elena Fontana", "elena@example.org")
        self.browser.wait_for("document.title.startsWith('1 in sessione')")

    def test_the_meetings_page_says_when_the_server_is_gone_and_goes_on_by_itself(self):
        self.open_meeting()
        self.without_its_server("Collegamento con il server perso", "", "contact")
        self.assertEqual(self.browser.value("document.title"), "Sicurezza sul lavoro, modulo 1")

    def test_the_meetings_page_says_that_the_class_has_ended(self):
        self.open_meeting()
        self.server.ask("POST", "/control/end/PROVA")
        self.browser.wait_for("document.getElementById('contact').textContent.startsWith('La lezione è terminata')")
        self.assertEqual(self.browser.value("document.title"), "Lezione terminata · Sicurezza sul lavoro, modulo 1")
        # The page needs the server no longer.
        self.browser.value("window.failed=0;window.real=fetch;window.fetch=(...what)=>real(...what).catch("
                           "error=>{failed+=1;throw error;});0")
        self.server.close()
        for count in (1, 2):
            self.browser.press("a", "KeyA")
            self.browser.wait_for(f"failed>={count}")
        self.assertTrue(self.browser.value("contactPlace.textContent.startsWith('La lezione è terminata')"))
        self.server = class_on_pages.start(PROGRAM)


if __name__ == "__main__":
    PROGRAM = sys.argv.pop(1)
    if headless_chromium.find() is None:
        print("SKIPPED: WHETHER THE PAGES CAN BE REACHED WAS NOT TESTED. There is no chromium here.", file=sys.stderr)
        sys.exit(77)
    unittest.main()
