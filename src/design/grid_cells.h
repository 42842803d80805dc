// The wing and stabiliser grids by panel: one column per panel (b..f), one row
// per quantity. Index 0 is panel 1.
#pragma once

#include <array>

#include "core/cells.h"

namespace tarvokin::grid {

using Row = std::array<Cell, 5>;

// Wing, F_GEO_SF.
inline constexpr Row kRoot{F_GEO_SF::b5, F_GEO_SF::c5, F_GEO_SF::d5, F_GEO_SF::e5, F_GEO_SF::f5};
inline constexpr Row kTip{F_GEO_SF::b6, F_GEO_SF::c6, F_GEO_SF::d6, F_GEO_SF::e6, F_GEO_SF::f6};
inline constexpr Row kLength{F_GEO_SF::b7, F_GEO_SF::c7, F_GEO_SF::d7, F_GEO_SF::e7, F_GEO_SF::f7};
inline constexpr Row kSweep{F_GEO_SF::b8, F_GEO_SF::c8, F_GEO_SF::d8, F_GEO_SF::e8, F_GEO_SF::f8};
inline constexpr Row kTwist{F_GEO_SF::b9, F_GEO_SF::c9, F_GEO_SF::d9, F_GEO_SF::e9, F_GEO_SF::f9};
inline constexpr Row kDihedral{F_GEO_SF::B10, F_GEO_SF::C10, F_GEO_SF::D10, F_GEO_SF::E10, F_GEO_SF::F10};

// Stabiliser, F_GEO_STAB.
inline constexpr Row kStabRoot{F_GEO_STAB::b16, F_GEO_STAB::c16, F_GEO_STAB::D16, F_GEO_STAB::e16,
                               F_GEO_STAB::f16};
inline constexpr Row kStabTip{F_GEO_STAB::b17, F_GEO_STAB::c17, F_GEO_STAB::d17, F_GEO_STAB::e17,
                              F_GEO_STAB::f17};
inline constexpr Row kStabLength{F_GEO_STAB::b18, F_GEO_STAB::c18, F_GEO_STAB::d18, F_GEO_STAB::e18,
                                 F_GEO_STAB::f18};
inline constexpr Row kStabSweep{F_GEO_STAB::b19, F_GEO_STAB::c19, F_GEO_STAB::d19, F_GEO_STAB::e19,
                                F_GEO_STAB::f19};

// Position of a cell in a row (0..4), or -1.
constexpr int column(const Row& row, Cell c) {
    for (int i = 0; i < 5; ++i)
        if (row[static_cast<size_t>(i)] == c) return i;
    return -1;
}

}  // namespace tarvokin::grid
