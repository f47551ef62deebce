#!/usr/bin/env python3
"""check_server_test.py PRACTICE PLAYER ROOT: script/check-server against the practice server, straight and bent."""
import json
import subprocess
import sys
import threading
import time
import unittest
import urllib.request
from pathlib import Path

PRACTICE = PLAYER = ROOT = ""
PROBE, JOIN, BEAT, VERSION = "/api/sessions/PROVA", "/api/sessions/PROVA/join", "/api/heartbeat", "/api/version/latest*"
GOOD_JOIN = {"meetLink": "abc-defg-hij", "userToken": "t", "sessionTitle": "s"}


def replaced(path, **rule):
    return {"path": path, "contentType": "application/json", **rule}


def joined(**changes):
    return replaced(JOIN, status=200, body=json.dumps({**GOOD_JOIN, **changes}))


# What is bent; the exchange in which it shows; a part of what is found there; a part of what the client makes of it, or
# nothing where the client says and shows nothing.
BENT = {
    "the probe fails": (replaced(PROBE, status=500, body="{}"), "session probe",
                        "what this exchange is for", "Codice sessione non trovato"),
    "the probe has no status": (replaced(PROBE, status=200, body="{}"), "session probe",
                                "'status' is a required property", "Codice sessione non trovato"),
    "the probe's status is a number": (replaced(PROBE, status=200, body='{"status":1}'), "session probe",
                                       "1 is not of type 'string'", "Codice sessione non trovato"),
    "the probe is a list": (replaced(PROBE, status=200, body='["ACTIVE"]'), "session probe",
                            "is not of type 'object'", "Codice sessione non trovato"),
    "the probe is called a page": (replaced(PROBE, status=200, body='{"status":"ACTIVE"}', contentType="text/html"),
                                   "session probe", "content type: 'text/html'", "sends the join"),
    "the probe leads elsewhere": ({"path": PROBE, "location": "/api/other"}, "session probe",
                                  "redirected: GET http", "Codice sessione non trovato"),
    "the probe leads in a circle": ({"path": PROBE, "location": PROBE}, "session probe",
                                    "more than 16 redirects", "[SESSION] GET error"),
    "the probe's connection is dropped": ({"path": PROBE, "dropConnection": True}, "session probe",
                                          "no reply", "[SESSION] GET error"),
    "the probe is not UTF-8": (replaced(PROBE, status=200, bodyBase64="eyJzdGF0dXMiOiLDKCJ9"), "session probe",
                               "no JSON", "Codice sessione non trovato"),
    "the probe says twice how it stands": (replaced(PROBE, status=200, body='{"status":"ACTIVE","status":"ENDED"}'),
                                           "session probe", "a key stands twice", "[SESSION] Status parsed"),
    "the probe has two megabytes": (replaced(PROBE, status=200, bodySize=2 << 20), "session probe",
                                    "more than 1048576 bytes", "[SESSION] GET error"),
    "the session is over": (replaced(PROBE, status=200, body='{"status":" ended "}'), "session probe",
                            "what this exchange is for", "Questa sessione è già terminata"),
    "the join has no token": (joined(userToken=None), "join", "None is not of type 'string'",
                              "Risposta server non valida"),
    "the join has no body": (replaced(JOIN, status=200, body=""), "join", "no JSON", "Errore server (HTTP 200)"),
    "the join is created": (replaced(JOIN, status=201, body=json.dumps(GOOD_JOIN)), "join",
                            "what this exchange is for", "Errore server (HTTP 201)"),
    "the client is too old": (replaced(JOIN, status=400, body='{"error":"client_outdated","message":"Vecchio"}'),
                              "join", "what this exchange is for", "Aggiornamento Vantrel richiesto / Vecchio / [OK]"),
    "the join is found elsewhere": ({"path": JOIN, "location": PROBE}, "join",
                                    "turned the POST into a GET", "Risposta server non valida"),
    "the heartbeat is no JSON": (replaced(BEAT, status=200, body="OK"), "first heartbeat", "no JSON", ""),
    "the heartbeat says yes in words": (replaced(BEAT, status=200, body='{"sessionEnded":"true"}'), "first heartbeat",
                                        "'true' is not of type 'boolean'", ""),
    "a refusal ends the session": (replaced(BEAT, status=401, body='{"error":"x","sessionEnded":true}'),
                                   "heartbeat with an unknown token", "what this exchange is for",
                                   "Sessione terminata dal backend"),
    "the version check is empty": (replaced(VERSION, status=204, body=""), "version check",
                                   "what this exchange is for", "[UPDATE] Check: risposta non valida"),
    "the update is one": (replaced(VERSION, status=200, body='{"updateAvailable":1}'), "version check",
                          "1 is not of type 'boolean'", "[UPDATE] Versione corrente"),
    "the version check is a page": (replaced(VERSION, status=200, body="<html>", contentType="text/html"),
                                    "version check", "content type", "[UPDATE] Check: JSON non parsabile"),
}
# These last as long as the client waits.
SLOW = {
    "the probe comes late": ({"path": PROBE, "delaySeconds": 9}, "session probe", "nothing came for 8 seconds",
                             "[SESSION] GET error"),
    "the heartbeats stall": ({"path": BEAT, "times": 1, "stallAfterHeaders": True}, "first heartbeat",
                             "nothing came for 10 seconds", "[HEARTBEAT] Errore (1/20)"),
    "the join comes in time": ({"path": JOIN, "delaySeconds": 2}, "join", "", "[SESSION] Join OK"),
}


def sections(text):
    """The lines of each exchange by its name, and the table."""
    exchanges, _, table = text.partition("\nexchange ")
    found = {}
    for line in exchanges.splitlines():
        if line.startswith("  "):
            found[name].append(line.strip())
        else:
            name = line.partition(":")[0]
            found.setdefault(name, [])
    return found, table


class CheckServer(unittest.TestCase):
    def setUp(self):
        self.server = subprocess.Popen([PRACTICE, "--port", "0", "--exit-with-stdin", "--session", "PROVA", "--session",
                                        "CHIUSA", "--status", "CHIUSA=ENDED"], stdin=subprocess.PIPE,
                                       stdout=subprocess.PIPE, text=True)
        self.addCleanup(self.end)
        self.address = self.server.stdout.readline().rpartition(" ")[2].strip()

    def end(self):
        self.server.stdin.close()
        self.server.wait()
        self.server.stdout.close()

    def control(self, path, body=None):
        data = b"" if body is None else json.dumps(body).encode()
        with urllib.request.urlopen(self.address + path, data, timeout=10) as reply:
            self.assertEqual(reply.status, 200)

    def run_it(self, *arguments):
        return subprocess.run([sys.executable, "-B", Path(ROOT, "script/wire/main.py"), PLAYER, ROOT, *arguments],
                              capture_output=True, text=True, check=False)

    def hold_bent(self, cases):
        for name, (rule, exchange, problem, client) in cases.items():
            with self.subTest(name):
                self.control("/control/reset")
                self.control("/control/reply-rule", rule)
                run = self.run_it(self.address, "--code", "prova")
                found, table = sections(run.stdout)
                problems = [line for line in found[exchange] if line.startswith("PROBLEM: ")]
                self.assertEqual(run.returncode, 1 if problem else 0, run.stdout + run.stderr)
                self.assertEqual(bool(problems), bool(problem), run.stdout)
                self.assertIn(problem, "\n".join(problems), run.stdout)
                made = [line for line in found[exchange] if line.startswith("client: ")]
                self.assertEqual(bool(made), bool(client), run.stdout)
                self.assertIn(client, "\n".join(made))
                self.assertIn(f"{exchange} ", table)
                self.assertIn(problem, table)


class Quick(CheckServer):
    def test_the_practice_server_is_as_it_should_be(self):
        run = self.run_it(self.address + "/", "--code", "prova", "--ended", "chiusa")
        self.assertEqual(run.returncode, 0, run.stdout + run.stderr)
        self.assertEqual(run.stdout.count("as it should be"), 9)
        self.assertIn("9 exchanges, 0 with something found", run.stdout)

    def test_what_is_bent_is_found(self):
        self.hold_bent(BENT)

    def test_a_class_is_held_until_the_trainer_ends_it(self):
        def end_it_soon():
            time.sleep(1.5)
            self.control("/trainer/end/PROVA")

        ender = threading.Thread(target=end_it_soon)
        ender.start()
        run = self.run_it(self.address, "--code", "PROVA", "--until-ended", "--every", "0.2")
        ender.join()
        found, _ = sections(run.stdout)
        beats = [lines for name, lines in found.items() if name.endswith(" until the end")]
        self.assertIn("client: [HEARTBEAT] Sessione terminata dal backend", beats[-1])
        self.assertNotIn("client: [HEARTBEAT] Sessione terminata dal backend", sum(beats[:-1], []))
        self.assertEqual(list(found)[-1], "disconnect notice")
        self.assertEqual(run.returncode, 0, run.stdout)

    def test_a_server_that_is_away_is_said(self):
        run = self.run_it("http://127.0.0.1:1", "--code", "PROVA")
        self.assertEqual(run.returncode, 1)
        self.assertIn("Without a token there are no heartbeats.", run.stdout)
        self.assertIn("no reply: [Errno 111] Connection refused", run.stdout)

    def test_wrong_command_lines_are_refused(self):
        for arguments in ((), (self.address,), ("ftp://a", "--code", "X"), ("http://", "--code", "X"),
                          ("http://a:x", "--code", "X"), (self.address, "--code", "A/B"),
                          (self.address, "--code", "A B"), (self.address, "--code", "È"), (self.address, "--cod", "A")):
            run = self.run_it(*arguments)
            self.assertEqual(run.returncode, 2, arguments)
            self.assertTrue(run.stderr)


class Slow(CheckServer):
    def test_what_comes_late_is_found(self):
        self.hold_bent(SLOW)


if __name__ == "__main__":
    PRACTICE, PLAYER, ROOT = sys.argv[1:4]
    unittest.main(argv=sys.argv[:1] + sys.argv[4:])
