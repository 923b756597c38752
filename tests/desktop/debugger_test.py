# SPDX-License-Identifier: MIT
"""The debugger beside the main window, as a person uses it: a breakpoint, steps back, a changed variable, going on.

usage: debugger_test.py QUILLON QUILLON_CLI DRAG_SOURCE [unittest's arguments]
"""

import os

from desktop_case import DesktopTest, run_tests
from screen import wait_until

LISTING = '[P0]\n10 A=1\n20 A=A+1\n30 IF A<5;GOTO 20\n40 PRINT "A";A\n'


class DebuggerTest(DesktopTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        os.environ.update(cls.screen.env)
        global accessible
        import accessible

    def open_debugger(self, simulator, program):
        simulator.focus()
        simulator.key("F10", "Right", "d")
        return program.window("Debugger")

    def cell(self, window, name: str):
        return accessible.control(window, name, "table cell")

    def value_of(self, window, variable: str) -> str:
        """The value beside the name of a variable, which has a mark when it has just changed."""
        names = [element.name for element in accessible.tree(window) if element.getRoleName() == "table cell"]
        places = [i for i, name in enumerate(names) if name in (variable, variable + " *")]
        return names[places[0] + 1] if places else ""

    def focus_debugger(self):
        self.screen.xdotool("windowactivate", "--sync", self.screen.wait_for_window("^Debugger"))

    def test_breakpoint_steps_back_and_a_changed_variable(self):
        simulator = super().start(self.listing("count.bas", LISTING))
        program = accessible.Program(simulator.process.pid)
        window = self.open_debugger(simulator, program)
        wait_until(lambda: "A=A+1" in accessible.texts_in(window), "the listing")

        x, y = accessible.middle_of(self.cell(window, "30"))
        margin, _ = accessible.middle_of(accessible.control(window, "Listing", "table"))
        self.assertLess(x, margin)
        left = accessible.control(window, "Listing", "table").queryComponent().getExtents(0).x
        self.screen.xdotool("mousemove", left + 6, y, "click", 1)
        wait_until(lambda: "●" in accessible.texts_in(window), "the breakpoint")
        simulator.focus()
        simulator.key("F5")
        wait_until(lambda: "At a breakpoint." in accessible.texts_in(window), "the stop")
        wait_until(lambda: self.value_of(window, "A") == "2", "the variable")

        self.focus_debugger()
        simulator.key("alt+F11", "alt+F11")  # before 20, before 10
        wait_until(lambda: self.value_of(window, "A") in ("", "0"), "the time before A=1")
        simulator.key("F11")
        wait_until(lambda: self.value_of(window, "A") == "1", "A=1 once more")
        x, y = accessible.middle_of(self.cell(window, "1"))
        self.screen.xdotool("mousemove", x, y, "click", "--repeat", 2, "--delay", 60, 1)
        simulator.key("ctrl+a")
        simulator.type("30")
        simulator.key("Return")
        wait_until(lambda: self.value_of(window, "A") == "30", "the new value")
        self.screenshot("debugger.png")
        simulator.key("F5")
        wait_until(lambda: self.value_of(window, "A") == "31", "the breakpoint in the new future")
        simulator.key("F9")
        wait_until(lambda: "●" not in accessible.texts_in(window), "no breakpoint any more")
        simulator.key("F5")
        simulator.wait_for_text("A 31")
        simulator.close()

    def screenshot(self, name: str):
        folder = os.environ.get("QUILLON_SCREENSHOTS")
        if folder:
            self.screen.screenshot(os.path.join(folder, name))


if __name__ == "__main__":
    run_tests()
