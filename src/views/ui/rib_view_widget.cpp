#include "views/ui/rib_view_widget.h"

#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include "core/ui/sheet_bridge.h"
#include "core/workbench.h"
#include "entry/entry_path.h"
#include "views/rib_scene.h"

namespace tarvokin::ui {

RibViewWidget::RibViewWidget(SheetBridge& b, QWidget* parent) : QWidget(parent), bridge_(b), surface_(QSize(400, 300)) {
    setObjectName("Picture1");
    setMinimumSize(320, 240);
    setAttribute(Qt::WA_OpaquePaintEvent);
    Workbench& wb = b.workbench();
    wb.generators.ribView.surface = &surface_;
    guarded(wb, [&] { BuildRibScene(wb); });
}

RibViewWidget::~RibViewWidget() {
    RibView& v = bridge_.workbench().generators.ribView;
    if (v.surface == &surface_) v.surface = nullptr;
}

void RibViewWidget::paintEvent(QPaintEvent*) {
    Workbench& wb = bridge_.workbench();
    // The scene is rebuilt by every entry; a frame is cheap enough to take at
    // each paint.
    guarded(wb, [&] { DrawRibFrame(wb); });
    QPainter p(this);
    p.drawImage(0, 0, surface_.image());
}

void RibViewWidget::resizeEvent(QResizeEvent* e) {
    QWidget::resizeEvent(e);
    surface_.resize(size());
    Workbench& wb = bridge_.workbench();
    guarded(wb, [&] { BuildRibScene(wb); });  // the engine measures its surface when the scene is made
}

void RibViewWidget::forward(Act act, QMouseEvent* e) {
    Action a{act, "F_RIBS", "Picture1", -1};
    a.x = e->position().x();
    a.y = e->position().y();
    a.button = ((e->buttons() & Qt::LeftButton) ? 1 : 0) | ((e->buttons() & Qt::RightButton) ? 2 : 0);
    bridge_.enter([&] { Perform(bridge_.workbench(), a); });
    update();
}

void RibViewWidget::mousePressEvent(QMouseEvent* e) { forward(Act::Press, e); }

void RibViewWidget::mouseMoveEvent(QMouseEvent* e) {
    if (e->buttons() & (Qt::LeftButton | Qt::RightButton)) forward(Act::Move, e);
}

void RibViewWidget::wheelEvent(QWheelEvent* e) {
    Action a{Act::Scroll, "F_RIBS", "Picture1", -1};
    a.text = std::to_string(e->angleDelta().y() / 120.0);
    bridge_.enter([&] { Perform(bridge_.workbench(), a); });
    update();
}

}  // namespace tarvokin::ui
