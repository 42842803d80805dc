#include "entry/frame_logic.h"

#include <algorithm>
#include <cmath>

#include "construction/frame_curve.h"
#include "construction/frame_files.h"
#include "construction/frame_mesh.h"
#include "core/messages.h"
#include "core/numbers.h"
#include "core/workbench.h"

namespace tarvokin {

namespace {

using namespace Gen_Couples_2;

void tell(Workbench& wb, const std::string& text) {
    ShowMessage(wb, "[#5] ", text);
}

int wholeCell(const Workbench& wb, Cell c, int def) {
    double v = 0;
    if (!tryNumber(wb.sheet.text(c), v) || !std::isfinite(v)) return def;
    return static_cast<int>(std::lround(v));
}

void ensureFrame(Workbench& wb) {
    if (wb.frame.ControlPoints.empty()) {
        InitFrameGenerator(wb.frame);
        CellsFromFrame(wb);
    }
}

bool mainHandles(const Workbench& wb) { return !wb.sheet.on(Option4); }

void setMode(Workbench& wb, bool slaved) {
    wb.frame.Slaved = slaved;
    wb.sheet.set(Option5, slaved ? "1" : "0");
    wb.sheet.set(Option6, slaved ? "0" : "1");
    wb.sheet.set(L_Mode, slaved ? "Mode asservi" : "Mode découplé");
    if (slaved) ApplyDoubling(wb.frame);
    RecomputeFrameCurves(wb.frame);
}

void pair(HandlerTable& h, const char* a, const char* b, Cell ca, Cell cb, void (*after)(Workbench&, bool)) {
    h.on("Gen_Couples_2", a, Act::Change, [ca, cb, after](Workbench& w, const Action&) {
        if (!w.sheet.on(ca)) return;
        w.sheet.set(cb, "0");
        if (after) after(w, true);
    });
    h.on("Gen_Couples_2", b, Act::Change, [ca, cb, after](Workbench& w, const Action&) {
        if (!w.sheet.on(cb)) return;
        w.sheet.set(ca, "0");
        if (after) after(w, false);
    });
}

void resizePiece(Workbench& w) {
    const Sheet& s = w.sheet;
    ResizeFrameMesh(w.frame, s.val(T_EP), s.val(T_H), s.val(T_L));
}

}  // namespace

void FrameFromCells(Workbench& wb) {
    ensureFrame(wb);
    FrameState& f = wb.frame;
    f.PointCount = std::clamp(wholeCell(wb, Hscroll2, f.PointCount), 2, 400);
    f.CurveOrder = std::clamp(wholeCell(wb, Hscroll3, f.CurveOrder), 2, f.ControlCount + 1);
    double t = 0;
    if (tryNumber(wb.sheet.text(Hscroll1), t) && std::isfinite(t)) f.Thickness = t;
    f.Doubling = wb.sheet.on(Check4);
    f.Slaved = !wb.sheet.on(Option6);
    if (f.Slaved) ApplyDoubling(f);
    RecomputeFrameCurves(f);
}

void CellsFromFrame(Workbench& wb) {
    const FrameState& f = wb.frame;
    Sheet& s = wb.sheet;
    s.set(Hscroll1, plain(f.Thickness));
    s.set(Hscroll2, std::to_string(f.PointCount));
    s.set(Text3, std::to_string(f.PointCount));
    s.set(Hscroll3, std::to_string(f.CurveOrder));
    s.set(Check4, f.Doubling ? "1" : "0");
    s.set(Option5, f.Slaved ? "1" : "0");
    s.set(Option6, f.Slaved ? "0" : "1");
    s.set(L_Mode, f.Slaved ? "Mode asservi" : "Mode découplé");
}

std::string FrameStartOutline(const Workbench& wb) { return (wb.home() / "COUPLES" / "DEPART.DAT").string(); }

void RebuildFramePiece(Workbench& wb) {
    ensureFrame(wb);
    const int kind = std::clamp(wholeCell(wb, Gen_Couples_1::Combo2, 0), 0, 4);
    BuildFrameMesh(wb.frame, static_cast<FrameKind>(kind), wb.sheet.val(T_EP), wb.sheet.val(T_H), wb.sheet.val(T_L));
}

void installFrameLogic(Workbench& wb) {
    HandlerTable& h = wb.handlers;
    // The generator is made at its first opening and kept: it starts its frame then.
    wb.panelRefresh[button::FrameGenerator] = [](Workbench& w) { ensureFrame(w); };

    // A slider's value typed (the command line's --set) does what its move does.
    auto slider = [&h](const char* name, Handler f) {
        h.on("Gen_Couples_2", name, Act::Scroll, f);
        h.on("Gen_Couples_2", name, Act::Enter, f);
    };
    slider("Hscroll1", [](Workbench& w, const Action&) {
        ensureFrame(w);
        double t = 0;
        if (!tryNumber(w.sheet.text(Hscroll1), t) || !std::isfinite(t)) return;
        w.frame.Thickness = t;
        // The thickness rules the doubled handles in both modes.
        ApplyDoubling(w.frame);
        RecomputeFrameCurves(w.frame);
    });
    slider("Hscroll2", [](Workbench& w, const Action&) {
        ensureFrame(w);
        w.frame.PointCount = std::clamp(wholeCell(w, Hscroll2, w.frame.PointCount), 2, 400);
        w.sheet.set(Text3, std::to_string(w.frame.PointCount));
        RecomputeFrameCurves(w.frame);
    });
    slider("Hscroll3", [](Workbench& w, const Action&) {
        ensureFrame(w);
        w.frame.CurveOrder = std::clamp(wholeCell(w, Hscroll3, w.frame.CurveOrder), 2, w.frame.ControlCount + 1);
        RecomputeFrameCurves(w.frame);
    });
    h.on("Gen_Couples_2", "Check4", Act::Change, [](Workbench& w, const Action&) {
        ensureFrame(w);
        w.frame.Doubling = w.sheet.on(Check4);
        if (w.frame.DoubledControl.size() != w.frame.ControlPoints.size()) ApplyDoubling(w.frame);
        RecomputeFrameCurves(w.frame);
    });
    // Undo and redo put the cells back: the frame follows them.
    for (const char* c : {"Hscroll1", "Hscroll2", "Hscroll3", "Check4", "Option5", "Option6"})
        h.on("Gen_Couples_2", c, Act::Restored, [](Workbench& w, const Action&) { FrameFromCells(w); });

    pair(h, "Option3", "Option4", Option3, Option4, nullptr);
    pair(h, "Option5", "Option6", Option5, Option6, [](Workbench& w, bool first) {
        ensureFrame(w);
        setMode(w, first);
    });
    pair(h, "Option1", "Option2", Option1, Option2, nullptr);

    // The mouse on the drawing, in drawing pixels.
    h.on("Gen_Couples_2", "Picture1", Act::Press, [](Workbench& w, const Action& a) {
        ensureFrame(w);
        FramePress(w.frame, a.x, a.y, a.button, mainHandles(w));
    });
    h.on("Gen_Couples_2", "Picture1", Act::Move, [](Workbench& w, const Action& a) {
        ensureFrame(w);
        w.sheet.set(lblX, fixed(a.x, 0));
        w.sheet.set(lblY, fixed(a.y, 0));
        if (a.button & 1) FrameMove(w.frame, a.x, a.y, mainHandles(w));
    });
    h.on("Gen_Couples_2", "Picture1", Act::Release, [](Workbench& w, const Action&) { FrameRelease(w.frame); });

    // The toolbar: 0 picture with its presets, 1 outline file, 2-6 what the
    // drawing shows, 7 and 8 the frame project. A file comes as the text.
    h.on("Gen_Couples_2", "pb1", Act::Click, [](Workbench& w, const Action& a) {
        ensureFrame(w);
        Sheet& s = w.sheet;
        switch (a.index) {
            case 0:
                s.set(Command4, "1");
                s.set(Slider4, "50");
                s.set(Slider5, "80");
                s.set(Slider6, "70");
                break;
            case 1: {
                std::string written, error;
                if (!SaveFrameOutline(w.frame, a.text, written, error)) tell(w, error);
                break;
            }
            case 2: case 3: case 4: case 5: case 6:
                s.set(pb1[a.index], s.on(pb1[a.index]) ? "0" : "1");
                break;
            case 7: {
                if (a.text.empty()) break;
                std::string error;
                if (!SaveFrameProject(w.frame, a.text, error)) tell(w, error);
                break;
            }
            case 8: {
                if (a.text.empty()) break;
                std::string warning;
                const bool read = LoadFrameProject(w.frame, a.text, warning);
                if (read) CellsFromFrame(w);
                if (!warning.empty()) tell(w, warning);
                break;
            }
            default: break;
        }
    });
    h.on("Gen_Couples_2", "Command2", Act::Click, [](Workbench& w, const Action& a) {
        std::string error;
        const std::string path = a.text.empty() ? FrameStartOutline(w) : a.text;
        if (!NewFrameFromOutline(w.frame, path, error))
            tell(w, error);
        else
            CellsFromFrame(w);
    });
    h.on("Gen_Couples_2", "Command4", Act::Click, [](Workbench& w, const Action&) {
        w.sheet.set(Command4, w.sheet.on(Command4) ? "0" : "1");
    });
    h.on("Gen_Couples_2", "ouvrir", Act::Click, [](Workbench& w, const Action& a) {
        if (a.text.empty()) return;
        w.sheet.set(T_Image, a.text);
        w.sheet.set(Command4, "1");
    });
    // The 3D piece's sizes: the vertices rewritten in place.
    const std::pair<const char*, Cell> sizes[3] = {{"Slider1", T_EP}, {"Slider2", T_H}, {"Slider3", T_L}};
    for (const auto& [name, shown] : sizes) {
        const Cell source = name[6] == '1' ? Slider1 : (name[6] == '2' ? Slider2 : Slider3);
        auto resize = [source, shown](Workbench& w, const Action&) {
            w.sheet.set(shown, w.sheet.text(source));
            resizePiece(w);
        };
        h.on("Gen_Couples_2", name, Act::Scroll, resize);
        h.on("Gen_Couples_2", name, Act::Enter, resize);
    }
    // The piece's view and kind, and its orbit (what is shown only).
    for (const char* c : {"Combo1", "Combo2"})
        h.on("Gen_Couples_1", c, Act::Change, [](Workbench& w, const Action&) { RebuildFramePiece(w); });
    h.onView("Gen_Couples_1", "Build", Act::Click, [](Workbench& w, const Action&) { RebuildFramePiece(w); });
    // The orbit, in pixels of the view: a drag turns, a right drag zooms.
    h.onView("Gen_Couples_1", "Picture1", Act::Press, [](Workbench& w, const Action& a) {
        w.frame.orbitX = a.x;
        w.frame.orbitY = a.y;
    });
    h.onView("Gen_Couples_1", "Picture1", Act::Move, [](Workbench& w, const Action& a) {
        if (a.button == 0) return;
        OrbitFrame(w.frame, a.x - w.frame.orbitX, a.y - w.frame.orbitY, (a.button & 2) != 0);
        w.frame.orbitX = a.x;
        w.frame.orbitY = a.y;
    });
    h.onView("Gen_Couples_1", "Picture1", Act::Release, [](Workbench&, const Action&) {});
}

}  // namespace tarvokin
