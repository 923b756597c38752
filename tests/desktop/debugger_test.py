# SPDX-License-Identifier: MIT
"""The debugger beside the main window, as a person uses it: a breakpoint, steps back, a changed variable, going on.

usage: debugger_test.py QUILLON QUILLON_CLI DRAG_SOURCE [unittest's arguments]
"""

import os

from desktop_case import DesktopTest, run_tests
from screen import wait_until

LISTING = '[P0]\n10 A=1\n20 A=A+1\n30 IF A<5;GOTO 20\n40 PRINT "A";A\n'
FAILING = '# a comment\n[P0]\n10 A=1\n20 A=A+1\n30 B=1/(A-3):GOTO 20\n'


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

    def test_watch_error_and_slots(self):
        calls = os.path.join(self.home, "calls")
        editor = os.path.join(self.home, "editor")
        with open(editor, "w", encoding="ascii") as script:
            script.write(f'#!/bin/sh\necho "$@" >>{calls}\n')
        os.chmod(editor, 0o755)
        folder = os.path.join(self.home, "config", "quillon")
        os.makedirs(folder)
        with open(os.path.join(folder, "QZ740.ini"), "w", encoding="ascii") as settings:
            settings.write(f'[QZS]\nEDITOR="{editor} +%l"\n')
        simulator = super().start(self.listing("error.bas", FAILING))
        program = accessible.Program(simulator.process.pid)
        window = self.open_debugger(simulator, program)
        accessible.press(accessible.control(window, "Add...", "push button"))
        dialog = program.window("Breakpoints and watches")
        self.screen.xdotool("windowactivate", "--sync", self.screen.wait_for_window("^Breakpoints and watches"))
        simulator.key("Down")
        variable = accessible.control(dialog, "Variable", "text")
        wait_until(lambda: accessible.is_showing(variable), "the field for the variable")
        self.assertFalse(accessible.is_showing(accessible.control(dialog, "Line", "spin button")))
        accessible.set_text(variable, "B")
        accessible.press(accessible.control(dialog, "OK", "push button"))
        wait_until(lambda: not program.has_window("Breakpoints and watches"), "the dialog to close")
        simulator.focus()
        simulator.key("F5")
        wait_until(lambda: "After a change that is watched." in accessible.texts_in(window), "the stop")
        self.assertEqual(self.value_of(window, "B"), "-1")
        self.screenshot("debugger-watch.png")

        simulator.focus()
        simulator.key("F10", "t", "Return")
        slot = os.path.join(folder, "slot-1.state")
        wait_until(lambda: os.path.exists(slot), "the saved state")
        self.focus_debugger()
        simulator.key("F5")
        simulator.wait_for_text("ERR3 P0-30")
        for button in ("Open editor at this line", "Show in the listing"):
            simulator.focus()
            simulator.key("F10", "Left", "e")
            accessible.press(accessible.control(program.window("Error details"), button, "push button"))
            wait_until(lambda: not program.has_window("Error details"), "the details to close")
        wait_until(lambda: accessible.is_active(program.window("Debugger")), "the debugger to get the keyboard")
        wait_until(lambda: os.path.exists(calls) and os.path.getsize(calls), "the editor's call")
        with open(calls, encoding="ascii") as made:
            self.assertEqual(made.read(), f"+5 {self.home}/error.bas\n")
        accessible.press(accessible.control(window, "Pause", "push button"))
        wait_until(lambda: "The machine runs." not in accessible.texts_in(window), "the pause")
        simulator.focus()
        simulator.key("F10", "r", "Return")
        wait_until(lambda: self.value_of(window, "A") == "2", "the state that was saved")
        simulator.close()

    def screenshot(self, name: str):
        folder = os.environ.get("QUILLON_SCREENSHOTS")
        if folder:
            self.screen.screenshot(os.path.join(folder, name))


if __name__ == "__main__":
    run_tests()
