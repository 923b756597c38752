"""The help of quillon-cli is what docs/terminal.md shows, bash completes all that the help names, and the highlighting
files for editors name the words of the language."""

import json
import os
import re
import subprocess
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
CLI = os.environ["QUILLON_CLI"]
COMMANDS = ("play", "run", "check", "drive")
COMPLETION = ROOT / "resources" / "completion" / "quillon-cli.bash"


def help_of(*command: str) -> str:
    run = subprocess.run([CLI, *command, "--help"], capture_output=True, text=True, check=True)
    assert run.stderr == "", run.stderr
    return "\n".join(line.rstrip() for line in run.stdout.strip().split("\n"))


def completed(folder: str, *words: str) -> set:
    """What bash offers for the last of the words."""
    script = (f"source {COMPLETION}; COMP_WORDS=(quillon-cli \"$@\"); COMP_CWORD=$#; _quillon_cli; "
              "printf '%s\\n' \"${COMPREPLY[@]}\"")
    run = subprocess.run(["bash", "-c", script, "bash", *words], capture_output=True, text=True, check=True, cwd=folder)
    return set(run.stdout.split())


class Help(unittest.TestCase):
    maxDiff = None

    def test_documented(self):
        text = (ROOT / "docs" / "terminal.md").read_text(encoding="utf-8")
        shown = dict(re.findall(r"```help (\w+)\n(.*?)\n```", text, re.DOTALL))
        self.assertEqual(shown, {command: help_of(command) for command in COMMANDS})

    def test_commands_are_listed(self):
        for command in COMMANDS:
            self.assertRegex(help_of(), rf"(?m)^  {command} ")


class Completion(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name
        for name in ("one.bas", "two.BAS", "notes.txt", "picture.bmp"):
            Path(self.folder, name).touch()
        Path(self.folder, "more").mkdir()

    def test_options(self):
        for command in ((), *((name,) for name in COMMANDS)):
            options = set(re.findall(r"(?<![\w-])--?[a-z][a-z-]*", help_of(*command).partition("Options:")[2]))
            options = {option for option in options if option in {"-h", "--help"} or option.startswith("--")}
            with self.subTest(command):
                self.assertEqual(completed(self.folder, *command, "-"), options)

    def test_words(self):
        rows = [
            (("",), set(COMMANDS)),
            (("ch",), {"check"}),
            (("check", ""), {"one.bas", "two.BAS", "notes.txt", "more/"}),
            (("check", "--json", "o"), {"one.bas"}),
            (("run", "--page", ""), set("0123456789")),
            (("run", "--values", "p"), {"picture.bmp"}),
            (("run", "--seed", ""), set()),
            (("drive", ""), set()),
        ]
        for words, offered in rows:
            with self.subTest(words):
                self.assertEqual(completed(self.folder, *words), offered)


class EditorFiles(unittest.TestCase):
    """Each file names exactly the words of the vocabulary, once, and each sort in its own group."""

    def group_of(self, code: int) -> str:
        if code >= 510:
            return "Statement"
        return {19: "Constant", 14: "Operator", 279: "Operator", 286: "Operator"}.get(code, "Function")

    def words_of_vocabulary(self) -> list:
        codes, words = {}, []
        text = (ROOT / "src" / "core" / "vocabulary.def").read_text(encoding="utf-8")
        for word, code, name in re.findall(r'^(?:WORD|ALSO)\("([A-Z][^"]*)", +(?:(\d+), )?(\w+)\)', text, re.MULTILINE):
            codes.setdefault(name, code)
            words.append((self.group_of(int(codes[name])), word))
        return sorted(words)

    def test_vim(self):
        text = (ROOT / "resources" / "editors" / "quillon.vim").read_text(encoding="utf-8")
        lines = re.findall(r"^syntax keyword quillon(\w+) +(.*)", text, re.MULTILINE)
        words = [(group, word) for group, line in lines for word in line.split()]
        self.assertEqual(sorted(words), self.words_of_vocabulary())

    def test_textmate(self):
        groups = {"keyword.control": "Statement", "support.function": "Function", "keyword.operator.word": "Operator",
                  "constant.language": "Constant"}
        grammar = json.loads((ROOT / "resources" / "editors" / "quillon.tmLanguage.json").read_text(encoding="utf-8"))
        matches = {pattern["name"].removesuffix(".quillon"): pattern.get("match", "") for pattern in grammar["patterns"]}
        words = [(group, word) for name, group in groups.items()
                 for word in re.search(r"\(\?:(.*?)\)", matches[name])[1].replace("\\", "").split("|")]
        self.assertEqual(sorted(words), self.words_of_vocabulary())


if __name__ == "__main__":
    unittest.main()
