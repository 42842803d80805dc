// The preferences window F_PREFER: every field and switch goes to its run
// value (and, for the switches, to the settings file) as it changes. These
// are the program's settings, not the design: they stay out of the history.
#pragma once

namespace tarvokin {

class Workbench;

void installPreferencesLogic(Workbench& wb);

}  // namespace tarvokin
