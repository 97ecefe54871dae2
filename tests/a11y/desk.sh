# A desk whose windows can be asked over the accessibility bus. Sourced behind tools/virtual_desk.sh.

# a11y_missing   Says what is not installed; nothing when all is there.
a11y_missing() {
  local command
  for command in Xvfb openbox xdotool xprop dbus-daemon /usr/bin/python3 /usr/libexec/at-spi-bus-launcher "$@"; do
    command -v "$command" >/dev/null || echo "$command"
  done
  /usr/bin/python3 -c 'import pyatspi' 2>/dev/null || echo python3-pyatspi
}

# a11y_desk SIZE   Display, window manager, session bus and accessibility bus; no speech, no sound.
a11y_desk() {
  DESK=$(mktemp -d "${TMPDIR:-/tmp}/talnik-desk.XXXXXX")
  trap desk_stop EXIT
  mkdir -p "$DESK"/{home,run,data,config}
  chmod 700 "$DESK/run"
  export HOME=$DESK/home XDG_RUNTIME_DIR=$DESK/run XDG_DATA_HOME=$DESK/data XDG_CONFIG_HOME=$DESK/config
  export LANG=cs_CZ.UTF-8 QT_QPA_PLATFORM=xcb QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 GSETTINGS_BACKEND=memory NO_AT_BRIDGE=0
  export TALNIK_SOUND=none TALNIK_BRAILLE=none
  unset LC_ALL WAYLAND_DISPLAY
  desk_display "$1"
  dbus-daemon --session --nofork --address="unix:path=$DESK/run/bus" >"$DESK/bus.log" 2>&1 &
  export DBUS_SESSION_BUS_ADDRESS=unix:path=$DESK/run/bus
  desk_wait 10 test -S "$DESK/run/bus"
  /usr/libexec/at-spi-bus-launcher --launch-immediately >"$DESK/at-spi.log" 2>&1 &
  desk_wait 10 sh -c 'xprop -root AT_SPI_BUS | grep -q unix:'
}
