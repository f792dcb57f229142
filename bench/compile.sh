#!/usr/bin/env bash
# compile.sh INSTALLATION: CPU time of compiling each example with teskc, the median of five runs.
set -euo pipefail
installation=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp "$installation"/Examples/* "$work"
TIMEFORMAT='%3U %3S'
for design in "$work"/*.PLD; do
    times=()
    for _ in 1 2 3 4 5; do
        t=$({ time "$installation/bin/teskc" -o jaxlbm4 "$design" >/dev/null; } 2>&1)
        times+=("$(awk '{ print ($1 + $2) * 1000 }' <<<"$t")")
    done
    printf 'teskc %-14s %s ms CPU\n' "$(basename "$design")" "$(printf '%s\n' "${times[@]}" | sort -n | sed -n 3p)"
done
