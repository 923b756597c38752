"""Pictures of every window of the desktop program, for the manual and for looking at: by language, theme and scale.

usage: screenshots.py QUILLON QUILLON_CLI FOLDER
"""

import os
import subprocess
import sys
import tempfile

from screen import Screen, wait_until
from simulator import Glyphs, Simulator

LISTING = '[P0]\n10 A=SIN 30:B=A*2:C=SQR 2\n20 $="X\\pi":D=-1.5\n30 PRINT "HELLO, WORLD"\n40 GOTO 99\n'
THEMES_AND_SCALES = (("light", "1"), ("dark", "1"), ("light", "2"), ("dark", "2"))
DARK_COLOURS = """[Colors:Window]
BackgroundNormal=42,46,50
ForegroundNormal=252,252,252
[Colors:View]
BackgroundNormal=27,30,32
BackgroundAlternate=35,38,41
ForegroundNormal=252,252,252
[Colors:Button]
BackgroundNormal=49,54,59
ForegroundNormal=252,252,252
[Colors:Selection]
BackgroundNormal=61,174,233
ForegroundNormal=252,252,252
[Colors:Tooltip]
BackgroundNormal=49,54,59
ForegroundNormal=252,252,252
"""
def environment(language: str, theme: str, scale: str, home: str) -> dict:
    env = {"QT_SCALE_FACTOR": scale, "LANG": "C.UTF-8", "LC_MESSAGES": f"{language}_XX.UTF-8", "LC_ALL": ""}
    if theme == "dark":
        os.makedirs(os.path.join(home, "config"), exist_ok=True)
        with open(os.path.join(home, "config", "kdeglobals"), "w", encoding="ascii") as file:
            file.write(DARK_COLOURS)
        env |= {"XDG_CURRENT_DESKTOP": "KDE", "KDE_SESSION_VERSION": "5", "QT_STYLE_OVERRIDE": "Fusion"}
    return env


class Session:
    """The program in one language, theme and scale, and where its pictures go."""

    def __init__(self, screen, glyphs, prefix: str, env: dict, home: str):
        listing = os.path.join(home, "hello.bas")
        with open(listing, "w", encoding="ascii") as file:
            file.write(LISTING)
        self.screen = screen
        self.prefix = prefix
        self.simulator = Simulator(QUILLON, screen, glyphs, home, listing, env=env)

    def settle(self):
        self.screen.xdotool("sleep", "0.5")

    def picture(self, name: str):
        self.settle()
        self.screen.screenshot(f"{self.prefix}{name}.png")

    def windows(self) -> set:
        done = subprocess.run(["xdotool", "search", "--onlyvisible", "--all", "--pid", str(self.simulator.process.pid),
                               "--name", "."], env=self.screen.env, capture_output=True, text=True, check=False)
        return set(done.stdout.split())

    def open(self, *keys) -> str:
        """The window that a menu entry opens. F10 opens the first menu, and the menus beside it open with their first
        entry chosen; labels depend on the language."""
        before = self.windows()
        self.simulator.focus()
        self.simulator.key("F10", *keys)
        return wait_until(lambda: self.windows() - before, f"a window after {keys}").pop()

    def close(self, window: str):
        self.screen.xdotool("windowactivate", "--sync", window, "key", "Escape")
        wait_until(lambda: window not in self.windows(), "the window to close")

    def press(self, *keys):
        self.simulator.focus()
        self.simulator.key(*keys)
        self.settle()

    def take_all(self):
        self.press("F2")
        self.picture("main")
        self.press("F10", "Right")
        self.picture("menu")
        self.press("Escape")
        configuration = self.open("Down", "Down", "Return")
        self.picture("configuration")
        self.close(configuration)
        trace = self.open("Right", "Down", "Down", "Down", "Return")
        self.press("F5", "Tab")
        self.press("Tab")
        self.picture("trace")
        _, _, width, height = self.screen.geometry(trace)
        self.simulator.click(width - 60, height - 25, window=trace)  # its button
        self.picture("extended-variables")
        self.close(trace)
        self.settle()
        self.press("Return", "Return")
        detail = self.open("Left", "Return")
        self.picture("error-detail")
        self.close(detail)
        self.open("Left", "Left", "Up", "Return")  # the soft keyboard
        about = self.open("Left", "Up", "Return")
        self.picture("about")
        self.close(about)
        self.simulator.close()


def main():
    folder = os.path.abspath(sys.argv[3])
    os.makedirs(folder, exist_ok=True)
    with tempfile.TemporaryDirectory() as scratch:
        screen = Screen(scratch)
        try:
            glyphs = Glyphs(sys.argv[2], scratch)
            for language in ("en", "ja"):
                for theme, scale in THEMES_AND_SCALES:
                    home = tempfile.mkdtemp(dir=scratch)
                    prefix = os.path.join(folder, f"{language}-{theme}-{scale}-")
                    env = environment(language, theme, scale, home)
                    Session(screen, glyphs, prefix, env, home).take_all()
        finally:
            screen.close()


if __name__ == "__main__":
    QUILLON = sys.argv[1]
    main()
