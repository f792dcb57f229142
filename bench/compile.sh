#!/usr/bin/env bash
# compile.sh INSTALLATION: CPU time of compiling each example with teskc, large designs with complements, and a
# million vectors of the counter with all outputs; the median of five runs.
set -euo pipefail
installation=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp "$installation"/Examples/* "$work"
TIMEFORMAT='%3U %3S'

# measure LETTERS DESIGN
measure() {
    local times=() t
    for _ in 1 2 3 4 5; do
        t=$({ time "$installation/bin/teskc" -o "$1" "$2" >/dev/null; } 2>&1)
        times+=("$(awk '{ print ($1 + $2) * 1000 }' <<<"$t")")
    done
    printf 'teskc %-10s %-14s %s ms CPU\n' "$1" "$(basename "$2")" \
        "$(printf '%s\n' "${times[@]}" | sort -n | sed -n 3p)"
}

# large LINES TERMS: sums of so many random terms of six literals, a term a line
large() {
    awk -v lines="$1" -v terms="$2" 'BEGIN {
        srand(1)
        print "Name L; Partno 1; Date 1; Rev 1; Designer 1; Company 1; Assy 1; Loc 1; Device virtual;"
        print "PIN = [A23..0];"
        for (line = 0; line < lines; ++line) {
            sum = int(line / terms)
            printf line % terms ? "\n # " : "%sPIN = Y%dA; Y%dA = ", line ? ";\n" : "", sum, sum
            for (k = 0; k < 6; ++k)
                printf "%s%sA%d", k ? " & " : "", rand() < 0.5 ? "!" : "", int(rand() * 24)
        }
        print ";"
    }'
}

for design in "$work"/*.PLD; do measure jaxlbm4 "$design"; done
for terms in 2 30 100 300; do
    large 50000 "$terms" >"$work/LARGE$terms.PLD"
    measure m1 "$work/LARGE$terms.PLD"
    measure kdm1 "$work/LARGE$terms.PLD"
done

million() {
    sed '/^VECTORS:/q' "$1"
    awk 'BEGIN {
        print "0 0 0 0 @00@ \"00\" L"
        for (i = 1; i < 1000000; ++i) printf "C 1 0 1 @00@ \"%02X\" %s\n", i % 256, i % 256 == 255 ? "H" : "L"
    }' | tr @ "'"
}
million "$work/COUNT8.SI" >"$work/MILLION.SI"
sed 's/Count8/Million/' "$work/COUNT8.PLD" >"$work/MILLION.PLD"
sed -i 's/Count8/Million/' "$work/MILLION.SI"
measure jasm4 "$work/MILLION.PLD"
