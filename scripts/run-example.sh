#!/usr/bin/env bash
# Installs what is missing, builds, and analyses the bundled example: the
# odds ratio of thirteen BCG vaccine trials under the fixed and random models.
set -euo pipefail
cd "$(dirname "$0")/.."
./scripts/bootstrap.sh
cmake -S . -B build/release -G Ninja -DCMAKE_BUILD_TYPE=Release -DSYNTHARA_TESTS=OFF >/dev/null
cmake --build build/release --target synthara-cli
./build/release/bin/synthara-cli analyze examples/bcg-vaccine-trials.csv \
    --format "Events and sample size in each group"
