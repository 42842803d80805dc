// F_3D, the central window: the tabbed panel of fields for the whole aircraft
// beside the view area that shows the aircraft in 3D or as plans.
#pragma once

#include <QWidget>
#include <functional>

class QTabWidget;
class QSlider;
class QVBoxLayout;

namespace tarvokin {
class Workbench;
}

namespace tarvokin::ui {

class SheetBridge;

class DesignWindow : public QWidget {
    Q_OBJECT
public:
    DesignWindow(Workbench& wb, SheetBridge& bridge, QWidget* parent = nullptr);

    QTabWidget* tabs() const { return tabs_; }
    QSlider* cgSlider() const { return cg_; }
    // The view area on the right (3D view and plans).
    void setViewArea(QWidget* view);

    // Shows the motor tab (toolbar buttons 19 and 20 ask for it).
    void showMotorTab();

private:
    QWidget* wingTab();
    QWidget* stabTab();
    QWidget* finTab();
    QWidget* fuselageTab();
    QWidget* centringTab();
    QWidget* motorTab();
    void pullCgSlider();

    Workbench& wb_;
    SheetBridge& bridge_;
    QTabWidget* tabs_ = nullptr;
    QSlider* cg_ = nullptr;
    QVBoxLayout* viewPlace_ = nullptr;
    QWidget* view_ = nullptr;
};

}  // namespace tarvokin::ui
