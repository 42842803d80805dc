// The rib generator window's fields and the rib generation: the airfoil of
// each end, the ribs at every change of a field, and the saving.
#pragma once

#include <filesystem>
#include <string>

#include "airfoils/ribs.h"

namespace tarvokin {

class Workbench;
class Sheet;

int RibAlignOf(const Sheet& s);
RibRequest RibRequestOf(const Workbench& wb);

// The airfoil of CB_1(end) (0 root, 1 tip) read into that end. A file that
// does not read leaves the end as it was and says so in StatusBar1.
bool RibAirfoilChosen(Workbench& wb, int end);

// An alignment or a style chosen: its flag set, the others cleared.
void RibAlignChosen(Workbench& wb, int align);
void RibStyleChosen(Workbench& wb, int style);

// The ribs from the fields into wb.generators.ribs; with a spacing, Text4
// shows their count. A failure keeps the last ribs and puts the reason in
// StatusBar1. True when made.
bool MakeRibs(Workbench& wb);

// Command3: one file a rib beside `base`; the closing message, or "" with
// `error` set.
std::string SaveRibs(Workbench& wb, const std::filesystem::path& base, std::string& error);

// "L: <chord> mm H: <height>" of the rib nearest to a span position (mm).
std::string RibReadout(const Workbench& wb, size_t rib);

}  // namespace tarvokin
