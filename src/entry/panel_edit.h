// Adding and deleting a panel of the wing or the stabiliser from the design
// window. The change goes through the project file (save, change the panel's
// keys, read back) so that every field that depends on the panel count is
// rebuilt by the one path that loads a project.
#pragma once

namespace tarvokin {

class Workbench;

// Number of panels with a span, counted from the root (the first panel
// without a span ends the wing).
int WingPanelCount(const Workbench& wb);
int StabPanelCount(const Workbench& wb);

// A new panel continues the last one: its tip chord is the last tip chord
// (a straight panel), its span the last span, no sweep and no twist, the same
// dihedral. Nothing happens at five panels.
void AddWingPanel(Workbench& wb);
void AddStabPanel(Workbench& wb);

// Clears the last panel; the first panel always stays.
void DeleteWingPanel(Workbench& wb);
void DeleteStabPanel(Workbench& wb);

}  // namespace tarvokin
