#include "entry/entry_keys.h"

namespace tarvokin {

namespace {
bool isDigit(int key) { return key >= '0' && key <= '9'; }
}  // namespace

int CheckDecimalKey(int key, std::string_view text, int selStart, int selLength, int caret, bool allowSign) {
    if (key == kKeyMinus && !allowSign) return 0;

    // A sign typed over the selected sign, or at the start of a selection,
    // replaces what is selected: it stays the first character.
    const bool startsWithMinus = !text.empty() && text.front() == '-';
    const bool signSelected = startsWithMinus && selStart == 0 && selLength > 0;
    const bool selectionAtStart = allowSign && caret == 0 && selLength > 0;
    if (key == kKeyMinus && (signSelected || selectionAtStart)) return kKeyMinus;

    if (key == kKeyPoint || key == kKeyComma) {
        // A field has one decimal separator, whichever a paste brought in.
        if (text.find('.') != std::string_view::npos || text.find(',') != std::string_view::npos) return 0;
        return kKeyPoint;
    }
    if (key == kKeyMinus) {
        if (startsWithMinus) return 0;
        if (caret != 0) return 0;
        return kKeyMinus;
    }
    if (isDigit(key) || key == kKeyBackspace) return key;
    return 0;
}

int CheckIntegerKey(int key, bool allowSign) {
    if (key == kKeyMinus) return allowSign ? kKeyMinus : 0;
    if (isDigit(key) || key == kKeyBackspace) return key;
    return 0;
}

}  // namespace tarvokin
