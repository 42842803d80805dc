#include "design/summary.h"

#include <string>

#include "core/sheet.h"

namespace tarvokin {

namespace {

// A value followed by its unit; an output that has no value stays a bare "-".
std::string withUnit(const std::string& value, const char* unit) {
    if (value == "-") return value;
    return value + unit;
}

}  // namespace

void BuildSummary(Sheet& s) {
    s.set(F_3D::Label17, "Aile");
    const std::string lines[12] = {
        "Profil : " + s.text(F_3D::Combo5),
        "Envergure : " + withUnit(s.text(F_3D::j6), " mm"),
        "Surface : " + withUnit(s.text(F_3D::j4), " dm²"),
        "Allongement : " + s.text(F_3D::j7),
        "Corde moyenne : " + withUnit(s.text(F_3D::j5), " mm"),
        "Foyer : " + withUnit(s.text(F_GEO_SF::j9), " mm"),
        "Masses : " + withUnit(s.text(F_GEO_SF_REGLAGES::H30), " gr") + " / " +
            withUnit(s.text(F_GEO_SF_REGLAGES::I30), " gr"),
        "Charges alaires : " + s.text(F_GEO_SF_REGLAGES::H32) + " / " +
            withUnit(s.text(F_GEO_SF_REGLAGES::I32), " g/dm²"),
        "Surface stab : " + withUnit(s.text(F_GEO_STAB::j15), " dm²"),
        "Levier stab : " + withUnit(s.text(F_GEO_STAB::j21), " mm"),
        "Calage aile : " + withUnit(s.text(F_GEO_SF_REGLAGES::F31), " °"),
        "Calage stab : " + withUnit(s.text(F_GEO_SF_REGLAGES::F30), " °"),
    };
    for (int i = 0; i < 12; ++i) s.set(F_3D::Label_2[i], lines[i]);
}

}  // namespace tarvokin
