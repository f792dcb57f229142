#!/usr/bin/env bash
# tour.sh INSTALLATION PICTURES: drives the installed program on a virtual display as a user would, says what
# it does, and leaves a picture of each station. Exits 1 if a station is not reached.
set -euo pipefail
installation=$(realpath "$1")
mkdir -p "$2"
pictures=$(realpath "$2")
rm -f "$pictures"/*.png
home=$(mktemp -d)
work="$home/work"
mkdir -p "$work"
cp "$installation/Examples/"* "$work/"

if [ -z "${KORVANE_TOUR_DISPLAY:-}" ]; then
    export KORVANE_TOUR_DISPLAY=1
    exec xvfb-run -a -s "-screen 0 1280x900x24 -nolisten tcp" "$0" "$installation" "$pictures"
fi

export HOME="$home" XDG_CONFIG_HOME="$home/config" XDG_STATE_HOME="$home/state" XDG_DATA_HOME="$home/data"
export XDG_RUNTIME_DIR="$home/run" QT_QPA_PLATFORM=xcb LC_ALL=C.UTF-8
mkdir -m 700 -p "$XDG_RUNTIME_DIR"

openbox >/dev/null 2>&1 &
manager=$!
program=
finish() {
    [ -n "$program" ] && kill "$program" 2>/dev/null
    kill "$manager" 2>/dev/null
    rm -rf "$home"
}
trap finish EXIT

station=0
say() { printf '  %s\n' "$*"; }
picture() {
    station=$((station + 1))
    local file
    file=$(printf '%02d-%s.png' "$station" "$1")
    sleep 0.4
    import -window root "$pictures/$file"
    say "picture: $file"
}
# wait_window TITLE: waits for a visible window of that title, at most 15 seconds, and gives it the keys.
wait_window() {
    local id i
    for i in $(seq 150); do
        id=$(xdotool search --onlyvisible --name "$1" 2>/dev/null | tail -n 1 || true)
        if [ -n "$id" ]; then
            xdotool windowactivate --sync "$id" 2>/dev/null || xdotool windowfocus "$id" || true
            return 0
        fi
        sleep 0.1
    done
    echo "tour: no window \"$1\"" >&2
    import -window root "$pictures/failed.png" || true
    return 1
}
wait_gone() {
    local i
    for i in $(seq 300); do
        xdotool search --onlyvisible --name "$1" >/dev/null 2>&1 || return 0
        sleep 0.1
    done
    echo "tour: the window \"$1\" stays" >&2
    return 1
}
key() { xdotool key --clearmodifiers "$@"; sleep 0.15; }
text() { xdotool type --delay 4 -- "$1"; sleep 0.1; }
open_file() {
    key ctrl+o
    wait_window '^Open'
    text "$1"
    key Return
    wait_gone '^Open'
}

say "starting Korvane"
"$installation/Korvane/Korvane" >"$pictures/output.txt" 2>&1 &
program=$!
sleep 0.35
picture splash
wait_window '^Korvane'
picture main-window

say "opening COUNT8.PLD"
open_file "$work/COUNT8.PLD"
picture design

say "compiling it (F9)"
key F9
if xdotool search --onlyvisible --name '^Project$' >/dev/null 2>&1; then key Return; fi
wait_window '^Compilation Results'
sleep 1
picture status
key Return
wait_gone '^Compilation Results'
picture messages
for file in COUNT8.LST COUNT8.DOC COUNT8.ABS COUNT8.PLA; do
    [ -s "$work/$file" ] || { echo "tour: $file was not written" >&2; exit 1; }
    say "written: $file ($(stat -c %s "$work/$file") bytes)"
done
for station_script in "$(dirname "$0")"/tour.d/*.sh; do
    # shellcheck disable=SC1090
    [ -f "$station_script" ] && source "$station_script"
done

say "closing"
wait_window '^Korvane'
key alt+F4
for _ in $(seq 50); do
    kill -0 "$program" 2>/dev/null || break
    sleep 0.1
done
if kill -0 "$program" 2>/dev/null; then echo "tour: the program did not end" >&2; exit 1; fi
program=
say "done: $station pictures in $pictures"
