# orca.sh PROGRAM SOURCE   What the screen reader Orca would say on a round through the program: month, dialog, editor,
# repeat, settings, alarm. Prints it, dates and times of day replaced by
# marks.
set -euo pipefail
program=$1
here=$(dirname "$(realpath "$0")")
. "$2/tools/virtual_desk.sh"
. "$here/desk.sh"
missing=$(a11y_missing orca)
[ -z "$missing" ] || { echo "přeskočeno, není nainstalováno:" $missing >&2; exit 77; }
a11y_desk 1024x768
mkdir -p "$DESK/speech/modules"
export PULSE_RUNTIME_PATH=$DESK/run
desk_sound
# Messages reach the log only where speech is on, and Orca hangs where speech has nowhere to sound.
desk_speech
export TZ=DEMO$((10#$(date -u +%H) - 12)) TALNIK_VOICE=none
export LANGUAGE=cs
log=$DESK/orca.log

# Each desk has its own: Orca looks for others of the same user, and would end or give way to the one that is in use.
mkdir -p "$DESK/bin"
ln -s /bin/false "$DESK/bin/pgrep"
PATH=$DESK/bin:$PATH orca --debug --debug-file="$log" >"$DESK/orca.out" 2>&1 &
desk_wait 30 sh -c 'grep -qs "EVENT MANAGER: Activated" "$0"' "$log"

spoken() { sed -nE "s/.*SPEECH OUTPUT: '(.*)'\{.*/\1/p" "$log"; }
settled() { # until the log has not grown for a while
  local before=-1 now=0
  while [ $before != "$now" ]; do before=$now; sleep 1.5; now=$(stat -c %s "$log"); done
}
heard=0
step() { # WHAT COMMAND...
  echo "— $1"; shift
  "$@"
  settled
  spoken | tail -n +$((heard + 1)) | sed -E "s/[0-9]+\.[0-9]+\.[0-9]{4}/DEN/g; s/[0-9]{1,2}:[0-9]{2}(:[0-9]{2})?/ČAS/g"
  heard=$(spoken | wc -l)
}
keys() { local key; for key in "$@"; do xdotool key --clearmodifiers "$key"; sleep 0.3; done; }
start() { "$program" & app=$!; desk_wait 20 sh -c 'xdotool search --onlyvisible --name "^Taln" >/dev/null'; }
write() { xdotool type --clearmodifiers --delay 60 "$1"; }

step "start" start
step "day down" keys Down
step "day up" keys Up
step "month on" keys Right
step "month back" keys Left
step "the day again" keys space
step "a dialog" keys F10 Right Right Down Return
step "back in the list" keys Escape
step "a new task" keys alt+k n
step "an hour on" keys Up
step "into the editor" keys Return
step "the note" write "Lék"
step "the fields" keys Tab Tab Tab
step "repeat" keys F10 Right Down Down Down Down Return
step "back in the editor" keys Escape
step "save" keys F10 Down Up Up Return
step "the settings" keys F10 Down Down Down Down Down Return
step "their fields" keys Tab Tab Tab
step "back from the settings" keys Escape
step "the countdown" keys F10 Right Right Down Down Return
step "close" keys Escape
kill $app; wait $app || true
