# A desk of its own for the program: virtual display, window manager, sound server with a null sink, speech. Sourced by
# scripts; everything lies in $DESK and ends with the script.

desk_start() { # SIZE
  DESK=$(mktemp -d "${TMPDIR:-/tmp}/talnik-desk.XXXXXX")
  trap desk_stop EXIT
  mkdir -p "$DESK"/{home,run,data,config,speech/modules}
  chmod 700 "$DESK"/run
  export HOME=$DESK/home XDG_RUNTIME_DIR=$DESK/run XDG_DATA_HOME=$DESK/data XDG_CONFIG_HOME=$DESK/config
  export PULSE_RUNTIME_PATH=$DESK/run LANG=cs_CZ.UTF-8 QT_QPA_PLATFORM=xcb
  unset LC_ALL WAYLAND_DISPLAY DBUS_SESSION_BUS_ADDRESS
  desk_display "${1:-1024x768}"
  desk_sound
  desk_speech
}

desk_display() {
  exec 9>"$DESK/display"
  Xvfb -displayfd 8 -screen 0 "${1}x24" -nolisten tcp 8>"$DESK/display" >"$DESK/xvfb.log" 2>&1 &
  desk_wait 10 test -s "$DESK/display"
  DISPLAY=:$(cat "$DESK/display")
  export DISPLAY
  openbox >"$DESK/openbox.log" 2>&1 &
  desk_wait 10 sh -c 'xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q window'
}

desk_sound() {
  cat >"$DESK/default.pa" <<-END
	load-module module-null-sink sink_name=out
	load-module module-null-sink sink_name=mic
	load-module module-native-protocol-unix
	set-default-sink out
	set-default-source mic.monitor
	END
  pulseaudio -n -F "$DESK/default.pa" --daemonize=no --exit-idle-time=-1 --disallow-exit >"$DESK/pulse.log" 2>&1 &
  desk_wait 10 test -S "$DESK/run/native"
}

desk_speech() { # the daemon refuses to start in a locale that is not generated; SPEECH_LOG: how much it tells, 5 each text
  cp /etc/speech-dispatcher/modules/espeak-ng.conf "$DESK/speech/modules/"
  cat >"$DESK/speech/speechd.conf" <<-END
	LogDir "$DESK/speech"
	Timeout 0
	DefaultLanguage "cs"
	AudioOutputMethod "pulse"
	AddModule "espeak-ng" "sd_espeak-ng" "espeak-ng.conf"
	DefaultModule "espeak-ng"
	DisableAutoSpawn
	LogLevel ${SPEECH_LOG:-3}
	END
  LANG=C.UTF-8 speech-dispatcher -s -C "$DESK/speech" -S "$DESK/run/speechd.sock" -P "$DESK/run/speechd.pid" -L "$DESK/speech" -t 0 \
    >"$DESK/speech/out.log" 2>&1 &
  export SPEECHD_ADDRESS=unix_socket:$DESK/run/speechd.sock
  desk_wait 10 test -S "$DESK/run/speechd.sock"
}

desk_stop() {
  jobs -p | xargs -r kill 2>/dev/null || true  # some have ended by themselves
  wait 2>/dev/null
  [ -n "${KEEP_DESK:-}" ] || rm -rf "$DESK"
}

desk_wait() { # SECONDS COMMAND...   until the command succeeds
  local end=$((SECONDS + $1)); shift
  until "$@"; do
    [ $SECONDS -lt $end ] || { echo "Nedočkal jsem se: $*" >&2; return 1; }
    sleep 0.05
  done
}

