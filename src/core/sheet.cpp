#include "core/sheet.h"

#include <algorithm>

#include "core/list_items.h"
#include "core/text_case.h"

namespace tarvokin {

namespace {
const std::vector<std::string>& emptyItems() {
    static const std::vector<std::string> none;
    return none;
}
}  // namespace

Sheet::Sheet()
    : text_(kCellCount),
      listIndex_(kCellCount, -1),
      parsed_(kCellCount),
      items_(kCellCount) {
    for (const FixedList& fl : fixedLists()) {
        items_[fl.cell.id] = std::make_shared<const std::vector<std::string>>(fl.items);
    }
    reset();
}

void Sheet::reset() {
    const auto& table = cellTable();
    for (uint16_t i = 0; i < kCellCount; ++i) {
        const CellDef& d = table[i];
        if (d.kind == CellKind::List) {
            int idx = static_cast<int>(leadingNumber(d.defaultText));
            const auto& it = items(Cell{i});
            if (idx >= static_cast<int>(it.size())) idx = -1;
            record(Cell{i});
            listIndex_[i] = idx;
            text_[i] = idx >= 0 ? it[static_cast<size_t>(idx)] : std::string();
        } else {
            if (text_[i] != d.defaultText) record(Cell{i});
            text_[i] = d.defaultText;
        }
        textChanged(Cell{i});
        notify(Cell{i});
    }
}

void Sheet::set(Cell c, std::string_view value) {
    std::string& t = text_[c.id];
    if (t == value) return;
    record(c);
    t.assign(value);
    textChanged(c);
    if (isList(c)) {
        // An editable list whose text is typed: the position follows the text.
        const auto& it = items(c);
        int idx = -1;
        for (size_t i = 0; i < it.size(); ++i) {
            if (it[i] == t) {
                idx = static_cast<int>(i);
                break;
            }
        }
        listIndex_[c.id] = idx;
    }
    notify(c);
}

double Sheet::parseStrict(Cell c) const {
    Parsed& p = parsed_[c.id];
    if (!(p.state & kStrictBad)) {
        double v = 0.0;
        if (tryNumber(text_[c.id], v)) {
            p.strict = v;
            p.state |= kStrictKnown;
            return v;
        }
        p.state |= kStrictBad;
    }
    throwTypeMismatch(text_[c.id]);
}

double Sheet::parseLenient(Cell c) const {
    Parsed& p = parsed_[c.id];
    p.lenient = leadingNumber(text_[c.id]);
    p.state |= kLenientKnown;
    return p.lenient;
}

const std::vector<std::string>& Sheet::items(Cell c) const {
    const auto& p = items_[c.id];
    return p ? *p : emptyItems();
}

void Sheet::setItems(Cell c, std::vector<std::string> items) {
    record(c);
    items_[c.id] = std::make_shared<const std::vector<std::string>>(std::move(items));
    const auto& it = *items_[c.id];
    int idx = -1;
    for (size_t i = 0; i < it.size(); ++i) {
        if (it[i] == text_[c.id]) {
            idx = static_cast<int>(i);
            break;
        }
    }
    listIndex_[c.id] = idx;
    if (idx < 0) text_[c.id].clear();
    textChanged(c);
    notify(c);
}

void Sheet::restore(Cell c, const CellState& st) {
    if (state(c) == st) return;
    record(c);
    text_[c.id] = st.text;
    listIndex_[c.id] = st.listIndex;
    items_[c.id] = st.items;
    textChanged(c);
    notify(c);
}

SheetJournal::SheetJournal() : seen_(kCellCount, false) {
    // The main window's cells never enter a journal: mark them seen at once.
    const auto& table = cellTable();
    for (uint16_t i = 0; i < kCellCount; ++i) seen_[i] = table[i].form == Form::F_Main;
}

void Sheet::recordSlow(Cell c) {
    if (journal_->seen_[c.id]) return;
    journal_->seen_[c.id] = true;
    journal_->entries_.push_back({c.id, state(c)});
}

bool Sheet::isList(Cell c) const { return cellTable()[c.id].kind == CellKind::List; }

void Sheet::setListIndex(Cell c, int index) {
    const auto& it = items(c);
    if (index < -1 || index >= static_cast<int>(it.size())) {
        throw RunError(380, "Valeur de propriété non valide");
    }
    if (listIndex_[c.id] == index && (index < 0 || text_[c.id] == it[static_cast<size_t>(index)])) return;
    record(c);
    listIndex_[c.id] = index;
    text_[c.id] = index >= 0 ? it[static_cast<size_t>(index)] : std::string();
    textChanged(c);
    notify(c);
}

bool Sheet::selectText(Cell c, std::string_view text) {
    const auto& it = items(c);
    for (size_t i = 0; i < it.size(); ++i) {
        if (equalsNoCase(it[i], text)) {
            setListIndex(c, static_cast<int>(i));
            return true;
        }
    }
    return false;
}

int Sheet::addListener(Listener l) {
    int h = nextListener_++;
    listeners_.emplace_back(h, std::move(l));
    return h;
}

void Sheet::removeListener(int handle) {
    listeners_.erase(std::remove_if(listeners_.begin(), listeners_.end(),
                                    [handle](const auto& p) { return p.first == handle; }),
                     listeners_.end());
}

void Sheet::notify(Cell c) {
    for (auto& [h, l] : listeners_) l(c);
}

}  // namespace tarvokin
