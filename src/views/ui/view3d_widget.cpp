#include "views/ui/view3d_widget.h"

#include <QMouseEvent>
#include <QPainter>
#include <QTimer>
#include <QWheelEvent>

#include "core/ui/sheet_bridge.h"
#include "core/messages.h"
#include "core/workbench.h"
#include "entry/entry_path.h"
#include "views/aircraft_mesh.h"
#include "views/design_view.h"

namespace tarvokin::ui {

namespace {

// A mouse event as an action on the picture: 1 left, 2 right; 1 shift.
Action mouseAction(Act act, const QPointF& p, Qt::MouseButtons b, Qt::KeyboardModifiers k) {
    Action a;
    a.act = act;
    a.form = "F_3D";
    a.control = "Picture3";
    a.x = p.x();
    a.y = p.y();
    a.button = ((b & Qt::LeftButton) ? 1 : 0) | ((b & Qt::RightButton) ? 2 : 0);
    a.shift = (k & Qt::ShiftModifier) ? 1 : 0;
    return a;
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
    runGuarded(wb_, [&] { Perform(wb_, mouseAction(Act::Press, e->position(), e->buttons(), e->modifiers())); });
    setCursor(Qt::SizeAllCursor);
    requestFrame();
}

void View3DWidget::mouseMoveEvent(QMouseEvent* e) {
    runGuarded(wb_, [&] { Perform(wb_, mouseAction(Act::Move, e->position(), e->buttons(), e->modifiers())); });
    if (wb_.view3d.NeedsRedraw) requestFrame();
    else update();  // the hover outline is drawn straight onto the picture
}

void View3DWidget::mouseReleaseEvent(QMouseEvent* e) {
    runGuarded(wb_, [&] { Perform(wb_, mouseAction(Act::Release, e->position(), e->buttons(), e->modifiers())); });
    unsetCursor();
}

void View3DWidget::wheelEvent(QWheelEvent* e) {
    Action a;
    a.act = Act::Scroll;
    a.form = "F_3D";
    a.control = "Picture3";
    a.text = std::to_string(e->angleDelta().y() / 120.0);
    runGuarded(wb_, [&] { Perform(wb_, a); });
    requestFrame();
}

}  // namespace tarvokin::ui
