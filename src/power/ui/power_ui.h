// Pieces shared by the power windows: charts drawn again once per burst of
// cell changes, and a hook after the refresh a toolbar button runs.
#pragma once

#include <QObject>
#include <QString>
#include <functional>
#include <initializer_list>

#include "core/cells.h"

class QLabel;
class QWidget;

namespace tarvokin {
class Workbench;
}

namespace tarvokin::ui {

class SheetBridge;

// A recalculation writes dozens of cells one after the other; the charts that
// follow them are drawn once, when the burst is over, and only while the
// window shows (a window that comes back draws at once).
class RedrawLater : public QObject {
public:
    RedrawLater(QWidget* target, std::function<void()> draw);
    void request();
    // Requests a redraw whenever one of the cells changes.
    void watch(SheetBridge& b, std::initializer_list<Cell> cells);
    void watch(SheetBridge& b, Cell c);

protected:
    bool eventFilter(QObject* watched, QEvent* e) override;

private:
    void run();
    QWidget* target_;
    std::function<void()> draw_;
    bool pending_ = false;
};

// Runs `after` each time the refresh of toolbar button `button` has run (when
// the window opens and in the master recalculation), for as long as `owner` lives.
void afterPanelRefresh(Workbench& wb, int button, QObject* owner, std::function<void()> after);

// A result in a grid: read-only, framed, right-aligned as the fields are.
QLabel* resultLabel(SheetBridge& b, Cell c);

}  // namespace tarvokin::ui
