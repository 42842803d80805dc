// Servo sizing, window F_SERVOS ("SERVOS"): the torque a servo needs to hold
// each control surface at the model's top speed. The four surfaces are
// columns of the same five inputs under the common speed b5.
#pragma once

#include <array>
#include <vector>

#include "core/cells.h"
#include "core/chart_data.h"

namespace tarvokin {

class Workbench;

struct ServoColumn {
    const char* name;
    Cell a1, a2, length, chordMin, chordMax, travel, torque;
};

// "Profondeur", "Dérive", "Aileron", "Volet", then the second flap position
// (k10 in place of h10, results k11 and k13).
const std::array<ServoColumn, 5>& servoColumns();

// Travel in mm of a surface of chord `chordMin` (mm) deflected by a1 degrees.
double ServoTravel(double chordMin, double a1);
// Torque in Kg/cm at `speed` km/h: surface angle a1, servo angle a2, length L
// (mm) and the two chords (mm). NaN when it cannot be computed.
double ServoTorque(double speed, double a1, double a2, double length, double chordMin, double chordMax);

// Recomputes every column's travel and torque.
void Calc_Servos(Workbench& wb);

// "Gouvernes classiques - profondeur", "- Ailerons", "- Dérive", "- Volets":
// the torque of each surface against speed, from 0 to b5.
std::vector<ChartData> ServoCharts(const Workbench& wb);

}  // namespace tarvokin
