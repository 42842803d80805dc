// The aspect-ratio panel F_ALLONGEMENT. Before the wing is drawn, the designer
// gives an estimated wing area and two masses; for each of the three candidate
// airfoils the panel shows how the wing's glide ratio depends on the aspect
// ratio, which aspect ratio is best at each flight Cz, and what a chosen
// aspect ratio costs in a tight turn.
//
// Two calculation variants: V2.22 looks the profile drag up in the polars of
// the slots (Get_Cx); V2.23 uses an analytic polar built from the four figures
// of the airfoil window, so that it works without any polar file.
//
// Speeds in the sweeps are in m/s, chords in mm, wing loadings in g/dm².
// Nothing here throws on bad input: a figure that cannot be computed is NaN in
// the tables, "-" in a cell, and is left out of the charts.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "core/cells.h"
#include "core/aspect_ratio_state.h"

namespace tarvokin {

class Workbench;
struct PolarStore;

inline constexpr const char* kAllongementCaption = "ALLONGEMENT";
inline constexpr const char* kAllongementOptionCaptions[2] = {"CalculsV2.22", "CalculsV2.23 evol"};
inline constexpr const char* kTurnAngleHint = "60pouces, F3F, F3B, F3I : 180°";

// Sea-level density: the panel compares wings before any flying site is chosen.
inline constexpr double kSeaLevelDensity = 1.293;

// The four figures of an airfoil's analytic polar: Cx = Cx0 + k (Cz - Cz0)²
// below the stall onset, at the reference Reynolds number 200000.
struct AnalyticPolar {
    double Cx0 = 0, Cz0 = 0, k = 0, CzDecroch = 0;
};

// Everything a sweep reads, taken from the cells once per refresh.
struct AspectInputs {
    const PolarStore* polars = nullptr;  // drag source of V2.22
    bool analytic = false;               // V2.23: the analytic polar instead
    std::array<AnalyticPolar, 3> at200{}, at1500{};
    double area = 0;                   // B4, dm²
    double loadMini = 0, loadMaxi = 0;  // b6, c6 as shown, g/dm²
    double chosenA = 0;                // B10
    double turnSpeed = 0;              // b15, km/h
    double turnCz = 0;                 // b16
};

// ---- pieces of the calculation ------------------------------------------------

// Aspect ratios swept at a flight Cz, by its index in tenths: Cz 0.1 gives 1 to
// 14, 0.2 gives 2 to 22, 0.3 gives 2 to 25, 0.4 gives 3 to 35, then the first
// value rises by one per tenth up to 9 at Cz 1.0; any other Cz gives 1 to 40.
struct AspectRange {
    int first = 1, last = 40;
};
AspectRange AspectRatioRange(double cz);

// Stall onset of the analytic polar: 0.05 below the airfoil's stall Cz when
// that lies within 0.1..1.25, else 1.25.
double StallOnset(double czDecroch);

// Analytic profile drag at a section Cz and Reynolds number: the parabola,
// times the cubic stall penalty (1 + (4 (Cz - CzD))³ Tronque(Cz - CzD + 1)),
// times sqrt(200000 / Re). NaN when Re is not above 0.
double AnalyticCx(const AnalyticPolar& p, double czProfil, double re);

// Linear interpolation in Re / 1000 between a value at Re 200000 and one at
// 1500000 (extrapolated outside).
double InterpolateRe(double at200, double at1500, double re);
// Cx0, Cz0 and k interpolated at Re; the stall Cz stays the reference one.
AnalyticPolar PolarAtReynolds(const AnalyticPolar& at200, const AnalyticPolar& at1500, double re);

// The inputs of the panel as the cells hold them now.
AspectInputs ReadAspectInputs(const Workbench& wb, bool analytic);

// Sweep of the aspect ratio at one flight Cz, one row per aspect ratio.
std::vector<AllongementPoint> FinesseAllongement(const AspectInputs& in, double cz);

// Best of each curve over a sweep: a row whose glide ratio, rounded to 7
// decimals, is at least the best so far replaces it, so among equal values
// the highest aspect ratio wins.
CzPoint BestOfSweep(double cz, const std::vector<AllongementPoint>& rows);

// Glide ratio at the chosen aspect ratio B10 over the flight Cz 0.1 to 1.0.
std::vector<AllongementPoint> FinesseCzChoisi(const AspectInputs& in);

// Glide ratio in the turn (speed b15, Cz b16) for aspect ratios 4 to 35. The
// mass does not enter at a given speed and Cz: both masses give the same row.
std::vector<AllongementPoint> FinesseVirage(const AspectInputs& in);

// ---- the panel ------------------------------------------------------------------

// The two variants: sweeps, charts into wb.aspectRatio, and the trace
// verif.txt in the installation folder, rewritten at each run.
void CalculAllongementV222(Workbench& wb);
void CalculAllongementV223(Workbench& wb);

// Refresh of the panel: captions, loadings, span and root chord, turn figures,
// then the variant chosen by Option1. Registered as the refresh of toolbar
// button 18, so the master recalculation runs it while the panel is open.
void MajAllongement(Workbench& wb);

// ---- window logic ------------------------------------------------------------------
// What the window's controls do once they have written their cell; the Qt
// window and the command-line program call these.
namespace allongement {

// Slider ranges: HScroll1 is b15 in km/h, HScroll2 is b16 in hundredths.
inline constexpr int kSpeedSliderMin = 10, kSpeedSliderMax = 200;
inline constexpr int kCzSliderMin = 10, kCzSliderMax = 150;
// Range kept by the step buttons of B10.
inline constexpr double kChosenAMin = 1, kChosenAMax = 40;

// The typed fields of the panel: B4, b5, c5, B10, b15, b16, b17, T_MAX_G*.
bool IsTypedField(Cell c);

// After a control changed its cell: a blank typed field becomes "0"; b15 and
// b16 move their sliders, the sliders set b15 and b16; setting one Option1
// clears the other (clearing one sets the other); then the panel refreshes.
// Cells of other windows are ignored.
void CellChanged(Workbench& wb, Cell c);

// Command1(0) lowers B10 by one, Command1(1) raises it, within 1..40; then
// the panel refreshes.
void Command1_Click(Workbench& wb, int index);

}  // namespace allongement

}  // namespace tarvokin
