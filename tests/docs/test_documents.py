"""Every example of the manual does what its page says, every link leads somewhere, and nothing is missing."""

import json
import os
import re
import tempfile
import unittest
from functools import lru_cache
from html.parser import HTMLParser
from pathlib import Path

from fenced_blocks import BadExample, Example, read_examples
from machine import CATALOGUE, ROOT, Drive, hold_conversation, run_listing, with_header

LANGUAGE = ROOT / "docs" / "language.md"
PROTOCOL = ROOT / "docs" / "drive.md"
ERRORS = ROOT / "docs" / "errors.md"
SETTINGS = ROOT / "docs" / "settings.md"


def shown_by(example: Example) -> list:
    """What the display shows when the example is run."""
    listing = example.block("basic")
    if example.block("typed"):
        return hold_conversation(listing.lines if listing else None, example.lines("typed"))
    return run_listing(listing.lines, listing.words[1:], example.lines("input"))


def split_session(lines: list) -> list:
    """Pairs of a command and the text of its answer, which may stand on several lines."""
    pairs = []
    for line in lines:
        if line.startswith("> "):
            pairs.append((line[2:], ""))
        else:
            command, answer = pairs.pop()
            pairs.append((command, answer + line))
    return pairs


def told_of_answer(expected: str, answer: dict) -> tuple:
    """What the document tells of an answer, and the part of the answer that this is about."""
    told = json.loads(re.sub(r",\s*\.\.\.\s*}$", "}", expected))
    whole = "..." not in expected
    return told, answer if whole else {name: answer.get(name) for name in told}


class Documents(unittest.TestCase):
    """A case for each document, a subtest for each example."""

    maxDiff = None

    def check_shown(self, example: Example) -> None:
        shown = [line.rstrip() for line in shown_by(example)]
        self.assertEqual(shown, example.lines("shows"), example.place)

    def check_session(self, example: Example) -> None:
        listing = example.block("basic")
        with tempfile.TemporaryDirectory() as folder:
            if listing:
                name = listing.words[1].removeprefix("file=")
                Path(folder, name).write_text(with_header(listing.lines), encoding="utf-8")
            with Drive(folder) as drive:
                for command, expected in split_session(example.lines("drive")):
                    with self.subTest(command=command):
                        told, answer = told_of_answer(expected, drive.ask(command))
                        self.assertEqual(answer, told, example.place)

    def test_examples(self):
        examples = [example for page in sorted(ROOT.glob("docs/*.md")) for example in read_examples(page)]
        self.assertGreater(len(examples), 100)
        for example in examples:
            with self.subTest(example.place):
                if example.block("drive"):
                    self.check_session(example)
                else:
                    self.check_shown(example)


class Page(HTMLParser):
    """The links and the places of a page of the built manual."""

    def __init__(self, text: str):
        super().__init__()
        self.links, self.anchors = [], set()
        self.feed(text)

    def handle_starttag(self, tag, attrs):
        for name, value in attrs:
            if name in ("href", "src"):
                self.links.append(value)
            elif name == "id":
                self.anchors.add(value)


class Document:
    """The links and the headings' places of a Markdown document, as web views of repositories name them."""

    def __init__(self, text: str):
        text = re.sub(r"^ *```.*?^ *```", "", text, flags=re.MULTILINE | re.DOTALL)
        self.links = re.findall(r"\]\(([^)\s]+)\)", re.sub(r"`[^`\n]*`", "", text))
        headings = re.findall(r"^#+ (.*)$", text, re.MULTILINE)
        self.anchors = {re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-") for heading in headings}


@lru_cache(maxsize=None)
def read_page(path: Path):
    text = path.read_text(encoding="utf-8")
    return Page(text) if path.suffix == ".html" else Document(text)


def broken_links(path: Path) -> list:
    broken = []
    for link in read_page(path).links:
        if re.match("[a-z]+:", link):
            continue
        name, _, anchor = link.partition("#")
        target = (path.parent / name).resolve() if name else path
        if not target.exists() or anchor and anchor not in read_page(target).anchors:
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
                               ("b.html", "<p id=i><a href=a.md#one-two>x</a><img src=c.png><a href=#i>x</a>")]:
                Path(folder, name).write_text(text, encoding="utf-8")
            self.assertEqual(broken_links(Path(folder, "a.md")), ["a.md: #three", "a.md: b.html#k"])
            self.assertEqual(broken_links(Path(folder, "b.html")), ["b.html: c.png"])


def names_in_source(path: str, pattern: str) -> list:
    return re.findall(pattern, (ROOT / "src" / path).read_text(encoding="utf-8"), re.MULTILINE)


class Completeness(unittest.TestCase):
    """Nothing that the program knows is missing from the documents, and they name nothing else."""

    def table_rows(self, heading: str) -> list:
        """The cells of the table below a heading of docs/drive.md, without its head."""
        text = PROTOCOL.read_text(encoding="utf-8")
        section = text.partition(f"## {heading}\n")[2].partition("\n## ")[0]
        rows = [line.strip("|").split(" | ") for line in section.split("\n") if line.startswith("| `")]
        return [[cell.strip() for cell in row] for row in rows]

    def test_words_of_the_language(self):
        words = names_in_source("core/vocabulary.def", r'^(?:WORD|ALSO)\("([A-Z][^"]*)"')
        self.assertGreater(len(words), 90)
        code = " ".join(re.findall(r"`([^`\n]+)`", LANGUAGE.read_text(encoding="utf-8")))
        described = set(re.findall(r"[A-Z_]+[$#]?", code))
        self.assertEqual([word for word in words if word not in described], [])

    def test_error_texts(self):
        catalogue = CATALOGUE.read_text(encoding="utf-8")
        texts = re.findall(r"^M_\d+=(.*)$", re.search(r"\[SYSTEM\].*?\n(?=\[DLG)", catalogue, re.DOTALL)[0], re.MULTILINE)
        self.assertGreater(len(texts), 30)
        described = ERRORS.read_text(encoding="utf-8")
        self.assertEqual([text for text in texts if f"| {text} |" not in described], [])

    def test_settings(self):
        described = set(re.findall(r"`([A-Z_]+)`", SETTINGS.read_text(encoding="utf-8")))
        keys = names_in_source("shell/settings.cpp", r'^    \{"(\w+) ?= ')
        self.assertGreater(len(keys), 20)
        self.assertEqual([key for key in keys if key not in described], [])

    def test_commands(self):
        cells = [row[0] for row in self.table_rows("Commands")]
        described = {word for cell in cells for word in re.findall(r"`(\w+)", cell)}
        self.assertEqual(described, set(names_in_source("terminal/drive.cpp", r'\{"(\w+)", do_')))

    def test_settable_fields(self):
        rows = self.table_rows("Fields that can be set")
        described = {row[0].strip("`"): (int(row[1]), int(row[2])) for row in rows}
        self.assertEqual(
            set(described), set(names_in_source("terminal/drive_state.cpp", r'^    \{"(\w+)", -?\d+, \d+, ')))
        with Drive() as drive:
            for name, (lowest, highest) in described.items():
                with self.subTest(name):
                    taken = [number for number in (lowest - 1, lowest, highest, highest + 1)
                             if drive.ask(f"set {name} {number}")["ok"]]
                    self.assertEqual(taken, [lowest, highest])

    def test_members_of_state(self):
        cells = [row[0] for row in self.table_rows("What `state` answers")]
        described = [name for cell in cells for name in re.findall(r"`(\w+)`", cell)]
        with Drive() as drive:
            self.assertCountEqual(described, [name for name in drive.ask("state") if name != "ok"])


class Checker(unittest.TestCase):
    """The checks above notice a document that is wrong."""

    def examples_of(self, text: str) -> list:
        with tempfile.TemporaryDirectory() as folder:
            path = Path(folder, "planted.md")
            path.write_text(text, encoding="utf-8")
            return read_examples(path)

    def test_what_is_shown_is_compared(self):
        rows = [
            ("```basic\n10 PRINT 1/3\n```\n```shows\n 0.3333333333\n```\n", True),
            ("```basic\n10 PRINT 1/3\n```\n```shows\n 0.3333333334\n```\n", False),
            ("```basic\n10 PRINT 1/0\n```\n```shows\nERR3 P0-10\n```\n", True),
            ("```basic\n10 PRINT 1/0\n```\n```shows\n```\n", False),
            ("```basic\n10 INPUT A\n20 PRINT A\n```\n```input\n7\n```\n```shows\n?\n 7\n```\n", True),
            ("```basic\n10 INPUT A\n20 PRINT A\n```\n```shows\n?\n 7\n```\n", False),
            ("```typed\nA=5\nA*3\n```\n```shows\n15\n```\n", True),
            ("```typed\nA=5\nA*3\n```\n```shows\n16\n```\n", False),
        ]
        for text, right in rows:
            with self.subTest(text):
                example, = self.examples_of(text)
                self.assertEqual(shown_by(example) == example.lines("shows"), right)

    def test_answers_are_compared(self):
        answer = {"ok": True, "run_state": 5, "display": ""}
        rows = [
            ('{"ok": true, "run_state": 5, ...}', True),
            ('{"ok": true, "run_state": 4, ...}', False),
            ('{"ok": true, "run_state": 5}', False),
            ('{"ok": true, "no_member": 1, ...}', False),
        ]
        for text, right in rows:
            with self.subTest(text):
                told, about = told_of_answer(text, answer)
                self.assertEqual(told == about, right)

    def test_stray_blocks_are_refused(self):
        for text in ("```basic\n10 END\n```\n", "```shows\n1\n```\n", "```typed\n1\n```\n```typed\n2\n```\n",
                     "```basic\n"):
            with self.subTest(text), self.assertRaises(BadExample):
                self.examples_of(text)


if __name__ == "__main__":
    unittest.main()
