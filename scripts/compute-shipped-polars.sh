#!/usr/bin/env bash
# Computes the six polars of every outline shipped in data/DATA with XFOIL,
# through the program's own solver runs (tarvokin-cli compute-polar) and the
# XFOIL settings of the shipped TARVOKIN.INI, then writes each airfoil's Cm0
# and Alpha0 (from its 1500000 polar, 4 decimals) into data/DATA/GENERIC.CSV.
# Rerunnable: ./scripts/compute-shipped-polars.sh [NAME...]
set -euo pipefail
cd "$(dirname "$0")/.."
cli=build/tarvokin-cli
[ -x "$cli" ] || scripts/build.sh

# Work in a copy of the installation so that the shipped folder gets nothing
# but the polars and the catalogue.
home=$(mktemp -d /tmp/tarvokin-polars.XXXXXX)
trap 'rm -rf "$home"' EXIT
cp -r data/. "$home"

names=("$@")
if [ ${#names[@]} -eq 0 ]; then
  for f in data/DATA/*.DAT; do names+=("$(basename "$f" .DAT)"); done
fi

for name in "${names[@]}"; do
  for re in 25000 50000 100000 220000 750000 1500000; do
    "$cli" compute-polar "data/DATA/$name.DAT" "$name" "$re" --home "$home" \
      --out "data/POLAIRES/${name}_${re}.POL" >/dev/null
  done
  echo "$name: six polars"
done

# Catalogue rows: the generic names first (each the alias of an outline), then
# every outline in ascending order of name, with the figures of its 1500000 polar.
figures() {
  "$cli" polar "data/POLAIRES/$1_1500000.POL" |
    awk -F= '$1=="Cm0"{cm=$2} $1=="Alpha0"{a=$2} END{printf "%.4f;%.4f", cm, a}'
}
{
  printf 'Profil;Re Ref;Cxmin;Czopt;k;Cz decrochange;Cm0;Alpha0;Path\r\n'
  printf 'Générique Rapide;%s;DATA/MH32.DAT\r\n' "$(figures MH32)"
  printf 'Générique Début;%s;DATA/CLARKY.DAT\r\n' "$(figures CLARKY)"
  printf 'Générique Polyvalent;%s;DATA/SD7037.DAT\r\n' "$(figures SD7037)"
  for f in $(ls data/DATA/*.DAT | sort); do
    n=$(basename "$f" .DAT)
    printf '%s;%s;DATA/%s.DAT\r\n' "$n" "$(figures "$n")" "$n"
  done
} | sed -E 's/(-?[0-9]+\.[0-9]*[1-9])0+;/\1;/g; s/\.0+;/;/g' | iconv -f utf-8 -t latin1 > data/DATA/GENERIC.CSV.new
mv data/DATA/GENERIC.CSV.new data/DATA/GENERIC.CSV
echo "data/DATA/GENERIC.CSV rewritten"
