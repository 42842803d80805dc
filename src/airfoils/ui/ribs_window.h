// F_RIBS, "Générateur de nervures intermédiaires": the ends and the panel,
// the grid of rib points, the ribs in 2D with the read-out of the rib under
// the mouse, and the 3D view, which the caller makes (it belongs to the
// views' floor, above this one).
#pragma once

#include <QWidget>
#include <functional>

class QTableWidget;

namespace tarvokin::ui {

class SheetBridge;

class RibsWindow : public QWidget {
    Q_OBJECT
public:
    RibsWindow(SheetBridge& bridge, const std::function<QWidget*()>& make3DView, QWidget* parent = nullptr);

    // Command3 with the base file already chosen (the dialog's answer).
    void saveRibs(const QString& base);

protected:
    void showEvent(QShowEvent* e) override;

private:
    void refill();  // grid and 2D view, when the ribs changed
    SheetBridge& bridge_;
    QTableWidget* grid_ = nullptr;
    QWidget* ribs2d_ = nullptr;
    QWidget* view3d_ = nullptr;
    int shownRevision_ = -1;
};

}  // namespace tarvokin::ui
