#!/usr/bin/env python3
"""Tests of the orderings' check."""
import unittest

from check_orderings import WITH_TIES, lacking_orders, problems


def entry(kind, text, more=()):
    lines = [f"{'1.000':>9}  {kind:<11}  {text}"] + [" " * 24 + "| " + line for line in more]
    return "\n".join(lines) + "\n"


LOCKDOWN = entry("log", "🔒 ATTIVAZIONE LOCKDOWN")
NOTICE = entry("request", "POST https://x/api/heartbeat", ["Content-Type: application/json", '{"disconnecting":true}'])
END_SCREEN = entry("log", "[SESSION] Schermata fine visibile, join hidden: true, end hidden: false")


def end(left):
    return entry("end", "the client is running", ["left: " + left])


class Problems(unittest.TestCase):
    def test_one_end_is_fine(self):
        self.assertEqual(list(problems(LOCKDOWN + NOTICE + END_SCREEN + end("windows 1, visible windows 1"))), [])

    def test_two_lockdowns_may_end_once_each(self):
        self.assertEqual(list(problems((LOCKDOWN + NOTICE + END_SCREEN) * 2 + end("windows 1"))), [])

    def test_a_second_notice_is_found(self):
        self.assertEqual(len(list(problems(LOCKDOWN + NOTICE + NOTICE + END_SCREEN + end("windows 1")))), 1)

    def test_a_second_end_screen_is_found(self):
        self.assertEqual(len(list(problems(LOCKDOWN + NOTICE + END_SCREEN + END_SCREEN + end("windows 1")))), 1)

    def test_a_timer_left_after_the_end_is_found(self):
        found = list(problems(LOCKDOWN + NOTICE + END_SCREEN + end("windows 1, timers 1")))
        self.assertEqual(found, ["left without a lockdown: timers 1"])

    def test_a_second_window_is_found(self):
        self.assertEqual(len(list(problems(end("windows 2")))), 1)

    def test_a_lockdown_that_stands_may_have_its_timers(self):
        self.assertEqual(list(problems(LOCKDOWN + end("windows 1, status items 1, timers 1"))), [])

    def test_a_transcript_without_an_end_is_found(self):
        self.assertEqual(len(list(problems(LOCKDOWN))), 1)

    def test_seeds_that_change_nothing_are_found(self):
        different = {name: {"a", "b"} for name in WITH_TIES}
        self.assertEqual(lacking_orders(different), [])
        self.assertEqual(lacking_orders(different | {WITH_TIES[0]: {"a"}}), [WITH_TIES[0]])
        self.assertEqual(lacking_orders({}), WITH_TIES)


if __name__ == "__main__":
    unittest.main()
