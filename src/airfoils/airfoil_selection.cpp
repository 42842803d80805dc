#include "airfoils/airfoil_selection.h"

#include <cmath>
#include <memory>

#include "airfoils/catalogue_edit.h"
#include "airfoils/polar_lookup.h"
#include "airfoils/xfoil_runner.h"
#include "core/profile_file.h"
#include "core/workbench.h"
#include "core/project_key.h"

namespace tarvokin {

namespace fs = std::filesystem;

const std::array<const char*, 6> kFigureRowTitles = {"Cxmin", "Czopt", "k", "Czdécroch", "Cm0", "Alpha0"};

namespace {

bool isGenericName(const std::string& name) { return name.find("Générique") != std::string::npos; }

}  // namespace

fs::path polarFile(const Workbench& wb, const std::string& listText, int reynolds) {
    std::string name = listText;
    if (isGenericName(listText)) {
        const size_t row = wb.catalogue.Find_Profil(listText);
        if (row != kNotFound) name = fs::path(wb.catalogue.rows[row].Path).stem().string();
    }
    return wb.home() / "POLAIRES" / (name + "_" + std::to_string(reynolds) + ".POL");
}

void refreshReynoldsEstimate(Workbench& wb) {
    Sheet& s = wb.sheet;
    const double re = Calc_Re(s.val(F_PROFILS::b6), s.val(F_PROFILS::b5), s.val(F_PROFILS::B4));
    s.setPlain(F_PROFILS::T_RE, re);
}

void SelectSlotAirfoil(Workbench& wb, int slot, const PolarComputer& compute) {
    if (slot < 0 || slot > 2) return;
    Sheet& s = wb.sheet;
    const Cell list = F_PROFILS::CB_1[slot];
    PolarTable& table = wb.polars.PolarTables[static_cast<size_t>(slot)];
    table.assign(static_cast<size_t>(kPolarTableStartRows), PolarTableRow{});

    const std::string text = s.text(list);
    const size_t row = wb.catalogue.Find_Profil(text);
    if (row != kNotFound) {
        Load_Profil(wb, wb.catalogue.rows[row].Path, slot, OutlineWindow::F_PROFILS);
        wb.slotOutlines[static_cast<size_t>(slot)] = wb.outlines.Outline;
        std::string position;
        s.set(F_PROFILS::T_EpRel[slot], Get_Thickness(wb, position));
        s.set(F_PROFILS::T_PosEp[slot], position);
    }
    refreshReynoldsEstimate(wb);
    if (!wb.projectFilePath.empty()) {
        WriteProjectKey(wb, "Modele", "Profil_" + std::to_string(slot), text);
    }
    const int last = static_cast<int>(wb.catalogue.rows.size()) - 1;
    if (s.listIndex(list) > last) s.setListIndex(list, last);

    // A new airfoil misses several polars: they are computed together, then
    // every polar is read in the order of the Reynolds numbers, as the runs
    // one at a time would have read them. A polar another program is
    // computing counts as missing: half written, it is no polar yet, and
    // the batch says why it leaves it alone.
    std::vector<int> missing;
    if (compute && wb.computePolars) {
        const auto probe = std::make_unique<PolarStore>();  // a read that changes nothing
        for (int i = 0; i < kReynoldsCount; ++i) {
            const int re = kStandardReynolds[static_cast<size_t>(i)];
            const fs::path file = polarFile(wb, text, re);
            if (polarBeingComputed(file) || !Read_Polar(*probe, file, slot, i)) missing.push_back(re);
        }
    }
    if (missing.size() > 1) {
        wb.computePolars(slot, missing);
        for (int i = 0; i < kReynoldsCount; ++i) {
            const int re = kStandardReynolds[static_cast<size_t>(i)];
            const fs::path file = polarFile(wb, text, re);
            if (!polarBeingComputed(file)) Read_Polar(wb.polars, file, slot, i);
        }
    } else {
        for (int i = 0; i < kReynoldsCount; ++i) {
            const int re = kStandardReynolds[static_cast<size_t>(i)];
            const fs::path file = polarFile(wb, text, re);
            const bool underWay = polarBeingComputed(file);
            if ((underWay || !Read_Polar(wb.polars, file, slot, i)) && compute) compute(slot, re);
        }
    }
    const PolarFigures& f = wb.polars.figures[static_cast<size_t>(slot)];
    s.setFixed(F_PROFILS::T_CXMin[slot], f.T_CXMin, 5);
    s.setFixed(F_PROFILS::T_CzOpt[slot], f.T_CzOpt, 4);
    s.setFixed(F_PROFILS::T_k[slot], f.T_k, 4);
    s.setFixed(F_PROFILS::T_Cz_Decroch[slot], f.T_Cz_Decroch, 5);
    fillFiguresGrid(wb);
}

FiguresGrid fillFiguresGrid(Workbench& wb) {
    FiguresGrid g;
    static constexpr int kDecimals[6] = {5, 4, 4, 5, 4, 2};
    bool catalogueChanged = false;
    for (int slot = 0; slot < kPolarSlots; ++slot) {
        const std::string name = wb.sheet.text(F_PROFILS::CB_1[slot]);
        for (int i = 0; i < kReynoldsCount; ++i) {
            const PolarRecord& r = wb.polars.Polars[static_cast<size_t>(slot)][static_cast<size_t>(i)];
            g.columnHeads.push_back(" Re " + std::to_string(r.Re));
            const double values[6] = {r.Cxmin, r.Czopt, r.k, r.Cz_Decroch, r.Cm0, r.Alpha0};
            for (int k = 0; k < 6; ++k) g.rows[static_cast<size_t>(k)].push_back(fixed(values[k], kDecimals[k]));
            // Only a polar that holds rows has figures: a slot whose polars
            // are not read yet, or a run that converged nowhere, would put
            // zeros in the catalogue.
            if (i == kReynoldsCount - 1 && !name.empty() && r.Cxmin > 0) {
                const size_t row = wb.catalogue.Find_Profil(name);
                if (row != kNotFound) {
                    CatalogueRow& c = wb.catalogue.rows[row];
                    const double cm0 = roundHalfAway(r.Cm0, 4), a0 = roundHalfAway(r.Alpha0, 4);
                    if (c.Cm0 != cm0 || c.Alpha0 != a0) {
                        c.Cm0 = cm0;
                        c.Alpha0 = a0;
                        catalogueChanged = true;
                    }
                }
            }
        }
    }
    // A new row's figures are known once its polars are read: keep them.
    if (catalogueChanged) Write_Generic(wb);
    return g;
}

}  // namespace tarvokin
