# SPDX-License-Identifier: MIT
"""A throw-away source tree for the tests of the tools, and a way to run a tool on it."""

import os
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]


class PlantedTree(unittest.TestCase):
    """Gives each test an empty root folder of its own."""

    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.root = Path(scratch.name).resolve()

    def plant(self, files: dict) -> None:
        """Writes the files, given by their path from the root."""
        for name, text in files.items():
            path = self.root / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text, encoding="utf-8")

    def run_tool(self, name: str, *arguments) -> subprocess.CompletedProcess:
        command = [sys.executable, "-B", str(ROOT / "tools" / name), *map(str, arguments)]
        return subprocess.run(command, capture_output=True, text=True, check=False, cwd=self.root)

    def assert_status(self, done: subprocess.CompletedProcess, status: int) -> None:
        self.assertEqual(done.returncode, status, done.stdout + done.stderr)


def compiler() -> str:
    return os.environ.get("CXX") or "g++"
