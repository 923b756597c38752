# SPDX-License-Identifier: MIT
"""The help of quillon-cli is what docs/terminal.md shows, bash completes all that the help names, the highlighting files
for editors name the words of the language, every listing of examples/ prints what stands beside it, and a snapshot has
the pixels whose checksum the driving protocol tells."""

import json
import os
import re
import shlex
import subprocess
import tempfile
import unittest
import zlib
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
CLI = os.environ["QUILLON_CLI"]
COMMANDS = ("play", "run", "check", "replay", "drive")
COMPLETION = ROOT / "resources" / "completion" / "quillon-cli.bash"


def help_of(*command: str) -> str:
    run = subprocess.run([CLI, *command, "--help"], capture_output=True, text=True, check=True)
    assert run.stderr == "", run.stderr
    return "\n".join(line.rstrip() for line in run.stdout.strip().split("\n"))


def completed(folder: str, *words: str) -> set:
    """What bash offers for the last of the words."""
    script = (f"source {shlex.quote(str(COMPLETION))}; COMP_WORDS=(quillon-cli \"$@\"); COMP_CWORD=$#; _quillon_cli; "
              "printf '%s\\n' \"${COMPREPLY[@]}\"")
    run = subprocess.run(["bash", "-c", script, "bash", *words], capture_output=True, text=True, check=True, cwd=folder)
    return set(run.stdout.split())


class Help(unittest.TestCase):
    maxDiff = None

    def test_documented(self):
        text = (ROOT / "docs" / "terminal.md").read_text(encoding="utf-8")
        shown = dict(re.findall(r"```help (\w+)\n(.*?)\n```", text, re.DOTALL))
        self.assertEqual(shown, {command: help_of(command) for command in COMMANDS})
        for command in COMMANDS:
            self.assertRegex(help_of(), rf"(?m)^  {command} ")


class Sentences(unittest.TestCase):
    """Whatever quillon-cli says of itself is in the manual and on the man page."""

    def test_documented(self):
        sources = "".join(path.read_text(encoding="utf-8") for path in sorted((ROOT / "src" / "terminal").glob("*.cpp")))
        saying = re.findall(r"(?s)(?:print_error|ValidationError)\(.*?\);\n|^std::string fault_of\(.*?^}", sources, re.M)
        texts = re.findall(r'"((?:[^"\\]|\\.)*)"', "".join(saying))
        said = {text.strip(' :;"\\') for text in texts if " " in text.strip() and "%" not in text}
        self.assertGreater(len(said), 15)
        for page in ("docs/terminal.md", "docs/man/quillon-cli.1.in"):
            text = re.sub(r"\s+", " ", re.sub(r"(?m)^\.\w+ ", "", (ROOT / page).read_text(encoding="utf-8")))
            with self.subTest(page):
                self.assertEqual([words for words in sorted(said) if words not in text], [])


class FullDisk(unittest.TestCase):
    """Output that cannot be written is reported, and so is the exit status."""

    def test_reported(self):
        listing = ROOT / "examples" / "primes.bas"
        for command in (["--help"], ["--version"], ["run", "--help"], ["run", listing], ["check", "--json", listing],
                        ["drive"]):
            with self.subTest(command), open("/dev/full", "w", encoding="ascii") as full:
                run = subprocess.run([CLI, *command], input="new\n", stdout=full, stderr=subprocess.PIPE, text=True,
                                     timeout=60, check=False)
                self.assertEqual((run.returncode, run.stderr),
                                 (2, "quillon-cli: cannot write the output: No space left on device\n"))


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
            options = set(re.findall(r"(?<![\w-])(?:--[a-z][a-z-]*|-h\b)", help_of(*command).partition("Options:")[2]))
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
        self.assertEqual([(words, completed(self.folder, *words)) for words, _ in rows], rows)


class EditorFiles(unittest.TestCase):
    """Each file names exactly the words of the vocabulary, once, and each sort in its own group."""

    def words_of_vocabulary(self) -> list:
        groups = {19: "Constant", 14: "Operator", 279: "Operator", 286: "Operator"}  # by code
        codes, words = {}, []
        text = (ROOT / "src" / "core" / "vocabulary.def").read_text(encoding="utf-8")
        for word, code, name in re.findall(r'^(?:WORD|ALSO)\("([A-Z][^"]*)", +(?:(\d+), )?(\w+)\)', text, re.MULTILINE):
            code = int(codes.setdefault(name, code))
            words.append(("Statement" if code >= 510 else groups.get(code, "Function"), word))
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


class Examples(unittest.TestCase):
    """Beside a listing stand what it prints (.out), and its options (.args) and its input (.in) if it has any."""

    def test_examples(self):
        def beside(listing: Path, suffix: str) -> bytes:
            path = listing.with_suffix(suffix)
            return path.read_bytes() if path.exists() else b""

        listings = sorted((ROOT / "examples").glob("*.bas"))
        self.assertGreaterEqual(len(listings), 6)
        check = subprocess.run([CLI, "check", *listings], capture_output=True, check=False)
        self.assertEqual((check.returncode, check.stdout, check.stderr), (0, b"", b""))
        for listing in listings:
            with self.subTest(listing.name):
                run = subprocess.run([CLI, "run", listing, *beside(listing, ".args").decode().split()],
                                     input=beside(listing, ".in"), capture_output=True, check=False)
                expected = (0, listing.with_suffix(".out").read_bytes(), b"")
                self.assertEqual((run.returncode, run.stdout, run.stderr), expected)
        for path in (ROOT / "examples").iterdir():
            self.assertTrue(path.suffix not in (".out", ".args", ".in") or path.with_suffix(".bas") in listings, path)


class Snapshot(unittest.TestCase):
    def test_checksum(self):
        with tempfile.TemporaryDirectory() as folder:
            looks = ["", "tick", "command\ntick", "hold shift\ntick"]
            lines = "\n".join(f"{commands}\nsnapshot {i} a.bmp\nlcd" for i, commands in enumerate(looks))
            run = subprocess.run([CLI, "drive"], input=lines, capture_output=True, text=True, check=True, cwd=folder)
            told = [json.loads(line)["crc32"] for line in run.stdout.split("\n") if "crc32" in line]
            self.assertEqual(sorted(os.listdir(folder)), [f"{i} a.bmp" for i in range(len(looks))])
            files = [Path(folder, f"{i} a.bmp").read_bytes()[54:] for i in range(len(looks))]
        for checksum, pixels in zip(told, files):
            rows = [pixels[at:at + 1176] for at in range(87 * 1176, -1, -1176)]  # the file has them from the bottom up
            rgb = b"".join(row[x:x + 3][::-1] for row in rows for x in range(0, 1176, 3))
            self.assertEqual(checksum, f"{zlib.crc32(rgb):08x}")
        self.assertEqual(len(set(told)), len(looks), "another picture each time")


if __name__ == "__main__":
    unittest.main()
