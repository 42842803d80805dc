#include "core/cells.h"

#include <algorithm>
#include <cctype>
#include <unordered_map>

namespace tarvokin {

const char* formName(Form f) {
    switch (f) {
        case Form::F_Main: return "F_Main";
        case Form::F_GEO_SF: return "F_GEO_SF";
        case Form::F_GEO_STAB: return "F_GEO_STAB";
        case Form::F_GEO_FUS: return "F_GEO_FUS";
        case Form::F_GEO_SF_REGLAGES: return "F_GEO_SF_REGLAGES";
        case Form::F_3D: return "F_3D";
        case Form::F_CALC_MOT: return "F_CALC_MOT";
        case Form::F_PROFILS: return "F_PROFILS";
        case Form::F_PREFER: return "F_PREFER";
        case Form::F_GEO_3: return "F_GEO_3";
        case Form::F_GEO_5: return "F_GEO_5";
        case Form::F_ALLONGEMENT: return "F_ALLONGEMENT";
        case Form::F_MOTORISATIONS: return "F_MOTORISATIONS";
        case Form::F_SERVOS: return "F_SERVOS";
        case Form::F_STAB: return "F_STAB";
        case Form::F_STAB_VE: return "F_STAB_VE";
        case Form::F_VLM: return "F_VLM";
        case Form::Gen_Couples_2: return "Gen_Couples_2";
        case Form::Gen_Couples_1: return "Gen_Couples_1";
        case Form::F_WIZZARD: return "F_WIZZARD";
        case Form::F_CONVERT: return "F_CONVERT";
        case Form::F_NACA: return "F_NACA";
        case Form::F_RIBS: return "F_RIBS";
        case Form::F_AERO: return "F_AERO";
        case Form::F_BASE: return "F_BASE";
        case Form::F_TEST_POL: return "F_TEST_POL";
    }
    return "";
}

namespace {

std::vector<CellDef> buildTable() {
    std::vector<CellDef> t;
    t.reserve(kCellCount);
    auto group = [&t](Form f, const char* n, int first, int count, const char* d, bool tag, CellKind k) {
        for (int i = 0; i < count; ++i) t.push_back({f, n, first + i, tag, k, d});
    };
#define CELL(f, n, d) t.push_back({Form::f, #n, -1, false, CellKind::Text, d});
#define LIST(f, n, d) t.push_back({Form::f, #n, -1, false, CellKind::List, #d});
#define GROUP(f, n, first, count, d) group(Form::f, #n, first, count, d, false, CellKind::Text);
#define LISTGROUP(f, n, first, count, d) group(Form::f, #n, first, count, #d, false, CellKind::List);
#define TAGGROUP(f, n, first, count, d) group(Form::f, #n, first, count, d, true, CellKind::Text);
#include "core/cells.def"
#undef CELL
#undef LIST
#undef GROUP
#undef LISTGROUP
#undef TAGGROUP
    // The rib table's columns have their own defaults: "1305;4;4;0;0" a row.
    static const char* ribDefaults[5] = {"1305", "4", "4", "0", "0"};
    for (int i = 0; i < 40; ++i) t[F_GEO_FUS::Ribs[i].id].defaultText = ribDefaults[i % 5];
    for (int i = 0; i < 3; ++i) t[F_PROFILS::L_PROFIL[i].id].defaultText = "Profil " + std::to_string(i + 1);
    // The lighting effects of the 3D view start off, the parts, axes and texts shown.
    for (int i = 4; i <= 6; ++i) t[F_3D::Check1[i].id].defaultText = "0";
    // The performance read-out starts on the lighter mass.
    t[F_GEO_3::Option1[0].id].defaultText = "1";
    // The aspect-ratio panel opens on its first calculation variant.
    t[F_ALLONGEMENT::Option1[0].id].defaultText = "1";
    // The frame generator shows its handles, axes and grid at start.
    for (int i : {2, 5, 6}) t[Gen_Couples_2::pb1[i].id].defaultText = "1";
    // The NACA generator opens on the four-digit family (a 2412), its points
    // bunched at the leading edge; the rib generator on leading edges in line,
    // drawn as separate ribs.
    t[F_NACA::Option1[0].id].defaultText = "1";
    t[F_NACA::Option2[1].id].defaultText = "1";
    {
        static const char* values[3] = {"2", "4", "12"};
        static const char* captions[3] = {"Cambrure % corde", "pos de la cambrure %", "Ep relative de la corde"};
        static const char* digits[3] = {"Premier Chiffre", "Second Chiffre", "2 derniers Chiffres"};
        for (int i = 0; i < 3; ++i) {
            t[F_NACA::T_DESIGN[i].id].defaultText = values[i];
            t[F_NACA::HScroll4[i].id].defaultText = values[i];
            t[F_NACA::Label1[i].id].defaultText = captions[i];
            t[F_NACA::Label2[i].id].defaultText = digits[i];
        }
    }
    t[F_RIBS::Option1[0].id].defaultText = "1";
    t[F_RIBS::Option2[1].id].defaultText = "1";
    return t;
}

std::string lower(std::string_view s) {
    std::string r(s);
    for (char& c : r) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return r;
}

}  // namespace

const std::vector<CellDef>& cellTable() {
    static const std::vector<CellDef> table = buildTable();
    return table;
}

std::string cellPath(Cell c) {
    const CellDef& d = cellTable()[c.id];
    std::string s = formName(d.form);
    s += '.';
    s += d.name;
    if (d.index >= 0) {
        s += '(';
        s += std::to_string(d.index);
        s += ')';
        if (d.tagProperty) s += ".Tag";
    }
    return s;
}

bool findCell(std::string_view path, Cell& out) {
    static const auto maps = [] {
        std::pair<std::unordered_map<std::string, uint16_t>, std::unordered_map<std::string, uint16_t>> m;
        for (uint16_t i = 0; i < kCellCount; ++i) {
            std::string p = cellPath(Cell{i});
            m.first.emplace(p, i);
            m.second.emplace(lower(p), i);
            if (cellTable()[i].tagProperty) {
                std::string bare = p.substr(0, p.size() - 4);
                m.first.emplace(bare, i);
                m.second.emplace(lower(bare), i);
            }
        }
        return m;
    }();
    std::string key(path);
    if (auto it = maps.first.find(key); it != maps.first.end()) {
        out = Cell{it->second};
        return true;
    }
    if (auto it = maps.second.find(lower(key)); it != maps.second.end()) {
        out = Cell{it->second};
        return true;
    }
    return false;
}

}  // namespace tarvokin
