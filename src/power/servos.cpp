#include "power/servos.h"

#include <cmath>

#include "design/geometry.h"
#include "power/motor_relations.h"
#include "core/numbers.h"
#include "core/workbench.h"

namespace tarvokin {

namespace {

double input(const Sheet& s, Cell c) {
    double v = 0;
    return tryNumber(s.text(c), v) && std::isfinite(v) ? v : kNotComputed;
}

double radians(double degrees) { return degrees * PiValue() / 180; }

double columnTorque(const Sheet& s, const ServoColumn& c, double speed) {
    return ServoTorque(speed, input(s, c.a1), input(s, c.a2), input(s, c.length), input(s, c.chordMin),
                       input(s, c.chordMax));
}

}  // namespace

const std::array<ServoColumn, 5>& servoColumns() {
    using namespace F_SERVOS;
    static const std::array<ServoColumn, 5> cols = {{
        {"Profondeur", B10, b12, b9, b7, b8, b11, b13},
        {"Dérive", d10, d12, d9, d7, d8, D11, d13},
        {"Aileron", f10, f12, f9, f7, f8, f11, f13},
        {"Volet", h10, h12, h9, h7, h8, h11, h13},
        {"Volet position 2", k10, h12, h9, h7, h8, k11, k13},
    }};
    return cols;
}

double ServoTravel(double chordMin, double a1) { return chordMin * std::tan(radians(a1)); }

double ServoTorque(double speed, double a1, double a2, double length, double chordMin, double chordMax) {
    const double cm = (chordMax + chordMin) / 2;
    const double lever = ratioOrNone(std::sin(radians(a1)) * std::tan(radians(a1)), std::tan(radians(a2)));
    // Dynamic pressure and units to Kg/cm, the three divisors as they were tuned.
    return length * speed * speed * cm * cm * lever / 423241618 / 0.981 / 6.5;
}

void Calc_Servos(Workbench& wb) {
    Sheet& s = wb.sheet;
    const double speed = input(s, F_SERVOS::b5);
    for (const ServoColumn& c : servoColumns()) {
        s.set(c.travel, fixedOrDash(ServoTravel(input(s, c.chordMin), input(s, c.a1)), 2));
        s.set(c.torque, fixedOrDash(columnTorque(s, c, speed), 2));
    }
}

std::vector<ChartData> ServoCharts(const Workbench& wb) {
    const Sheet& s = wb.sheet;
    const auto& cols = servoColumns();
    struct Plan {
        const char* title;
        std::vector<size_t> columns;
    };
    static const Plan plans[4] = {{"Gouvernes classiques - profondeur", {0}},
                                  {"Gouvernes classiques - Ailerons", {2}},
                                  {"Gouvernes classiques - Dérive", {1}},
                                  {"Gouvernes classiques - Volets", {3, 4}}};
    static const Rgb colours[2] = {{0, 0, 255}, {255, 0, 0}};
    const double top = input(s, F_SERVOS::b5);
    std::vector<ChartData> charts;
    for (const Plan& plan : plans) {
        ChartData c;
        c.title = plan.title;
        c.xTitle = "V (Km/h)";
        c.yTitle = "Couplemax (Kg /cm)";
        for (size_t k = 0; k < plan.columns.size(); ++k) {
            const ServoColumn& col = cols[plan.columns[k]];
            ChartSeries sr;
            sr.code = static_cast<int>(plan.columns[k]);
            sr.name = col.name;
            sr.colour = colours[k];
            for (int i = 0; i <= 20; ++i) {
                const double v = top * i / 20;
                sr.points.push_back({v, columnTorque(s, col, v)});
            }
            c.series.push_back(std::move(sr));
        }
        c.dropNonFinite();
        charts.push_back(std::move(c));
    }
    return charts;
}

}  // namespace tarvokin
