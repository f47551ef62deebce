"""What a lockdown costs the Linux client: CPU time, wake-ups and memory while it stands, and memory over ten of
them.

lockdown_cost.py [MINUTES] prints two tables. It builds nothing; first run: script/build release vantrel
vantrel-practice
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
TICKS = 100


def descendants(process):
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


def cost(process):
    """(CPU seconds, wake-ups, KiB of memory). Shared memory is divided by the number of its users."""
    cpu = woken = memory = 0
    for each in descendants(process):
        fields = pathlib.Path(f"/proc/{each}/stat").read_text().rpartition(")")[2].split()
        cpu += (int(fields[11]) + int(fields[12])) / TICKS
        for thread in pathlib.Path(f"/proc/{each}/task").iterdir():
            for line in (thread / "status").read_text().splitlines():
                if line.startswith("voluntary_ctxt_switches"):
                    woken += int(line.split()[1])
        for line in pathlib.Path(f"/proc/{each}/smaps_rollup").read_text().splitlines():
            if line.startswith("Pss:"):
                memory += int(line.split()[1])
    return cpu, woken, memory


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


def main(minutes):
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
                cpu, woken, memory = cost(process)
                time.sleep(minutes * 60)
                cpu_end, woken_end, memory_end = cost(process)
                seconds = minutes * 60
                print(f"{minutes:g} minutes of a lockdown")
                print(f"  CPU          {cpu_end - cpu:.2f} s, {(cpu_end - cpu) / seconds * 100:.2f} % of a core")
                print(f"  wake-ups     {(woken_end - woken) / seconds:.1f} a second")
                print(f"  memory       {memory / 1024:.1f} MiB at its start, {memory_end / 1024:.1f} MiB at its end",
                      flush=True)
                leave(stage, 1)
                print("memory after each of ten lockdowns, MiB")
                for lockdown in range(2, 12):
                    enter(stage, lockdown)
                    leave(stage, lockdown)
                    print(f"  {cost(process)[2] / 1024:.1f}", flush=True)


main(float(sys.argv[1]) if len(sys.argv) > 1 else 10)
