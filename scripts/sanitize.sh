#!/usr/bin/env bash
# Builds the program and its tests with AddressSanitizer and UndefinedBehavior-
# Sanitizer in a folder of their own (build-sanitize/), without the benchmarks,
# and runs every test there. A memory fault or an undefined behaviour ends the
# test that meets it, so the run fails. Leak reports are left out: the Qt and
# font libraries keep memory until exit by design, which would drown real faults.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh

flags="-O1 -fsanitize=address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=undefined"
cmake -S . -B build-sanitize -G Ninja -DCMAKE_BUILD_TYPE=Debug -DTARVOKIN_BENCH=OFF \
  -DCMAKE_CXX_FLAGS="$flags" -DCMAKE_CXX_FLAGS_DEBUG="-g1" \
  -DCMAKE_EXE_LINKER_FLAGS="-fsanitize=address,undefined" >/dev/null
cmake --build build-sanitize -j "$(nproc)"

export QT_QPA_PLATFORM=offscreen
export XDG_RUNTIME_DIR="${XDG_RUNTIME_DIR:-$(mktemp -d /tmp/tarvokin-runtime.XXXXXX)}"
chmod 0700 "$XDG_RUNTIME_DIR"
export ASAN_OPTIONS="detect_leaks=0:abort_on_error=1:strict_string_checks=1"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
cd build-sanitize
ctest --output-on-failure -j "$(nproc)" --timeout 900
