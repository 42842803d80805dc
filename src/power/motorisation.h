// The power train of the design: the motor fields of the design window
// (battery, motor, propeller and their results) and the motorisation window
// F_MOTORISATIONS, which picks a catalogue motor and draws its curves and the
// balance of the power needed and available in level flight.
#pragma once

#include <string>
#include <vector>

#include "power/calc_mot.h"
#include "core/chart_data.h"

namespace tarvokin {

class Workbench;

// The motor results of the design window: b7 voltage, b8 discharge, h8 run
// time, B89 motor efficiency, f7 propeller speed, d8 Kv wanted, f8 static
// thrust, h4 and h6 climb rates at the two masses (sink from the first point
// of the first performance table; "-" while that table is empty).
void MajMotorisation(Workbench& wb);

// Battery and propeller of the design window with the motor of F_MOTORISATIONS.
MotorPropInputs DesignWindowInputs(const Workbench& wb);

// The lines of CB_MOT, "Marque@Modele", each motor once; with Check1 set only
// the motors whose type is the design window's motor type (Combo4).
std::vector<std::string> MotorComboItems(const Workbench& wb);
void FillMotorCombo(Workbench& wb);

// The choice of a line of CB_MOT: the motor is loaded, T_Ra, T_Io, d8 take its
// figures, the design keeps its brand and model, the open project file gets
// [Moteur] Marque and Moteur at once, and the curves are refreshed. False when
// the line names no motor of the file (nothing changes).
bool CB_MOT_Click(Workbench& wb);

// Power needed to fly level against speed (km/h) for performance table
// `slot` (airfoil slot % 3, mass slot / 3): the sweep of the complete model.
std::vector<ChartPoint> PuissanceVol(const Workbench& wb, int slot);

struct PowerBalance {
    ChartData chart;
    double levelSpeed;  // km/h where power needed meets power available; NaN when they never meet
};
// "Equilibre des Puissances pour le vol en Palier": one power-needed series
// per shown airfoil and mass, the propeller's power "Hélice" falling from the
// useful power at rest to 0 at the pitch speed, and their crossing "Vitesse
// vol en palier" (on the first series, looked for from its third point on).
PowerBalance Equilibre_Puissances(const Workbench& wb);

// The refresh of the motorisation window's figures: MajMotorisation, then
// the level speed into the design window's h3.
void RefreshMotorisation(Workbench& wb);

// The six speed-polar tables that the power balance and the climb rates read,
// swept now from the design as it stands, unless the performance window is
// open: its refresh keeps them current at every recalculation.
void PowerSweeps(Workbench& wb);

// Opening the motorisation window: its motor list, the sweeps, then its refresh.
void OpenMotorisation(Workbench& wb);

// The design window's motor tab coming to the front: the sweeps and the
// refresh of the motorisation figures, h3 included.
void RefreshMotorTab(Workbench& wb);

}  // namespace tarvokin
