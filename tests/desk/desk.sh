# What the tests with the whole program on a virtual desk share. Sourced behind tools/virtual_desk.sh.

# needs COMMAND...   A machine without one of these passes the test over.
needs() {
  local command
  for command in Xvfb openbox xdotool xprop pulseaudio speech-dispatcher "$@"; do
    command -v "$command" >/dev/null || { echo "Není nainstalován program $command."; exit 77; }
  done
}

# From here on it is noon, so that the day does not end while a test is under way.
export TZ=DESK$((10#$(date -u +%H) - 12))

# start [ARGUMENT...]   The program; what it says goes to $DESK/said, a line each.
start() {
  QT_LOGGING_RULES="talnik.speech=true" QT_MESSAGE_PATTERN="%{message}" "$PROGRAM" "$@" >>"$DESK/said" 2>&1 &
  app=$!
}

# step WORDS   From here on `hears` looks only at what comes.
step() {
  echo "— $*"
  touch "$DESK/said"
  mark=$(wc -l <"$DESK/said")
}
hears() { desk_wait 10 said "$1" || { tail -n +$((mark + 1)) "$DESK/said"; return 1; }; }
said() { tail -n +$((mark + 1)) "$DESK/said" | grep -E -- "$1" >/dev/null; }

press() { local key; for key in "$@"; do xdotool key --clearmodifiers "$key"; done; }

# active TITLE   Waits until a window whose title matches is in front.
active() { desk_wait 10 in_front "$1" || { xdotool getactivewindow getwindowname; return 1; }; }
in_front() { xdotool getactivewindow getwindowname 2>/dev/null | grep -E -- "$1" >/dev/null; }
