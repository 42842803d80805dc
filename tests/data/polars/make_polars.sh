#!/bin/sh
# Remakes the polar fixtures with XFOIL (Debian package xfoil; it needs an X
# display even when it draws nothing, hence xvfb-run). Run from this folder.
set -e
outline=${1:-../../../data/DATA/CLARKY.DAT}

run() {  # file, Reynolds number, first alpha, last alpha, step
    rm -f "$1"
    printf 'LOAD %s\nPANE\nOPER\nVISC %s\nITER 150\nPACC\n%s\n\nASEQ %s %s %s\n\nQUIT\n' \
        "$outline" "$2" "$1" "$3" "$4" "$5" | xvfb-run -a xfoil >/dev/null 2>&1 || true
}

for re in 25000 50000 100000 220000 750000 1500000; do
    run "CLARKY_$re.POL" "$re" -4 14 0.25
done
# More than 146 rows.
run CLARKY_LONG_220000.POL 220000 -5 14 0.12
