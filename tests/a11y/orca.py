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


NEW_TASK = ["F10", "Right", "Right", "Right", "Right", "Down", "Return", "'2015", "Return"]
SAVE = ["F10", "Down", "Up", "Up", "Return"]
RINGS = "the alarm rings"
ORCA_ENDS = "Orca ends"
ORCA_STARTS = "Orca starts"
# Keys of xdotool; what begins with an apostrophe is typed.
ROUNDS = {
    "month": [
        ("the program starts", []),
        ("to another day", ["F10", "Right", "Right", "Right", "Down", "Return", "ctrl+a", "'12", "Tab", "'5", "Tab",
                            "'2038", "Return"]),
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
        ("the program starts", ["Home"]),
        ("the reader ends", [ORCA_ENDS, "Down", "Next"]),
        ("the reader starts", [ORCA_STARTS, "Down", "Next"]),
    ],
}


class Desk:
    """The programs of the desk, but those that sound."""

    SOUNDING = {"pulseaudio", "speech-dispatch", "sd_espeak-ng"}
    BUS = "dbus-daemon"
    LITTLE = 5_000_000  # nanoseconds; the clock of the window ticks

    def __init__(self):
        self.root = os.getppid()
        self.before = {}

    def has_rested(self):
        """Nothing went over a bus and nobody worked since the last look, nor waits for a processor."""
        now = dict(self.running())
        rested = all(state != "R" and ran - before <= (0 if name == self.BUS else self.LITTLE)
                     for (process, (name, state, ran)) in now.items()
                     for before in [self.before.get(process, (0, 0, 0))[2]])
        self.before = now
        return rested

    def running(self):
        children = {}
        for stat in Path("/proc").glob("[0-9]*/stat"):
            try:
                name, rest = re.fullmatch(r"\d+ \((.*)\) (.*)\n", stat.read_text()).groups()
                children.setdefault(int(rest.split()[1]), []).append((int(stat.parent.name), name, rest[0]))
            except OSError:
                continue  # it has ended
        left = [self.root]
        while left:
            for process, name, state in children.get(left.pop(), []):
                left.append(process)
                if name not in self.SOUNDING and process != os.getpid():
                    yield process, (name, state, self.time_of(process))

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

    def __init__(self, folder):
        self.folder = Path(folder)
        self.starts = 0

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
        """What it has said since it was asked last, without its echo of keys."""
        self.look()
        lines, self.unread = self.unread, []
        said = [re.search(r"SPEECH OUTPUT: '(.*)'( ?)(?:\{|$)", line) for line in lines]
        return [found[1] for found in said if found and not (found[1].endswith(" ") and found[2])]


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

        def is_still():
            nonlocal rested
            rested = 0 if self.hear() else rested + self.desk.has_rested()
            if self.recording or self.has_strayed:
                return rested >= STILL_WHEN_RECORDING
            return rested >= STILL and self.heard == expected

        wait(is_still, PATIENCE)

    @property
    def has_strayed(self):
        """Where something else has been said there is no use in waiting for what is expected further on."""
        return self.said != self.wanted[:len(self.said)]

    def listen(self, heading):
        self.wait_until_still(next(self.expected, None))
        part = [heading] + ["    " + line for line in self.heard]
        self.heard = []
        print("\n".join(part), flush=True)
        self.said += part

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
    orca.start()
    try:
        names = sys.argv[5 + recording:] or ROUNDS
        return sum(not is_as_golden(name, program, orca, own, Path(golden) / f"{name}.txt", recording) for name in names)
    finally:
        orca.end()


def is_as_golden(name, program, orca, own, golden, recording):
    print(f"\n{name}")
    wanted = golden.read_text().splitlines() if golden.exists() else []
    played = Round(orca, own, Desk(), wanted, recording)
    played.play(program, ROUNDS[name], own_folders(name))
    if recording:
        golden.write_text("\n".join(played.said) + "\n")
        return True
    print("\n".join(difflib.unified_diff(wanted, played.said, "expected", "said", lineterm="")))
    return played.said == wanted


if __name__ == "__main__":
    sys.exit(main())
