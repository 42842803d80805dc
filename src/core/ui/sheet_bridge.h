// Tells widgets when the cell they show has changed. One listener on the
// sheet, dispatching by cell id, so a recalculation that writes sixty cells
// costs sixty look-ups, not sixty times every widget.
#pragma once

#include <QObject>
#include <functional>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "core/cells.h"

namespace tarvokin {
class Workbench;
}

namespace tarvokin::ui {

class SheetBridge : public QObject {
    Q_OBJECT
public:
    explicit SheetBridge(Workbench& wb, QObject* parent = nullptr);
    ~SheetBridge() override;

    Workbench& workbench() const { return wb_; }

    // Calls f whenever cell c changes, for as long as owner lives.
    void watch(Cell c, QObject* owner, std::function<void()> f);

    // Runs a user's action through the entry path at the event boundary (a
    // run-time error becomes the "[#7] " box), then tells the windows that an
    // entry, an undo or a redo has run: what they draw from tables rather
    // than cells is redrawn then.
    bool enter(const std::function<void()>& action);

signals:
    void entryDone();

private:
    struct Watcher {
        QObject* owner;
        std::function<void()> f;
    };
    void changed(Cell c);
    void forget(QObject* owner);

    Workbench& wb_;
    int handle_ = 0;
    std::unordered_map<uint16_t, std::vector<Watcher>> watchers_;
    std::unordered_set<QObject*> owners_;
};

// Runs a handler at the event boundary: a run-time error becomes the "[#7] " box.
bool guarded(Workbench& wb, const std::function<void()>& handler);

}  // namespace tarvokin::ui
