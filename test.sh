#!/usr/bin/env bash
# Installs what is missing, builds, and runs every test with ctest.
set -euo pipefail
cd "$(dirname "$0")"
scripts/install-deps.sh
scripts/build.sh

export QT_QPA_PLATFORM=offscreen
export XDG_RUNTIME_DIR="${XDG_RUNTIME_DIR:-$(mktemp -d /tmp/tarvokin-runtime.XXXXXX)}"
chmod 0700 "$XDG_RUNTIME_DIR"
cd build
ctest --output-on-failure -j "$(nproc)" --timeout 600
