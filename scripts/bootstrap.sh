#!/usr/bin/env bash
# Installs the Debian packages that building and testing Synthara needs, when
# they are missing. Safe to run again; touches nothing but the package manager.
set -euo pipefail

packages=(
    cmake ninja-build g++ clang libclang-rt-14-dev clang-format
    libboost-math-dev nlohmann-json3-dev libzip-dev pkg-config libcli11-dev
    libgtest-dev libgmock-dev libbenchmark-dev
)

missing=()
for p in "${packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
        missing+=("$p")
    fi
done

if [ ${#missing[@]} -eq 0 ]; then
    echo "bootstrap: everything needed is installed"
    exit 0
fi

sudo=""
if [ "$(id -u)" -ne 0 ]; then
    sudo="sudo"
fi
echo "bootstrap: installing ${missing[*]}"
$sudo apt-get update -qq
DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
