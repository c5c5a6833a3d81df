#!/usr/bin/env bash
# Installs what is missing, builds, and computes the bundled example.
set -euo pipefail
cd "$(dirname "$0")/.."
./scripts/bootstrap.sh
cmake -S . -B build/release -G Ninja -DCMAKE_BUILD_TYPE=Release -DSYNTHARA_TESTS=OFF >/dev/null
cmake --build build/release --target synthara-cli
./build/release/bin/synthara-cli compute examples/bcg-vaccine-trials.csv \
    --format "Events and sample size in each group"
