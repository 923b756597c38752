# SPDX-License-Identifier: MIT
"""A real X server with a window manager for the tests of the desktop program, and what a person would do at it.

Nothing here waits for time to pass: every wait is for a condition, and fails with what it saw last.
"""

import contextlib
import os
import select
import signal
import subprocess
import time

WAIT_SECONDS = float(os.environ.get("QUILLON_WAIT", "60"))  # until a condition counts as never to be met


def wait_until(condition, what: str):
    """Returns the condition's first true value."""
    end = time.monotonic() + WAIT_SECONDS
    seen = None
    while time.monotonic() < end:
        seen = condition()
        if seen:
            return seen
        select.select([], [], [], 0.03)
    raise AssertionError(f"waited in vain for {what}; last seen: {seen!r}")


def run(*command, env=None, given=None) -> bytes:
    done = subprocess.run(command, input=given, capture_output=True, env=env, check=False,
                          timeout=WAIT_SECONDS)
    if done.returncode != 0:
        raise AssertionError(f"{command}: exit status {done.returncode}: {done.stderr.decode()}")
    return done.stdout


class Screen:
    """An X server of its own with a window manager, a message bus and the accessibility service. They end with `close`,
    when they could not all be started, and when this program is killed."""

    def __init__(self, scratch: str, size="1600x1200x24"):
        self.processes = []
        try:
            self.set_up(scratch, size)
        except BaseException:
            self.close()
            raise

    def set_up(self, scratch: str, size: str):
        ready, write_end = os.pipe()
        self.start(["Xvfb", "-displayfd", str(write_end), "-screen", "0", size, "-nolisten", "tcp", "-noreset"],
                   pass_fds=[write_end])
        os.close(write_end)
        with os.fdopen(ready) as display:
            number = display.readline().strip()
        assert number, "the X server does not start"
        self.scratch = scratch
        runtime = os.path.join(scratch, "runtime")
        os.makedirs(runtime, mode=0o700)
        self.env = {"PATH": os.environ["PATH"], "DISPLAY": f":{number}", "XDG_RUNTIME_DIR": runtime, "HOME": scratch,
                    "LC_ALL": "C.UTF-8", "NO_AT_BRIDGE": "0", "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"}
        for name in ("ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS"):
            if name in os.environ:
                self.env[name] = os.environ[name]
        self.env["DBUS_SESSION_BUS_ADDRESS"] = self.start_bus()
        self.start(["openbox"])
        wait_until(lambda: b"Openbox" in subprocess.run(["wmctrl", "-m"], env=self.env, capture_output=True,
                                                        check=False).stdout, "the window manager")

    def start(self, command, **options):
        options = {"env": getattr(self, "env", None), "stdout": subprocess.DEVNULL} | options
        process = subprocess.Popen(["setpriv", "--pdeathsig", "TERM", "--", *command], stderr=subprocess.DEVNULL,
                                   **options)
        self.processes.append(process)
        return process

    def start_bus(self) -> str:
        bus = self.start(["dbus-daemon", "--session", "--nofork", "--print-address"], stdout=subprocess.PIPE, text=True)
        address = bus.stdout.readline().strip()
        bus.stdout.close()
        assert address, "the message bus does not start"
        return address

    def close(self):
        for process in reversed(self.processes):
            with contextlib.suppress(ProcessLookupError):
                process.send_signal(signal.SIGTERM)
            process.wait(timeout=WAIT_SECONDS)

    def xdotool(self, *arguments) -> str:
        return run("xdotool", *map(str, arguments), env=self.env).decode().strip()

    def find_windows(self, title: str) -> list:
        """The visible windows whose title contains this pattern."""
        done = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", title], env=self.env,
                              capture_output=True, text=True, check=False)
        return done.stdout.split()

    def wait_for_window(self, title: str) -> str:
        return wait_until(lambda: self.find_windows(title), f"a window '{title}'")[0]

    def geometry(self, window: str) -> tuple:
        """Place on the screen and size of a window without its frame: x, y, width, height."""
        text = run("xwininfo", "-id", window, env=self.env).decode()
        labels = ("Absolute upper-left X:", "Absolute upper-left Y:", "Width:", "Height:")
        return tuple(int(text.split(label)[1].split()[0]) for label in labels)

    def pixels(self, window: str) -> "Picture":
        _, _, width, height = self.geometry(window)
        data = run("import", "-window", window, "-depth", "8", "rgb:-", env=self.env)
        return Picture(width, height, data)

    def screenshot(self, path: str, window="root"):
        run("import", "-window", window, path, env=self.env)

    def set_clipboard(self, text: str):
        subprocess.run(["xclip", "-selection", "clipboard", "-in"], env=self.env, input=text.encode(), check=True,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)  # it stays, to serve the text

    def clipboard(self) -> str:
        done = subprocess.run(["xclip", "-selection", "clipboard", "-out"], env=self.env, capture_output=True,
                              check=False)
        return done.stdout.decode()


class Picture:
    """What a window shows: bytes red, green, blue from the top row on."""

    def __init__(self, width: int, height: int, data: bytes):
        self.width = width
        self.height = height
        self.data = data

    def pixel(self, x: int, y: int) -> tuple:
        start = 3 * (y * self.width + x)
        return tuple(self.data[start:start + 3])

