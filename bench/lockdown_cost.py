"""What a lockdown costs the Linux client: CPU time, wake-ups and memory while it stands, and memory over ten of
them.

lockdown_cost.py [MINUTES] [--only-one] prints two tables, or with --only-one the first. It builds nothing; first run:
script/build release vantrel vantrel-practice
"""

import pathlib
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parents[1]
sys.path.insert(0, str(ROOT / "script/unattended"))

from browser import Browser
from client import Client, until
from desktop import Desktop
from places import PROGRAM, SERVER, save_settings
from practice import Practice
from stage import CODE_FIELD, END_SCREEN, LOCKDOWN_COMPLETE, NEW_SESSION_BUTTON, Stage

CODE = "COSTO1"


def with_guards(process):
    """The process and its guards. The browser is not the client's cost."""
    found = [process]
    for folder in pathlib.Path("/proc").iterdir():
        try:
            name, _, rest = (folder / "stat").read_text().rpartition(")")
            if int(rest.split()[1]) == process and name.endswith("(vantrel-guard"):
                found.append(int(folder.name))
        except (OSError, ValueError):
            continue
    return found


def memory(process):
    """KiB. Shared memory is divided by the number of its users."""
    rollups = (pathlib.Path(f"/proc/{each}/smaps_rollup").read_text() for each in with_guards(process))
    return sum(int(line.split()[1]) for rollup in rollups for line in rollup.splitlines() if line.startswith("Pss:"))


class Cost:
    """CPU seconds and wake-ups of each thread so far."""

    def __init__(self, process):
        self.threads = {}
        for each in with_guards(process):
            for thread in pathlib.Path(f"/proc/{each}/task").iterdir():
                status = (thread / "status").read_text()
                woken = int(status.partition("\nvoluntary_ctxt_switches:")[2].split()[0])
                # Nanoseconds on a processor. The clock ticks of "stat" are too coarse for a thread.
                ran = int((thread / "schedstat").read_text().split()[0]) / 1e9
                self.threads[thread] = ((thread / "comm").read_text().strip(), ran, woken)

    def since(self, before):
        """(name, CPU seconds, wake-ups) of each thread, the busiest first."""
        none = ("", 0, 0)
        rows = [(name, ran - before.threads.get(thread, none)[1], woken - before.threads.get(thread, none)[2])
                for thread, (name, ran, woken) in self.threads.items()]
        return sorted(rows, key=lambda row: -row[1])


def print_cost(rows, seconds):
    print(f"  {'':20} {'CPU, s':>8} {'% of a core':>12} {'wake-ups a second':>18}")
    for name, ran, woken in [("all", sum(row[1] for row in rows), sum(row[2] for row in rows)), *rows]:
        print(f"  {name:20} {ran:8.3f} {ran / seconds * 100:12.3f} {woken / seconds:18.2f}")


def enter(stage, lockdowns):
    stage.fill(CODE_FIELD, CODE)
    stage.desktop.key("Return")
    if not until(lambda: stage.client.lines.count(LOCKDOWN_COMPLETE) == lockdowns, 40):
        raise RuntimeError("no lockdown")
    time.sleep(5)


def leave(stage, lockdowns):
    stage.open_status_menu()
    stage.choose_the_end()
    stage.desktop.key("Return")
    if not until(lambda: stage.client.lines.count(END_SCREEN) == lockdowns, 20):
        raise RuntimeError("no end")
    time.sleep(3)
    stage.click(NEW_SESSION_BUTTON)


def main(minutes, only_one):
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        home = folder / "home"
        home.mkdir()
        Browser(home, folder).install()
        with Desktop(ROOT) as desktop, Practice(SERVER, "--session", f"{CODE}=Una misura") as practice:
            save_settings(home, {"vt_serverURL": practice.address, "vt_fullName": "Maria Bianchi",
                                 "vt_email": "maria.bianchi@example.com"})
            with Client(PROGRAM, desktop, home, folder / "client.log") as client:
                stage = Stage(desktop, client, folder, lambda *_: None)
                process = client.process.pid
                enter(stage, 1)
                before, begun, memory_before = Cost(process), time.monotonic(), memory(process)
                time.sleep(minutes * 60)
                rows, seconds = Cost(process).since(before), time.monotonic() - begun
                print(f"{seconds / 60:.1f} minutes of a lockdown")
                print_cost(rows, seconds)
                print(f"  memory: {memory_before / 1024:.1f} MiB at its start, {memory(process) / 1024:.1f} MiB at its end",
                      flush=True)
                leave(stage, 1)
                if only_one:
                    return
                print("memory after each of ten lockdowns, MiB")
                for lockdown in range(2, 12):
                    enter(stage, lockdown)
                    leave(stage, lockdown)
                    print(f"  {memory(process) / 1024:.1f}", flush=True)


given = [argument for argument in sys.argv[1:] if argument != "--only-one"]
main(float(given[0]) if given else 10, only_one="--only-one" in sys.argv)
