#!/usr/bin/env python3
"""practice_test.py PROGRAM PAGE: checks the practice server's replies, including refusals, against the page."""
import http.client
import json
import pathlib
import subprocess
import sys
import tempfile
import unittest

import check_received
import received_requests
from server_api import Reply, ServerApi

PROGRAM = PAGE = ""
SESSIONS = """
sessions:
  - {code: PROVA, title: "Sicurezza però"}
  - {code: ATTESA, status: WAITING}
  - {code: CHIUSA, status: ENDED}
  - {code: FUORI, meet-link: abc-defg-hij}
"""
JOIN = {"fullName": "Anna Però", "email": "anna@example.org", "platform": "darwin", "clientVersion": "2.0-macOS"}
VERSION = "/api/version/latest?os=macos&current=2.0-macOS"


def heartbeat(token, **changes):
    return {"sessionCode": "prova", "userToken": token, "timestamp": "2024-05-17T09:41:07Z", "platform": "darwin",
            "clientVersion": "2.0-macOS", "lockdownActive": True, "meetConnected": True,
            "violations": [{"type": "KEY_BLOCKED", "detail": "Cmd+Tab", "at": "2024-05-17T09:41:01Z"}],
            "disconnecting": False, **changes}


class PracticeServer(unittest.TestCase):
    def setUp(self):
        self.api = ServerApi.read(PAGE)
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.seen = set()

    def start(self, more=""):
        file = self.folder / "classes.yaml"
        file.write_text(SESSIONS + more, encoding="utf-8")
        process = subprocess.Popen([PROGRAM, "--port", "0", "--exit-with-stdin", "--config", file],
                                   stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)

        def end():
            process.stdin.close()
            process.wait()
            process.stdout.close()

        self.addCleanup(end)
        self.port = int(process.stdout.readline().rsplit(":", 1)[1])

    def ask(self, method, target, value=None):
        connection = http.client.HTTPConnection("127.0.0.1", self.port, timeout=60)
        self.addCleanup(connection.close)
        body, headers = (None, {}) if value is None else (json.dumps(value), {"Content-Type": "application/json"})
        connection.request(method, target, body, headers)
        reply = connection.getresponse()
        return Reply(reply.status, reply.getheader("Content-Type"), reply.read())

    def hold(self, status, method, target, value=None):
        """Checks the reply's status, and the reply against the page. Returns its value."""
        reply = self.ask(method, target, value)
        self.assertEqual(reply.status, status, reply)
        self.assertEqual(self.api.reply_problems(method, target, reply, listed=True), [], reply)
        self.seen.add((method.lower(), self.template(target), str(status)))
        return json.loads(reply.body)

    @staticmethod
    def template(target):
        parts = target.partition("?")[0].split("/")
        if parts[2] == "sessions":
            parts[3] = "{code}"
        return "/".join(parts)

    def test_every_reply_and_every_status_of_the_page(self):
        self.start()
        for code, status in (("PROVA", "ACTIVE"), ("ATTESA", "WAITING"), ("CHIUSA", "ENDED")):
            self.assertEqual(self.hold(200, "GET", f"/api/sessions/{code}")["status"], status)
        self.hold(404, "GET", "/api/sessions/ALTRA")

        token = self.hold(200, "POST", "/api/sessions/PROVA/join", JOIN)["userToken"]
        self.assertEqual(self.hold(200, "POST", "/api/sessions/FUORI/join", JOIN)["meetLink"], "abc-defg-hij")
        self.hold(404, "POST", "/api/sessions/ALTRA/join", JOIN)
        self.hold(410, "POST", "/api/sessions/CHIUSA/join", JOIN)
        self.hold(400, "POST", "/api/sessions/PROVA/join", {**JOIN, "email": ""})

        self.assertIs(self.hold(200, "POST", "/api/heartbeat", heartbeat(token))["sessionEnded"], False)
        self.hold(400, "POST", "/api/heartbeat", {})
        self.hold(401, "POST", "/api/heartbeat", heartbeat("practice-9"))
        self.hold(403, "POST", "/api/heartbeat", heartbeat(token, sessionCode="ATTESA"))
        self.assertEqual(self.ask("POST", "/trainer/end/PROVA").status, 200)
        self.assertIs(self.hold(200, "POST", "/api/heartbeat", heartbeat(token))["sessionEnded"], True)
        notice = heartbeat(token, disconnecting=True, lockdownActive=False, meetConnected=False, violations=[])
        self.hold(200, "POST", "/api/heartbeat", notice)
        self.assertEqual(self.hold(200, "GET", "/api/sessions/PROVA")["status"], "ENDED")

        self.assertEqual(self.hold(200, "GET", VERSION), {"updateAvailable": False})
        self.hold(400, "GET", "/api/version/latest?os=macos")

        listed = {(method, template, status) for template, method, _ in self.api.operations()
                  for status in self.api.page["paths"][template][method]["responses"] if status != "default"}
        self.assertEqual(self.seen, listed)

    def test_an_update_of_each_severity(self):
        for severity in ("info", "recommended", "required", "Required", ""):
            self.start(f"version: {{latest: '2.1', severity: '{severity}', release-notes: Note, "
                       "download-url: 'http://a'}")
            self.assertEqual(self.hold(200, "GET", VERSION),
                             {"updateAvailable": True, "severity": severity, "latestVersion": "2.1",
                              "releaseNotes": "Note", "downloadUrl": "http://a"})

    def test_the_refusal_of_an_old_client(self):
        self.start("version: {minimum: '2.1', minimum-message: Vecchia, download-url: 'http://a'}")
        self.assertEqual(self.hold(400, "POST", "/api/sessions/PROVA/join", JOIN),
                         {"error": "client_outdated", "message": "Vecchia", "downloadUrl": "http://a"})

    def test_what_it_received_is_held_against_the_page(self):
        self.start()
        token = json.loads(self.ask("POST", "/api/sessions/PROVA/join", JOIN).body)["userToken"]
        self.ask("POST", "/api/heartbeat", heartbeat(token))
        self.ask("GET", VERSION)
        self.ask("GET", "/api/sessions/PROVA")
        self.ask("GET", "/meet/PROVA")
        address = f"http://127.0.0.1:{self.port}"
        received = check_received.read(address)
        self.assertEqual([self.api.request_problems(received_requests.request_of(exchange))
                          for exchange in received[:4]], [[]] * 4)
        self.assertEqual(check_received.main(PAGE, address), 0)
        self.ask("POST", "/api/heartbeat", heartbeat(token, reason="userRequest"))
        self.assertEqual(check_received.main(PAGE, address), 1)

    def test_nothing_received_is_not_taken_for_all_well(self):
        self.start()
        self.assertEqual(check_received.main(PAGE, f"http://127.0.0.1:{self.port}"), 1)


if __name__ == "__main__":
    PROGRAM, PAGE = sys.argv[1:3]
    unittest.main(argv=sys.argv[:1] + sys.argv[3:])
