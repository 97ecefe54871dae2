"""walk.py PROGRAM [PICTURES]   Opens every window of the program by keys, asks the accessibility bus what is in it, and
goes round it with Tab. Prints what is wrong and ends with 1; the checks are the functions of CHECKS. Puts a picture of
each window into the folder PICTURES."""

import os
import subprocess
import sys
from datetime import datetime, timedelta

import pyatspi

import tree
from tree import choose, describe, has, press, type_text, wait

# Where a window has menus: which of their commands does what a button does. A picker belongs to its field, which opens
# it with Enter.
PICKER = None
IN_MENU = {
    "Úkoly (": "Vybraný den", "předchozí měsíc": "Měsíc  předchozí", "další měsíc": "Měsíc další",
    "Nastavit opakování": "Opakování", "Upravit opakování": "Opakování", "Nahrávání": "Nahrát", "Uložit": "Uložit",
    "Storno": "Zavřít Plán", "Vybrat datum a čas": PICKER,
}
# No stop for Tab: another key leads there.
OTHER_WAY = {("alarm", "Událost"): "Return"}
BUTTONS = {pyatspi.ROLE_PUSH_BUTTON, pyatspi.ROLE_TOGGLE_BUTTON}


def every_control_has_name_and_role(window, _what):
    if not window.name:
        yield "the window has no name"
    for node in tree.below(window):
        if node.getRole() in {pyatspi.ROLE_INVALID, pyatspi.ROLE_UNKNOWN}:
            yield f"{describe(node)} has no role"
        elif not node.name.strip() and node.getRole() not in tree.FRAMES:
            yield f"{node.getRoleName()} without a name"


def every_label_has_a_buddy(window, _what):
    for node in tree.below(window):
        # A line of a choice looks like a label and is a control.
        if has(node, pyatspi.STATE_FOCUSABLE):
            continue
        if node.getRole() == pyatspi.ROLE_LABEL and pyatspi.RELATION_LABEL_FOR not in tree.relations(node):
            yield f"{describe(node)} belongs to nothing"

    for node in tree.below(window):
        # The name of a combo box is its value; what it is must come from a label.
        if node.getRole() == pyatspi.ROLE_COMBO_BOX and pyatspi.RELATION_LABELLED_BY not in tree.relations(node):
            yield f"{describe(node)} has no label"


def walk_choice(lines):
    """The lines of a choice are one list: Tab moves as Down does, and neither runs round."""
    for key, order in [("Tab", lines), ("shift+Tab", lines[::-1]), ("Down", lines), ("Up", lines[::-1])]:
        for line in order[1:]:
            press(key)
            try:
                wait(lambda line=line: has(line, pyatspi.STATE_FOCUSED), "the next line")
            except AssertionError:
                yield f"{key} does not reach {describe(line)}"


def tab_goes_round(window, what):
    """The options of a group are one stop, whichever is chosen."""
    others = {name for place, name in OTHER_WAY if what.startswith(place)}
    if tree.focused(window).name in others:
        press("Tab")
        wait(lambda: tree.focused(window).name not in others, "Tab to leave what is no stop")
    controls = [node for node in tree.controls(window) if node.name not in others]
    if all(node.getRole() == pyatspi.ROLE_LABEL for node in controls):
        yield from walk_choice(controls)
        return

    def stop(node):
        """What stands for a control among the stops of Tab."""
        return node.parent if node.getRole() == pyatspi.ROLE_RADIO_BUTTON else node

    def go(key):
        """The controls that the key reaches until it is back at the first."""
        first = now = wait(lambda: tree.focused(window), "the focus")
        passed = []
        while len(passed) <= len(controls):
            press(key)
            before = now
            try:
                now = wait(lambda: next((c for c in controls if c != before and has(c, pyatspi.STATE_FOCUSED)), None),
                           f"{key} to leave {describe(before)}")
            except AssertionError:
                return passed, f"{key} does not leave {describe(before)}"
            passed.append(now)
            if now == first:
                return passed, None
        return passed, f"{key} does not come back to {describe(first)}"

    forward, trap = go("Tab")
    if not trap:
        back, trap = go("shift+Tab")
    if trap:
        yield trap
        return
    if back[:-1] != forward[-2::-1]:
        yield f"Shift+Tab goes another way: {[n.name for n in back]} after {[n.name for n in forward]}"
    reached = [stop(node) for node in forward]
    for node in controls:
        if stop(node) not in reached:
            yield f"Tab does not reach {describe(node)}"


def every_action_is_in_a_menu(window, _what):
    if tree.menu_bar(window) is None:
        return
    items = tree.menu_items(window)
    for node in tree.below(window):
        if node.getRole() not in BUTTONS:
            continue
        known = [item for button, item in IN_MENU.items() if node.name.startswith(button)]
        if not known or known[0] is not PICKER and not any(item.startswith(known[0]) for item in items):
            yield f"no menu holds {describe(node)}"


CHECKS = [every_control_has_name_and_role, every_label_has_a_buddy, every_action_is_in_a_menu, tab_goes_round]


class Walk:
    def __init__(self):
        self.faults = []
        self.seen = 0
        self.window = wait(tree.active, "the first window")
        self.known = [self.window]
        self.focus = tree.FocusEvents()

    def check(self, what):
        wait(lambda: tree.focused(self.window), f"a focus in {what}")
        self.seen += 1
        if len(sys.argv) > 2:
            picture = f"{sys.argv[2]}/{self.seen:02} {what}.png"
            subprocess.run(["import", "-window", "root", picture], check=True)
        for check in CHECKS:
            self.faults += [f"{what}: {fault}" for fault in check(self.window, what)]

    def come_to_new(self, what):
        """The window that has not been there before; between two dialogs the keyboard may pass through their owner."""

        def other():
            window = tree.active()
            return window if window is not None and window not in self.known else None

        self.window = wait(other, f"the window {what}")
        self.known.append(self.window)
        wait(lambda: tree.focused(self.window), f"a focus in {what}")

    def open(self, what, *path, by=None):
        choose(self.window, *path) if path else press(*by)
        self.come_to_new(what)
        self.check(what)

    def push(self, caption):
        """Goes to the button by Tab and presses it."""
        for _ in tree.controls(self.window):
            if tree.focused(self.window).name.startswith(caption):
                break
            before = tree.focused(self.window)
            press("Tab")
            wait(lambda before=before: tree.focused(self.window) not in (None, before), "Tab to move")
        press("space")

    def open_by_button(self, what, caption):
        self.push(caption)
        self.come_to_new(what)
        self.check(what)

    def back_to(self, window, what, *keys):
        press(*keys)
        wait(lambda: tree.active() == window, f"the keyboard back in {what}")
        self.window = window

    def back_to_list(self, window, *keys):
        """Where a list gets the keyboard back, its line is told, not the list alone."""
        self.focus.forget()
        self.back_to(window, "the month list", *keys)
        try:
            wait(lambda: self.focus.last() and self.focus.last()[0] == pyatspi.ROLE_LIST_ITEM, "the line of the list")
        except AssertionError:
            self.faults.append(f"back in the month list: told of {self.focus.heard}, not of a day")


def enter_series(walk, main):
    walk.open("time of a task", "Úkoly", "Nový")
    entry = walk.window
    type_text("2000")
    walk.open_by_button("end of a task", "Koncový")
    walk.back_to(entry, "the time", "Escape")
    walk.push("Nastavit")
    walk.come_to_new("editor")
    editor = walk.window
    type_text("Lekar")
    walk.check("editor of a new task")
    walk.open("repeat", "Úpravy", "Opakování")
    walk.back_to(editor, "the editor", "Return")
    walk.open_by_button("date picker", "Vybrat datum")
    walk.back_to(editor, "the editor", "Escape")
    choose(editor, "Záznam", "Uložit")
    walk.back_to(main, "the month list")


def change_series(walk, main):
    walk.open("editor", "Úkoly", "Vybraný den")
    editor = walk.window
    walk.open("deletion of a series", "Úpravy", "Smaž aktuální")
    walk.back_to(editor, "the editor", "Escape")
    type_text("u")
    walk.open("change of a series", "Záznam", "Uložit")
    walk.back_to(editor, "the editor", "Escape")
    walk.back_to(main, "the month list", "Escape")


def take_laps(walk, main):
    walk.open("stopwatch", "Čas", "Stopky")
    watch = walk.window
    press("F3", "F4", "F4", "F3")
    walk.open("lap times", by=["F4"])
    laps = walk.window
    file = os.environ["DESK"] + "/laps.txt"
    walk.open_by_button("save laps", "Uložit")
    type_text(file)
    walk.back_to(laps, "the laps", "Return")
    press("space")
    walk.come_to_new("save laps")
    picker = walk.window
    type_text(file)
    walk.open("question whether to overwrite", by=["Return"])
    walk.back_to(picker, "the picker", "Escape")
    press("ctrl+a")
    type_text("/proc/laps.txt")
    walk.open("file that cannot be written", by=["Return"])
    walk.back_to(laps, "the laps", "Return")
    walk.back_to(watch, "the stopwatch", "Escape")
    walk.back_to_list(main, "Escape")


def ring_alarm(walk, main):
    choose(main, "Úkoly", "Nový")
    walk.come_to_new("time of a task")
    type_text("2015")
    press("Return")
    walk.come_to_new("editor")
    type_text("Zvoneni")
    press("Tab")
    start = datetime.now() + timedelta(seconds=6)
    type_text(f"{start.day}.{start.month}.{start.year} {start.hour}:{start:%M:%S}")
    press("shift+Tab")
    choose(walk.window, "Záznam", "Uložit")
    walk.back_to(main, "the month list")
    walk.come_to_new("alarm")
    walk.check("alarm")
    press("Return")
    walk.check("alarm, shown")
    alarm = walk.window
    walk.open("delay of an alarm", by=["F9"])
    walk.open_by_button("date of a delay", "Vybrat datum")
    walk.back_to(alarm, "the alarm", "Escape")
    walk.back_to(main, "the month list", "Escape")


# The windows that a command opens, and what their buttons open.
WINDOWS = [
    ("day overview", ["Úkoly", "Denní přehled"], []), ("search", ["Úkoly", "Vyhledat"], []),
    ("question", ["Úkoly", "Smazat úkoly"], []), ("countdown", ["Čas", "Minutky"], []),
    ("time of the system", ["Čas", "Nastavit čas"], []),
    ("hour announcements", ["Čas", "Oznamovat"], [("choice of a sound", "Procházet")]),
    ("go to a day", ["Datum", "Přejít"], []), ("search a name", ["Datum", "Hledej svátek"], []),
    ("date of the system", ["Datum", "Nastavit datum"], []), ("open a file", ["Talník", "Import", "Soubor"], []),
    ("save a file", ["Talník", "Export", "Soubor"], []), ("settings", ["Talník", "Nastavení programu"], []),
    ("settings of the account", ["Talník", "Nastavení účtu"], []), ("message", ["Nápověda", "O programu"], []),
    ("progress", ["Talník", "Synchronizace"], []),
]


def main():
    program = subprocess.Popen([sys.argv[1]])
    try:
        walk = Walk()
        first = walk.window
        walk.check("month list")
        enter_series(walk, first)
        change_series(walk, first)
        take_laps(walk, first)
        for what, path, buttons in WINDOWS:
            walk.open(what, *path)
            window = walk.window
            for inner, caption in buttons:
                walk.open_by_button(inner, caption)
                walk.back_to(window, what, "Escape")
            walk.back_to_list(first, "Escape")
        walk.open("how to close", by=["alt+F4"])
        walk.back_to_list(first, "Escape")
        ring_alarm(walk, first)
    finally:
        program.terminate()
        program.wait()
    print(f"{walk.seen} windows, {len(walk.faults)} faults")
    print("\n".join(walk.faults))
    return 1 if walk.faults else 0


if __name__ == "__main__":
    sys.exit(main())
