// The controls of the NACA generator F_NACA.
#pragma once

namespace tarvokin {

class Workbench;

void installNacaLogic(Workbench& wb);

}  // namespace tarvokin
