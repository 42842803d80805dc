#include "design/summary.h"

#include <string>

#include "core/sheet.h"
#include "core/translations.h"

namespace tarvokin {

namespace {

// A value followed by its unit; an output that has no value stays a bare "-".
std::string withUnit(const std::string& value, const char* unit) {
    if (value == "-") return value;
    return value + unit;
}

// The heading and the captions of the summary in English, Spanish and Italian.
constexpr Translation kWords[] = {
    {"Aile", {"Wing", "Ala", "Ala"}},
    {"Profil : ", {"Airfoil : ", "Perfil : ", "Profilo : "}},
    {"Envergure : ", {"Span : ", "Envergadura : ", "Apertura : "}},
    {"Surface : ", {"Area : ", "Superficie : ", "Superficie : "}},
    {"Allongement : ", {"Aspect ratio : ", "Alargamiento : ", "Allungamento : "}},
    {"Corde moyenne : ", {"Mean chord : ", "Cuerda media : ", "Corda media : "}},
    {"Foyer : ", {"Neutral point : ", "Foco : ", "Fuoco : "}},
    {"Masses : ", {"Masses : ", "Masas : ", "Masse : "}},
    {"Charges alaires : ", {"Wing loadings : ", "Cargas alares : ", "Carichi alari : "}},
    {"Surface stab : ", {"Tailplane area : ", "Superficie estab. : ", "Superficie stab. : "}},
    {"Levier stab : ", {"Tail moment arm : ", "Brazo estab. : ", "Braccio stab. : "}},
    {"Calage aile : ", {"Wing incidence : ", "Calaje ala : ", "Calettamento ala : "}},
    {"Calage stab : ", {"Tailplane incidence : ", "Calaje estab. : ", "Calettamento stab. : "}},
};

}  // namespace

void BuildSummary(Sheet& s, const std::string& languageCode) {
    const auto w = [&languageCode](const char* french) { return std::string(InLanguage(kWords, french, languageCode)); };
    s.set(F_3D::Label17, w("Aile"));
    const std::string lines[12] = {
        w("Profil : ") + s.text(F_3D::Combo5),
        w("Envergure : ") + withUnit(s.text(F_3D::j6), " mm"),
        w("Surface : ") + withUnit(s.text(F_3D::j4), " dm²"),
        w("Allongement : ") + s.text(F_3D::j7),
        w("Corde moyenne : ") + withUnit(s.text(F_3D::j5), " mm"),
        w("Foyer : ") + withUnit(s.text(F_GEO_SF::j9), " mm"),
        w("Masses : ") + withUnit(s.text(F_GEO_SF_REGLAGES::H30), " gr") + " / " +
            withUnit(s.text(F_GEO_SF_REGLAGES::I30), " gr"),
        w("Charges alaires : ") + s.text(F_GEO_SF_REGLAGES::H32) + " / " +
            withUnit(s.text(F_GEO_SF_REGLAGES::I32), " g/dm²"),
        w("Surface stab : ") + withUnit(s.text(F_GEO_STAB::j15), " dm²"),
        w("Levier stab : ") + withUnit(s.text(F_GEO_STAB::j21), " mm"),
        w("Calage aile : ") + withUnit(s.text(F_GEO_SF_REGLAGES::F31), " °"),
        w("Calage stab : ") + withUnit(s.text(F_GEO_SF_REGLAGES::F30), " °"),
    };
    for (int i = 0; i < 12; ++i) s.set(F_3D::Label_2[i], lines[i]);
}

}  // namespace tarvokin
