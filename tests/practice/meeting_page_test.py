#!/usr/bin/env python3
"""meeting_page_test.py PROGRAM: the meeting's page in a real browser, and what it reports about itself.

Saves pictures in the current folder. Exits with 77 if there is no Chromium.
"""
import pathlib
import sys
import time
import unittest

import headless_chromium
from practice_server import Server

PROGRAM = ""
PATIENCE = 60  # Seconds; long enough that only a hang reaches it.
FULL_SCREEN = {"width": 1440, "height": 900, "fullScreen": False, "visible": True, "focused": True}
# A camera with a moving picture and a microphone that beeps, and a person who allows both.
DEVICES, ALLOWED = "--use-fake-device-for-media-stream", "--use-fake-ui-for-media-stream"
DEVICE_REPORTS = 4  # Camera and microphone, each granted and then live.
NO_MODIFIER = {"ctrl": False, "shift": False, "alt": False, "meta": False, "repeat": False}


def key(name, code, **changes):
    return {"kind": "key", "key": name, "code": code, **NO_MODIFIER, **changes}


def text(value):
    return {"kind": "text", "text": value}


def view(kind="view", **changes):
    return {"kind": kind, **FULL_SCREEN, **changes}


class MeetingPage(unittest.TestCase):
    def setUp(self):
        self.server = Server(PROGRAM, "--session", "PROVA=Sicurezza sul lavoro, modulo 1", "--session", "IERI=Privacy",
                             "--status", "IERI=ENDED")
        self.addCleanup(self.server.close)
        self.browser = headless_chromium.HeadlessChromium(1440, 900, DEVICES, ALLOWED)
        self.addCleanup(lambda: self.browser.close())
        self.browser.call("Runtime.enable")
        self.browser.call("Log.enable")
        # The focus would otherwise come some time after the page.
        self.browser.call("Emulation.setFocusEmulationEnabled", enabled=True)

    def open(self, path="meet/PROVA"):
        """Opens the page and waits until it has its devices, so that what comes after has its numbers."""
        self.browser.open(self.server.address + path)
        self.browser.wait_for("document.readyState==='complete'&&document.getElementById('clock')!==null")
        self.browser.wait_for("document.querySelectorAll('[data-state=live]').length==="
                              "document.querySelectorAll('#camera,#microphone').length")

    def listed(self):
        status, reports = self.server.ask("GET", "/control/reports")
        self.assertEqual(status, 200)
        return reports

    def reported(self, devices=False):
        """Without what the server adds: what is told of the devices, or all the rest."""
        return [{name: value for name, value in report.items() if name not in ("time", "session", "page", "number")}
                for report in self.listed() if (report["kind"] == "device") == devices]

    def reports(self, count, devices=DEVICE_REPORTS):
        """The reports of one page without its devices' ones, once there are that many of both."""
        self.wait_until(lambda: len(self.listed()) >= count + devices)
        self.assertEqual([report["number"] for report in self.listed()], list(range(1, count + devices + 1)))
        return self.reported()

    def wait_until(self, true):
        end = time.monotonic() + PATIENCE
        while not true() and time.monotonic() < end:
            time.sleep(0.02)

    def complaints(self):
        """The page's console, without the browser's own message about a server that is gone."""
        self.browser.value("0")
        logged = [parameters["entry"]["text"] for method, parameters in self.browser.events
                  if method == "Log.entryAdded"]
        return [method for method, _ in self.browser.events
                if method in ("Runtime.exceptionThrown", "Runtime.consoleAPICalled")] + [
                    line for line in logged if not line.startswith("Failed to load resource: net::ERR_CONNECTION")]

    def type(self, letters):
        for letter in letters:
            self.browser.press(letter, f"Key{letter.upper()}" if letter.isascii() else "", letter)

    def picture(self, name):
        self.browser.picture(pathlib.Path(name))

    def test_it_reports_what_is_typed_and_every_key_in_order(self):
        self.server.join("Anna Però", "anna.pero@example.org")
        self.open("meet/prova?utm=1")
        self.assertEqual(self.browser.value("document.activeElement.placeholder"), "Scrivi un messaggio")
        self.type("sì")
        self.browser.press("Enter", "Enter", "\r")
        self.type("Posso")
        self.browser.press("Q", "KeyQ", modifiers=4 | 8)
        self.browser.press("Tab", "Tab", modifiers=1)
        self.browser.press("ArrowLeft", "ArrowLeft", modifiers=2)
        expected = [view("opened"), key("s", "KeyS"), text("s"), key("ì", ""), text("sì"), key("Enter", "Enter"),
                    {"kind": "message", "text": "sì"}]
        for index, letter in enumerate("Posso"):
            expected += [key(letter, f"Key{letter.upper()}"), text("Posso"[:index + 1])]
        expected += [key("Q", "KeyQ", shift=True, meta=True), key("Tab", "Tab", alt=True),
                     key("ArrowLeft", "ArrowLeft", ctrl=True)]
        self.assertEqual(self.reports(len(expected)), expected)
        self.assertEqual(self.browser.value("document.querySelector('li.own').lastChild.data"), "sì")
        self.assertEqual(self.browser.value("document.querySelector('input').value"), "Posso")
        self.picture("meeting-page.png")
        self.assertEqual({(report["session"], report["page"])
                          for report in self.server.ask("GET", "/control/reports")[1]}, {("PROVA", 1)})
        # The record contains the page itself and none of its reports.
        self.assertEqual([(exchange["method"], exchange["path"])
                          for exchange in self.server.ask("GET", "/control/received")[1]],
                         [("POST", "/api/sessions/PROVA/join"), ("GET", "/meet/prova?utm=1")])
        self.assertEqual(self.complaints(), [])

    def test_it_reports_a_key_that_is_held_down(self):
        self.open()
        for repeat in (False, True, True):
            self.browser.call("Input.dispatchKeyEvent", type="rawKeyDown", key="ArrowUp", code="ArrowUp",
                              autoRepeat=repeat)
        self.assertEqual(self.reports(4)[1:],
                         [key("ArrowUp", "ArrowUp", repeat=repeat) for repeat in (False, True, True)])

    def test_it_reports_its_size_whether_it_is_full_screen_and_whether_it_is_seen(self):
        self.open()
        self.browser.resize(800, 600)
        small = {"width": 800, "height": 600}
        self.assertEqual(self.reports(2), [view("opened"), view(**small)])
        self.picture("meeting-page-small.png")
        self.browser.resize(1440, 900)
        self.reports(3)
        for count, call in ((4, "documentElement.requestFullscreen()"), (5, "exitFullscreen()")):
            self.browser.call("Runtime.evaluate", expression="document." + call, userGesture=True, awaitPromise=True)
            self.reports(count)
        self.assertEqual(self.reports(5)[2:], [view(), view(fullScreen=True), view()])

        # Another page comes in front of it, and goes again.
        self.browser.call("Emulation.setFocusEmulationEnabled", enabled=False)
        with self.browser.another_page():
            self.browser.wait_for("document.visibilityState==='hidden'")
        self.browser.wait_for("document.visibilityState==='visible'&&document.hasFocus()")
        self.wait_until(lambda: len(self.reported()) > 5 and self.reported()[-1] == view())
        self.assertEqual(self.reported()[-1], view())
        self.assertTrue(any(not report["visible"] and not report["focused"] for report in self.reported()[5:]))

    def test_it_has_camera_and_microphone_and_shows_both(self):
        self.open()
        self.reports(1)
        told = self.reported(devices=True)
        self.assertEqual({(report["device"], report["state"]) for report in told},
                         {(device, state) for device in ("camera", "microphone") for state in ("granted", "live")})
        for device in ("camera", "microphone"):
            self.assertEqual([report["state"] for report in told if report["device"] == device], ["granted", "live"])
        self.assertTrue(all(report["detail"] for report in told))
        self.assertEqual(self.browser.value("document.querySelector('.devices').innerText"),
                         "Fotocamera: attiva\nMicrofono: attivo")
        self.assertGreater(self.browser.value("document.getElementById('self').videoWidth"), 0)
        self.browser.wait_for("document.getElementById('level').value>0")
        self.picture("meeting-page-devices.png")
        self.browser.value("document.getElementById('self').srcObject.getTracks()[0].dispatchEvent(new Event('ended'))")
        self.wait_until(lambda: self.reported(devices=True)[-1]["state"] == "ended")
        self.assertEqual(self.reported(devices=True)[-1]["device"], "camera")
        self.assertEqual(self.complaints(), [])

    def test_it_shows_a_camera_that_is_refused_and_has_the_microphone_all_the_same(self):
        self.browser.close()
        self.browser = headless_chromium.HeadlessChromium(1440, 900, DEVICES)
        for name, setting in (("camera", "denied"), ("microphone", "granted")):
            self.browser.call("Browser.setPermission", permission={"name": name}, setting=setting)
        self.browser.open(self.server.address + "meet/PROVA")
        self.browser.wait_for("document.querySelector('#microphone[data-state=live]')!==null&&"
                              "document.querySelector('#camera[data-state=refused]')!==null")
        self.assertEqual(self.browser.value("document.getElementById('camera').innerText"), "Fotocamera: rifiutata")
        self.reports(1, devices=3)
        refused = [report for report in self.reported(devices=True) if report["device"] == "camera"]
        self.assertEqual([(report["state"], report["detail"]) for report in refused],
                         [("refused", "NotAllowedError: Permission denied")])

    def test_a_reload_is_another_page(self):
        self.open()
        self.type("a")
        self.reports(3)
        self.browser.call("Page.reload")
        self.wait_until(lambda: any(report["page"] == 2 for report in self.listed()))
        self.assertEqual([(report["number"], report["kind"]) for report in self.listed() if report["page"] == 2][:1],
                         [(1, "opened")])

    def test_it_loses_what_it_reports_while_the_server_is_away_and_goes_on(self):
        self.open()
        self.reports(1)
        self.server.close()
        self.type("ab")
        self.assertEqual(self.browser.value("document.querySelector('input').value"), "ab")
        self.browser.wait_for("!underWay&&waiting.length===0")
        again = Server(PROGRAM, "--port", str(self.server.port))
        self.addCleanup(again.close)
        self.type("c")
        self.wait_until(lambda: len(again.ask("GET", "/control/reports")[1]) >= 2)
        self.assertEqual([(report["number"], report["kind"]) for report in again.ask("GET", "/control/reports")[1]],
                         [(10, "key"), (11, "text")])
        self.assertEqual(self.complaints(), [])

    def test_many_keys_at_once_arrive_all_and_in_order(self):
        self.open()
        letters = "".join(chr(ord("a") + number * 7 % 26) for number in range(200))
        self.browser.value(
            "(()=>{const field=document.querySelector('input');for(const letter of '" + letters + "'){"
            "field.dispatchEvent(new KeyboardEvent('keydown',{key:letter,bubbles:true}));"
            "field.value+=letter;field.dispatchEvent(new Event('input'));}})()")
        reports = self.reports(401)
        self.assertEqual("".join(report["key"] for report in reports if report["kind"] == "key"), letters)
        self.assertEqual(reports[-1], text(letters))

    def test_it_reports_the_last_moment_before_it_goes(self):
        self.open()
        self.reports(1)
        self.browser.value("for(const letter of 'xyz')dispatchEvent(new KeyboardEvent('keydown',{key:letter}));"
                           "location.href='about:blank'")
        keys = lambda: [report["key"] for report in self.reported() if report["kind"] == "key"]
        self.wait_until(lambda: len(keys()) >= 3)
        self.assertEqual(keys(), ["x", "y", "z"])

    def test_the_page_of_an_ended_session_has_no_field_and_reports_all_the_same(self):
        self.open("meet/IERI")
        self.assertEqual(self.browser.value("document.querySelectorAll('input').length"), 0)
        self.browser.press("Escape", "Escape")
        self.assertEqual(self.reports(2, devices=0), [view("opened"), key("Escape", "Escape")])
        self.assertEqual(self.reported(devices=True), [])
        self.assertEqual(self.complaints(), [])

    def test_what_is_sent_stays_text_and_long_messages_fit(self):
        self.open()
        for message in ("<img src=x>", "b" * 300, *("Messaggio " + str(number) for number in range(30))):
            self.browser.call("Input.insertText", text=message)
            self.browser.press("Enter", "Enter", "\r")
        self.browser.wait_for("document.querySelectorAll('li.own').length===32")
        self.assertEqual(self.browser.value("document.querySelectorAll('img').length"), 0)
        self.assertTrue(self.browser.value(
            "document.documentElement.scrollWidth<=innerWidth&&document.documentElement.scrollHeight<=innerHeight"))
        self.picture("meeting-page-messages.png")
        last = "document.querySelector('li.own:last-child').getBoundingClientRect().bottom"
        self.assertTrue(self.browser.value(f"{last}<=document.querySelector('form').getBoundingClientRect().top"))


if __name__ == "__main__":
    PROGRAM = sys.argv.pop(1)
    if headless_chromium.find() is None:
        print("SKIPPED: THE MEETING'S PAGE WAS NOT TESTED. There is no chromium here.", file=sys.stderr)
        sys.exit(77)
    unittest.main()
