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

// The heading and the twelve captions of the summary, by language.
struct SummaryWords {
    const char* heading;
    const char* line[12];
};

constexpr SummaryWords kWords[4] = {
    {"Aile",
     {"Profil : ", "Envergure : ", "Surface : ", "Allongement : ", "Corde moyenne : ", "Foyer : ", "Masses : ",
      "Charges alaires : ", "Surface stab : ", "Levier stab : ", "Calage aile : ", "Calage stab : "}},
    {"Wing",
     {"Airfoil : ", "Span : ", "Area : ", "Aspect ratio : ", "Mean chord : ", "Neutral point : ", "Masses : ",
      "Wing loadings : ", "Tailplane area : ", "Tail moment arm : ", "Wing incidence : ", "Tailplane incidence : "}},
    {"Ala",
     {"Perfil : ", "Envergadura : ", "Superficie : ", "Alargamiento : ", "Cuerda media : ", "Foco : ", "Masas : ",
      "Cargas alares : ", "Superficie estab. : ", "Brazo estab. : ", "Calaje ala : ", "Calaje estab. : "}},
    {"Ala",
     {"Profilo : ", "Apertura : ", "Superficie : ", "Allungamento : ", "Corda media : ", "Fuoco : ", "Masse : ",
      "Carichi alari : ", "Superficie stab. : ", "Braccio stab. : ", "Calettamento ala : ", "Calettamento stab. : "}},
};

}  // namespace

void BuildSummary(Sheet& s, const std::string& languageCode) {
    const std::string code = languageCode.size() == 1 ? languageCode : std::string("0");
    const SummaryWords& w = kWords[code[0] >= '0' && code[0] <= '3' ? code[0] - '0' : 0];
    s.set(F_3D::Label17, w.heading);
    const std::string lines[12] = {
        w.line[0] + s.text(F_3D::Combo5),
        w.line[1] + withUnit(s.text(F_3D::j6), " mm"),
        w.line[2] + withUnit(s.text(F_3D::j4), " dm²"),
        w.line[3] + s.text(F_3D::j7),
        w.line[4] + withUnit(s.text(F_3D::j5), " mm"),
        w.line[5] + withUnit(s.text(F_GEO_SF::j9), " mm"),
        w.line[6] + withUnit(s.text(F_GEO_SF_REGLAGES::H30), " gr") + " / " +
            withUnit(s.text(F_GEO_SF_REGLAGES::I30), " gr"),
        w.line[7] + s.text(F_GEO_SF_REGLAGES::H32) + " / " + withUnit(s.text(F_GEO_SF_REGLAGES::I32), " g/dm²"),
        w.line[8] + withUnit(s.text(F_GEO_STAB::j15), " dm²"),
        w.line[9] + withUnit(s.text(F_GEO_STAB::j21), " mm"),
        w.line[10] + withUnit(s.text(F_GEO_SF_REGLAGES::F31), " °"),
        w.line[11] + withUnit(s.text(F_GEO_SF_REGLAGES::F30), " °"),
    };
    for (int i = 0; i < 12; ++i) s.set(F_3D::Label_2[i], lines[i]);
}

}  // namespace tarvokin
