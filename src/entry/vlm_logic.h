// The span-loading panel F_VLM: its computation button, the angle steps, the
// roll, flap and aileron sliders, its closing; and the design window's two
// buttons that open it on the wing or the stabiliser.
#pragma once

namespace tarvokin {

class Workbench;

void installVlmLogic(Workbench& wb);

}  // namespace tarvokin
