// What the controls of the aspect-ratio window do: every change of an input
// refreshes the whole panel, which takes a few milliseconds at most.
#include <algorithm>
#include <cmath>

#include "design/aspect_ratio.h"
#include "core/text_case.h"
#include "core/workbench.h"

namespace tarvokin::allongement {

namespace {

bool inGroup(const CellGroup& g, Cell c, int& index) {
    for (int i = g.firstIndex; i < g.firstIndex + g.count; ++i) {
        if (g[i] == c) {
            index = i;
            return true;
        }
    }
    return false;
}

// A slider position for a field's value, within the slider's range.
std::string sliderPosition(double value, int low, int high) {
    if (!std::isfinite(value)) return std::to_string(low);
    return plain(std::clamp(std::round(value), static_cast<double>(low), static_cast<double>(high)));
}

}  // namespace

bool IsTypedField(Cell c) {
    using namespace F_ALLONGEMENT;
    for (Cell f : {B4, b5, c5, B10, b15, b16, b17, T_MAX_G1, T_MAX_G2, T_MAX_G3, T_MAX_G5})
        if (c == f) return true;
    return false;
}

void CellChanged(Workbench& wb, Cell c) {
    using namespace F_ALLONGEMENT;
    Sheet& s = wb.sheet;
    int i = 0;
    if (IsTypedField(c)) {
        if (trim(s.text(c)).empty()) s.set(c, "0");
        if (c == b15) s.set(HScroll1, sliderPosition(s.val(b15), kSpeedSliderMin, kSpeedSliderMax));
        if (c == b16) s.set(HScroll2, sliderPosition(s.val(b16) * 100, kCzSliderMin, kCzSliderMax));
    } else if (c == HScroll1) {
        if (std::isfinite(s.val(HScroll1))) s.set(b15, plain(s.val(HScroll1)));
    } else if (c == HScroll2) {
        if (std::isfinite(s.val(HScroll2))) s.setFixed(b16, s.val(HScroll2) / 100, 2);
    } else if (inGroup(Option1, c, i)) {
        // Two option buttons: exactly one of them is set.
        s.set(Option1[1 - i], s.on(c) ? "0" : "1");
    } else if (!inGroup(Check2, c, i)) {
        return;  // outputs and cells of other windows
    }
    MajAllongement(wb);
}

void Command1_Click(Workbench& wb, int index) {
    if (index != 0 && index != 1) return;
    Sheet& s = wb.sheet;
    double a = s.val(F_ALLONGEMENT::B10) + (index == 1 ? 1 : -1);
    if (!std::isfinite(a)) a = kChosenAMin;
    s.set(F_ALLONGEMENT::B10, plain(std::clamp(a, kChosenAMin, kChosenAMax)));
    MajAllongement(wb);
}

}  // namespace tarvokin::allongement
