#include "entry/panel_edit.h"

#include <string>
#include <utility>
#include <vector>

#include "design/grid_cells.h"
#include "design/recalc.h"
#include "core/numbers.h"
#include "core/profile_file.h"
#include "core/project_key.h"
#include "entry/project_io.h"
#include "core/workbench.h"

namespace tarvokin {

namespace {

struct Edit {
    const char* key;  // project key without the panel number
    Cell cell;
    std::string value;
};

int countSpans(const Workbench& wb, const grid::Row& length) {
    int n = 0;
    while (n < 5 && wb.sheet.val(length[static_cast<size_t>(n)]) > 0) ++n;
    return n;
}

// Applies the edits of one panel: through the project file when there is one
// (save, write the keys, load back), else straight into the cells. When the
// file cannot be written (the save has told the user why), the edits still
// reach the cells, so the modeller loses neither the file nor the edit.
void apply(Workbench& wb, const char* section, int panel, const std::vector<Edit>& edits) {
    const std::string n = std::to_string(panel + 1);
    if (!wb.projectFilePath.empty() && SaveProject(wb)) {
        bool written = true;
        for (const Edit& e : edits) written = written && WriteProjectKey(wb, section, e.key + n, e.value);
        if (written) {
            LoadProject(wb);
            return;
        }
    }
    for (const Edit& e : edits) wb.sheet.set(e.cell, e.value);
    RecalcAll(wb);
}

std::string copyOf(const Workbench& wb, Cell c) { return plain(wb.sheet.val(c)); }

}  // namespace

int WingPanelCount(const Workbench& wb) { return countSpans(wb, grid::kLength); }
int StabPanelCount(const Workbench& wb) { return countSpans(wb, grid::kStabLength); }

void AddWingPanel(Workbench& wb) {
    const int k = WingPanelCount(wb);
    if (k >= 5) return;
    const size_t last = static_cast<size_t>(k > 0 ? k - 1 : 0);
    const size_t i = static_cast<size_t>(k);
    const std::string tip = copyOf(wb, k > 0 ? grid::kTip[last] : F_GEO_SF::b5);
    const std::string span = k > 0 ? copyOf(wb, grid::kLength[last]) : "100";
    apply(wb, "Aile", k,
          {{"Saumon_", grid::kTip[i], tip},
           {"Longueur_", grid::kLength[i], span},
           {"Fleche_", grid::kSweep[i], "0"},
           {"Vrillage_", grid::kTwist[i], "0"},
           {"Diedre_", grid::kDihedral[i], k > 0 ? copyOf(wb, grid::kDihedral[last]) : "0"}});
}

void DeleteWingPanel(Workbench& wb) {
    const int k = WingPanelCount(wb);
    if (k <= 1) return;
    const size_t i = static_cast<size_t>(k - 1);
    apply(wb, "Aile", k - 1,
          {{"Saumon_", grid::kTip[i], "0"},
           {"Longueur_", grid::kLength[i], "0"},
           {"Fleche_", grid::kSweep[i], "0"},
           {"Vrillage_", grid::kTwist[i], "0"},
           {"Diedre_", grid::kDihedral[i], "0"}});
}

void AddStabPanel(Workbench& wb) {
    const int k = StabPanelCount(wb);
    if (k >= 5) return;
    const size_t last = static_cast<size_t>(k > 0 ? k - 1 : 0);
    const size_t i = static_cast<size_t>(k);
    apply(wb, "Stab", k,
          {{"Saumon_", grid::kStabTip[i], copyOf(wb, k > 0 ? grid::kStabTip[last] : F_GEO_STAB::b16)},
           {"Longueur_", grid::kStabLength[i], k > 0 ? copyOf(wb, grid::kStabLength[last]) : "100"},
           {"Fleche_", grid::kStabSweep[i], "0"}});
    // The stabiliser's variants recalculate after the load as well.
    if (!wb.projectFilePath.empty()) RecalcAll(wb);
}

void DeleteStabPanel(Workbench& wb) {
    const int k = StabPanelCount(wb);
    if (k <= 1) return;
    const size_t i = static_cast<size_t>(k - 1);
    apply(wb, "Stab", k - 1,
          {{"Saumon_", grid::kStabTip[i], "0"}, {"Longueur_", grid::kStabLength[i], "0"}, {"Fleche_", grid::kStabSweep[i], "0"}});
    if (!wb.projectFilePath.empty()) RecalcAll(wb);
}

}  // namespace tarvokin
