# SPDX-License-Identifier: MIT
"""What the tests of the desktop program share: an X server for each class of tests, a home for each test.

QUILLON_SCREENSHOTS names a folder for a picture of the screen at each test's end.
"""

import os
import sys
import tempfile
import unittest

from screen import Screen
from simulator import Glyphs, Simulator

PROGRAMS = {}


class DesktopTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.scratch = tempfile.TemporaryDirectory()
        cls.addClassCleanup(cls.scratch.cleanup)
        cls.screen = Screen(cls.scratch.name)
        cls.addClassCleanup(cls.screen.close)
        cls.glyphs = Glyphs(PROGRAMS["cli"], cls.scratch.name)

    def setUp(self):
        self.home = tempfile.mkdtemp(dir=self.scratch.name)

    def tearDown(self):
        folder = os.environ.get("QUILLON_SCREENSHOTS")
        if folder:
            self.screen.screenshot(os.path.join(folder, f"{self.id()}.png"))

    def listing(self, name: str, text: str) -> str:
        path = os.path.join(self.home, name)
        with open(path, "w", encoding="ascii") as file:
            file.write(text)
        return path

    def start(self, *arguments, **options) -> Simulator:
        simulator = Simulator(PROGRAMS["quillon"], self.screen, self.glyphs, self.home, *arguments, **options)
        self.addCleanup(simulator.kill)
        return simulator


def run_tests():
    """Runs the tests of the file that was started."""
    PROGRAMS.update(zip(("quillon", "cli", "drag_source"), sys.argv[1:4]))
    unittest.main(module="__main__", verbosity=2, argv=sys.argv[:1] + sys.argv[4:])
