"""A program in a terminal of its own: a tmux server that nobody else knows, keys sent to it, its screen read."""

import os
import subprocess
import tempfile
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
CLI = os.environ["QUILLON_CLI"]
PATIENCE = 60  # seconds after which what has not come will not come: only a failing test waits that long


class Session:
    """A shell command in a terminal of the given size."""

    def __init__(self, command: str, columns: int = 100, rows: int = 24, locale: str = "C.UTF-8"):
        self.folder = tempfile.TemporaryDirectory()
        self.socket = str(Path(self.folder.name, "tmux"))
        environment = {**os.environ, "LC_ALL": locale, "XDG_CONFIG_HOME": self.folder.name, "TMUX": ""}
        config = Path(self.folder.name, "config")
        config.write_text("set -sg escape-time 0\n")
        # tmux itself always draws in UTF-8; the program has the locale that was asked for.
        subprocess.run(["tmux", "-u", "-S", self.socket, "-f", str(config), "new-session", "-d", "-x", str(columns),
                        "-y", str(rows), "--", "sh", "-c", command], env=environment, check=True)

    def __enter__(self):
        return self

    def __exit__(self, *_):
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
