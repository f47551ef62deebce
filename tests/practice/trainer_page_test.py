#!/usr/bin/env python3
"""trainer_page_test.py PROGRAM: the trainer's page in a real browser, with the requests of a client.

Saves pictures in the current folder. Exits with 77 if there is no Chromium.
"""
import http.server
import json
import pathlib
import sys
import threading
import time
import unittest

import headless_chromium
from practice_server import Server

PROGRAM = ""
# Seconds of silence until a participant is lost in this test, instead of the usual 40.
LOST_AFTER = 10
CARD = "document.querySelector('section[data-code=PROVA]')"


class TrainerPage(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.browser = headless_chromium.HeadlessChromium(1280, 800)
        cls.addClassCleanup(cls.browser.close)

    def server(self, *arguments):
        server = Server(PROGRAM, *arguments)
        self.addCleanup(server.close)
        return server

    def open(self, server):
        self.browser.open(server.address)
        self.browser.wait_for("document.getElementById('link')?.textContent==='Collegata al server'")

    def texts(self, selector):
        return self.browser.value(
            "[...document.querySelectorAll(" + json.dumps(selector) + ")].map(node=>node.innerText.trim())")

    def picture(self, name):
        self.browser.picture(pathlib.Path(name))

    def test_it_shows_what_clients_report_and_ends_the_session(self):
        server = self.server("--session", "PROVA=Sicurezza sul lavoro, modulo 1", "--session", "ATTESA-2=Antincendio",
                             "--status", "ATTESA-2=WAITING", "--session", "IERI=Primo soccorso", "--status",
                             "IERI=ENDED", "--lost-after", str(LOST_AFTER))
        self.open(server)
        self.assertEqual(self.texts(".head h2"),
                         ["Sicurezza sul lavoro, modulo 1", "Antincendio", "Primo soccorso"])
        self.assertEqual(self.texts(".head .code"), ["PROVA", "ATTESA-2", "IERI"])
        self.assertEqual(self.texts(".head .badge"), ["Attiva", "In attesa", "Terminata"])
        self.assertIn("Nessun partecipante. Per entrare si usa il codice PROVA.", self.texts(".people .note"))
        self.picture("trainer-page-empty.png")

        silent = server.join("Paolo Greco", "paolo.greco@example.org")
        server.beat(silent, ("FOCUS_VIOLATION", "Anteprima"))
        gone = server.join("Lucia Ferrari", "lucia.ferrari@example.org")
        server.beat(gone)
        server.leave(gone)
        self.browser.wait_for("document.querySelector('tr.lost')!==null")
        anna = server.join("Anna Però", "anna.pero@example.org")
        server.beat(anna, meetConnected=False)
        luca = server.join("Luca D'Amico", "luca.damico@example.org")
        server.beat(luca, ("KEY_BLOCKED", "Cmd+Tab"), ("KEY_BLOCKED", "Cmd+Q"))
        server.join("Sara Conti", "sara.conti@example.org")
        self.browser.wait_for(CARD + ".querySelectorAll('tbody tr').length===5")
        self.browser.wait_for(CARD + ".querySelectorAll('li').length===3")
        self.picture("trainer-page.png")

        self.assertEqual(self.texts("section[data-code=PROVA] td .badge"),
                         ["Contatto perso", "Uscito", "In sessione", "In sessione", "In sessione"])
        self.assertEqual(self.texts("section[data-code=PROVA] .who"),
                         ["Paolo Greco", "Lucia Ferrari", "Anna Però", "Luca D'Amico", "Sara Conti"])
        self.assertEqual(self.texts("section[data-code=PROVA] .mail")[3], "luca.damico@example.org")
        self.assertEqual(self.texts("section[data-code=PROVA] td.flag"),
                         ["attivo", "aperta"] * 2 + ["attivo", "non aperta", "attivo", "aperta", "–", "–"])
        self.assertEqual(self.texts("section[data-code=PROVA] td.number"), ["1", "0", "0", "2", "0"])
        whens = self.texts("section[data-code=PROVA] td.when")
        self.assertRegex(whens[0], r"^\d+ s fa\s+\d\d:\d\d:\d\d$")
        self.assertEqual(whens[4], "nessuno ancora")
        violations = self.texts("section[data-code=PROVA] li")
        self.assertRegex(violations[0], r"^\d\d:\d\d:\d\d\s+Cmd\+Q\s+Combinazione bloccata\s+Luca D'Amico$")
        self.assertRegex(violations[1], r"^\d\d:\d\d:\d\d\s+Cmd\+Tab\s+Combinazione bloccata\s+Luca D'Amico$")
        self.assertRegex(violations[2],
                         r"^\d\d:\d\d:\d\d\s+Anteprima\s+Altra applicazione in primo piano\s+Paolo Greco$")

        # The heartbeat of a lost participant, and a violation, arrive while the page is open.
        server.beat(silent, ("KEY_BLOCKED", "Cmd+H"))
        self.browser.wait_for(CARD + ".querySelectorAll('li').length===4")
        self.assertEqual(self.texts("section[data-code=PROVA] td .badge")[0], "In sessione")
        self.assertIn("Cmd+H", self.texts("section[data-code=PROVA] li")[0])

        self.browser.click("section[data-code=PROVA] button.end")
        self.browser.wait_for("document.getElementById('ask').open")
        self.assertEqual(self.texts("#ask-title"), ["Terminare la sessione PROVA?"])
        self.picture("trainer-page-asks.png")
        self.browser.click("#ask-no")
        self.browser.wait_for("!document.getElementById('ask').open")
        self.assertFalse(server.beat(anna))

        self.browser.click("section[data-code=PROVA] button.end")
        self.browser.wait_for("document.getElementById('ask').open")
        self.browser.click("#ask-yes")
        self.browser.wait_for(CARD + ".querySelector('.head .badge').textContent==='Terminata'")
        self.assertFalse(self.browser.value("document.getElementById('ask').open"))
        self.assertFalse(self.browser.value(CARD + ".querySelector('button.end').checkVisibility()"))
        self.assertTrue(server.beat(anna))
        server.leave(anna)
        self.browser.wait_for(CARD + ".querySelectorAll('tbody tr.left').length===2")
        self.assertEqual(self.texts("section[data-code=ATTESA-2] .head .badge"), ["In attesa"])

        # Only the clients' requests were recorded, none of the page's.
        paths = {exchange["path"] for exchange in server.ask("GET", "/control/received")[1]}
        self.assertEqual(paths, {"/api/sessions/PROVA/join", "/api/heartbeat"})

    def test_what_comes_from_outside_stays_text(self):
        markup = "<img src=x onerror='document.title=\"broken\"'><b>x</b>&amp;"
        server = self.server("--session", "PROVA=" + markup)
        token = server.join(markup, markup)
        server.beat(token, (markup, markup))
        self.open(server)
        self.browser.wait_for(CARD + ".querySelectorAll('li').length===1")
        self.assertEqual(self.texts("section[data-code=PROVA] h2"), [markup])
        self.assertEqual(self.texts("section[data-code=PROVA] .who"), [markup])
        self.assertEqual(self.texts("section[data-code=PROVA] .mail"), [markup])
        self.assertEqual(self.texts("section[data-code=PROVA] li strong"), [markup])
        self.assertEqual(self.texts("section[data-code=PROVA] li small"), [markup, markup])
        self.browser.click("section[data-code=PROVA] button.end")
        self.browser.wait_for("document.getElementById('ask').open")
        self.assertIn(markup, self.texts("#ask-text")[0])
        self.assertEqual(self.browser.value("document.querySelectorAll('img,b').length"), 0)
        self.assertEqual(self.browser.value("document.title"),
                         "1 in sessione · 1 violazione · Vantrel · Pagina della formazione")

    def test_it_fits_with_long_texts_and_many_people(self):
        server = self.server("--session", "PROVA=" + "Formazione " * 12, "--session",
                             "UN-CODICE-PIUTTOSTO-LUNGO-2026-11")
        for number in range(30):
            token = server.join(f"Maria Antonietta della Rovere-Castelbarco {number}",
                                "mariaantonietta." * 8 + f"{number}@example.org")
            server.beat(token, *[("FOCUS_VIOLATION", "Applicazione" * 10 + str(index)) for index in range(10)])
        self.open(server)
        self.browser.wait_for(CARD + ".querySelectorAll('li').length===200")
        self.assertIn("Non mostrate, meno recenti: 100", self.texts("section[data-code=PROVA] .note"))
        self.picture("trainer-page-full.png")
        self.assertTrue(
            self.browser.value("document.documentElement.scrollWidth<=document.documentElement.clientWidth"))

    def other_site(self, page):
        """A page with the address of another site, also on this computer."""
        class Site(http.server.BaseHTTPRequestHandler):
            def do_GET(self):
                self.send_response(200)
                self.send_header("Content-Type", "text/html")
                self.end_headers()
                self.wfile.write(page.encode())

            def log_message(self, *_):
                pass

        site = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Site)
        threading.Thread(target=site.serve_forever, daemon=True).start()
        self.addCleanup(site.server_close)
        self.addCleanup(site.shutdown)
        return f"http://localhost:{site.server_port}/"

    def test_another_site_in_the_same_browser_neither_shows_it_nor_ends_a_session(self):
        server = self.server("--session", "PROVA=Sicurezza")
        self.browser.call("Log.enable")
        self.browser.open(self.other_site(f"<!doctype html><iframe src='{server.address}'></iframe>"))
        self.assertIn("frame-ancestors", self.log())

        def posts(path):
            """Whether such a page can send the request at all. It may not read the reply."""
            return self.browser.value(
                f"fetch('{server.address}{path}',{{method:'POST',mode:'no-cors'}}).then(()=>true,()=>false)")

        self.assertTrue(posts("api/heartbeat"))
        self.assertEqual([exchange["path"] for exchange in server.ask("GET", "/control/received")[1]],
                         ["/api/heartbeat"])
        for path in ("trainer/end/PROVA", "control/end/PROVA", "control/reset"):
            self.assertTrue(posts(path))
        self.assertEqual(server.ask("GET", "/trainer/state")[1]["sessions"][0]["status"], "ACTIVE")
        self.assertEqual(len(server.ask("GET", "/control/received")[1]), 1)

    def log(self):
        """The browser's console, once it contains something."""
        end = time.monotonic() + headless_chromium.PATIENCE
        texts = []
        while not texts and time.monotonic() < end:
            self.browser.value("0")
            texts = [parameters["entry"]["text"] for method, parameters in self.browser.events
                     if method == "Log.entryAdded"]
        return " ".join(texts)

    def test_it_says_when_the_server_is_gone(self):
        server = Server(PROGRAM, "--session", "PROVA=Sicurezza")
        try:
            self.open(server)
        finally:
            server.close()
        self.browser.wait_for("document.getElementById('link').textContent.startsWith('Il server non risponde: dati')")
        self.assertEqual(self.texts(".head h2"), ["Sicurezza"])
        self.picture("trainer-page-server-gone.png")


if __name__ == "__main__":
    PROGRAM = sys.argv.pop(1)
    if headless_chromium.find() is None:
        print("SKIPPED: THE TRAINER'S PAGE WAS NOT TESTED. There is no chromium here.", file=sys.stderr)
        sys.exit(77)
    unittest.main()
