#include "core/workbench.h"

#include "core/text_case.h"

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
    // The wizard proposes the SD7080 while the modeller has chosen nothing.
    const std::string wizardChoice = sheet.text(F_WIZZARD::CB_1);
    sheet.setItems(F_WIZZARD::CB_1, names);
    if (wizardChoice.empty()) {
        for (size_t i = 0; i < names.size(); ++i) {
            if (upperCase(names[i]) == "SD7080") sheet.setListIndex(F_WIZZARD::CB_1, static_cast<int>(i));
        }
    }
    for (int i = 0; i < 2; ++i) sheet.setItems(F_RIBS::CB_1[i], names);
    sheet.setItems(F_AERO::Combo5, names);
    sheet.setItems(F_TEST_POL::CB_1, names);
    sheet.setItems(F_PREFER::Combo1, std::move(names));
}

}  // namespace tarvokin
