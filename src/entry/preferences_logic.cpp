#include "entry/preferences_logic.h"

#include <string>

#include "core/settings.h"
#include "core/workbench.h"

namespace tarvokin {

void installPreferencesLogic(Workbench& wb) {
    HandlerTable& h = wb.handlers;
    // Text1..Text8 by their number.
    for (int n = 1; n <= 8; ++n) {
        h.onView("F_PREFER", "Text" + std::to_string(n), Act::Change,
                 [n](Workbench& w, const Action&) { preferenceFieldChanged(w.settings, w.sheet, n); });
    }
    for (const char* check : {"Check1", "Check2", "Check3", "Check4", "Check5"}) {
        h.onView("F_PREFER", check, Act::Change, [check](Workbench& w, const Action&) {
            preferenceClicked(w.settings, w.sheet, w.settingsFilePath(), check);
        });
    }
    // The two centring options exclude each other.
    h.onView("F_PREFER", "Option1", Act::Change, [](Workbench& w, const Action& a) {
        for (int k = 0; k < 2; ++k) w.sheet.set(F_PREFER::Option1[k], k == a.index ? "1" : "0");
        preferenceClicked(w.settings, w.sheet, w.settingsFilePath(), "Option1", a.index);
    });
    // "..." beside the solver's path: the chosen program.
    h.onView("F_PREFER", "Command1", Act::Click, [](Workbench& w, const Action& a) {
        if (a.text.empty()) return;
        w.sheet.set(F_PREFER::Text4, a.text);
        preferenceFieldChanged(w.settings, w.sheet, 4);
    });
    // A generic airfoil shows its outline file; "..." points it at another.
    h.onView("F_PREFER", "Combo1", Act::Change, [](Workbench& w, const Action&) {
        const int row = w.sheet.listIndex(F_PREFER::Combo1);
        if (row >= 0 && static_cast<size_t>(row) < w.catalogue.rows.size())
            w.sheet.set(F_PREFER::Text9, w.catalogue.rows[static_cast<size_t>(row)].Path);
    });
    h.onView("F_PREFER", "Command2", Act::Click, [](Workbench& w, const Action& a) {
        if (a.text.empty()) return;
        w.sheet.set(F_PREFER::Text9, a.text);
        const int row = w.sheet.listIndex(F_PREFER::Combo1);
        if (row >= 0 && static_cast<size_t>(row) < w.catalogue.rows.size() &&
            w.catalogue.rows[static_cast<size_t>(row)].Profil.find("Générique") != std::string::npos) {
            w.catalogue.rows[static_cast<size_t>(row)].Path = a.text;
        }
    });
}

}  // namespace tarvokin
