// The key-press check of the numeric fields: which key a field accepts.
// A refused key is dropped silently; a pasted text is not checked here.
#pragma once

#include <string_view>

namespace tarvokin {

constexpr int kKeyBackspace = 8;
constexpr int kKeyMinus = 45;
constexpr int kKeyPoint = 46;
constexpr int kKeyComma = 44;

// A field that takes a number with decimals. `text` is the field's text,
// `selStart`/`selLength` its selection and `caret` the insertion point.
// Returns the key to insert, or 0 to refuse it. The decimal key, typed "."
// or ",", is given back as the point, the separator of all number text of
// the run; a second one is refused. "-" needs allowSign and goes in front only.
int CheckDecimalKey(int key, std::string_view text, int selStart, int selLength, int caret, bool allowSign);

// A field that takes a whole number: digits, backspace, and "-" when signed.
int CheckIntegerKey(int key, bool allowSign);

}  // namespace tarvokin
