// A user's home with the demo model opened as the application opens it, the
// windows' logic installed, and the messages and questions kept.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "core/cells.h"
#include "core/workbench.h"
#include "entry/entry_path.h"
#include "entry/session.h"
#include "entry/window_logic.h"
#include "support/temp_dir.h"

namespace tarvokin {
// Failures name the text and the list position, not the bytes.
inline void PrintTo(const CellState& c, std::ostream* os) { *os << '"' << c.text << "\" @" << c.listIndex; }
}  // namespace tarvokin

namespace tarvokin::test {

// The first cell whose state differs, as "FORM.NAME", or "" when none does.
inline std::string firstDifference(const std::vector<CellState>& a, const std::vector<CellState>& b) {
    for (uint16_t i = 0; i < a.size() && i < b.size(); ++i)
        if (!(a[i] == b[i])) return cellPath(Cell{i}) + ": " + a[i].text + " / " + b[i].text;
    return a.size() == b.size() ? "" : "size";
}

struct DemoOpen {
    TempDir dir;
    Workbench wb{dir.path()};
    std::vector<std::string> messages, questions;
    bool answer = false;

    DemoOpen() {
        copyInstallation(dir.path());
        InstallWindowLogic(wb);
        wb.showMessage = [this](const std::string& t) { messages.push_back(t); };
        wb.askUser = [this](const std::string& t) {
            questions.push_back(t);
            return answer;
        };
        ReadSettingsAndCatalogue(wb);
        OpenProject(wb, demo());
    }
    std::string demo() const { return (dir.path() / "MODELES" / "DEMO.MDL").string(); }

    // Every cell's whole state, to compare two moments of the sheet.
    std::vector<CellState> snapshot() const {
        std::vector<CellState> all;
        all.reserve(kCellCount);
        for (uint16_t i = 0; i < kCellCount; ++i) all.push_back(wb.sheet.state(Cell{i}));
        return all;
    }
};

}  // namespace tarvokin::test
