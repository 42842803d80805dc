// The NACA generator window's fields and the generator: what a change of the
// family, of an input, of the point count or of the distribution does, and the
// saving of the airfoil with its polar and its catalogue row.
#pragma once

#include <string>

#include "airfoils/naca_generator.h"
#include "core/cells.h"

namespace tarvokin {

class Workbench;
class Sheet;

// The family, inputs, count and distribution of the fields.
int NacaFamilyOf(const Sheet& s);
int NacaDistributionOf(const Sheet& s);
NacaRequest NacaRequestOf(const Sheet& s);

// A family chosen: its flag set and the others cleared, the captions, digit
// groups and the inputs at the family's values, then a generation.
void NacaFamilyChosen(Workbench& wb, int family);
// The captions and digit labels of the chosen family's inputs, in the run's language.
void NacaCaptions(Workbench& wb);
// A distribution chosen, the same way.
void NacaDistributionChosen(Workbench& wb, int distribution);

// An input typed (field) or moved (slider): the pair kept together, then a
// generation. `c` is any of T_DESIGN(i), HScroll4(i), T_NPP, H_Points.
void NacaInputChanged(Workbench& wb, Cell c);

// Generates from the fields into wb.generators.naca: Label5 gets the name,
// T_Thicknes the thickness, Camberline.TXT the mean line. A failure keeps the
// last airfoil and puts the reason in StatusBar1. True when generated.
bool Module1(Workbench& wb);

// Command2: DATA/<name>.DAT in file order, its polar at Re 100000, its row in
// the catalogue (every airfoil list shows it; the design's airfoils stay).
// Returns the line for the status bar; `ok` tells whether the file was written.
std::string SaveNaca(Workbench& wb, bool& ok);

}  // namespace tarvokin
