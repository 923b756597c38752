# SPDX-License-Identifier: MIT
"""The header checker catches headers that do not stand alone, and looks again only where something changed."""

import json
import re
import unittest

from planted_tree import PlantedTree, compiler

CLEAN = {
    "src/core/a.h": "#pragma once\n#include <cstddef>\nstruct A { std::size_t size; };\n",
    "src/core/b.h": '#pragma once\n#include "core/a.h"\nstruct B { A a; };\n',
    "src/core/a.cpp": '#include "core/b.h"\nint size(const B& b) { return static_cast<int>(b.a.size); }\n',
}

OFFENCES = {
    "a missing include": "#pragma once\ninline std::string name() { return {}; }\n",
    "no guard": "struct Twice { int a = 0; };\n",
    "a warning": "#pragma once\ninline int f(int unused) { return 1; }\n",
    "an include that is not there": '#pragma once\n#include "core/missing.h"\n',
}


class CheckHeaders(PlantedTree):
    def check(self, status: int, *arguments, summary: str = "", fails: str = "") -> None:
        """Looks at the exit status, the summary, and which file alone fails."""
        done = self.run_tool("check_headers.py", self.root, "--compiler", compiler(), "--stamps",
                             self.root / "stamps", *arguments)
        self.assert_status(done, status)
        if summary:
            self.assertEqual(done.stdout.splitlines()[-1], f"headers: {summary}")
        self.assertEqual(re.findall(r"(src/\S+) fails", done.stdout), [fails] if fails else [])

    def test_each_offence_is_named(self):
        for title, text in OFFENCES.items():
            with self.subTest(title):
                self.plant({**CLEAN, "src/keys/planted.h": text})
                self.check(1, fails="src/keys/planted.h")
                self.check(0, "--folder", "core")

    def test_only_what_changed_is_checked_again(self):
        self.plant(CLEAN)
        self.check(0, summary="2 files, 2 checked now, 0 failed")
        self.check(0, summary="2 files, 0 checked now, 0 failed")
        self.check(0, "--", "-DOTHER", summary="2 files, 2 checked now, 0 failed")
        self.check(0)
        self.plant({"src/core/b.h": '#pragma once\n#include "core/a.h"\nstruct B { A b; };\n'})
        self.check(0, summary="2 files, 1 checked now, 0 failed")

    def test_a_broken_dependency_fails_until_it_is_mended(self):
        self.plant(CLEAN)
        self.check(0)
        self.plant({"src/core/a.h": "#pragma once\nstruct Renamed {};\n"})
        for checked in (2, 1):
            self.check(1, summary=f"2 files, {checked} checked now, 1 failed", fails="src/core/b.h")

    def test_sources_are_checked_on_demand(self):
        self.plant({**CLEAN, "src/core/bad.cpp": "int f() { return undeclared; }\n"})
        self.check(0)
        self.check(1, "--sources", fails="src/core/bad.cpp")

    def test_a_source_keeps_its_definitions(self):
        self.plant({**CLEAN, "src/core/version.cpp": "const char* version() { return VERSION; }\n"})
        for define, status in [('-DVERSION=\\"1.2\\"', 0), ("-D VERSION=nullptr", 0), ("-DOTHER", 1)]:
            with self.subTest(define):
                entry = {"directory": str(self.root), "file": "src/core/version.cpp", "command": f"c++ {define} -c x"}
                self.plant({"build/compile_commands.json": json.dumps([entry])})
                self.check(status, "--sources", "--database", self.root / "build",
                           fails="src/core/version.cpp" if status else "")

    def test_nothing_to_check_is_no_success(self):
        self.plant({"src/core/a.cpp": ""})
        self.check(2)
        self.plant(CLEAN)
        self.check(2, "--folder", "misspelt")
        self.check(2, "--compiler", "no-such-compiler")


if __name__ == "__main__":
    unittest.main()
