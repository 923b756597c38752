#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Measures what the tests notice: makes one small fault at a time in a copy of the sources and runs the quick tests.

usage: mutate.py ROOT [COUNT [SEED]]

The copy, its build and its cache stay in ROOT/build/mutate; the checkout is never written to. Places are chosen at
random, the same for the same seed. A mutant that does not compile, or compiles to the same object code, does not count:
another place takes its turn. A test that hangs counts as a failure. Prints each mutant that no test noticed, then a
summary. Exit status: 0 when at least 95 % were caught, 1 when fewer were, 2 when the tests fail without a mutant.
"""

import argparse
import hashlib
import json
import os
import random
import re
import shlex
import shutil
import subprocess
import sys
import time
from dataclasses import dataclass
from pathlib import Path

FLOORS = ["core", "statements", "functions", "keys", "display", "shell", "files", "session"]
WANTED_SHARE = 0.95
# The programs of tests by how much they see of the machine; that of the mutated floor runs before them.
BROADEST_FIRST = ["transcripts_tests", "core_tests", "statements_tests", "protocols_tests", "shell_tests",
                  "functions_tests", "keys_tests", "display_tests", "driver_tests", "tooling_tests", "terminal_tests"]
SLOW = {"plain_tests"}  # compiles the machine a second time
CONFIGURATION = ["-DCMAKE_BUILD_TYPE=None", "-DCMAKE_CXX_FLAGS=-O1 -w", "-DQUILLON_DESKTOP=OFF",
                 "-DQUILLON_CHECK_INVARIANTS=ON", "-DCMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE=PRE_TEST"]

OPERATORS = {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "==", "&&": "||", "||": "&&",
             "+": "-", "-": "+", "*": "/", "/": "*", "%": "/", "+=": "-=", "-=": "+=", "&": "|", "|": "&"}
OPERATOR = re.compile(r"(?<= )(" + "|".join(sorted(map(re.escape, OPERATORS), key=len, reverse=True)) + r")(?= )")
STEP = re.compile(r"\+\+|--")
NUMBER = re.compile(r"(?<![\w.'])(0x[0-9A-Fa-f]+|0[0-7]*|[1-9]\d*)(?![\w.'])")
TRUTH = re.compile(r"\b(true|false)\b")
CONDITION = re.compile(r"\b(?:if|while) \(")
RETURN = re.compile(r"return ([^;{}]+);")
STATEMENT = re.compile(r"\s+(?!return\b|case\b|default\b|using\b|else\b|if\b|for\b|while\b|switch\b|do\b)[\w*(+-].*;\s*")
NOT_CODE = re.compile(r"\s*(#|static_assert|namespace\b|using\b|template\b|enum\b)")


@dataclass(frozen=True)
class Mutant:
    path: str  # from the root
    line: int  # from 1
    before: str
    after: str


def without_texts(line: str) -> str:
    """A line with its literals and comments blanked, every other character in its place."""
    line = re.sub(r'"(?:[^"\\]|\\.)*"|\'(?:[^\'\\]|\\.)+\'', lambda text: "\x01" * len(text[0]), line)
    return re.sub(r"//.*", "", line)


def end_of_condition(code: str, start: int) -> int:
    """Where the parenthesis that opens before `start` closes; 0 when it does so on another line."""
    depth = 1
    for index in range(start, len(code)):
        depth += (code[index] == "(") - (code[index] == ")")
        if depth == 0:
            return index
    return 0


def mutations_of(line: str, code_before: str):
    """The lines that one line may become; `code_before` is the code above it."""
    code = without_texts(line)
    if NOT_CODE.match(code):
        return

    def replaced(start: int, end: int, text: str) -> str:
        return line[:start] + text + line[end:]

    for found in OPERATOR.finditer(code):
        yield replaced(*found.span(), OPERATORS[found[0]])
    for found in STEP.finditer(code):
        yield replaced(*found.span(), "--" if found[0] == "++" else "++")
    for found in NUMBER.finditer(code):
        value = int(found[0], 16 if found[0].startswith("0x") else 8 if found[0].startswith("0") else 10)
        yield replaced(*found.span(), str(value + 1))
    for found in TRUTH.finditer(code):
        yield replaced(*found.span(), "false" if found[0] == "true" else "true")
    for found in CONDITION.finditer(code):
        end = end_of_condition(code, found.end())
        if end and ";" not in code[found.end():end]:
            yield replaced(found.end(), end, f"!({line[found.end():end]})")
    for found in RETURN.finditer(code):
        if found[1] not in ("true", "false"):
            yield replaced(*found.span(), "return {};")
    is_whole = code.count("(") == code.count(")") and code.count("{") == code.count("}")
    if is_whole and STATEMENT.fullmatch(code.rstrip("\n")) and re.search(r"[;{}:)]$|\belse$", code_before):
        yield re.match(r"\s*", line)[0] + ";\n"


def mutants_of(root: Path, path: Path):
    """For each line that can be mutated, the list of what it may become."""
    code_before = ""
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(keepends=True), 1):
        found = [Mutant(str(path.relative_to(root)), number, line, after)
                 for after in dict.fromkeys(mutations_of(line, code_before)) if after != line]
        if found:
            yield found
        code_before = without_texts(line).strip() or code_before


class Tests:
    """The copy of the project, its build, and its test programs."""

    def __init__(self, root: Path):
        self.tree = root / "build" / "mutate" / "tree"
        self.build = root / "build" / "mutate" / "build"
        self.copy_sources(root)
        self.run(["cmake", "-S", self.tree, "-B", self.build, "-G", "Ninja", *CONFIGURATION, *self.launcher()])
        listed = self.run(["ninja", "-C", self.build, "-t", "targets", "all"]).stdout
        programs = set(re.findall(r"^tests/(\w+_tests):", listed, re.MULTILINE)) - SLOW
        self.programs = [p for p in BROADEST_FIRST if p in programs] + sorted(programs - set(BROADEST_FIRST))
        self.objects = self.read_objects()
        self.time_limits = {}

    @staticmethod
    def launcher() -> list:
        return ["-DCMAKE_CXX_COMPILER_LAUNCHER=ccache"] if shutil.which("ccache") else []

    @staticmethod
    def run(command: list) -> subprocess.CompletedProcess:
        done = subprocess.run(list(map(str, command)), capture_output=True, text=True, check=False)
        if done.returncode != 0:
            sys.exit(f"mutate: {shlex.join(map(str, command))} failed:\n{done.stdout[-4000:]}{done.stderr[-4000:]}")
        return done

    def copy_sources(self, root: Path) -> None:
        """Brings the copy up to date; files that have not changed keep their times, and so their objects."""
        names = self.run(["git", "-c", f"safe.directory={root}", "-C", root, "ls-files", "-z", "--cached", "--others",
                          "--exclude-standard"]).stdout.split("\0")
        wanted = {name for name in names if name and (root / name).is_file()}
        for path in [p for p in self.tree.rglob("*") if p.is_file() and str(p.relative_to(self.tree)) not in wanted]:
            path.unlink()
        for name in wanted:
            target = self.tree / name
            if not target.is_file() or target.read_bytes() != (root / name).read_bytes():
                target.parent.mkdir(parents=True, exist_ok=True)
                shutil.copy(root / name, target)

    def read_objects(self) -> dict:
        """The object file of each source in its library."""
        database = json.loads((self.build / "compile_commands.json").read_text(encoding="utf-8"))
        outputs = {}
        for entry in database:
            words = shlex.split(entry["command"])
            output = words[words.index("-o") + 1]
            if output.startswith("src/") and Path(entry["file"]).is_relative_to(self.tree):
                outputs[str(Path(entry["file"]).relative_to(self.tree))] = output
        return outputs

    def make(self, target: str) -> bool:
        return subprocess.run(["ninja", "-C", self.build, target], capture_output=True, check=False).returncode == 0

    def digest_of(self, path: str) -> str:
        return hashlib.sha256((self.build / self.objects[path]).read_bytes()).hexdigest()

    def passes(self, program: str) -> bool:
        """Runs a program of tests. What it prints and leaves is of no interest, and what it starts ends with it."""
        command = [str(self.build / "tests" / program), "--gtest_fail_fast", "--gtest_brief=1"]
        with subprocess.Popen(command, cwd=self.build / "tests", stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                              stdin=subprocess.DEVNULL, start_new_session=True) as process:
            try:
                return process.wait(timeout=self.time_limits.get(program)) == 0
            except subprocess.TimeoutExpired:
                os.killpg(process.pid, 9)
                return False

    def measure(self) -> bool:
        """Builds and runs everything without a mutant, and sets each program's time limit. False when tests fail."""
        for program in self.programs:
            if not self.make(program):
                sys.exit(f"mutate: {program} does not build")
            start = time.monotonic()
            if not self.passes(program):
                print(f"mutate: {program} fails without a mutant", file=sys.stderr)
                return False
            self.time_limits[program] = 10 + 5 * (time.monotonic() - start)
        return True

    def order_for(self, path: str) -> list:
        own = path.split("/")[1] + "_tests"
        return sorted(self.programs, key=lambda program: program != own)

    def judge(self, mutant: Mutant, original_digest: str) -> str:
        """"" when the mutant does not count, else the program that caught it, or "survived"."""
        if not self.make(self.objects[mutant.path]) or self.digest_of(mutant.path) == original_digest:
            return ""
        for program in self.order_for(mutant.path):
            if not self.make(program) or not self.passes(program):
                return program
        return "survived"

    def try_mutant(self, mutant: Mutant) -> str:
        path = self.tree / mutant.path
        original = path.read_bytes()
        self.make(self.objects[mutant.path])  # from the file as it is, after the mutant before this one
        digest = self.digest_of(mutant.path)
        lines = original.decode().splitlines(keepends=True)
        lines[mutant.line - 1] = mutant.after
        try:
            path.write_text("".join(lines), encoding="utf-8")
            return self.judge(mutant, digest)
        finally:
            path.write_bytes(original)


def choose(tests: Tests, seed: int):
    """Mutants in a random order: one for each line at most, so that long tables of numbers do not crowd out the rest."""
    generator = random.Random(seed)
    lines = [found for floor in FLOORS for path in sorted((tests.tree / "src" / floor).glob("*.cpp"))
             if str(path.relative_to(tests.tree)) in tests.objects for found in mutants_of(tests.tree, path)]
    generator.shuffle(lines)
    for found in lines:
        yield generator.choice(found)


def main() -> int:
    parser = argparse.ArgumentParser(prog="mutate.py", description="Measures what the tests notice.")
    parser.add_argument("root", type=Path)
    parser.add_argument("count", type=int, nargs="?", default=100)
    parser.add_argument("seed", type=int, nargs="?", default=1)
    options = parser.parse_args()
    tests = Tests(options.root.resolve())
    if not tests.measure():
        return 2
    counted, survived = 0, 0
    for mutant in choose(tests, options.seed):
        if counted == options.count:
            break
        verdict = tests.try_mutant(mutant)
        counted += verdict != ""
        survived += verdict == "survived"
        if verdict == "survived":
            print(f"{mutant.path}:{mutant.line}: survived", f"- {mutant.before.strip()}", f"+ {mutant.after.strip()}",
                  sep="\n", flush=True)
        elif verdict and os.environ.get("MUTATE_VERBOSE"):
            print(f"{mutant.path}:{mutant.line}: caught by {verdict}: {mutant.after.strip()}", flush=True)
    print(f"{counted - survived} of {counted} mutants caught, seed {options.seed}")
    return 0 if counted and counted - survived >= WANTED_SHARE * counted else 1


if __name__ == "__main__":
    sys.exit(main())
