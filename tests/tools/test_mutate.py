# SPDX-License-Identifier: MIT
"""The mutation tool makes each kind of fault, one at a time, and none in texts, comments and declarations."""

import sys
import unittest

from planted_tree import ROOT

sys.path.insert(0, str(ROOT / "tools"))
from mutate import mutations_of  # noqa: E402


class Mutate(unittest.TestCase):
    def test_each_kind_of_fault(self):
        for line, mutants in [
                ("a = b < 3;", ["a = b <= 3;", "a = b < 4;"]),
                ("if (f(a) && !b)", ["if (f(a) || !b)", "if (!(f(a) && !b))"]),
                ("++count;", ["--count;"]),
                ("x = 0x1F + 010;", ["x = 0x1F - 010;", "x = 32 + 010;", "x = 0x1F + 9;"]),
                ("return true;", ["return false;"]),
                ("return a;", ["return {};"]),
                ('say("a < 1 + 2", \'3\'); // 4 || 5', []),
                ("#define N 1", []), ("static_assert(N == 1);", []), ("using A = B<3>;", [])]:
            with self.subTest(line):
                self.assertEqual(list(mutations_of(line + "\n", "x")), [mutant + "\n" for mutant in mutants])

    def test_a_statement_is_removed_where_it_is_whole(self):
        for line, before, removed in [
                ("    call(a);", "{", True), ("    call(a);", "else", True), ("    call(a);", "x =", False),
                ("    b(c) }", ";", False)]:
            with self.subTest(line, before=before):
                self.assertEqual("    ;\n" in mutations_of(line + "\n", before), removed)


if __name__ == "__main__":
    unittest.main()
