# SPDX-License-Identifier: MIT
"""Dialogs, trace windows and the LCD as a screen reader finds them, with keys and clicks from outside.

usage: dialogs_test.py QUILLON QUILLON_CLI DRAG_SOURCE [unittest's arguments]
"""

import os
import re
import shutil
import signal

from desktop_case import DesktopTest, run_tests
from screen import wait_until
from simulator import Simulator

STEPS = '[P0]\n10 A=1:B=2\n20 $="X\\pi":A(30)=5:A(120)=7\n30 PRINT "A";A\n40 VAC\n50 A=9\n60 PRINT "DONE"\n'
DIALOGS = {  # title: keys after F10, name of the toolbar's button
    "Configuration": (["c"], "Configuration"),
    "Trace": (["Right", "t"], "Trace"),
    "Error details": (["Left", "e"], "Error details"),
    "About.": (["Left", "a"], "About this program"),
}
TRACE = ("Trace", "トレース")
NUMBER_FIELDS = {  # field: (accepted, refused, setting, its text then, text when refused, message)
    "Program area at start [0-9]": (4, 77, "RUNPAGE", "4", "9", None),
    "Speed (timer interval)": (50, 2000, "TIMER", "50", "30", "5 to 1000 ms"),
    "SET E": (3, 9, "INTEGER", "3", "-1", "SET E must be"),
    "SET F": (4, 10, "DECIMAL", "4", "-1", "SET F must be"),
    "SET G": (5, 19, "FIXED", "5", "9", "SET G must be"),
    "BEEP volume [0-10]": (6, 11, "BEEPVOLUME", "6", "10", "volume must be"),
}


class DialogsTest(DesktopTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        os.environ.update(cls.screen.env)
        global accessible
        import accessible

    def start(self, listing: str, **options) -> tuple:
        simulator = super().start(self.listing("steps.bas", listing), **options)
        return simulator, accessible.Program(simulator.process.pid)

    def main_window(self, program):
        return program.window("Quillon Simulator. [steps.bas]")

    def choose(self, simulator: Simulator, *keys):
        """An entry of the menu, by keyboard: F10 opens the first menu, Left goes round to the last."""
        simulator.focus()
        simulator.key("F10", *keys)

    def setting(self, simulator: Simulator, name: str) -> str:
        lines = simulator.file("QZ740.ini").decode().splitlines()
        values = (line.split("=", 1) for line in lines if "=" in line)
        return {key.strip(): value.strip() for key, value in values}[name]

    def test_lcd_is_a_text(self):
        simulator, program = self.start('[P0]\n10 PRINT "HI ";:STOP\n20 PRINT "\\pi"\n')
        lcd = accessible.control(self.main_window(program), "LCD")
        self.assertEqual(accessible.text_of(lcd), "P _123456789\nWRT DEG")
        simulator.key("F5")
        wait_until(lambda: accessible.text_of(lcd) == "HI          \nRUN DEG STOP", "the text of the LCD")
        simulator.key("Return")
        wait_until(lambda: accessible.text_of(lcd).startswith("π "), "the text of the LCD")
        self.assertEqual(accessible.nameless(self.main_window(program)), [])
        simulator.close()

    def test_soft_keyboard_is_a_group_of_buttons(self):
        simulator, program = self.start(STEPS)
        simulator.key("F6")
        simulator.wait_for_text("READY P0")
        self.choose(simulator, "Left", "Left", "k")
        keyboard = program.window("Soft keyboard")
        names = [button.name for button in keyboard]
        self.assertEqual((len(names), names[:4], names[-1]),
                         (55, ["Close the soft keyboard", "EXT, extension", "Cursor left", "Cursor right"], "Execute"))
        for name, shown in (("1", "1_"), ("+", "1+_"), ("1", "1+1_"), ("Execute", "2")):
            accessible.press(accessible.control(keyboard, name))
            simulator.wait_for_text(shown)
        accessible.press(accessible.control(keyboard, "S, shift"))
        accessible.press(accessible.control(keyboard, "Program area 7"))
        simulator.wait_for_text("READY P7")
        simulator.close()

    def test_dialogs_open_from_menu_and_toolbar(self):
        simulator, program = self.start(STEPS)
        buttons = [element for element in accessible.tree(self.main_window(program))
                   if element.getRoleName() == "push button"]
        for title, (keys, name) in DIALOGS.items():
            self.choose(simulator, *keys)
            self.close_dialog(simulator, program, title)
            button = next(element for element in buttons if element.name == name)
            self.screen.xdotool("mousemove", *accessible.middle_of(button), "click", 1)
            self.close_dialog(simulator, program, title)
        simulator.close()

    def close_dialog(self, simulator: Simulator, program, title: str):
        window = program.window(title)
        if title in TRACE:  # Escape is the machine's there
            self.choose(simulator, *DIALOGS["Trace"][0])
        else:
            wait_until(lambda: accessible.is_active(window), f"'{title}' to get the keyboard")
            simulator.key("Escape")
        wait_until(lambda: not program.has_window(title), f"'{title}' to close")

    def test_tab_goes_through_the_fields_as_they_are_read(self):
        simulator, program = self.start(STEPS)
        self.choose(simulator, "c")
        dialog = program.window("Configuration")
        self.screen.xdotool("windowactivate", "--sync", self.screen.wait_for_window("Configuration"))
        seen = []
        while not seen or seen[-1] != seen[0] or len(seen) == 1:
            name = wait_until(lambda: accessible.focused_name(dialog, other_than=seen[-1:]), "the next field")
            seen.append(name)
            simulator.key("Tab")
        fields = sorted(accessible.focusable_in(dialog), key=lambda field: accessible.middle_of(field)[::-1])
        unchosen = {"Command (mode 0)", "use BEEP"}  # the arrow keys lead there
        self.assertEqual(seen[:-1], [field.name for field in fields if field.name not in unchosen])
        simulator.key("Escape")
        simulator.close()

    def test_configuration_is_taken_over(self):
        simulator, program = self.start(STEPS)
        self.choose(simulator, "c")
        dialog = program.window("Configuration")
        self.assertEqual(accessible.nameless(dialog), [])
        for name, (accepted, *_) in NUMBER_FIELDS.items():
            accessible.set_number(accessible.control(dialog, name, "spin button"), accepted)
        accessible.set_text(accessible.control(dialog, "Text editor", "text"), "/usr/bin/true")
        for name in ("Command (mode 0)", "use BEEP"):
            accessible.press(accessible.control(dialog, name))
        accessible.press(accessible.control(dialog, "Keys type ASCII characters. (The machine's special characters "
                                                    "cannot be typed then.)"))
        self.screen.xdotool("windowactivate", "--sync", self.screen.wait_for_window("Configuration"))
        simulator.key("Return")
        wait_until(lambda: not program.has_window("Configuration"), "the dialog to close")
        simulator.close()
        expected = {setting: text for _, _, setting, text, _, _ in NUMBER_FIELDS.values()}
        expected |= {"EDITOR": '"/usr/bin/true"', "STARTMODE": "1", "PCMBEEP": "0", "INPUTMODE": "0"}
        self.assertEqual({name: self.setting(simulator, name) for name in expected}, expected)

    def test_configuration_that_is_refused_or_cancelled(self):
        simulator, program = self.start(STEPS)
        for button in ("Cancel", "OK"):
            self.choose(simulator, "c")
            dialog = program.window("Configuration")
            for name, (_, refused, *_) in NUMBER_FIELDS.items():
                accessible.set_number(accessible.control(dialog, name, "spin button"), refused)
            accessible.press(accessible.control(dialog, button))
            wait_until(lambda: not program.has_window("Configuration"), "the dialog to close")
        for name in ("Speed (timer interval)", "SET F", "SET E", "SET G", "BEEP volume [0-10]"):
            self.dismiss_message(program, NUMBER_FIELDS[name][5])
        simulator.close()
        expected = {setting: text for _, _, setting, _, text, _ in NUMBER_FIELDS.values()}
        self.assertEqual({name: self.setting(simulator, name) for name in expected}, expected)

    def find_message(self, program, message: str):
        boxes = [box for box in program.windows("Error.") if message in accessible.texts_in(box)]
        return boxes[0] if boxes else None

    def answer_message(self, program, message: str, button: str):
        """Presses a button of the message box with this text."""
        box = wait_until(lambda: self.find_message(program, message), f"the message '{message}'")
        accessible.press(accessible.control(box, button))

    def dismiss_message(self, program, message: str):
        self.answer_message(program, message, "OK")
        wait_until(lambda: self.find_message(program, message) is None, "the message to close")

    def test_what_cannot_be_saved_is_reported(self):
        for answer, status in (("Cancel", None), ("Retry", 0), ("Discard", 1), (None, 1)):
            self.setUp()  # another home
            simulator, program = self.start(STEPS)
            simulator.process.send_signal(signal.SIGSTOP)  # it must not save meanwhile
            shutil.rmtree(simulator.config, ignore_errors=True)
            os.makedirs(simulator.config)
            folder = os.path.join(simulator.config, "quillon")
            open(folder, "wb").close()  # a file where the folder should be
            simulator.process.send_signal(signal.SIGCONT)
            if answer is None:
                simulator.process.terminate()  # nobody is asked
            else:
                simulator.ask_to_close()
                program.window("Error.")
                if answer == "Retry":
                    os.remove(folder)
                self.answer_message(program, f"{folder}/QZ740.val", answer)
            if status is None:
                wait_until(lambda: not self.screen.find_windows("^Error"), "the message to close")
                simulator.focus()
                simulator.key("F5")
                simulator.wait_for_text("A 1")
                continue
            self.assertEqual(simulator.process.wait(), status)
            told = simulator.errors() if answer is None else ""
            self.assertEqual(f"{folder}/QZ740.val" in told, answer is None, told)

    def test_single_steps(self):
        simulator, program = self.start(STEPS)
        self.choose(simulator, "Right", "t")
        trace = program.window("Trace")
        self.assertEqual(accessible.nameless(trace), [])

        def shows(**fields):
            seen = {}

            def agree():
                for name in fields:
                    seen[name] = accessible.text_of(accessible.control(trace, LABELS.get(name, name)))
                return seen == fields

            try:
                wait_until(agree, f"the trace window to show {fields}")
            except AssertionError:
                self.fail(f"the trace window shows {seen}, not {fields}")

        simulator.focus()
        simulator.key("F5")
        shows(next="10 <<HERE>> A=1:B=2", dollar='""', A="-------", kind="TOP")
        simulator.key("Tab")
        shows(next="10  A=1:<<HERE>>B=2", last="10 <<HERE>> A=1:B=2", A="1", B="-------")
        simulator.key("Return")
        shows(next='20 <<HERE>> $="X\\pi":A(30)=5:A(120)=7', A="1", B="2")
        window = self.screen.wait_for_window("^Trace$")
        simulator.click(20, 150, window=window)
        shows(next='20  $="X\\pi":<<HERE>>A(30)=5:A(120)=7', dollar='"X\\pi"')
        simulator.key("Tab")
        accessible.press(accessible.control(trace, "Extended variables"))
        extended = program.window("Extended variables")
        field = accessible.control(extended, "Extended variables", "text")
        self.assertIn("---", accessible.text_of(field))
        simulator.focus()
        simulator.key("Tab")
        wait_until(lambda: "095 : 7 " in accessible.text_of(field), "the extended variable")
        shows(next='30 <<HERE>> PRINT "A";A')
        simulator.key("Tab")
        simulator.wait_for_text("A 1")
        simulator.key("Return")
        shows(next='30  PRINT "A";A<<HERE>>')
        simulator.key("Tab")
        shows(next="40 <<HERE>> VAC")
        simulator.key("Tab")
        shows(next="50 <<HERE>> A=9", last="", A="-------", dollar='""')
        accessible.press(accessible.control(trace, "Extended variables", "push button"))
        wait_until(lambda: not program.has_window("Extended variables"), "the second window to close")
        simulator.ask_to_close(window)  # and the program goes on
        simulator.wait_for_text("DONE")
        simulator.close()

    def test_what_works_and_what_fails_is_told_as_plain_text(self):
        tools = os.path.join(self.home, "bin")
        os.mkdir(tools)
        with open(os.path.join(tools, "xdg-open"), "w", encoding="ascii") as opener:
            opener.write(f"#!/bin/sh\necho $1 >>{self.home}/opened\nexit 3\n")  # there is nothing to open it with
        os.chmod(opener.name, 0o755)
        path = {"PATH": tools + ":" + os.environ["PATH"]}
        simulator, program = self.start('[P0]\n10 GLOAD "<b>x"\n', env=path)
        simulator.key("F5")
        self.dismiss_message(program, '"<b>x"')
        simulator.focus()
        simulator.key("F12")
        self.wait_for_note(program, "Desktop/qzsnap_000.bmp")
        simulator.key("F9")
        self.wait_for_note(program, "debug.bin")
        for number in range(1, 256):
            os.mkdir(os.path.join(self.home, f"debug_{number:03}.bin"))
        simulator.key("F9")
        self.dismiss_message(program, "debug.bin")
        self.choose(simulator, "Left", "h")
        self.dismiss_message(program, "web browser")
        self.choose(simulator, "e")
        self.dismiss_message(program, "editor could not be started")
        # The dialog to choose another one opens as the message closes: the window manager may give the keyboard to neither.
        self.screen.xdotool("windowactivate", self.screen.wait_for_window("Configuration"))
        self.close_dialog(simulator, program, "Configuration")
        with open(os.path.join(self.home, "opened"), encoding="utf-8") as opened:
            self.assertRegex(opened.read(), r"index\.(md|html)\n.*/steps\.bas\n$")
        simulator.close()

    def wait_for_note(self, program, text: str):
        wait_until(lambda: any(text in (element.name or "") and element.getRoleName() == "tool tip"
                               for element in accessible.tree(program.root)), f"the note '{text}'")

    def test_nothing_stays_english_in_japanese(self):
        simulator, program = self.start(STEPS, env={"LC_ALL": "ja_JP.UTF-8"})
        titles = {"設定": ["c"], "トレース": ["Right", "t"], "エラー詳細情報": ["Left", "e"], "バージョン情報": ["Left", "a"],
                  "リストを開く": ["o"]}
        english = {}
        for title, keys in titles.items():
            self.choose(simulator, *keys)
            english[title] = self.english_names(program.window(title))
            self.close_dialog(simulator, program, title)
        english["main"] = self.english_names(self.main_window(program))
        self.assertEqual({title: names for title, names in english.items() if names}, {})
        simulator.close()

    def english_names(self, window) -> list:
        """Names of controls that are nothing but English; those of files and of the machine's keys and words are none."""
        own = r"Quillon.*|The Quillon developers|OK|SET [EFG]|BASIC \(mode 1\)|RUN|STOP|(BAS|TXT)\(.*|.*[/.].*|\[ms\]|\W*\w?\W*|\d*"
        names = {element.name for element in accessible.tree(window)
                 if accessible.is_showing(element) and element.getRoleName() not in ("list item", "table cell")}
        return sorted(name for name in names if name.isascii() and not re.fullmatch(own, name))

    def test_error_detail_and_about(self):
        simulator, program = self.start("[P0]\n10 A=1\n20 GOTO 99\n")
        self.choose(simulator, "Left", "e")
        detail = program.window("Error details")
        self.assertIn("no error", accessible.text_of(accessible.control(detail, "Error details", "text")))
        self.close_dialog(simulator, program, "Error details")
        simulator.focus()
        simulator.key("F5")
        simulator.wait_for_text("ERR4 P0-20")
        self.choose(simulator, "Left", "e")
        detail = program.window("Error details")
        field = accessible.control(detail, "Error details", "text")
        self.assertIn('"20"', accessible.text_of(field))
        self.assertIn("::::(the end of the line)", accessible.text_of(field))
        simulator.key("Escape")
        wait_until(lambda: not program.has_window("Error details"), "the window to close")
        self.choose(simulator, "Left", "a")
        about = program.window("About.")
        self.assertIn("Version", accessible.texts_in(about))
        simulator.key("Return")
        wait_until(lambda: not program.has_window("About."), "the window to close")
        simulator.close()


LABELS = {"next": "Next", "last": "Last", "dollar": "$", "kind": "Statement kind"}

if __name__ == "__main__":
    run_tests()
