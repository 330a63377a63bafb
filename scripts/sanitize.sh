#!/usr/bin/env bash
# Builds the whole project with clang, AddressSanitizer and
# UndefinedBehaviorSanitizer into build-asan/, runs every test suite there
# (any sanitizer report fails the run), then runs each libFuzzer target for
# a bounded time on a copy of its seed corpus.
#
#   bash scripts/sanitize.sh              tests plus a short fuzz run (10 s a target)
#   FUZZ_SECONDS=600 bash scripts/sanitize.sh   a longer fuzz run
#
# A crash input that libFuzzer finds is written to build-asan/fuzz-findings/;
# once the fault is fixed, keep the input in fuzz/regressions/<target>/ so
# the ordinary test run replays it.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build="${VEXIL_ASAN_BUILD_DIR:-$root/build-asan}"
seconds="${FUZZ_SECONDS:-10}"
bash "$root/scripts/setup.sh"

CC=clang-14 CXX=clang++-14 cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=Debug \
    -DVEXIL_SANITIZE=ON -DVEXIL_FUZZ=ON >/dev/null
cmake --build "$build" -j"${VEXIL_JOBS:-2}"

export QT_QPA_PLATFORM=offscreen
export ASAN_OPTIONS="detect_leaks=1:abort_on_error=1:strict_string_checks=1:detect_stack_use_after_return=1"
export LSAN_OPTIONS="suppressions=$root/scripts/lsan.supp:print_suppressions=0"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
rm -rf "$build/test-data" && mkdir -p "$build/test-data"
(cd "$build" && XDG_DATA_HOME="$build/test-data" dbus-run-session --config-file="$build/dbus/session.conf" -- ctest --output-on-failure -j2)

findings="$build/fuzz-findings"
mkdir -p "$findings"
for target in memini langfile messages; do
    work="$(mktemp -d)"
    echo "fuzzing $target for ${seconds}s"
    "$build/fuzz/fuzz_$target" -max_total_time="$seconds" -timeout=20 -rss_limit_mb=4096 \
        -artifact_prefix="$findings/$target-" -print_final_stats=1 \
        "$work" "$root/fuzz/corpus/$target" 2>&1 | tail -n 12
    rm -rf "$work"
done
echo "sanitizers and fuzzing: no report"
