#include "entry/fuselage_logic.h"

#include "construction/fuselage_shape.h"
#include "core/workbench.h"
#include "design/recalc.h"
#include "views/aircraft_mesh.h"

namespace tarvokin {

namespace {

constexpr int kRightButton = 2;

// The 3D model follows once: through the design window when it is open (its
// plans redraw with it), else the scene alone.
void rebuildAircraft(Workbench& wb) {
    auto it = wb.panelRefresh.find(button::View3D);
    if (wb.isOpen(button::View3D) && it != wb.panelRefresh.end() && it->second)
        it->second(wb);
    else
        BuildAircraftKeepView(wb);
}

void installDrawing(Workbench& wb, const char* picture, FuselageView view) {
    HandlerTable& h = wb.handlers;
    h.on("F_GEO_FUS", picture, Act::Press, [view](Workbench& w, const Action& a) {
        FuselagePress(w, view, a.x, a.y);
        if (a.button & kRightButton) UpdateFuselageFigures(w);
    });
    h.on("F_GEO_FUS", picture, Act::Move, [view](Workbench& w, const Action& a) {
        if (a.button == 0) return;  // a hover moves nothing
        if (!FuselageMove(w, view, a.x, a.y)) return;
        if (a.button & kRightButton) UpdateFuselageFigures(w);
    });
    h.on("F_GEO_FUS", picture, Act::Release, [view](Workbench& w, const Action&) {
        if (static_cast<int>(w.sheet.val(F_GEO_FUS::T_Marker)) == kNoMarker) return;
        FuselageRelease(w);
        // The side view carries the stations and heights the centring reads:
        // the master recalculation runs; both views then show the figures of
        // the body they describe.
        if (view == FuselageView::Side) RecalcAll(w);
        UpdateFuselageFigures(w);
    });
}

}  // namespace

void installFuselageLogic(Workbench& wb) {
    installDrawing(wb, "Picture1", FuselageView::Side);
    installDrawing(wb, "Picture2", FuselageView::Top);
    HandlerTable& h = wb.handlers;

    // The kind of body: one option of three.
    const Cell options[3] = {F_GEO_FUS::Option1, F_GEO_FUS::Option2, F_GEO_FUS::Option3};
    for (int i = 0; i < 3; ++i) {
        const char* name[3] = {"Option1", "Option2", "Option3"};
        h.on("F_GEO_FUS", name[i], Act::Change, [options, i](Workbench& w, const Action&) {
            if (!w.sheet.on(options[i])) return;
            for (int j = 0; j < 3; ++j)
                if (j != i) w.sheet.set(options[j], "0");
            UpdateFuselageFigures(w);
            rebuildAircraft(w);
        });
    }

    // The shape factors: the drawings follow each step (the window redraws
    // after every entry), the figures too; the 3D model once, at the end.
    for (const char* slider : {"HScroll1", "HScroll2", "VScroll1", "VScroll2", "VScroll3"}) {
        h.on("F_GEO_FUS", slider, Act::Scroll, [](Workbench& w, const Action&) { UpdateFuselageFigures(w); });
        h.on("F_GEO_FUS", slider, Act::ScrollEnd, [](Workbench& w, const Action&) { rebuildAircraft(w); });
        // A value typed (the command line's --set) is a whole drag.
        h.on("F_GEO_FUS", slider, Act::Enter, [](Workbench& w, const Action&) {
            UpdateFuselageFigures(w);
            rebuildAircraft(w);
        });
    }
}

}  // namespace tarvokin
