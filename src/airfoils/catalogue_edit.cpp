#include "airfoils/catalogue_edit.h"

#include <cmath>

#include "core/profile_file.h"
#include "core/text_case.h"
#include "core/workbench.h"
#include "core/project_key.h"

namespace tarvokin {

namespace fs = std::filesystem;

namespace {

bool isGeneric(const CatalogueRow& r) { return r.Profil.find("Générique") != std::string::npos; }

}  // namespace

void Write_Generic(const Workbench& wb) {
    std::string reason;
    if (!wb.catalogue.write(wb.catalogueFilePath(), &reason)) ReportWriteFailure(wb, wb.catalogueFilePath(), reason);
}

void Add_Profil(Workbench& wb, int slot, const std::string& fileIn, int keep) {
    if (slot < 0 || slot > 2) return;
    std::string file = fileIn;
    std::string name = fs::path(file).filename().string();
    if (name.find('.') == std::string::npos) {
        name += ".DAT";
        file += ".DAT";
    }
    if (fs::path(file).parent_path().empty()) file = (wb.home() / name).string();
    name = name.size() > 4 ? name.substr(0, name.size() - 4) : std::string();

    Sheet& s = wb.sheet;
    if (keep == 0 && !wb.projectFilePath.empty()) {
        WriteProjectKey(wb, "Modele", "Profil_" + std::to_string(slot), s.text(F_PROFILS::CB_1[slot]));
    }

    int others[3];
    for (int i = 0; i < 3; ++i) others[i] = s.listIndex(F_PROFILS::CB_1[i]);

    auto& rows = wb.catalogue.rows;
    size_t at = wb.catalogue.Find_Profil(name);
    if (at != kNotFound) {
        if (rows[at].Path != file) rows[at].Path = file;
    } else {
        CatalogueRow row{upperCase(name), 0.0, 0.0, upperCase(file)};
        const std::string key = row.Profil;
        at = rows.size();
        for (size_t i = 0; i < rows.size(); ++i) {
            if (isGeneric(rows[i])) continue;
            if (upperCase(rows[i].Profil) > key) {
                at = i;
                break;
            }
        }
        rows.insert(rows.begin() + static_cast<std::ptrdiff_t>(at), row);
        // The other slots stay on their airfoils, which moved one place down.
        for (int i = 0; i < 3; ++i) {
            if (i != slot && others[i] >= static_cast<int>(at)) ++others[i];
        }
    }
    rows[at].Cm0 = 0.0;
    rows[at].Alpha0 = 0.0;

    wb.fillAirfoilLists();
    for (int i = 0; i < 3; ++i) {
        const Cell c = F_PROFILS::CB_1[i];
        if (i == slot) {
            s.setListIndex(c, static_cast<int>(at));
        } else if (others[i] >= -1 && others[i] < static_cast<int>(rows.size())) {
            s.setListIndex(c, others[i]);
        }
    }
    Write_Generic(wb);
}

double Calc_Re(double speedKmh, double areaDm2, double spanM) {
    if (spanM == 0.0) return 0.0;
    return std::trunc(speedKmh * 70 / 3.6 * 10 * areaDm2 / spanM / 1000 * 1000);
}

}  // namespace tarvokin
