// Load_Profil: an outline file becomes the current outline of the run.
#include <cmath>

#include "airfoils/outline.h"
#include "core/numbers.h"
#include "core/workbench.h"

namespace tarvokin {

namespace {

std::string percent(double v) { return std::isfinite(v) ? fixed(v, 2) + "%" : "-"; }

// Chord to 1 at the largest x. The smallest x is not moved to 0: a file whose
// leading edge is off the origin keeps its offset. Nothing is scaled when the
// factor cannot be had or would push a value out of range.
void normalise(OutlinePoints& points, OutlineExtremes& e) {
    if (points.empty() || e.xMax == 0.0) return;
    const double f = 1.0 / e.xMax;
    if (!std::isfinite(f)) return;
    for (const OutlinePoint& p : points) {
        if (!std::isfinite(p.x * f) || !std::isfinite(p.y * f)) return;
    }
    for (OutlinePoint& p : points) {
        p.x *= f;
        p.y *= f;
    }
    e.xMin *= f;
    e.xMax *= f;
    e.yMin *= f;
    e.yMax *= f;
    e.xAtYMin *= f;
    e.xAtYMax *= f;
}

// The trailing edge is closed onto the first point by overwriting the last
// one; no point is added, so a thick trailing edge loses its lower corner.
void close(OutlinePoints& points) {
    if (points.size() > 1 && !(points.back() == points.front())) points.back() = points.front();
}

}  // namespace

bool Load_Profil(Workbench& wb, std::string_view file, int slot, OutlineWindow form) {
    OutlineStore& st = wb.outlines;
    st.slot = slot;
    const std::filesystem::path path = outlinePath(wb.home(), file);
    OutlineExtremes e;
    OutlinePoints points;
    if (!readOutlineFile(path, points, e)) {
        st.Outline = {OutlinePoint{}};
        return false;
    }

    // Quick figures from the extremes as read: the thickness of the box
    // around the outline, and the middle of the lowest and highest points.
    double thick = NAN, pos = NAN;
    const double chord = e.xMax - e.xMin;
    if (!points.empty() && chord != 0.0) {
        thick = (e.yMax - e.yMin) / chord;
        pos = ((e.xAtYMin + e.xAtYMax) / 2.0) / chord;
    }

    normalise(points, e);
    close(points);
    st.Outline = std::move(points);
    st.extremes = e;

    OutlineFigures& fig = st.figures;
    if (wb.isOpen(button::Base)) {
        const double v = std::isfinite(thick) ? std::round(100.0 * 100.0 * thick) : 0.0;
        fig.slider = std::abs(v) < 1e9 ? static_cast<int>(v) : 0;
        // The slider may halve or double the thickness.
        fig.sliderMin = fig.slider / 2;
        fig.sliderMax = fig.slider * 2;
        fig.Text5 = Get_Thickness(wb, fig.Text6);
        // The database window on display receives them, whichever window loaded.
        Sheet& s = wb.sheet;
        s.set(F_BASE::Slider2[1], std::to_string(fig.slider));
        s.set(F_BASE::Text4[1], std::to_string(fig.slider));
        s.set(F_BASE::Text5, fig.Text5 == "-" ? "NS" : fig.Text5);
        s.set(F_BASE::Text6, fig.Text6 == "-" ? "NS" : fig.Text6);
    } else if (slot >= 0 && slot < 3) {
        fig.epRel[static_cast<size_t>(slot)] = percent(100.0 * thick);
        fig.posEp[static_cast<size_t>(slot)] = percent(100.0 * pos);
    }
    if (form != OutlineWindow::F_3D && form != OutlineWindow::F_Main) {
        fig.drawingWindow = form;
        fig.drawingSet = true;
        fig.E_TminX = e.xMin;
        fig.E_TmaxX = e.xMax;
        fig.E_TminY = e.yMin;
        fig.E_TmaxY = e.yMax;
    }

    st.OutlineCopy1 = st.Outline;
    st.OutlineCopy2 = st.OutlineCopy1;
    st.OutlineFine = TensionSpline(st.Outline, kFinePoints);
    st.OutlineFineCopy = st.OutlineFine;
    st.path = path.string();
    return true;
}

}  // namespace tarvokin
