// F_TEST_POL: the six polars of one airfoil and the drag the lookup takes
// between them, to see the interpolation in 1/Re at work.
#pragma once

#include <QWidget>

class QTableWidget;

namespace tarvokin {
class Workbench;
}

namespace tarvokin::ui {

class ChartPanel;
class SheetBridge;
class SolverProgressBar;

class InterpolationWindow : public QWidget {
    Q_OBJECT
public:
    InterpolationWindow(Workbench& wb, SheetBridge& bridge, QWidget* parent = nullptr);

    ChartPanel* chart() const { return chart_; }
    QTableWidget* grid() const { return grid_; }
    void redraw();

private:
    Workbench& wb_;
    ChartPanel* chart_;
    QTableWidget* grid_;
    SolverProgressBar* progress_;
};

}  // namespace tarvokin::ui
