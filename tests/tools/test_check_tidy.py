# SPDX-License-Identifier: MIT
"""The clang-tidy runner passes failures on, and looks again only where something changed. The linter is a
stand-in that dislikes the word BAD in a source, so that no clang is needed here."""

import json
import unittest

from planted_tree import PlantedTree, compiler

LINTER = """#!/bin/sh
[ "$1" != --version ] || { cat "$(dirname "$0")/version"; exit; }
for last; do :; done
! grep -H BAD "$last"
"""

FILES = {
    "src/core/a.h": "#pragma once\n",
    "src/core/a.cpp": '#include "core/a.h"\n',
    "src/core/b.cpp": "#include <cmath>\n",
    ".clang-tidy": "Checks: '-*'\n",
    "version": "linter 1\n",
    "linter": LINTER,
}


class CheckTidy(PlantedTree):
    def setUp(self):
        super().setUp()
        self.plant(FILES)
        (self.root / "linter").chmod(0o755)
        self.write_database("a.cpp", "b.cpp")

    def write_database(self, *names):
        command = f"{compiler()} -I{self.root}/src -o x.o -c {self.root}/src/core/"
        self.plant({"build/compile_commands.json": json.dumps(
            [{"directory": str(self.root), "command": command + name, "file": f"src/core/{name}"} for name in names])})

    def check(self, status: int, summary: str) -> str:
        done = self.run_tool("check_tidy.py", self.root, "--database", "build", "--clang-tidy", self.root / "linter")
        self.assert_status(done, status)
        self.assertEqual(done.stdout.splitlines()[-1], f"tidy: {summary}")
        return done.stdout

    def test_only_what_changed_is_checked_again(self):
        self.check(0, "2 files, 2 checked now, 0 failed")
        self.check(0, "2 files, 0 checked now, 0 failed")
        for name, text, checked in [("src/core/a.h", "#pragma once\nint a();\n", 1), ("version", "linter 2\n", 2),
                                    (".clang-tidy", "Checks: '*'\n", 2), ("src/.clang-tidy", "Checks: '*'\n", 2)]:
            with self.subTest(name):
                self.plant({name: text})
                self.check(0, f"2 files, {checked} checked now, 0 failed")

    def test_a_warning_fails_every_time(self):
        self.check(0, "2 files, 2 checked now, 0 failed")
        self.plant({"src/core/b.cpp": "// BAD\n"})
        for _ in range(2):
            self.assertIn("src/core/b.cpp fails", self.check(1, "2 files, 1 checked now, 1 failed"))

    def test_a_source_without_a_target_is_an_error(self):
        self.write_database("a.cpp")
        self.assertIn("no target compiles", self.check(1, "2 files, 2 checked now, 1 failed"))

    def test_no_database_is_no_success(self):
        done = self.run_tool("check_tidy.py", self.root, "--database", self.root / "nowhere")
        self.assert_status(done, 2)


if __name__ == "__main__":
    unittest.main()
