// F_GEO_1, "Vue 2D": the global geometry chart, redrawn after each entry,
// saved as PNG or SVG.
#pragma once

#include <QWidget>

namespace tarvokin {
class Workbench;
}

namespace tarvokin::ui {

class SheetBridge;
class PlanWidget;

class GlobalChartWindow : public QWidget {
    Q_OBJECT
public:
    GlobalChartWindow(Workbench& wb, SheetBridge& bridge, QWidget* parent = nullptr);
    PlanWidget* chart() const { return chart_; }
    bool savePng(const QString& file) const;

private:
    PlanWidget* chart_;
};

}  // namespace tarvokin::ui
