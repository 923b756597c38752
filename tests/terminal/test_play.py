# SPDX-License-Identifier: MIT
"""`quillon-cli play` in a terminal: what it shows, what keys do, and that the terminal is as it was afterwards."""

import fcntl
import os
import pty
import re
import select
import shlex
import signal
import struct
import subprocess
import tempfile
import termios
import threading
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

    def tmux(self, *arguments) -> str:
        return subprocess.run(["tmux", "-S", self.socket, *map(str, arguments)], stdout=subprocess.PIPE, text=True,
                              check=False).stdout

    def send(self, keys: str) -> None:
        """One key by its name, or the keys of a text."""
        self.tmux("send-keys", *(() if re.fullmatch(r"F\d|C-.|Enter", keys) else ("-l",)), keys)

    def go(self, *steps) -> list:
        """Sends what each step begins with, and waits for a text that is to be shown then; returns the last lines."""
        for keys, text in steps:
            self.send(keys)
            lines = self.shown(text)
        return lines

    def shown(self, text: str) -> list:
        return self.wait_for(lambda lines: any(text in line for line in lines))

    def lines(self) -> list:
        return [line.rstrip() for line in self.tmux("capture-pane", "-p").split("\n")]

    def asks(self, *variables: str) -> str:
        """What tmux knows of the terminal: whether the second screen is on, the cursor shown..."""
        return self.tmux("display-message", "-p", " ".join("#{" + name + "}" for name in variables)).strip()

    def wait_for(self, condition):
        """Looks at the screen again and again until a condition of its lines holds; returns the lines."""
        deadline = time.monotonic() + PATIENCE
        while time.monotonic() < deadline:
            lines = self.lines()
            if condition(lines):
                return lines
        raise AssertionError("the screen never came to this:\n" + "\n".join(self.lines()))


class Terminal:
    """A program in a terminal that nobody draws: of any size, and fed as fast as it takes."""

    def __init__(self, command: list, size: tuple = (24, 80), settings: str = ""):
        self.folder = tempfile.TemporaryDirectory()
        Path(self.folder.name, "quillon").mkdir()
        Path(self.folder.name, "quillon", "QZ740.ini").write_text(settings, encoding="ascii")
        self.pid, self.fd = pty.fork()
        if self.pid == 0:
            try:
                fcntl.ioctl(0, termios.TIOCSWINSZ, struct.pack("4H", *size, 0, 0))
                os.execve(command[0], command, {**os.environ, "TERM": "xterm-256color", "LC_ALL": "C.UTF-8",
                                                "XDG_CONFIG_HOME": self.folder.name})
            finally:
                os._exit(127)

    def close(self) -> None:
        os.close(self.fd)
        self.folder.cleanup()

    def resize(self, size: tuple) -> None:
        fcntl.ioctl(self.fd, termios.TIOCSWINSZ, struct.pack("4H", *size, 0, 0))

    def read(self) -> bytes:
        """What comes next; nothing when the program has ended."""
        if not select.select([self.fd], [], [], PATIENCE)[0]:
            os.kill(self.pid, signal.SIGKILL)
            raise AssertionError("the program shows nothing more")
        try:
            return os.read(self.fd, 65536)
        except OSError:
            return b""

    def shown(self, text: bytes) -> None:
        """Waits until a text comes."""
        read = b""
        deadline = time.monotonic() + PATIENCE
        while text not in read:
            more = self.read()
            read += more
            if not more or time.monotonic() > deadline:
                raise AssertionError(f"it showed {read[-200:]!r}")

    def pour(self, keys: bytes, enough: threading.Event) -> threading.Thread:
        """Sends the same keys as fast as they are taken, until it is enough."""
        def send():
            while not enough.is_set():
                os.write(self.fd, keys)
        thread = threading.Thread(target=send)
        thread.start()
        return thread

    def write(self, keys: bytes) -> None:
        os.write(self.fd, keys)

    def status(self) -> int:
        while self.read():
            pass
        return os.waitstatus_to_exitcode(os.waitpid(self.pid, 0)[1])


class Play(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.listing = self.write("play.bas", LISTING)

    def write(self, name: str, text: str) -> str:
        path = Path(self.folder.name, name)
        path.write_text(text, encoding="utf-8")
        return str(path)

    def play(self, listing: str, options: str = "--no-save", **terminal) -> Session:
        """Plays a listing between two looks at the terminal's modes."""
        session = Session(f"stty -g; {shlex.quote(CLI)} play {options} {shlex.quote(listing)}; "
                          's=$?; stty -g; echo "status $s"; exec cat', **terminal)
        self.addCleanup(session.close)
        session.wait_for(lambda lines: any("^Q leave" in line or "^A level" in line for line in lines))
        return session

    def test_a_listing_in_text(self):
        for terminal in ({"columns": 60, "rows": 10}, {"columns": 100, "rows": 24, "locale": "C"},
                         {"columns": 100, "rows": 24, "options": "--no-save --text"}):
            with self.subTest(terminal):
                session = self.play(self.listing, **terminal)
                self.assertIn("WRT  DEG", session.shown("P _123456789")[0])
                lines = session.go(("F5", "N?"), ("2+3\r", "= 10"))
                self.assertEqual(lines[0], "RUN  DEG  STOP")
                self.assertIn("P0 line 20  30 ms  ^A level: none", lines[3])
                session.go(("Enter", "P0 line 30"), ("x", "KEY X"), ("Enter", "P0 line 50"), ("C-c", "RUN  DEG  STOP"))
                session.send("C-q")
                self.check_restored(session, 0)

    def check_restored(self, session: Session, status: int) -> None:
        lines = [line for line in session.shown(f"status {status}") if line]
        modes = [line for line in lines if re.fullmatch(r"[0-9a-f:]{40,}", line)]
        self.assertEqual(len(modes), 2, lines)
        self.assertEqual(modes[0], modes[1])
        self.assertEqual(session.asks("alternate_on", "cursor_flag", "keypad_flag"), "0 1 0")

    def test_dots_and_sizes(self):
        session = self.play(self.write("hi.bas", '[P0]\n10 PRINT "HI"\n'))
        session.send("F5")
        for size, first, shown in [((100, 24), 2, HI), ((40, 5), 1, ["HI"]), ((12, 1), 0, ["HI"]), ((90, 20), 2, HI)]:
            session.tmux("resize-window", "-x", size[0], "-y", size[1])
            session.wait_for(lambda lines: [line.strip() for line in lines[first:first + len(shown)]] == shown)

    def test_a_long_message(self):
        listing = self.write("faulty.bas", "[P0]\n10 A=1\nA=2\n")
        for rows, shown in ((12, "must be [P0] to [P9]:3 LINE P0  30 ms"), (5, "must be [P0] P0  30 ms")):
            with self.subTest(rows):
                self.assertIn(shown, " ".join(self.play(listing, columns=40, rows=rows).lines()))

    def test_sizes_that_no_screen_has(self):
        for at_start, later in (((65535, 65535), (24, 80)), ((0, 0), (65535, 65535))):
            with self.subTest(at_start):
                terminal = Terminal([CLI, "play", "--no-save", self.listing], at_start)
                self.addCleanup(terminal.close)
                terminal.shown(b"Q leave")
                terminal.resize(later)
                terminal.shown(b"Q leave")
                terminal.write(b"\x11")
                self.assertEqual(terminal.status(), 0)

    def test_what_it_cannot_read(self):
        settings = f"[QZS]\nLASTFILE= {self.listing}\n"
        for options, said in ((["typo.bas"], b"typo.bas: the listing does not load: The file cannot be opened"),
                              (["--catalogue", "typo.ini"], b"cannot read the catalogue typo.ini")):
            with self.subTest(options):
                terminal = Terminal([CLI, "play", *options], settings=settings)
                self.addCleanup(terminal.close)
                terminal.shown(said)
                self.assertEqual(terminal.status(), 2)
                kept = Path(terminal.folder.name, "quillon", "QZ740.ini")
                self.assertEqual(kept.read_text(encoding="ascii"), settings)

    def test_what_it_cannot_save(self):
        session = self.play(self.listing, "")
        Path(session.folder.name, "quillon").touch()
        session.go(("C-q", "status 1"))
        self.assertIn("quillon-cli: cannot save", " ".join(session.lines()))

    def test_input_without_end(self):
        """Keys that pour in hold up neither the program nor the screen, nor the key that leaves."""
        listing = self.write("done.bas", '[P0]\n10 FOR I=1 TO 300:NEXT I\n20 PRINT "DONE"\n')
        terminal = Terminal([CLI, "play", "--no-save", "--text", listing], settings="[QZS]\nTIMER=1\n")
        self.addCleanup(terminal.close)
        terminal.shown(b"Q leave")
        terminal.write(b"\x1b[15~")  # F5
        enough = threading.Event()
        poured = terminal.pour(b"x" * 65536, enough)
        try:
            terminal.shown(b"DONE")
        finally:
            enough.set()
        poured.join()
        terminal.write(b"\x11")
        self.assertEqual(terminal.status(), 0)

    def test_levels(self):
        session = self.play(self.listing, columns=70, rows=6)
        # a letter with Shift is a small one
        session.go(("F6", "RUN  DEG"), ("ab1+", "AB1+"), ("C-a", "level: SHIFT "), ("c", "AB1+c"))
        session.go(*(("C-a", f"level: {level} ") for level in ("SHIFT", "CTRL", "SHIFT+CTRL", "ALT", "none")),
                   ("F3", "Overdrive 5 ms"))

    def test_end_by_signal(self):
        # A crash and a request: the terminal is in order, and the shell sees the signal.
        crashes = (signal.SIGSEGV, signal.SIGABRT)
        for number in (*crashes, signal.SIGTERM, signal.SIGHUP, signal.SIGALRM, signal.SIGUSR1, signal.SIGXCPU,
                       signal.SIGRTMAX):
            with self.subTest(number):
                session = self.play(self.listing)
                children = Path("/proc", session.asks("pane_pid"), "task", session.asks("pane_pid"), "children")
                os.kill(int(children.read_text().split()[0]), number)
                if number not in crashes:
                    self.check_restored(session, 128 + number)
                else:  # under a sanitizer a crash has a report, and a status of its own
                    session.shown("status ")
                    self.assertEqual(session.asks("alternate_on", "cursor_flag"), "0 1")

    def test_what_is_kept(self):
        catalogue = f"--catalogue {shlex.quote(self.write('message.ini', ''))}"
        for options, kept in (("--no-save", False), ("", True)):
            with self.subTest(options):
                session = self.play(self.listing, f"{options} {catalogue}")
                session.go(("C-q", "status 0"))
                settings = Path(session.folder.name, "quillon", "QZ740.ini")
                self.assertEqual(settings.exists(), kept)
        self.assertIn(self.listing, settings.read_text(encoding="utf-8"))


if __name__ == "__main__":
    unittest.main()
