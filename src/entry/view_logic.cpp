#include "entry/view_logic.h"

#include <algorithm>
#include <charconv>

#include "core/numbers.h"
#include "core/profile_file.h"
#include "core/project_key.h"
#include "core/workbench.h"
#include "views/design_view.h"

namespace tarvokin {

namespace {

// The six colour samples of F_3D.command1(i).
constexpr Cell kSampleCells[6] = {F_3D::T_Backolor, F_3D::T_Ailes, F_3D::T_Stab,
                                  F_3D::T_Derive,   F_3D::T_Fus,   F_3D::T_Filaire};

ViewMouse mouseOf(const Action& a) { return ViewMouse{(a.button & 1) != 0, (a.button & 2) != 0, a.shift != 0}; }

}  // namespace

void installViewLogic(Workbench& wb) {
    HandlerTable& h = wb.handlers;
    h.onView("F_3D", "pb1", Act::Click, [](Workbench& w, const Action& a) { PressRenderButton(w, a.index); });
    h.onView("F_3D", "Check1", Act::Change, [](Workbench& w, const Action& a) { ViewSwitchChanged(w, a.index); });
    // A sample takes the colour as the decimal of its packed value.
    h.on("F_3D", "command1", Act::Click, [](Workbench& w, const Action& a) {
        if (a.index < 0 || a.index >= 6) return;
        PackedColour colour = 0;
        if (std::from_chars(a.text.data(), a.text.data() + a.text.size(), colour).ec != std::errc{}) return;
        SetViewColour(w, kSampleCells[a.index], colour);
    });
    // A background picture chosen for a view is kept in the project.
    h.onView("F_3D", "Command9", Act::Click, [](Workbench& w, const Action& a) {
        if (a.index < 0 || a.index >= 4 || a.text.empty() || w.projectFilePath.empty()) return;
        WriteProjectKey(w, "IMAGES", PhotoKey(a.index), a.text);
    });
    // The mouse on the 3D picture.
    h.onView("F_3D", "Picture3", Act::Press, [](Workbench& w, const Action& a) {
        ViewMousePress(w, static_cast<int>(a.x), static_cast<int>(a.y), mouseOf(a));
    });
    h.onView("F_3D", "Picture3", Act::Move, [](Workbench& w, const Action& a) {
        ViewMouseMove(w, static_cast<int>(a.x), static_cast<int>(a.y), mouseOf(a));
    });
    h.onView("F_3D", "Picture3", Act::Release, [](Workbench&, const Action&) {});
    // The wheel zooms as a right-button drag does, a notch being 15 pixels.
    h.onView("F_3D", "Picture3", Act::Scroll, [](Workbench& w, const Action& a) {
        AircraftView& v = w.view3d;
        const auto notches = static_cast<float>(leadingNumber(a.text));
        v.ViewDistance = std::max(0.0f, v.ViewDistance - notches * 15.0f * v.ZoomSensitivity);
        v.Framed = false;
    });
    // "Cadrer": the whole aircraft in the picture again.
    h.onView("F_3D", "PB_FIT", Act::Click, [](Workbench& w, const Action&) { FrameAircraft(w); });
}

}  // namespace tarvokin
