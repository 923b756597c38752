# SPDX-License-Identifier: MIT
"""What the manual promises about files: a listing is never changed, and nothing is written without being asked for."""

import os
import subprocess
import tempfile
import unittest
from pathlib import Path

from machine import Drive, command

LISTING = b"[P0]\r\n10 INPUT A:SAVE:PUT A:VAC\r\n20 PRINT A\n' no line feed at the end"


class Files(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.home = Path(folder.name)
        self.listing = self.home / "a.bas"
        self.listing.write_bytes(LISTING)
        self.listing.chmod(0o644)
        self.before = self.everything()

    def everything(self) -> dict:
        return {str(path): (path.read_bytes() if path.is_file() else None, path.stat().st_mtime_ns)
                for path in self.home.rglob("*")}

    def test_run_and_check_write_nothing(self):
        env = os.environ | {"HOME": str(self.home), "XDG_CONFIG_HOME": str(self.home / "config"), "TMPDIR": str(self.home)}
        for name in ("run", "check"):
            subprocess.run(command(name, self.listing), cwd=self.home, env=env, input=b"5\n", capture_output=True, check=True)
            self.assertEqual(self.everything(), self.before, name)

    def test_drive_writes_what_it_is_asked_for(self):
        with Drive(self.home) as drive:
            for line in ("load a.bas", "run", "wait 1000", "type 5", "exe", "wait 1000", "exe", "tick 10", "lcd", "state"):
                drive.tell(line)
            self.assertFalse(drive.ask("snapshot nowhere/b.bmp")["ok"])
            self.assertEqual(self.everything(), self.before)
            drive.tell("snapshot b.bmp")
        self.assertEqual(sorted(set(self.everything()) - set(self.before)), [str(self.home / "b.bmp")])


if __name__ == "__main__":
    unittest.main()
