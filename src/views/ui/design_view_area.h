// The view area of the design window: the drawing buttons, the 3D view or a
// flat view, the centring plan under it, the drawing switches and the colour
// samples beside it, and the export of the plan shown as SVG or DXF.
#pragma once

#include <QWidget>
#include <array>

#include "views/plan.h"

class QStackedWidget;
class QToolButton;

namespace tarvokin {
class Workbench;
}

namespace tarvokin::ui {

class SheetBridge;
class View3DWidget;
class PlanWidget;

class DesignViewArea : public QWidget {
    Q_OBJECT
public:
    DesignViewArea(Workbench& wb, SheetBridge& bridge, QWidget* parent = nullptr);
    ~DesignViewArea() override;

    View3DWidget* view3d() const { return view3d_; }
    PlanWidget* flatView() const { return flat_; }
    PlanWidget* centringPlan() const { return centring_; }
    // PB_2D: "Vue Profil", "Vue Dessus", "Vue Face" show a flat view, "Vue 3D" the 3D view.
    void showView(PlanView v);
    PlanView currentView() const { return view_; }
    // Rebuilds the scene and redraws the plans from the fields.
    void redrawAll();
    // The plans drawn again (their words follow the language), not the 3D scene.
    void redrawPlans();
    // The plan on screen (the flat view, else the centring plan) as files.
    bool exportPlan(const QString& file);

    // Photo mode: the plans stand on the background image chosen for each
    // view, kept in the project's [IMAGES] section under "Photo_" keys.
    void setPhotoMode(bool on);
    bool photoMode() const { return photo_; }
    void loadPhoto(PlanView v, const QString& file);

private:
    void chooseColour(int sample);
    void applyPhotos();
    Workbench& wb_;
    SheetBridge& bridge_;
    QStackedWidget* stack_ = nullptr;
    View3DWidget* view3d_ = nullptr;
    PlanWidget* flat_ = nullptr;
    PlanWidget* centring_ = nullptr;
    PlanView view_ = PlanView::Vue3D;
    bool photo_ = false;
    std::array<QToolButton*, 5> render_{};
};

}  // namespace tarvokin::ui
