#!/usr/bin/env bash
# The floors of the source tree: a folder includes only itself and the folders
# below it, and nothing outside a ui/ folder includes Qt. Prints each include
# that goes up and fails when there is one.
#
#   core                                     the sheet and the state of a run
#   airfoils < design < power < views < construction   the calculations
#   project                                  the project file's keys
#   entry                                    window logic, load/save with the recalculation, undo
#   shell                                    start-up, session commands, the command-line program
#   */ui in the same order, then app/
set -euo pipefail
cd "$(dirname "$0")/.."

rank() {
    case "$1" in
        core) echo 0 ;; airfoils) echo 1 ;; design) echo 2 ;; power) echo 3 ;; views) echo 4 ;;
        construction) echo 5 ;; project) echo 6 ;; entry) echo 7 ;; shell) echo 8 ;;
        */ui) echo $((10 + $(rank "${1%/ui}"))) ;;
        app) echo 30 ;;
        *) echo 99 ;;
    esac
}

bad=0
while IFS= read -r file; do
    dir=${file#src/}
    dir=${dir%/*}
    case "$file" in app/*) dir=app ;; esac
    own=$(rank "$dir")
    while IFS= read -r inc; do
        target=${inc%/*}
        if [ "$(rank "$target")" -gt "$own" ]; then
            echo "$file includes $inc (floor of $target is above $dir)"
            bad=1
        fi
    done < <(sed -n 's/^#include "\([a-z_]*\(\/ui\)\{0,1\}\/[^"]*\)".*/\1/p' "$file")
    case "$dir" in
        */ui|app) ;;
        *) if grep -qE '^#include <Q' "$file"; then echo "$file includes Qt outside a ui folder"; bad=1; fi ;;
    esac
done < <(git ls-files 'src/*.h' 'src/*.cpp' 'src/*.def' 'app/*.cpp'; git ls-files --others --exclude-standard 'src/*.h' 'src/*.cpp')

if [ "$bad" -ne 0 ]; then
    echo "The floors are broken: move the code down or the include up." >&2
    exit 1
fi
echo "Floors respected."
