#include "entry/power_logic.h"

#include "core/workbench.h"
#include "power/motor_table.h"

namespace tarvokin {

void installPowerLogic(Workbench& wb) {
    // The motor comes as "make<TAB>model", the two columns it is known by.
    auto take = [](Workbench& w, const Action& a) {
        const size_t tab = a.text.find('\t');
        if (tab == std::string::npos) return;
        CandidateClicked(w, std::string_view(a.text).substr(0, tab), std::string_view(a.text).substr(tab + 1));
    };
    wb.handlers.on("F_CALC_MOT", "tvwDB", Act::Click, take);
    wb.handlers.on("F_CALC_MOT", "MSFlexGrid1", Act::Click, take);
}

}  // namespace tarvokin
