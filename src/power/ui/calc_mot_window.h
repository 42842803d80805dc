// F_CALC_MOT, "CALCULS MOTEUR" (toolbar button 19): a motor, propeller and
// battery proposed from the model's class and mass, the motors of the table
// near the proposal, the set the modeller chose and its curves.
#pragma once

#include <QWidget>
#include <initializer_list>
#include <vector>

#include "core/cells.h"

class QGroupBox;
class QLabel;
class QSlider;
class QTableWidget;
class QTreeWidget;
class QTreeWidgetItem;

namespace tarvokin {
class Workbench;
}

namespace tarvokin::ui {

class ChartPanel;
struct CompareLine;
class RedrawLater;
class SheetBridge;

class CalcMotWindow : public QWidget {
    Q_OBJECT
public:
    CalcMotWindow(Workbench& wb, SheetBridge& bridge, QWidget* parent = nullptr);

    QTreeWidget* motorTree() const { return tree_; }
    QTableWidget* candidates() const { return grid_; }
    // graph_Moteur_Helice (6), Chart_Helice_Mot (2), then the power balance.
    const std::vector<ChartPanel*>& charts() const { return charts_; }

    // The motor tree, read afresh from the motor table.
    void fillTree();
    // The candidates grid from the proposal and the tolerances.
    void fillCandidates();

protected:
    void showEvent(QShowEvent* e) override;

private:
    QWidget* inputsColumn();
    QWidget* batteryAndFlightFrames();
    QWidget* motorAndPropellerColumn();
    QGroupBox* comparison(const QString& title, std::initializer_list<CompareLine> lines);
    QWidget* motorsPart();
    QWidget* chartsPart();
    QWidget* toleranceSlider(Cell cell, const QString& caption);
    // A motor clicked in the tree or the grid (named by `control`).
    void chooseMotor(const QString& control, const QString& marque, const QString& modele);
    void drawCharts();

    Workbench& wb_;
    SheetBridge& bridge_;
    QTreeWidget* tree_ = nullptr;
    QTableWidget* grid_ = nullptr;
    QLabel* gridCaption_ = nullptr;
    std::vector<ChartPanel*> charts_;
    RedrawLater* redraw_ = nullptr;
    RedrawLater* regrid_ = nullptr;
};

}  // namespace tarvokin::ui
