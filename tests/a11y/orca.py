"""orca.py PROGRAM LOG GOLDEN [--record]   The round that the golden file is named after, by keys, and behind each key
what Orca says, read from its log. Compared with the golden file line by line, or written to it."""

import difflib
import re
import subprocess
import sys
import time
from datetime import datetime, timedelta
from pathlib import Path

TODAY = datetime.now()
# How long Orca may take to say what is expected, and how long it must be still before the next key.
PATIENCE = 20
UNTIL_ALARM = 90
STILL = 0.8
STILL_WHEN_RECORDING = 1.2
KEY = "  ["


def soon():
    """Time enough to save the task before its alarm rings."""
    return (datetime.now() + timedelta(seconds=40)).strftime("'%-d.%-m.%Y %-H:%M:%S")


NEW_TASK = ["F10", "Right", "Right", "Right", "Right", "Down", "Return", "'2015", "Return"]
SAVE = ["F10", "Down", "Up", "Up", "Return"]
RINGS = "the alarm rings"
# Keys of xdotool; what begins with an apostrophe is typed.
ROUNDS = {
    "month": [
        ("the program starts", []),
        ("to another day", ["F10", "Right", "Right", "Right", "Down", "Return", "ctrl+a", "'12", "Tab", "'5", "Tab",
                            "'2038", "Return"]),
        ("through the month", ["Down", "Up", "Next", "Prior", "Right", "Left", "Home", "Up", "Down", "space"]),
    ],
    "task": [
        ("the program starts", []),
        ("a task of tonight", NEW_TASK + ["'Lék"]),
        ("the fields of the editor", ["Tab", "Tab", "Tab", "Down", "Up", "Tab", "Tab", "Tab", "Tab"]),
        ("the repeat", ["F10", "Right", "Down", "Down", "Down", "Down", "Return", "Down", "Tab", "Down", "Up", "Tab",
                        "Tab", "Escape"]),
        ("save", SAVE),
        ("another one at the same time", NEW_TASK + ["Escape", "Escape"]),
    ],
    "alarm": [
        ("the program starts", []),
        ("a task in a moment", NEW_TASK + ["'Lék", "Tab", soon, "shift+Tab"] + SAVE),
        ("the alarm", [RINGS, "Return", "Escape"]),
    ],
    "settings": [
        ("the program starts", []),
        ("the settings", ["F10", "Down", "Down", "Down", "Down", "Down", "Return", "Tab", "Down", "Tab", "ctrl+Tab",
                          "Tab", "Tab", "Escape"]),
        ("the countdown", ["F10", "Right", "Right", "Down", "Down", "Return", "Tab", "Tab", "Escape"]),
    ],
}




class Reader:
    """What Orca has said so far."""

    def __init__(self, log):
        self.log = Path(log)
        self.passed = 0

    def lines(self):
        text = self.log.read_text(errors="replace")
        return re.findall(r"SPEECH OUTPUT: '(.*)'(?: \w|\{|$)", text, re.MULTILINE)

    def new(self):
        return self.lines()[self.passed:]

    def take(self):
        said = self.new()
        self.passed += len(said)
        return said

    def wait_until_heard(self):
        end = time.monotonic() + UNTIL_ALARM
        while not self.new() and time.monotonic() < end:
            time.sleep(0.2)

    def wait_until_still(self, expected, still):
        end = time.monotonic() + PATIENCE
        since = time.monotonic()
        size = -1
        while time.monotonic() < end:
            time.sleep(0.1)
            now = self.log.stat().st_size
            if now != size:
                size, since = now, time.monotonic()
            elif time.monotonic() - since > still and (expected is None or marked(self.new()) == expected):
                return


DAYS = "pondělí úterý středa čtvrtek pátek sobota neděle".split()
MONTHS = "leden únor březen duben květen červen červenec srpen září říjen listopad prosinec".split()


def marked(lines):
    """What depends on the day and the time of the run becomes a mark."""
    for old, new in [(f"{TODAY.day}. {DAYS[TODAY.weekday()]}", "DNES"), (f"{MONTHS[TODAY.month - 1]} {TODAY.year}", "MĚSÍC"),
                     (TODAY.strftime("%-d.%-m.%Y"), "DATUM")]:
        lines = [line.replace(old, new) for line in lines]
    return [re.sub(r"\b1[123]:\d\d(:\d\d)?\b", "ČAS", line) for line in lines]


def press(key):
    if key == RINGS:
        return
    if key.startswith("'"):
        subprocess.run(["xdotool", "type", "--clearmodifiers", "--delay", "80", key[1:]], check=True)
    else:
        subprocess.run(["xdotool", "key", "--clearmodifiers", key], check=True)


def expectations(golden):
    """The lines behind each heading and each key of the golden file, in order."""
    parts = []
    for line in golden:
        if line.startswith("— ") or line.startswith(KEY):
            parts.append([])
        else:
            parts[-1].append(line[4:])
    return iter(parts)


def play(program, steps, reader, golden, recording):
    expected = expectations(golden)
    running = subprocess.Popen([program])

    def listen(heading):
        parts = None if recording else next(expected, None)
        reader.wait_until_still(parts, STILL_WHEN_RECORDING if recording else STILL)
        heard = [heading] + ["    " + line for line in marked(reader.take())]
        print("\n".join(heard), flush=True)
        return heard

    said = []
    try:
        for step, keys in steps:
            said += listen("— " + step)
            for key in keys:
                key = key() if callable(key) else key
                press(key)
                if key == RINGS:
                    reader.wait_until_heard()
                said += listen(f"{KEY}{marked([key])[0]}]")
    finally:
        running.terminate()
        running.wait()
    return said


def main():
    program, log, golden = sys.argv[1], Path(sys.argv[2]), Path(sys.argv[3])
    recording = "--record" in sys.argv
    wanted = [] if recording else golden.read_text().splitlines()
    said = play(program, ROUNDS[golden.stem], Reader(log), wanted, recording)
    if recording:
        golden.write_text("\n".join(said) + "\n")
    differences = [] if recording else list(difflib.unified_diff(wanted, said, "expected", "said", lineterm=""))
    print("\n".join(differences))
    return 1 if differences else 0


if __name__ == "__main__":
    sys.exit(main())
