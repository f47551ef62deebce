"""main.py PLAYER ROOT URL --code CODE ...: see script/check-server."""
import argparse
import json
import secrets
import sys
import time
from pathlib import Path
from typing import NamedTuple
from urllib.parse import urlsplit

import asking
import exchanges
import rehearsing

# How long --until-ended goes on, in heartbeats.
MOST_HEARTBEATS = 2000


class Row(NamedTuple):
    exchange: exchanges.Exchange
    answer: asking.Answer
    problems: list


class Check:
    def __init__(self, player, api, base):
        self._player, self._api, self._base = player, api, base
        self.rows = []

    def hold(self, exchange, fits=None):
        """Carries one exchange out and prints it with everything that is wrong. Returns its answer."""
        answer = asking.ask(exchange.method, self._base + exchange.path, exchanges.encoded(exchange.body),
                            exchange.timeout)
        shown = rehearsing.made_of(self._player, exchange.kind, answer)
        problems = self._problems(exchange, answer)
        if not (fits or exchange.fits)(shown):
            problems.append(f"not what this exchange is for: {exchange.wanted}")
        self.rows.append(Row(exchange, answer, problems))
        what = answer.error or f"{answer.status}, {len(answer.body)} bytes"
        print(f"{exchange.name}: {exchange.method} {exchange.path}\n  {what}, {answer.seconds:.2f} s")
        for line in shown:
            print(f"  client: {line}")
        for line in problems:
            print(f"  PROBLEM: {line}")
        sys.stdout.flush()
        return answer

    def _problems(self, exchange, answer):
        if answer.error:
            return [f"no reply: {answer.error}"]
        found = [f"redirected: {step}" for step in answer.redirects]
        if exchange.method == "POST" and any(step.startswith("GET") for step in answer.redirects):
            found.append("a redirect has turned the POST into a GET without its body")
        # The type alone counts; a charset beside it changes nothing for the client, which reads UTF-8.
        kind = answer.content_type.partition(";")[0].strip().lower()
        reply = server_api.Reply(answer.status, kind, answer.body)
        found += self._api.reply_problems(exchange.method, exchange.path, reply)
        if exchange.waits is not None and answer.seconds > exchange.waits:
            found.append(f"the client waits for {exchange.waits} seconds only")
        return found


def token_of(answer):
    """The participant's token of a join. Empty if the reply has none."""
    try:
        token = json.loads(answer.body)["userToken"]
    except (ValueError, KeyError, TypeError):
        return ""
    return token if isinstance(token, str) else ""


def hold_a_class(check, given):
    check.hold(exchanges.version())
    check.hold(exchanges.unknown_probe("X" + secrets.token_hex(6)))
    if given.ended:
        check.hold(exchanges.ended_probe(given.ended))
    check.hold(exchanges.probe(given.code))
    token = token_of(check.hold(exchanges.join(given.code, given.name, given.email)))
    if not token:
        print("Without a token there are no heartbeats.")
        return
    check.hold(exchanges.heartbeat("first heartbeat", given.code, token))
    check.hold(exchanges.heartbeat("heartbeat with violations", given.code, token,
                                   (("KEY_BLOCKED", "Cmd+Tab"), ("FOCUS_VIOLATION", "Anteprima"))))
    check.hold(exchanges.heartbeat("heartbeat with an unknown token", given.code, token + "-unknown"))
    if given.until_ended:
        wait_for_the_end(check, given, token)
    check.hold(exchanges.notice(given.code, token))


def wait_for_the_end(check, given, token):
    for number in range(MOST_HEARTBEATS):
        time.sleep(given.every)
        ended = []
        check.hold(exchanges.heartbeat(f"heartbeat {number + 1} until the end", given.code, token),
                   lambda shown: ended.append(exchanges.ENDS in shown) or True)
        if ended[0]:
            return


def table(rows):
    yield f"{'exchange':<34}{'status':>7}{'seconds':>9}  found"
    for exchange, answer, problems in rows:
        status = "none" if answer.status is None else answer.status
        yield f"{exchange.name:<34}{status:>7}{answer.seconds:>9.2f}  {'; '.join(problems) or 'as it should be'}"


def arguments(texts):
    parser = argparse.ArgumentParser(prog="check-server", allow_abbrev=False)
    parser.add_argument("url")
    parser.add_argument("--code", required=True)
    parser.add_argument("--ended")
    parser.add_argument("--name", default="Prova Vantrel")
    parser.add_argument("--email", default="prova@example.com")
    parser.add_argument("--until-ended", action="store_true")
    parser.add_argument("--every", type=float, default=15.0)
    given = parser.parse_args(texts)
    try:
        parts = urlsplit(given.url)
        sound = parts.scheme in ("http", "https") and parts.hostname and (parts.port or 1)
    except ValueError:
        sound = False
    if not sound:
        parser.error(f"{given.url!r} is no http or https address")
    for code in filter(None, (given.code, given.ended)):
        if any(letter.isspace() or letter in "/?#" or not letter.isascii() for letter in code):
            parser.error(f"the code {code!r} cannot stand in a path")
    return given


def main(texts):
    player, root, *rest = texts
    given = arguments(rest)
    api = server_api.ServerApi.read(Path(root, "docs/server-api.yaml"))
    check = Check(player, api, given.url.removesuffix("/"))
    if given.url.startswith("http:"):
        print("The address is not encrypted: a Mac allows that for a local network only.")
    try:
        hold_a_class(check, given)
    except rehearsing.NotPlayed as error:
        print(f"check-server: {error}", file=sys.stderr)
        return 1
    print()
    for line in table(check.rows):
        print(line)
    wrong = sum(bool(row.problems) for row in check.rows)
    print(f"{len(check.rows)} exchanges, {wrong} with something found")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.path.append(str(Path(sys.argv[2], "tests/api")))
    import server_api
    sys.exit(main(sys.argv[1:]))
