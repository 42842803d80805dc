// Airfoils of the published NACA families made from their digits: the chord
// stations, the thickness forms, the mean lines, the surfaces built on them,
// the name and the outline file. Plain calculation; the generator window and
// the command line both call it at every change of an input.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "core/generator_state.h"
#include "core/outline_types.h"

namespace tarvokin {

namespace naca {
enum Family : int {
    Four = 0,          // "Naca 4"
    Five = 1,          // "Naca 5"
    FourModified = 2,  // "Naca 4 modifié"
    FiveModified = 3,  // "Naca 5 modifié"
    Series16 = 4,      // "Naca série 16"
    Series6 = 5,       // "Naca série 6"
    Series6A = 6,      // "Naca série 6A"
    Biconvex = 7,      // "Biconvexe symétrique"
};
constexpr int kFamilies = 8;
constexpr int kMaxInputs = 6;
constexpr int kDefaultPoints = 100;
constexpr int kMaxPoints = 400;  // T_MPTS
// The program's own value of pi, which places the stations.
constexpr double kStationPi = 3.14116;
}  // namespace naca

// One input of a family: its caption, the digit group it stands for (may be
// empty), its limits and its value when the family is chosen.
struct NacaInput {
    const char* caption;
    const char* digits;
    int low, high, initial;
};

const char* NacaFamilyCaption(int family);
const std::vector<NacaInput>& NacaInputs(int family);
const char* NacaDistributionCaption(int distribution);
// An input's caption or digit label (French, as in NacaInputs) in the language
// of `languageCode`: "1" English, "2" Spanish, "3" Italian, else French.
std::string NacaWord(const char* french, const std::string& languageCode);

struct NacaRequest {
    int family = naca::Four;
    std::array<int, naca::kMaxInputs> design{2, 4, 12, 0, 0, 0};
    int points = naca::kDefaultPoints;
    int distribution = 1;
};

// x of the stations i = 1..n of a distribution (0 to 3). Empty for n < 2 or
// an unknown distribution.
std::vector<double> NacaStations(int n, int distribution);

// The airfoil's name by the naming rules ("NACA2412", "NACA23012",
// "NACA2412-64", "NACA16-212", "NACA64-212", "NACA64A212", "BICONVEX12").
std::string NacaName(const NacaRequest& r);

// Builds the airfoil. On bad input returns false with one line for the user
// in `error`, and `out` untouched.
bool GenerateNaca(const NacaRequest& r, NacaAirfoil& out, std::string& error);

// The outline in file order: the upper surface from the trailing edge to the
// leading edge, then the lower from the second station to the trailing edge;
// "x y" a line, 7 decimals each.
std::string NacaOutlineText(const NacaAirfoil& a);
OutlinePoints NacaOutline(const NacaAirfoil& a);

// The mean line, "x y" a line with 7 decimals, leading edge first.
std::string NacaCamberText(const NacaAirfoil& a);

// ---- the parts, for the tests and the tables -------------------------------------

// Half thickness of the four-digit form at x for thickness ratio t.
double NacaFourThickness(double x, double t);
// Half thickness of the modified four-digit form: leading-edge index I,
// position of largest thickness m (chord fraction). Needs 0 < m < 1.
double NacaModifiedThickness(double x, double t, double I, double m);
// Mean lines: ordinate and slope at x.
struct MeanLinePoint {
    double y = 0, slope = 0;
};
MeanLinePoint NacaFourMeanLine(double x, double camber, double position);
// Five-digit mean line; `lift` is the first digit (design lift in 0.15 steps),
// `position` the second (1..5), `reflex` the third (0 or 1). False when the
// published constants do not cover the position.
bool NacaFiveMeanLine(double x, int lift, int position, int reflex, MeanLinePoint& out);
// Mean line a = 1.0 for design lift cli.
MeanLinePoint NacaMeanLineA10(double x, double cli);
// Mean line a = 0.8 (modified) of the 6A series for design lift cli.
MeanLinePoint NacaMeanLineA08Modified(double x, double cli);
// Mean line of any a < 1 (the standard a = 0.8 among them).
MeanLinePoint NacaMeanLineA(double x, double a, double cli);

// Half thickness of a 6 or 6A series basic form ("64", "64A") at x for the
// thickness in per cent, from the published tables. False, with the reason,
// when the series has no table or the thickness lies outside its tables.
bool Naca6Thickness(const std::string& series, double thicknessPercent, const std::vector<double>& x,
                    std::vector<double>& halfThickness, std::string& error);

}  // namespace tarvokin
