// The settings of one installation, read from TARVOKIN.INI into run values.
#pragma once

#include <array>
#include <filesystem>
#include <string>

namespace tarvokin {

class Sheet;

struct Settings {
    std::string calcMot = "0";        // [Parametres] calc_mot; "1" shows toolbar button 19
    double temperature = 20.0;        // [Parametres] Temperature, °C
    double altitude = 300.0;          // [Parametres] Altitude, m
    std::string languageCode = "0";   // [Langue] Langue
    bool recall = false;              // [Recent] Recall: upper-cased value holds "YES"
    bool saveOnExit = true;           // [Recent] Save: value holds "Yes" (exact case)
    std::array<std::string, 6> recent;  // [Recent] "0".."5"
    std::string lastProject;          // [Projet] MDL, completed
    int points = 1;                   // [Graphiques] Points
    int pointsG = 1;                  // [Graphiques] Points_G
    int positionFuselage = 1;         // [Graphiques] Position_Fuselage
    int iterations = 100;             // [XFOIL] iterations
    std::string xfoilPath;            // [XFOIL] path
    int viscosite = 1000;             // [XFOIL] viscosite
    bool smooth = true;               // [XFOIL] smooth
    std::string clIncidDe = "0";      // [XFOIL] CL_INCID_DE
    std::string clIncidA = "1.25";    // [XFOIL] CL_INCID_A
    std::string clIncidPas = "0.05";  // [XFOIL] CL_INCID_PAS
    int xfoilTimeout = 120;           // [XFOIL] timeout, s: a solver run is stopped after it
};

// Reads every key in the start-up order. `home` is the program's folder, used
// to complete [Projet] MDL. Missing file or keys give the defaults.
Settings readSettings(const std::filesystem::path& settingsFile, const std::filesystem::path& home);

// The file of a language code: lang/Francais.lng, Anglais, Espagnol, Italien.
std::filesystem::path languageFile(const std::filesystem::path& home, const std::string& code);

// ---- the preferences panel F_PREFER ----
// Fills the panel's cells from the run values.
void showPreferences(const Settings& s, Sheet& sheet);
// Change of a text field of the panel: an accepted value goes to the run
// value at once; an empty or unreadable entry keeps the last good value.
void preferenceFieldChanged(Settings& s, const Sheet& sheet, int textField);
// Check boxes and options write their key at each click.
void preferenceClicked(Settings& s, Sheet& sheet, const std::filesystem::path& settingsFile, const char* control,
                       int index = -1);
// Closing the panel writes Temperature, Altitude, iterations, Path, Viscosite,
// Smooth and the three CL_INCID_ keys.
void writePreferencesAtClose(const Settings& s, const std::filesystem::path& settingsFile);

}  // namespace tarvokin
