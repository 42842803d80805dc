#include "design/ui/fuselage_drawing.h"

#include "design/ui/picture_surface.h"

#include <QMouseEvent>
#include <QPainter>

#include "core/ui/entry_controls.h"
#include "core/ui/sheet_bridge.h"
#include "core/workbench.h"
#include "entry/entry_path.h"
#include "views/draw_surface.h"

namespace tarvokin::ui {

FuselageDrawing::FuselageDrawing(SheetBridge& bridge, FuselageView view, QWidget* parent)
    : QWidget(parent), bridge_(bridge), view_(view) {
    setObjectName(view == FuselageView::Side ? "Picture1" : "Picture2");
    setMinimumSize(320, 160);
    setMouseTracking(false);
    setAttribute(Qt::WA_OpaquePaintEvent);
    redraw_ = new DeferredRedraw(this, [this] { redraw(); });
    // Every entry may move a marker or change the shape: the drawing follows.
    connect(&bridge_, &SheetBridge::entryDone, this, [this] { redraw_->now(); });
    for (Cell c : {F_GEO_FUS::b24, F_GEO_FUS::D24, F_GEO_FUS::D25, F_GEO_FUS::L_Marker})
        bridge_.watch(c, this, [this] { redraw_->request(); });
}

void FuselageDrawing::redraw() {
    if (image_.size() != size()) image_ = QImage(size().expandedTo(QSize(1, 1)), QImage::Format_RGB32);
    {
        PictureSurface surface(image_);
        const Sheet& s = bridge_.workbench().sheet;
        if (view_ == FuselageView::Side)
            DrawFuselageSide(s, surface);
        else
            DrawFuselageTop(s, surface);
    }
    update();
}

void FuselageDrawing::paintEvent(QPaintEvent*) {
    if (image_.size() != size()) redraw();
    QPainter p(this);
    p.drawImage(0, 0, image_);
}

void FuselageDrawing::resizeEvent(QResizeEvent*) { redraw(); }

void FuselageDrawing::forward(QMouseEvent* e, int act) {
    Workbench& wb = bridge_.workbench();
    const ViewMapping m = FuselageViewMapping(wb.sheet, view_, width(), height());
    Action a;
    a.act = static_cast<Act>(act);
    a.form = "F_GEO_FUS";
    a.control = objectName().toStdString();
    a.x = m.toModelX(e->position().x());
    a.y = m.toModelY(e->position().y());
    const Qt::MouseButtons held = act == static_cast<int>(Act::Release) ? Qt::MouseButtons() : e->buttons();
    a.button = (held & Qt::LeftButton ? 1 : 0) | (held & Qt::RightButton ? 2 : 0) | (held & Qt::MiddleButton ? 4 : 0);
    a.shift = (e->modifiers() & Qt::ShiftModifier ? 1 : 0) | (e->modifiers() & Qt::ControlModifier ? 2 : 0);
    bridge_.enter([&wb, a] { Perform(wb, a); });
}

void FuselageDrawing::mousePressEvent(QMouseEvent* e) { forward(e, static_cast<int>(Act::Press)); }
void FuselageDrawing::mouseMoveEvent(QMouseEvent* e) { forward(e, static_cast<int>(Act::Move)); }
void FuselageDrawing::mouseReleaseEvent(QMouseEvent* e) { forward(e, static_cast<int>(Act::Release)); }

}  // namespace tarvokin::ui
