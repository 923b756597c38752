# SPDX-License-Identifier: MIT
"""The main window in a real X server: keys, mouse, files and clipboard in, dots of the LCD out.

usage: window_test.py QUILLON QUILLON_CLI DRAG_SOURCE [unittest's arguments]
"""

import os
import subprocess

from desktop_case import PROGRAMS, DesktopTest, run_tests
from screen import run, wait_until
from simulator import Simulator, bitmap_reader

HELLO = '[P0]\n10 PRINT "HELLO"\n[P3]\n10 INPUT "NAME",$\n20 PRINT "HI ";$\n30 A=A+7:PRINT A\n'
ENDLESS = "[P0]\n10 A=A+1:GOTO 10\n"
KEYS = '[P0]\n10 IF KEY$="" THEN 40\n20 PRINT CSR 0;"DOWN";:GOTO 10\n40 PRINT CSR 0;"UP  ";:GOTO 10\n'
SOFT_KEY = 32  # on the screen: 16 x 20 pixels, twice their size
SOFT_ROW = 40
SOFT_KEYS_ONE_PLUS_ONE = [(2, 10), (2, 13), (2, 10), (3, 12)]  # row and column of 1, +, 1 and EXE
AREA_COLUMN = 8 + 32 * 2  # where the LCD shows the mark of area 0


class WindowTest(DesktopTest):
    def test_a_session_and_the_next_one(self):
        hello = self.listing("hello.bas", HELLO)
        first = self.start()
        self.assertEqual(first.title(), "Quillon Simulator.")
        self.open_with_dialog(first, hello)
        first.wait_for_title("Quillon Simulator. [hello.bas]")
        first.key("3")
        first.key("F5")
        first.wait_for_text("NAME?")
        first.type("abc")
        first.key("Return")
        first.wait_for_text("HI ABC")
        first.key("Return")
        first.wait_for_text(" 7")
        first.close()
        self.assertIn(f'LASTFILE = "{hello}"'.encode(), first.file("QZ740.ini"))
        self.assertIn(b"ABC", first.file("QZ740.val"))

        second = self.start()
        second.wait_for_title("Quillon Simulator. [hello.bas]")
        second.key("3", "F5")
        second.wait_for_text("NAME?")
        second.type("x")
        second.key("Return")
        second.wait_for_text("HI X")
        second.key("Return")
        second.wait_for_text(" 14")
        second.close()

    def test_command_line(self):
        """What needs no window needs no display; without one the program says what to do."""
        usage = "Usage: quillon [OPTIONS]"
        rows = (  # arguments, exit status, where and what it says
            (["--help"], 0, "stdout", usage), (["-h"], 0, "stdout", "quillon-cli play"), (["--version"], 0, "stdout", "."),
            (["--bogus"], 2, "stderr", "--bogus"), (["a.bas", "b.bas"], 2, "stderr", "b.bas"),
            (["-platform", "xcb", "-style=fusion", "--bogus", "a.bas"], 2, "stderr", "--bogus"),
            ([], 2, "stderr", "quillon-cli play"), (["a.bas"], 2, "stderr", "quillon-cli play"))
        environment = {name: value for name, value in self.screen.env.items() if name != "DISPLAY"}
        for arguments, status, stream, text in rows:
            done = subprocess.run([PROGRAMS["quillon"], *arguments], env=environment, capture_output=True, text=True,
                                  check=False)
            self.assertEqual(done.returncode, status, (arguments, done))
            self.assertIn(text, getattr(done, stream), arguments)
        with open("/dev/full", "w", encoding="ascii") as full:
            done = subprocess.run([PROGRAMS["quillon"], "--help"], env=environment, stdout=full, check=False)
        self.assertNotEqual(done.returncode, 0)
        program = os.fsencode(self.home) + b"/\xff\xfe.bas"  # a name that is not UTF-8
        with open(program, "w", encoding="ascii") as file:
            file.write(HELLO)
        simulator = self.start(program)
        simulator.key("F5")
        simulator.wait_for_text("HELLO")
        simulator.close()
        self.assertIn(program, simulator.file("recent.txt"))

    def test_mouse_on_the_lcd(self):
        simulator = self.start(self.listing("hello.bas", HELLO))
        simulator.click_lcd(AREA_COLUMN + 3 * 32, 60, repeat=2)  # the double click runs the area
        simulator.wait_for_text("NAME?")
        simulator.type("me")
        wait_until(lambda: simulator.lcd_text() in ("ME", "ME_"), "the entry")
        simulator.click_lcd(200, 60)  # EXE
        simulator.wait_for_text("HI ME")
        simulator.close()

    def test_stop_and_go_on(self):
        simulator = self.start(self.listing("endless.bas", ENDLESS))
        simulator.key("F5", "Escape")
        wait_until(lambda: simulator.is_lit("STOP"), "the STOP indicator")
        simulator.key("Escape")
        simulator.wait_for_text("P0-10")
        simulator.key("Return")
        wait_until(lambda: not simulator.is_lit("STOP"), "the program to go on")
        simulator.close()

    def test_zoom_and_snapshot(self):
        simulator = self.start(self.listing("hello.bas", HELLO))
        simulator.key("F5")
        simulator.wait_for_text("HELLO")
        simulator.key("F2", "F2")
        wait_until(lambda: self.screen.geometry(simulator.window)[2] == 3 * 392, "the window to grow")
        simulator.zoom = 3
        simulator.wait_for_text("HELLO")
        simulator.key("F12")
        path = os.path.join(self.home, "Desktop", "qzsnap_000.bmp")
        wait_until(lambda: os.path.exists(path), "the snapshot")
        self.assertEqual(self.glyphs.read(bitmap_reader(path)), "HELLO")
        simulator.close()
        self.assertIn(b"ZOOM= 3", simulator.file("QZ740.ini"))

    def test_zoom_by_shortcut_and_as_large_as_the_screen_allows(self):
        simulator = self.start()

        def wait_for_zoom(zoom):
            wait_until(lambda: self.screen.geometry(simulator.window)[2] == zoom * 392, f"the width of zoom {zoom}")

        for keys, zoom in ((["ctrl+plus", "ctrl+equal"], 3), (["ctrl+minus"], 2), (["ctrl+0"], 1)):
            simulator.key(*keys)
            wait_for_zoom(zoom)
        simulator.key(*["F2"] * 11, "3", "F6")
        simulator.zoom = 4  # that of twelve would be 4,704 pixels wide
        simulator.wait_for_text("READY P3")
        for _ in range(2):  # twelve is kept, and nothing complains of it at the next start
            left, top, width, height = self.screen.geometry(simulator.window)
            self.assertTrue(0 < left and left + width < 1600 and 0 < top and top + height < 1200)
            self.assertEqual(self.screen.find_windows("^Error"), [])
            simulator.close()
            self.assertIn(b"ZOOM= 12", simulator.file("QZ740.ini"))
            simulator = self.start(zoom=4)
            simulator.key("F6")
            simulator.wait_for_text("READY P3")
        simulator.key("F10", "Right", "Right", "z", "Return")  # x1, by the menu
        wait_for_zoom(1)
        simulator.close()

    def test_sharp_at_any_scale_factor(self):
        for factor, zoom, pixel_size in (("1.25", 1, 1), ("1.5", 2, 3), ("2", 1, 2)):
            with self.subTest(factor=factor, zoom=zoom):
                simulator = self.start(self.listing("hello.bas", HELLO), env={"QT_SCALE_FACTOR": factor})
                simulator.key("F5", *["F2"] * (zoom - simulator.zoom))
                simulator.zoom = pixel_size
                simulator.wait_for_text("HELLO")
                self.assertTrue(simulator.is_sharp())
                left, top = simulator.lcd_corner()
                bezel = self.screen.pixels(simulator.window).pixel(left // 2, top + 44)
                self.assertTrue(left == 0 or max(bezel) < 64, f"beside the display it is {bezel}")
                width = self.screen.geometry(simulator.window)[2]
                simulator.key(*["F1"] * (zoom - 1))  # for the next start: the zoom is kept
                wait_until(lambda: zoom == 1 or self.screen.geometry(simulator.window)[2] < width, "the window to shrink")
                simulator.close()

    def test_clipboard(self):
        simulator = self.start()
        simulator.key("F6")
        simulator.type("2+3")
        simulator.key("Return")
        simulator.wait_for_text("5")
        simulator.key("ctrl+c")
        wait_until(lambda: self.screen.clipboard() == "5", "the result on the clipboard")
        self.screen.set_clipboard("7*6")
        simulator.key("ctrl+v", "Return")
        simulator.wait_for_text("42")
        simulator.close()

    def test_dropped_file(self):
        simulator = self.start()
        name = b"dropped \xff%.bas"  # not UTF-8
        os.rename(self.listing("dropped.bas", HELLO), os.fsencode(self.home) + b"/" + name)
        source = self.screen.start([PROGRAMS["drag_source"], f"file://{self.home}/dropped%20%FF%25.bas"])
        window = self.screen.wait_for_window("Drag source")

        def drag() -> bool:  # once more when the button came up before the two programs had agreed
            left, top = simulator.lcd_corner()
            self.screen.xdotool("mousemove", "--window", window, 50, 50, "mousedown", 1)
            for x in (30, 40, 50):
                self.screen.xdotool("mousemove", "--window", simulator.window, left + x, top + 40)
            self.screen.xdotool("mouseup", 1)
            return simulator.title() == "Quillon Simulator. [dropped \N{REPLACEMENT CHARACTER}%.bas]"

        wait_until(drag, "the dropped listing")
        source.terminate()
        simulator.close()
        self.assertIn(name, simulator.file("QZ740.ini"))

    def test_soft_keyboard(self):
        simulator = self.start(self.listing("hello.bas", HELLO))
        self.toggle_soft_keyboard(simulator)
        keyboard = self.screen.wait_for_window("QZ-SIM SoftwareKeyboard")
        main = self.screen.geometry(simulator.window)
        wait_until(lambda: self.screen.geometry(keyboard)[1] >= main[1] + main[3], "the keyboard below the window")
        simulator.key("F6")
        simulator.wait_for_text("READY P0")
        released = self.screen.pixels(keyboard).data
        for row, column in SOFT_KEYS_ONE_PLUS_ONE:
            self.screen.xdotool("mousemove", "--window", keyboard, 2 + SOFT_KEY * column + 16,
                                2 + SOFT_ROW * row + 20, "mousedown", 1)
            wait_until(lambda: self.screen.pixels(keyboard).data != released, "the key to be drawn pressed")
            self.screen.xdotool("mouseup", 1)
            wait_until(lambda: self.screen.pixels(keyboard).data == released, "the key to be drawn released")
        simulator.wait_for_text("2")
        for top, below in ((1000, False), (200, True)):  # on a screen of 1600 x 1200
            self.screen.xdotool("windowmove", simulator.window, 1500, top)
            wait_until(lambda: self.is_docked(simulator, keyboard, below), "the keyboard to dock")
        self.toggle_soft_keyboard(simulator)
        wait_until(lambda: not self.screen.find_windows("QZ-SIM SoftwareKeyboard"), "the soft keyboard to close")
        simulator.close()

    def is_docked(self, simulator: Simulator, keyboard: str, below: bool) -> bool:
        """Whether the soft keyboard touches the window's frame, and is on the screen whole."""
        frame = [int(n) for n in run("xprop", "-id", simulator.window, "_NET_FRAME_EXTENTS",
                                     env=self.screen.env).decode().split("=")[1].split(",")]
        _, top, _, height = self.screen.geometry(simulator.window)
        x, y, width, own_height = self.screen.geometry(keyboard)
        touches = y == top + height + frame[3] if below else y + own_height == top - frame[2]
        return touches and 0 <= x and x + width <= 1600

    def test_keys_are_released_with_the_focus_and_alt_opens_no_menu(self):
        simulator = self.start(self.listing("keys.bas", KEYS))
        other = self.screen.start(["xmessage", "-name", "Other window", "-title", "Other window", "here"])
        window = self.screen.wait_for_window("Other window")
        simulator.focus()
        simulator.key("alt", "F5")
        simulator.wait_for_text("UP")
        self.screen.xdotool("keydown", "a")
        simulator.wait_for_text("DOWN")
        self.screen.xdotool("windowactivate", "--sync", window)
        simulator.wait_for_text("UP")
        self.screen.xdotool("keyup", "a")
        other.terminate()
        simulator.close()

    def test_a_listing_that_does_not_load_stays_the_one_to_reload(self):
        """Named on the command line by a path from the working folder, in place of one that is gone."""
        os.makedirs(os.path.join(self.home, "config", "quillon"))
        os.mkfifo(os.path.join(self.home, "pipe.bas"))
        for name, text in (("missing.bas", None), ("pipe.bas", None), ("faulty.bas", "[P0]\n20 END\n10 END\n")):
            with open(os.path.join(self.home, "config", "quillon", "QZ740.ini"), "w", encoding="ascii") as file:
                file.write('[QZS]\nLASTFILE="/gone/old.bas"\n')
            if text:
                self.listing(name, text)
            simulator = self.start(os.path.join(".", name))
            self.close_message(simulator)
            simulator.wait_for_title("Quillon Simulator. [faulty.bas]" if text else "Quillon Simulator.")
            if name == "pipe.bas":
                os.remove(os.path.join(self.home, name))
            path = self.listing(name, HELLO)
            simulator.key("F4", "F5")
            simulator.wait_for_text("HELLO")  # the title may have been right before
            self.assertEqual(simulator.title(), f"Quillon Simulator. [{name}]")
            simulator.close()
            self.assertIn(f'LASTFILE = "{path}"'.encode(), simulator.file("QZ740.ini"))
            self.assertTrue(simulator.file("recent.txt").startswith(path.encode() + b"\n"))

    def test_ends_with_every_window_open_and_loses_nothing(self):
        """Closed by its frame's button, or ended by a signal while a message or a dialog waits for an answer."""
        ends = ((Simulator.close, ()), (Simulator.terminate, ("^Error", "F4")),  # there is no listing
                (Simulator.terminate, ("^Configuration", "F10", "c")))
        for round, (end, question) in enumerate(ends, 1):
            simulator = self.start()
            simulator.key("F6")
            simulator.type("a=a+1.5")
            simulator.key("Return")
            simulator.type("a")
            simulator.key("Return")
            simulator.wait_for_text(str(1.5 * round).removesuffix(".0"))
            if not self.screen.find_windows("QZ-SIM SoftwareKeyboard"):  # it comes back with the next start
                self.toggle_soft_keyboard(simulator)
            self.screen.wait_for_window("QZ-SIM SoftwareKeyboard")
            simulator.key("F10", "Right", "t")
            self.screen.wait_for_window("^Trace$")
            simulator.focus()
            if question:
                simulator.key(*question[1:])
                self.screen.wait_for_window(question[0])
            end(simulator)
            self.assertIn(b"SOFTKEY= 1", simulator.file("QZ740.ini"))

    def close_message(self, simulator: Simulator):
        """Closes the one message box there is."""
        self.screen.xdotool("windowactivate", "--sync", self.screen.wait_for_window("^Error"))
        self.screen.xdotool("key", "Return")
        wait_until(lambda: not self.screen.find_windows("^Error"), "the message to close")
        simulator.focus()

    def toggle_soft_keyboard(self, simulator: Simulator):
        """By the menu: View, Soft keyboard."""
        simulator.key("F10", "Left", "Left", "k")

    def open_with_dialog(self, simulator: Simulator, path: str):
        simulator.click(16, 40)
        dialog = self.screen.wait_for_window("Open file")
        self.screen.xdotool("windowactivate", "--sync", dialog)
        self.screen.xdotool("type", "--delay", "20", path)

        def closed():  # the list of completions may take the first Return
            gone = not self.screen.find_windows("Open file")
            if not gone:
                self.screen.xdotool("key", "Return")
            return gone

        wait_until(closed, "the dialog to close")
        simulator.focus()


if __name__ == "__main__":
    run_tests()
