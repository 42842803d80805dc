// F_BASE: every airfoil of the catalogue and every polar file on disk in a
// tree; the outline (editable), a polar, and the coordinates of the chosen one.
#pragma once

#include <QWidget>

#include "core/outline_types.h"

class QTableWidget;
class QTreeWidget;
class QTextEdit;

namespace tarvokin {
class Workbench;
}

namespace tarvokin::ui {

class ChartPanel;
class SheetBridge;
class SolverProgressBar;
class DatabaseOutlineView;

class DatabaseWindow : public QWidget {
    Q_OBJECT
public:
    DatabaseWindow(Workbench& wb, SheetBridge& bridge, QWidget* parent = nullptr);

    QTreeWidget* tree() const { return tree_; }
    ChartPanel* chart(int i) const { return charts_[i]; }
    QTableWidget* coordinates() const { return grid_; }
    void redraw();

private:
    void fillTree();
    void click(const char* control, const std::string& text = {});

    Workbench& wb_;
    SheetBridge& bridge_;
    QTreeWidget* tree_;
    ChartPanel* charts_[2];
    QTableWidget* grid_;
    QTextEdit* header_;
    QTextEdit* summary_;
    DatabaseOutlineView* outline_;
    SolverProgressBar* progress_;
    int treeVersion_ = -1;
    OutlinePoints gridPoints_;  // the points the table lists
    bool gridFilled_ = false;
};

}  // namespace tarvokin::ui
