"""The header checker catches headers that do not stand alone, and looks again only where something changed."""

import json
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
    def check(self, *arguments):
        return self.run_tool("check_headers.py", self.root, "--compiler", compiler(), "--stamps",
                             self.root / "stamps", *arguments)

    def assert_summary(self, done, status: int, summary: str):
        self.assert_status(done, status)
        self.assertEqual(done.stdout.splitlines()[-1], f"headers: {summary}")

    def test_headers_that_stand_alone_pass(self):
        self.plant(CLEAN)
        self.assert_summary(self.check(), 0, "2 files, 2 checked now, 0 failed")

    def test_each_offence_is_named(self):
        for title, text in OFFENCES.items():
            with self.subTest(title):
                self.plant({**CLEAN, "src/keys/planted.h": text})
                done = self.check()
                self.assert_status(done, 1)
                self.assertIn("src/keys/planted.h fails", done.stdout)
                self.assertNotIn("src/core/a.h fails", done.stdout)
                self.assert_status(self.check("--folder", "core"), 0)

    def test_only_what_changed_is_checked_again(self):
        self.plant(CLEAN)
        self.check()
        self.assert_summary(self.check(), 0, "2 files, 0 checked now, 0 failed")
        self.assert_summary(self.check("--", "-DOTHER"), 0, "2 files, 2 checked now, 0 failed")
        self.check()
        self.plant({"src/core/b.h": '#pragma once\n#include "core/a.h"\nstruct B { A b; };\n'})
        self.assert_summary(self.check(), 0, "2 files, 1 checked now, 0 failed")

    def test_a_broken_dependency_fails_until_it_is_mended(self):
        self.plant(CLEAN)
        self.check()
        self.plant({"src/core/a.h": "#pragma once\nstruct Renamed {};\n"})
        for checked in (2, 1):
            done = self.check()
            self.assert_summary(done, 1, f"2 files, {checked} checked now, 1 failed")
            self.assertIn("src/core/b.h fails", done.stdout)

    def test_sources_are_checked_on_demand(self):
        self.plant({**CLEAN, "src/core/bad.cpp": "int f() { return undeclared; }\n"})
        self.assert_status(self.check(), 0)
        done = self.check("--sources")
        self.assert_status(done, 1)
        self.assertIn("src/core/bad.cpp fails", done.stdout)
        self.assertNotIn("src/core/a.cpp fails", done.stdout)

    def test_a_source_keeps_its_definitions(self):
        self.plant({**CLEAN, "src/core/version.cpp": "const char* version() { return VERSION; }\n"})
        for define, status in [('-DVERSION=\\"1.2\\"', 0), ("-D VERSION=nullptr", 0), ("-DOTHER", 1)]:
            with self.subTest(define):
                entry = {"directory": str(self.root), "file": "src/core/version.cpp", "command": f"c++ {define} -c x"}
                self.plant({"build/compile_commands.json": json.dumps([entry])})
                self.assert_status(self.check("--sources", "--database", self.root / "build"), status)

    def test_nothing_to_check_is_no_success(self):
        self.plant({"src/core/a.cpp": ""})
        self.assert_status(self.check(), 2)
        self.plant(CLEAN)
        self.assert_status(self.check("--folder", "misspelt"), 2)
        self.assert_status(self.check("--compiler", "no-such-compiler"), 2)


if __name__ == "__main__":
    unittest.main()
