// Typed names of the cells declared in cells.def: F_GEO_SF::b5, F_3D::Slider1[0].
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tarvokin {

enum class Form : uint8_t {
    F_Main,
    F_GEO_SF,
    F_GEO_STAB,
    F_GEO_FUS,
    F_GEO_SF_REGLAGES,
    F_3D,
    F_CALC_MOT,
    F_PROFILS,
    F_PREFER,
    F_GEO_3,
    F_GEO_5,
    F_ALLONGEMENT,
    F_MOTORISATIONS,
    F_SERVOS,
    F_STAB,
    F_STAB_VE,
    F_VLM,
    Gen_Couples_2,
    Gen_Couples_1,
    F_WIZZARD,
    F_CONVERT,
    F_NACA,
    F_RIBS,
    F_AERO,
    F_BASE,
    F_TEST_POL,
};

const char* formName(Form f);

enum class CellKind : uint8_t { Text, List };

namespace cellid {
enum : uint16_t {
#define CELL(f, n, d) f##__##n,
#define LIST(f, n, d) f##__##n,
#define GROUP(f, n, first, count, d) f##__##n, f##__##n##__last = f##__##n + (count)-1,
#define LISTGROUP GROUP
#define TAGGROUP GROUP
#include "core/cells.def"
#undef CELL
#undef LIST
#undef GROUP
#undef LISTGROUP
#undef TAGGROUP
    Count
};
}  // namespace cellid

constexpr int kCellCount = cellid::Count;

struct Cell {
    uint16_t id;
    constexpr bool operator==(const Cell&) const = default;
};

struct CellGroup {
    uint16_t firstId;
    int16_t firstIndex;  // index of the first element (toolbar buttons start at 1)
    int16_t count;
    // Element by its control index.
    constexpr Cell operator[](int index) const {
        return Cell{static_cast<uint16_t>(firstId + (index - firstIndex))};
    }
    constexpr bool holds(int index) const { return index >= firstIndex && index < firstIndex + count; }
};

#define CELL(f, n, d) \
    namespace f {     \
    inline constexpr Cell n{cellid::f##__##n}; }
#define LIST CELL
#define GROUP(f, n, first, count, d) \
    namespace f {                    \
    inline constexpr CellGroup n{cellid::f##__##n, first, count}; }
#define LISTGROUP GROUP
#define TAGGROUP GROUP
#include "core/cells.def"
#undef CELL
#undef LIST
#undef GROUP
#undef LISTGROUP
#undef TAGGROUP

struct CellDef {
    Form form;
    const char* name;
    int index;         // -1 outside a group
    bool tagProperty;  // printed as name(i).Tag
    CellKind kind;
    std::string defaultText;  // for a list: the default position as text
};

// The declaration table, indexed by cell id.
const std::vector<CellDef>& cellTable();

// "F_GEO_SF.b5", "F_3D.Slider1(0)", "F_Main.Toolbar2(7).Tag"
std::string cellPath(Cell c);

// Finds a cell by its path as cellPath writes it (also "FORM.NAME(i)" for a
// toolbar tag). Exact names first, then without regard to case. False when unknown.
bool findCell(std::string_view path, Cell& out);

}  // namespace tarvokin
