// The fixed entries of the list controls whose positions a project stores.
#pragma once

#include <string>
#include <vector>

#include "core/cells.h"

namespace tarvokin {

struct FixedList {
    Cell cell;
    std::vector<std::string> items;
};

const std::vector<FixedList>& fixedLists();

// V-tail opening angle of each position of F_GEO_STAB.b21: 180, 120, ... 90.
double openingAngle(int listIndex);

}  // namespace tarvokin
