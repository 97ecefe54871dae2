# walk.sh PROGRAM AGENT SOURCE [SIZE [PICTURES [DPI]]]   Every window of the program, as a screen reader sees it; see
# walk.py. AGENT is the one of the synchronisation's tests. With a folder for PICTURES all type is the largest.
set -euo pipefail
here=$(dirname "$(realpath "$0")")
. "$3/tools/virtual_desk.sh"
. "$here/desk.sh"
missing=$(a11y_missing)
[ -z "$missing" ] || { echo "přeskočeno, není nainstalováno:" $missing; exit 77; }
a11y_desk "${4:-1024x768}"
export DESK
[ -z "${6:-}" ] || xprop -root -f RESOURCE_MANAGER 8s -set RESOURCE_MANAGER "$(printf 'Xft.dpi:\t%s\n' "$6")"

# The family's folder, where the agent lies as well: it waits until it is given up.
family=$DESK/family data=$XDG_DATA_HOME/Orvel1/TALNIK
mkdir -p "$family/googleaccess/calendar" "$data" "$XDG_CONFIG_HOME/Quenta"
ln -s "$(dirname "$(realpath "$1")")"/share/talnik/* "$family"
ln -s "$(realpath -e "$2")" "$family/googleaccess/calendar/CalendarAgent.exe"
printf 'request %s\nsay %%1;2\nhear %s\n' "$data/GoogleAccess.ini" "$DESK/heard" >"$family/agent.script"
printf '[Software\\Quenta\\Common1]\nPath=%s\n' "$family" >"$XDG_CONFIG_HOME/Quenta/registry.ini"
printf '[Application]\nUser=jana\n' >"$data/talnik.ini"
if [ -n "${5:-}" ]; then
  echo 'MenuSize=dword:00000063' >>"$XDG_CONFIG_HOME/Quenta/registry.ini"
  printf '[Info]\nTextSize=1000\n' >>"$data/talnik.ini"
fi

# Noon, so that a few seconds ahead is always today.
export TZ=DEMO$((10#$(date -u +%H) - 12)) TALNIK_VOICE=none
/usr/bin/python3 -B "$here/walk.py" "$1" ${5:+"$5"}
