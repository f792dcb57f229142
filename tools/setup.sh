# Sourced by ./run, ./test, .ci/run and the tools: installs what is missing, configures and builds. Debian 12.
set -euo pipefail
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
preset=${KORVANE_PRESET:-release}
build="$top/build/$preset"

build_packages="g++ cmake ninja-build qt6-base-dev qt6-svg-dev libqscintilla2-qt6-dev libqt6sql6-sqlite
    mdbtools-dev pkg-config libxcb1-dev libgtest-dev libbenchmark-dev locales"
# The virtual display of the drill and the tour.
display_packages="libx11-dev libxtst-dev xvfb openbox x11-xkb-utils xclip fonts-liberation fonts-dejavu-core"
# What reads a printed file back.
test_packages="poppler-utils"

# Another program's view of the fuse maps.
judge_packages="mame-tools"

# What VHDLTesk calls.
synthesis_packages="ghdl yosys"

# What makes the Debian package.
package_packages="dpkg-dev fakeroot file librsvg2-bin"

say() { printf '== %s\n' "$*"; }

# ensure_packages NAME…: installs the ones that are missing, or tells how.
ensure_packages() {
    command -v dpkg-query >/dev/null || { say "no dpkg here: the packages $* must be there by other means"; return; }
    local missing=() name
    for name in "$@"; do
        dpkg-query -W -f='${Status}' "$name" 2>/dev/null | grep -q 'ok installed' || missing+=("$name")
    done
    [ ${#missing[@]} -eq 0 ] && return
    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        if command -v sudo >/dev/null && { sudo -n true 2>/dev/null || [ -t 0 ]; }; then
            as_root=(sudo)
        else
            echo "Some packages are missing. Install them with:"
            echo "    apt-get update && apt-get install -y ${missing[*]}"
            exit 1
        fi
    fi
    say "installing ${missing[*]}"
    "${as_root[@]}" apt-get update -q
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends "${missing[@]}"
}

# build_tree: configures when that is needed and builds everything.
build_tree() {
    cd "$top"
    if [ ! -f "$build/build.ninja" ]; then
        say "configuring ($preset)"
        cmake --preset "$preset" >"$top/build-configure.log" 2>&1 || { cat "$top/build-configure.log"; exit 1; }
        rm -f "$top/build-configure.log"
    fi
    say "building ($preset)"
    cmake --build --preset "$preset"
}

# build_for_tests: installs what the tests need as well, and builds everything.
build_for_tests() {
    # shellcheck disable=SC2086
    ensure_packages $build_packages $test_packages
    # shellcheck disable=SC2086
    (ensure_packages $display_packages) || say "THE DRILL IS SKIPPED: no virtual display can be installed here"
    # shellcheck disable=SC2086
    (ensure_packages $judge_packages) || say "FUSE MAPS ARE NOT JUDGED BY ANOTHER PROGRAM: mame-tools cannot be installed here"
    # shellcheck disable=SC2086
    (ensure_packages $synthesis_packages) || say "SYNTHESIS IS NOT TESTED: ghdl and yosys cannot be installed here"
    build_tree
}
