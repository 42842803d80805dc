#include "entry/entry_path.h"

#include <algorithm>
#include <charconv>

#include "core/workbench.h"
#include "design/recalc.h"

namespace tarvokin {

namespace {

Action actionOf(Cell c, Act act, std::string_view text = {}) {
    const CellDef& d = cellTable()[c.id];
    Action a;
    a.act = act;
    a.form = formName(d.form);
    a.control = d.name;
    a.index = d.index;
    a.text = std::string(text);
    return a;
}

std::string labelOf(const Action& a) {
    std::string l = a.form + "." + a.control;
    if (a.index >= 0) l += "(" + std::to_string(a.index) + ")";
    return l;
}

// ---- steps ------------------------------------------------------------------------

void commitStep(Workbench& wb) {
    EntryHistory& h = wb.history;
    if (!h.journal || h.running > 0) return;
    wb.sheet.setJournal(nullptr);
    std::unique_ptr<SheetJournal> journal = std::move(h.journal);
    h.openKey.clear();
    EntryStep step;
    step.label = std::move(h.openLabel);
    for (const SheetJournal::Entry& e : journal->entries()) {
        CellState after = wb.sheet.state(Cell{e.id});
        if (after == e.before) continue;
        step.changes.push_back({e.id, e.before, std::move(after)});
    }
    const bool saved = h.savedAt == -2;  // the file was written during the step
    if (step.changes.empty()) {
        if (saved) h.savedAt = static_cast<std::ptrdiff_t>(h.position);
        return;
    }
    // A new entry ends what could have been redone.
    h.steps.resize(h.position);
    if (h.savedAt > static_cast<std::ptrdiff_t>(h.position)) h.savedAt = -1;
    h.steps.push_back(std::move(step));
    ++h.position;
    if (saved) h.savedAt = static_cast<std::ptrdiff_t>(h.position);
    if (h.steps.size() > h.limit) {
        const size_t drop = h.steps.size() - h.limit;
        h.steps.erase(h.steps.begin(), h.steps.begin() + static_cast<std::ptrdiff_t>(drop));
        h.position -= drop;
        h.savedAt = h.savedAt >= static_cast<std::ptrdiff_t>(drop) ? h.savedAt - static_cast<std::ptrdiff_t>(drop) : -1;
    }
}

// Opens the step of key, or goes on with it when it is the one under way.
void beginStep(Workbench& wb, const std::string& key, const std::string& label) {
    EntryHistory& h = wb.history;
    if (h.journal && h.openKey == key) return;
    commitStep(wb);
    h.journal = std::make_unique<SheetJournal>();
    h.openKey = key;
    h.openLabel = label;
    wb.sheet.setJournal(h.journal.get());
}

// Runs the handler of an action inside the step of key; closes the step
// afterwards when asked, also when the handler ends in an error. An action
// that a handler makes itself joins the step of the entry that runs it; one
// of the main window or one that only changes what is shown runs outside the
// history.
bool runInStep(Workbench& wb, const Action& a, const std::string& key, bool close,
               const std::function<void()>& before = nullptr) {
    const Handler* h = wb.handlers.find(a.form, a.control, a.act);
    if (!h && !before) return false;
    EntryHistory& hist = wb.history;
    struct Running {
        EntryHistory& hist;
        explicit Running(EntryHistory& h) : hist(h) { ++hist.running; }
        ~Running() { --hist.running; }
    };
    if (hist.running > 0) {
        Running r(hist);
        if (before) before();
        if (h) (*h)(wb, a);
        return true;
    }
    if (a.form == "F_Main" || wb.handlers.isView(a.form, a.control, a.act)) {
        commitStep(wb);
        Running r(hist);
        if (before) before();
        if (h) (*h)(wb, a);
        return true;
    }
    beginStep(wb, key, labelOf(a));
    struct Closer {
        Workbench& wb;
        bool close;
        ~Closer() {
            if (close) commitStep(wb);
        }
    } closer{wb, close};
    Running r(hist);
    if (before) before();
    if (h) (*h)(wb, a);
    return true;
}

std::string cellKey(const char* kind, Cell c) { return std::string(kind) + std::to_string(c.id); }

// After an undo or a redo: what a control needs beyond its cells (an airfoil
// slot reads its polars again), then the recalculation for everything that
// is not a cell (tables, scene, charts).
void afterRestore(Workbench& wb, const EntryStep& step) {
    for (const EntryStep::Change& ch : step.changes) {
        const Action a = actionOf(Cell{ch.id}, Act::Restored);
        if (const Handler* h = wb.handlers.find(a.form, a.control, Act::Restored)) (*h)(wb, a);
    }
    RecalcAll(wb);
}

}  // namespace

void Type(Workbench& wb, Cell c, std::string_view text) {
    const Action a = actionOf(c, Act::Change, text);
    runInStep(wb, a, cellKey("type:", c), false, [&] { wb.sheet.set(c, text); });
}

void PressEnter(Workbench& wb, Cell c) {
    const Action a = actionOf(c, Act::Enter, wb.sheet.text(c));
    runInStep(wb, a, cellKey("type:", c), true, [] {});
}

void enterField(Workbench& wb, Cell c, std::string_view text) {
    Type(wb, c, text);
    PressEnter(wb, c);
}

void Choose(Workbench& wb, Cell list, int index) {
    const Action a = actionOf(list, Act::Change);
    runInStep(wb, a, cellKey("choose:", list), true, [&] { wb.sheet.setListIndex(list, index); });
}

void Tick(Workbench& wb, Cell flag, bool on) {
    const Action a = actionOf(flag, Act::Change, on ? "1" : "0");
    runInStep(wb, a, cellKey("tick:", flag), true, [&] { wb.sheet.set(flag, on ? "1" : "0"); });
}

void Slide(Workbench& wb, Cell slider, std::string_view value) {
    const Action a = actionOf(slider, Act::Scroll, value);
    runInStep(wb, a, cellKey("slide:", slider), false, [&] { wb.sheet.set(slider, value); });
}

void SlideEnd(Workbench& wb, Cell slider) {
    const Action a = actionOf(slider, Act::ScrollEnd, wb.sheet.text(slider));
    runInStep(wb, a, cellKey("slide:", slider), true, [] {});
}

bool Click(Workbench& wb, std::string_view form, std::string_view control, int index) {
    Action a;
    a.act = Act::Click;
    a.form = std::string(form);
    a.control = std::string(control);
    a.index = index;
    return Perform(wb, a);
}

bool Mouse(Workbench& wb, const Action& a) { return Perform(wb, a); }

bool Perform(Workbench& wb, const Action& a) {
    Cell c{0};
    const bool isCell = findCell(labelOf(a), c);
    switch (a.act) {
        case Act::Change:
            if (!isCell) break;
            if (wb.sheet.isList(c)) {
                // A list takes an item's text or its position.
                const auto& items = wb.sheet.items(c);
                auto it = std::find(items.begin(), items.end(), a.text);
                int pos = -1;
                if (it != items.end()) {
                    pos = static_cast<int>(it - items.begin());
                } else if (std::from_chars(a.text.data(), a.text.data() + a.text.size(), pos).ec != std::errc{}) {
                    Type(wb, c, a.text);
                    EndEntry(wb);
                    return true;
                }
                Choose(wb, c, pos);
            } else {
                Type(wb, c, a.text);
            }
            return true;
        case Act::Enter:
            if (!isCell) break;
            PressEnter(wb, c);
            return true;
        case Act::Scroll:
            if (isCell) {
                Slide(wb, c, a.text);
                return true;
            }
            return runInStep(wb, a, "slide:" + labelOf(a), false);
        case Act::ScrollEnd:
            if (isCell) {
                SlideEnd(wb, c);
                return true;
            }
            if (!wb.handlers.has(a.form, a.control, a.act)) {
                EndEntry(wb);
                return true;
            }
            return runInStep(wb, a, "slide:" + labelOf(a), true);
        case Act::Move:
            if (!wb.history.journal || wb.history.openKey != "mouse:" + a.form + "." + a.control) {
                // A hover: shown, never an entry.
                const Handler* h = wb.handlers.find(a.form, a.control, a.act);
                if (!h) return false;
                EndEntry(wb);
                (*h)(wb, a);
                return true;
            }
            return runInStep(wb, a, "mouse:" + a.form + "." + a.control, false);
        case Act::Press: return runInStep(wb, a, "mouse:" + a.form + "." + a.control, false);
        case Act::Release: return runInStep(wb, a, "mouse:" + a.form + "." + a.control, true);
        case Act::Click:
        case Act::Restored: break;
    }
    return runInStep(wb, a, "click:" + labelOf(a), true);
}

void EndEntry(Workbench& wb) { commitStep(wb); }

bool Undo(Workbench& wb) {
    commitStep(wb);
    EntryHistory& h = wb.history;
    if (!h.canUndo() || h.running > 1 || h.journal) return false;
    const EntryStep& step = h.steps[--h.position];
    for (auto it = step.changes.rbegin(); it != step.changes.rend(); ++it) wb.sheet.restore(Cell{it->id}, it->before);
    afterRestore(wb, step);
    return true;
}

bool Redo(Workbench& wb) {
    commitStep(wb);
    EntryHistory& h = wb.history;
    if (!h.canRedo() || h.running > 1 || h.journal) return false;
    const EntryStep& step = h.steps[h.position++];
    for (const EntryStep::Change& ch : step.changes) wb.sheet.restore(Cell{ch.id}, ch.after);
    afterRestore(wb, step);
    return true;
}

void ClearHistory(Workbench& wb) {
    wb.sheet.setJournal(nullptr);
    EntryHistory& h = wb.history;
    h.journal.reset();
    h.openKey.clear();
    h.openLabel.clear();
    h.steps.clear();
    h.position = 0;
    h.savedAt = 0;
}

void MarkSaved(Workbench& wb) {
    EntryHistory& h = wb.history;
    // During a step the file holds the state the step ends with.
    h.savedAt = h.journal ? -2 : static_cast<std::ptrdiff_t>(h.position);
}

bool ParseControl(std::string_view text, Act act, Action& out) {
    const size_t dot = text.find('.');
    if (dot == std::string_view::npos || dot == 0) return false;
    out = Action{};
    out.act = act;
    out.form = std::string(text.substr(0, dot));
    std::string_view rest = text.substr(dot + 1);
    const size_t open = rest.find('(');
    if (open != std::string_view::npos && rest.back() == ')') {
        int index = 0;
        const std::string_view digits = rest.substr(open + 1, rest.size() - open - 2);
        if (std::from_chars(digits.data(), digits.data() + digits.size(), index).ec != std::errc{}) return false;
        out.index = index;
        rest = rest.substr(0, open);
    }
    out.control = std::string(rest);
    return !out.control.empty();
}

}  // namespace tarvokin
