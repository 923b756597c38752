# SPDX-License-Identifier: MIT
"""The program's windows as a screen reader finds them: by the accessibility service of the screen's message bus.

Import it when the environment is that of the screen: the service is found by it.
"""

import pyatspi

from screen import wait_until

ROLES_WITHOUT_A_NAME = {"application", "filler", "panel", "menu bar", "tool bar", "separator", "scroll bar", "scroll pane",
                        "viewport", "layered pane", "popup menu", "label", "image", "icon", "status bar"}


def tree(element) -> list:
    """An element and all below it."""
    found = [element]
    for child in element:
        if child is not None:
            found += tree(child)
    return found


class Program:
    """The accessible windows of a process."""

    def __init__(self, pid: int):
        self.pid = pid
        self.root = wait_until(self.find, "the program's accessible tree")

    def find(self):
        for application in pyatspi.Registry.getDesktop(0):
            if application is not None and application.get_process_id() == self.pid:
                return application
        return None

    def windows(self, name: str) -> list:
        """The showing windows with a title."""
        return [window for window in self.root if window is not None and window.name == name and is_showing(window)]

    def window(self, name: str):
        return wait_until(lambda: self.windows(name), f"the window '{name}'")[0]

    def has_window(self, name: str) -> bool:
        return bool(self.windows(name))


def is_showing(element) -> bool:
    return has_state(element, pyatspi.STATE_SHOWING)


def is_active(window) -> bool:
    """Whether it has the keyboard."""
    return has_state(window, pyatspi.STATE_ACTIVE)


def nameless(window) -> list:
    """The roles of those controls of a window that have no name."""
    return [element.getRoleName() for element in tree(window)
            if element.getRoleName() not in ROLES_WITHOUT_A_NAME and is_showing(element) and not element.name]


def control(window, name: str, role=None):
    """The control with this name."""

    def find():
        for element in tree(window):
            if element.name == name and (role is None or element.getRoleName() == role):
                return element
        return None

    return wait_until(find, f"the control '{name}'")


def text_of(element) -> str:
    return element.queryText().getText(0, -1)


def press(element):
    """What Enter or a click does to a button, a box or a menu entry."""
    element.queryAction().doAction(0)


def set_text(element, text: str):
    element.queryEditableText().setTextContents(text)


def set_number(element, number: float):
    element.queryValue().currentValue = number


def texts_in(window) -> str:
    return "\n".join(element.name for element in tree(window) if element.name)


def middle_of(element) -> tuple:
    """Where to click on it, on the screen."""
    extents = element.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
    return extents.x + extents.width // 2, extents.y + extents.height // 2


def has_state(element, state) -> bool:
    return element.getState().contains(state)


def focusable_in(window) -> list:
    return [element for element in tree(window) if has_state(element, pyatspi.STATE_FOCUSABLE) and is_showing(element)]


def focused_name(window, other_than: list) -> str:
    """The name of the control with the focus; empty while none has it, or still the one before."""
    names = [element.name for element in tree(window) if has_state(element, pyatspi.STATE_FOCUSED)]
    return names[0] if names and names != other_than else ""
