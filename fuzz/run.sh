#!/usr/bin/env bash
# Runs one fuzz harness for longer than CI does:  fuzz/run.sh NAME [SECONDS] [libFuzzer options]
# NAME is a folder of fuzz/corpus (recipienttable, jobfile, ...), SECONDS defaults to 600. The
# harness is built in build-fuzz/; its corpus grows in build-fuzz/fuzz/local/NAME/corpus, seeded
# from fuzz/corpus/NAME, and an input that breaks a rule is kept in .../artifacts.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/common.sh

name="${1:-}"
seconds="${2:-600}"
if [ -z "$name" ] || [ ! -d "fuzz/corpus/$name" ]; then
    echo "usage: fuzz/run.sh NAME [SECONDS] [libFuzzer options]; NAME is one of: $(ls fuzz/corpus | xargs)" >&2
    exit 2
fi
shift $(( $# < 2 ? $# : 2 ))

install_missing_packages "${QUELLBOTE_FUZZ_PACKAGES[@]}"
configure_fuzz_tree build-fuzz > /dev/null
cmake --build build-fuzz --target "fuzz_$name" -j"${QUELLBOTE_JOBS:-2}"

work="build-fuzz/fuzz/local/$name"
mkdir -p "$work/corpus" "$work/artifacts"
cp -rn "fuzz/corpus/$name/." "$work/corpus/"
LC_ALL=C.UTF-8 LANG=C.UTF-8 TZ=Europe/Berlin "build-fuzz/fuzz/fuzz_$name" -max_total_time="$seconds" -timeout=10 \
    -print_final_stats=1 -artifact_prefix="$work/artifacts/" "$@" "$work/corpus" || {
    status=$?
    echo "fuzz_$name failed; the input is in $work/artifacts. Once fixed, keep it as a seed in" \
        "fuzz/corpus/$name under a name that says what it holds." >&2
    exit $status
}
