// The report's pictures drawn off screen, for the application and for the
// command-line program alike (a QGuiApplication must exist).
#pragma once

namespace tarvokin {
class Workbench;
}

namespace tarvokin::ui {

// Sizes of the pictures: the 3D view and the global chart large enough to be
// read when the browser shows them alone, the charts as they sit in a row of
// the page.
inline constexpr int kView3DWidth = 1000, kView3DHeight = 700;
inline constexpr int kGlobalWidth = 1000, kGlobalHeight = 600;
inline constexpr int kChartWidth = 640, kChartHeight = 440;

// Sets wb.paintPicture.
void InstallPicturePainter(Workbench& wb);

}  // namespace tarvokin::ui
