#include "entry/vlm_logic.h"

#include "core/numbers.h"
#include "core/workbench.h"
#include "design/vlm.h"

namespace tarvokin {

void installVlmLogic(Workbench& wb) {
    HandlerTable& h = wb.handlers;
    registerVlmPanel(wb);
    h.on("F_VLM", "Command1", Act::Click, [](Workbench& w, const Action&) { VlmCommand1(w); });
    h.on("F_VLM", "Command2", Act::Click, [](Workbench& w, const Action& a) { vlm::Command2_Click(w, a.index); });
    // The sliders write the fields they stand for (both sides for the flaps
    // and the ailerons) and recompute.
    auto slider = [](void (*change)(Workbench&, int)) {
        return [change](Workbench& w, const Action& a) { change(w, static_cast<int>(leadingNumber(a.text))); };
    };
    h.on("F_VLM", "Hscroll1", Act::Scroll, slider(vlm::Hscroll1_Change));
    h.on("F_VLM", "Hscroll2", Act::Scroll, slider(vlm::Hscroll2_Change));
    h.on("F_VLM", "Hscroll3", Act::Scroll, slider(vlm::Hscroll3_Change));
    // Opening and closing the panel: Tag 29 tells which surface it shows.
    h.onView("F_VLM", "Form_Unload", Act::Click, [](Workbench& w, const Action&) { CloseVlm(w); });
    h.onView("F_3D", "Command5", Act::Click, [](Workbench& w, const Action&) { OpenVlm(w, VlmSurface::Wing); });
    h.onView("F_3D", "Command7", Act::Click, [](Workbench& w, const Action&) { OpenVlm(w, VlmSurface::Stab); });
}

}  // namespace tarvokin
