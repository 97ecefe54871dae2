# orca.sh PROGRAM SOURCE [--record] [ROUND...]   What the screen reader Orca says on rounds through the program; see orca.py.
set -euo pipefail
here=$(dirname "$(realpath "$0")")
. "$2/tools/virtual_desk.sh"
. "$here/desk.sh"
# Its texts are Czech where they have not been left out of the package.
missing=$(a11y_missing orca pulseaudio speech-dispatcher; ls /usr/share/locale/cs/LC_MESSAGES/orca.mo 2>&1 >/dev/null) || true
[ -z "$missing" ] || { echo "přeskočeno, není nainstalováno:" $missing; exit 77; }
a11y_desk 1024x768
mkdir -p "$DESK/speech/modules"
export PULSE_RUNTIME_PATH=$DESK/run
desk_sound
# Messages reach the log only where speech is on, and Orca hangs where speech has nowhere to sound.
SPEECH_LOG=5 desk_speech
# Noon, so that a few seconds ahead is always today.
export TZ=DEMO$((10#$(date -u +%H) - 12)) LANGUAGE=cs
# Each desk has its own: Orca looks for others of the same user, and would end or give way to the one that is in use.
mkdir -p "$DESK/bin"
ln -s /bin/false "$DESK/bin/pgrep"
PATH=$DESK/bin:$PATH /usr/bin/python3 -B "$here/orca.py" "$1" "$DESK" "$DESK/speech/speech-dispatcher.log" "$here/orca" "${@:3}"
