#include "core/settings.h"

#include <cmath>
#include <cstring>

#include "core/profile_file.h"
#include "core/sheet.h"
#include "core/text_case.h"
#include "core/translations.h"

namespace tarvokin {

namespace {

// A number of the file, or the default when the text is not one: a settings
// file edited by hand must never stop the program.
double numberOr(const std::string& text, double def) {
    double v = 0.0;
    return tryNumber(text, v) ? v : def;
}

int wholeOr(const std::string& text, int def) {
    double v = 0.0;
    if (!tryNumber(text, v) || !(std::fabs(v) < 2.0e9)) return def;
    return static_cast<int>(std::lround(v));
}

// "True"/"False" as the panel writes them, or a number (non-zero is on).
bool flagOr(const std::string& text, bool def) {
    const std::string t = trim(text);
    if (equalsNoCase(t, "True")) return true;
    if (equalsNoCase(t, "False")) return false;
    double v = 0.0;
    return tryNumber(t, v) ? v != 0.0 : def;
}

// A coefficient kept as the text the user typed, when it reads as a number.
std::string numericTextOr(const std::string& text, const std::string& def) {
    double v = 0.0;
    const std::string t = trim(text);
    return tryNumber(t, v) ? t : def;
}

const char* yesNo(bool on) { return on ? "Yes" : "No"; }
const char* oneZero(bool on) { return on ? "1" : "0"; }

}  // namespace

Settings readSettings(const std::filesystem::path& settingsFile, const std::filesystem::path& home) {
    const ProfileDocument doc = ProfileDocument::load(settingsFile);
    Settings s;

    s.calcMot = doc.get("Parametres", "calc_mot", s.calcMot);
    s.languageCode = trim(doc.get("Langue", "Langue", s.languageCode));
    s.recall = upperCase(doc.get("Recent", "Recall", "No")).find("YES") != std::string::npos;
    // Deliberately exact in letter case: "yes" does not count.
    s.saveOnExit = doc.get("Recent", "Save", "Yes").find("Yes") != std::string::npos;
    for (size_t i = 0; i < s.recent.size(); ++i) s.recent[i] = doc.get("Recent", std::to_string(i), "");

    std::string mdl = doc.get("Projet", "MDL", "");
    if (!mdl.empty()) {
        if (upperCase(mdl).find(".MDL") == std::string::npos) mdl += ".MDL";
        // Relative to the program's folder, not to the working folder.
        if (mdl.front() != '/') mdl = home.string() + "/" + mdl;
    }
    s.lastProject = mdl;

    s.points = wholeOr(doc.get("Graphiques", "Points", "1"), s.points);
    s.pointsG = wholeOr(doc.get("Graphiques", "Points_G", "1"), s.pointsG);
    s.temperature = numberOr(doc.get("Parametres", "Temperature", "20"), s.temperature);
    s.altitude = numberOr(doc.get("Parametres", "Altitude", "300"), s.altitude);
    s.iterations = wholeOr(doc.get("XFOIL", "iterations", "100"), s.iterations);
    s.clIncidDe = numericTextOr(doc.get("XFOIL", "CL_INCID_DE", s.clIncidDe), s.clIncidDe);
    s.clIncidA = numericTextOr(doc.get("XFOIL", "CL_INCID_A", s.clIncidA), s.clIncidA);
    s.clIncidPas = numericTextOr(doc.get("XFOIL", "CL_INCID_PAS", s.clIncidPas), s.clIncidPas);
    s.viscosite = wholeOr(doc.get("XFOIL", "viscosite", "1000"), s.viscosite);
    s.smooth = flagOr(doc.get("XFOIL", "smooth", "True"), s.smooth);
    s.xfoilPath = doc.get("XFOIL", "path", "");
    s.xfoilTimeout = wholeOr(doc.get("XFOIL", "timeout", "120"), s.xfoilTimeout);
    s.positionFuselage = wholeOr(doc.get("Graphiques", "Position_Fuselage", "1"), s.positionFuselage);
    return s;
}

std::filesystem::path languageFile(const std::filesystem::path& home, const std::string& code) {
    static constexpr const char* kFiles[4] = {"Francais.lng", "Anglais.lng", "Espagnol.lng", "Italien.lng"};
    return home / "lang" / kFiles[LanguageIndex(code)];
}

// ---- F_PREFER ----------------------------------------------------------------

void showPreferences(const Settings& s, Sheet& sheet) {
    sheet.set(F_PREFER::Text1, plain(s.temperature));
    sheet.set(F_PREFER::Text2, plain(s.altitude));
    sheet.set(F_PREFER::Text3, std::to_string(s.iterations));
    sheet.set(F_PREFER::Text4, s.xfoilPath);
    sheet.set(F_PREFER::Text5, std::to_string(s.viscosite));
    sheet.set(F_PREFER::Text6, s.clIncidDe);
    sheet.set(F_PREFER::Text7, s.clIncidA);
    sheet.set(F_PREFER::Text8, s.clIncidPas);
    sheet.set(F_PREFER::Check1, oneZero(s.recall));
    sheet.set(F_PREFER::Check2, oneZero(s.points != 0));
    sheet.set(F_PREFER::Check3, oneZero(s.saveOnExit));
    sheet.set(F_PREFER::Check4, oneZero(s.pointsG != 0));
    sheet.set(F_PREFER::Check5, oneZero(s.smooth));
    // Option1(0) "Aile Mobile", Option1(1) "Fuselage mobile".
    for (int i = 0; i < F_PREFER::Option1.count; ++i) {
        sheet.set(F_PREFER::Option1[i], oneZero(i == (s.positionFuselage != 0 ? 1 : 0)));
    }
}

void preferenceFieldChanged(Settings& s, const Sheet& sheet, int textField) {
    auto textOf = [&sheet](Cell c) { return trim(sheet.text(c)); };
    double v = 0.0;
    switch (textField) {
        case 1:
            if (tryNumber(textOf(F_PREFER::Text1), v)) s.temperature = v;
            break;
        case 2:
            if (tryNumber(textOf(F_PREFER::Text2), v)) s.altitude = v;
            break;
        case 3: s.iterations = wholeOr(textOf(F_PREFER::Text3), s.iterations); break;
        case 4:
            if (!textOf(F_PREFER::Text4).empty()) s.xfoilPath = textOf(F_PREFER::Text4);
            break;
        case 5: s.viscosite = wholeOr(textOf(F_PREFER::Text5), s.viscosite); break;
        case 6: s.clIncidDe = numericTextOr(textOf(F_PREFER::Text6), s.clIncidDe); break;
        case 7: s.clIncidA = numericTextOr(textOf(F_PREFER::Text7), s.clIncidA); break;
        case 8: s.clIncidPas = numericTextOr(textOf(F_PREFER::Text8), s.clIncidPas); break;
        default: break;
    }
}

void preferenceClicked(Settings& s, Sheet& sheet, const std::filesystem::path& settingsFile, const char* control,
                       int index) {
    const std::string c = control ? control : "";
    if (c == "Check1") {
        s.recall = sheet.on(F_PREFER::Check1);
        WriteProfileString("Recent", "Recall", yesNo(s.recall), settingsFile);
    } else if (c == "Check3") {
        s.saveOnExit = sheet.on(F_PREFER::Check3);
        WriteProfileString("Recent", "Save", yesNo(s.saveOnExit), settingsFile);
    } else if (c == "Check2") {
        s.points = sheet.on(F_PREFER::Check2) ? 1 : 0;
        WriteProfileString("Graphiques", "POINTS", oneZero(s.points != 0), settingsFile);
    } else if (c == "Check4") {
        s.pointsG = sheet.on(F_PREFER::Check4) ? 1 : 0;
        WriteProfileString("Graphiques", "POINTS_G", oneZero(s.pointsG != 0), settingsFile);
    } else if (c == "Check5") {
        s.smooth = sheet.on(F_PREFER::Check5);
        WriteProfileString("XFOIL", "Smooth", s.smooth ? "True" : "False", settingsFile);
    } else if (c == "Option1") {
        if (!F_PREFER::Option1.holds(index)) return;
        for (int i = 0; i < F_PREFER::Option1.count; ++i) sheet.set(F_PREFER::Option1[i], oneZero(i == index));
        s.positionFuselage = index;
        WriteProfileString("Graphiques", "Position_Fuselage", std::to_string(index), settingsFile);
    }
}

void writePreferencesAtClose(const Settings& s, const std::filesystem::path& settingsFile) {
    ProfileDocument doc = ProfileDocument::load(settingsFile);
    doc.set("Parametres", "Temperature", plain(s.temperature));
    doc.set("Parametres", "Altitude", plain(s.altitude));
    doc.set("XFOIL", "iterations", std::to_string(s.iterations));
    doc.set("XFOIL", "Path", s.xfoilPath);
    doc.set("XFOIL", "Viscosite", std::to_string(s.viscosite));
    doc.set("XFOIL", "Smooth", s.smooth ? "True" : "False");
    doc.set("XFOIL", "CL_INCID_DE", s.clIncidDe);
    doc.set("XFOIL", "CL_INCID_A", s.clIncidA);
    doc.set("XFOIL", "CL_INCID_PAS", s.clIncidPas);
    doc.save(settingsFile);
}

}  // namespace tarvokin
