// The frame generator Gen_Couples_2 ("Générateur de Couples"), its 3D piece
// Gen_Couples_1 and its assembly view.
#pragma once

#include <string>

namespace tarvokin {

class Workbench;

void installFrameLogic(Workbench& wb);

// The frame state follows the generator's cells (counts, order, thickness,
// doubling, mode), and the cells show the frame state (after a project is
// read: the window shows what was saved).
void FrameFromCells(Workbench& wb);
void CellsFromFrame(Workbench& wb);

// The start outline of "Nouveau Couple", shipped with the program.
std::string FrameStartOutline(const Workbench& wb);

// Rebuilds the 3D piece from the frame and the Gen_Couples_1 choices.
void RebuildFramePiece(Workbench& wb);

}  // namespace tarvokin
