// What each editable field of the design panels does with a key, a change and
// Enter: the entry check, the replacement of empty or zero values, and the
// recalculation. Windows and the command-line program both go through here.
#pragma once

#include <string_view>

#include "core/cells.h"

namespace tarvokin {

class Workbench;

enum class EntryCheck { None, Decimal, DecimalSigned, Integer, IntegerSigned };

// The key-press check of a field (None for cells that are not typed into).
EntryCheck entryCheckOf(Cell c);

// The change step of a field, after its text changed (replacement rules, and
// the recalculation for the fields that run it from their change step).
void onFieldChange(Workbench& wb, Cell c);

// The Enter step of a field (the grid fields recalculate here).
void onFieldEnter(Workbench& wb, Cell c);

// Registers the change and Enter steps above as the handlers of every field
// of every window that has no handler of its own.
void installFieldRules(Workbench& wb);

}  // namespace tarvokin
