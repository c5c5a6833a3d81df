#!/usr/bin/env bash
# Times synthara-cli end to end, as a user runs it, on generated rows of
# two-group events, and prints each command's wall time and peak memory.
#
#   bench/end-to-end.sh [CLI] [K ...]
#
# CLI is the synthara-cli to time (default: bin/synthara-cli, where a build
# directory has it); each K is a number of rows (default: 10000 100000; the
# figures also use 1000000). A file of a million blank lines after the titles
# is timed as well. The rows come from a fixed seed, so a run times the same
# files as the last one on the same awk.
#
# When Rscript and its metafor package are at hand, the same fixed and random
# summaries are timed in R as a baseline, for K up to R_MAX_K (default 10000:
# metafor's model fit holds K-by-K matrices).
set -euo pipefail

cli=bin/synthara-cli
if [[ $# -gt 0 && ! $1 =~ ^[0-9]+$ ]]; then
    cli=$1
    shift
fi
sizes=("$@")
[[ ${#sizes[@]} -gt 0 ]] || sizes=(10000 100000)
if [[ ! -x $cli ]]; then
    echo "end-to-end.sh: no synthara-cli at \"$cli\": run this from a build directory" \
        "or give the program's path" >&2
    exit 2
fi
r_max_k=${R_MAX_K:-10000}

format="Events and sample size in each group"
titles="Study name,Group-A Events,Group-A Total N,Group-B Events,Group-B Total N,Latitude"

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# K rows of plausible trials: 20 to 500 patients an arm, a control risk of 5
# to 30 %, a treatment that lowers it somewhat on the whole; at least one
# event and one non-event in each arm. A latitude for the meta-regression
# follows from the row's number, so the counts stay those of the files
# timed before it was added.
generate() {
    awk -v k="$1" -v titles="$titles" 'BEGIN {
        srand(20240611)
        print titles
        for (i = 1; i <= k; i++) {
            na = 20 + int(rand() * 481)
            nb = 20 + int(rand() * 481)
            risk = 0.05 + rand() * 0.25
            ratio = exp((rand() - 0.6) * 1.2)
            ea = int(na * risk * ratio + rand())
            eb = int(nb * risk + rand())
            if (ea < 1) ea = 1
            if (ea >= na) ea = na - 1
            if (eb < 1) eb = 1
            if (eb >= nb) eb = nb - 1
            printf "Study %d,%d,%d,%d,%d,%d\n", i, ea, na, eb, nb, 10 + (i * 37) % 50
        }
    }' >"$2"
}

blank_lines() {
    awk -v k="$1" -v titles="$titles" 'BEGIN {
        print titles
        for (i = 1; i <= k; i++) print ""
    }' >"$2"
}

# Runs a command with its output thrown away and prints its line of the table.
timed() {
    local label=$1 k=$2 status=0 seconds kb
    shift 2
    /usr/bin/time -f "%e %M" -o "$work/time" "$@" >/dev/null 2>"$work/stderr" || status=$?
    # A failing command's line of its status comes before the figures.
    read -r seconds kb < <(tail -n 1 "$work/time")
    printf '%-26s %14s %9s %9s %5s\n' "$label" "$k" "$seconds" \
        "$(awk -v kb="$kb" 'BEGIN { printf "%.1f", kb / 1024 }')" "$status"
}

r_baseline_ready() {
    command -v Rscript >/dev/null 2>&1 &&
        Rscript -e 'quit(status = if (requireNamespace("metafor", quietly = TRUE)) 0 else 1)' \
            >/dev/null 2>&1
}

cat >"$work/baseline.R" <<'EOF'
rows <- read.csv(commandArgs(trailingOnly = TRUE)[1], check.names = FALSE)
es <- metafor::escalc("OR", ai = rows[[2]], n1i = rows[[3]], ci = rows[[4]], n2i = rows[[5]])
fixed <- metafor::rma(yi, vi, data = es, method = "FE")
random <- metafor::rma(yi, vi, data = es, method = "DL")
cat(coef(fixed), coef(random), "\n")
EOF
with_r=false
if r_baseline_ready; then with_r=true; fi

# All seven commands on one file.
time_file() {
    local file=$1 k=$2
    rm -f "$work/out.syn"
    timed "analyze --json" "$k" "$cli" analyze "$file" --format "$format" --json
    timed "bias --json" "$k" "$cli" bias "$file" --format "$format" --json
    timed "regress --method ml --json" "$k" \
        "$cli" regress "$file" --format "$format" --predictor Latitude --method ml --json
    timed "compute --json" "$k" "$cli" compute "$file" --format "$format" --json
    timed "compute" "$k" "$cli" compute "$file" --format "$format"
    timed "convert to .syn" "$k" "$cli" convert "$file" "$work/out.syn" --format "$format"
    if [[ -f $work/out.syn ]]; then
        timed "analyze .syn --json" "$k" "$cli" analyze "$work/out.syn" --json
    fi
}

printf '%-26s %14s %9s %9s %5s\n' "command" "k" "seconds" "peak MB" "exit"
for k in "${sizes[@]}"; do
    generate "$k" "$work/rows.csv"
    time_file "$work/rows.csv" "$k"
    # The runs of k passes, one study removed and cumulative, at sizes where
    # they are asked for in practice.
    if ((k <= 100000)); then
        for run in omit-one cumulative; do
            timed "analyze --run $run --json" "$k" \
                "$cli" analyze "$work/rows.csv" --format "$format" --run "$run" --json
        done
    fi
    if $with_r && ((k <= r_max_k)); then
        timed "R metafor fixed + random" "$k" Rscript "$work/baseline.R" "$work/rows.csv"
    fi
done
blank_lines 1000000 "$work/blank.csv"
time_file "$work/blank.csv" "1000000 blank"
