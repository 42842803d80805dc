// Controls that hold no text of their own: option buttons and sliders bound
// to a cell, the buttons of a window (single or in step groups), and a redraw
// that waits until the action under way has finished. Every one forwards its
// event to the entry path under its window's and its own name.
#pragma once

#include <QObject>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QToolButton>
#include <functional>

#include "core/cells.h"

namespace tarvokin::ui {

class SheetBridge;

// A button of window `form`: objectName is the control's name, the "index"
// property its place in its group (-1 for none). A click is the control's
// Click on the entry path.
QPushButton* commandButton(SheetBridge& bridge, const char* form, const char* control, int index,
                           const QString& caption, const QString& tooltip = {});
// One arrow of a step group (Command1(0), Command1(1)...), repeating while held.
QToolButton* stepButton(SheetBridge& bridge, const char* form, const char* group, int index, Qt::ArrowType arrow,
                        const QString& tooltip);

// An option button bound to a flag cell: a click sets it through the entry
// path, whose change step decides what happens to the other buttons of its
// group; a click on a set button keeps it set.
class CellRadio : public QRadioButton {
    Q_OBJECT
public:
    CellRadio(SheetBridge& bridge, Cell cell, const QString& caption, QWidget* parent = nullptr);

private:
    SheetBridge& bridge_;
    Cell cell_;
};

// A slider bound to a number cell. Each position of a drag is a Scroll of the
// entry path and the release its ScrollEnd, so that a whole drag is one step;
// a move by the keys or a click on the groove is both at once. A change of
// the cell moves it.
class CellSlider : public QSlider {
    Q_OBJECT
public:
    CellSlider(SheetBridge& bridge, Cell cell, Qt::Orientation orientation, int low, int high,
               QWidget* parent = nullptr);

private:
    void pull();
    SheetBridge& bridge_;
    Cell cell_;
};

// Collects redraw requests and runs one redraw once control is back in the
// event loop: a cell's watcher fires while the cell is written, before the
// change step that recomputes the charts has run. At the end of an entry the
// window is drawn at once (now), and what was requested meanwhile is done.
class DeferredRedraw : public QObject {
    Q_OBJECT
public:
    DeferredRedraw(QObject* owner, std::function<void()> redraw);
    void request();
    void now();

private:
    std::function<void()> redraw_;
    bool pending_ = false;
};

}  // namespace tarvokin::ui
