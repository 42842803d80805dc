// The motor calculation window F_CALC_MOT ("CALCULS MOTEUR"): a motor,
// propeller and battery proposed from the model's class and mass, and the
// evaluation of the set the modeller chose (the controls ending in 0).
#pragma once

#include <vector>

#include "core/chart_data.h"

namespace tarvokin {

class Workbench;

// The proposal from G3, G4, G6, G9, G13, G15, N29, L40a, choix_helice,
// qualite_moteur and type_moteur, then the chosen set (G29, I10, Ra, Io, N51,
// L51, L33). Outputs that cannot be computed show "-".
void CALC08(Workbench& wb);

// What drives the power curves of one motor on one propeller.
struct MotorPropInputs {
    double voltage = 0;    // V
    double kv = 0;         // rpm/V at the motor
    double ra = 0, io = 0;  // ohm, A
    double reduction = 1;  // motor turns per propeller turn
    double diametre = 0, pas = 0;  // inches
    double coefHelice = 1.33;
    double rendement = 0.85;  // motor efficiency of the propeller-speed relation
};

// The chosen set of F_CALC_MOT as inputs of the curves.
MotorPropInputs ChosenSetInputs(const Workbench& wb);

// Six charts over the pitch, 3 to 12 inches by 0.5 (19 points), of the chosen
// motor on the chosen diameter: "traction (Kg)", "Amp", "Pbatt (W)", "PH (W)",
// "Tour mn", "vent hélice (Km/h)".
std::vector<ChartData> graph_Moteur_Helice(const MotorPropInputs& in);

// Power against current, 0 to 60 A: the power the propeller draws at the
// motor's speed, the electric and the shaft power of the motor; and the
// motor's efficiency (second chart).
std::vector<ChartData> Chart_Helice_Mot(const MotorPropInputs& in);

}  // namespace tarvokin
