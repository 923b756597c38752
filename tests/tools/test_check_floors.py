# SPDX-License-Identifier: MIT
"""The floors checker catches each kind of forbidden include (floors.txt) and lets the permitted ones pass."""

import re
import unittest

from planted_tree import ROOT, PlantedTree

ODD_OFFENCES = [
    ("src/core/a.cpp", "// one\r\n/* two\r\n*/\r\n#include <QString>\r\n", "4 only desktop knows"),
    ("src/terminal/main.cpp", "\n" * 81, "81 at most 80 lines"),
]

PERMITTED = {
    "src/core/a.cpp": '#include "core/a.h"\n#include <cmath>\n#include <string_view>\n',
    "src/statements/a.cpp": '#include "core/a.h"\n#include "statements/a.h"\n',
    "src/driver/a.cpp": '#include "core/a.h"\n#include "keys/a.h"\n#include "functions/a.h"\n',
    "src/shell/a.cpp": '#include "driver/a.h"\nauto a = std::remove(b, c, "FILE"); // no fopen\n',
    "src/files/a.cpp": '#include "shell/a.h"\n#include <filesystem>\n#include <iconv.h>\n#include <unistd.h>\n'
                       'auto a = std::getenv("A");\n',
    "src/terminal/a.cpp": '#include "files/a.h"\n#include <CLI/CLI.hpp>\n#include <nlohmann/json.hpp>\n'
                          '#include <curses.h>\n',
    "src/desktop/a.cpp": '#include <QtWidgets/QWidget>\n#include <QString>\n#include "core/a.h"\n'
                         '#include "moc_a.cpp"\n',
    "src/desktop/main.cpp": "\n" * 80,
    "src/core/comments.cpp": '/*\n#include <QString>\n*/\n'
                             '// \\\n#include <QString>\nauto a = R"x(\n#include <QString>\n)x";\n',
    "src/core/readme.md": "#include <QString>\n",
}


class CheckFloors(PlantedTree):
    def test_permitted_includes_pass(self):
        self.plant(PERMITTED)
        done = self.run_tool("check_floors.py", self.root)
        self.assert_status(done, 0)
        self.assertIn("9 files, 0 offences", done.stdout)

    def test_each_offence_is_named(self):
        lines = (ROOT / "tests/tools/floors.txt").read_text(encoding="utf-8").splitlines()[1:]
        rows = [re.fullmatch(r"(\S+): (.*) => (\d+ .+)", line).groups() for line in lines]
        self.assertGreater(len(rows), 30)
        for path, text, told in [*rows, *ODD_OFFENCES]:
            text, (line, words) = text.replace(" || ", "\n"), told.split(" ", 1)
            with self.subTest(path=path, text=text):
                self.plant({path: text})
                done = self.run_tool("check_floors.py", self.root)
                (self.root / path).unlink()
                self.assert_status(done, 1)
                offence, summary = done.stdout.splitlines()
                self.assertRegex(offence, f"^{path}:{line}: .*{words}")
                self.assertIn("1 offences", summary)

    def test_a_tree_without_sources_is_no_success(self):
        self.plant({"src/notes.txt": ""})
        self.assert_status(self.run_tool("check_floors.py", self.root), 2)
        self.assert_status(self.run_tool("check_floors.py", self.root / "missing"), 2)


if __name__ == "__main__":
    unittest.main()
