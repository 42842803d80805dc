#include "views/ui/view3d_widget.h"

#include <QMouseEvent>
#include <QPainter>
#include <QTimer>
#include <QWheelEvent>

#include "core/ui/sheet_bridge.h"
#include "core/workbench.h"
#include "views/aircraft_mesh.h"
#include "views/design_view.h"

namespace tarvokin::ui {

namespace {

ViewMouse buttonsOf(Qt::MouseButtons b, Qt::KeyboardModifiers k) {
    return ViewMouse{(b & Qt::LeftButton) != 0, (b & Qt::RightButton) != 0, (k & Qt::ShiftModifier) != 0};
}

}  // namespace

View3DWidget::View3DWidget(Workbench& wb, QWidget* parent) : QWidget(parent), wb_(wb), surface_(QSize(400, 300)) {
    setObjectName("Picture3");
    setMouseTracking(true);
    setMinimumSize(320, 240);
    setAttribute(Qt::WA_OpaquePaintEvent);
    wb_.view3d.surface = &surface_;
    // The view is awake from the start: the first activation draws the model.
    wb_.sheet.set(F_3D::Text4, "1");
    rebuild();
}

View3DWidget::~View3DWidget() {
    if (wb_.view3d.surface == &surface_) wb_.view3d.surface = nullptr;
}

void View3DWidget::rebuild() {
    guarded(wb_, [this] { BuildAircraftKeepView(wb_); });
    requestFrame();
}

void View3DWidget::requestFrame() {
    wb_.view3d.NeedsRedraw = true;
    if (framePending_) return;
    framePending_ = true;
    QTimer::singleShot(0, this, [this] {
        framePending_ = false;
        frame();
    });
}

void View3DWidget::frame() {
    if (!wb_.view3d.NeedsRedraw || !ViewTakesFrames(wb_) || !isVisible()) return;
    guarded(wb_, [this] { DrawViewFrame(wb_); });
    ++frames_;
    update();
}

void View3DWidget::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.drawImage(0, 0, surface_.image());
}

void View3DWidget::resizeEvent(QResizeEvent* e) {
    QWidget::resizeEvent(e);
    surface_.resize(size());
    requestFrame();
}

void View3DWidget::mousePressEvent(QMouseEvent* e) {
    const QPoint p = e->position().toPoint();
    ViewMousePress(wb_, p.x(), p.y(), buttonsOf(e->buttons(), e->modifiers()));
    setCursor(Qt::SizeAllCursor);
    requestFrame();
}

void View3DWidget::mouseMoveEvent(QMouseEvent* e) {
    const QPoint p = e->position().toPoint();
    ViewMouseMove(wb_, p.x(), p.y(), buttonsOf(e->buttons(), e->modifiers()));
    if (wb_.view3d.NeedsRedraw) requestFrame();
    else update();  // the hover outline is drawn straight onto the picture
}

void View3DWidget::mouseReleaseEvent(QMouseEvent*) { unsetCursor(); }

void View3DWidget::wheelEvent(QWheelEvent* e) {
    // The wheel zooms as a right-button drag does, a notch being 15 pixels.
    AircraftView& v = wb_.view3d;
    const float notches = static_cast<float>(e->angleDelta().y()) / 120.0f;
    v.ViewDistance = std::max(0.0f, v.ViewDistance - notches * 15.0f * v.ZoomSensitivity);
    requestFrame();
}

}  // namespace tarvokin::ui
