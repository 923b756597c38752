# SPDX-License-Identifier: MIT
"""Reads the compile commands that the build exports (compile_commands.json)."""

import json
import shlex
from pathlib import Path


def read_database(folder: Path) -> dict:
    """By resolved source path, the list of its compile commands, each as (folder to run in, words)."""
    commands = {}
    for entry in json.loads((folder / "compile_commands.json").read_text(encoding="utf-8")):
        directory = Path(entry["directory"])
        words = entry.get("arguments") or shlex.split(entry["command"])
        commands.setdefault((directory / entry["file"]).resolve(), []).append((directory, words))
    return commands


def definitions(words: list) -> list:
    """The macro definitions (-DNAME, -D NAME) of a compile command."""
    found = []
    for word, following in zip(words, [*words[1:], ""]):
        if word == "-D":
            found.append("-D" + following)
        elif word.startswith("-D"):
            found.append(word)
    return found
