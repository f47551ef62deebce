"""read_recording_test.py READER PLAYED: script/read-recording marks nothing in what the virtual Mac plays, and each
recording that is bent on purpose."""

import copy
import json
import pathlib
import subprocess
import sys
import tempfile

READER, PLAYED = sys.argv[1:]
SEEDS = range(8)


def played(seed):
    text = subprocess.run([PLAYED, str(seed)], check=True, capture_output=True, text=True).stdout
    return [line for line in text.splitlines() if line.startswith("{")]


def read(text):
    with tempfile.TemporaryDirectory() as folder:
        path = pathlib.Path(folder) / "recording"
        path.write_text(text, encoding="utf-8")
        result = subprocess.run([sys.executable, "-B", READER, path], capture_output=True, text=True)
    return result.returncode, result.stdout, result.stderr


def text_of(looks):
    return "".join(json.dumps(look) + "\n" for look in looks)


def renumbered(looks):
    return [{**look, "line": number} for number, look in enumerate(looks, 1)]


def without(cause):
    """Without the lines of that notice, as if they had never come."""
    return lambda looks: renumbered(look for look in looks if look["cause"] != cause)


def every(change):
    """Changes each look from the middle on."""
    def bend(looks):
        for look in looks[len(looks) // 2:]:
            change(look)
        return looks
    return bend


def at_the_end(change):
    def bend(looks):
        change(looks[-1])
        return looks
    return bend


def uptime_back(looks):
    looks[20]["uptime"] = looks[19]["uptime"] - 0.25
    return looks


def pause(looks):
    for look in looks[20:]:
        look["uptime"] += 5
        look["time"] += 5
    return looks


def primary_elsewhere(look):
    look["screens"][0]["frame"][:2] = [10, 0]
    look["main-screen"] = look["screens"][0]


def one_place(look):
    look["screens"].append({"name": "Altro", "frame": [0, 0, 800, 600]})


def foreign_main(look):
    look["main-screen"] = {"name": "Altro", "frame": [0, 0, 800, 600]}


def windows(look):
    return look["windows"] or []


def first_of(looks, name):
    """The number of an application's window, and its looks."""
    found = [(look, window) for look in looks for window in windows(look) if window["owner"] == name]
    return found[0][1]["number"], [look for look, window in found if window["number"] == found[0][1]["number"]]


def order_kept(looks):
    """The application in front changes, the list does not."""
    chrome = next(look["front"] for look in looks if look["front"] and look["front"]["name"] == "Google Chrome")
    both = [look for look in looks if look["front"] and look["front"]["name"] == "Note" and
            {"Note", "Google Chrome"} <= {window["owner"] for window in windows(look) if window["onscreen"]} and
            windows(look)[0]["owner"] == "Note"]
    both[1]["front"] = chrome
    return looks


def comes_back(looks):
    number, where = first_of(looks, "Google Chrome")
    for look in where[4:7]:
        look["windows"] = [window for window in look["windows"] if window["number"] != number]
    return looks


def other_process(looks):
    number, where = first_of(looks, "Google Chrome")
    for look in where[4:]:
        for window in look["windows"]:
            if window["number"] == number:
                window["process"] = 4711
    return looks


def twice(looks):
    _, where = first_of(looks, "Google Chrome")
    where[3]["windows"].append(copy.deepcopy(where[3]["windows"][0]))
    return looks


def false_flag(looks):
    _, where = first_of(looks, "Google Chrome")
    where[3]["windows"][0]["onscreen"] = False
    return looks


def full_screens(looks):
    return [window for look in looks for window in windows(look) if window["bounds"] == [0, 0, 1440, 900]]


def narrower(looks):
    for window in full_screens(looks):
        window["bounds"][2] -= 2
    return looks


def below_a_notch(looks):
    for window in full_screens(looks):
        window["bounds"][1:] = [32, 1440, 868]
    return looks


def no_notice_of_return(looks):
    """The notices of the swipes are missing, that of the way to full screen is not."""
    notices = [look for look in looks if look["cause"] == "space"]
    return renumbered(look for look in looks if look not in notices[1:3])


def cut_line(looks):
    del looks[30]
    return looks


# How a recording is bent, and a mark that must be among those found.
BENDS = {
    "the uptime goes back": (uptime_back, "the uptime goes back by 0.250 s"),
    "the calendar is set": (every(lambda look: look.update(time=look["time"] - 3600)), "the calendar goes back"),
    "nothing for five seconds": (pause, "nothing was written for 5."),
    "a line is missing": (cut_line, "a line is missing"),
    "no primary display": (every(primary_elsewhere), "the first display is not at 0 0"),
    "two displays at one place": (every(one_place), "two displays are at one place"),
    "a main screen of its own": (at_the_end(foreign_main), "the main screen is none of the displays"),
    "no notice of the displays": (without("screens"), "the displays change without a notice"),
    "no notice of any Space": (without("space"), "goes to full screen without a notice"),
    "no notice of the swipes": (no_notice_of_return, "comes or goes without a notice"),
    "the list does not follow the front": (order_kept, "comes to the front, and a window of Note stays before its own"),
    "a full screen that is too narrow": (narrower, "not of its display's size"),
    "a full screen below a notch": (below_a_notch, "not of its display's size"),
    "a number comes back": (comes_back, "comes back"),
    "a number changes hands": (other_process, "changes its process"),
    "a window twice": (twice, "is twice in the list"),
    "a flag that is false": (false_flag, "is said not to be on the screen"),
}


def main():
    for seed in SEEDS:
        lines = played(seed)
        status, said, errors = read("\n".join(lines) + "\n")
        assert status == 0 and said.endswith(", 0 marked\n") and said.count("\n") == 1, (seed, said, errors)
    looks = [json.loads(line) for line in played(0)]
    assert len(looks) > 100 and {look["cause"] for look in looks} == {"start", "time", "space", "screens"}
    assert read(text_of(looks))[0] == 0
    for name, (bend, mark) in BENDS.items():
        status, said, errors = read(text_of(bend(copy.deepcopy(looks))))
        assert status == 1 and mark in said, (name, status, said, errors)
    broken = text_of(looks).splitlines(keepends=True)
    broken[7] = broken[7][:40] + "\n"
    status, said, _ = read("".join(broken))
    assert status == 1 and "line 8 is no look" in said, said
    # Control-C in the middle of a line.
    status, said, _ = read(text_of(looks)[:-20])
    assert status == 0 and said.startswith(f"{len(looks) - 1} looks "), said
    assert read("")[0] == 2
    print(f"{len(SEEDS)} recordings without a mark, {len(BENDS) + 1} bent ones, all of them marked")


main()
