// The airfoil window's slot lists: a choice reads the slot's outline and
// polars and recalculates; an undo or a redo of a choice reads them again.
#pragma once

#include "airfoils/airfoil_selection.h"

namespace tarvokin {

class Workbench;

// The selection handler of CB_1(slot): the slot's airfoil read, then the
// master recalculation.
void CB_1_Click(Workbench& wb, int slot, const PolarComputer& compute);

// The window opens: each slot shows its airfoil; a slot whose airfoil the
// list lacks says so ("[#19] ") and takes its generic airfoil.
void FillAirfoilSlots(Workbench& wb);

// The analysis windows read the polars of the three slots; a project just
// opened has named them but not read them yet. Reads (or computes) them as
// the airfoil window does, then recalculates. Nothing when all are read.
bool SlotsNeedPolars(const Workbench& wb);
void EnsureSlotPolars(Workbench& wb);

// PB_PROFILE(slot): an outline file chosen for the slot is copied into the
// DATA folder, entered in the catalogue and chosen. False, with the "[#7] "
// message, when it cannot be copied.
bool AddAirfoilFile(Workbench& wb, int slot, const std::string& source);

void installAirfoilChoice(Workbench& wb);

}  // namespace tarvokin
