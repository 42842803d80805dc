#include "core/ui/entry_controls.h"

#include <QTimer>
#include <cmath>

#include "core/numbers.h"
#include "core/ui/cell_widgets.h"
#include "core/ui/sheet_bridge.h"
#include "core/workbench.h"
#include "entry/entry_path.h"

namespace tarvokin::ui {

namespace {

void nameAfter(QWidget* w, Cell c) {
    const CellDef& d = cellTable()[c.id];
    w->setObjectName(QString::fromLatin1(d.name));
    if (d.index >= 0) w->setProperty("index", d.index);
}

template <class Button>
void forwardClicks(Button* b, SheetBridge& bridge, const char* form, const char* control, int index) {
    b->setObjectName(QString::fromLatin1(control));
    if (index >= 0) b->setProperty("index", index);
    QObject::connect(b, &Button::clicked, b, [&bridge, form, control, index] {
        Workbench& wb = bridge.workbench();
        bridge.enter([&] { Click(wb, form, control, index); });
    });
}

}  // namespace

QPushButton* commandButton(SheetBridge& bridge, const char* form, const char* control, int index,
                           const QString& caption, const QString& tooltip) {
    auto* b = new QPushButton(caption);
    if (!tooltip.isEmpty()) b->setToolTip(tooltip);
    forwardClicks(b, bridge, form, control, index);
    return b;
}

QToolButton* stepButton(SheetBridge& bridge, const char* form, const char* group, int index, Qt::ArrowType arrow,
                        const QString& tooltip) {
    auto* b = new QToolButton;
    b->setArrowType(arrow);
    if (!tooltip.isEmpty()) b->setToolTip(tooltip);
    b->setAutoRepeat(true);
    forwardClicks(b, bridge, form, group, index);
    return b;
}

CellRadio::CellRadio(SheetBridge& bridge, Cell cell, const QString& caption, QWidget* parent)
    : QRadioButton(caption, parent), bridge_(bridge), cell_(cell) {
    nameAfter(this, cell);
    // The cells say which button of the group is set, not the widget siblings.
    setAutoExclusive(false);
    auto pull = [this] {
        QSignalBlocker b(this);
        setChecked(bridge_.workbench().sheet.val(cell_) != 0.0);
    };
    pull();
    bridge_.watch(cell_, this, pull);
    connect(this, &QRadioButton::clicked, this, [this](bool on) {
        if (!on) {
            QSignalBlocker b(this);
            setChecked(true);
            return;
        }
        Workbench& wb = bridge_.workbench();
        bridge_.enter([&] { Tick(wb, cell_, true); });
    });
}

CellSlider::CellSlider(SheetBridge& bridge, Cell cell, Qt::Orientation orientation, int low, int high,
                       QWidget* parent)
    : QSlider(orientation, parent), bridge_(bridge), cell_(cell) {
    nameAfter(this, cell);
    setRange(low, high);
    pull();
    bridge_.watch(cell_, this, [this] { pull(); });
    connect(this, &QSlider::valueChanged, this, [this](int v) {
        if (signalsBlocked()) return;
        Workbench& wb = bridge_.workbench();
        bridge_.enter([&] {
            Slide(wb, cell_, plain(v));
            // Keys and clicks on the groove move without a drag to end.
            if (!isSliderDown()) SlideEnd(wb, cell_);
        });
    });
    connect(this, &QSlider::sliderReleased, this, [this] {
        Workbench& wb = bridge_.workbench();
        bridge_.enter([&] { SlideEnd(wb, cell_); });
    });
}

void CellSlider::pull() {
    const double v = bridge_.workbench().sheet.val(cell_);
    if (!std::isfinite(v)) return;
    const int position = static_cast<int>(std::lround(v));
    if (position == value()) return;
    QSignalBlocker b(this);
    setValue(position);
}

DeferredRedraw::DeferredRedraw(QObject* owner, std::function<void()> redraw)
    : QObject(owner), redraw_(std::move(redraw)) {}

void DeferredRedraw::request() {
    if (pending_) return;
    pending_ = true;
    QTimer::singleShot(0, this, [this] {
        if (!pending_) return;
        pending_ = false;
        redraw_();
    });
}

void DeferredRedraw::now() {
    pending_ = false;
    redraw_();
}

}  // namespace tarvokin::ui
