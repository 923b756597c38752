# SPDX-License-Identifier: MIT
"""What the desktop program costs, measured from outside under an X server of its own: start, idling, memory.

usage: desktop.py QUILLON LISTING [TICKS]
"""

import ctypes
import os
import subprocess
import sys
import tempfile
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "tests", "desktop"))
from screen import Screen, wait_until  # noqa: E402

LCD_BACKGROUND = bytes((0x6E, 0xC8, 0xB0))  # of the default colours, as the X server stores it
STARTS = 20
CORNER = (100, 100)
IDLE_SECONDS = 20


class Display:
    """Looks at the screen without starting a program each time."""

    class Image(ctypes.Structure):
        _fields_ = [("width", ctypes.c_int), ("height", ctypes.c_int), ("xoffset", ctypes.c_int),
                    ("format", ctypes.c_int), ("data", ctypes.POINTER(ctypes.c_char))]

    def __init__(self, name: str, width: int, height: int):
        self.x = ctypes.CDLL("libX11.so.6")
        self.x.XOpenDisplay.restype = ctypes.c_void_p
        self.x.XGetImage.restype = ctypes.POINTER(self.Image)
        self.x.XDefaultRootWindow.restype = ctypes.c_ulong
        self.display = ctypes.c_void_p(self.x.XOpenDisplay(name.encode()))
        self.root = ctypes.c_ulong(self.x.XDefaultRootWindow(self.display))
        self.size = (width // 2, height // 4)  # what of the window is there when it opens

    def shows_lcd(self) -> bool:
        image = self.x.XGetImage(self.display, self.root, *CORNER, *self.size, ctypes.c_ulong(0xFFFFFF), 2)
        data = ctypes.string_at(image.contents.data, 4 * self.size[0] * self.size[1])
        self.x.XDestroyImage(image)
        return data.count(LCD_BACKGROUND) > 5000


def processor_seconds(pid: int) -> float:
    with open(f"/proc/{pid}/stat", encoding="ascii") as file:
        fields = file.read().rsplit(")", 1)[1].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")


def resident_megabytes(pid: int) -> float:
    with open(f"/proc/{pid}/status", encoding="ascii") as file:
        line = next(line for line in file if line.startswith("VmRSS:"))
    return int(line.split()[1]) / 1024


class Run:
    """The program with settings of its own, until it is told to end."""

    def __init__(self, screen, *arguments, settings="[QZS]\n"):
        home = tempfile.mkdtemp(dir=screen.scratch)
        os.makedirs(os.path.join(home, "quillon"))
        with open(os.path.join(home, "quillon", "QZ740.ini"), "w", encoding="ascii") as file:
            file.write(settings)
        env = {key: value for key, value in screen.env.items() if key != "QT_LINUX_ACCESSIBILITY_ALWAYS_ON"}
        self.began = time.monotonic()
        self.process = subprocess.Popen([QUILLON, *arguments], env=env | {"XDG_CONFIG_HOME": home})
        self.pid = self.process.pid

    def end(self):
        self.process.terminate()
        assert self.process.wait() == 0


def measure_start(screen, display) -> list:
    times = []
    for _ in range(STARTS):
        run = Run(screen)
        while not display.shows_lcd():
            time.sleep(0.002)  # the X server needs its share
        times.append(1000 * (time.monotonic() - run.began))
        run.end()
        wait_until(lambda: not display.shows_lcd(), "the window to go")
    return sorted(times)


def measure_idle(screen, display) -> tuple:
    run = Run(screen, settings="[QZS]\nSTARTMODE= 1\n")
    wait_until(display.shows_lcd, "the LCD")
    time.sleep(2)
    before = processor_seconds(run.pid)
    time.sleep(IDLE_SECONDS)
    share = (processor_seconds(run.pid) - before) / IDLE_SECONDS
    memory = resident_megabytes(run.pid)
    run.end()
    return share, memory


def measure_growth(screen, display, listing: str, ticks: int) -> tuple:
    """Resident memory after a twentieth of the ticks, and after all; a millisecond and a bit each."""
    run = Run(screen, listing, settings="[QZS]\nTIMER= 1\n")
    wait_until(display.shows_lcd, "the LCD")
    window = screen.wait_for_window("Quillon Simulator")
    screen.xdotool("windowactivate", "--sync", window, "key", "F5")
    time.sleep(ticks / 20 * 0.0012)
    first = resident_megabytes(run.pid)
    time.sleep(ticks * 19 / 20 * 0.0012)
    last = resident_megabytes(run.pid)
    run.end()
    return first, last


def main():
    with tempfile.TemporaryDirectory() as scratch:
        screen = Screen(scratch, "800x600x24")
        try:
            display = Display(screen.env["DISPLAY"], 800, 600)
            times = measure_start(screen, display)
            print(f"start to first painted LCD, ms: least {times[0]:.0f}, median {times[len(times) // 2]:.0f}, "
                  f"most {times[-1]:.0f}")
            share, memory = measure_idle(screen, display)
            print(f"idle at the prompt: {100 * share:.2f} % of a core, {memory:.1f} MB resident")
            if len(sys.argv) > 3:
                first, last = measure_growth(screen, display, os.path.abspath(sys.argv[2]), int(sys.argv[3]))
                print(f"running for {sys.argv[3]} ticks: {first:.1f} MB, then {last:.1f} MB resident")
        finally:
            screen.close()


if __name__ == "__main__":
    QUILLON = os.path.abspath(sys.argv[1])
    main()
