# SPDX-License-Identifier: MIT
"""A screen that cannot be set up whole leaves nothing running. Its programs are stand-ins here.

usage: screen_test.py
"""

import os
import tempfile
import unittest
from pathlib import Path
from unittest import mock

from screen import Screen

STAND_INS = {"Xvfb": 'echo $$ >"$BOX/pid"; eval "echo 99 >&$2"; exec sleep 600', "dbus-daemon": "exit 1"}


class FailingSetUp(unittest.TestCase):
    def test_leaves_nothing_running(self):
        with tempfile.TemporaryDirectory() as box:
            for name, body in STAND_INS.items():
                Path(box, name).write_text(f"#!/bin/bash\n{body}\n", encoding="ascii")
                Path(box, name).chmod(0o755)
            with mock.patch.dict(os.environ, {"PATH": f"{box}:{os.environ['PATH']}", "BOX": box}):
                self.assertRaises(AssertionError, Screen, box)
            server = int(Path(box, "pid").read_text(encoding="ascii"))
        self.assertRaises(ProcessLookupError, os.kill, server, 0)


if __name__ == "__main__":
    unittest.main(verbosity=2)
