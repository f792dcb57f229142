#!/usr/bin/env bash
# try-package.sh [PACKAGE.deb]: makes the Debian package in a clean folder (unless one is given), looks it over,
# installs it, starts it on a virtual display and compiles with it as a user who can't write to the installation,
# and removes it again. Wants to be root on a machine that it may change, as a build server's is.
source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"
[ "$(id -u)" -eq 0 ] || { echo "try-package.sh: installing wants root"; exit 1; }
package=$(readlink -f "${1:-}" || true)
user=korvane-try
work=$(mktemp -d)
chmod 755 "$work"
display_pid='' program_pid='' display=''
clean_up() {
    [ -z "$program_pid" ] || kill "$program_pid" 2>/dev/null || true
    [ -z "$display_pid" ] || kill "$display_pid" 2>/dev/null || true
    dpkg-query -W korvane >/dev/null 2>&1 && apt-get purge -y -q korvane >/dev/null
    userdel -r "$user" 2>/dev/null || true
    rm -rf "$work"
}
trap clean_up EXIT
fail() { echo "try-package.sh: $*"; exit 1; }
# as_user COMMAND…: in the user's own session.
as_user() {
    runuser -u "$user" -- env -i PATH=/usr/bin:/bin HOME="/home/$user" XDG_RUNTIME_DIR="$work/run" LC_ALL=C.UTF-8 \
        DISPLAY="$display" DBUS_SESSION_BUS_ADDRESS=disabled: "$@"
}
wait_for() {
    for _ in $(seq 100); do
        "$@" >/dev/null 2>&1 && return
        sleep 0.1
    done
    fail "in vain: $*"
}

if [ -z "${1:-}" ]; then
    mkdir "$work/source"
    git -C "$top" archive HEAD | tar -x -C "$work/source"
    "$work/source/package"
    package=$(ls "$work"/source/build/package/korvane_*.deb)
fi
ensure_packages lintian appstream desktop-file-utils xvfb xdotool
say "looking over $(basename "$package") ($(($(stat -c %s "$package") / 1024)) KB)"
lintian --allow-root --fail-on error "$package"
[ "$(stat -c %s "$package")" -lt 8000000 ] || fail "it is larger than 8 MB"

say "installing"
apt-get install -y -q "$package" >/dev/null
desktop-file-validate /usr/share/applications/korvane.desktop
appstreamcli validate --no-net /usr/share/metainfo/com.brennicklabs.korvane.metainfo.xml
for program in cfitr korvane teskc teskdis teskmin teskprove tesksvf; do
    "$program" --version | grep -q "^$program [0-9]" || fail "$program does not run"
done

say "working as $user"
useradd -m "$user"
install -d -o "$user" -m 700 "$work/run"
Xvfb -ac -displayfd 3 -screen 0 1280x800x24 3>"$work/number" >/dev/null 2>&1 &
display_pid=$!
wait_for test -s "$work/number"
display=:$(cat "$work/number")
as_user korvane --where
as_user korvane >"$work/program.log" 2>&1 &
program_pid=$!
wait_for as_user xdotool search --name '^Korvane'
examples=$(as_user korvane --where | sed -n 's/^examples *//p')
tree=$(as_user korvane --where | sed -n 's/^your own *//p')
[ -f "$examples/COUNT8.PLD" ] || fail "no examples in $examples"
as_user korvane "$examples/COUNT8.PLD" || fail "the running program takes no file"
as_user sh -c "cd '$examples' && teskc --gnu -o jaxlm4s COUNT8.PLD"
[ -s "$examples/COUNT8.JED" ] || fail "no fuse map"
kill -0 "$program_pid" || fail "the program has ended: $(cat "$work/program.log")"

say "removing"
[ -z "$(dpkg -V korvane)" ] || fail "the installation was changed"
apt-get purge -y -q korvane >/dev/null
[ ! -e /usr/lib/korvane ] || fail "something stays in /usr/lib/korvane"
[ -f "$tree/Korvane/TeskErr.txt" ] || fail "the user's files are gone"
say "the package is good"
