"""The practice server's program, and the requests that a client and a test send it."""
import datetime
import http.client
import json
import subprocess


class Server:
    def __init__(self, program, *arguments, port=0):
        self._process = subprocess.Popen([program, "--port", str(port), "--exit-with-stdin", *arguments],
                                         stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
        self.port = int(self._process.stdout.readline().rsplit(":", 1)[1])
        self.address = f"http://127.0.0.1:{self.port}/"

    def close(self):
        self._process.stdin.close()
        self._process.wait()
        self._process.stdout.close()

    def ask(self, method, path, value=None):
        connection = http.client.HTTPConnection("127.0.0.1", self.port, timeout=60)
        try:
            body, headers = (None, {}) if value is None else (json.dumps(value), {"Content-Type": "application/json"})
            connection.request(method, path, body, headers)
            reply = connection.getresponse()
            return reply.status, json.loads(reply.read())
        finally:
            connection.close()

    def join(self, name, email, code="PROVA"):
        status, reply = self.ask("POST", f"/api/sessions/{code}/join", {
            "fullName": name, "email": email, "platform": "darwin", "clientVersion": "2.0-macOS"})
        assert status == 200, reply
        return reply["userToken"]

    def beat(self, token, *violations, code="prova", **changes):
        now = datetime.datetime.now(datetime.timezone.utc).strftime("%Y-%m-%dT%H:%M:%SZ")
        status, reply = self.ask("POST", "/api/heartbeat", {
            "sessionCode": code, "userToken": token, "timestamp": now, "platform": "darwin",
            "clientVersion": "2.0-macOS", "lockdownActive": True, "meetConnected": True,
            "violations": [{"type": kind, "detail": detail, "at": now} for kind, detail in violations],
            "disconnecting": False, **changes})
        assert status == 200, reply
        return reply["sessionEnded"]

    def leave(self, token):
        self.beat(token, disconnecting=True, lockdownActive=False, meetConnected=False)
