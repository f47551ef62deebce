"""What a class meets in a browser: the page, how the browser was before, and what is done in the lockdown."""
import json
import os
import signal
import subprocess
import time
from typing import Callable, NamedTuple

from pages import VIDEO, page

MIDDLE = (720, 450)
# The field for the address in a window that the browser has opened by itself.
ADDRESS = (500, 75)


class Situation(NamedTuple):
    name: str
    title: str
    page: str
    # Takes the stage and the watcher, when the lockdown is complete.
    act: Callable
    flags: tuple = ()
    # Takes the browser and the desktop, before the client starts.
    before: Callable = lambda browser, desktop: None


def click(stage, watcher):
    watcher.note("clicks on the page")
    stage.desktop.click(*MIDDLE)
    time.sleep(6)


def click_and_escape(stage, watcher):
    click(stage, watcher)
    watcher.note("presses Escape")
    stage.desktop.key("Escape")
    time.sleep(3)


def nothing(_stage, _watcher):
    time.sleep(6)


def renderers():
    found = subprocess.run(["pgrep", "-f", "--", "--type=renderer"], capture_output=True, text=True, check=False)
    return [int(number) for number in found.stdout.split()]


def crash_the_page(_stage, watcher):
    watcher.note("the page's process ends")
    for number in renderers():
        os.kill(number, signal.SIGSEGV)
    time.sleep(6)


def open_from_outside(stage, watcher):
    watcher.note("another program opens the browser")
    subprocess.Popen(["chromium", *stage.flags], env=stage.desktop.environment, stdin=subprocess.DEVNULL,
                     stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    time.sleep(6)


def relaunch(stage, watcher):
    open_from_outside(stage, watcher)
    watcher.note("types chrome://restart into the new window")
    stage.desktop.click(*ADDRESS)
    stage.desktop.type("chrome://restart")
    stage.desktop.key("Return")
    time.sleep(12)


def two_profiles(browser, _desktop):
    profile = browser.profile
    for name in ("Default", "Profile 1"):
        (profile / name).mkdir(parents=True)
    cache = {name: {"name": shown, "active_time": time.time(), "is_using_default_name": False}
             for name, shown in (("Default", "Maria"), ("Profile 1", "Lavoro"))}
    (profile / "Local State").write_text(json.dumps(
        {"profile": {"info_cache": cache, "profiles_order": list(cache), "show_picker_on_startup": True,
                     "picker_shown": True, "last_used": "Default", "last_active_profiles": []}}))


def another_profile_is_open(browser, desktop):
    two_profiles(browser, desktop)
    browser.start(desktop, "--profile-directory=Profile 1", "--no-first-run", "about:blank")
    time.sleep(5)


def crashed_before(browser, desktop):
    running = browser.start(desktop, "--no-first-run", "about:blank")
    time.sleep(5)
    os.killpg(running.pid, signal.SIGKILL)
    running.wait()


LEAVING = "addEventListener('beforeunload', event => { event.preventDefault(); event.returnValue = 'x'; });"

SITUATIONS = [
    Situation("permission-bubble", "The page asks for camera and microphone",
              page("navigator.mediaDevices.getUserMedia({video: true, audio: true}).catch(() => 0);"),
              click_and_escape, ("--use-fake-device-for-media-stream",)),
    Situation("share-picker", "The page asks for the screen; the picker is closed with Escape",
              page("navigator.mediaDevices.getDisplayMedia({video: true}).catch(() => 0);"), click_and_escape),
    Situation("share-bar", "The screen is shared, and a bar says so",
              page("navigator.mediaDevices.getDisplayMedia({video: true}).catch(() => 0);"), click,
              ("--use-fake-ui-for-media-stream",)),
    Situation("picture-in-picture", "The page puts its video into a small window above all",
              page("video.requestPictureInPicture().catch(error => document.title = error);", VIDEO), click),
    Situation("document-in-picture", "The page opens a small window above all, as a meeting does for its controls",
              page("documentPictureInPicture.requestWindow({width: 400, height: 300});"), click),
    Situation("pop-out", "The page opens a window of its own",
              page("open('about:blank', 'x', 'width=500,height=400');"), click),
    Situation("leave-site", "The page asks before it is left; the session is ended from the status menu",
              page("document.title = 'Lezione in corso';", LEAVING), click),
    Situation("crash-page", "The page's process crashes", page(""), crash_the_page),
    Situation("profile-picker", "Two profiles, and the browser asks at its start who is there", page(""), nothing,
              before=two_profiles),
    Situation("second-profile", "The browser is open with another profile", page(""), nothing,
              before=another_profile_is_open),
    Situation("restore-bubble", "The browser crashed the last time", page(""), nothing, before=crashed_before),
    Situation("opened-from-outside", "Another program opens the browser, which shows a second window", page(""),
              open_from_outside),
    Situation("relaunch", "The browser starts itself again, as for an update", page(""), relaunch),
]
