"""The check of the layers finds what it is there to find."""

import pathlib
import subprocess
import sys
import tempfile

CHECK = pathlib.Path(__file__).resolve().parents[2] / "script/check-layers"

MISTAKES = {
    "src/server/A.cpp": ['#include "session/JoinScreen.h"', "server must not know session/JoinScreen.h"],
    "src/browser/B.h": ['#include "lockdown/WindowMonitorService.h"', "browser must not know lockdown/WindowMonitorService.h"],
    "src/session/C.cpp": ['#include "platform/linux/LinuxComputer.h"', "a room of rules includes a platform implementation"],
    "src/app/D.cpp": ["#include <QWidget>", "<QWidget> is not of the standard library"],
    "src/lockdown/E.cpp": ["#include <unistd.h>", "<unistd.h> is not of the standard library"],
    "src/session/F.cpp": ["#ifdef __linux__", "conditional compilation in a room of rules"],
    "src/platform/linux/G.cpp": ['#include "server/SessionJoin.h"', "a platform must not know server/SessionJoin.h"],
    "src/platform/macos/I.mm": ['#import "session/JoinScreen.h"', "a platform must not know session/JoinScreen.h"],
    "src/platform/H.h": ["#include <xcb/xcb.h>", "a platform header includes <xcb/xcb.h>"],
}
ALLOWED = {
    "src/server/Allowed.h": '#include "lockdown/SessionEndReason.h"\n#include "platform/Clock.h"\n#include <string>',
    "src/lockdown/Allowed.cpp": '#include "browser/BrowserLauncher.h"',
    "src/app/main-linux.cpp": '#include "platform/linux/LinuxComputer.h"',
    "src/app/main-macos.mm": '#import <AppKit/AppKit.h>\n#include "platform/macos/MacComputer.h"',
    "src/platform/linux/Allowed.cpp": '#include "platform/Clock.h"\n#include <QWidget>',
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
