#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Checks that every header of src/ compiles alone, included twice, and with --sources every source as well.

usage: check_headers.py ROOT [--compiler CXX] [--jobs N] [--stamps FOLDER] [--folder NAME]... [--sources]
                        [--database FOLDER] [-- FLAGS]

The compiler is the one given, else $CXX, else g++. --folder limits the check to folders of src/. The database's
folder holds compile_commands.json: each source gets the macro definitions that it has there. Flags after -- go to
the compiler. A file that passed is checked again only when it or what it includes changes. Exit status:
0 all compile, 1 some do not, 2 nothing to check or no compiler.
"""

import argparse
import os
import subprocess
import sys
import tempfile
import time
from pathlib import Path

from compile_commands import definitions, read_database
from stamps import Result, Stamps, digest, read_depfile, run_all, split_command, tool_version

FLAGS = ["-fsyntax-only", "-std=c++20", "-Wall", "-Wextra", "-Werror", "-I", "src"]


def read_arguments(arguments: list) -> argparse.Namespace:
    flags = []
    if "--" in arguments:
        split = arguments.index("--")
        arguments, flags = arguments[:split], arguments[split + 1:]
    parser = argparse.ArgumentParser(prog="check_headers.py", description="Compiles every header of src/ alone.",
                                     epilog="Flags after -- go to the compiler.")
    parser.add_argument("root", type=Path)
    parser.add_argument("--compiler", default=os.environ.get("CXX") or "g++")
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("--stamps", type=Path, help="default: ROOT/build/headers")
    parser.add_argument("--folder", action="append", default=[], help="a folder of src/; all when none is named")
    parser.add_argument("--sources", action="store_true", help="check the .cpp files too")
    parser.add_argument("--database", type=Path, help="the folder of compile_commands.json")
    options = parser.parse_args(arguments)
    options.definitions = {}
    if options.database:
        try:
            options.definitions = {path: definitions(commands[0][1])
                                   for path, commands in read_database(options.database).items()}
        except (OSError, ValueError, KeyError) as error:
            parser.error(f"no compile commands in {options.database}: {error}")
    options.command = [*split_command(options.compiler), *FLAGS, *flags]
    options.stamps = (options.stamps or options.root / "build" / "headers").absolute()
    return options


def find_files(options: argparse.Namespace) -> list:
    suffixes = (".h", ".cpp") if options.sources else (".h",)
    folders = options.folder or ["."]
    found = {path for folder in folders for path in (options.root / "src" / folder).rglob("*")}
    return sorted(str(path.relative_to(options.root / "src")) for path in found
                  if path.suffix in suffixes and path.is_file())


def command_for(options: argparse.Namespace, name: str) -> list:
    return [*options.command, *options.definitions.get((options.root / "src" / name).resolve(), [])]


def compile_alone(options: argparse.Namespace, name: str, depfile: str) -> subprocess.CompletedProcess:
    # A header is included twice: the second time shows a missing include guard.
    text = f'#include "{name}"\n' * (2 if name.endswith(".h") else 1)
    command = [*command_for(options, name), "-MMD", "-MT", "alone", "-MF", depfile, "-x", "c++", "-"]
    return subprocess.run(command, cwd=options.root, input=text, capture_output=True, text=True, errors="replace",
                          check=False)


def check_file(options: argparse.Namespace, stamps: Stamps, version: str, name: str) -> Result:
    key = digest(version, *command_for(options, name))
    if stamps.is_current(name, key):
        return Result(name, passed=True, fresh=False, report="")
    started = time.time()
    with tempfile.TemporaryDirectory(dir=stamps.folder) as scratch:
        depfile = Path(scratch) / "dependencies"
        done = compile_alone(options, name, str(depfile))
        if done.returncode == 0:
            seen = read_depfile(depfile.read_text(encoding="utf-8"))
            stamps.record(name, key, [(options.root / path).absolute() for path in seen], started)
    return Result(f"src/{name}", done.returncode == 0, fresh=True, report=done.stderr)


def main(arguments: list) -> int:
    options = read_arguments(arguments)
    for folder in options.folder:
        if not (options.root / "src" / folder).is_dir():
            print(f"headers: there is no folder {options.root / 'src' / folder}", file=sys.stderr)
            return 2
    files = find_files(options)
    if not files:
        print(f"headers: there are none in {options.root / 'src'}", file=sys.stderr)
        return 2
    version = tool_version(split_command(options.compiler))
    if version is None:
        print(f"headers: the compiler '{options.compiler}' cannot be run", file=sys.stderr)
        return 2
    stamps = Stamps(options.stamps)
    return run_all(lambda name: check_file(options, stamps, version, name), files, options.jobs, "headers")


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
