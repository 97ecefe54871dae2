# walk.sh PROGRAM SOURCE   Every window of the program, as a screen reader sees it; see walk.py.
set -euo pipefail
here=$(dirname "$(realpath "$0")")
. "$2/tools/virtual_desk.sh"
. "$here/desk.sh"
missing=$(a11y_missing)
[ -z "$missing" ] || { echo "přeskočeno, není nainstalováno:" $missing; exit 77; }
a11y_desk 1024x768
# Noon, so that a few seconds ahead is always today.
export TZ=DEMO$((10#$(date -u +%H) - 12)) TALNIK_VOICE=none
/usr/bin/python3 -B "$here/walk.py" "$1"
