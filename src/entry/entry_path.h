// The one way a user's action reaches the program. The Qt windows, the
// command-line program (--set, --click, --undo) and the tests all call these;
// each finds the window's handler in the workbench's table by window and
// control name and runs it as one step of the history, which undo and redo
// walk. A run-time error is left to the caller's event boundary; the cells
// changed before it still form the step, so it can be undone.
#pragma once

#include <string_view>

#include "core/cells.h"
#include "core/entry_table.h"

namespace tarvokin {

class Workbench;

// ---- fields, lists, check boxes, sliders (controls bound to a cell) -----------

// A key typed into a field: the field takes the text, then its change step
// runs. Keys typed one after the other into one field make one step, which
// Enter or an action on another control closes.
void Type(Workbench& wb, Cell c, std::string_view text);
// Enter in a field.
void PressEnter(Workbench& wb, Cell c);
// A whole entry: the text typed, then Enter. One step.
void enterField(Workbench& wb, Cell c, std::string_view text);
// A choice in a list (position -1 for none).
void Choose(Workbench& wb, Cell list, int index);
// A check box ticked or cleared.
void Tick(Workbench& wb, Cell flag, bool on);
// A slider moved to value; the moves of one drag and its release are one step.
void Slide(Workbench& wb, Cell slider, std::string_view value);
void SlideEnd(Workbench& wb, Cell slider);

// ---- buttons, menu entries, drawings ---------------------------------------------

// A click on a control that holds no cell of its own (a button): false when
// the window has no handler for it.
bool Click(Workbench& wb, std::string_view form, std::string_view control, int index = -1);
// A mouse action on a drawing (Press, Move, Release): a press opens a step
// that the moves extend and the release closes; a move with no button held
// (a hover read-out) is no entry and is not kept.
bool Mouse(Workbench& wb, const Action& a);
// Any action by its description; what the functions above all come to.
bool Perform(Workbench& wb, const Action& a);

// The field being typed into lost the focus: its step is complete.
void EndEntry(Workbench& wb);

// ---- history --------------------------------------------------------------------

// Puts back the cells of the last step (the redo of the next one) and
// recalculates. False when there is nothing to undo (redo); the sheet is then
// untouched. The cells are all restored before the recalculation, so an error
// in it leaves the restored entry whole.
bool Undo(Workbench& wb);
bool Redo(Workbench& wb);
// A project opened or made: the history starts again, the file as its state.
void ClearHistory(Workbench& wb);
// The project was written: its file now holds the present state (the state
// at the end of the step under way, when a step is under way).
void MarkSaved(Workbench& wb);

// "FORM.CONTROL" or "FORM.CONTROL(i)" into an action of the given kind;
// false when the text has no ".".
bool ParseControl(std::string_view text, Act act, Action& out);

}  // namespace tarvokin
