// The fuselage window F_GEO_FUS: its two drawings' mouse, the kind options
// and the shape-factor sliders.
#pragma once

namespace tarvokin {

class Workbench;

void installFuselageLogic(Workbench& wb);

}  // namespace tarvokin
