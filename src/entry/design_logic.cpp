#include "entry/design_logic.h"

#include "core/numbers.h"
#include "core/workbench.h"
#include "entry/field_rules.h"
#include "entry/panel_edit.h"
#include "entry/session.h"
#include "design/tail_tools.h"
#include "power/motorisation.h"

namespace tarvokin {

namespace {

void open(Workbench& wb, int button) {
    if (!wb.isOpen(button)) TogglePanel(wb, button);
}

}  // namespace

void installDesignLogic(Workbench& wb) {
    HandlerTable& h = wb.handlers;
    h.on("F_3D", "PB_ADD_PAN", Act::Click, [](Workbench& w, const Action&) { AddWingPanel(w); });
    h.on("F_3D", "PB_DEL_PAN", Act::Click, [](Workbench& w, const Action&) { DeleteWingPanel(w); });
    h.on("F_3D", "PB_STAB_ADD_PAN", Act::Click, [](Workbench& w, const Action&) { AddStabPanel(w); });
    h.on("F_3D", "PB_STAB_DEL_PAN", Act::Click, [](Workbench& w, const Action&) { DeleteStabPanel(w); });

    // The geometry panels, as their toolbar buttons open and close them.
    h.onView("F_3D", "PB_SF", Act::Click, [](Workbench& w, const Action&) { TogglePanel(w, button::Wing); });
    h.onView("F_3D", "PB_ALL", Act::Click, [](Workbench& w, const Action&) {
        open(w, button::Wing);
        open(w, button::Reglages);
    });
    for (const char* b : {"PB_STAB", "PB_DERIVE"})
        h.onView("F_3D", b, Act::Click, [](Workbench& w, const Action&) { TogglePanel(w, button::Stab); });
    h.onView("F_3D", "PB_FUS", Act::Click, [](Workbench& w, const Action&) { TogglePanel(w, button::Fuselage); });
    // The motor tab shows the motor figures of the moment.
    h.onView("F_3D", "SSTab1", Act::Click, [](Workbench& w, const Action& a) {
        if (a.index == kMotorTab) RefreshMotorTab(w);
    });

    // The tail calculators: the cross tail's figures as the window shows,
    // and the two conversions of the V tail window.
    h.onView("F_STAB", "Form_Activate", Act::Click, [](Workbench& w, const Action&) { Calc_V(w.sheet); });
    h.on("F_STAB_VE", "Command1", Act::Click, [](Workbench& w, const Action&) { StabVE_Command1(w.sheet); });
    h.on("F_STAB_VE", "Command2", Act::Click, [](Workbench& w, const Action&) { StabVE_Command2(w.sheet); });

    // The centre of gravity: the static margin typed as the slider stands,
    // and recalculated at each position (fast enough to follow the drag).
    h.on("F_3D", "Slider1", Act::Scroll, [](Workbench& w, const Action& a) {
        using F_GEO_SF_REGLAGES::C29;
        const std::string margin = plain(leadingNumber(a.text) / kMarginSteps);
        if (w.sheet.text(C29) == margin) return;
        w.sheet.set(C29, margin);
        onFieldChange(w, C29);
        onFieldEnter(w, C29);
    });
}

}  // namespace tarvokin
