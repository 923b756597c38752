# SPDX-License-Identifier: MIT
"""The desktop program under test: starting it, typing at it, and reading its LCD back from the screen."""

import json
import os
import signal
import subprocess

from screen import WAIT_SECONDS, run, wait_until

LCD_WIDTH, LCD_HEIGHT = 392, 88
CELLS = 12
INDICATORS = {"STOP": (332, 16, 40, 12)}  # x, y, width, height on the canvas
LIT = (0x00, 0x19, 0x00)  # the default colour of a lit dot


def dots_of(lit, cell: int) -> tuple:
    """The 5 x 7 dots of a cell, given whether a canvas pixel is lit."""
    left, top = 8 + 32 * cell, 40
    return tuple(lit(left + 3 + 5 * column, top + 2 + 6 * row) for row in range(7) for column in range(5))


def bitmap_reader(path: str):
    """Whether a pixel of a snapshot is lit: 24 or 32 bits a pixel, rows from the bottom up."""
    with open(path, "rb") as file:
        data = file.read()
    width = int.from_bytes(data[18:22], "little")
    height = int.from_bytes(data[22:26], "little")
    size = int.from_bytes(data[28:30], "little") // 8
    row_size = (width * size + 3) // 4 * 4

    def lit(x, y):
        start = 54 + (height - 1 - y) * row_size + x * size
        return tuple(reversed(data[start:start + 3])) == LIT

    return lit


class Glyphs:
    """Characters by their dots, learnt from pictures that the command-line program makes."""

    SHOWN = "".join(chr(code) for code in range(0x20, 0x7F) if chr(code) not in "\"\\^\x7f")

    def __init__(self, cli: str, scratch: str):
        self.by_dots = {}
        rows = [self.SHOWN[i:i + CELLS].ljust(CELLS) for i in range(0, len(self.SHOWN), CELLS)]
        listing = os.path.join(scratch, "glyphs.bas")
        with open(listing, "w", encoding="ascii") as file:
            file.write("[P0]\n" + "".join(f'{10 + i} PRINT "{row}"\n' for i, row in enumerate(rows)))
        commands = [f"load {listing}", "run"]
        for i in range(len(rows)):
            commands += ["wait 1000", f"snapshot {scratch}/row{i}.bmp", "exe"]
        done = subprocess.run([cli, "drive"], input="\n".join(commands), capture_output=True, text=True, check=True)
        refused = [line for line in done.stdout.splitlines() if not json.loads(line)["ok"]]
        assert not refused, refused
        for i, row in enumerate(rows):
            lit = bitmap_reader(f"{scratch}/row{i}.bmp")
            for cell, character in enumerate(row):
                self.by_dots[dots_of(lit, cell)] = character

    def read(self, lit) -> str:
        return "".join(self.by_dots.get(dots_of(lit, cell), "?") for cell in range(CELLS)).rstrip()


class Simulator:
    """A running program with a home of its own."""

    def __init__(self, program: str, screen, glyphs: Glyphs, home: str, *arguments, zoom=1, env=None):
        self.screen = screen
        self.glyphs = glyphs
        self.zoom = zoom
        self.home = home
        self.config = os.path.join(home, "config")
        os.makedirs(os.path.join(home, "Desktop"), exist_ok=True)
        environment = screen.env | {"HOME": home, "XDG_CONFIG_HOME": self.config} | (env or {})
        with open(os.path.join(home, "stderr.txt"), "ab") as errors:
            self.process = subprocess.Popen([program, *arguments], env=environment, cwd=home, stderr=errors)
        self.window = wait_until(self.find_window, "the main window")
        wait_until(self.has_keyboard, "the program to get the keyboard")

    def find_window(self) -> str:
        done = subprocess.run(["xdotool", "search", "--onlyvisible", "--all", "--pid", str(self.process.pid), "--name",
                               "Quillon Simulator"], env=self.screen.env, capture_output=True, text=True, check=False)
        return done.stdout.strip()

    def has_keyboard(self) -> bool:
        """Whether the window that is active now, a message box perhaps, is the program's. Asks for it if it is not."""
        done = subprocess.run(["xdotool", "getactivewindow", "getwindowpid"], env=self.screen.env, capture_output=True,
                              text=True, check=False)
        if done.stdout.strip() == str(self.process.pid):
            return True
        self.screen.xdotool("windowactivate", self.window)
        return False

    def focus(self):
        self.screen.xdotool("windowactivate", "--sync", self.window)

    def title(self) -> str:
        return self.screen.xdotool("getwindowname", self.window)

    def wait_for_title(self, title: str):
        wait_until(lambda: self.title() == title, f"the title '{title}'")

    def key(self, *names):
        for name in names:
            self.screen.xdotool("key", name)

    def type(self, text: str):
        self.screen.xdotool("type", "--delay", "40", text)

    def lcd_corner(self) -> tuple:
        """Where the LCD begins in the window: it lies at the lower edge, in the middle."""
        _, _, width, height = self.screen.geometry(self.window)
        return (width - LCD_WIDTH * self.zoom) // 2, height - LCD_HEIGHT * self.zoom

    def lcd_reader(self):
        """Whether a pixel of the LCD's canvas is lit on the screen, by the middle of its square."""
        left, top = self.lcd_corner()
        picture = self.screen.pixels(self.window)
        middle = self.zoom // 2
        return lambda x, y: picture.pixel(left + x * self.zoom + middle, top + y * self.zoom + middle) == LIT

    def lcd_text(self) -> str:
        return self.glyphs.read(self.lcd_reader())

    def is_lit(self, indicator: str) -> bool:
        left, top, width, height = INDICATORS[indicator]
        lit = self.lcd_reader()
        return any(lit(x, y) for x in range(left, left + width) for y in range(top, top + height))

    def is_sharp(self) -> bool:
        """Whether each canvas pixel of the display line is a square of one colour, wherever the first one begins: a
        window's height may be rounded up."""
        left, top = self.lcd_corner()
        picture = self.screen.pixels(self.window)
        size = self.zoom

        def is_square(x, y):
            first = picture.pixel(x, y)
            return all(picture.pixel(x + i, y + j) == first for i in range(size) for j in range(size))

        return any(all(is_square(left + dx + x * size, top + dy + y * size) for y in range(40, 82) for x in range(8, 384))
                   for dx in range(-1, 2) for dy in range(-1, 2))

    def wait_for_text(self, text: str):
        seen = []

        def shown():
            seen[:] = [self.lcd_text()]
            return seen[0] == text

        try:
            wait_until(shown, f"the LCD to show '{text}'")
        except AssertionError as failure:
            raise AssertionError(f"{failure}; the LCD shows {seen}") from None

    def click_lcd(self, x: int, y: int, button=1, repeat=1):
        """A click on a pixel of the LCD's canvas."""
        left, top = self.lcd_corner()
        self.click(left + x * self.zoom, top + y * self.zoom, button, repeat)

    def click(self, x: int, y: int, button=1, repeat=1, window=None):
        self.screen.xdotool("mousemove", "--window", window or self.window, x, y)
        self.screen.xdotool("click", "--repeat", repeat, "--delay", 40, button)

    def close(self):
        """Closes the window; the program must end well by itself."""
        self.ask_to_close()
        self.wait_for_end()

    def ask_to_close(self, window=None):
        """What the button of a window's frame does."""
        run("wmctrl", "-i", "-c", window or self.window, env=self.screen.env)

    def errors(self) -> str:
        """What the program wrote to standard error."""
        with open(os.path.join(self.home, "stderr.txt"), encoding="utf-8", errors="replace") as file:
            return file.read()

    def terminate(self):
        """Ends the program as the system does when it shuts down."""
        self.process.terminate()
        self.wait_for_end()

    def wait_for_end(self):
        status = self.process.wait(timeout=WAIT_SECONDS)
        assert status == 0, f"exit status {status}: {self.errors()}"

    def kill(self):
        if self.process.poll() is None:
            self.process.send_signal(signal.SIGKILL)
            self.process.wait()

    def file(self, name: str) -> bytes:
        with open(os.path.join(self.config, "quillon", name), "rb") as file:
            return file.read()
