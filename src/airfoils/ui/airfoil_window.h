// F_PROFILS: the three airfoil slots, their polars charted two ways, their
// figures, their outlines, and the Reynolds estimate of flight.
#pragma once

#include <QWidget>
#include <functional>

#include "airfoils/airfoil_selection.h"

class QTableWidget;
class QLabel;

namespace tarvokin {
class Workbench;
}

namespace tarvokin::ui {

class SheetBridge;
class ChartPanel;
class OutlineView;

class AirfoilWindow : public QWidget {
    Q_OBJECT
public:
    // `compute` runs the solver for a missing polar (with progress and Cancel).
    AirfoilWindow(Workbench& wb, SheetBridge& bridge, PolarComputer compute, QWidget* parent = nullptr);

    // Fills the three slots as the window does when it opens: each slot's
    // airfoil is selected again; one the catalogue lacks takes its generic name.
    void fillSlots();
    // One slot's selection, guarded against a second one while a run is going on.
    void select(int slot);
    bool busy() const { return busy_; }
    // Asks for an outline file, copies it into the installation's DATA folder
    // and enters it in the catalogue on airfoil slot `slot`.
    void chooseFile(int slot);

    ChartPanel* chart(int i) const { return charts_[i]; }
    void redraw();

private:
    void drawChart(int i);
    void fillGrid();

    Workbench& wb_;
    SheetBridge& bridge_;
    PolarComputer compute_;
    ChartPanel* charts_[2] = {nullptr, nullptr};
    OutlineView* outline_ = nullptr;
    QTableWidget* grid_ = nullptr;
    bool busy_ = false;
};

}  // namespace tarvokin::ui
