// F_VLM "Géométrie VLM": the span loading of the wing or the stabiliser beside
// the elliptic loading of the same lift, the local lift coefficient, the mean
// Cz and the Oswald factor, with the angle, roll, flap and aileron controls.
// The window shows itself while toolbar button 29's Tag is not 0.
#pragma once

#include <QWidget>
#include <array>

namespace tarvokin {
class Workbench;
}

namespace tarvokin::ui {

class SheetBridge;
class ChartPanel;

class VlmWindow : public QWidget {
    Q_OBJECT
public:
    VlmWindow(Workbench& wb, SheetBridge& bridge, QWidget* parent = nullptr);
    ChartPanel* chart(int i) const { return charts_[static_cast<size_t>(i)]; }
    void redraw();

protected:
    void closeEvent(QCloseEvent* e) override;

private:
    QWidget* angleBox();
    QWidget* resultsBox();
    QWidget* flightBox();
    void followTag();

    Workbench& wb_;
    SheetBridge& bridge_;
    std::array<ChartPanel*, 2> charts_{};
};

}  // namespace tarvokin::ui
