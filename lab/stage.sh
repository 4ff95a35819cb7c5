# shellcheck shell=bash
# SPDX-FileCopyrightText: 2026 The KT964 launcher authors
# SPDX-License-Identifier: Apache-2.0
#
# Functions for scripts that play the launcher's user on a virtual display. Source this file with bash. Set `bin` (the
# folder of the binaries) and `folder` (for logs and screenshots) before calling a function, and run under lab/run.
set -u

stage=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
started=
program=
trap 'for id in $program $started; do kill "$id" 2>/dev/null; done' EXIT

# enter_lab SCRIPT [ARGUMENT...]: runs a script on a new device with the demo's configuration document and the lab's
# peers. Passes BIN-DIR and the arguments to the script. Removes the device afterwards, unless KT_LAB_KEEP is set.
enter_lab() {
    device=$(mktemp -d) || exit 1
    [ -n "${KT_LAB_KEEP:-}" ] || trap 'rm -rf "$device"' EXIT
    "$bin/kt-lab" make-root "$device" && cp "$stage/demo-config.json" "$device/var/lib/kt964/config.json" || exit 1
    KT_LAB_DESKTOP_SIZE=1024x768 "$stage/run" "$bin" "$device" "$1" "$bin" "${@:2}"
    exit
}

fail() {
    echo "FAILED  $1" >&2
    import -window root "$folder/failed.png" 2>/dev/null
    tail -n 20 "$folder/kt964.log" >&2
    echo "        screenshot $folder/failed.png, log $folder/kt964.log" >&2
    exit 1
}

# await SECONDS TEXT COMMAND...: waits for a command to succeed; otherwise fails with TEXT and a screenshot.
await() {
    local tries=$(($1 * 5)) text=$2
    shift 2
    until "$@" >/dev/null 2>&1; do
        tries=$((tries - 1))
        [ "$tries" -gt 0 ] || fail "$text"
        sleep 0.2
    done
}

start_display() {
    : >"$folder/display"
    exec 3>"$folder/display"
    setpriv --pdeathsig TERM Xvfb -displayfd 3 -screen 0 1024x768x24 -nolisten tcp -noreset >/dev/null 2>&1 &
    started="$! $started"
    exec 3>&-
    await 10 "a virtual display" test -s "$folder/display"
    DISPLAY=:$(cat "$folder/display")
    export DISPLAY
}

start_program() {
    setpriv --pdeathsig KILL "$bin/kt964" >"$folder/kt964.log" 2>&1 &
    program=$!
    echo "$program" >"$KT_DEVICE_ROOT/lab/kt964.pid"
}

end_program() {
    kill "$program"
    wait "$program" 2>/dev/null
    program=
}

# logged TEXT [TIMES]: whether the program's log contains TEXT, at least this often.
logged() { [ "$(grep -c -- "$1" "$folder/kt964.log")" -ge "${2:-1}" ]; }
never_logged() { ! logged "$1" || fail "\"$1\" is never logged"; }

window_shown() { xdotool search --onlyvisible --name "^$1\$"; }
launcher_shown() { window_shown KT964; }
# Succeeds when the window is shown and has the keyboard focus.
window_ready() { window_shown "$1" && [ "$(xdotool getwindowfocus getwindowname)" = "$1" ]; }
launcher_ready() { window_ready KT964; }
session_shown() { ! launcher_shown && xdotool search --onlyvisible --class xfreerdp; }

# desktop_seen HOST: whether the server 10.77.0.HOST has a client and the screen shows that server's desktop. Compares
# thumbnails of both.
desktop_seen() {
    local theirs="$KT_DEVICE_ROOT/lab/desktops/$1" difference
    session_shown || return 1
    [ -n "$(ss -Htn state established "src 10.77.0.$1 and sport = :3389")" ] || return 1
    DISPLAY=:$(cat "$theirs/display") import -window root -resize '64x48!' "$folder/theirs.png" || return 1
    import -window root -resize '64x48!' "$folder/ours.png" || return 1
    difference=$(compare -metric RMSE "$folder/theirs.png" "$folder/ours.png" null: 2>&1 | sed 's/.*(\(.*\))/\1/')
    awk -v d="$difference" 'BEGIN { exit !(d < 0.15) }'
}

close_session() { xdotool search --onlyvisible --class xfreerdp windowclose; }

# session_ended [TIMES]: whether the client has ended this often; closes the window that explains the end.
session_ended() {
    ! window_ready Session || xdotool key Return
    logged "the client has ended" "${1:-1}"
}

click() { xdotool mousemove "$1" "$2" click 1; }

# Opens the firmware page of the settings, wherever it is in the list, and presses its button.
press_update() {
    click 936 32
    sleep 0.5
    click 100 90
    xdotool type firm
    sleep 0.5
    click 557 630
}
