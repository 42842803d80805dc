#!/usr/bin/env bash
# The install tree: `cmake --install` into a fresh prefix holds both programs,
# the installation folder, the desktop entry, the file type and the icon; the
# installed programs, started from there, seed a user's folder from the
# installed data (not from the source tree) and load the demo model.
set -euo pipefail
build=$1
prefix=$(mktemp -d)
trap 'rm -rf "$prefix"' EXIT
cmake --install "$build" --prefix "$prefix" >/dev/null

for f in bin/tarvokin bin/tarvokin-cli share/tarvokin/TARVOKIN.INI share/tarvokin/MODELES/DEMO.MDL \
         share/tarvokin/DATA/GENERIC.CSV share/applications/tarvokin.desktop \
         share/mime/packages/tarvokin.xml share/icons/hicolor/scalable/apps/tarvokin.svg; do
    [ -e "$prefix/$f" ] || { echo "missing from the install tree: $f"; exit 1; }
done
grep -q '^MimeType=application/x-tarvokin-model;' "$prefix/share/applications/tarvokin.desktop"
grep -q '^Categories=Science;Engineering;' "$prefix/share/applications/tarvokin.desktop"

# The installed program loads the demo and seeds a fresh user's folder.
home="$prefix/home"
out=$("$prefix/bin/tarvokin-cli" fields "$prefix/share/tarvokin/MODELES/DEMO.MDL" --home "$home")
grep -q '^F_GEO_SF.j6=2200$' <<<"$out" || { echo "the installed command-line program did not load the demo"; exit 1; }
[ -f "$home/TARVOKIN.INI" ] && [ -f "$home/MODELES/DEMO.MDL" ] || { echo "the user's folder was not seeded"; exit 1; }

# The application starts offscreen from the install tree on the demo and keeps
# running (a crash at start ends it before the time limit).
export QT_QPA_PLATFORM=offscreen
export XDG_RUNTIME_DIR=${XDG_RUNTIME_DIR:-$(mktemp -d)}
set +e
timeout 4 "$prefix/bin/tarvokin" --home "$home" "$home/MODELES/DEMO.MDL" >/dev/null 2>&1
status=$?
set -e
[ "$status" -eq 124 ] || { echo "the installed application ended at start with status $status"; exit 1; }
"$prefix/bin/tarvokin" --version | grep -q '^TARVOKIN 3.1$'
echo "install tree complete"
