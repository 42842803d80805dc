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
    // Every control forwards to the window's logic on the entry path; the
    // window redraws from the cells and the polar store once an entry has run.
    AirfoilWindow(Workbench& wb, SheetBridge& bridge, QWidget* parent = nullptr);

    // Fills the three slots as the window does when it opens.
    void fillSlots();
    bool busy() const;
    // Asks for an outline file and hands it to PB_PROFILE(slot).
    void chooseFile(int slot);

    ChartPanel* chart(int i) const { return charts_[i]; }
    void redraw();

private:
    void drawChart(int i);
    void fillGrid();

    Workbench& wb_;
    SheetBridge& bridge_;
    ChartPanel* charts_[2] = {nullptr, nullptr};
    OutlineView* outline_ = nullptr;
    QTableWidget* grid_ = nullptr;
};

}  // namespace tarvokin::ui
