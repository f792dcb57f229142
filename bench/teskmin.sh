#!/bin/sh
# teskmin.sh FOLDER [teskmin option...]: one line a PLA file and the totals. TESKMIN names another program. A
# reference.csv in the folder (columns file, terms_joint, terms_single_output, best_known, cpu_s_joint) is compared.
# BASE names a second program, run in turn with the first one, each REPEAT times (3) a file; the least time counts.
folder=${1:?usage: teskmin.sh FOLDER [option...]}
shift
program=${TESKMIN:-$(dirname "$0")/../build/release/tesk/logic/teskmin}
column=terms_joint
for option in "$@"; do
    if [ "$option" = --single ]; then column=terms_single_output; fi
done
# "base" or "new", file, exit code and report of one run
measure() {
    name=$1 run=$2
    shift 2
    line=$("$run" "$@" "$file" 2>&1 >/dev/null)
    echo "$name $(basename "$file") $? $line"
}
for file in "$folder"/*.pla; do
    [ -z "$BASE" ] && measure new "$program" "$@" && continue
    for round in $(seq "${REPEAT:-3}"); do
        measure base "$BASE" "$@"
        measure new "$program" "$@"
    done
done | awk -v reference="$folder/reference.csv" -v column="$column" -v two="$BASE" '
BEGIN {
    if ((getline line < reference) > 0) {
        count = split(line, head, ",")
        while ((getline line < reference) > 0) {
            split(line, field, ",")
            for (i = 1; i <= count; ++i) value[field[1], head[i]] = field[i]
        }
    }
}
{
    if (!($2 in seen)) order[++files] = $2
    seen[$2] = 1
    code[$1, $2] = $3
    terms[$1, $2] = $4 == "terms" ? $5 : "failed"
    if (!(($1, $2) in best) || $9 < best[$1, $2]) best[$1, $2] = $9
}
function compare(    i, f, note) {
    printf "%-18s %4s %7s %7s %9s %9s %6s\n", "file", "exit", "terms", "base", "seconds", "base", "ratio"
    for (i = 1; i <= files; ++i) {
        f = order[i]
        note = terms["new", f] == "failed" ? "failed" : terms["new", f] > terms["base", f] + 0 ? "more than the base" : ""
        ratio = best["base", f] > 0 ? best["new", f] / best["base", f] : 1
        printf "%-18s %4d %7s %7s %9.4f %9.4f %6.2f %s\n", f, code["new", f], terms["new", f], terms["base", f],
            best["new", f], best["base", f], ratio, note
        sum += terms["new", f]; sumBase += terms["base", f]
        seconds += best["new", f]; secondsBase += best["base", f]
        logs += log(ratio > 0 ? ratio : 1)
    }
    printf "terms %d against %d\n", sum, sumBase
    printf "seconds %.3f against %.3f, %.3f of it; a file takes %.3f of it (geometric mean)\n",
        seconds, secondsBase, seconds / secondsBase, exp(logs / files)
}
function list(    i, f, ref, known, note) {
    printf "%-18s %4s %7s %7s %7s %9s %9s\n", "file", "exit", "terms", "ref", "best", "seconds", "ref"
    for (i = 1; i <= files; ++i) {
        f = order[i]
        ref = value[f, column]; known = column == "terms_joint" ? value[f, "best_known"] : ""
        note = terms["new", f] == "failed" ? "failed" : ref != "" && terms["new", f] > ref + 0 ? "more than the reference" : ""
        printf "%-18s %4d %7s %7s %7s %9s %9s %s\n", f, code["new", f], terms["new", f], ref, known,
            best["new", f], value[f, "cpu_s_joint"], note
        sum += terms["new", f]; seconds += best["new", f]; cpus += value[f, "cpu_s_joint"]
        if (ref != "") { compared += terms["new", f]; refs += ref }
        if (known != "") { reached += terms["new", f]; bests += known }
    }
    printf "terms %d, where the reference has figures %d against %d, where a best is known %d against %d\n", \
        sum, compared, refs, reached, bests
    printf "seconds %.3f against %.3f\n", seconds, cpus
}
END { if (two != "") compare(); else list() }'
