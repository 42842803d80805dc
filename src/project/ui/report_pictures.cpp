#include "project/ui/report_pictures.h"

#include <QImage>
#include <QPainter>
#include <QString>

#include "core/ui/chart_panel.h"
#include "core/workbench.h"
#include "views/aircraft_mesh.h"
#include "views/design_view.h"
#include "views/global_chart.h"
#include "views/ui/plan_widget.h"
#include "views/ui/qimage_surface.h"

namespace tarvokin::ui {

namespace {

QString qpath(const std::filesystem::path& p) { return QString::fromStdString(p.string()); }

bool paintView3D(Workbench& wb, const std::filesystem::path& file) {
    QImageSurface surface(QSize(kView3DWidth, kView3DHeight));
    AircraftView& v = wb.view3d;
    DrawSurface* shown = v.surface;
    v.surface = &surface;
    // A run without the design window has no scene yet.
    if (v.CameraIndex == 0) BuildAircraftKeepView(wb);
    DrawViewFrame(wb);
    v.surface = shown;
    // The window's own picture is drawn again at its next frame.
    v.NeedsRedraw = true;
    return surface.image().save(qpath(file), "PNG");
}

bool paintGlobal(const Workbench& wb, const std::filesystem::path& file) {
    QImage img(kGlobalWidth, kGlobalHeight, QImage::Format_RGB32);
    img.fill(Qt::white);
    {
        QPainter p(&img);
        p.setRenderHint(QPainter::Antialiasing);
        paintPlan(p, GlobalGeometryChart(wb), QRectF(0, 0, kGlobalWidth, kGlobalHeight));
    }
    return img.save(qpath(file), "PNG");
}

bool paintChart(const ChartData& data, const std::filesystem::path& file) {
    ChartPanel panel;
    panel.resize(kChartWidth, kChartHeight);
    panel.setData(data);
    return panel.savePng(qpath(file));
}

}  // namespace

void InstallPicturePainter(Workbench& wb) {
    wb.paintPicture = [](Workbench& w, int source, int index, const std::filesystem::path& file) {
        switch (source) {
            case 0: return paintView3D(w, file);
            case 1: return paintGlobal(w, file);
            case 2:
                if (index < 0 || index > 2) return false;
                return paintChart(w.perf.charts.speedPolar[static_cast<size_t>(index)], file);
            case 3:
                if (index < 0 || index > 4) return false;
                return paintChart(w.aspectRatio.charts[static_cast<size_t>(index)], file);
        }
        return false;
    };
}

}  // namespace tarvokin::ui
