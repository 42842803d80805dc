// The reader of XFOIL's polar save file (.POL), the extension of a polar past
// its maximum lift, and Get_Cx, the drag lookup by slot, Reynolds number and
// lift coefficient that every performance curve goes through.
#pragma once

#include <filesystem>
#include <iosfwd>
#include <optional>

#include "core/polar_store.h"

namespace tarvokin {

class Workbench;

// Reads a .POL file into record reIndex of the slot (from the file's name when
// not given). True after a complete read; false when the slot or the index is
// bad (nothing touched), when the file can't be opened or has no "------" line
// (the record is left cleared), or when a number overflows (the record keeps
// what was read). Never throws on the file's content.
bool Read_Polar(PolarStore& store, const std::filesystem::path& file, int slot,
                std::optional<int> reIndex = std::nullopt);

// True when the polar file holds at least one row behind its header: XFOIL
// writes the header alone when no angle converged.
bool PolarHasRows(const std::filesystem::path& file);

// Cx of one slot at Reynolds number Re and lift coefficient Cz, rounded to 7
// decimals. Works on the fixed store only and allocates nothing. A bad slot
// gives 0. The Workbench form also shows "Probleme Noprofil >2" for a slot
// above 2, as the lookup always has.
double Get_Cx(const PolarStore& store, int slot, double Re, double Cz);
double Get_Cx(const Workbench& wb, int slot, double Re, double Cz);

}  // namespace tarvokin
