#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Runs clang-tidy over the sources of src/, in parallel, again only where something changed.

usage: check_tidy.py ROOT --database FOLDER [--stamps FOLDER] [--jobs N] [--clang-tidy COMMAND]

FOLDER holds compile_commands.json. Warnings are errors. A source passed under one version of the tool, one
configuration and one compile command counts as passed until it or a file it includes changes. A source that no
target compiles would go unseen and is an error. Exit status: 0 silent, 1 warnings, 2 nothing to check.
"""

import argparse
import subprocess
import sys
import time
from pathlib import Path

from compile_commands import read_database
from stamps import Result, Stamps, digest, read_depfile, run_all, split_command, tool_version

# The database may come from another compiler whose options clang does not know.
TIDY_FLAGS = ["--quiet", "--warnings-as-errors=*", "--extra-arg=-Wno-unknown-warning-option",
              "--extra-arg=-Wno-ignored-optimization-argument"]


def read_arguments(arguments: list) -> argparse.Namespace:
    parser = argparse.ArgumentParser(prog="check_tidy.py", description="Runs clang-tidy where something changed.")
    parser.add_argument("root", type=Path)
    parser.add_argument("--database", type=Path, required=True, help="the folder of compile_commands.json")
    parser.add_argument("--stamps", type=Path, help="default: ROOT/build/tidy")
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("--clang-tidy", default="clang-tidy")
    options = parser.parse_args(arguments)
    options.root = options.root.resolve()
    options.database = options.database.resolve()
    options.stamps = (options.stamps or options.root / "build" / "tidy").absolute()
    return options


def list_dependencies(directory: Path, words: list) -> list:
    """The files that a compile command reads, but for the system's headers; empty when it cannot tell."""
    kept, skip = [], False
    for word in words:
        if not skip and word not in ("-o", "-c", "-MD", "-MMD", "-MF", "-MT", "-MQ"):
            kept.append(word)
        skip = not skip and word in ("-o", "-MF", "-MT", "-MQ")
    done = subprocess.run([*kept, "-MM", "-MT", "all"], cwd=directory, capture_output=True, text=True, check=False)
    return [(directory / path).resolve() for path in read_depfile(done.stdout)] if done.returncode == 0 else []


def configurations(root: Path) -> str:
    """A fingerprint of every .clang-tidy that can concern a source."""
    files = [root / ".clang-tidy", *sorted((root / "src").rglob(".clang-tidy"))]
    return digest(*[part for path in files if path.is_file() for part in (path, path.read_text(encoding="utf-8"))])


class Checker:
    def __init__(self, options: argparse.Namespace, commands: dict, version: str):
        self.options = options
        self.commands = commands
        self.stamps = Stamps(options.stamps)
        self.tool = [*split_command(options.clang_tidy), *TIDY_FLAGS, "-p", str(options.database)]
        self.common_key = digest(version, configurations(options.root), *self.tool)

    def check(self, path: Path) -> Result:
        name = str(path.relative_to(self.options.root))
        if path not in self.commands:
            return Result(name, passed=False, fresh=True, report="no target compiles this source")
        commands = self.commands[path]
        key = digest(self.common_key, *[digest(directory, *words) for directory, words in commands])
        if self.stamps.is_current(name, key):
            return Result(name, passed=True, fresh=False, report="")
        started = time.time()
        done = subprocess.run([*self.tool, str(path)], capture_output=True, text=True, errors="replace", check=False)
        if done.returncode == 0:
            seen = [list_dependencies(directory, words) for directory, words in commands]
            if all(path in paths for paths in seen):
                self.stamps.record(name, key, set().union(*seen), started)
        return Result(name, done.returncode == 0, fresh=True, report=done.stdout or done.stderr)


def main(arguments: list) -> int:
    options = read_arguments(arguments)
    sources = sorted((options.root / "src").rglob("*.cpp"))
    if not sources:
        print(f"tidy: there are no sources in {options.root / 'src'}", file=sys.stderr)
        return 2
    try:
        commands = read_database(options.database)
    except (OSError, ValueError, KeyError) as error:
        print(f"tidy: no compile commands in {options.database}: {error}", file=sys.stderr)
        return 2
    version = tool_version(split_command(options.clang_tidy))
    if version is None:
        print(f"tidy: '{options.clang_tidy}' cannot be run", file=sys.stderr)
        return 2
    checker = Checker(options, commands, version)
    return run_all(checker.check, sources, options.jobs, "tidy")


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
