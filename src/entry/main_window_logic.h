// The main window's commands that reach the design: the toolbar's panel
// buttons and "Fermer toutes les fenêtres", and undo and redo. They open and
// close windows or walk the history, so none of them is itself an entry of
// the history.
#pragma once

namespace tarvokin {

class Workbench;

void installMainWindowLogic(Workbench& wb);

}  // namespace tarvokin
