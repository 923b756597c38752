# SPDX-License-Identifier: MIT
"""The keyboard in a real X server: layouts, locks and dead keys, keys in each of the windows, keys that nothing takes.

usage: keyboard_test.py QUILLON QUILLON_CLI DRAG_SOURCE [unittest's arguments]
"""

from desktop_case import DesktopTest, run_tests
from screen import run, wait_until
from simulator import Simulator

WAITING = '[P0]\n10 PRINT "ONE"\n20 PRINT "TWO"\n30 PRINT "THREE"\n40 GOTO 10\n'
KEYPAD_8, CIRCUMFLEX, QUOTE = 80, 49, 48  # key codes: the place of a key, whatever is printed on it


class KeyboardTest(DesktopTest):
    def tearDown(self):
        super().tearDown()
        self.layout("us")

    def layout(self, *layout):
        run("setxkbmap", *layout, env=self.screen.env)

    def calculates(self, simulator: Simulator, text="7*6", result="42"):
        """The keyboard works: what is typed comes out."""
        simulator.key("Home", "F6")
        simulator.type(text)
        simulator.key("Return")
        simulator.wait_for_text(result)

    def test_keys_that_an_error_does_not_take_block_nothing(self):
        simulator = self.start(self.listing("error.bas", "[P0]\n10 PRINT 1/0\n"))
        simulator.key("F5")
        simulator.wait_for_text("ERR3 P0-10")
        simulator.key("a", "a", "b")
        self.calculates(simulator)
        simulator.close()

    def test_a_key_comes_up_as_it_went_down(self):
        """With Num Lock, Shift turns the keypad's digits into arrows; here it comes up before the digit does."""
        simulator = self.start()
        simulator.key("Num_Lock", "F6")
        for _ in range(2):
            self.screen.xdotool("keydown", "shift", "keydown", KEYPAD_8, "keyup", "shift", "keyup", KEYPAD_8)
        self.calculates(simulator)
        simulator.key("Num_Lock")
        simulator.close()

    def test_dead_keys_type_their_own_characters(self):
        simulator = self.start()
        rows = (  # layout, keys, what is shown
            ("de", ["2", CIRCUMFLEX, "3", "Return"], "8"),
            ("de", ["2", CIRCUMFLEX, "space", "4", "Return"], "16"),
            ("us -variant intl", [f"shift+{QUOTE}", "a", "b", f"shift+{QUOTE}", "Return"], "AB"))
        for layout, keys, shown in rows:
            self.layout(*layout.split())
            simulator.key("Home", "F6", *map(str, keys))
            simulator.wait_for_text(shown)
        simulator.close()

    def test_trace_windows_hand_all_keys_to_the_machine(self):
        simulator = self.start(self.listing("waiting.bas", WAITING))
        simulator.key("F10", "Right", "t")
        trace = self.screen.wait_for_window("^Trace$")
        simulator.focus()
        simulator.key("F5", "Tab")
        simulator.wait_for_text("ONE")
        simulator.click(20, 150, window=trace)  # no step while EXE is waited for
        wait_until(lambda: self.screen.xdotool("getactivewindow") == trace, "the trace window to get the keyboard")
        simulator.key("Return", "Tab")
        simulator.wait_for_text("TWO")
        self.screen.xdotool("windowactivate", "--sync", trace)
        simulator.key("Escape")
        wait_until(lambda: simulator.is_lit("STOP"), "the program to stop")
        simulator.key("F6")
        simulator.wait_for_text("READY P0")
        self.assertEqual(self.screen.find_windows("^Trace$"), [trace])
        simulator.close()

    def test_toolbar_without_a_mouse(self):
        simulator = self.start()
        simulator.key("shift+F10", "space")
        self.screen.xdotool("windowactivate", "--sync", self.screen.wait_for_window("Open file"))
        simulator.key("Escape")
        wait_until(lambda: not self.screen.find_windows("Open file"), "the dialog to close")
        simulator.focus()
        simulator.key("shift+F10", "Tab", "Return")  # the second button
        self.screen.xdotool("windowactivate", "--sync", self.screen.wait_for_window("Configuration"))
        simulator.key("Escape")
        wait_until(lambda: not self.screen.find_windows("Configuration"), "the dialog to close")
        simulator.focus()
        simulator.key("Escape")
        self.calculates(simulator)
        simulator.close()


if __name__ == "__main__":
    run_tests()
