"""orca.py PROGRAM LOGS SPEECH GOLDEN [--record] [ROUND...]   Rounds by keys through the program, and behind each key what
the screen reader Orca says, read from its log below LOGS, and what the program's own voice says, read from the log SPEECH
of the daemon. Compared line by line with the golden files in the folder GOLDEN, or written to them."""

import difflib
import os
import re
import subprocess
import sys
import time
from datetime import datetime, timedelta
from pathlib import Path

TODAY = datetime.now()
# How long what is expected may take, and a start of Orca.
PATIENCE = 20
STARTING = 60
# After the last word so many looks, a tenth of a second apart, at a desk that rests.
STILL = 2
STILL_WHEN_RECORDING = 12
KEY = "  ["
OWN = "vlastní hlas: "


def soon():
    """Time enough to save the task before its alarm rings."""
    return (datetime.now() + timedelta(seconds=25)).strftime("'%-d.%-m.%Y %-H:%M:%S")


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


class Voices:
    """What Orca and the program's own voice have said."""

    def __init__(self, logs, speech):
        self.logs = Path(logs)
        self.speech = Path(speech)
        self.orca = None
        self.starts = 0
        self.passed = [0, 0]

    def start_orca(self):
        self.starts += 1
        log = self.logs / f"orca{self.starts}.log"
        with open(self.logs / "orca.out", "a") as out:
            self.orca = subprocess.Popen(["orca", "--debug", f"--debug-file={log}"], stdout=out, stderr=out)
        end = time.monotonic() + STARTING
        while not (log.exists() and "EVENT MANAGER: Activated" in log.read_text(errors="replace")):
            if time.monotonic() > end:
                raise AssertionError("Orca does not start")
            time.sleep(0.1)

    def end_orca(self):
        self.orca.terminate()
        self.orca.wait()

    def of_orca(self):
        text = "".join((self.logs / f"orca{i + 1}.log").read_text(errors="replace") for i in range(self.starts))
        return re.findall(r"SPEECH OUTPUT: '(.*)'(?: \w|\{|$)", text, re.MULTILINE)

    def of_program(self):
        """What its connections to the daemon, numbers in the log, have sent to be spoken."""
        said = []
        ours = set()
        texts = {}
        for number, line in re.findall(r"speechd: +(\d+):(?:DATA|REPLY):\|(.*)", self.speech.read_text(errors="replace")):
            if line.startswith("SET SELF CLIENT_NAME"):
                (ours.add if ":talnik:" in line else ours.discard)(number)
            elif number not in ours:
                continue
            elif line.startswith("230"):
                texts[number] = []
            elif line == "." and number in texts:
                said.append(OWN + " ".join(texts.pop(number)))
            elif number in texts:
                texts[number].append(line)
            elif line.startswith(("CHAR ", "KEY ")):
                said.append(OWN + line.split(" ", 1)[1])
        return said

    def new(self):
        orca, program = self.passed
        return self.of_orca()[orca:] + self.of_program()[program:]

    def take(self):
        new = self.new()
        self.passed = [len(self.of_orca()), len(self.of_program())]
        return new


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
    def __init__(self, voices, desk, golden, recording):
        self.voices = voices
        self.desk = desk
        self.wanted = [] if recording else golden
        self.expected = expectations(self.wanted)
        self.recording = recording
        self.said = []

    def press(self, key):
        if key in {ORCA_ENDS, ORCA_STARTS}:
            (self.voices.end_orca if key == ORCA_ENDS else self.voices.start_orca)()
        elif key == RINGS:
            self.wait(lambda: self.voices.new(), 2 * PATIENCE)
        elif key.startswith("'"):
            subprocess.run(["xdotool", "type", "--clearmodifiers", "--delay", "80", key[1:]], check=True)
        else:
            subprocess.run(["xdotool", "key", "--clearmodifiers", key], check=True)

    @staticmethod
    def wait(condition, patience):
        end = time.monotonic() + patience
        while not condition() and time.monotonic() < end:
            time.sleep(0.1)

    def wait_until_still(self, expected):
        rested = 0
        heard = []

        def is_still():
            nonlocal rested, heard
            before, heard = heard, self.voices.new()
            rested = 0 if heard != before else rested + self.desk.has_rested()
            if self.recording or self.has_strayed:
                return rested >= STILL_WHEN_RECORDING
            return rested >= STILL and marked(heard) == expected

        self.wait(is_still, PATIENCE)

    @property
    def has_strayed(self):
        """Where something else has been said there is no use in waiting for what is expected further on."""
        return self.said != self.wanted[:len(self.said)]

    def listen(self, heading):
        self.wait_until_still(next(self.expected, None))
        heard = [heading] + ["    " + line for line in marked(self.voices.take())]
        print("\n".join(heard), flush=True)
        self.said += heard

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
    voices = Voices(logs, speech)
    voices.start_orca()
    desk = Desk()
    failed = 0
    for name in sys.argv[5 + recording:] or ROUNDS:
        file = Path(golden) / f"{name}.txt"
        wanted = file.read_text().splitlines() if file.exists() else []
        print(f"\n{name}")
        played = Round(voices, desk, wanted, recording)
        played.play(program, ROUNDS[name], own_folders(name))
        voices.take()
        if recording:
            file.write_text("\n".join(played.said) + "\n")
        elif played.said != wanted:
            failed = 1
            print("\n".join(difflib.unified_diff(wanted, played.said, "expected", "said", lineterm="")))
    return failed


if __name__ == "__main__":
    sys.exit(main())
