// What the airfoil analysis windows show beyond their cells: the pressure
// distribution of the last run, the tree and the polar of the database
// browser, and the six polars of the interpolation window.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "core/chart_data.h"
#include "core/polar_store.h"

namespace tarvokin {

// The distribution of one point along the chord.
struct PressureDistribution {
    bool viscous = false;
    std::vector<ChartPoint> cp;     // x, Cp
    std::vector<ChartPoint> speed;  // x, q/V
    // x, value by quantity key; quantities the file does not give are absent.
    std::map<std::string, std::vector<ChartPoint>> quantities;
    bool hasCp() const { return !cp.empty(); }
    double cpMax = 0.0, cpMin = 0.0;  // running extremes, valid when hasCp()
};

struct PressureState {
    PressureDistribution shown;  // empty after a run without result
    // A run waits for XFOIL with the interface served: a change made then is
    // kept for one more run once this one is over (the file names are fixed,
    // so two runs must never overlap).
    bool running = false;
    bool again = false;
    // An undo or a redo restored fields of the window: the recalculation
    // that follows computes them again, once for the whole step.
    bool stale = false;
};

// One polar file of the database tree.
struct DatabasePolar {
    std::string file;  // the file's name in POLAIRES
    std::string Re;    // the text behind the last "_"
};

// An airfoil of the tree, with its polars; `known` when the catalogue lists it.
struct DatabaseAirfoil {
    std::string name;
    bool known = false;
    std::vector<DatabasePolar> polars;
};

struct DatabaseState {
    std::vector<DatabaseAirfoil> tree;
    // The polar shown: Cl against alpha, Cl against Cd, its title and header.
    std::vector<ChartPoint> clAlpha, clCd;
    std::string title;
    // Bumped when the tree is rebuilt, so that a window redraws it.
    int treeVersion = 0;
};

}  // namespace tarvokin
