// Span loading of the wing and the stabiliser by two vortex-lattice solvers,
// and the panel F_VLM that shows it beside the elliptic loading of the same
// total lift, with the mean lift coefficient and the Oswald factor.
//
// CalcVLM: one row of 40 horseshoes on the wing brought to four straight
// sections, every intermediate value rounded to the decimals the design was
// tuned with. Lengths are fractions of the half span.
//
// VLM_Strips: one row of 32 horseshoes on the wing (or the stabiliser) as it
// is, with sweep, dihedral and twist per panel, flaps, ailerons and a turning
// flight. Metres, seconds, newtons.
//
// Nothing here throws on bad input: a run that cannot be made leaves "-" in
// the panel's figures and empty tables.
#pragma once

#include <array>
#include <vector>

#include "core/cells.h"
#include "core/vlm_state.h"

namespace tarvokin {

class Workbench;

inline constexpr int kVlmStrips = 40;         // horseshoes of CalcVLM, both sides
inline constexpr int kVlmStations = 32;       // horseshoes of VLM_Strips, both sides
inline constexpr double kVlmDegreesPerRadian = 57.3;
inline constexpr double kOneOverFourPi = 0.0795774715459;
inline constexpr double kEllipseFactor = 0.0634434953159;

// Angle setting: B33 = 70 is an angle of attack of 0, one step is a tenth of a degree.
inline constexpr int kAngleSettingMin = 1, kAngleSettingMax = 200, kAngleSettingZero = 70;
// Roll slider: 180 is level flight, the bank angle is 180 minus the slider.
inline constexpr int kRollSliderMin = 100, kRollSliderMax = 180;
// Flap and aileron sliders, degrees.
inline constexpr int kDeflectionSliderMin = -30, kDeflectionSliderMax = 30;

// Toolbar button 29's Tag holds the panel's state.
enum class VlmSurface { Closed = 0, Wing = 1, Stab = 2 };

// Series names of the charts.
inline constexpr const char* kSeriesLift = " Répartition Portance";
inline constexpr const char* kSeriesEllipse = " Répartition Elliptique";
inline constexpr const char* kSeriesCl = " Cl";
inline constexpr const char* kTipCzMoyen = "cz aile moyen calculé par VLM";
inline constexpr const char* kTipOswald =
    "Coeeficient de performance de l'aile par rapport  à une aile elliptique de même surface et allongement";

// ---- CalcVLM, piece by piece ---------------------------------------------------------

// Rounds half away from zero to `decimals` (up to 15); values too large to
// carry that many decimals in a double are left as they are.
double RoundTo(double x, int decimals);

// A break of the wing brought to four straight sections, in fractions of the half span.
struct VlmBreak {
    double station = 0, chord = 0, sweep = 0, twist = 0;  // twist in degrees
};
// Root, three inner breaks and tip.
using VlmSections = std::array<VlmBreak, 5>;

// One wing panel as the fields give it (mm, degrees).
struct VlmPanel {
    double root = 0, tip = 0, length = 0, sweep = 0, twist = 0;
};

// The four sections by the number n (1..5) of non-empty panels, in fractions
// of the half span (given in mm through halfSpanMm); false when n is outside
// 1..5 or the wing has no span.
bool ReduceToSections(const std::array<VlmPanel, 5>& panels, int n, VlmSections& out,
                      double* halfSpanMm = nullptr);

// The 41 strip edges (-1..1) and the 40 control stations, running values
// rounded to seven decimals.
std::array<double, kVlmStrips + 1> StripEdges();
std::array<double, kVlmStrips> ControlStations();

// The chord law c = a + b |y| of each section (b to three decimals, the tip
// section's kept whole, unrounded) and the chord at |y| (closed upper bounds
// at the breaks).
struct ChordLaw {
    std::array<double, 4> a{}, b{};
    std::array<double, 5> station{};
    double at(double absY) const;
    int section(double absY) const;
};
ChordLaw MakeChordLaw(const VlmSections& s);

// Leading-edge sweep at |y|, piecewise linear through the breaks.
double SweepAt(const VlmSections& s, double absY);

// Downwash factor of horseshoe (x1, y1)-(x2, y2) at (x, y), with the roundings
// of the design (T1 and T2 four decimals, T3 and the sum fifteen).
double InfluenceCoefficient(double x, double y, double x1, double y1, double x2, double y2);

// Inverse of a square matrix (row-major, n × n) by LU decomposition with row
// scaling and partial pivoting; each entry rounded to fifteen decimals. False
// for a singular matrix (a zero row or a zero pivot); `inverse` is then untouched.
bool InvertMatrix(const std::vector<double>& a, int n, std::vector<double>& inverse);

// Runs CalcVLM on the wing: the three tables in wb.vlm, P25 and S25. False
// (after the beep) for a singular matrix, leaving everything as it was; false
// too for a wing with nothing to compute, which shows "-".
bool CalcVLM(Workbench& wb);

// ---- VLM_Strips -----------------------------------------------------------------------

// Flap or aileron effectiveness: change of the section's zero-lift angle per
// degree of deflection, for a plain flap of `chordFraction` (0..1) of the chord.
double FlapEffectiveness(double chordFraction);

// Runs the strips solver for the surface of Tag 29 (wing when 1, else the
// stabiliser) into wb.vlm.strips. False, with empty results, when the surface
// has no span or the system is singular.
bool VLM_Strips(Workbench& wb);

// ---- the panel F_VLM ----------------------------------------------------------------------

VlmSurface VlmPanelState(const Workbench& wb);

// Command1: CalcVLM, the strips solver while the panel is open (scaled onto the
// first results), the charts, and the range of the local Cl in Text2(0..1).
void VlmCommand1(Workbench& wb);

// Command5 / Command7 of the design window: the panel opens on the wing or the
// stabiliser and computes. Closing it sets Tag 29 to 0.
void OpenVlm(Workbench& wb, VlmSurface surface);
void CloseVlm(Workbench& wb);

namespace vlm {

// Command2(0) lowers B33 by one, Command2(1) raises it, within 1..200; N25 follows.
void Command2_Click(Workbench& wb, int index);
// The sliders: roll (Text1 shows it), flaps (both sides), ailerons (left, and
// its negative right). Each runs Command1.
void Hscroll1_Change(Workbench& wb, int value);
void Hscroll2_Change(Workbench& wb, int value);
void Hscroll3_Change(Workbench& wb, int value);

// The typed fields of the panel.
bool IsTypedField(Cell c);

// Change step of a cell of F_VLM (at each key of a typed field): B33 sets
// N25, Text1 moves the roll slider, a left deflection moves its slider, which
// writes the right side as its move does; the sliders write their fields; the
// panel is then recomputed. A typed value out of its range waits for Enter.
// False for a cell of another window.
bool CellChanged(Workbench& wb, Cell c);
// Enter in a typed field: B33 and Text1 are brought within their ranges (a
// blank B33 is 70), a blank deflection becomes 0; then the panel is recomputed.
bool CellEntered(Workbench& wb, Cell c);

}  // namespace vlm

// The recalculation's refreshes: button 17 runs CalcVLM then Command1, button
// 29 (while its Tag is not 0) runs Command1.
void registerVlmPanel(Workbench& wb);

}  // namespace tarvokin
