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
}
ALLOWED = {
    "src/server/Allowed.h": '#include "lockdown/SessionEndReason.h"\n#include "platform/threads/Clock.h"\n#include <string>',
    "src/lockdown/Allowed.cpp": '#include "browser/BrowserLauncher.h"',
    "src/app/main-linux.cpp": '#include "platform/linux/LinuxComputer.h"',
    "src/app/main-macos.mm": '#import <AppKit/AppKit.h>\n#include "platform/macos/MacComputer.h"',
    "src/app/main-linux-keyboard-guard.cpp": '#include <unistd.h>\n#include "platform/linux/keyboard/guard/KeyboardWatch.h"',
    "practice/PracticeServer.cpp": '#include "practice/exchanges/ApiExchanges.h"\n#include <nlohmann/json.hpp>',
    "practice/program/Allowed.cpp": '#include "practice/PracticeServer.h"\n#include <unistd.h>',
    "rehearsal/playing/Allowed.cpp": '#include "rehearsal/scenario/Scenario.h"\n#include "practice/PracticeServer.h"',
    "src/platform/Computer.h": '#include "platform/ui/Window.h"',
    "src/platform/ui/Allowed.h": '#include "platform/threads/Block.h"\n#include <functional>',
    "src/platform/linux/Allowed.cpp": '#include "platform/threads/Clock.h"\n#include "platform/linux/ui/LinuxWindow.h"\n#include <QWidget>',
    "src/platform/linux/ui/Allowed.cpp": '#include "platform/linux/x11/X11Windows.h"\n#include "platform/portable/ICUText.h"',
    "src/platform/virtual/scheduler/Allowed.h": '#include "platform/virtual/journal/Journal.h"',
    "src/platform/linux/keyboard/guard/Allowed.cpp": '#include "platform/linux/x11/X11Connection.h"',
}


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
    result = run(ALLOWED)
    assert result.returncode == 0 and result.stdout == "", result.stdout


main()
