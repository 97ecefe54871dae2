# start.sh PREFIX SOURCE   The installed program's first start fills the data folder from its own share folder.
set -euo pipefail
. "$2/tools/virtual_desk.sh"
own=$(mktemp -d)
trap 'kill -9 $app 2>/dev/null || true; rm -rf "$own"' EXIT
mkdir -m 700 "$own/run"
export HOME=$own XDG_DATA_HOME=$own/data XDG_CONFIG_HOME=$own/config XDG_RUNTIME_DIR=$own/run
export QT_QPA_PLATFORM=offscreen TALNIK_VOICE=none TALNIK_SOUND=none TALNIK_BRAILLE=none DBUS_SESSION_BUS_ADDRESS=unix:path=/nowhere
"$1/bin/talnik" &
app=$!
data=$own/data/Orvel1/TALNIK
desk_wait 30 test -s "$data/talnik.MDB" -a -e "$data/alarms.dat"
cmp "$data/Names.dat" "$2/data/talnik/src_Names.dat"
kill -TERM $app
wait $app
