"""main.py PLAYER LOG [--keep FILE]: see script/explain."""
import argparse
import sys
from pathlib import Path

import logs
from scenarios import Player
from search import Search

MOST_PLAYS = 500


def arguments(texts):
    parser = argparse.ArgumentParser(prog="explain", allow_abbrev=False)
    parser.add_argument("player")
    parser.add_argument("log")
    parser.add_argument("--keep")
    parser.add_argument("--plays", type=int, default=MOST_PLAYS, help=argparse.SUPPRESS)
    return parser.parse_args(texts)


def told(scenario):
    """What happened around the client, a line each."""
    for word, value in scenario.mac.items():
        yield f"the Mac: {word}: {value}"
    for rule in scenario.replies:
        yield f"the server: {rule}"
    for step in scenario.steps:
        ((word, value),) = ((word, value) for word, value in step.items() if word != "at")
        yield f"{step['at']:9.3f}  {word}: {value}"


def report(found, search, player):
    for line in told(search.best):
        print(line)
    count = search.explained
    if count == len(found):
        print(f"All {len(found)} entries are explained ({player.plays} scenarios tried).")
        return 0
    number, text = found[count]
    print(f"{count} of {len(found)} entries are explained ({player.plays} scenarios tried).")
    print(f"line {number} departs: {text}")
    played = player.play(search.best)
    if count < len(played):
        print(f"the client would have printed: {played[count][1]}")
    else:
        print("the client would have printed nothing more")
    return 1


def main(texts):
    given = arguments(texts)
    try:
        found = logs.entries(Path(given.log).read_text(encoding="utf-8", errors="replace"))
    except (OSError, ValueError) as error:
        print(f"explain: {given.log}: {error}", file=sys.stderr)
        return 2
    player = Player(given.player)
    search = Search(player, [text for _, text in found], given.plays)
    search.run()
    if given.keep:
        Path(given.keep).write_text(search.best.text() + "\n", encoding="utf-8")
    return report(found, search, player)


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
