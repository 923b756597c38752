"""The help of quillon-cli is what docs/terminal.md shows, and bash completes all that the help names."""

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


if __name__ == "__main__":
    unittest.main()
