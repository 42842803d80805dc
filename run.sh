#!/usr/bin/env bash
# Installs what is missing, builds, and starts TARVOKIN on the demo model.
set -euo pipefail
cd "$(dirname "$0")"
scripts/install-deps.sh
scripts/build.sh

home="${TARVOKIN_HOME:-${XDG_DATA_HOME:-$HOME/.local/share}/tarvokin}"
if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
  exec build/tarvokin --home "$home" "$home/MODELES/DEMO.MDL"
fi

echo "No display available (DISPLAY is not set): here are the demo model's design results"
echo "from the command-line program instead."
build/tarvokin-cli fields data/MODELES/DEMO.MDL --home "$home" |
  grep -E '^(F_Main\.Caption|F_3D\.(T_NOM_Modele|Combo5|j5|j8|b30|j9|f30a|f31a|f32a)|F_GEO_SF\.(j4|j6|j7|j9|b12|c12|D12)|F_GEO_STAB\.(j1[5-9]|J20|j2[12])|F_GEO_FUS\.j2[456]|F_GEO_SF_REGLAGES\.[A-Z][0-9]{2})='
