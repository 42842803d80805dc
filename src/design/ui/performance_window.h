// F_GEO_3 "Performances du Modèle Complet": the speed polar of the complete
// model for the three candidate airfoils at both masses, the air state it is
// computed in, the switches of the drag contributions and the read-out at a
// cursor point; and F_GEO_5 "Performances à Reynolds constant", opened from it.
#pragma once

#include <QWidget>
#include <array>
#include <vector>

namespace tarvokin {
class Workbench;
}


namespace tarvokin::ui {

class SheetBridge;
class ChartPanel;
class DeferredRedraw;
class LegendStrip;

// F_GEO_5: glide ratio and aerodynamic power against Cz at an imposed speed.
class ConstantSpeedWindow : public QWidget {
    Q_OBJECT
public:
    ConstantSpeedWindow(Workbench& wb, SheetBridge& bridge, QWidget* parent = nullptr);
    ChartPanel* chart(int i) const { return charts_[static_cast<size_t>(i)]; }
    void redraw();

protected:
    void closeEvent(QCloseEvent* e) override;

private:
    Workbench& wb_;
    std::array<ChartPanel*, 2> charts_{};
    LegendStrip* legend_ = nullptr;
};

class PerformanceWindow : public QWidget {
    Q_OBJECT
public:
    PerformanceWindow(Workbench& wb, SheetBridge& bridge, QWidget* parent = nullptr);
    ChartPanel* chart(int i) const { return charts_[static_cast<size_t>(i)]; }
    ConstantSpeedWindow* constantSpeed() const { return constantSpeed_; }
    void redraw();

protected:
    void hideEvent(QHideEvent* e) override;

private:
    QWidget* airBox();
    QWidget* contributionsBox();
    QWidget* cursorBox();
    QWidget* readoutBox();
    void openConstantSpeed();

    Workbench& wb_;
    SheetBridge& bridge_;
    std::array<ChartPanel*, 4> charts_{};
    std::array<LegendStrip*, 4> legends_{};
    // The read-out widgets of each airfoil, hidden with it.
    std::array<std::vector<QWidget*>, 3> readoutRows_;
    ConstantSpeedWindow* constantSpeed_ = nullptr;
};

}  // namespace tarvokin::ui
