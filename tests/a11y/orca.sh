# orca.sh PROGRAM SOURCE ROUND [record]   What the screen reader Orca says on a round through the program; see orca.py.
set -euo pipefail
here=$(dirname "$(realpath "$0")")
. "$2/tools/virtual_desk.sh"
. "$here/desk.sh"
missing=$(a11y_missing orca pulseaudio speech-dispatcher)
[ -z "$missing" ] || { echo "přeskočeno, není nainstalováno:" $missing >&2; exit 77; }
a11y_desk 1024x768
mkdir -p "$DESK/speech/modules"
export PULSE_RUNTIME_PATH=$DESK/run
desk_sound
# Messages reach the log only where speech is on, and Orca hangs where speech has nowhere to sound.
desk_speech
# Noon, so that a few seconds ahead is always today.
export TZ=DEMO$((10#$(date -u +%H) - 12)) TALNIK_VOICE=none LANGUAGE=cs
# Each desk has its own: Orca looks for others of the same user, and would end or give way to the one that is in use.
mkdir -p "$DESK/bin"
ln -s /bin/false "$DESK/bin/pgrep"
PATH=$DESK/bin:$PATH orca --debug --debug-file="$DESK/orca.log" >"$DESK/orca.out" 2>&1 &
desk_wait 60 grep -qs "EVENT MANAGER: Activated" "$DESK/orca.log"
/usr/bin/python3 -B "$here/orca.py" "$1" "$DESK/orca.log" "$here/orca/$3.txt" ${4:+--record}
