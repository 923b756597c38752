# SPDX-License-Identifier: MIT
"""The build as a packager calls it: without presets, without the desktop program where there is no toolkit, in a folder
of any name, and with no locale set."""

import os
import re
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

from planted_tree import ROOT

sys.path.insert(0, str(ROOT / "tools"))
from compile_commands import read_database  # noqa: E402


class PlainBuild(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name, "a föłder")
        self.root.symlink_to(ROOT)
        self.build = Path(folder.name, "a bůild")

    def run_cmake(self, *arguments) -> None:
        done = subprocess.run(["cmake", *arguments], env={"PATH": os.environ["PATH"]}, capture_output=True, check=False)
        self.assertEqual(done.returncode, 0, (done.stdout + done.stderr).decode())

    def configure(self, *options) -> None:
        self.run_cmake("-G", "Ninja", "-S", self.root, "-B", self.build, "-DBUILD_TESTING=OFF", "-DQUILLON_DESKTOP=OFF",
                       *options)

    def compile_words(self, source: str) -> tuple:
        return read_database(self.build)[ROOT / source][0]

    def test_without_the_toolkit(self):
        self.configure("-DCMAKE_DISABLE_FIND_PACKAGE_Qt6=ON")
        cache = (self.build / "CMakeCache.txt").read_text(encoding="utf-8")
        self.assertRegex(cache, "(?m)^CMAKE_BUILD_TYPE:.*=Release$")
        self.assertEqual([path for path in read_database(self.build) if "desktop" in path.parts], [])
        self.assertNotIn("-Werror", self.compile_words("src/core/machine.cpp")[1])
        packages = (self.build / "CPackConfig.cmake").read_text(encoding="utf-8")
        self.assertEqual(re.search(r'CPACK_COMPONENTS_ALL "(.*)"', packages)[1], "cli;data")

    def test_no_warning_at_the_highest_optimisation(self):
        """The release preset hides this: with link-time optimisation the compiler warns at the very end, or not at all."""
        self.configure("-DCMAKE_COMPILE_WARNING_AS_ERROR=ON")
        folder, words = self.compile_words("src/terminal/play_screen.cpp")
        self.assertIn("-O3", words)
        self.assertIn("-Werror", words)
        done = subprocess.run([*words, "-o", "/dev/null"], cwd=folder, capture_output=True, text=True, check=False)
        self.assertEqual(done.returncode, 0, done.stderr)

    def test_the_manual_in_any_folder_without_a_locale(self):
        self.configure()
        self.run_cmake("--build", self.build, "--target", "manual")
        self.assertTrue((self.build / "share" / "quillon" / "manual" / "index.html").is_file())


if __name__ == "__main__":
    unittest.main()
