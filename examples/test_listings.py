#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Tests listings: runs them on a simulated machine, types at it, and looks at what it shows.

Run it as it stands, or take it as a start for the tests of your own listings:

    python3 examples/test_listings.py

quillon-cli must be installed; otherwise QUILLON_CLI names it.
"""

import json
import os
import re
import subprocess
import unittest
from pathlib import Path

EXAMPLES = Path(__file__).resolve().parent

STATE_PRINT_WAIT = 1  # a text is shown, EXE goes on


class Machine:
    """A simulated machine, driven by one command a line and one line of JSON for each."""

    def __init__(self):
        program = os.environ.get("QUILLON_CLI", "quillon-cli")
        self.drive = subprocess.Popen([program, "drive"], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                      encoding="utf-8")

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.drive.communicate("quit\n")

    def command(self, line):
        """Carries out a command and returns its answer."""
        self.drive.stdin.write(line + "\n")
        self.drive.stdin.flush()
        answer = json.loads(self.drive.stdout.readline())
        if not answer["ok"]:
            raise ValueError(f"{line}: {answer['error']}")
        return answer

    def load(self, listing):
        answer = self.command(f"load {listing}")
        if not answer["loaded"]:
            raise ValueError(answer["system_message"])

    def go_on(self):
        """Lets the machine run, EXE pressed after each PRINT, until it wants something else; the texts it showed."""
        shown = []
        while True:
            self.command("wait 100000")
            state = self.command("state")
            shown += state["shown"]
            if state["run_state"] != STATE_PRINT_WAIT:
                return shown
            self.command("exe")

    def run(self, page=0):
        self.command(f"page {page}")
        self.command("run")
        return self.go_on()

    def enter(self, text):
        """Types a line and presses EXE: at the prompt of INPUT, or as a command line."""
        self.command(f"enter {text}")
        return self.go_on()


class Temperature(unittest.TestCase):
    def test_freezing_point_in_both_directions(self):
        with Machine() as machine:
            machine.load(EXAMPLES / "temperature.bas")
            self.assertIn(" 0\u008fC = 32\u008fF", machine.run(page=0))  # the machine's degree sign is its code 8F
            self.assertEqual(" 0\u008fF =-17.8\u008fC", machine.run(page=1)[0])


class Guess(unittest.TestCase):
    def test_a_game_ends_with_the_number(self):
        with Machine() as machine:
            machine.load(EXAMPLES / "guess.bas")
            machine.command("set random_seed 1")  # the same number every time
            machine.run()
            low, high = 0, 100
            for _ in range(7):  # halving finds one of 99 numbers in seven guesses
                shown = machine.enter(str((low + high) // 2))
                if shown[0].startswith("YES!"):
                    break
                low, high = (int(bound) for bound in re.findall(r"\d+", shown[0]))  # "50<N<100", behind an arrow
            self.assertTrue(shown[0].startswith("YES!"), shown)
            self.assertIn("A NEW BEST!", shown)


class Units(unittest.TestCase):
    def test_units_stay_for_calculating_with(self):
        with Machine() as machine:
            machine.load(EXAMPLES / "units.bas")
            machine.run()
            machine.enter("26.2*M")
            self.assertEqual("42.1648128", machine.command("state")["display"].strip())
            self.assertEqual(2.54, machine.command("vars")["vars"]["I"])


if __name__ == "__main__":
    unittest.main()
