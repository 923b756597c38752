# SPDX-License-Identifier: MIT
"""Runs the examples of a document on quillon-cli and tells what the display showed, a line for each text.

`run_listing` uses `quillon-cli run`; `hold_conversation` types at a machine in command mode by the driving protocol.
Both give the machine's characters as Unicode.
"""

import json
import os
import re
import subprocess
import tempfile
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
CATALOGUE = ROOT / "resources" / "message.en.ini"
TIMEOUT_S = 60

# What stands for the machine's codes that are not ASCII outside the machine.
SPECIAL = dict(zip([0x5C, 0x5E, 0x7F, *range(0x81, 0x99), 0x9B, 0x9D, 0x9E, 0x9F],
                   "¥↑◀≤≠≥←↓→π○□△×÷ᴇ·°♠♥♦♣█ΣΩμ\\♡♧♤♢")) | {0x80: "_", 0x9C: "ᴇ-"}

# Keys in a typed line, as {NAME}: the code that the line editor gets.
EDITING_KEYS = {"Left": 1, "Right": 2, "Del": 3, "BS": 4, "Ins": 5, "Home": 6, "End": 7, "Up": 8, "Down": 9}
VIRTUAL_KEY_HOME = 36

STATE_PRINT_WAIT, STATE_STOPPED, STATE_ENDED = 1, 3, 4
KIND_PROMPT, KIND_INPUT_ERROR, KIND_RESULT = 11, 14, 17
TICKS_MAX = 100_000
WAITS_MAX = 1000


def command(*arguments) -> list:
    return [os.environ["QUILLON_CLI"], *map(str, arguments)]


def with_header(lines: list) -> str:
    """A listing: [P0] is added when there is no area header."""
    has_header = any(line.upper().startswith("[P") for line in lines)
    return "\n".join(lines if has_header else ["[P0]", *lines]) + "\n"


def run_listing(lines: list, options: list, entries: list) -> list:
    """The lines shown, then the text of the error that ended the program, or of the fault in the listing."""
    with tempfile.TemporaryDirectory() as folder:
        path = Path(folder, "example.bas")
        path.write_text(with_header(lines), encoding="utf-8")
        done = subprocess.run(
            command("run", path, "--catalogue", CATALOGUE, "--max-ticks", TICKS_MAX, *options), check=False,
            input="".join(line + "\n" for line in entries), capture_output=True, text=True, timeout=TIMEOUT_S)
    shown = done.stdout.removesuffix("\n").split("\n") if done.stdout else []
    if done.returncode == 1:
        shown.append(next(line for line in done.stderr.split("\n") if not line.startswith("quillon-cli: P")))
    elif done.returncode == 2:
        shown.append(done.stderr.strip().partition("does not load: ")[2] or done.stderr)
    elif done.returncode != 0:
        shown.append(f"(exit status {done.returncode})")
    return shown


class Drive:
    """A quillon-cli that takes commands of the driving protocol."""

    def __init__(self, folder=None):
        self.process = subprocess.Popen(command("drive"), stdin=subprocess.PIPE, stdout=subprocess.PIPE, cwd=folder)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.communicate(timeout=TIMEOUT_S)

    def ask(self, line) -> dict:
        """Sends a command (text or bytes) and gives its answer."""
        self.process.stdin.write((line if isinstance(line, bytes) else line.encode()) + b"\n")
        self.process.stdin.flush()
        return json.loads(self.process.stdout.readline())

    def tell(self, line) -> dict:
        """The same for a command that must not be refused."""
        answer = self.ask(line)
        if not answer["ok"]:
            raise ValueError(f"{line!r} is refused: {answer['error']}")
        return answer


def as_unicode(machine_text: str) -> str:
    return "".join(SPECIAL.get(ord(c), c) for c in machine_text).rstrip()


def as_keys(typed: str) -> bytes:
    """The codes of a typed line: {NAME} for an editing key, special characters as they look."""
    codes = {text: code for code, text in SPECIAL.items() if ord(text[0]) > 0x7F and len(text) == 1}
    keys = bytearray()
    for key, char in re.findall(r"\{(\w+)\}|(.)", typed):
        keys.append(EDITING_KEYS[key] if key else codes.get(char, ord(char)))
    return bytes(keys)


class Conversation:
    """A machine in command mode: lines are typed, and what it shows is noted."""

    def __init__(self, drive: Drive):
        self.drive = drive
        self.shown = []
        drive.tell("command")
        drive.tell("exe")

    def tap(self, virtual_key: int) -> None:
        for line in (f"press {virtual_key}", "tick 2", f"release {virtual_key}", "tick 2"):
            self.drive.tell(line)

    def type_line(self, line: str) -> None:
        """Types a line and EXE. {EXE} is EXE alone, {Home} the clear key alone."""
        state = self.drive.tell("state")
        if state["stmt_kind"] == KIND_PROMPT or line == "{Home}":
            self.tap(VIRTUAL_KEY_HOME)
        if line == "{Home}":
            return
        if line != "{EXE}":
            self.drive.tell(b"type " + as_keys(line))
        self.drive.tell("exe")
        for _ in range(WAITS_MAX):
            if not self.go_on():
                return
        raise ValueError("the program does not end")

    def go_on(self) -> bool:
        """Notes what stands on the display when the machine waits, and goes on; False where the person is to act."""
        if self.drive.tell(f"wait {TICKS_MAX}")["ticks"] == TICKS_MAX:
            raise ValueError("the program does not wait for anybody")
        state = self.drive.tell("state")
        text = as_unicode(state["display"])
        if state["error_code"] != 0:
            self.shown.append(text)
            self.tap(VIRTUAL_KEY_HOME)
            return state["stmt_kind"] == KIND_INPUT_ERROR
        if state["run_state"] == STATE_PRINT_WAIT or state["stmt_kind"] == KIND_RESULT:
            self.shown.append(text)
            self.drive.tell("exe")
            return True
        if state["stmt_kind"] == KIND_PROMPT or state["run_state"] == STATE_STOPPED:
            self.shown.extend([text] if text else [])
        elif state["run_state"] == STATE_ENDED:
            self.tap(VIRTUAL_KEY_HOME)
        return False


def hold_conversation(listing, typed: list) -> list:
    """What a machine in command mode shows while these lines are typed, with a listing loaded when there is one."""
    with tempfile.TemporaryDirectory() as folder, Drive(folder) as drive:
        if listing:
            Path(folder, "example.bas").write_text(with_header(listing), encoding="utf-8")
            answer = drive.tell("load example.bas")
            if not answer["loaded"]:
                raise ValueError(f"the listing does not load: {answer}")
        conversation = Conversation(drive)
        for line in typed:
            conversation.type_line(line)
        return conversation.shown
