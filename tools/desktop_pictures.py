# SPDX-License-Identifier: MIT
"""Pictures of the desktop program: those of the manual, or of every window by language, theme and scale, to look at.

usage: desktop_pictures.py QUILLON QUILLON_CLI FOLDER
       desktop_pictures.py QUILLON QUILLON_CLI docs/pictures --manual DRAW_RESOURCES
"""

import os
import subprocess
import sys
import tempfile

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
sys.path.insert(0, os.path.join(ROOT, "tests", "desktop"))

# pylint: disable=wrong-import-position
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
        self.listing = os.path.join(home, "hello.bas")
        with open(self.listing, "w", encoding="ascii") as file:
            file.write(LISTING)
        self.screen = screen
        self.prefix = prefix
        self.simulator = Simulator(QUILLON, screen, glyphs, home, self.listing, env=env)

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
        self.simulator.ask_to_close(window)  # in the trace window Escape is the machine's
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
        self.take_messages()
        self.open("Left", "Left", "Up", "Return")  # the soft keyboard
        about = self.open("Left", "Up", "Return")
        self.picture("about")
        self.close(about)
        self.simulator.close()

    def take_messages(self):
        """A listing with a fault, and a setting out of its range."""
        with open(self.listing, "w", encoding="ascii") as file:
            file.write('[P0]\n10 PRINT "HELLO"\n10 PRINT "AGAIN"\n')
        before = self.windows()
        self.press("F4")
        self.picture("message-listing")
        self.close(wait_until(lambda: self.windows() - before, "a message").pop())
        self.open("Down", "Down", "Return")
        self.simulator.key("Tab", "Tab", "Tab", "ctrl+a")
        self.simulator.type("2000")
        self.simulator.key("Return")
        self.picture("message-setting")
        self.close(wait_until(lambda: self.windows() - before, "a message").pop())


KEYS = {"plain": (0, 0), "s": (0, 80), "f": (0, 160), "ext": (224, 0), "ext-s": (224, 80)}  # corners of the layers


def take_manual_pictures(screen, glyphs, scratch: str, folder: str):
    """The keys from the built-in picture, and the window with a program that runs above the soft keyboard."""
    subprocess.run([sys.argv[5], "--bmp", scratch], check=True)
    for name, (x, y) in KEYS.items():
        subprocess.run(["convert", os.path.join(scratch, "soft_keyboard.bmp"), "-crop", f"224x80+{x}+{y}", "+repage",
                        "-scale", "300%", os.path.join(folder, f"keys-{name}.png")], check=True)
    for language, name in (("en", "window"), ("ja", "window-ja")):
        home = tempfile.mkdtemp(dir=scratch)
        env = environment(language, "light", "1", home)
        lander = os.path.join(ROOT, "examples", "lander.bas")
        simulator = Simulator(QUILLON, screen, glyphs, home, lander, zoom=2, env=env)
        simulator.key("F2", "F10", "Right", "Right", "Up", "Return", "F5")
        wait_until(lambda: simulator.lcd_text().endswith("f48"), "the lander's first instruments")
        _, _, width, height = screen.geometry(simulator.window)
        keyboard = wait_until(lambda: screen.find_windows("SoftwareKeyboard"), "the soft keyboard")[0]
        x, y, _, keyboard_height = screen.geometry(keyboard)
        _, top, _, _ = screen.geometry(simulator.window)
        left, frame = screen.geometry(simulator.window)[0] - 1, 20
        screen.screenshot(os.path.join(scratch, "all.png"))
        subprocess.run(["convert", os.path.join(scratch, "all.png"), "-crop",
                        f"{width + 2}x{y + keyboard_height - top + frame}+{left}+{top - frame}", "+repage", "-colors", "255",
                        os.path.join(folder, f"{name}.png")], check=True)
        simulator.close()


def main():
    folder = os.path.abspath(sys.argv[3])
    os.makedirs(folder, exist_ok=True)
    with tempfile.TemporaryDirectory() as scratch:
        screen = Screen(scratch)
        try:
            glyphs = Glyphs(sys.argv[2], scratch)
            if "--manual" in sys.argv:
                return take_manual_pictures(screen, glyphs, scratch, folder)
            for language in ("en", "ja"):
                for theme, scale in THEMES_AND_SCALES:
                    home = tempfile.mkdtemp(dir=scratch)
                    prefix = os.path.join(folder, f"{language}-{theme}-{scale}-")
                    env = environment(language, theme, scale, home)
                    Session(screen, glyphs, prefix, env, home).take_all()
        finally:
            screen.close()


if __name__ == "__main__":
    QUILLON = os.path.abspath(sys.argv[1])
    main()
