#!/usr/bin/env python3
"""check_page.py PAGE: checks that the page is a well-formed description."""
import sys

import server_api

if __name__ == "__main__":
    api = server_api.ServerApi.read(sys.argv[1])
    problems = api.page_problems()
    for problem in problems:
        print(f"{sys.argv[1]}: {problem}", file=sys.stderr)
    if not problems:
        print(f"{len(api.operations())} exchanges, well-formed")
    sys.exit(1 if problems else 0)
