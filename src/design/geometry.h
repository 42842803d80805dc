// The formula library of the design: small functions that read the current
// cells of the design panels, compute one number and return it. Nothing is
// kept between calls; a function that needs another value calls it again.
// Lengths are in mm, surfaces in dm² unless the name says otherwise.
//
// Panel numbers k run 1..5 (grid columns b..f). Functions that may need
// StabLever take a writable sheet, because StabLever normalises a zero lever
// field when it reads one.
//
// Divisions go through divide(): a value that cannot be computed ends the
// caller with the division error, never with inf or nan. The recalculation
// tests WingArea > 0 and StabArea > 0 before it asks for what depends on them.
#pragma once

#include "core/sheet.h"

namespace tarvokin {

class Workbench;

// ---- constants and small helpers ----------------------------------------------

// The library's pi. It is slightly below the true value and is kept as it is:
// every aerodynamic and control-surface figure of the program was tuned with it.
constexpr double PiValue() { return 3.14116; }
// Lift slope of a section at infinite aspect ratio, per degree.
constexpr double kSectionLiftSlope = 0.11;

// Truncation through the decimal text of x (ten decimals), so it never
// depends on the locale: IntPart(12.9) == 12, IntPart(-3.5) == -3.
double IntPart(double x);

// Cm0 of the wing airfoil (F_GEO_SF.j11) with seven decimals, read back.
double CmZero(const Sheet& s);

// Number of wing panels whose root chord is above 0.
int CountFilledPanels(const Sheet& s);

// Reference factor of interference drag: 1.1, or 1 when the performance panel
// is open and its Check3 is ticked.
double DragFactorRef(const Workbench& wb);

// ---- wing, per panel (k = 1..5) ------------------------------------------------

// Panel whose surface is a winglet (2..5), or 0 when there is none.
int WingletPanel(const Sheet& s);

double PanelArea(const Sheet& s, int k);
double PanelMac(const Sheet& s, int k);
double PanelSweepShift(const Sheet& s, int k);
// Chordwise position of the point at fraction f of panel k's mean chord, from
// the root leading edge.
double PanelPointAt(const Sheet& s, int k, double f);

// ---- wing, whole ---------------------------------------------------------------

// Sum of the panel areas, rounded to two decimals (the value shown in j4).
double WingArea(const Sheet& s);
double Span(const Sheet& s);      // both sides, winglet excluded
double SpanAll(const Sheet& s);   // both sides, winglet included
double MeanChord(const Sheet& s);       // two decimals, as shown in j5
double MeanChordPlain(const Sheet& s);  // unrounded, for further formulas
double MeanChordStation(const Sheet& s);  // two decimals
double AspectRatio(const Sheet& s);
double AspectRatio5(const Sheet& s);  // five decimals
double EllipticAspectRatio(const Sheet& s);
double WingFoyer(const Sheet& s);  // neutral point at 25 %, mm from the root leading edge
double FlatAreaM2(const Sheet& s);
double SpanM(const Sheet& s);
double AspectRatioSI(const Sheet& s);
double AverageChordCheck(const Sheet& s);
double WingLoading(const Sheet& s, double massGrams);  // g/dm²
// Whole Reynolds number of a chord at the wing panel's speed a12 (km/h).
double Reynolds(const Sheet& s, double chordMm);
double Reynolds(double chordMm, double speedKmh);
double LiftSlopeFactor(const Sheet& s);

// ---- stabiliser and fin ----------------------------------------------------------

// Opening angle of the tail in degrees, from the list position of b21.
double OpeningAngle(const Sheet& s);

constexpr double StabFoyerPercent() { return 25.0; }
double StabPanelArea(const Sheet& s, int k);
double StabPanelMac(const Sheet& s, int k);
double StabSweepShift(const Sheet& s, int k);
double StabPanelFoyer(const Sheet& s, int k);
double StabArea(const Sheet& s);
double StabSpan(const Sheet& s);
double StabMeanChord(const Sheet& s);
double StabAspectRatio(const Sheet& s);
double StabEllipticRatio(const Sheet& s);
double StabFoyer(const Sheet& s);  // mm from the stabiliser's root leading edge
// Distance between the wing's and the stabiliser's neutral points; 1 when the
// stabiliser has no root chord. A lever field reading 0 is first rewritten as
// "0.0" (it stays zero).
double StabLever(Sheet& s);

// The first step of StabLever alone: a lever field reading 0 becomes "0.0".
// For the terms that need no lever when there is no tail to weigh it.
void KeepLeverFieldNumeric(Sheet& s);
double StabProjectedArea(const Sheet& s);
double StabVolume(Sheet& s);
double StabLiftSlope(const Sheet& s);
double StabHeight(const Sheet& s);
double StabDragFactor(const Sheet& s);
double StabChord10(const Sheet& s);
double StabAreaM2(const Sheet& s);
double FinPercent(const Sheet& s);
// Fin area in dm²: height × mean of root and tip chords, doubled for twin fins.
double FinArea(const Sheet& s);

// ---- downwash --------------------------------------------------------------------

// Lifting-line estimate of dε/dα for aspect ratio A, lever ratio r = 2l/b and
// height ratio m = 2h/b.
double DownwashSlopeOf(double A, double r, double m);
double DownwashSlope(Sheet& s);
double DownwashAngle(Sheet& s);

// ---- fuselage ----------------------------------------------------------------------

int FuselageType(const Sheet& s);
int TailType(const Sheet& s);
double FuselageFoyerPercent(const Sheet& s);
double FuselagePlanArea(const Sheet& s);  // m²
double FuselageBox(const Sheet& s);       // m²
double FuselageShapeFactor(const Sheet& s);
double FuselageWetArea(const Sheet& s);  // m²
double FuselageSlopeRaw(const Sheet& s);
double FuselageSlope(const Sheet& s);
double FuselageArea100(const Sheet& s);
double FuselageFoyerStation(const Sheet& s);
double WingFoyerFromNose(const Sheet& s);

// ---- neutral point of the whole aircraft ---------------------------------------------

double SlopeSum(Sheet& s);
double TailShift(Sheet& s);
double DownwashShift(Sheet& s);
double FuselageShift(Sheet& s);
double NeutralPoint(Sheet& s);  // fraction of the mean chord
double CgPoint(Sheet& s);       // fraction of the mean chord
double CgStation(Sheet& s);       // mm from the root leading edge
double NeutralStation(Sheet& s);  // mm from the root leading edge

// ---- air ---------------------------------------------------------------------------

// Temperature (°C) and altitude (m): the performance panel's fields while it
// is open, else the settings.
double AirTemperature(const Workbench& wb);
double AirAltitude(const Workbench& wb);
double AirPressure(const Workbench& wb);         // hPa
double SaturationPressure(const Workbench& wb);  // hPa
double VapourPressure(const Workbench& wb);      // hPa
double DryPressure(const Workbench& wb);         // hPa
double AirDensity(const Workbench& wb);          // kg/m³

}  // namespace tarvokin
