# SPDX-License-Identifier: MIT
"""Every limit that the manual names is tried: a program at the limit, and one beyond it.

The rows are those of the manual's table of limits; a row without a trial fails, and so does a trial without a row.
"""

import re
import unittest

from machine import ROOT, Drive, hold_conversation, run_listing

LANGUAGE = ROOT / "docs" / "language.md"
LISTING_MAX = 1 << 20


def lines_of(statement: str, count: int) -> list:
    return [f"{number} {statement}" for number in range(1, count + 1)]


def listing_of_size(size: int) -> list:
    head = "[P0]\n1 PRINT 1\n' "
    return [head + "x" * (size - len(head) - 1)]


def data_entries(count: int) -> list:
    """A program with so many entries in its index: the area, a DATA statement, its items."""
    return [f"{line} DATA " + ",".join(["1"] * items) for line, items in
            [(number, 10) for number in range(1, (count - 1) // 11 + 1)] + [(9000, (count - 1) % 11 - 1)]] + ["9001 PRINT 1"]


def loops(depth: int) -> list:
    return ["1 " + ":".join(f"FOR {letter}=1 TO 2" for letter in "ABCDEFGH"[:depth]) + ":PRINT 1:END"]


def calls(depth: int) -> list:
    return ["1 GOSUB 10", "2 END"] + [f"{n * 10} GOSUB {n * 10 + 10}" for n in range(1, depth)] + [f"{depth * 10} PRINT 1"]


def nested(depth: int) -> list:
    return ["1 PRINT " + "(" * depth + "1" + ")" * depth]


def numbered(number: int) -> list:
    return [f"{number} PRINT 1"]


ONE = [" 1"]
FULL = "Too many lines in a program area, or too many entries (areas, DATA statements and items together) for the DATA index"
TOO_LARGE = "Cannot be taken into memory: free some memory or use a smaller file (a listing: at most 1 MiB)"
LONG = '1 A$="1234567890":A$=A$+A$+A$+A$:'  # of 28 characters: a literal leaves 7
PROGRAMS = {
    "program areas": [(["[P0]", "1 PRINT 1", "[P9]"], ONE), (["[P0]", "1 PRINT 1", "[P10]"], ["An area header must be closed by ], as in [P0]:3 LINE"])],
    "lines in an area": [(lines_of("PRINT 1:END", 512), ONE), (lines_of("PRINT 1:END", 513), [f"{FULL}(MAX:512)"])],
    "line numbers": [(numbered(0), ONE), (numbered(9_999_999), ONE), (numbered(10_000_000), ["The line number has too many digits(MAX:7):2 LINE"])],
    "size of a listing": [(listing_of_size(LISTING_MAX), ONE), (listing_of_size(LISTING_MAX + 1), [TOO_LARGE])],
    "DATA: areas, statements and items together": [(data_entries(511), ONE), (data_entries(512), [f"{FULL}(MAX:512)"])],
    "characters of a DATA item": [(["1 READ A:PRINT LOG A", f"2 DATA 1{'0' * 62}"], [" 62"]),
                                  (["1 READ A:PRINT LOG A", f"2 DATA 1{'0' * 63}"], [" 62"])],
    "variables": [(["1 A(221)=1:$=\"X\":PRINT A(221)"], ONE), (["1 A(222)=1"], ["ERR6 P0-1"])],
    "subscripts": [(["1 Z(196)=1:PRINT A(221):PRINT Z(-25)"], [" 1", " 0"]), (["1 Z(197)=1"], ["ERR6 P0-1"]),
                   (["1 B(-2)=1"], ["ERR6 P0-1"])],
    "characters of a text from quotes in a variable": [
        (['1 A$="123456789":PRINT LEN(A$)', f'2 $="{"X" * 40}":PRINT LEN($)'], [" 7", " 30"])],
    "characters of any text in a variable": [([LONG + "A$=A$+A$:PRINT LEN(A$)"], [" 31"])],
    "characters of a text while it is calculated": [([LONG + "PRINT LEN(A$+A$+A$+A$+A$)"], [" 127"])],
    "numbers": [(["1 A=1EX99:A=A*10:PRINT LOG A:A=1EM99:PRINT A*1EX99"], [" 100", " 1"]),
                (["1 A=1EX100:A=A*1.1:PRINT A"], ["ERR3 P0-1"]), (["1 A=1EM99:A=A/10:PRINT A"], ["ERR3 P0-1"])],
    "characters of a written number": [([f"1 PRINT {'1'.zfill(125)}"], ONE), ([f"1 PRINT {'1'.zfill(126)}"], ["ERR2 P0-1"])],
    "open `FOR` loops": [(loops(4), ONE), (loops(5), ["ERR7 P0-1"])],
    "nested `GOSUB` calls": [(calls(7), ONE), (calls(8), ["ERR7 P0-70"])],
    "nested parentheses and signs": [(nested(32), ONE), (["1 PRINT " + "-" * 32 + "1"], ONE), (nested(10_000), ["ERR2 P0-1"])],
    "`CSR` columns": [(["1 PRINT CSR 0;\"A\";CSR 11;\"B\""], ["A          B"]), (["1 PRINT CSR 12;\"A\""], ["ERR2 P0-1"])],
    "`SET E`, `SET F`": [(["1 SET F99:SET E99:SET N:PRINT 1"], ONE), (["1 SET E100"], ["ERR2 P0-1"]),
                         (["1 SET F100"], ["ERR2 P0-1"])],
    "`SET G`": [(["1 SET G18:PRINT 1"], ONE), (["1 SET G19"], ["ERR2 P0-1"])],
    "a `PRINT` item": [([LONG + 'PRINT A$+A$+A$+A$+A$+A$'], [("1234567" * 20)[:127]])],
    "`BEEPS`": [(["1 BEEPS 1,0,5:BEEPS 8,11,5:PRINT 1"], ONE), (["1 BEEPS 9,0,5"], ["ERR5 P0-1"]),
                (["1 BEEPS 1,12,5"], ["ERR5 P0-1"])],
}


def state_after(*commands) -> dict:
    """The state of a machine in command mode after commands of the driving protocol."""
    with Drive() as drive:
        for line in ("command", "exe", *commands):
            drive.tell(line)
        return drive.tell("state")


CALCULATIONS = [line for number in range(12) for line in (f"type {number}+0", "exe", "wait 1000", "exe")]
TYPED = {
    "characters of a command line or an entry": (lambda: len(state_after("type " + "1" * 140)["entry"]), 127),
    "command lines remembered": (lambda: len(list(filter(None, state_after(*CALCULATIONS)["history"]))), 8),
    "statements of a loop on a command line": (
        lambda: hold_conversation(None, ["A=0", "FOR I=1 TO 1EX9:A=A+1:NEXT I", "A"])[-1:], ["10000"]),
    "pasted characters": (lambda: len(state_after("clipboard " + "1" * 40, "key 0a", "tick 3")["entry"]), 15),
}


class Limits(unittest.TestCase):
    maxDiff = 400

    def test_every_limit_has_a_trial(self):
        table = LANGUAGE.read_text(encoding="utf-8").split("## 10 Limits")[1].split("```")[0]
        rows = re.findall(r"^\| ([^|]*\w[^|]*) \|", table, re.MULTILINE)
        self.assertEqual(sorted(rows), sorted(PROGRAMS | TYPED))

    def test_programs(self):
        for limit, trials in PROGRAMS.items():
            for program, expected in trials:
                with self.subTest(limit=limit, begins="|".join(program)[:60]):
                    shown = run_listing(program, [], [])
                    self.assertEqual(shown, expected)

    def test_typed(self):
        for limit, (trial, expected) in TYPED.items():
            with self.subTest(limit=limit):
                self.assertEqual(trial(), expected)


if __name__ == "__main__":
    unittest.main()
