// Choosing the airfoil of a slot: its outline, its six polars (the missing
// ones computed), the figures of the window and the catalogue's cached Cm0
// and Alpha0.
#pragma once

#include <array>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "airfoils/outline.h"

namespace tarvokin {

class Workbench;

// Computes and reads the polar of a slot at a standard Reynolds number when
// its file is missing; true when the record was filled. The GUI runs XFOIL
// with a progress bar, the command-line program without one.
using PolarComputer = std::function<bool(int slot, int reynolds)>;

// The polar file of a catalogue row at a Reynolds number: a generic row
// stands for the outline file its path names, and that file's base name is
// the polar's name; any other row's polars bear the row's own name.
std::filesystem::path polarFile(const Workbench& wb, const std::string& listText, int reynolds);

// What choosing the airfoil of a slot reads and shows: the outline, the six
// polars (the missing ones computed), the figures, the Reynolds estimate, and
// the slot's key in the project file. The recalculation is the caller's.
void SelectSlotAirfoil(Workbench& wb, int slot, const PolarComputer& compute);

// The grid of figures: six rows ("Cxmin", "Czopt", "k", "Czdécroch", "Cm0",
// "Alpha0") by 3 x 6 columns (slot by Reynolds record), as the grid shows them.
// Filling it updates the catalogue's Cm0 and Alpha0 of each slot's airfoil
// from its 1500000 record, rounded to 4 decimals.
struct FiguresGrid {
    std::vector<std::string> columnHeads;             // " Re " + value, per slot and record
    std::array<std::vector<std::string>, 6> rows;     // texts, one per column
};
extern const std::array<const char*, 6> kFigureRowTitles;
FiguresGrid fillFiguresGrid(Workbench& wb);

// Reynolds estimate of the window's frame into T_RE.
void refreshReynoldsEstimate(Workbench& wb);

}  // namespace tarvokin
