// The performance of the complete model: from the airfoil polars and the
// surface geometry, the polar of the whole aircraft and its speed polar (speed,
// sink rate, glide ratio, power) for the three candidate airfoils at the two
// masses of the design; the windows F_GEO_3 (speed polar) and F_GEO_5 (constant
// speed) as plain functions that their widgets call.
//
// Tables live in wb.perf (design/perf_table.h): PerfTable[slot] with slot =
// airfoil + 3 * mass, the smoothed PerfTableLisse, the constant-speed tables
// ReConstant, and the charts of both windows in wb.perf.charts.
#pragma once

#include "design/geometry.h"
#include "core/perf_table.h"
#include "core/cells.h"

namespace tarvokin {

class Workbench;

// ---- air state -------------------------------------------------------------------
// Altitude and temperature come from F_GEO_3.Text2 / Text3 while toolbar button
// 17 is down, else from the settings' [Parametres] Altitude / Temperature.

inline double DensiteAir(const Workbench& wb) { return AirDensity(wb); }                 // kg/m³
inline double TemperatureK(const Workbench& wb) { return AirTemperature(wb) + 273.15; }  // K
inline double PressionAtm(const Workbench& wb) { return AirPressure(wb); }               // hPa
inline double PressionVapeur(const Workbench& wb) { return VapourPressure(wb); }         // hPa

// ---- the kernel ------------------------------------------------------------------

constexpr int kPerfPoints = 26;          // the speed polar: Cz 0.05 to 1.30
constexpr int kPerfPointsReConstant = 14;  // constant speed: Cz 0.05 to 1.35
constexpr int kSlotByAirfoil = 999;
constexpr int kReynoldsModeDefault = 65535;

// Fills wb.perf.PerfTable[slot] with the speed polar of airfoil 0..2 at mass
// 0 (H30) or 1 (I30). Slot 999 means the slot of the airfoil at the lighter
// mass. Does nothing while F_GEO_SF_REGLAGES.T_ALLOW holds 0. A mass-0 run
// also writes the largest stab Cz (F_GEO_SF_REGLAGES.C32, F_3D.C32) and the
// stab drag of the fastest point (F_3D.CX0_STAB). The sweep has one way of
// taking the Reynolds numbers; reynoldsMode is accepted for the callers that
// pass it and changes nothing.
void CalculPerformances(Workbench& wb, int airfoilIndex, int massIndex, int slot = kSlotByAirfoil,
                        int reynoldsMode = kReynoldsModeDefault);

// The same model at the speed of F_GEO_5.Text2 (km/h), 14 points, with the
// drag force Trainee and PuissanceAero = V * Trainee; fills `result`.
void CalculPerformancesReConstant(Workbench& wb, PerfTableT& result, int airfoilIndex, int massIndex);

// ---- F_GEO_3: the speed polar ------------------------------------------------------

// The whole refresh of F_GEO_3: density, read-out visibility, the six runs,
// the folding of the stalled end, the smoothed tables, the four charts and the
// cursor. Callers decide when it runs (the recalculation while button 17 is
// down, the report, the command-line program).
void Courbes_Performances(Workbench& wb);

// The clean-up of a glide-ratio curve before it is smoothed and drawn: before
// the highest point, a point lower than its predecessor is lifted to the
// predecessor less a tenth of the drop, so that the curve keeps one maximum.
void KeepSingleFinesseMaximum(PerfTableT& t);

// Read-out of the cursor point F_GEO_3.Text12 (1..25) into T_Cz, T_Vitesse and,
// for each shown airfoil, Text5..Text7 (masse mini) and Text8..Text10 (masse
// maxi): sink rate, glide ratio and power at the cursor's speed.
void Affiche_Curseur(Workbench& wb);

// Command1: the air steppers.
enum class AirStep { AltitudeUp, AltitudeDown, TemperatureUp, TemperatureDown };
void F_GEO_3_Command1_Click(Workbench& wb, AirStep step);
// Command2: the cursor point, one step up (+1) or down (-1), kept within 1..25.
void F_GEO_3_Command2_Click(Workbench& wb, int direction);
// Command3: the chart rotation by 10 degrees, kept within 20..180.
void F_GEO_3_Command3_Click(Workbench& wb, int direction);
// Command4: shows F_GEO_5 and computes its charts.
void F_GEO_3_Command4_Click(Workbench& wb);
// Option1(index): the mass (0 mini, 1 maxi) the read-out follows.
void F_GEO_3_Option1_Click(Workbench& wb, int index);

// ---- F_GEO_5: constant speed -------------------------------------------------------

// The six constant-speed tables and the two charts of F_GEO_5.
void Courbes_ReConstant(Workbench& wb);
// Command1: the imposed speed by 5 km/h up (+1) or down (-1), never below 5.
void F_GEO_5_Command1_Click(Workbench& wb, int direction);
// VScroll1 / VScroll2 (which = 1 or 2): the upper limit of the y axis of the
// glide-ratio or power chart, shown in Text3 / Text4; 0 leaves the scale free.
void F_GEO_5_VScroll_Change(Workbench& wb, int which, double value);
// The window was closed: it no longer follows the refreshes.
void F_GEO_5_Unload(Workbench& wb);

// ---- wiring -------------------------------------------------------------------------

// The refresh of toolbar button 17 (F_GEO_3, and F_GEO_5 when shown), set into
// wb.panelRefresh by the workbench.
void RefreshPerformancePanels(Workbench& wb);
void registerPerformancePanels(Workbench& wb);

// Change and Enter steps of the cells of F_GEO_3 and F_GEO_5 (check boxes,
// options, typed fields), reached through the field rules. False for a cell
// that is not theirs.
bool performanceFieldChange(Workbench& wb, Cell c);
bool performanceFieldEnter(Workbench& wb, Cell c);

}  // namespace tarvokin
