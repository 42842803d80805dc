// The thickness forms of the NACA 6 and 6A series as their sources print
// them: one text of numbers (per cent of chord, "," between them) a series
// and thickness, on the 26 standard stations. The text is turned into
// numbers once, the first time a 6-series airfoil is asked for.
#pragma once

#include <vector>

namespace tarvokin {

struct Naca6TableText {
    const char* series;    // "64", "64A"
    int thickness;         // per cent of chord
    const char* source;    // "published" or "recomputed"
    const char* ordinates; // half thickness at each station, per cent of chord
};

const std::vector<Naca6TableText>& naca6TableTexts();
// The stations of every table, per cent of chord, leading edge first.
const char* naca6Stations();

}  // namespace tarvokin
