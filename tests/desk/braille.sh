# braille.sh PROGRAM SOURCE   The real program on a Braille line of the real brltty: the month, a field with its cursor, a
# message, and the line given to another window and taken back. xbrlapi tells brltty which window is in front, as it does
# on a real desktop, and shows the name of a window whose program does not write itself.
set -euo pipefail
PROGRAM=$1
. "$2/tools/virtual_desk.sh"
. "$2/tests/desk/desk.sh"
needs perl brltty xbrlapi xmessage

shows() { # CELL TEXT   the cell of the cursor and a pattern for all of the text
  desk_wait 10 line_is "$1" "$2" || { tail -n 20 "$DESK/line" "$DESK/said" "$DESK"/*.log; return 1; }
}
line_is() { tail -n 1 "$DESK/line" | LC_ALL=C.UTF-8 grep -E "^$1	$2\$" >/dev/null; }

start_brltty() { # the first of the numbers that is free; a taken one ends brltty's server
  export BRLAPI_HOST=127.0.0.1:$(($$ % 20000 + 100)) BRLAPI_AUTH=none WINDOWPATH=7
  LC_ALL=C perl "$2/tests/desk/braille_line.pl" "$DESK/line.sock" "$DESK/line" &
  desk_wait 10 test -S "$DESK/line.sock"
  brltty -n -e -q -f /dev/null -b vr -d "client:$DESK/line.sock" -x no -s no -t cs -A "auth=none,host=$BRLAPI_HOST" \
    -P "$DESK/brltty.pid" -W "$DESK" -U "$DESK" -F "$DESK/brltty.prefs" >"$DESK/brltty.log" 2>&1 &
  desk_wait 10 test -s "$DESK/line"
  xbrlapi -n >"$DESK/xbrlapi.log" 2>&1 &
  shows 0 Openbox
}

desk_start 640x480
start_brltty "$@"
start
active '^Talník$'

step "Měsíc"
press Home
shows '[01]' '1\. [a-zě]+'
press Down
shows '[01]' '2\. .+'

step "Nabídka"
press d alt+k
shows 1 'Úkoly Nový'

step "Pole s kurzorem"
press n
shows 7 'hodin:'
press 2 3 5 9 Return
shows '[0-9]+' 'Poznámka:'
press D o p i s
shows 6 'Dopis'
press Left Left
shows 4 'Dopis'
press Escape

step "Zpráva"
active '^Talník$'
press alt+v End Return
shows 1 'Talník [0-9.]+ Mluvící diář pro lidi, kteř'

step "Jiné okno"
xmessage -name Hodiny 12:00 &
other=$!
shows 0 Hodiny

step "Zpátky"
kill "$other"
shows 1 'Talník [0-9.]+ Mluvící diář pro lidi, kteř'
press Escape
shows 8 'Talník .*'
