#!/usr/bin/env python3
"""page_test.py PAGE: tests the checks themselves. Correct messages pass; each of many mistakes is refused."""
import contextlib
import copy
import io
import json
import pathlib
import sys
import tempfile
import unittest

import check_transcripts
import received_requests
import server_api
import transcript_requests
from server_api import Reply, Request, ServerApi

PAGE = ""
JSON = [("Content-Type", "application/json")]
JOIN = {"fullName": "Anna Però", "email": "anna@example.org", "platform": "darwin", "clientVersion": "2.0-macOS"}
VIOLATION = {"type": "KEY_BLOCKED", "detail": "Cmd+Tab", "at": "2024-05-17T09:41:01Z"}
HEARTBEAT = {
    "sessionCode": "prova", "userToken": "practice-1", "timestamp": "2024-05-17T09:41:07Z", "platform": "darwin",
    "clientVersion": "2.0-macOS", "lockdownActive": True, "meetConnected": True,
    "violations": [VIOLATION, {**VIOLATION, "type": "FOCUS_VIOLATION", "detail": ""}], "disconnecting": False,
}
NOTICE = {**HEARTBEAT, "lockdownActive": False, "meetConnected": False, "violations": [], "disconnecting": True}
PROBE = Request("GET", "/api/sessions/PROVA-1", [], b"")
VERSION = Request("GET", "/api/version/latest?os=macos&current=2.0-macOS", [], b"")


def join(body):
    return Request("POST", "/api/sessions/PROVA/join", JSON, json.dumps(body).encode())


def heartbeat(body):
    return Request("POST", "/api/heartbeat", JSON, json.dumps(body).encode())


def without(value, key):
    return {name: member for name, member in value.items() if name != key}


class Judge(unittest.TestCase):
    def setUp(self):
        self.api = ServerApi.read(PAGE)

    def assert_right(self, request):
        self.assertEqual(self.api.request_problems(request), [], request)

    def assert_wrong(self, request, *parts):
        problems = self.api.request_problems(request)
        self.assertTrue(problems, f"allowed: {request}")
        for part in parts:
            self.assertIn(part, " ".join(problems))

    def other_values(self, value):
        """Values of every other type."""
        return [other for other in (None, 1, 1.5, "x", True, [], {}) if type(other) is not type(value)]


class Requests(Judge):
    def test_right_ones_pass(self):
        for request in (PROBE, VERSION, join(JOIN), heartbeat(HEARTBEAT), heartbeat(NOTICE)):
            self.assert_right(request)
        self.assert_right(VERSION._replace(target="/api/version/latest?os=macos&current=2.0%20beta%26"))
        self.assert_right(VERSION._replace(target="/api/version/latest?current=2.0&os=macos"))
        self.assert_right(heartbeat({**HEARTBEAT, "violations": []}))

    def test_other_methods_and_paths_are_refused(self):
        for target in ("/api/sessions", "/api/sessions/", "/api/sessions/PROVA/", "//api/sessions/PROVA", "/api",
                       "/API/sessions/PROVA", "/xapi/sessions/PROVA", "api/sessions/PROVA", "/api/sessions/A/B"):
            self.assert_wrong(PROBE._replace(target=target), "is not on the page")
        for method in ("POST", "PUT", "HEAD", "get", "parameters", "PARAMETERS"):
            self.assert_wrong(PROBE._replace(method=method), "is not on the page")
        self.assert_wrong(join(JOIN)._replace(method="GET", headers=[], body=b""), "is not on the page")
        self.assert_wrong(heartbeat(HEARTBEAT)._replace(method="PUT"), "is not on the page")
        self.assert_wrong(VERSION._replace(target="/api/version/latestX?os=macos&current=1"), "is not on the page")
        self.assert_wrong(heartbeat(HEARTBEAT)._replace(target="/apiXheartbeat"), "is not on the page")

    def test_a_lower_case_code_in_a_path_is_refused(self):
        self.assert_wrong(PROBE._replace(target="/api/sessions/PROVa"), "path, code")
        self.assert_wrong(join(JOIN)._replace(target="/api/sessions/prova/join"), "path, code")

    def test_another_query_is_refused(self):
        for query in ("?os=linux&current=2.0", "?os=macos&current=", "?os=macos", "?current=2.0", "", "?",
                      "?os=macos&current=2.0&x=1", "?os=macos&os=macos&current=2.0", "?os=macos&current=2.0&",
                      "?os=macos&current", "?OS=macos&current=2.0"):
            self.assert_wrong(VERSION._replace(target="/api/version/latest" + query), "query")
        self.assert_wrong(PROBE._replace(target=PROBE.target + "?x=1"), "query")
        self.assert_wrong(PROBE._replace(target=PROBE.target + "?"), "query")
        self.assert_wrong(heartbeat(HEARTBEAT)._replace(target="/api/heartbeat?x=1"), "query")

    def test_other_headers_are_refused(self):
        for headers in ([], JSON * 2, [*JSON, ("Authorization", "Bearer practice-1")], [*JSON, ("Accept", "*/*")],
                        [("Content-Type", "application/json; charset=utf-8")], [("Content-Type", "text/plain")]):
            self.assert_wrong(heartbeat(HEARTBEAT)._replace(headers=headers), "headers")
        self.assert_wrong(PROBE._replace(headers=JSON), "headers")
        self.assert_wrong(VERSION._replace(headers=[("Accept", "application/json")]), "headers")

    def test_a_body_where_none_belongs_and_none_where_one_does_are_refused(self):
        self.assert_wrong(PROBE._replace(body=b"{}"), "body")
        self.assert_wrong(VERSION._replace(body=b"{}"), "body")
        self.assert_wrong(heartbeat(HEARTBEAT)._replace(body=b""), "body")

    def test_what_is_no_strict_json_is_refused(self):
        good = json.dumps(HEARTBEAT)
        for body in (b"x", b"[]", b"null", good.encode("utf-16"), good.encode() + b"}", b"\xff" + good.encode(),
                     good.replace('"disconnecting"', '"platform": "darwin", "disconnecting"').encode(),
                     good.replace("true", "NaN", 1).encode()):
            self.assert_wrong(heartbeat(HEARTBEAT)._replace(body=body), "body")

    def test_every_key_has_to_be_there_with_its_type_and_no_other(self):
        for make, good in ((join, JOIN), (heartbeat, HEARTBEAT), (heartbeat, NOTICE)):
            self.assert_wrong(make({**good, "reason": "userRequest"}), "reason")
            for key, value in good.items():
                self.assert_wrong(make(without(good, key)), key)
                for other in self.other_values(value):
                    if (key, other) not in (("sessionCode", "x"), ("userToken", "x")):
                        self.assert_wrong(make({**good, key: other}), key)
        for key, value in VIOLATION.items():
            self.assert_wrong(heartbeat({**HEARTBEAT, "violations": [VIOLATION, without(VIOLATION, key)]}), key)
            for other in self.other_values(value):
                self.assert_wrong(heartbeat({**HEARTBEAT, "violations": [{**VIOLATION, key: other}]}), key)
        self.assert_wrong(heartbeat({**HEARTBEAT, "violations": [{**VIOLATION, "count": 2}]}), "count")
        self.assert_wrong(heartbeat({**HEARTBEAT, "violations": ["Cmd+Tab"]}), "violations")

    def test_other_texts_are_refused(self):
        for key in ("fullName", "email", "clientVersion"):
            self.assert_wrong(join({**JOIN, key: ""}), key)
        for good, make in ((JOIN, join), (HEARTBEAT, heartbeat)):
            for platform in ("linux", "macos", "Darwin", ""):
                self.assert_wrong(make({**good, "platform": platform}), "platform")
        self.assert_wrong(heartbeat({**HEARTBEAT, "sessionCode": ""}), "sessionCode")
        for time in ("2024-05-17T09:41:07", "2024-05-17T09:41:07.5Z", "2024-05-17T09:41:07+00:00", "2024-05-17",
                     "2024-05-17 09:41:07Z", " 2024-05-17T09:41:07Z", "2024-05-17T09:41:07Z\n", ""):
            self.assert_wrong(heartbeat({**HEARTBEAT, "timestamp": time}), "timestamp")
            self.assert_wrong(heartbeat({**HEARTBEAT, "violations": [{**VIOLATION, "at": time}]}), "at")
        for kind in ("KEY", "key_blocked", "MEET_CLOSED", ""):
            self.assert_wrong(heartbeat({**HEARTBEAT, "violations": [{**VIOLATION, "type": kind}]}), "type")

    def test_a_notice_with_a_flag_or_a_violation_is_refused(self):
        self.assert_wrong(heartbeat({**NOTICE, "lockdownActive": True}), "lockdownActive")
        self.assert_wrong(heartbeat({**NOTICE, "meetConnected": True}), "meetConnected")
        self.assert_wrong(heartbeat({**NOTICE, "violations": [VIOLATION]}), "violations")


class Replies(Judge):
    def problems(self, request, status, value, content_type="application/json", listed=True):
        body = value if isinstance(value, bytes) else json.dumps(value).encode()
        return self.api.reply_problems(request.method, request.target, Reply(status, content_type, body), listed)

    def test_right_ones_pass(self):
        result = {"meetLink": "abc-defg-hij", "userToken": "t", "sessionTitle": ""}
        outdated = {"error": "client_outdated", "message": "m", "downloadUrl": ""}
        for request, status, value in (
                (PROBE, 200, {"status": "ACTIVE", "title": "x"}), (PROBE, 404, {"error": "session_not_found"}),
                (join(JOIN), 200, result), (join(JOIN), 400, outdated), (join(JOIN), 400, {}),
                (join(JOIN), 410, {"error": "session_ended", "message": "m"}),
                (heartbeat(HEARTBEAT), 200, {}), (heartbeat(HEARTBEAT), 200, {"sessionEnded": True}),
                (heartbeat(HEARTBEAT), 401, {"error": "unknown_token"}),
                (VERSION, 200, {}), (VERSION, 200, {"updateAvailable": True, "severity": "Required"})):
            self.assertEqual(self.problems(request, status, value), [])

    def test_wrong_ones_are_refused(self):
        result = {"meetLink": "https://a", "userToken": "t", "sessionTitle": "s"}
        cases = [(PROBE, 200, value) for value in ({}, {"status": ""}, {"status": 1}, [], b"", b"ACTIVE")]
        cases += [(join(JOIN), 200, without(result, key)) for key in result]
        cases += [(join(JOIN), 200, {**result, key: other}) for key in result for other in (1, None, True, [])]
        cases += [(join(JOIN), 400, {key: 1}) for key in ("error", "message", "downloadUrl")]
        cases += [(join(JOIN), 410, {}), (PROBE, 404, {"error": 404}), (PROBE, 404, {"error": ""})]
        cases += [(heartbeat(HEARTBEAT), 200, value) for value in ({"sessionEnded": "true"}, {"sessionEnded": 1}, [])]
        cases += [(heartbeat(HEARTBEAT), 401, {"error": "x", "sessionEnded": True})]
        cases += [(VERSION, 200, {key: value}) for key, value in (
            ("updateAvailable", "true"), ("updateAvailable", 1), ("severity", None), ("latestVersion", 2.1),
            ("releaseNotes", []), ("downloadUrl", None))]
        for case in cases:
            self.assertTrue(self.problems(*case), case)

    def test_other_statuses_types_and_exchanges_are_refused(self):
        self.assertTrue(self.problems(PROBE, 500, {}))
        self.assertEqual(self.problems(PROBE, 500, b"<html>", "text/html", listed=False), [])
        self.assertTrue(self.problems(heartbeat(HEARTBEAT), 503, {"sessionEnded": 1}, listed=False))
        self.assertTrue(self.problems(PROBE, 200, {"status": "ACTIVE"}, "text/html"))
        self.assertTrue(self.problems(PROBE._replace(target="/api/session/PROVA"), 200, {"status": "ACTIVE"}))


class Page(Judge):
    def broken(self, change):
        page = copy.deepcopy(self.api.page)
        change(page)
        return ServerApi(page).page_problems()

    def test_it_is_right(self):
        self.assertEqual(self.api.page_problems(), [])

    def test_slips_are_found(self):
        paths = ("paths", "/api/sessions/{code}")
        heartbeat_schema = ("components", "schemas", "Heartbeat")
        slips = [
            (("openapi",), "3.0.3"), (("openapi",), None), (("info", "title"), None), (("info", "licence"), "x"),
            (("path",), {}), (("paths",), {}), ((*paths, "get", "summary"), None), ((*paths, "get", "responses"), {}),
            ((*paths, "get", "responses", "2000"), {"description": "x"}),
            ((*paths, "get", "responses", "201"), {}), ((*paths, "get", "requestBody"), {
                "required": True, "content": {"application/json": {"schema": {}}}}),
            ((*paths, "patch"), {}), ((*paths, "parameters"), []),
            ((*paths, "get", "operationId"), "heartbeat"),
            (("paths", "/api/other/{x}"), self.api.page["paths"][paths[1]]),
            (("components", "parameters", "Code", "in"), "header"),
            (("components", "parameters", "Code", "required"), False),
            (("components", "schemas", "Unused"), {"type": "string"}),
            (("components", "schemas", "Time"), None),
            ((*heartbeat_schema, "type"), "objekt"), ((*heartbeat_schema, "required"), "timestamp"),
            ((*heartbeat_schema, "requird"), []), ((*heartbeat_schema, "required"), ["times"]),
            ((*heartbeat_schema, "properties", "timestamp", "$ref"), "#/components/schemas/Tim"),
            ((*heartbeat_schema, "properties", "userToken"), {"type": "string", "or a description": None}),
            (("components", "schemas", "Time", "examples"), ["today"]),
            (("components", "schemas", "VersionReply", "properties", "severity", "default"), 1),
        ]
        for place, value in slips:
            def change(page, place=place, value=value):
                *way, last = place
                for key in way:
                    page = page[key]
                if value is None:
                    del page[last]
                else:
                    page[last] = value
            self.assertTrue(self.broken(change), f"not found: {place} = {value}")


class Sources(Judge):
    TRANSCRIPT = '''\
    0.000  text         serverUrlField: "https://server.vantrel.example"
    1.000  request      GET https://server.vantrel.example/api/version/latest?os=macos&current=2.0-macOS
    1.050  reply        200 from https://server.vantrel.example/api/version/latest?os=macos&current=2.0-macOS
                        | {"updateAvailable":false}
    2.000  participant  types into serverUrlField: "http://altro.example:81//"
    3.000  setting      vt_serverURL = "http://altro.example:81//"
    3.000  request      POST http://altro.example:81//api/heartbeat
                        | Content-Type: application/json
                        | BODY
    3.050  redirect     GET http://altro.example:81/x
   12.000  request      GET https://elsewhere.example/api/sessions/PROVA
'''

    def test_a_transcript_gives_its_requests(self):
        found = transcript_requests.requests(self.TRANSCRIPT)
        self.assertEqual([entry.line for entry in found], [2, 7, 11])
        self.assertEqual(found[0].request, VERSION)
        self.assertEqual(found[1].request, Request("POST", "/api/heartbeat", JSON, b"BODY"))
        self.assertIsNone(found[2].request)
        self.assertFalse(any(entry.is_cut for entry in found))

    def test_without_an_address_the_default_server_is_asked(self):
        lines = self.TRANSCRIPT.splitlines(keepends=True)
        self.assertEqual(transcript_requests.requests("".join(lines[1:4]))[0].request, VERSION)
        self.assertIsNone(transcript_requests.requests("".join(lines[4:5] + lines[1:4]))[0].request)

    def test_the_servers_of_a_prelude_are_known(self):
        lines = self.TRANSCRIPT.splitlines(keepends=True)
        after = "    4.000  prelude      preludes/p\n" + "".join(lines[6:9])
        self.assertEqual(transcript_requests.prelude(after), "preludes/p")
        self.assertIsNone(transcript_requests.prelude(self.TRANSCRIPT))
        known = transcript_requests.bases("".join(lines[:6]))
        self.assertEqual(known, {"https://server.vantrel.example", "http://altro.example:81/"})
        self.assertIsNone(transcript_requests.requests(after)[0].request)
        self.assertEqual(transcript_requests.requests(after, known)[0].request,
                         Request("POST", "/api/heartbeat", JSON, b"BODY"))

    def test_a_cut_body_is_seen(self):
        found = transcript_requests.requests(self.TRANSCRIPT.replace("BODY", '{"clientVersion":"2… (2001 bytes)'))
        self.assertTrue(found[1].is_cut)

    def test_a_folder_is_right_when_every_request_is_and_every_exchange_is_there(self):
        base = "https://server.vantrel.example"
        lines = [f'    0.000  text         serverUrlField: "{base}"']
        for request in (PROBE, VERSION, join(JOIN), heartbeat(HEARTBEAT)):
            lines.append(f"    1.000  request      {request.method} {base}{request.target}")
            lines += [" " * 24 + f"| {name}: {value}" for name, value in request.headers]
            lines += [" " * 24 + "| " + request.body.decode()] if request.body else []
        good = "\n".join(lines) + "\n"
        self.assertEqual(self.status_of(good), 0)
        self.assertEqual(self.status_of("\n".join(lines[:2]) + "\n"), 1)
        self.assertEqual(self.status_of(good.replace('"disconnecting": false', '"disconnecting": 0')), 1)
        self.assertEqual(self.status_of(good.replace("Content-Type: application/json", "Content-Type: text/json")), 1)
        self.assertEqual(self.status_of(good + f"    2.000  request      GET {base}/api/other\n"), 1)
        self.assertEqual(self.status_of(good + "    2.000  request      GET https://else.example/api/heartbeat\n"), 1)

    def status_of(self, transcript):
        with tempfile.TemporaryDirectory() as folder:
            pathlib.Path(folder, "one.transcript").write_text(transcript, encoding="utf-8")
            with contextlib.redirect_stdout(io.StringIO()), contextlib.redirect_stderr(io.StringIO()):
                return check_transcripts.main(PAGE, folder)

    def test_what_is_no_transcript_is_refused(self):
        with self.assertRaises(ValueError):
            transcript_requests.requests("GET /api/heartbeat\n")

    def test_a_received_exchange_gives_its_request(self):
        headers = [["Accept", "*/*"], ["Content-Type", "application/json"], ["Host", "127.0.0.1"], ["X-Token", "1"]]
        exchange = {"method": "POST", "path": "/api/heartbeat", "headers": headers, "body": "però"}
        self.assertEqual(received_requests.request_of(exchange),
                         Request("POST", "/api/heartbeat", [*JSON, ("X-Token", "1")], "però".encode()))
        bytes_exchange = {**without(exchange, "body"), "bodyBase64": "AP/+"}
        self.assertEqual(received_requests.request_of(bytes_exchange).body, b"\0\xff\xfe")
        self.assertFalse(received_requests.is_the_browsers(exchange))
        self.assertTrue(received_requests.is_the_browsers({**exchange, "method": "GET", "path": "/meet/PROVA"}))


if __name__ == "__main__":
    PAGE = sys.argv.pop(1)
    unittest.main()
