# SPDX-License-Identifier: MIT
"""Every example of the manual does what its page says, every link leads somewhere, and nothing is missing."""

import json
import os
import re
import struct
import subprocess
import tempfile
import unittest
from functools import lru_cache
from pathlib import Path

from fenced_blocks import BadExample, Example, read_examples
from machine import ROOT, Drive, command, hold_conversation, run_listing, with_header


def shown_by(example: Example) -> list:
    """What the display shows when the example is run."""
    if "typed" in example.blocks:
        return hold_conversation(example.lines("basic"), example.lines("typed"))
    return run_listing(example.lines("basic"), example.words, example.lines("input"))


def told_of_answer(expected: str, answer: dict) -> tuple:
    """What the document tells of an answer, and the part of the answer that this is about."""
    told = json.loads(re.sub(r",\s*\.\.\.\s*}$", "}", expected))
    whole = "..." not in expected
    return told, answer if whole else {name: answer.get(name) for name in told}


class Documents(unittest.TestCase):
    """A case for each document, a subtest for each example."""

    maxDiff = None

    def check_session(self, example: Example) -> None:
        with tempfile.TemporaryDirectory() as folder:
            if "basic" in example.blocks:
                name = example.words[0].removeprefix("file=")
                Path(folder, name).write_text(with_header(example.lines("basic")), encoding="utf-8")
            with Drive(folder) as drive:
                # a command, and its answer, which may stand on several lines
                session = "\n".join(example.lines("drive")) + "\n"
                for command, expected in re.findall(r"> (.*)\n((?:(?!> ).*\n)*)", session):
                    with self.subTest(command=command):
                        told, answer = told_of_answer(expected, drive.ask(command))
                        self.assertEqual(answer, told, example.place)

    def test_examples(self):
        examples = [example for page in sorted(ROOT.glob("docs/*.md")) for example in read_examples(page)]
        self.assertGreater(len(examples), 100)
        for example in examples:
            with self.subTest(example.place):
                if "drive" in example.blocks:
                    self.check_session(example)
                else:
                    self.assertEqual([line.rstrip() for line in shown_by(example)], example.lines("shows"))


@lru_cache(maxsize=None)
def read_page(path: Path) -> tuple:
    """The links of a page of the built manual or of a Markdown document, and the places that can be linked to: of a
    document its headings', as web views of repositories name them."""
    text = path.read_text(encoding="utf-8")
    if path.suffix == ".html":
        return re.findall(r'\s(?:href|src)="([^"]*)"', text), set(re.findall(r'\sid="([^"]*)"', text))
    text = re.sub(r"^ *```.*?^ *```", "", text, flags=re.MULTILINE | re.DOTALL)
    headings = re.findall(r"^#+ (.*)$", text, re.MULTILINE)
    return (re.findall(r"\]\(([^)\s]+)\)", re.sub(r"`[^`\n]*`", "", text)),
            {re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-") for heading in headings})


def broken_links(path: Path) -> list:
    broken = []
    for link in read_page(path)[0]:
        if re.match("[a-z]+:", link):
            continue
        name, _, anchor = link.partition("#")
        target = (path.parent / name).resolve() if name else path
        if not target.exists() or anchor and anchor not in read_page(target)[1]:
            broken.append(f"{path.name}: {link}")
    return broken


class Links(unittest.TestCase):
    """Every link of a document or a page of the manual leads to a file that is there, and to a heading in it."""

    def test_links(self):
        manual = Path(os.environ["QUILLON_MANUAL"])
        documents = [*ROOT.glob("*.md"), *ROOT.glob("docs/*.md"), *ROOT.glob("tests/*.md")]
        pages = list(manual.glob("*.html"))
        self.assertGreater(min(len(documents), len(pages)), 10)
        self.assertEqual([link for path in documents + pages for link in broken_links(path)], [])

    def test_a_broken_link_is_noticed(self):
        with tempfile.TemporaryDirectory() as folder:
            for name, text in [("a.md", "# One Two\n[x](#one-two) [x](#three) [x](b.html) [x](b.html#k)"),
                               ("b.html", '<p id="i"><a href="a.md#one-two">x</a><img src="c.png"><a href="#i">x</a>')]:
                Path(folder, name).write_text(text, encoding="utf-8")
            self.assertEqual(broken_links(Path(folder, "a.md")), ["a.md: #three", "a.md: b.html#k"])
            self.assertEqual(broken_links(Path(folder, "b.html")), ["b.html: c.png"])


def found_in(path: str, pattern: str, least: int = 1) -> list:
    """What a pattern finds in a file of the project: so many at least, or it is the pattern that is wrong."""
    found = re.findall(pattern, (ROOT / path).read_text(encoding="utf-8"), re.MULTILINE)
    assert len(found) >= least, path
    return found


class Paragraphs(unittest.TestCase):
    def test_begin_at_their_beginning(self):
        """A paragraph begins like a sentence, unless it goes on with what stands before a block of code."""
        for path in sorted(ROOT.glob("docs/*.md")):
            text = re.sub(r"(?ms)^```.*?^```$", "```", path.read_text(encoding="utf-8"))
            with self.subTest(path.name):
                self.assertEqual(re.findall(r"(?m)(?<!```\n\n)(?<=\n\n)[a-z].*$", text), [])


class Completeness(unittest.TestCase):
    """Nothing that the program knows is missing from the documents, and they name nothing else."""

    def table_rows(self, heading: str) -> list:
        """The cells of the table below a heading of docs/drive.md, without its head."""
        section, = found_in("docs/drive.md", rf"(?s)^## {re.escape(heading)}\n(.*?)(?:^## |\Z)")
        rows = [line.strip("|").split(" | ") for line in section.split("\n") if line.startswith("| `")]
        return [[cell.strip() for cell in row] for row in rows]

    def test_words_of_the_language(self):
        words = found_in("src/core/vocabulary.def", r'^(?:WORD|ALSO)\("([A-Z][^"]*)"', 90)
        code = " ".join(found_in("docs/language.md", r"`([^`\n]+)`"))
        self.assertEqual(set(words) - set(re.findall(r"[A-Z_]+[$#]?", code)), set())

    def test_error_texts(self):
        system, = found_in("resources/message.en.ini", r"(?s)^\[SYSTEM\].*?\n(?=\[DLG)")
        texts = re.findall(r"^M_\d+=(.*)$", system, re.MULTILINE)
        self.assertGreater(len(texts), 30)
        described = (ROOT / "docs" / "errors.md").read_text(encoding="utf-8")
        self.assertEqual([text for text in texts if f"| {text} |" not in described], [])

    def test_messages_about_skins(self):
        header = struct.pack("<2sIII IiiHHIIIIII", b"BM", 0, 0, 1078, 40, 512, 480, 1, 8, 0, 0, 0, 0, 256, 0)
        page = (ROOT / "docs" / "skins.md").read_text(encoding="utf-8")
        for remark, words, skin in [
                ("(not BMP)", "another format", b"GIF89a" + header[6:]), ("(not BMP)", "cut", header[:40]),
                ("nothing in parentheses", "cut", header + bytes(5000)),
                ("nothing in parentheses", "compressed", header[:30] + b"\1" + header[31:] + bytes(300_000)),
                ("(not 256color)", "24 or 32", header[:28] + b"\x18" + header[29:]),
                ("(not not 512x480)", "top down", header[:22] + struct.pack("<i", -480) + header[26:])]:
            with self.subTest(remark=remark, words=words), tempfile.TemporaryDirectory() as folder:
                Path(folder, "S.BMP").write_bytes(skin)
                Path(folder, "s.bas").write_text('[P0]\n10 GLOAD "S.BMP"\n', encoding="ascii")
                said = subprocess.run(command("run", Path(folder, "s.bas")), capture_output=True, text=True, check=True)
                self.assertEqual((re.findall(r"\(.*\)", said.stderr) + ["nothing in parentheses"])[0], remark)
                self.assertRegex(page, rf"(?m)^\| {re.escape(remark)} \| .*{words}")

    def test_settings(self):
        keys = found_in("src/core/settings.def", r'^\w+ *\("(\w+) ?= ', 20)
        self.assertEqual(set(keys) - set(found_in("docs/settings.md", r"`([A-Z_]+)`")), set())

    def test_commands(self):
        rows = self.table_rows("Commands") + self.table_rows("Going back")
        described = {word for row in rows for word in re.findall(r"`(\w+)", row[0])}
        known = {name for source in ("drive.cpp", "drive_travel.cpp")
                 for name in found_in(f"src/protocols/{source}", r'\{"(\w+)", do_')}
        words = found_in("src/core/host_commands.def", r'^HOST_COMMAND\((?:[^,]+,){4} +"(\w+)"', 3)
        inputs = found_in("src/session/input.cpp", r'\{"([\w -]+)", +InputVerb::', 30)
        scripts_say = {name.split()[0] for name in inputs[:inputs.index("key-down")] + ["page", *words]}
        self.assertEqual(described, known | scripts_say)
        page = (ROOT / "docs" / "debugging.md").read_text(encoding="utf-8")
        self.assertEqual([name for name in inputs[inputs.index("key-down"):] if f"`{name}" not in page
                          and name not in scripts_say], [])

    def test_settable_fields(self):
        rows = self.table_rows("Fields that can be set")
        described = {row[0].strip("`"): (int(row[1]), int(row[2])) for row in rows}
        self.assertEqual(set(described), set(found_in("src/core/fields.cpp", r'SETTING\((\w+), +(?:SETTABLE|FIELD_SETTABLE)')) | {"random_seed"})
        with Drive() as drive:
            for name, (lowest, highest) in described.items():
                with self.subTest(name):
                    taken = [number for number in (lowest - 1, lowest, highest, highest + 1)
                             if drive.ask(f"set {name} {number}")["ok"]]
                    self.assertEqual(taken, [lowest, highest])

    def test_members_of_state(self):
        described = [name for row in self.table_rows("What `state` answers") for name in re.findall(r"`(\w+)`", row[0])]
        with Drive() as drive:
            self.assertCountEqual(described, [name for name in drive.ask("state") if name != "ok"])


class Checker(unittest.TestCase):
    """The checks above notice a document that is wrong; that they take a right one the documents show."""

    def examples_of(self, text: str) -> list:
        with tempfile.TemporaryDirectory() as folder:
            path = Path(folder, "planted.md")
            path.write_text(text, encoding="utf-8")
            return read_examples(path)

    def test_what_is_shown_is_compared(self):
        for text in ("```basic\n10 PRINT 1/3\n```\n```shows\n 0.3333333334\n```\n",
                     "```basic\n10 PRINT 1/0\n```\n```shows\n```\n",
                     "```basic\n10 INPUT A\n20 PRINT A\n```\n```shows\n?\n 7\n```\n",
                     "```typed\nA=5\nA*3\n```\n```shows\n16\n```\n"):
            with self.subTest(text):
                example, = self.examples_of(text)
                self.assertNotEqual(shown_by(example), example.lines("shows"))

    def test_answers_are_compared(self):
        answer = {"ok": True, "run_state": 5, "display": ""}
        for text in ('"run_state": 4, ...', '"run_state": 5', '"no_member": 1, ...'):
            told, about = told_of_answer(f'{{"ok": true, {text}}}', answer)
            self.assertNotEqual(told, about)

    def test_stray_blocks_are_refused(self):
        for text in ("```basic\n10 END\n```\n", "```shows\n1\n```\n", "```typed\n1\n```\n```typed\n2\n```\n",
                     "```basic\n"):
            with self.subTest(text), self.assertRaises(BadExample):
                self.examples_of(text)


if __name__ == "__main__":
    unittest.main()
