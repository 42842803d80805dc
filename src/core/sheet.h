// The sheet: one current text per cell of every window, as entered, converted
// to a number at the moment of use. Windows are views of it and listen to it.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/cells.h"
#include "core/numbers.h"

namespace tarvokin {

// Everything a cell holds: its text, its list position and its list's items.
struct CellState {
    std::string text;
    int listIndex = -1;
    std::shared_ptr<const std::vector<std::string>> items;
    bool operator==(const CellState&) const = default;
};

// While a journal is set on the sheet, the sheet keeps the state of each cell
// before its first change: what an undo puts back. The main window's own
// cells (toolbar marks, title, menus) are the run's state, not the design's,
// and are not kept.
class SheetJournal {
public:
    SheetJournal();
    struct Entry {
        uint16_t id;
        CellState before;
    };
    const std::vector<Entry>& entries() const { return entries_; }
    bool empty() const { return entries_.empty(); }

private:
    friend class Sheet;
    std::vector<Entry> entries_;
    std::vector<bool> seen_;
};

class Sheet {
public:
    Sheet();

    // Back to the declared defaults (a new, empty design). Listeners are told.
    void reset();

    const std::string& text(Cell c) const { return text_[c.id]; }
    void set(Cell c, std::string_view value);

    // Strict conversion (empty or "-" is a format error) and lenient leading read.
    // Each conversion is kept until the cell's text changes: the formulas read
    // the same cells many times in one recalculation.
    double num(Cell c) const {
        const Parsed& p = parsed_[c.id];
        return (p.state & kStrictKnown) ? p.strict : parseStrict(c);
    }
    double val(Cell c) const {
        const Parsed& p = parsed_[c.id];
        return (p.state & kLenientKnown) ? p.lenient : parseLenient(c);
    }
    // True when the cell reads as a number other than 0 (flags, ready marks).
    bool on(Cell c) const { return val(c) != 0.0; }

    // Writes a number with a fixed count of decimals ("." separator).
    void setFixed(Cell c, double v, int decimals) { set(c, fixed(v, decimals)); }
    void setPlain(Cell c, double v) { set(c, plain(v)); }

    // ---- list controls: items, position (-1 none), text = item at position ----
    const std::vector<std::string>& items(Cell c) const;
    void setItems(Cell c, std::vector<std::string> items);  // keeps the text if still listed
    int listIndex(Cell c) const { return listIndex_[c.id]; }
    // Position -1..count-1; text follows. Out of range is the invalid-value error.
    void setListIndex(Cell c, int index);
    // Selects the item equal to text (case-insensitive as the list controls
    // compare); false when no item matches and the list is left as it was.
    bool selectText(Cell c, std::string_view text);
    bool isList(Cell c) const;

    // The whole state of a cell, and its return: text, position and items
    // together, so that a list comes back with the entries it had.
    CellState state(Cell c) const { return {text_[c.id], listIndex_[c.id], items_[c.id]}; }
    void restore(Cell c, const CellState& s);

    // The journal that records the cells' states before their first change;
    // nullptr stops the recording. The sheet does not own it.
    void setJournal(SheetJournal* j) { journal_ = j; }
    SheetJournal* journal() const { return journal_; }

    // Change notification: called after a cell's text or position changed.
    using Listener = std::function<void(Cell)>;
    int addListener(Listener l);
    void removeListener(int handle);

private:
    void notify(Cell c);
    void record(Cell c) {
        if (journal_) recordSlow(c);
    }
    void recordSlow(Cell c);
    void textChanged(Cell c) { parsed_[c.id].state = 0; }
    double parseStrict(Cell c) const;
    double parseLenient(Cell c) const;

    enum : uint8_t { kStrictKnown = 1, kStrictBad = 2, kLenientKnown = 4 };
    struct Parsed {
        double strict = 0.0;
        double lenient = 0.0;
        uint8_t state = 0;
    };

    std::vector<std::string> text_;
    std::vector<int> listIndex_;
    mutable std::vector<Parsed> parsed_;
    std::vector<std::shared_ptr<const std::vector<std::string>>> items_;
    std::vector<std::pair<int, Listener>> listeners_;
    int nextListener_ = 1;
    SheetJournal* journal_ = nullptr;
};

}  // namespace tarvokin
