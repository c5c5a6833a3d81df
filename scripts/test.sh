#!/usr/bin/env bash
# Installs what is missing, then builds and runs every test twice: once with
# warnings as errors, once under AddressSanitizer and UndefinedBehaviorSanitizer.
# Ends with short fuzzing runs and a formatting check. Exits non-zero on any failure.
set -euo pipefail
cd "$(dirname "$0")/.."
./scripts/bootstrap.sh
jobs=$(nproc)

echo "== formatting"
files=$(git ls-files '*.cpp' '*.h')
clang-format --dry-run -Werror $files

echo "== build with warnings as errors"
cmake -S . -B build/werror -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DSYNTHARA_WERROR=ON -DSYNTHARA_BENCH=ON >/dev/null
cmake --build build/werror -j "$jobs"
ctest --test-dir build/werror --output-on-failure -j "$jobs"

echo "== build and test under AddressSanitizer and UndefinedBehaviorSanitizer"
cmake -S . -B build/asan -G Ninja -DCMAKE_BUILD_TYPE=Debug \
    -DSYNTHARA_WERROR=ON -DSYNTHARA_SANITIZE=ON >/dev/null
cmake --build build/asan -j "$jobs"
ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
    ctest --test-dir build/asan --output-on-failure -j "$jobs"

echo "== short fuzzing runs"
CC=clang CXX=clang++ cmake -S . -B build/fuzz -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DSYNTHARA_FUZZ=ON -DSYNTHARA_TESTS=OFF >/dev/null
cmake --build build/fuzz -j "$jobs" --target synthara_fuzz
for target in build/fuzz/bin/fuzz_*; do
    [ -x "$target" ] || continue
    name=$(basename "$target")
    corpus=$(mktemp -d)
    cp -r "fuzz/corpus/$name/." "$corpus/" 2>/dev/null || true
    echo "-- $name"
    "$target" -max_total_time=30 -rss_limit_mb=4096 "$corpus" 2>&1 | tail -n 2
    rm -rf "$corpus"
done
echo "== all tests passed"
