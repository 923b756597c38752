# SPDX-License-Identifier: MIT
"""./dev: its usage, and that `setup` asks for packages only where some are missing. The system's own commands
are stand-ins here: nothing is looked up or installed."""

import shutil
import subprocess
import unittest

from planted_tree import ROOT, PlantedTree

# What a stand-in for each command does; every apt-get call is written down, and installs what it is asked for.
STAND_INS = {
    "id": 'cat "$BOX/user"',
    "sudo": 'exit 1',
    "dpkg-query": 'shift 3; for p; do '
                  'grep -qx -- "$p" "$BOX/installed" && echo "$p installed" || echo "$p config-files"; done',
    "apt-get": 'echo "$*" >>"$BOX/calls"; [ -z "${APT_FAILS:-}" ] || exit 100; '
               'for p; do echo "$p" >>"$BOX/installed"; done',
}
REAL_COMMANDS = ["bash", "sh", "env", "cat", "grep", "readlink", "dirname"]


class Dev(PlantedTree):
    def setUp(self):
        super().setUp()
        self.plant({f"bin/{name}": f"#!/bin/sh\n{body}\n" for name, body in STAND_INS.items()})
        self.plant({"installed": "", "calls": "", "user": "0\n"})
        for name in STAND_INS:
            (self.root / "bin" / name).chmod(0o755)
        for name in REAL_COMMANDS:
            (self.root / "bin" / name).symlink_to(shutil.which(name))

    def dev(self, *arguments, **environment) -> subprocess.CompletedProcess:
        environment = {"PATH": f"{self.root}/bin", "BOX": str(self.root), **environment}
        return subprocess.run([str(ROOT / "dev"), *arguments], capture_output=True, text=True, check=False,
                              env=environment, cwd=self.root, stdin=subprocess.DEVNULL)

    def calls(self) -> list:
        return (self.root / "calls").read_text(encoding="utf-8").splitlines()

    def test_a_wrong_command_line_shows_the_usage(self):
        for arguments in [[], ["frobnicate"], ["build", "nonsense"], ["build", "dev", "release"],
                          ["setup", "nonsense"], ["check", "x"], ["package", "x"], ["format", "x"]]:
            with self.subTest(arguments):
                done = self.dev(*arguments)
                self.assert_status(done, 2)
                self.assertIn("usage: ./dev COMMAND", done.stderr)
                self.assertEqual(done.stdout, "")
        done = self.dev("help")
        self.assert_status(done, 0)
        self.assertIn("usage: ./dev COMMAND", done.stdout)

    def test_root_installs_what_is_missing_once(self):
        self.plant({"installed": "g++\ncmake\n"})
        self.assert_status(self.dev("setup", "build"), 0)
        update, install = self.calls()
        self.assertTrue(update.endswith(" update"), update)
        self.assertIn(" install -y --no-install-recommends ninja-build ", install)
        self.assertNotIn("cmake", install)
        self.assert_status(self.dev("setup", "build"), 0)
        self.assertEqual(len(self.calls()), 2)

    def test_what_cannot_be_installed_is_told(self):
        rows = [({"user": "1000\n", "installed": "g++\n"}, {}, " ninja-build "),
                ({"user": "0\n"}, {"APT_FAILS": "1"}, "could not install")]
        for files, environment, words in rows:
            self.plant(files)
            done = self.dev("setup", **environment)
            self.assert_status(done, 1)
            self.assertIn(words, done.stderr)
            self.assertNotIn(" g++ ", done.stderr)
            self.assertEqual(self.calls() != [], "APT_FAILS" in environment)

    def test_another_system_is_told_what_it_needs(self):
        (self.root / "bin" / "dpkg-query").unlink()
        done = self.dev("setup", "build")
        self.assert_status(done, 1)
        self.assertIn("ninja-build", done.stderr)
        self.assert_status(self.dev("setup", DEV_SKIP_SETUP="1"), 0)


if __name__ == "__main__":
    unittest.main()
