// F_AERO: the pressure distribution and the boundary layer of one airfoil
// at an operating point or a sequence, computed by XFOIL.
#pragma once

#include <QWidget>

namespace tarvokin {
class Workbench;
}

namespace tarvokin::ui {

class ChartPanel;
class SheetBridge;
class SolverProgressBar;

class PressureWindow : public QWidget {
    Q_OBJECT
public:
    PressureWindow(Workbench& wb, SheetBridge& bridge, QWidget* parent = nullptr);

    ChartPanel* cpChart() const { return cp_; }
    ChartPanel* speedChart() const { return speed_; }
    ChartPanel* quantityChart() const { return quantity_; }
    void redraw();

private:
    Workbench& wb_;
    SheetBridge& bridge_;
    ChartPanel* cp_;
    ChartPanel* speed_;
    ChartPanel* quantity_;
    SolverProgressBar* progress_;
};

}  // namespace tarvokin::ui
