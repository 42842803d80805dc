#include "core/ui/sheet_bridge.h"

#include <algorithm>

#include "core/messages.h"
#include "core/workbench.h"

namespace tarvokin::ui {

SheetBridge::SheetBridge(Workbench& wb, QObject* parent) : QObject(parent), wb_(wb) {
    handle_ = wb_.sheet.addListener([this](Cell c) { changed(c); });
}

SheetBridge::~SheetBridge() { wb_.sheet.removeListener(handle_); }

void SheetBridge::watch(Cell c, QObject* owner, std::function<void()> f) {
    watchers_[c.id].push_back({owner, std::move(f)});
    if (owners_.insert(owner).second) connect(owner, &QObject::destroyed, this, [this, owner] { forget(owner); });
}

void SheetBridge::changed(Cell c) {
    auto it = watchers_.find(c.id);
    if (it == watchers_.end()) return;
    // A watcher may write other cells; copy so the list can change meanwhile.
    std::vector<Watcher> copy = it->second;
    for (const Watcher& w : copy) w.f();
}

void SheetBridge::forget(QObject* owner) {
    owners_.erase(owner);
    for (auto& [id, list] : watchers_) {
        list.erase(std::remove_if(list.begin(), list.end(), [owner](const Watcher& w) { return w.owner == owner; }),
                   list.end());
    }
}

bool SheetBridge::enter(const std::function<void()>& action) {
    const bool ok = runGuarded(wb_, action);
    emit entryDone();
    return ok;
}

bool guarded(Workbench& wb, const std::function<void()>& handler) { return runGuarded(wb, handler); }

}  // namespace tarvokin::ui
