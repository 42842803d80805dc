// The controls of the rib generator F_RIBS.
#pragma once

namespace tarvokin {

class Workbench;

void installRibsLogic(Workbench& wb);

}  // namespace tarvokin
