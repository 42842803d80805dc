#include "power/ui/power_ui.h"

#include <QEvent>
#include <QLabel>
#include <QPointer>
#include <QTimer>
#include <QWidget>

#include "core/ui/cell_widgets.h"
#include "core/ui/sheet_bridge.h"
#include "core/workbench.h"

namespace tarvokin::ui {

RedrawLater::RedrawLater(QWidget* target, std::function<void()> draw)
    : QObject(target), target_(target), draw_(std::move(draw)) {
    target_->installEventFilter(this);
}

void RedrawLater::request() {
    if (pending_) return;
    pending_ = true;
    QTimer::singleShot(0, this, [this] { run(); });
}

void RedrawLater::run() {
    pending_ = false;
    if (target_->isVisible()) draw_();
}

void RedrawLater::watch(SheetBridge& b, std::initializer_list<Cell> cells) {
    for (Cell c : cells) watch(b, c);
}

void RedrawLater::watch(SheetBridge& b, Cell c) {
    b.watch(c, this, [this] { request(); });
}

bool RedrawLater::eventFilter(QObject* watched, QEvent* e) {
    if (watched == target_ && e->type() == QEvent::Show) request();
    return QObject::eventFilter(watched, e);
}

void afterPanelRefresh(Workbench& wb, int button, QObject* owner, std::function<void()> after) {
    std::function<void(Workbench&)> before = wb.panelRefresh[button];
    QPointer<QObject> alive(owner);
    wb.panelRefresh[button] = [before, alive, after](Workbench& w) {
        if (before) before(w);
        if (alive) after();
    };
}

QLabel* resultLabel(SheetBridge& b, Cell c) {
    auto* l = new CellLabel(b, c);
    l->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    l->setFrameShape(QFrame::StyledPanel);
    l->setMinimumWidth(70);
    return l;
}

}  // namespace tarvokin::ui
