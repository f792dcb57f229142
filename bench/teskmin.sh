#!/bin/sh
# teskmin.sh FOLDER [teskmin option...]: one line a PLA file and the totals. TESKMIN names another program. A
# reference.csv in the folder (columns file, terms_joint, terms_single_output, best_known, cpu_s_joint) is compared.
folder=${1:?usage: teskmin.sh FOLDER [option...]}
shift
program=${TESKMIN:-$(dirname "$0")/../build/release/tesk/logic/teskmin}
column=terms_joint
for option in "$@"; do
    if [ "$option" = --single ]; then column=terms_single_output; fi
done
for file in "$folder"/*.pla; do
    line=$("$program" "$@" "$file" 2>&1 >/dev/null)
    echo "$(basename "$file") $? $line"
done | awk -v reference="$folder/reference.csv" -v column="$column" '
BEGIN {
    if ((getline line < reference) > 0) {
        count = split(line, head, ",")
        while ((getline line < reference) > 0) {
            split(line, field, ",")
            for (i = 1; i <= count; ++i) value[field[1], head[i]] = field[i]
        }
    }
    printf "%-18s %4s %7s %7s %7s %9s %9s\n", "file", "exit", "terms", "ref", "best", "seconds", "ref"
}
{
    ref = value[$1, column]; best = column == "terms_joint" ? value[$1, "best_known"] : ""
    cpu = value[$1, "cpu_s_joint"]
    note = $3 != "terms" ? "failed" : ref != "" && $4 > ref + 0 ? "more than the reference" : ""
    printf "%-18s %4d %7s %7s %7s %9s %9s %s\n", $1, $2, $4, ref, best, $8, cpu, note
    terms += $4; seconds += $8; cpus += cpu
    if (ref != "") { compared += $4; refs += ref }
    if (best != "") { known += $4; bests += best }
}
END {
    printf "terms %d, where the reference has figures %d against %d, where a best is known %d against %d\n", \
        terms, compared, refs, known, bests
    printf "seconds %.3f against %.3f\n", seconds, cpus
}'
