#include "entry/ribs_logic.h"

#include <cstdlib>

#include "airfoils/ribs_panel.h"
#include "core/workbench.h"
#include "views/rib_scene.h"
#include "core/messages.h"

namespace tarvokin {

namespace {

// The ribs and their 3D scene, after any change of a field.
void remake(Workbench& w) {
    MakeRibs(w);
    BuildRibScene(w);
}

}  // namespace

void installRibsLogic(Workbench& wb) {
    HandlerTable& h = wb.handlers;
    h.on("F_RIBS", "CB_1", Act::Change, [](Workbench& w, const Action& a) {
        RibAirfoilChosen(w, a.index);
        remake(w);
    });
    h.on("F_RIBS", "Option1", Act::Click, [](Workbench& w, const Action& a) {
        RibAlignChosen(w, a.index);
        remake(w);
    });
    h.on("F_RIBS", "Option1", Act::Change, [](Workbench& w, const Action& a) {
        if (w.sheet.on(F_RIBS::Option1[a.index])) RibAlignChosen(w, a.index);
        remake(w);
    });
    h.on("F_RIBS", "Option2", Act::Click, [](Workbench& w, const Action& a) {
        RibStyleChosen(w, a.index);
        remake(w);
    });
    h.on("F_RIBS", "Option2", Act::Change, [](Workbench& w, const Action& a) {
        if (w.sheet.on(F_RIBS::Option2[a.index])) RibStyleChosen(w, a.index);
        remake(w);
    });
    auto changed = [](Workbench& w, const Action&) { remake(w); };
    h.on("F_RIBS", "*", Act::Change, changed);
    h.on("F_RIBS", "*", Act::Scroll, changed);
    h.on("F_RIBS", "*", Act::Enter, changed);
    h.on("F_RIBS", "*", Act::Restored, [](Workbench& w, const Action& a) {
        // An airfoil put back is read again, then everything follows.
        if (a.control == "CB_1") RibAirfoilChosen(w, a.index);
        remake(w);
    });
    h.on("F_RIBS", "Command2", Act::Click, changed);  // "Compute"
    // Command3: the base file chosen in the dialog comes as the text.
    h.on("F_RIBS", "Command3", Act::Click, [](Workbench& w, const Action& a) {
        std::string error;
        const std::string message = SaveRibs(w, a.text, error);
        ShowMessage(w, "[#6] ", message.empty() ? error : message);
    });

    // The views: orbit and zoom of the 3D one, the read-out of the 2D one.
    h.onView("F_RIBS", "Picture1", Act::Press, [](Workbench& w, const Action& a) {
        RibViewPress(w, static_cast<int>(a.x), static_cast<int>(a.y));
    });
    h.onView("F_RIBS", "Picture1", Act::Move, [](Workbench& w, const Action& a) {
        RibViewDrag(w, static_cast<int>(a.x), static_cast<int>(a.y), a.button & 1, a.button & 2);
    });
    h.onView("F_RIBS", "Picture1", Act::Scroll, [](Workbench& w, const Action& a) {
        RibViewZoom(w, std::atof(a.text.c_str()));
    });
    // Picture2: the rib under the mouse, its index as the action's.
    h.onView("F_RIBS", "Picture2", Act::Move, [](Workbench& w, const Action& a) {
        const std::string text = a.index >= 0 ? RibReadout(w, static_cast<size_t>(a.index)) : "";
        if (w.sheet.text(F_RIBS::L_NERVURE) != text) w.sheet.set(F_RIBS::L_NERVURE, text);
    });
}

}  // namespace tarvokin
