# tray.sh PROGRAM SOURCE   The icon of the real program in a real notification area: the clicks, the menu by keyboard, the
# tip; and how the program is reached where there is no such area.
set -euo pipefail
PROGRAM=$1
. "$2/tools/virtual_desk.sh"
. "$2/tests/desk/desk.sh"
needs trayer xwininfo

windows() { LC_ALL=C xwininfo -root -tree; }
host_is_there() { windows | grep -F '"panel"' >/dev/null; }
no_host() { ! host_is_there; }
shown() { xdotool search --onlyvisible --class '^talnik$' 2>/dev/null || true; }
find_icon() { # while the window is hidden, nothing else of the program is on the screen
  icon=$(shown)
  [ "$(wc -w <<<"$icon")" = 1 ] && [ "$(xdotool getwindowgeometry --shell "$icon" | sed -n 's/^WIDTH=//p')" -gt 10 ]
}
over_icon() { # POINT   moves the pointer there, so many pixels from the middle of the icon
  eval "$(xdotool getwindowgeometry --shell "$icon")"
  xdotool mousemove $((X + WIDTH / 2 + $1)) $((Y + HEIGHT / 2))
}
click() { over_icon 0; xdotool click "$1"; }
nothing_shown() { [ -z "$(shown)" ]; }
hidden() { [ "$(shown)" = "$icon" ]; }

# The width of what has opened beside the icon's panel, which is the tip. It comes to a pointer that moves and then rests.
tip_width() {
  over_icon 3; over_icon 0
  desk_wait 5 tip_is_there
  windows | sed -nE 's/^     0x[0-9a-f]+ "talnik": \("talnik" "talnik"\)  ([0-9]+)x.*/\1/p'
  xdotool mousemove 0 0
}
tip_is_there() { windows | grep -E '^     0x[0-9a-f]+ "talnik": \("talnik"' >/dev/null; }

desk_start 800x600
mkdir -p "$DESK/data/Orvel1/TALNIK"
# Ctrl+Alt+K
printf '[Application]\r\nHotKeyCall=%d\r\n' $((6 * 65536 + 0x4B)) >"$DESK/data/Orvel1/TALNIK/talnik.ini"

trayer --edge bottom --align right --widthtype request --height 32 >"$DESK/trayer.log" 2>&1 &
host=$!
desk_wait 10 host_is_there

step "Skrytý start"
start /h
desk_wait 15 find_icon

step "Levé tlačítko"
click 1
active '^Talník$'
hears '^focus "Talník [0-9]+\. [^"]* [0-9]{4}'
step "Levé tlačítko, okno je vpředu"
click 1
hears '^focus "Talník [0-9]+\. '

step "Bublina bez minutek"
short=$(tip_width)
press alt+a m
hears '^focus "hodin'
press Tab 9 Return
active '^Talník - 00:0'
step "Bublina s minutkami"
long=$(tip_width)
[ "$long" -gt $((2 * short)) ] || { echo "Bublina: $short, s minutkami $long"; exit 1; }

step "Nabídka klávesnicí"
click 3
hears '^say "Otevřít talník"$'
press Down
hears '^say "Vybraný den Enter"$'
press End
hears '^say "Konec"$'
press Up
hears '^say "S alarmy"$'
step "Z nabídky do seznamu"
press Home
hears '^say "Otevřít talník"$'
press Return
hears '^focus "Talník - [0-9:]+ [0-9]+\. '

step "Zpátky do ikony, a hostitel ikon skončil"
press F10 Down
hears '^say "Talník Import'
press End Up Return
desk_wait 10 hidden
kill "$host"
desk_wait 10 no_host

step "Druhý start"
"$PROGRAM"
active '^Talník - '
hears '^focus "Talník - '

step "Horká klávesa"
press F10 Down
hears '^say "Talník Import'
press End Up Return
desk_wait 10 nothing_shown
press ctrl+alt+k
active '^Talník - '
hears '^focus "[0-9]+\. '
