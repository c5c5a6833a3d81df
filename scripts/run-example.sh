#!/usr/bin/env bash
# Installs what is missing, builds the desktop program and the command line,
# makes the bundled example (thirteen BCG vaccine trials) into a project file
# and opens it in the desktop program. On a machine without a display it says
# so and analyses the example on the command line instead: every trial's odds
# ratio and the fixed and random summaries.
set -euo pipefail
cd "$(dirname "$0")/.."
./scripts/bootstrap.sh
cmake -S . -B build/release -G Ninja -DCMAKE_BUILD_TYPE=Release -DSYNTHARA_TESTS=OFF >/dev/null
format="Events and sample size in each group"
example=examples/bcg-vaccine-trials.csv

if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
    echo "run-example: no display (DISPLAY and WAYLAND_DISPLAY are empty), so the desktop"
    echo "run-example: program can't open; analysing the example on the command line instead."
    cmake --build build/release --target synthara-cli
    ./build/release/bin/synthara-cli analyze "$example" --format "$format"
    exit 0
fi

cmake --build build/release --target synthara-cli synthara
project=build/release/examples/bcg-vaccine-trials.syn
mkdir -p "$(dirname "$project")"
./build/release/bin/synthara-cli convert "$example" "$project" --format "$format"
exec ./build/release/bin/synthara "$project"
