#include "shell/workbench.h"

#include <utility>

#include "design/performance.h"
#include "design/vlm.h"
#include "power/motorisation.h"
#include "power/power_fields.h"

namespace tarvokin {

Workbench::Workbench(std::filesystem::path home) : home_(std::move(home)) {
    // The analysis panels whose refresh is plain calculation register here;
    // a window may wrap its entry to redraw after it.
    registerPerformancePanels(*this);
    registerVlmPanel(*this);
    // The aspect-ratio step is followed by the motor figures of the design
    // window, which read the same masses and loadings.
    panelRefresh[button::Allongement] = [](Workbench& wb) {
        MajAllongement(wb);
        MajMotorisation(wb);
    };
    registerPowerPanels(*this);
}

bool Workbench::isOpen(int buttonPosition) const {
    if (!F_Main::Toolbar2.holds(buttonPosition)) return false;
    return sheet.val(F_Main::Toolbar2[buttonPosition]) == 1.0;
}

void Workbench::setOpen(int buttonPosition, bool open) {
    if (!F_Main::Toolbar2.holds(buttonPosition)) return;
    sheet.set(F_Main::Toolbar2[buttonPosition], open ? "1" : "0");
}

void Workbench::fillAirfoilLists() {
    std::vector<std::string> names = catalogue.names();
    sheet.setItems(F_3D::Combo5, names);
    for (int i = 0; i < 3; ++i) sheet.setItems(F_PROFILS::CB_1[i], names);
    sheet.setItems(F_PREFER::Combo1, std::move(names));
}

}  // namespace tarvokin
