#include "project/project_file.h"

#include <cmath>
#include <string>
#include <vector>

#include "core/profile_file.h"
#include "core/text_case.h"
#include "core/workbench.h"

namespace tarvokin {

namespace {

// How a key's text meets its cell.
enum class Kind {
    Text,         // assigned and written as it stands (names, makes, models)
    Number,       // read rounded to `decimals`, written as the field holds it
    Result,       // a computed field: a number, or "-" when it could not be computed
    Flag,         // a check box: a whole number
    ListPos,      // a fixed list: its position
    ListText,     // an editable list: its text (selected when listed)
    OptionIndex,  // a group of option buttons: the index of the one that is on
    AirfoilPos,   // wing airfoil position, written for older readers, never read
    AirfoilName,  // wing airfoil name
    AirfoilSlot,  // Profil_<i>: read last, written only once the airfoils are chosen
    Ribs,         // one row of the frame-rib table, five whole numbers
};

struct ProjectKey {
    std::string section;
    std::string key;       // spelling read
    std::string writeKey;  // spelling written
    Cell cell{0};
    const char* def;  // default on read; nullptr: the cell's present text
    Kind kind;
    int decimals = 2;
    int index = 0;  // rib row, airfoil slot
    bool read = true, write = true;
    bool power = false;  // read after the recalculation, written last
};

std::vector<ProjectKey> buildTable() {
    std::vector<ProjectKey> t;
    auto add = [&t](const std::string& sec, const std::string& key, Cell c, const char* def, Kind kind,
                    int decimals = 2) {
        ProjectKey k;
        k.section = sec;
        k.key = key;
        k.writeKey = key;
        k.cell = c;
        k.def = def;
        k.kind = kind;
        k.decimals = decimals;
        t.push_back(k);
        return &t.back();
    };

    // ---- [Modele]
    add("Modele", "Nom", F_3D::T_NOM_Modele, kUnknownModel, Kind::Text);
    add("Modele", "Masse_1", F_GEO_SF_REGLAGES::H30, "0", Kind::Number);
    add("Modele", "Masse_2", F_GEO_SF_REGLAGES::I30, "0", Kind::Number);
    add("Modele", "Aile", F_GEO_SF_REGLAGES::Ch_Aile, "0", Kind::Flag);
    // The model class only ever comes from a hand-written file.
    add("Modele", "Type", F_CALC_MOT::G3, "Planeur début", Kind::ListText)->write = false;
    for (int i = 0; i < 3; ++i) {
        add("Modele", "Profil_" + std::to_string(i), F_PROFILS::CB_1[i], "0", Kind::AirfoilSlot)->index = i;
    }

    // ---- [Aile]: only the root of panel 1 is stored, the others follow the tips.
    const Cell tip[5] = {F_GEO_SF::b6, F_GEO_SF::c6, F_GEO_SF::d6, F_GEO_SF::e6, F_GEO_SF::f6};
    const Cell span[5] = {F_GEO_SF::b7, F_GEO_SF::c7, F_GEO_SF::d7, F_GEO_SF::e7, F_GEO_SF::f7};
    const Cell sweep[5] = {F_GEO_SF::b8, F_GEO_SF::c8, F_GEO_SF::d8, F_GEO_SF::e8, F_GEO_SF::f8};
    const Cell twist[5] = {F_GEO_SF::b9, F_GEO_SF::c9, F_GEO_SF::d9, F_GEO_SF::e9, F_GEO_SF::f9};
    const Cell dihedral[5] = {F_GEO_SF::B10, F_GEO_SF::C10, F_GEO_SF::D10, F_GEO_SF::E10, F_GEO_SF::F10};
    add("Aile", "Emplanture_1", F_GEO_SF::b5, "0", Kind::Number);
    // Panel by panel: tip, span, sweep, twist, dihedral of panel k.
    for (int k = 0; k < 5; ++k) {
        const std::string n = std::to_string(k + 1);
        add("Aile", "Saumon_" + n, tip[k], "0", Kind::Number);
        add("Aile", "Longueur_" + n, span[k], "0", Kind::Number);
        add("Aile", "Fleche_" + n, sweep[k], "0", Kind::Number);
        add("Aile", "Vrillage_" + n, twist[k], "0", Kind::Number);
        add("Aile", "Diedre_" + n, dihedral[k], "0", Kind::Number);
    }
    add("Aile", "Winglets", F_3D::Ch_Winglets, "0", Kind::Flag);
    // Older files were written with "POS_H"; names compare without case.
    add("Aile", "Pos_H", F_GEO_FUS::Text5, "0", Kind::Number)->writeKey = "POS_H";
    add("Aile", "Profil", F_3D::Combo5, "0", Kind::AirfoilPos)->read = false;
    add("Aile", "Nom_Profil", F_3D::Combo5, "", Kind::AirfoilName);
    add("Aile", "Aileron_PosL", F_GEO_SF::T_Ail_PosL, "0", Kind::Number);
    add("Aile", "Aileron_PosR", F_GEO_SF::T_Ail_PosR, "0", Kind::Number);
    add("Aile", "Aileron_Pourc", F_GEO_SF::T_Ail_Pourc, "0", Kind::Number);
    add("Aile", "Aileron_Pourc_D", F_GEO_SF::T_Ail_PourcD, "0", Kind::Number);
    add("Aile", "Flap_PosL", F_GEO_SF::T_Flap_PosL, "0", Kind::Number);
    add("Aile", "Flap_PosR", F_GEO_SF::T_Flap_PosR, "0", Kind::Number);
    add("Aile", "Flap_Pourc", F_GEO_SF::T_Flap_Pourc, "0", Kind::Number);
    add("Aile", "Flap_Pourc_D", F_GEO_SF::T_Flap_PourcD, "0", Kind::Number);
    add("Aile", "VKmh", F_GEO_SF::a12, "0", Kind::Number, 0);

    // ---- [Fuselage]
    add("Fuselage", "Longueur", F_GEO_FUS::b24, "0", Kind::Number);
    add("Fuselage", "Nez_BA", F_GEO_FUS::b25, "0", Kind::Number);
    add("Fuselage", "Largeur", F_GEO_FUS::D24, "0", Kind::Number);
    add("Fuselage", "Hauteur", F_GEO_FUS::D25, "0", Kind::Number);
    add("Fuselage", "Type", F_3D::Combo9, "0", Kind::ListPos);
    add("Fuselage", "Queue", F_3D::Combo10, "0", Kind::ListPos);
    add("Fuselage", "Foyer", F_GEO_FUS::j26, "0", Kind::Result);
    // Frame markers and rib rows in one loop over n. A missing coordinate
    // keeps the marker where it is; the upper side-view height keeps five
    // decimals, the drawing needs them.
    for (int n = 0; n < F_GEO_FUS::Couple_X1.count; ++n) {
        const std::string c = "Couple_" + std::to_string(n);
        const std::string v = "CoupleV_" + std::to_string(n);
        add("Fuselage", c + "_X1", F_GEO_FUS::Couple_X1[n], nullptr, Kind::Number);
        add("Fuselage", c + "_Y1", F_GEO_FUS::Couple_Y1[n], nullptr, Kind::Number, 5);
        add("Fuselage", c + "_Y2", F_GEO_FUS::Couple_Y2[n], nullptr, Kind::Number);
        add("Fuselage", v + "_Y1", F_GEO_FUS::CoupleV_Y1[n], nullptr, Kind::Number);
        add("Fuselage", v + "_Y2", F_GEO_FUS::CoupleV_Y2[n], nullptr, Kind::Number);
        add("Fuselage", "Ribs_" + std::to_string(n), F_GEO_FUS::Ribs[5 * n], "1305;4;4;0;0 ", Kind::Ribs)->index = n;
    }

    // ---- [Stab]
    const Cell stipe[5] = {F_GEO_STAB::b17, F_GEO_STAB::c17, F_GEO_STAB::d17, F_GEO_STAB::e17, F_GEO_STAB::f17};
    const Cell sspan[5] = {F_GEO_STAB::b18, F_GEO_STAB::c18, F_GEO_STAB::d18, F_GEO_STAB::e18, F_GEO_STAB::f18};
    const Cell ssweep[5] = {F_GEO_STAB::b19, F_GEO_STAB::c19, F_GEO_STAB::d19, F_GEO_STAB::e19, F_GEO_STAB::f19};
    add("Stab", "Emplanture_1", F_GEO_STAB::b16, "0", Kind::Number);
    for (int k = 0; k < 5; ++k) {
        const std::string n = std::to_string(k + 1);
        add("Stab", "Saumon_" + n, stipe[k], "0", Kind::Number);
        add("Stab", "Longueur_" + n, sspan[k], "0", Kind::Number);
        add("Stab", "Fleche_" + n, ssweep[k], "0", Kind::Number);
    }
    add("Stab", "Pos_H", F_GEO_STAB::Text4, "0", Kind::Number);
    add("Stab", "V", F_GEO_STAB::Check1, "0", Kind::Flag);
    add("Stab", "Ouverture", F_GEO_STAB::b21, "0", Kind::ListPos);
    add("Stab", "Profil", F_3D::Combo7, "0", Kind::ListPos);
    add("Stab", "Prof_PosL", F_GEO_STAB::T_Prof_PosL, "0", Kind::Number);
    add("Stab", "Prof_PosR", F_GEO_STAB::T_Prof_PosR, "0", Kind::Number);
    add("Stab", "Prof_Pourc", F_GEO_STAB::T_Prof_Pourc, "0", Kind::Number);
    add("Stab", "Prof_Pourc_D", F_GEO_STAB::T_Prof_PourcD, "0", Kind::Number);
    add("Stab", "Levier", F_GEO_STAB::b20, "0", Kind::Number);

    // ---- [Derive]
    add("Derive", "Emplanture", F_GEO_STAB::Text12, "0", Kind::Number);
    add("Derive", "Saumon", F_GEO_STAB::Text11, "0", Kind::Number);
    add("Derive", "Longueur", F_GEO_STAB::Text10, "0", Kind::Number);
    add("Derive", "Fleche", F_GEO_STAB::Text9, "0", Kind::Number);
    add("Derive", "Bi", F_GEO_STAB::Check2, "0", Kind::Flag);
    add("Derive", "D_BA", F_GEO_STAB::Text14, "0", Kind::Number);
    add("Derive", "Entraxe", F_GEO_STAB::Text13, "0", Kind::Number);
    add("Derive", "P_Stab", F_GEO_STAB::Text2, "0", Kind::Number);
    add("Derive", "Derive_PosB", F_GEO_STAB::T_Deriv_PosB, "0", Kind::Number);
    add("Derive", "Derive_PosH", F_GEO_STAB::T_Deriv_PosH, "0", Kind::Number);

    // ---- [Reglages]
    add("Reglages", "Marge_statique", F_GEO_SF_REGLAGES::C29, "0", Kind::Number);
    add("Reglages", "Cz_calage", F_GEO_SF_REGLAGES::F29, "0", Kind::Number);

    // ---- [Colors]: the four part colours belong to the model; the
    // background colour of the view is the installation's (settings file).
    add("Colors", "Ailes", F_3D::T_Ailes, "0", Kind::Number, 0);
    add("Colors", "Derive", F_3D::T_Derive, "0", Kind::Number, 0);
    add("Colors", "Stab", F_3D::T_Stab, "0", Kind::Number, 0);
    add("Colors", "Fuselage", F_3D::T_Fus, "0", Kind::Number, 0);

    // ---- power: battery, motor, propeller
    const size_t powerFrom = t.size();
    add("Accus", "Type", F_3D::Combo1, "Lipo / Li-ion", Kind::ListText);
    add("Accus", "Nb_Elem", F_3D::Combo2, "0", Kind::ListText);
    add("Accus", "Capacité", F_3D::Option1[0], "0", Kind::OptionIndex);
    // "Capacité" has always held the index of the battery options, not the
    // capacity typed in mAh; the capacity gets its own key so that run time
    // and discharge come back with the project. Older files lack it: 0.
    add("Accus", "Capacité_mAh", F_3D::b6, "0", Kind::Number);
    add("Moteur", "Type", F_3D::Combo4, "Brushless", Kind::ListText);
    add("Moteur", "Marque", F_3D::Moteur_Marque, "", Kind::Text);
    add("Moteur", "Modele", F_3D::Moteur_Modele, "", Kind::Text);
    add("Moteur", "Qualité", F_3D::Combo3, "Moyenne", Kind::ListText);
    add("Moteur", "IA", F_3D::d6, "0", Kind::Number);
    add("Moteur", "Reduction", F_3D::d7, "0", Kind::Number);
    add("Hélice", "Type", F_3D::Combo6, "Générique", Kind::ListText);
    add("Hélice", "Diamètre", F_3D::f5, "0", Kind::Number);
    add("Hélice", "Pas", F_3D::f6, "0", Kind::Number);
    add("Hélice", "Marque", F_3D::Helice_Marque, "", Kind::Text);
    add("Hélice", "Modele", F_3D::Helice_Modele, "", Kind::Text);
    for (size_t i = powerFrom; i < t.size(); ++i) t[i].power = true;
    return t;
}

const std::vector<ProjectKey>& projectKeys() {
    static const std::vector<ProjectKey> table = buildTable();
    return table;
}

// A whole number as a check box or a list position takes it: halves go to
// the even neighbour; beyond the range of a position it is the overflow error.
int wholeOf(double v) {
    if (!(std::fabs(v) < 2147483647.0)) throwOverflow();
    return static_cast<int>(std::nearbyint(v));
}

// A project named without its folder lies in the program's folder; so does
// a relative path, which the program's own files (settings, recent entries)
// give relative to that folder and not to wherever the process was started.
}  // namespace

std::string completedPath(const Workbench& wb, const std::string& path) {
    if (!path.empty() && path.front() == '/') return path;
    return wb.home().string() + "/" + path;
}

namespace {

// Five whole numbers "e0;e1;e2;e3;e4", the last with or without a ";"
// behind it. A value with no ";" leaves the row; the numbers present are
// converted first and assigned together, so a bad one leaves the row whole.
void readRibs(Sheet& sheet, int row, const std::string& value) {
    if (value.find(';') == std::string::npos) return;
    std::vector<std::string> fields;
    size_t start = 0;
    while (fields.size() < 5) {
        const size_t semi = value.find(';', start);
        fields.push_back(value.substr(start, semi == std::string::npos ? std::string::npos : semi - start));
        if (semi == std::string::npos) break;
        start = semi + 1;
    }
    std::vector<std::string> texts;
    for (const std::string& f : fields) texts.push_back(plain(wholeOf(toNumber(f))));
    for (size_t j = 0; j < texts.size(); ++j) sheet.set(F_GEO_FUS::Ribs[5 * row + static_cast<int>(j)], texts[j]);
}

// What the change step of the field does with a value put into it, for the
// fields whose change step replaces a value or feeds a mirror of the design
// window. The loader goes through it as a typed entry would.
void afterAssign(Sheet& s, Cell c) {
    if (c == F_GEO_SF_REGLAGES::H30 || c == F_GEO_SF_REGLAGES::I30) {
        if (s.val(c) == 0.0) s.set(c, "500");
    } else if (c == F_GEO_SF::a12) {
        if (trim(s.text(c)).empty() || !(s.val(c) > 0.0)) s.set(c, "10");
        s.set(F_3D::a12, s.text(c));
    } else if (c == F_GEO_SF_REGLAGES::C29) {
        if (trim(s.text(c)).empty()) s.set(c, "0");
    } else if (c == F_GEO_SF_REGLAGES::F29) {
        s.set(F_3D::F29, s.text(c));
    } else if (c == F_GEO_FUS::b25) {
        s.set(F_3D::Slider1[0], plain(s.val(c)));
    } else if (c == F_GEO_STAB::b20) {
        s.set(F_3D::Slider1[5], plain(s.val(c)));
    }
}

void readKey(Sheet& s, const ProfileDocument& doc, const ProjectKey& k) {
    const std::string def = k.def ? std::string(k.def) : s.text(k.cell);
    const std::string v = doc.get(k.section, k.key, def);
    switch (k.kind) {
        case Kind::Text: s.set(k.cell, v); break;
        case Kind::Result:
            if (v == "-") {
                s.set(k.cell, v);
                break;
            }
            [[fallthrough]];
        case Kind::Number: s.set(k.cell, roundedPlain(toNumber(v), k.decimals)); break;
        case Kind::Flag: s.set(k.cell, plain(wholeOf(toNumber(v)))); break;
        // A position out of the list is the invalid-value error of the list.
        case Kind::ListPos: s.setListIndex(k.cell, wholeOf(toNumber(v))); break;
        case Kind::ListText:
            if (!s.selectText(k.cell, v)) s.set(k.cell, v);
            break;
        case Kind::OptionIndex: {
            // An index beyond the group leaves the options as they are.
            const int on = wholeOf(toNumber(v));
            const CellGroup& g = F_3D::Option1;
            if (!g.holds(on)) break;
            for (int i = g.firstIndex; i < g.firstIndex + g.count; ++i) s.set(g[i], i == on ? "1" : "0");
            break;
        }
        case Kind::AirfoilName:
            // The name is kept even when the catalogue lacks it, so that the
            // start-up check can name it; an absent key keeps the airfoil.
            if (v.empty()) break;
            if (!s.selectText(k.cell, v)) s.set(k.cell, v);
            break;
        case Kind::Ribs: readRibs(s, k.index, v); break;
        case Kind::AirfoilPos:
        case Kind::AirfoilSlot: break;
    }
    afterAssign(s, k.cell);
}

std::string valueToWrite(const Sheet& s, const ProjectKey& k) {
    switch (k.kind) {
        case Kind::Flag: return plain(wholeOf(s.val(k.cell)));
        case Kind::ListPos:
        case Kind::AirfoilPos: return std::to_string(s.listIndex(k.cell));
        case Kind::AirfoilName: return trim(s.text(k.cell));
        case Kind::OptionIndex: {
            const CellGroup& g = F_3D::Option1;
            for (int i = g.firstIndex; i < g.firstIndex + g.count; ++i) {
                if (s.on(g[i])) return std::to_string(i);
            }
            return "0";
        }
        case Kind::Ribs: {
            std::string r;
            for (int j = 0; j < 5; ++j) {
                r += s.text(F_GEO_FUS::Ribs[5 * k.index + j]);
                r += j < 4 ? ";" : "; ";
            }
            return r;
        }
        default: return s.text(k.cell);
    }
}

}  // namespace

void ReadProjectKeys(Sheet& s, const ProfileDocument& doc, KeyGroup group) {
    for (const ProjectKey& k : projectKeys()) {
        if (!k.read) continue;
        const bool slot = k.kind == Kind::AirfoilSlot;
        switch (group) {
            case KeyGroup::Design:
                if (k.power || slot) continue;
                readKey(s, doc, k);
                break;
            case KeyGroup::Power:
                if (k.power) readKey(s, doc, k);
                break;
            case KeyGroup::AirfoilSlots: {
                // "0" means none; a name the catalogue lacks leaves the slot
                // empty, the start-up check reports it.
                if (!slot) continue;
                const std::string v = doc.get(k.section, k.key, k.def);
                if (v == "0") continue;
                if (!s.selectText(k.cell, v)) s.setListIndex(k.cell, -1);
                break;
            }
        }
    }
}

void WriteProjectKeys(const Sheet& s, ProfileDocument& doc) {
    // Until the airfoil panel has been filled the slots hold nothing worth
    // writing, and the names already in the file must stay.
    const bool airfoilsChosen = s.val(F_Main::T_profils) == 1.0;
    for (const ProjectKey& k : projectKeys()) {
        if (!k.write) continue;
        if (k.kind == Kind::AirfoilSlot && !airfoilsChosen) continue;
        doc.set(k.section, k.writeKey, valueToWrite(s, k));
    }
}

std::vector<ProjectKeyInfo> ProjectKeyList() {
    std::vector<ProjectKeyInfo> out;
    for (const ProjectKey& k : projectKeys()) {
        if (!k.read || !k.write) continue;
        out.push_back({k.section, k.writeKey, k.key, k.cell, k.kind == Kind::Result});
    }
    return out;
}

}  // namespace tarvokin
