// The view area of the design window: the drawing buttons, the part
// switches, the colour samples, the background pictures and the mouse on the
// 3D picture (orbit, centre, zoom, hover). Only the colours are part of the
// design; the rest changes what is shown and stays out of the history.
#pragma once

namespace tarvokin {

class Workbench;

void installViewLogic(Workbench& wb);

}  // namespace tarvokin
