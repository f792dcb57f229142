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
# No session bus: the toolkit would start one of its own and wait for services that nobody offers here.
export DBUS_SESSION_BUS_ADDRESS=disabled:
mkdir -m 700 -p "$XDG_RUNTIME_DIR"

openbox >/dev/null 2>&1 &
manager=$!
# A window that is mapped while the window manager takes over the display can get lost.
for _ in $(seq 100); do
    xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id' && break
    sleep 0.1
done
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
# wait_window TITLE: waits for a visible window of that title, at most 60 seconds, and gives it the keys.
wait_window() {
    local id i
    for i in $(seq 600); do
        id=$(xdotool search --onlyvisible --name "$1" 2>/dev/null | tail -n 1 || true)
        if [ -n "$id" ]; then
            xdotool windowactivate --sync "$id" 2>/dev/null || xdotool windowfocus "$id" || true
            return 0
        fi
        sleep 0.1
    done
    echo "tour: no window \"$1\"" >&2
    if ! kill -0 "$program" 2>/dev/null; then
        wait "$program" || echo "tour: the program has ended with $?" >&2
    fi
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

start() {
    "$installation/Korvane/Korvane" >>"$pictures/output.txt" 2>&1 &
    program=$!
}
close_program() {
    wait_window '^Korvane'
    key alt+F4
    for _ in $(seq 50); do
        kill -0 "$program" 2>/dev/null || break
        sleep 0.1
    done
    if kill -0 "$program" 2>/dev/null; then echo "tour: the program did not end" >&2; exit 1; fi
    wait "$program" || { echo "tour: the program ended with an error" >&2; exit 1; }
    program=
}
main_size() { xdotool search --onlyvisible --name '^Korvane' windowmove 60 40 windowsize "$1" "$2"; sleep 0.4; }
compile() {
    key F9
    wait_window "$1"
}

say "starting Korvane"
start
sleep 0.35
picture splash
wait_window '^Korvane'
picture first-run
main_size 1100 780

say "opening COUNT8.PLD"
open_file "$work/COUNT8.PLD"
picture design

say "compiling it (F9)"
compile '^Compilation Results'
sleep 1
picture status
key Return
wait_gone '^Compilation Results'
picture messages
for file in COUNT8.LST COUNT8.DOC COUNT8.ABS COUNT8.PLA COUNT8.JED; do
    [ -s "$work/$file" ] || { echo "tour: $file was not written" >&2; exit 1; }
    say "written: $file ($(stat -c %s "$work/$file") bytes)"
done

say "compiling a design with an error"
printf 'Name Wrong;\r\nDevice G16V8;\r\nPIN 2 = A;\r\nPIN 19 = Y;\r\nY = A & (B;\r\n' >"$work/WRONG.PLD"
open_file "$work/WRONG.PLD"
compile '^Project'
picture project-question
key Return
wait_window '^Compilation Results'
sleep 0.5
key Return
wait_gone '^Compilation Results'
picture two-documents
say "reading a message (a click on a line of the list)"
xdotool mousemove 200 690 click 1
wait_window '^Compile Message'
picture message-explained
key Return
wait_gone '^Compile Message'

say "the compiler's options, tab by tab"
open_file "$work/COUNT8.PLD"
key ctrl+w
wait_window '^Compiler Options'
for tab in output-files minimization optimization general library; do
    picture "options-$tab"
    key ctrl+Tab
done
key Escape
wait_gone '^Compiler Options'

say "closing, and starting again with every tool on the toolbar"
close_program
settings="$XDG_CONFIG_HOME/korvane/settings.ini"
sed -i -E 's/^(StdUtil[0-6][MT])=number:.*/\1=number:4294967295/; s/^(CustUtil[0-5][MT])=number:.*/\1=number:4294967295/;
    s/^CustUtil([0-5])P=.*/CustUtil\1P="tool\1"/; s/^CustUtil([0-5])N=.*/CustUtil\1N="My tool \1"/' "$settings"
start
wait_window '^Korvane'
open_file "$work/COUNT8.PLD"
sleep 0.6
picture all-tools
close_program
say "done: $station pictures in $pictures"
