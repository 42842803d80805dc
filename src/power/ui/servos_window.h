// F_SERVOS, "SERVOS" (toolbar button 21): the torque a servo must give each
// control surface at the model's top speed, with a chart per surface.
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

class ServosWindow : public QWidget {
    Q_OBJECT
public:
    ServosWindow(Workbench& wb, SheetBridge& bridge, QWidget* parent = nullptr);

    // "Gouvernes classiques - profondeur", "- Ailerons", "- Dérive", "- Volets".
    const std::vector<ChartPanel*>& charts() const { return charts_; }

private:
    void drawCharts();

    Workbench& wb_;
    SheetBridge& bridge_;
    std::vector<ChartPanel*> charts_;
    RedrawLater* redraw_ = nullptr;
};

}  // namespace tarvokin::ui
