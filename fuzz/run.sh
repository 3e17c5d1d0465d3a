#!/usr/bin/env bash
# Runs the fuzz harnesses for longer than CI does.
#   fuzz/run.sh NAME [SECONDS] [libFuzzer options]     one harness, for SECONDS (default 600)
#   fuzz/run.sh campaign [RUNS] [NAME...] [libFuzzer options]
#                                                      every harness (or those named) in turn,
#                                                      each to RUNS executions (default 10 000 000)
# NAME is a folder of fuzz/corpus (recipienttable, jobfile, ...). The harnesses are built in
# build-fuzz/; each corpus grows in build-fuzz/fuzz/local/NAME/corpus, seeded from
# fuzz/corpus/NAME, and an input that breaks a rule is kept in .../artifacts. A campaign runs one
# harness at a time at the lowest priority, goes on to the next after a failure, and ends with a
# table of executions, executions a second, coverage and what was found, which it also keeps in
# build-fuzz/fuzz/local/campaign.txt.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/common.sh

names=$(ls fuzz/corpus | xargs)
usage() {
    echo "usage: fuzz/run.sh NAME [SECONDS] [libFuzzer options]" >&2
    echo "       fuzz/run.sh campaign [RUNS] [NAME...] [libFuzzer options]" >&2
    echo "NAME is one of: $names" >&2
    exit 2
}

name="${1:-}"
if [ "$name" != campaign ] && { [ -z "$name" ] || [ ! -d "fuzz/corpus/$name" ]; }; then
    usage
fi
shift
limit="${1:-}"
[ $# -gt 0 ] && shift
[ -z "$limit" ] || [[ "$limit" =~ ^[0-9]+$ ]] || usage

install_missing_packages "${QUELLBOTE_FUZZ_PACKAGES[@]}"
configure_fuzz_tree build-fuzz > /dev/null

# Prepares build-fuzz/fuzz/local/NAME and prints its path.
prepare() {
    local work="build-fuzz/fuzz/local/$1"
    mkdir -p "$work/corpus" "$work/artifacts"
    cp -rn "fuzz/corpus/$1/." "$work/corpus/"
    echo "$work"
}

nice=()
fuzzer() {
    local name="$1"; shift
    "${nice[@]}" env LC_ALL=C.UTF-8 LANG=C.UTF-8 TZ=Europe/Berlin "build-fuzz/fuzz/fuzz_$name" -timeout=10 \
        -print_final_stats=1 "$@"
}

if [ "$name" != campaign ]; then
    cmake --build build-fuzz --target "fuzz_$name" -j"${QUELLBOTE_JOBS:-2}"
    work=$(prepare "$name")
    fuzzer "$name" -max_total_time="${limit:-600}" -artifact_prefix="$work/artifacts/" "$@" "$work/corpus" || {
        status=$?
        echo "fuzz_$name failed; the input is in $work/artifacts. Once fixed, keep it as a seed in" \
            "fuzz/corpus/$name under a name that says what it holds." >&2
        exit $status
    }
    exit 0
fi

runs="${limit:-10000000}"
nice=(nice -n 19)
chosen=""
while [ $# -gt 0 ] && [ -n "$1" ] && [ -d "fuzz/corpus/$1" ]; do
    chosen="$chosen $1"
    shift
done
names="${chosen:-$names}"
cmake --build build-fuzz --target quellbote_fuzzers -j"${QUELLBOTE_JOBS:-2}"
summary="build-fuzz/fuzz/local/campaign.txt"
mkdir -p "$(dirname "$summary")"
{
    echo "Campaign of $(date '+%Y-%m-%d %H:%M'), $runs executions each"
    printf '%-15s %12s %8s %9s %14s %20s  %s\n' harness executions exec/s seconds corpus coverage found
} > "$summary"
failed=0
for name in $names; do
    work=$(prepare "$name")
    before=$(ls "$work/corpus" | wc -l)
    marker="$work/campaign.started"
    touch "$marker"
    start=$SECONDS
    echo "== fuzz_$name: $runs executions (log: $work/campaign.log)"
    status=0
    fuzzer "$name" -runs="$runs" -artifact_prefix="$work/artifacts/" "$@" "$work/corpus" > "$work/campaign.log" 2>&1 \
        || status=$?
    log="$work/campaign.log"
    executions=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -1)
    rate=$(sed -n 's/^stat::average_exec_per_sec: *//p' "$log" | tail -1)
    coverage=$(grep -oE 'cov: [0-9]+ ft: [0-9]+' "$log" | tail -1 || true)
    found=$(find "$work/artifacts" -type f -newer "$marker" | xargs -r -n1 basename | xargs)
    if [ "$status" -ne 0 ]; then
        failed=1
        found="FAILED ($status): ${found:-see the log}"
    elif [ -z "$found" ]; then
        found="nothing"
    fi
    printf '%-15s %12s %8s %9s %14s %20s  %s\n' "$name" "${executions:-?}" "${rate:-?}" $(( SECONDS - start )) \
        "$before->$(ls "$work/corpus" | wc -l)" "${coverage:-?}" "$found" | tee -a "$summary"
done
echo
cat "$summary"
exit $failed
