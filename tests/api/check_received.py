#!/usr/bin/env python3
"""check_received.py PAGE SOURCE: checks that the page allows every request that a practice server received.

SOURCE is a file with the reply of GET /control/received, or the address of a running server, http://HOST:PORT.
"""
import json
import pathlib
import sys
import urllib.request

import received_requests
import server_api


def read(source):
    if source.startswith("http://"):
        with urllib.request.urlopen(source.rstrip("/") + "/control/received", timeout=60) as reply:
            return json.load(reply)
    return json.loads(pathlib.Path(source).read_text(encoding="utf-8"))


def main(page, source):
    api = server_api.ServerApi.read(page)
    held = wrong = 0
    for exchange in read(source):
        if received_requests.is_the_browsers(exchange):
            continue
        problems = api.request_problems(received_requests.request_of(exchange))
        for problem in problems:
            print(f"exchange {exchange['number']}, {exchange['method']} {exchange['path']}: {problem}", file=sys.stderr)
        wrong += bool(problems)
        held += not problems
    if held + wrong == 0:
        print(f"{source}: there is no request in it", file=sys.stderr)
        return 1
    print(f"{held} of {held + wrong} requests are as the page says")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
