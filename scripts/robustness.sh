#!/usr/bin/env bash
# The slower checks CI runs after test.sh: every fuzz harness for a bounded time in a clang tree
# (build-fuzz/), and every test built with the address, leak and undefined-behaviour sanitizers
# (build-asan/). "scripts/robustness.sh fuzz" or "... asan" runs one of the two.
#   QUELLBOTE_JOBS       parallel jobs for building and for ctest (default 2)
#   QUELLBOTE_FUZZ_SECONDS  how long each harness runs (default 20)
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/common.sh

jobs="${QUELLBOTE_JOBS:-2}"
what="${1:-all}"
case "$what" in
all | fuzz | asan) ;;
*) echo "usage: scripts/robustness.sh [all|fuzz|asan]" >&2; exit 2 ;;
esac

took() { echo "== $1: $(( SECONDS - $2 )) s"; }

install_missing_packages "${QUELLBOTE_FUZZ_PACKAGES[@]}"

if [ "$what" != asan ]; then
    start=$SECONDS
    configure_fuzz_tree build-fuzz -DQUELLBOTE_FUZZ_SECONDS="${QUELLBOTE_FUZZ_SECONDS:-20}"
    cmake --build build-fuzz --target quellbote_fuzzers -j"$jobs"
    took "fuzz build" $start
    start=$SECONDS
    ctest --test-dir build-fuzz -L fuzz --no-tests=error --output-on-failure -j"$jobs"
    took "fuzz run" $start
fi

if [ "$what" != fuzz ]; then
    start=$SECONDS
    # A debug build, so that Qt's and our assertions hold too, at -O1 with line tables only: a
    # third less compiler time than -O2 -g, and reports still name file and line.
    cmake -S . -B build-asan -DQUELLBOTE_SANITIZE=ON -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG="-O1 -g1"
    # Every test and the service they start; not the program, the benchmarks or the package.
    cmake --build build-asan --target quellbote_core_tests quellbote_gui_tests -j"$jobs"
    took "sanitizer build" $start
    start=$SECONDS
    # The sanitizers' options and suppressions come with each test (cmake/QuellboteTest.cmake).
    ctest --test-dir build-asan --no-tests=error --output-on-failure -j"$jobs"
    took "sanitizer tests" $start
fi
