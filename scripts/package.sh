#!/usr/bin/env bash
# Builds TARVOKIN and makes the Debian package build/tarvokin_<version>_<arch>.deb,
# which `apt install ./build/tarvokin_*.deb` installs with its runtime dependencies.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build -j "$(nproc)"
cd build
cpack -G DEB
ls -1 tarvokin_*.deb
