"""What a screen reader can learn of the program: its windows, their controls, the focus; and keys to move in them."""

import subprocess
import time

import gi

gi.require_version("Atspi", "2.0")
import pyatspi  # noqa: E402
from gi.repository import GLib  # noqa: E402

# Nothing of a list is a control of its own; Tab passes it as one.
INSIDE = {pyatspi.ROLE_LIST_ITEM, pyatspi.ROLE_TABLE_CELL, pyatspi.ROLE_MENU_ITEM, pyatspi.ROLE_MENU,
          pyatspi.ROLE_CHECK_MENU_ITEM, pyatspi.ROLE_TREE_ITEM}
# What only holds other things, or nothing.
FRAMES = {pyatspi.ROLE_FILLER, pyatspi.ROLE_PANEL, pyatspi.ROLE_SCROLL_PANE, pyatspi.ROLE_VIEWPORT,
          pyatspi.ROLE_SCROLL_BAR, pyatspi.ROLE_SEPARATOR, pyatspi.ROLE_MENU_BAR, pyatspi.ROLE_GROUPING,
          pyatspi.ROLE_LAYERED_PANE}
LEAVES = {pyatspi.ROLE_COMBO_BOX, pyatspi.ROLE_LIST, pyatspi.ROLE_TEXT, pyatspi.ROLE_SPIN_BUTTON}
PATIENCE = 15


def wait(condition, what):
    end = time.monotonic() + PATIENCE
    while time.monotonic() < end:
        try:
            found = condition()
        except Exception:  # the bus says so in many ways when something closes under way
            found = None
        if found:
            return found
        time.sleep(0.03)
    raise AssertionError(f"waited in vain for {what}")


class FocusEvents:
    """What the program tells of the focus, as a screen reader hears it."""

    def __init__(self):
        self.heard = []
        pyatspi.Registry.registerEventListener(self._hear, "object:state-changed:focused")

    def _hear(self, event):
        if not event.detail1:
            return
        try:
            self.heard.append((event.source.getRole(), event.source.name))
        except GLib.GError:
            pass  # it is gone by the time that its event is read

    def last(self):
        while GLib.MainContext.default().iteration(False):
            pass
        return self.heard[-1] if self.heard else None

    def forget(self):
        self.last()
        self.heard.clear()


def press(*keys):
    for key in keys:
        subprocess.run(["xdotool", "key", "--clearmodifiers", key], check=True)


def type_text(text):
    subprocess.run(["xdotool", "type", "--clearmodifiers", text], check=True)


def has(node, state):
    return node.getState().contains(state)


def children(node):
    return [child for child in (node[i] for i in range(node.childCount)) if child is not None]


def application():
    desktop = pyatspi.Registry.getDesktop(0)
    return next((app for app in children(desktop) if app.name == "talnik"), None)


def windows():
    return [window for window in children(application()) if has(window, pyatspi.STATE_SHOWING)]


def active():
    """The window that the keys go to."""
    return next((window for window in windows() if has(window, pyatspi.STATE_ACTIVE)), None)


def below(node, deep=False):
    """Everything that is shown below a node, in the order of the tree; without the lines of lists unless `deep`."""
    for child in children(node):
        if not has(child, pyatspi.STATE_SHOWING) and not deep:
            continue
        yield child
        if deep or child.getRole() not in LEAVES | INSIDE:
            yield from below(child, deep)


def describe(node):
    return f"{node.getRoleName()} \"{node.name}\""


def controls(window):
    """What the keyboard is to reach."""
    return [node for node in below(window)
            if has(node, pyatspi.STATE_FOCUSABLE) and has(node, pyatspi.STATE_ENABLED)
            and node.getRole() not in INSIDE | {pyatspi.ROLE_MENU_BAR}]


def focused(window):
    return next((node for node in controls(window) if has(node, pyatspi.STATE_FOCUSED)), None)


def relations(node):
    return {relation.getRelationType() for relation in node.getRelationSet()}


def menu_bar(window):
    return next((node for node in below(window) if node.getRole() == pyatspi.ROLE_MENU_BAR), None)


def menu_items(window):
    """Captions of all commands of the window's menus, without their keys."""
    bar = menu_bar(window)
    if bar is None:
        return []
    return [node.name.strip() for node in below(bar, deep=True) if node.getRole() in INSIDE]


def choose(window, *path):
    """Chooses a command of the menu by the arrow keys."""
    node = menu_bar(window)
    press("F10")
    for depth, caption in enumerate(path):
        items = [item for item in children(node) if item.getRole() in INSIDE and item.name.strip()]
        at = next(i for i, item in enumerate(items) if item.name.strip().startswith(caption))
        press(*(["Home"] + ["Right" if depth == 0 else "Down"] * at))
        press("Down" if depth == 0 else "Return")
        node = items[at][0] if items[at].childCount == 1 and items[at][0].getRole() not in INSIDE else items[at]
