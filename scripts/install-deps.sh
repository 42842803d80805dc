#!/usr/bin/env bash
# Installs the Debian packages TARVOKIN needs to build, test and run, if missing.
set -euo pipefail

PACKAGES=(
  cmake ninja-build g++ ccache
  qt6-base-dev qt6-charts-dev qt6-svg-dev libqt6opengl6-dev qt6-translations-l10n
  libgtest-dev libgmock-dev libbenchmark-dev
  xfoil xvfb xauth xfonts-base fonts-dejavu-core
  zlib1g-dev
)

missing=()
for p in "${PACKAGES[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$p")
  fi
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "Installing: ${missing[*]}"
SUDO=""
if [ "$(id -u)" -ne 0 ]; then
  if command -v sudo >/dev/null 2>&1; then SUDO="sudo"; else
    echo "These packages are missing and this user cannot install them: ${missing[*]}" >&2
    exit 1
  fi
fi
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -qq
$SUDO apt-get install -y --no-install-recommends "${missing[@]}" </dev/null
