#include "entry/airfoil_choice.h"

#include <filesystem>

#include "airfoils/catalogue_edit.h"
#include "airfoils/polar_database.h"
#include "core/messages.h"
#include "core/text_case.h"
#include "core/workbench.h"
#include "design/recalc.h"

namespace tarvokin {

namespace {

// A solver run hands control to the event loop while it waits: a second
// choice then would start a nested selection over the same store. Refused.
class SelectionGuard {
public:
    explicit SelectionGuard(Workbench& wb) : wb_(wb), entered_(!wb.selectingAirfoil) {
        wb_.selectingAirfoil = true;
    }
    ~SelectionGuard() {
        if (entered_) wb_.selectingAirfoil = false;
    }
    bool entered() const { return entered_; }

private:
    Workbench& wb_;
    bool entered_;
};

}  // namespace

void CB_1_Click(Workbench& wb, int slot, const PolarComputer& compute) {
    SelectionGuard guard(wb);
    if (!guard.entered()) return;
    SelectSlotAirfoil(wb, slot, compute);
    RecalcAll(wb);
}

void FillAirfoilSlots(Workbench& wb) {
    static const char* fallback[3] = {"Générique Rapide", "Générique Début", "Générique Polyvalent"};
    for (int i = 0; i < 3; ++i) {
        if (wb.sheet.text(F_PROFILS::CB_1[i]).empty()) {
            ShowMessage(wb, "[#19] ", "Profil_" + std::to_string(i));
            wb.sheet.selectText(F_PROFILS::CB_1[i], fallback[i]);
        }
        CB_1_Click(wb, i, wb.computePolar);
    }
}

bool SlotsNeedPolars(const Workbench& wb) {
    for (int slot = 0; slot < 3; ++slot) {
        if (wb.sheet.text(F_PROFILS::CB_1[slot]).empty()) continue;
        bool any = false;
        for (const PolarRecord& r : wb.polars.Polars[static_cast<size_t>(slot)]) any = any || r.LastRow > 0;
        if (!any) return true;
    }
    return false;
}

void EnsureSlotPolars(Workbench& wb) {
    if (!SlotsNeedPolars(wb)) return;
    SelectionGuard guard(wb);
    if (!guard.entered()) return;
    for (int slot = 0; slot < 3; ++slot) {
        if (!wb.sheet.text(F_PROFILS::CB_1[slot]).empty()) SelectSlotAirfoil(wb, slot, wb.computePolar);
    }
    RecalcAll(wb);
}

bool AddAirfoilFile(Workbench& wb, int slot, const std::string& source) {
    namespace fs = std::filesystem;
    if (slot < 0 || slot > 2 || source.empty() || wb.selectingAirfoil) return false;
    const fs::path target = wb.home() / "DATA" / fs::path(source).filename();
    if (upperCase(source) != upperCase(target.string())) {
        std::error_code ec;
        fs::copy_file(source, target, fs::copy_options::overwrite_existing, ec);
        if (ec) {
            ShowMessage(wb, "[#7] ", ec.message());
            return false;
        }
    }
    Add_Profil(wb, slot, target.string());
    CB_1_Click(wb, slot, wb.computePolar);
    // The database window, when on display, shows the new airfoil in its tree.
    if (wb.isOpen(button::Base)) RefreshDatabaseTree(wb);
    return true;
}

void installAirfoilChoice(Workbench& wb) {
    wb.handlers.on("F_PROFILS", "CB_1", Act::Change,
                   [](Workbench& w, const Action& a) { CB_1_Click(w, a.index, w.computePolar); });
    // The polars were read when the choice was made: an undo finds them on disk.
    wb.handlers.on("F_PROFILS", "CB_1", Act::Restored,
                   [](Workbench& w, const Action& a) { SelectSlotAirfoil(w, a.index, nullptr); });
    wb.handlers.on("F_PROFILS", "PB_PROFILE", Act::Click,
                   [](Workbench& w, const Action& a) { AddAirfoilFile(w, a.index, a.text); });
    // "Toutes" and "Aucune": every Reynolds number of the charts on or off.
    for (const char* button : {"Command1", "Command2"}) {
        const bool on = button[7] == '1';
        wb.handlers.on("F_PROFILS", button, Act::Click, [on](Workbench& w, const Action&) {
            for (int r = 0; r < 6; ++r) w.sheet.set(F_PROFILS::Check1[r], on ? "1" : "0");
        });
    }
}

}  // namespace tarvokin
