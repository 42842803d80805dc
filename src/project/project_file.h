// The keys of a project file (.MDL) and the cells they fill: one table walked
// to read and to write. Reading assigns each key as a typed entry would
// (rounding, replacement of empty values, the design window's mirrors); the
// sequence of a load, with its recalculations, belongs to the caller.
#pragma once

#include <string>
#include <vector>

#include "core/cells.h"

namespace tarvokin {

class Workbench;
class Sheet;
class ProfileDocument;

// The keys in three groups, read in this order by a load: the design, then
// (after the recalculation) the power train, then the airfoil slots.
enum class KeyGroup { Design, Power, AirfoilSlots };

void ReadProjectKeys(Sheet& s, const ProfileDocument& doc, KeyGroup group);

// Every written key into doc; the airfoil slots only once the airfoil panel
// has filled them.
void WriteProjectKeys(const Sheet& s, ProfileDocument& doc);

// The keys that a project file both holds and gives back, in file order:
// section, key as written and as read, its cell, and whether the value is
// computed (written for other readers, recomputed on load).
struct ProjectKeyInfo {
    std::string section, key, readKey;
    Cell cell;
    bool computed = false;
};
std::vector<ProjectKeyInfo> ProjectKeyList();

// A project named without its folder lies in the program's folder; so does a
// relative path.
std::string completedPath(const Workbench& wb, const std::string& path);

}  // namespace tarvokin
