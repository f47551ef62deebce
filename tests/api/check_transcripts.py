#!/usr/bin/env python3
"""check_transcripts.py PAGE FOLDER: checks that the page allows every request in the folder's transcripts."""
import collections
import pathlib
import sys

import server_api
import transcript_requests


def bases_of_prelude(path, text):
    """The servers that the client knows from what the scenario begins with."""
    name = transcript_requests.prelude(text)
    if name is None:
        return set()
    files = (folder / f"{name}.transcript" for folder in (path.parent, path.parent.parent))
    return transcript_requests.bases(next(file for file in files if file.exists()).read_text(encoding="utf-8"))


def has_typed_slashes(request):
    """A code goes into the address as it was typed. The page has no path for one with slashes: a server answers 404."""
    return request.method == "GET" and request.target.startswith("/api/sessions/") and request.target.count("/") > 3


def main(page, folder):
    api = server_api.ServerApi.read(page)
    counts = collections.Counter()
    wrong = cut = slashes = 0
    for path in sorted(pathlib.Path(folder).rglob("*.transcript")):
        text = path.read_text(encoding="utf-8")
        for found in transcript_requests.requests(text, bases_of_prelude(path, text)):
            if found.request is None:
                problems = ["the address is under no server that the client was given"]
            elif found.is_cut:
                cut += 1
                print(f"{path}:{found.line}: NOT CHECKED, the transcript holds only the beginning of the body")
                continue
            elif has_typed_slashes(found.request):
                slashes += 1
                continue
            else:
                problems = api.request_problems(found.request)
                counts[api.operation_name(found.request)] += 1
            for problem in problems:
                print(f"{path}:{found.line}: {found.address}: {problem}", file=sys.stderr)
            wrong += bool(problems)
    for _, _, name in api.operations():
        print(f"{name}: {counts[name]} requests")
        if counts[name] == 0:
            print(f"no transcript holds a request of {name}", file=sys.stderr)
            wrong += 1
    print(f"{wrong} wrong, {cut} not checked, {slashes} with a slash that a participant typed into the code")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
