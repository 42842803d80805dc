// Two calculators between a cross tail and a V tail. F_STAB ("Calcul de la
// Surface du Stab") works on surfaces, F_STAB_VE ("Equivalence Stab V <> Stab
// Normal") on chords and length. Neither touches the design.
#pragma once

#include "core/cells.h"

namespace tarvokin {

class Sheet;
class Workbench;

// F_STAB: from a cross tail (D11, D12) to the V tail's half panel D14, its
// dihedral D15 and the angle of the V D16; from a V tail's half panel D22 at
// the opening of Angle_V back to the cross tail D24, D25. Two decimals, "-"
// where a surface of zero leaves an angle undefined.
void Calc_V(Sheet& s);

// F_STAB_VE Command1, V to normal: each of Corde1V, Corde2V, LongueurV times
// sin(OuvertureV / 2), whole millimetres.
void StabVE_Command1(Sheet& s);
// F_STAB_VE Command2, normal to V: the inverse; an empty opening becomes 110.
void StabVE_Command2(Sheet& s);

// The change step of a field of F_STAB or F_STAB_VE (a press of Command1 or
// Command2 is a change of that cell). False for a cell of another window.
bool TailToolFieldChange(Workbench& wb, Cell c);

}  // namespace tarvokin
