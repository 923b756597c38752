# SPDX-License-Identifier: MIT
"""Finds the examples of a document: fenced blocks that belong together.

An example begins with one of these blocks and ends with what comes out of it:

    basic   a listing; words behind "basic" are options of `quillon-cli run`, or file=NAME for a drive example
    input   lines for INPUT, behind the listing
    typed   lines for the command line of the machine, alone or behind a listing that is loaded first
    shows   what the display shows; ends the example
    drive   commands of the driving protocol ("> command"), each with its answer; ends the example

A block of any other language belongs to no example.
"""

from dataclasses import dataclass, field
from pathlib import Path

# What may stand behind a block in its example; an example ends where nothing may. None is before its first block.
FOLLOWERS = {None: ("basic", "typed", "drive"), "basic": ("input", "typed", "shows", "drive"), "input": ("shows",),
             "typed": ("shows",), "shows": (), "drive": ()}


class BadExample(Exception):
    """Blocks that make no example."""


@dataclass
class Example:
    """Blocks that are run together: the lines of each by its kind."""

    place: str
    blocks: dict = field(default_factory=dict)
    words: list = field(default_factory=list)  # behind "basic"

    def lines(self, kind: str) -> list:
        return self.blocks.get(kind, [])


def read_blocks(path: Path):
    """All fenced blocks of a document: the place, the words behind the fence, and the lines in it."""
    place, words, lines = "", None, []
    for number, line in enumerate(path.read_text(encoding="utf-8").split("\n"), 1):
        if not line.startswith("```"):
            lines.append(line)
        elif words is None:
            place, words, lines = f"{path.name}:{number}", line[3:].split() or [""], []
        else:
            yield place, words, lines
            words, lines = None, []
    if words is not None:
        raise BadExample(f"{place}: the block is not closed")


def read_examples(path: Path) -> list:
    """The examples of a document; BadExample where a block stands alone."""
    examples = []
    last = None  # the kind of the block before in an example that has not ended
    for place, (kind, *words), lines in read_blocks(path):
        if kind not in FOLLOWERS:
            continue
        if kind not in FOLLOWERS[last]:
            raise BadExample(f"{place}: this block does not belong behind {last or 'no other'}")
        if last is None:
            examples.append(Example(place, words=words))
        examples[-1].blocks[kind] = lines
        last = kind if FOLLOWERS[kind] else None
    if last is not None:
        raise BadExample(f"{examples[-1].place}: nothing says what this example shows")
    return examples
