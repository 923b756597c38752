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

LEADERS = ("basic", "typed", "drive")
PARTS = (*LEADERS, "input", "shows")


class BadExample(Exception):
    """Blocks that make no example."""


@dataclass
class Block:
    """A fenced block: the words behind the fence and the lines in it."""

    line: int  # of the opening fence, from 1
    words: list
    lines: list

    @property
    def kind(self) -> str:
        return self.words[0] if self.words else ""


@dataclass
class Example:
    """Blocks that are run together, in their order."""

    place: str
    blocks: list = field(default_factory=list)

    def block(self, kind: str):
        """The block of this kind, None when there is none."""
        return next((block for block in self.blocks if block.kind == kind), None)

    def lines(self, kind: str) -> list:
        block = self.block(kind)
        return block.lines if block else []


def read_blocks(text: str) -> list:
    """All fenced blocks of a document."""
    blocks = []
    inside = None
    for number, line in enumerate(text.split("\n"), 1):
        if not line.startswith("```"):
            if inside is not None:
                inside.lines.append(line)
        elif inside is None:
            inside = Block(number, line[3:].split(), [])
        else:
            blocks.append(inside)
            inside = None
    if inside is not None:
        raise BadExample(f"the block of line {inside.line} is not closed")
    return blocks


def is_complete(example: Example) -> bool:
    return example.blocks[-1].kind in ("shows", "drive")


def continues(example: Example, block: Block) -> bool:
    """Whether the block belongs to the example before it."""
    followers = {"basic": ("input", "typed", "shows", "drive"), "input": ("shows",), "typed": ("shows",)}
    return block.kind in followers.get(example.blocks[-1].kind, ())


def read_examples(path: Path) -> list:
    """The examples of a document; BadExample where a block stands alone."""
    examples = []
    for block in read_blocks(path.read_text(encoding="utf-8")):
        if block.kind not in PARTS:
            continue
        if examples and continues(examples[-1], block):
            examples[-1].blocks.append(block)
        elif examples and not is_complete(examples[-1]):
            raise BadExample(f"{examples[-1].place}: nothing says what this example shows")
        elif block.kind not in LEADERS:
            raise BadExample(f"{path.name}:{block.line}: no example goes before this block")
        else:
            examples.append(Example(f"{path.name}:{block.line}", [block]))
    if examples and not is_complete(examples[-1]):
        raise BadExample(f"{examples[-1].place}: nothing says what this example shows")
    return examples
