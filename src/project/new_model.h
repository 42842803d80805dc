// A complete new model from the twenty figures of the wizard (F_WIZZARD):
// a one-panel wing, a one-panel stabiliser, one fin and eight fuselage
// frames placed by rule. The fields are filled here; saving, loading and the
// frame figures belong to the caller.
#pragma once

#include <string>

#include "views/plan.h"

namespace tarvokin {

class Sheet;

// The project name the wizard's Text1 gives: up to the first ".", blanks cut
// out; "Test" when the field is empty.
std::string WizardModelName(const std::string& text);

// Copies the wizard's figures into the design panels (wing, stabiliser, fin,
// fuselage, masses, airfoil).
void FillNewModelFields(Sheet& s);

// Frame markers of the new fuselage: side and top markers at the stations of
// the rule (a third of the second, half the nose distance, the wing's leading
// and trailing edges, three evenly behind, the tail), and the frame-rib table
// by fuselage type.
void PlaceNewModelFrames(Sheet& s);

// The station of each of the eight markers, for a nose distance, root chord
// and length.
double NewModelStation(int marker, double nose, double rootChord, double length);

// The wizard's preview: the model seen from above in millimetres, x across
// (span), y along the fuselage from the wing's leading edge, the nose at
// -Text20. A sketch: wing, stabiliser and fin as plain outlines, the fuselage
// through fixed ratios of its width.
Plan WizardPreview(const Sheet& s);

}  // namespace tarvokin
