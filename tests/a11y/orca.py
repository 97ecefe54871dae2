"""orca.py PROGRAM LOGS SPEECH GOLDEN [--record] [ROUND...]   Rounds by keys through the program, and behind each key what
the screen reader Orca says, read from its log below LOGS, and what the program's own voice says, read from the log SPEECH
of the daemon. Compared line by line with the golden files in the folder GOLDEN, or written to them."""

import difflib
import os
import pty
import re
import subprocess
import sys
import threading
import time
import tty
from datetime import datetime, timedelta
from pathlib import Path

TODAY = datetime.now()
# How long what is expected may take, and a start of Orca.
PATIENCE = 20
STARTING = 60
# After the last word so many looks, a tenth of a second apart, at a desk that rests.
STILL = 2
STILL_WHEN_RECORDING = 6
# Orca goes by the clock in places, and the toolkit waits for it no longer than a moment; on a machine with much other work
# it may say something else, but not each time.
ATTEMPTS = 3
KEY = "  ["
OWN = "vlastní hlas: "


def soon():
    """Time enough to save the task before its alarm rings."""
    return (datetime.now() + timedelta(seconds=25)).strftime("'%-d.%-m.%Y %-H:%M:%S")


def wait(condition, patience):
    end = time.monotonic() + patience
    while time.monotonic() < end:
        if condition():
            return True
        time.sleep(0.1)
    return False


NEW_TASK = ["F10", "Right", "Right", "Right", "Right", "Down", "Return", "'20", "'1", "'5", "Return"]
TO_ANOTHER_DAY = ["F10", "Right", "Right", "Right", "Down", "Return", "'12", "Tab", "'5", "Tab", "'2038", "Return"]
SAVE = ["F10", "Down", "Up", "Up", "Return"]
RINGS = "the alarm rings"
ORCA_ENDS = "Orca ends"
ORCA_STARTS = "Orca starts"
# Keys of xdotool; what begins with an apostrophe is typed.
ROUNDS = {
    "month": [
        ("the program starts", []),
        ("to another day", TO_ANOTHER_DAY),
        ("through the month", ["Down", "Up", "Next", "Prior", "Right", "Left", "Home", "Up", "Down", "space", "d"]),
    ],
    "editor": [
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
    "voices": [
        ("the program starts", []),
        ("to another day", TO_ANOTHER_DAY),
        ("the reader ends", [ORCA_ENDS, "Down", "Up"]),
        ("the reader starts", [ORCA_STARTS, "Down", "Up"]),
    ],
}


class Desk:
    """The programs of the desk, but those that sound."""

    SOUNDING = {"pulseaudio", "speech-dispatch", "sd_espeak-ng"}
    BUS = "dbus-daemon"
    LITTLE = 5_000_000  # nanoseconds; the clock of the window ticks
    STAT = r"\d+ \((.*)\) (.) (\d+)"

    def __init__(self):
        self.root = os.getppid()
        self.names = {}
        self.before = {}

    def find_programs(self):
        children = {}
        for stat in Path("/proc").glob("[0-9]*/stat"):
            try:
                name, _, parent = re.match(self.STAT, stat.read_text()).groups()
                children.setdefault(int(parent), {})[int(stat.parent.name)] = name
            except OSError:
                continue  # it has ended
        self.names = {}
        left = [self.root]
        while left:
            found = children.get(left.pop(), {})
            left += found
            self.names.update({process: name for process, name in found.items()
                               if name not in self.SOUNDING and process != os.getpid()})

    def has_rested(self):
        """Nothing went over a bus and nobody worked since the last look, nor waits for a processor."""
        now = {process: self.time_of(process) for process in self.names}
        rested = all(ran - self.before.get(process, 0) <= (0 if self.names[process] == self.BUS else self.LITTLE)
                     for process, ran in now.items()) and not any(self.waits(process) for process in now)
        self.before = now
        return rested

    def waits(self, process):
        try:
            return re.match(self.STAT, Path(f"/proc/{process}/stat").read_text())[2] == "R"
        except OSError:
            return False

    @staticmethod
    def time_of(process):
        total = 0
        for thread in Path(f"/proc/{process}/task").glob("*/schedstat"):
            try:
                total += int(thread.read_text().split()[0])
            except OSError:
                continue
        return total


class Log:
    """A log that is being written; each line is read once."""

    def __init__(self, path):
        self.path = Path(path)
        self.read = 0

    def new_lines(self):
        if not self.path.exists():
            return []
        with open(self.path, "rb") as log:
            log.seek(self.read)
            text = log.read()
        whole = text[:text.rfind(b"\n") + 1]
        self.read += len(whole)
        return whole.decode(errors="replace").splitlines()


class Orca:
    """The reader with its log, which it keeps back in blocks where it is a file; so it is a terminal, also kept as a file."""

    STARTED = "EVENT MANAGER: Activated"
    SAYS = "SPEECH OUTPUT: '"
    # Where a window closes more than a second after the key, it clings to a control of it that is no more, and fails to
    # say the title of the next window.
    LAGS = "Not clearing state. Event is not user triggered"
    TITLES = (" dialog.", " frame.")

    def __init__(self, folder):
        self.folder = Path(folder)
        self.starts = 0
        self.lags = False

    def start(self):
        self.starts += 1
        copy = self.folder / f"orca{self.starts}.log"
        reading, writing = pty.openpty()
        tty.setraw(writing)
        threading.Thread(target=self.copy, args=(reading, copy), daemon=True).start()
        self.log = Log(copy)
        with open(self.folder / "orca.out", "a") as out:
            self.running = subprocess.Popen(["orca", "--debug", f"--debug-file={os.ttyname(writing)}"], stdout=out, stderr=out)
        self.unread = []
        if not wait(lambda: any(self.STARTED in line for line in self.look()), STARTING):
            raise AssertionError("Orca does not start")

    def start_quietly(self):
        self.start()
        wait(self.said, STARTING)

    @staticmethod
    def copy(reading, path):
        with open(path, "wb", buffering=0) as log:
            while True:
                log.write(os.read(reading, 65536))

    def end(self):
        self.running.terminate()
        try:
            self.running.wait(PATIENCE)
        except subprocess.TimeoutExpired:
            self.running.kill()

    def look(self):
        new = self.log.new_lines()
        self.unread += new
        return new

    def said(self):
        """What it has said since it was asked last, without its echo of keys. It may say several lines at once."""
        self.look()
        self.lags = self.lags or any(self.LAGS in line for line in self.unread)
        text = "\n".join(self.unread)
        said = list(re.finditer(r"SPEECH OUTPUT: '(.*?)'( ?)\{['}]", text, re.DOTALL))
        rest = text[said[-1].end():] if said else text
        self.unread = [rest[rest.index(self.SAYS):]] if self.SAYS in rest else []
        return [" ".join(found[1].split()) for found in said if not (found[1].endswith(" ") and found[2])]


class OwnVoice:
    """What the program's connections to the daemon, numbers in its log, have sent to be spoken."""

    def __init__(self, log):
        self.log = Log(log)
        self.ours = set()
        self.texts = {}

    def said(self):
        lines = [re.search(r"speechd: +(\d+):(?:DATA|REPLY):\|(.*)", line) for line in self.log.new_lines()]
        return [OWN + text for line in lines if line for text in self.take(*line.groups())]

    def take(self, number, line):
        if line.startswith("SET SELF CLIENT_NAME"):
            (self.ours.add if ":talnik:" in line else self.ours.discard)(number)
        elif number not in self.ours:
            return
        elif line.startswith("230"):
            self.texts[number] = []
        elif line == "." and number in self.texts:
            yield " ".join(self.texts.pop(number))
        elif number in self.texts:
            self.texts[number].append(line)
        elif line.startswith(("CHAR ", "KEY ")):
            yield line.split(" ", 1)[1]


DAYS = "pondělí úterý středa čtvrtek pátek sobota neděle".split()
MONTHS = "leden únor březen duben květen červen červenec srpen září říjen listopad prosinec".split()


def marked(lines):
    """What depends on the day and the time of the run becomes a mark."""
    for old, new in [(f"{TODAY.day}. {DAYS[TODAY.weekday()]}", "DNES"), (f"{MONTHS[TODAY.month - 1]} {TODAY.year}", "MĚSÍC"),
                     (TODAY.strftime("%-d.%-m.%Y"), "DATUM")]:
        lines = [line.replace(old, new) for line in lines]
    lines = [re.sub(r"\b1[123]:\d\d(:\d\d)?\b", "ČAS", line) for line in lines]
    return [re.sub(r"\b(28|29|30|31) položek", "DNŮ položek", line) for line in lines]


def expectations(golden):
    """The lines behind each heading and each key of the golden file, in order."""
    parts = []
    for line in golden:
        if line.startswith("— ") or line.startswith(KEY):
            parts.append([])
        else:
            parts[-1].append(line[4:])
    return iter(parts)


class Strayed(Exception):
    """Something else is said than expected; there is no use in going on."""


class Round:
    def __init__(self, orca, own, desk, golden, recording):
        self.orca = orca
        self.own = own
        self.desk = desk
        self.wanted = [] if recording else golden
        self.expected = expectations(self.wanted)
        self.recording = recording
        self.heard = []
        self.said = []

    def press(self, key):
        if key in {ORCA_ENDS, ORCA_STARTS}:
            (self.orca.end if key == ORCA_ENDS else self.orca.start)()
        elif key == RINGS:
            wait(self.hear, 2 * PATIENCE)
        elif key.startswith("'"):
            subprocess.run(["xdotool", "type", "--clearmodifiers", "--delay", "80", key[1:]], check=True)
        else:
            subprocess.run(["xdotool", "key", "--clearmodifiers", key], check=True)

    def hear(self):
        new = marked(self.orca.said() + self.own.said())
        self.heard += new
        return new

    def wait_until_still(self, expected):
        rested = 0
        self.desk.find_programs()

        def is_still():
            nonlocal rested
            rested = 0 if self.hear() else rested + self.desk.has_rested()
            if self.recording:
                return rested >= STILL_WHEN_RECORDING
            return rested >= STILL and self.agrees(expected)

        wait(is_still, PATIENCE)

    def agrees(self, expected):
        def but_for_titles(lines):
            return [line for line in lines if not line.endswith(Orca.TITLES)]

        return self.heard == expected or (self.orca.lags and but_for_titles(self.heard) == but_for_titles(expected))

    def listen(self, heading):
        expected = next(self.expected, [])
        self.wait_until_still(expected)
        if self.orca.lags and self.recording:
            print("A title may be missing here: record again where there is less other work.")
        agrees = self.recording or self.agrees(expected)
        heard = self.heard if self.recording or not agrees else expected
        part = [heading] + ["    " + line for line in heard]
        print("\n".join(part), flush=True)
        self.said += part
        self.heard = []
        self.orca.lags = False
        if not agrees:
            raise Strayed("\n".join(difflib.unified_diff(expected, heard, "expected", "said", lineterm="")))

    def play(self, program, steps, environment):
        running = subprocess.Popen([program], env=environment)
        try:
            for step, keys in steps:
                self.listen("— " + step)
                for key in keys:
                    key = key() if callable(key) else key
                    self.press(key)
                    self.listen(f"{KEY}{marked([key])[0]}]")
        finally:
            running.terminate()
            running.wait()


def own_folders(name):
    """Each round begins with nothing stored."""
    folders = {kind: str(Path(os.environ[kind]) / name) for kind in ["XDG_DATA_HOME", "XDG_CONFIG_HOME"]}
    for folder in folders.values():
        Path(folder).mkdir(parents=True)
    return {**os.environ, **folders}


def main():
    program, logs, speech, golden = sys.argv[1:5]
    recording = "--record" in sys.argv
    orca = Orca(logs)
    own = OwnVoice(speech)
    orca.start_quietly()
    try:
        names = sys.argv[5 + recording:] or ROUNDS
        return sum(not is_as_golden(name, program, orca, own, Path(golden) / f"{name}.txt", recording) for name in names)
    finally:
        orca.end()


def is_as_golden(name, program, orca, own, golden, recording):
    wanted = golden.read_text().splitlines() if golden.exists() else []
    for attempt in range(1 if recording else ATTEMPTS):
        print(f"\n{name}")
        played = Round(orca, own, Desk(), wanted, recording)
        try:
            played.play(program, ROUNDS[name], own_folders(f"{name}{attempt}"))
        except Strayed as difference:
            print(difference)
            if orca.running.poll() is not None:
                orca.start_quietly()
            continue
        if recording:
            golden.write_text("\n".join(played.said) + "\n")
        return recording or played.said == wanted
    return False


if __name__ == "__main__":
    sys.exit(main())
