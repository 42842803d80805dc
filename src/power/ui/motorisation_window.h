// F_MOTORISATIONS (toolbar button 20): a motor of the table for the design's
// power train, its power curves on the design's propeller and battery, and the
// balance of the power needed and available in level flight.
#pragma once

#include <QWidget>
#include <vector>

namespace tarvokin {
class Workbench;
}

namespace tarvokin::ui {

class ChartPanel;
class RedrawLater;
class SheetBridge;

class MotorisationWindow : public QWidget {
    Q_OBJECT
public:
    MotorisationWindow(Workbench& wb, SheetBridge& bridge, QWidget* parent = nullptr);

    // The power balance, then the two charts of Chart_Helice_Mot.
    const std::vector<ChartPanel*>& charts() const { return charts_; }

private:
    void drawCharts();

    Workbench& wb_;
    SheetBridge& bridge_;
    std::vector<ChartPanel*> charts_;
    RedrawLater* redraw_ = nullptr;
};

}  // namespace tarvokin::ui
