"""The floors checker catches each kind of forbidden include and lets the permitted ones pass."""

import unittest

from planted_tree import PlantedTree

# Source, its text, the line that must be named, a word of the sentence.
OFFENCES = [
    ("src/core/a.h", '#include "functions/a.h"', 1, "functions stands above core"),
    ("src/core/a.h", '#pragma once\n\n#include "shell/a.h"', 3, "shell stands above core"),
    ("src/core/a.h", "#include <driver/a.h>", 1, "driver stands above core"),
    ("src/functions/a.cpp", '#include "driver/a.h"', 1, "driver stands above functions"),
    ("src/driver/a.cpp", '#include "shell/a.h"', 1, "shell stands above driver"),
    ("src/shell/deep/a.cpp", '#include "terminal/a.h"', 1, "terminal stands above shell"),
    ("src/statements/a.cpp", '#include "functions/a.h"', 1, "neighbours"),
    ("src/functions/a.cpp", '#include "keys/a.h"', 1, "neighbours"),
    ("src/keys/a.cpp", '#include "display/a.h"', 1, "neighbours"),
    ("src/display/a.cpp", '#include "statements/a.h"', 1, "neighbours"),
    ("src/desktop/a.cpp", '#include "terminal/a.h"', 1, "separate programs"),
    ("src/terminal/a.cpp", '#include "desktop/a.h"', 1, "separate programs"),
    ("src/shell/a.cpp", "#include <QString>", 1, "only desktop knows"),
    ("src/terminal/a.cpp", "#include <QtWidgets/QWidget>", 1, "only desktop knows"),
    ("src/display/a.cpp", "#include <qimage.h>", 1, "only desktop knows"),
    ("src/core/a.cpp", '#include "QString"', 1, "only desktop knows"),
    ("src/desktop/a.cpp", "#include <ncurses.h>", 1, "only terminal knows"),
    ("src/shell/a.cpp", '#include "curses.h"', 1, "only terminal knows"),
    ("src/keys/a.cpp", "#include <ncursesw/panel.h>", 1, "only terminal knows"),
    ("src/shell/a.cpp", "#include <CLI/CLI.hpp>", 1, "only terminal knows"),
    ("src/desktop/a.cpp", "#include <nlohmann/json.hpp>", 1, "only terminal knows"),
    ("src/core/a.cpp", "#include <unistd.h>", 1, "POSIX"),
    ("src/core/a.cpp", "#include <string.h>", 1, "POSIX or C"),
    ("src/driver/a.cpp", "#include <iconv.h>", 1, "POSIX"),
    ("src/core/a.cpp", "#include <zlib.h>", 1, "neither"),
    ("src/shell/a.cpp", "#include <boost/any.hpp>", 1, "neither"),
    ("src/core/a.cpp", '#include "machine.h"', 1, "from src/"),
    ("src/core/a.cpp", '#include "../shell/a.h"', 1, "from src/"),
    ("src/core/a.cpp", '#include "core/../shell/a.h"', 1, "from src/"),
    ("src/core/a.cpp", "#include SOME_HEADER", 1, "write an include as"),
    ("src/core/a.cpp", "  #  include<QString>  // why", 1, "only desktop knows"),
    ("src/core/a.cpp", "// one\r\n/* two\r\n*/\r\n#include <QString>\r\n", 4, "only desktop knows"),
    ("src/core/a.cpp", "int a = 1'000; // don't\n#include <QString>", 2, "only desktop knows"),
    ("src/core/a.cpp", 'char a = \'"\'; // "\n#include <QString>', 2, "only desktop knows"),
    ("src/core/a.cpp", 'auto a = "/*";\n#include <QString>\nauto b = "*/";', 2, "only desktop knows"),
    ("src/extra/a.cpp", "", 1, "lies on no floor"),
    ("src/a.h", "", 1, "lies on no floor"),
    ("src/terminal/main.cpp", "\n" * 81, 81, "at most 80 lines"),
]

PERMITTED = {
    "src/core/a.cpp": '#include "core/a.h"\n#include <cmath>\n#include <string_view>\n',
    "src/statements/a.cpp": '#include "core/a.h"\n#include "statements/a.h"\n',
    "src/driver/a.cpp": '#include "core/a.h"\n#include "keys/a.h"\n#include "functions/a.h"\n',
    "src/shell/a.cpp": '#include "driver/a.h"\n#include <iconv.h>\n#include <sys/stat.h>\n#include <unistd.h>\n',
    "src/terminal/a.cpp": '#include "shell/a.h"\n'
                          '#include <CLI/CLI.hpp>\n#include <nlohmann/json.hpp>\n#include <curses.h>\n',
    "src/desktop/a.cpp": '#include "core/a.h"\n'
                         '#include <QtWidgets/QWidget>\n#include <QString>\n#include "moc_a.cpp"\n',
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
        self.assertIn("8 files, 0 offences", done.stdout)

    def test_each_offence_is_named(self):
        for path, text, line, words in OFFENCES:
            with self.subTest(path=path, text=text):
                self.plant({path: text})
                done = self.run_tool("check_floors.py", self.root)
                (self.root / path).unlink()
                self.assert_status(done, 1)
                offence, summary = done.stdout.splitlines()
                self.assertTrue(offence.startswith(f"{path}:{line}: "), offence)
                self.assertIn(words, offence)
                self.assertIn("1 offences", summary)

    def test_a_tree_without_sources_is_no_success(self):
        self.plant({"src/notes.txt": ""})
        self.assert_status(self.run_tool("check_floors.py", self.root), 2)
        self.assert_status(self.run_tool("check_floors.py", self.root / "missing"), 2)


if __name__ == "__main__":
    unittest.main()
