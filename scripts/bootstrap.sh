#!/usr/bin/env bash
# Installs the Debian packages that building and testing Synthara needs, when
# they are missing, and makes the de_DE.UTF-8 locale available for the tests
# that read numbers the German way. Safe to run again; touches nothing but the
# package manager and the system's compiled locales.
set -euo pipefail

packages=(
    cmake ninja-build g++ clang libclang-rt-14-dev clang-format
    libboost-math-dev nlohmann-json3-dev libzip-dev libexpat1-dev libfreexl-dev pkg-config
    libcli11-dev
    libgtest-dev libgmock-dev libbenchmark-dev libabsl-dev locales
    qt6-base-dev qt6-svg-dev libgl-dev xvfb xauth fonts-dejavu-core
)

missing=()
for p in "${packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
        missing+=("$p")
    fi
done

sudo=""
if [ "$(id -u)" -ne 0 ]; then
    sudo="sudo"
fi

if [ ${#missing[@]} -eq 0 ]; then
    echo "bootstrap: every package needed is installed"
else
    echo "bootstrap: installing ${missing[*]}"
    $sudo apt-get update -qq
    DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi

# `locale -a` spells it de_DE.utf8.
if locale -a 2>/dev/null | grep -qix 'de_DE\.utf-\?8'; then
    echo "bootstrap: the locale de_DE.UTF-8 is available"
else
    echo "bootstrap: compiling the locale de_DE.UTF-8"
    $sudo localedef -i de_DE -f UTF-8 de_DE.UTF-8
fi
