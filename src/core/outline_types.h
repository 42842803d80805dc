// The outlines a run keeps: points in file order (trailing edge, upper
// surface, leading edge, lower surface), the extremes of a read, and the
// figures a load shows.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace tarvokin {

struct OutlinePoint {
    double x = 0.0;
    double y = 0.0;
    bool operator==(const OutlinePoint&) const = default;
};
using OutlinePoints = std::vector<OutlinePoint>;

// Extremes tracked while a file is read, each with its index. The index of the
// smallest x is kept one less than the point's own index (-1 for point 0).
struct OutlineExtremes {
    double xMin = 0.0, xMax = 0.0, yMin = 0.0, yMax = 0.0;
    double xAtYMin = 0.0, xAtYMax = 0.0;
    std::ptrdiff_t iXMinBefore = -1, iYMin = 0, iYMax = 0;
};

// The windows that load outlines; the window decides where the drawing
// extremes go.
enum class OutlineWindow { F_Main, F_3D, F_PROFILS, F_BASE, F_AERO };

constexpr int kFinePoints = 31;           // OutlineFine holds kFinePoints + 1 points
constexpr double kSplineTension = 100.0;

// What a load shows. Figures are text with 2 decimals and "%", or "-" when
// the outline gives nothing to divide by.
struct OutlineFigures {
    // Rows "Ep. Rel." and "Pos ep." of each slot of F_PROFILS.
    std::array<std::string, 3> epRel, posEp;
    // F_BASE, when the main window's airfoil display (toolbar button 6) is on:
    // the thickness slider (ten thousand times the thickness ratio) with its
    // limits, Text5 the thickness and Text6 its position from Get_Thickness.
    int slider = 0, sliderMin = 0, sliderMax = 0;
    std::string Text5, Text6;
    // E_TminX, E_TmaxX, E_TminY, E_TmaxY of the loading window, for its
    // drawing; set only when that window is neither F_3D nor F_Main.
    OutlineWindow drawingWindow = OutlineWindow::F_PROFILS;
    bool drawingSet = false;
    double E_TminX = 0.0, E_TmaxX = 0.0, E_TminY = 0.0, E_TmaxY = 0.0;
};

// The outlines of the run, owned by the workbench.
struct OutlineStore {
    OutlinePoints Outline;          // the outline last read, normalised
    OutlinePoints OutlineCopy1, OutlineCopy2;
    OutlinePoints OutlineFine;      // resampled by the tension spline
    OutlinePoints OutlineFineCopy;
    OutlinePoints CamberLine;       // of the last Get_Camber
    int slot = 0;                   // slot of the last load
    OutlineExtremes extremes;       // of the last load, after normalisation
    std::string path;               // the file shown in the window
    OutlineFigures figures;
};

}  // namespace tarvokin
