"""`quillon-cli play` in a terminal: what it shows, what keys do, and that the terminal is as it was afterwards."""

import os
import re
import shlex
import signal
import subprocess
import tempfile
import time
import unittest
from pathlib import Path

CLI = os.environ["QUILLON_CLI"]
PATIENCE = 60  # seconds after which what has not come will not come: only a failing test waits that long

LISTING = """[P0]
10 INPUT "N",A
20 PRINT "=";A*2
30 K$=KEY$:IF K$="" THEN 30
40 PRINT "KEY ";K$
50 GOTO 50
"""

# "HI" in the dots of the machine's font, two rows of them to a line of half blocks.
HI = ["█   █  ▀█▀", "█▄▄▄█   █", "█   █   █", "▀   ▀  ▀▀▀"]


class Session:
    """A shell command in a terminal of the given size, of a tmux server that nobody else knows."""

    def __init__(self, command: str, columns: int = 100, rows: int = 24, locale: str = "C.UTF-8"):
        self.folder = tempfile.TemporaryDirectory()
        self.socket = str(Path(self.folder.name, "tmux"))
        environment = {**os.environ, "LC_ALL": locale, "XDG_CONFIG_HOME": self.folder.name, "TMUX": ""}
        config = Path(self.folder.name, "config")
        config.write_text("set -sg escape-time 0\n")
        # tmux itself always draws in UTF-8; the program has the locale that was asked for.
        subprocess.run(["tmux", "-u", "-S", self.socket, "-f", str(config), "new-session", "-d", "-x", str(columns),
                        "-y", str(rows), "--", "sh", "-c", command], env=environment, check=True)

    def close(self) -> None:
        self.tmux("kill-server")
        self.folder.cleanup()

    def tmux(self, *arguments: str) -> str:
        return subprocess.run(["tmux", "-S", self.socket, *arguments], stdout=subprocess.PIPE, text=True,
                              check=False).stdout

    def send(self, *keys: str) -> None:
        self.tmux("send-keys", *keys)

    def type(self, text: str) -> None:
        self.tmux("send-keys", "-l", text)

    def resize(self, columns: int, rows: int) -> None:
        self.tmux("resize-window", "-x", str(columns), "-y", str(rows))

    def lines(self) -> list:
        return [line.rstrip() for line in self.tmux("capture-pane", "-p").split("\n")]

    def asks(self, variable: str) -> str:
        """What tmux knows of the terminal: whether the second screen is on, the cursor shown..."""
        return self.tmux("display-message", "-p", "#{" + variable + "}").strip()

    def wait_for(self, condition):
        """Looks at the screen again and again until a condition of its lines holds; returns the lines."""
        deadline = time.monotonic() + PATIENCE
        while time.monotonic() < deadline:
            lines = self.lines()
            if condition(lines):
                return lines
        raise AssertionError("the screen never came to this:\n" + "\n".join(self.lines()))


class Play(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.listing = self.write("play.bas", LISTING)

    def write(self, name: str, text: str) -> str:
        path = Path(self.folder.name, name)
        path.write_text(text, encoding="utf-8")
        return str(path)

    def play(self, listing: str, options: str = "", **terminal) -> Session:
        """Plays a listing between two looks at the terminal's modes."""
        session = Session(f"stty -g; {shlex.quote(CLI)} play {options} {shlex.quote(listing)}; "
                          's=$?; stty -g; echo "status $s"; exec cat', **terminal)
        self.addCleanup(session.close)
        session.wait_for(lambda lines: any("^Q leave" in line or "^A level" in line for line in lines))
        return session

    def shown(self, session: Session, text: str) -> list:
        return session.wait_for(lambda lines: any(text in line for line in lines))

    def test_a_listing_in_text(self):
        for terminal in ({"columns": 60, "rows": 10}, {"columns": 100, "rows": 24, "locale": "C"}):
            with self.subTest(terminal):
                session = self.play(self.listing, "--no-save", **terminal)
                self.assertIn("WRT  DEG", self.shown(session, "P _123456789")[0])
                session.send("F5")
                self.shown(session, "N?")
                session.type("2+3\r")
                lines = self.shown(session, "= 10")
                self.assertEqual(lines[0], "RUN  DEG  STOP")
                self.assertIn("P0 line 20  30 ms  ^A level: none", lines[3])
                session.send("Enter")
                self.shown(session, "P0 line 30")
                session.type("x")
                self.shown(session, "KEY X")
                session.send("Enter")
                self.shown(session, "P0 line 50")
                session.send("C-c")
                self.shown(session, "RUN  DEG  STOP")
                session.send("C-q")
                self.check_restored(session, 0)

    def check_restored(self, session: Session, status: int) -> None:
        lines = [line for line in self.shown(session, f"status {status}") if line]
        modes = [line for line in lines if re.fullmatch(r"[0-9a-f:]{40,}", line)]
        self.assertEqual(len(modes), 2, lines)
        self.assertEqual(modes[0], modes[1])
        for variable, usual in (("alternate_on", "0"), ("cursor_flag", "1"), ("keypad_flag", "0")):
            self.assertEqual(session.asks(variable), usual, variable)

    def test_dots_and_sizes(self):
        session = self.play(self.write("hi.bas", '[P0]\n10 PRINT "HI"\n'), "--no-save")
        session.send("F5")

        def shows_hi(lines):
            return [line.strip() for line in lines[2:6]] == HI

        session.wait_for(shows_hi)
        session.resize(40, 5)
        session.wait_for(lambda lines: lines[1] == "HI")
        session.resize(12, 1)
        session.wait_for(lambda lines: lines[0] == "HI")
        session.resize(90, 20)
        session.wait_for(shows_hi)

    def test_levels(self):
        session = self.play(self.listing, "--no-save", columns=70, rows=6)
        session.send("F6")
        self.shown(session, "RUN  DEG")
        session.type("ab1+")
        session.send("C-a")
        self.shown(session, "level: SHIFT ")
        session.type("c")  # a letter with Shift is a small one
        self.shown(session, "AB1+c")
        for level in ("SHIFT ", "CTRL ", "SHIFT+CTRL ", "ALT ", "none "):
            session.send("C-a")
            self.shown(session, "level: " + level)
        session.send("F3")
        self.shown(session, "Overdrive 5 ms")

    def test_end_by_signal(self):
        # A crash and a request: the terminal is in order, and the shell sees the signal.
        for number in (signal.SIGTERM, signal.SIGHUP, signal.SIGSEGV, signal.SIGABRT):
            with self.subTest(number):
                session = self.play(self.listing, "--no-save")
                children = Path("/proc", session.asks("pane_pid"), "task", session.asks("pane_pid"), "children")
                os.kill(int(children.read_text().split()[0]), number)
                if number in (signal.SIGTERM, signal.SIGHUP):
                    self.check_restored(session, 128 + number)
                else:  # under a sanitizer a crash has a report, and a status of its own
                    self.shown(session, "status ")
                    self.assertEqual(session.asks("alternate_on"), "0")
                    self.assertEqual(session.asks("cursor_flag"), "1")

    def test_what_is_kept(self):
        settings = Path(self.folder.name, "quillon", "QZ740.ini")
        environment = f"--catalogue {shlex.quote(self.write('message.ini', ''))}"
        for options, kept in (("--no-save", False), ("", True)):
            with self.subTest(options):
                session = Session(f"XDG_CONFIG_HOME={shlex.quote(self.folder.name)} {shlex.quote(CLI)} play "
                                  f"{options} {environment} {shlex.quote(self.listing)}; echo status $?; exec cat")
                self.addCleanup(session.close)
                session.wait_for(lambda lines: any("^Q leave" in line for line in lines))
                session.send("C-q")
                self.shown(session, "status 0")
                self.assertEqual(settings.exists(), kept)
        self.assertIn(self.listing, settings.read_text(encoding="utf-8"))


if __name__ == "__main__":
    unittest.main()
