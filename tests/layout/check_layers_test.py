"""The check of the layers finds the mistakes that it must find."""

import pathlib
import subprocess
import sys
import tempfile

CHECK = pathlib.Path(__file__).resolve().parents[2] / "script/check-layers"

MISTAKES = {
    "src/server/A.cpp": ['#include "session/JoinScreen.h"', "server must not know session/JoinScreen.h"],
    "src/browser/B.h": ['#include "lockdown/WindowMonitorService.h"', "browser must not know lockdown/WindowMonitorService.h"],
    "src/session/C.cpp": ['#include "platform/linux/LinuxComputer.h"', "a module of rules includes a platform implementation"],
    "src/app/D.cpp": ["#include <QWidget>", "<QWidget> is not of the standard library"],
    "src/lockdown/E.cpp": ["#include <unistd.h>", "<unistd.h> is not of the standard library"],
    "src/session/F.cpp": ["#ifdef __linux__", "conditional compilation in a module of rules"],
    "src/platform/linux/G.cpp": ['#include "server/SessionJoin.h"', "a platform must not know server/SessionJoin.h"],
    "src/platform/macos/I.mm": ['#import "session/JoinScreen.h"', "a platform must not know session/JoinScreen.h"],
    "src/platform/H.h": ["#include <xcb/xcb.h>", "a platform header includes <xcb/xcb.h>"],
    "src/platform/threads/J.h": ["#include <QObject>", "a platform header includes <QObject>"],
    "src/session/K.cpp": ['#include "platform/portable/ICUText.h"', "a module of rules includes a platform implementation"],
    "src/platform/ui/L.h": ['#include "platform/portable/ICUText.h"', "a platform header includes an implementation"],
    "src/platform/threads/M.h": ['#include "platform/ui/Window.h"', "the folder threads must not know platform/ui/Window.h"],
    "src/platform/linux/ui/N.cpp": ['#include "platform/virtual/ui/WindowState.h"', "linux must not know platform/virtual/ui/WindowState.h"],
    "src/platform/virtual/O.cpp": ['#include "platform/linux/LinuxComputer.h"', "virtual must not know platform/linux/LinuxComputer.h"],
    "src/platform/portable/P.cpp": ['#include "platform/macos/bridge/Text.h"', "portable must not know platform/macos/bridge/Text.h"],
    "src/platform/linux/x11/Q.cpp": ['#include "platform/linux/ui/LinuxWindow.h"', "the folder x11 must not know platform/linux/ui/LinuxWindow.h"],
    "src/platform/linux/ui/R.cpp": ['#include "platform/linux/LinuxComputer.h"', "the folder ui must not know platform/linux/LinuxComputer.h"],
    "src/platform/virtual/world/S.h": ['#include "platform/virtual/desktop/VirtualScreens.h"', "the folder world must not know"],
    "src/platform/macos/bridge/T.mm": ['#import "platform/macos/ui/MacWindow.h"', "the folder bridge must not know"],
    "src/platform/virtual/journal/V.h": ['#include "platform/virtual/scheduler/Moment.h"', "the folder journal must not know"],
    "src/platform/linux/novelty/U.cpp": ["", "does not know the folder novelty"],
    "practice/messages/V.cpp": ['#include "practice/state/ExchangeLog.h"', "the folder messages must not know practice/state/ExchangeLog.h"],
    "practice/exchanges/W.h": ['#include "practice/PracticeServer.h"', "the folder exchanges must not know practice/PracticeServer.h"],
    "practice/novelty/X.cpp": ["", "does not know the folder novelty"],
    "rehearsal/transcript/Y.h": ['#include "rehearsal/playing/Player.h"', "the folder transcript must not know rehearsal/playing/Player.h"],
    "src/platform/macos/ui/A.mm": ['#import "../../linux/ui/LinuxWindow.h"', "a relative include: ../../linux/ui/LinuxWindow.h"],
    "src/app/main-linux.cpp": ['#include "./platform/linux/LinuxComputer.h"', "a relative include"],
    "src/platform/virtual/B.cpp": ['#include "platform/virtual/../linux/LinuxComputer.h"', "a relative include"],
    "src/platform/virtual/C.cpp": ["#include <platform/linux/LinuxComputer.h>", "own header in angle brackets: platform/linux/LinuxComputer.h"],
    "src/platform/linux/ui/D.cpp": ['#include "LinuxWindow.h"', "an include without its folder: LinuxWindow.h"],
    "practice/state/E.cpp": ['#include "../program/HttpFront.h"', "a relative include"],
    "rehearsal/playing/F.cpp": ["#include <practice/PracticeServer.h>", "own header in angle brackets"],
    "tests/session/G.cpp": ["#include <tests/virtual/MacTest.h>", "own header in angle brackets"],
    "fuzz/H.cpp": ['#include "../tests/doubles/Double.h"', "a relative include"],
    "src/platform/linux/guard/process/I.cpp": ['#include "platform/linux/keyboard/LinuxKeyboardTaps.h"', "the folder guard/process must not know"],
    "src/platform/linux/keyboard/novelty/J.cpp": ["", "does not know the folder keyboard/novelty"],
    "src/platform/linux/K.cpp": ['#include "tests/virtual/MacTest.h"', "a platform must not know tests/virtual/MacTest.h"],
    "rehearsal/playing/L.cpp": ['#include "platform/macos/MacComputer.h"', "rehearsal must not know platform/macos/MacComputer.h"],
    "rehearsal/program/M.cpp": ['#include "platform/linux/ui/LinuxWindow.h"', "rehearsal must not know platform/linux/ui/LinuxWindow.h"],
    "rehearsal/reading/N.cpp": ['#include "session/JoinScreen.h"', "rehearsal must not know session/JoinScreen.h"],
    "rehearsal/playing/O.cpp": ['#include "app/MainMenu.h"', "rehearsal must not know app/MainMenu.h"],
    "rehearsal/playing/P.cpp": ['#include "practice/program/HttpFront.h"', "rehearsal must not know practice/program/HttpFront.h"],
    "practice/exchanges/Q.cpp": ['#include "platform/linux/LinuxComputer.h"', "practice must not know platform/linux/LinuxComputer.h"],
    "practice/state/R.cpp": ['#include "rehearsal/scenario/Scenario.h"', "practice must not know rehearsal/scenario/Scenario.h"],
    "practice/program/S.cpp": ['#include "session/JoinScreen.h"', "practice must not know session/JoinScreen.h"],
    "practice/program/T.cpp": ['#include "tests/practice/Requests.h"', "practice must not know tests/practice/Requests.h"],
    "practice/program/U.mm": ['#import "platform/macos/MacComputer.h"', "practice must not know platform/macos/MacComputer.h"],
    "rehearsal/program/V.mm": ['#import "platform/macos/MacComputer.h"', "rehearsal must not know platform/macos/MacComputer.h"],
    "src/record/X.cpp": ['#include "session/JoinScreen.h"', "record must not know session/JoinScreen.h"],
    "src/record/Y.cpp": ['#include "platform/virtual/VirtualMac.h"', "a module of rules includes a platform implementation"],
    "src/session/Z.cpp": ['#include "record/Recorder.h"', "session must not know record/Recorder.h"],
    "src/utils/W.h": ["#include <string>", "does not know the module utils"],
    "src/X.cpp": ["", "does not know the module X.cpp"],
}
ALLOWED = {
    "src/server/Allowed.h": '#include "lockdown/SessionEndReason.h"\n#include "platform/threads/Clock.h"\n#include <string>',
    "src/lockdown/Allowed.cpp": '#include "browser/BrowserLauncher.h"',
    "src/app/main-linux.cpp": '#include "platform/linux/LinuxComputer.h"',
    "src/app/main-macos.mm": '#import <AppKit/AppKit.h>\n#include "platform/macos/MacComputer.h"',
    "src/record/Allowed.cpp": '#include "platform/desktop/Spaces.h"\n#include <fstream>',
    "src/app/main-record-macos.mm": '#include "platform/macos/MacComputer.h"\n#include "record/RecordMain.h"',
    "src/app/main-linux-guard.cpp": '#include <unistd.h>\n#include "platform/linux/guard/process/KeyWatch.h"',
    "practice/PracticeServer.cpp": '#include "practice/exchanges/ApiExchanges.h"\n#include <nlohmann/json.hpp>',
    "practice/program/Allowed.cpp": '#include "practice/PracticeServer.h"\n#include <unistd.h>',
    "rehearsal/playing/Allowed.cpp": '#include "rehearsal/scenario/Scenario.h"\n#include "practice/PracticeServer.h"',
    "src/platform/Computer.h": '#include "platform/ui/Window.h"',
    "src/platform/ui/Allowed.h": '#include "platform/threads/Block.h"\n#include <functional>',
    "src/platform/linux/Allowed.cpp": '#include "platform/threads/Clock.h"\n#include "platform/linux/ui/LinuxWindow.h"\n#include <QWidget>',
    "src/platform/linux/ui/Allowed.cpp": '#include "platform/linux/x11/X11Windows.h"\n#include "platform/portable/ICUText.h"',
    "src/platform/virtual/scheduler/Allowed.h": '#include "platform/virtual/journal/Journal.h"',
    "src/platform/linux/guard/process/Allowed.cpp": '#include "platform/linux/x11/X11Connection.h"',
    "src/platform/linux/keyboard/Allowed.cpp": '#include "platform/linux/guard/process/KeyWatch.h"',
    "rehearsal/reading/Allowed.cpp": '#include "platform/portable/UTF8Validity.h"\n#include "platform/ui/Window.h"',
    "rehearsal/playing/Player.cpp": '#include "app/ApplicationMain.h"\n#include "platform/virtual/VirtualMac.h"',
    "tests/practice/Allowed.cpp": '#include "Requests.h"',
}
# Folder, ending and name of the files that may be there 40 times, and no more.
FULL = [
    ("src/session", ".h", "sources"),
    ("src/platform/macos/ui", ".mm", "sources"),
    ("practice/state", ".cpp", "sources"),
    ("rehearsal/playing", ".cpp", "sources"),
    ("tests/scenarios/join", ".yaml", "scenarios"),
]


def run(files):
    with tempfile.TemporaryDirectory() as folder:
        for name, text in files.items():
            path = pathlib.Path(folder) / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text + "\n")
        return subprocess.run([sys.executable, CHECK, folder], capture_output=True, text=True)


def main():
    for name, (text, complaint) in MISTAKES.items():
        result = run({name: text})
        assert result.returncode == 1 and complaint in result.stdout and name in result.stdout, (name, result.stdout)
    for folder, ending, what in FULL:
        files = {f"{folder}/{number}{ending}": "" for number in range(40)}
        result = run(files)
        assert result.returncode == 0 and result.stdout == "", (folder, result.stdout)
        result = run({**files, f"{folder}/40{ending}": ""})
        assert result.returncode == 1 and result.stdout == f"{folder}: 41 {what} in a folder, 40 at most\n", (folder, result.stdout)
    result = run(ALLOWED)
    assert result.returncode == 0 and result.stdout == "", result.stdout


main()
