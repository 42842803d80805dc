#include "entry/analysis_logic.h"

#include "core/workbench.h"
#include "design/aspect_ratio.h"
#include "design/performance.h"

namespace tarvokin {

namespace {

// The arrows of a step group: index 0 goes down, 1 up.
int direction(const Action& a) { return a.index == 0 ? -1 : 1; }

}  // namespace

void installAnalysisLogic(Workbench& wb) {
    HandlerTable& h = wb.handlers;
    // F_GEO_3: the air steppers (altitude down/up, temperature down/up), the
    // cursor point, the chart rotation, and the window at constant speed.
    h.on("F_GEO_3", "Command1", Act::Click, [](Workbench& w, const Action& a) {
        static constexpr AirStep steps[4] = {AirStep::AltitudeDown, AirStep::AltitudeUp, AirStep::TemperatureDown,
                                             AirStep::TemperatureUp};
        if (a.index >= 0 && a.index < 4) F_GEO_3_Command1_Click(w, steps[a.index]);
    });
    h.on("F_GEO_3", "Command2", Act::Click,
         [](Workbench& w, const Action& a) { F_GEO_3_Command2_Click(w, direction(a)); });
    h.on("F_GEO_3", "Command3", Act::Click,
         [](Workbench& w, const Action& a) { F_GEO_3_Command3_Click(w, direction(a)); });
    h.on("F_GEO_3", "Command4", Act::Click, [](Workbench& w, const Action&) { F_GEO_3_Command4_Click(w); });
    // F_GEO_5: the imposed speed by steps of 5 km/h, the two scale sliders.
    h.on("F_GEO_5", "Command1", Act::Click,
         [](Workbench& w, const Action& a) { F_GEO_5_Command1_Click(w, direction(a)); });
    for (int which : {1, 2}) {
        h.on("F_GEO_5", which == 1 ? "VScroll1" : "VScroll2", Act::Scroll, [which](Workbench& w, const Action& a) {
            F_GEO_5_VScroll_Change(w, which, leadingNumber(a.text));
        });
    }
    // F_ALLONGEMENT: the chosen aspect ratio one down or up.
    h.on("F_ALLONGEMENT", "Command1", Act::Click,
         [](Workbench& w, const Action& a) { allongement::Command1_Click(w, a.index); });
}

}  // namespace tarvokin
