// Changes to the catalogue made from the airfoil window: adding an outline
// file, and the Reynolds estimate of the window's frame.
#pragma once

#include <string>

namespace tarvokin {

class Workbench;

// Adds the outline `file` (with or without a folder) to the catalogue and
// puts it in the list of airfoil slot `slot`. A name already listed (in any
// letter case) only has its path replaced; a new row is inserted behind the
// generic rows in ascending order of upper-case name, and the other two slots
// stay on their airfoils. keep = 0 first writes the slot's present airfoil to
// the project file. The catalogue file is rewritten.
void Add_Profil(Workbench& wb, int slot, const std::string& file, int keep = 0);

// Rewrites DATA/GENERIC.CSV from the catalogue.
void Write_Generic(const Workbench& wb);

// Mean Reynolds number of flight: 70 x speed in m/s x mean chord in mm, the
// mean chord being 10 x area / span; only the last step truncates.
double Calc_Re(double speedKmh, double areaDm2, double spanM);

}  // namespace tarvokin
