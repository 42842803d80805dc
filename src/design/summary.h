// The summary of the design window: a heading and twelve lines of the
// model's main data, rebuilt after each recalculation and language change.
#pragma once

#include <string>

namespace tarvokin {

class Sheet;

// Line end inside a multi-line label.
inline constexpr const char* kLabelLineEnd = "\n";

// Fills F_3D.Label17 and the label group F_3D.Label_2 from the current cells,
// in the language of `languageCode` ("0" French, "1" English, "2" Spanish,
// "3" Italian; French for any other). It reads only; no calculation depends on it.
void BuildSummary(Sheet& sheet, const std::string& languageCode);

}  // namespace tarvokin
