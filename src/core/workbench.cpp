#include "core/workbench.h"

#include <utility>


namespace tarvokin {

Workbench::Workbench(std::filesystem::path home) : home_(std::move(home)) {}

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
    sheet.setItems(F_AERO::Combo5, names);
    sheet.setItems(F_TEST_POL::CB_1, names);
    sheet.setItems(F_PREFER::Combo1, std::move(names));
}

}  // namespace tarvokin
