// What the windows' controls do, by window and control name, and the history
// of the user's entries. Both belong to the run: the windows' logic fills the
// table once at start, the entry path walks it for every user action, and
// each action it runs becomes one step of the history.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/sheet.h"

namespace tarvokin {

class Workbench;

// The kinds of user action a control can receive.
enum class Act : uint8_t {
    Change,     // a field's text changed (each key), a check box, a list choice
    Enter,      // Enter in a field
    Click,      // a button, a menu entry, an option
    Scroll,     // a slider moved (each step of a drag)
    ScrollEnd,  // a slider released
    Press,      // mouse button down on a drawing
    Move,       // mouse moved on a drawing
    Release,    // mouse button up on a drawing
    Restored,   // the cell was put back by an undo or a redo
};

// One user action: the control (name and index within its group), the text
// or value it carries, and for the mouse the position and buttons.
struct Action {
    Act act = Act::Click;
    std::string form;
    std::string control;
    int index = -1;
    std::string text;
    double x = 0, y = 0;
    int button = 0;  // 1 left, 2 right, 4 middle
    int shift = 0;   // 1 shift, 2 ctrl, 4 alt
};

using Handler = std::function<void(Workbench&, const Action&)>;

// Handlers by window, control and kind of action. A control named "*" stands
// for every control of the window that has no handler of its own for that
// kind (the field rules of the design panels are registered so).
class HandlerTable {
public:
    void on(std::string_view form, std::string_view control, Act act, Handler h);
    // A handler that changes what is shown (a window opened, a tab, a
    // hover read-out) and not the design: it runs outside the history.
    void onView(std::string_view form, std::string_view control, Act act, Handler h);
    bool isView(std::string_view form, std::string_view control, Act act) const;
    const Handler* find(std::string_view form, std::string_view control, Act act) const;
    bool has(std::string_view form, std::string_view control, Act act) const {
        return find(form, control, act) != nullptr;
    }
    // The registered controls of a window with the kinds they take, for the
    // command-line program's listing and the tests.
    std::vector<std::pair<std::string, Act>> controls(std::string_view form) const;

private:
    std::map<std::string, Handler, std::less<>> handlers_;
    std::map<std::string, bool, std::less<>> views_;
};

// One user entry: the cells it changed, each before and after.
struct EntryStep {
    std::string label;  // "F_GEO_SF.b7", "F_3D.Command5(0)"...
    struct Change {
        uint16_t id;
        CellState before, after;
    };
    std::vector<Change> changes;
};

// The history of the entries since the project was opened or made.
struct EntryHistory {
    std::vector<EntryStep> steps;
    size_t position = 0;  // steps [0, position) are applied; the rest can be redone
    // The position at which the cells were as in the project's file; -1 when
    // no position is (the file was saved from a state the history has left).
    std::ptrdiff_t savedAt = 0;
    // An entry still going on (a field being typed into, a slider being
    // dragged): its journal and the key that continues it.
    std::unique_ptr<SheetJournal> journal;
    std::string openKey;
    std::string openLabel;
    // Handlers under way: an entry that a handler makes itself belongs to
    // the step of the entry that runs it.
    int running = 0;
    // Steps kept at most; the oldest go first.
    size_t limit = 5000;

    bool canUndo() const { return position > 0; }
    bool canRedo() const { return position < steps.size(); }
    bool modified() const { return savedAt != static_cast<std::ptrdiff_t>(position); }
};

}  // namespace tarvokin
