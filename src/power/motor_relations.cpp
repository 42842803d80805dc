#include "power/motor_relations.h"

#include <array>
#include <cmath>

#include "core/numbers.h"
#include "core/text_case.h"

namespace tarvokin {

namespace {

constexpr double kNone = kNotComputed;

bool contains(std::string_view text, std::string_view upperWord) {
    return upperCase(text).find(upperWord) != std::string::npos;
}

}  // namespace

double ratioOrNone(double a, double b) { return b == 0 ? kNone : a / b; }

double truncOrNone(double x) { return std::trunc(x); }

BatteryParams BatteryTable(std::string_view batteryText) {
    const std::string t = trim(batteryText);
    if (equalsNoCase(t, "NiCd / NiMh")) return {20, 1.1, 40, 1.1364, 1.2};
    if (equalsNoCase(t, "A123")) return {20, 2.7, 26.74, 0.6924, 3.2};
    if (equalsNoCase(t, "Lipo / Li-ion")) return {10, 3.5, 40, 0.5, 3.7};
    return {};
}

ModelParams ModelTable(int g3Index) {
    // The rows as the classes were tuned; a blank (NaN) takes the row above.
    // The last two columns are ours: the pitch/diameter ratio the class
    // usually flies and the share of full power it flies on.
    struct Row {
        double pm, poids, pitch, tours, pasDiam, gaz;
    };
    static const std::array<Row, 9> rows = {{
        {270, 0.5, 2.5, 0.8, kNone, kNone},  // Avion léger
        {100, 0.7, 2.8, 1, 0.8, kNone},      // Planeur début
        {100, 0.6, 2, 0.7, kNone, kNone},    // Planeur rapide
        {150, 0.6, 2, 0.7, 1.1, 1},          // Racer
        {240, 1, 4, 1.2, kNone, kNone},      // Remorqueur
        {240, 0.7, 2.8, kNone, kNone, kNone},  // Traineur
        {150, 0.7, 2.7, kNone, kNone, kNone},  // Voltige f3a
        {220, 0.7, 2.7, kNone, kNone, kNone},  // Voltige loisir
        {170, 0.7, 2.8, 0.8, 0.8, 0.9},        // Maquette
    }};
    if (g3Index < 0 || g3Index >= static_cast<int>(rows.size())) return {};
    // Before the first row that gives them: a 10x6 on a sport model, flown at 60 %.
    ModelParams p{kNone, kNone, kNone, kNone, 0.6, 0.6};
    for (int i = 0; i <= g3Index; ++i) {
        const Row& r = rows[static_cast<size_t>(i)];
        auto take = [](double& into, double v) {
            if (!std::isnan(v)) into = v;
        };
        take(p.PuissanceMassique, r.pm);
        take(p.CoefPoids, r.poids);
        take(p.RatioPitchspeed, r.pitch);
        take(p.ToursRef, r.tours);
        take(p.RatioPasDiametre, r.pasDiam);
        take(p.PartGaz, r.gaz);
    }
    return p;
}

EnergyShare EnergyShareTable(int g9Index) {
    if (g9Index == 0) return {70, 0.667};
    if (g9Index == 1) return {55, 1};
    return {};
}

PropellerParams PropellerByChoice(int index) {
    switch (index) {
        case 0: return {1.32, 0.6};
        case 1: return {1.11, 0.8};
        case 2: return {1.18, 0.8};
        case 3: return {1.1, 0.8};
        default: return {1.33, 0.7};
    }
}

PropellerParams PropellerByName(std::string_view name) {
    if (contains(name, "APC")) return {1.11, 0.8};
    if (contains(name, "CAMPROP")) return {1.18, 0.8};
    if (contains(name, "MASTER")) return {1.33, 0.7};
    return {1.33, 0.7};
}

double QualityNumber(std::string_view text) {
    static const char* order[] = {"Haute", "Basse", "Moyenne"};
    const std::string t = trim(text);
    for (int i = 0; i < 3; ++i) {
        if (equalsNoCase(t, order[i])) return i + 1;
    }
    return kNone;
}

double MotorTypeNumber(std::string_view text) { return contains(text, "BRUSHLESS") ? 2 : 1; }

double RendementReduction(double ratio) { return ratio == 1 ? 1 : 0.95; }

double GearRatio(double reductionField) { return reductionField > 0 ? reductionField : 1; }

double DesignWindowVoltage(std::string_view batteryText, double elements) {
    const std::string t = trim(batteryText);
    if (equalsNoCase(t, "Lipo / Li-ion")) return elements * 3.5;
    if (equalsNoCase(t, "A123")) return elements * 2.8;
    return elements;
}

double NoLoadFactor(std::string_view batteryText) { return contains(batteryText, "NIMH") ? 3.4 : 1; }

double MotorEfficiency(double q, double t) { return 0.85 - 0.1 * (3 - q) - 0.1 * (2 - t); }

double PropellerSpeed(double coefHelice, double rendementReduction, double rendement, double pElec, double pas,
                      double diametre) {
    const double law = (coefHelice / (1e9 * std::pow(12.0, 5))) * pas * std::pow(diametre, 4);
    return std::cbrt(ratioOrNone(rendementReduction * rendement * pElec, law));
}

double ShaftPower(double coefHelice, double pas, double diametre, double n) {
    return truncOrNone(coefHelice / 1e9 / std::pow(12.0, 5) * pas * std::pow(diametre, 4) * n * n * n);
}

double KvFromSpeed(double n, double voltage) { return ratioOrNone(n / 0.85, voltage); }

double NoLoadSpeed(double kv, double elements, std::string_view batteryText) {
    return truncOrNone(kv * elements * NoLoadFactor(batteryText));
}

double StandardSpeed(double noLoadSpeed) { return noLoadSpeed * kChargeRatio; }

double StaticThrust(double pas, double diametre, double n) {
    return pas * std::pow(diametre, 3) * n * n * 0.72 * 1e-10 * 28.35;
}

double PitchSpeedKmh(double pas, double n) { return 0.00042333 * 1.609344 * 2.237 * pas * n; }

double PitchSpeedMs(double pas, double n) { return PitchSpeedKmh(pas, n) * 1000 / 3600; }

double StallSpeed(double wingLoading) { return (5.9533 * std::sqrt(wingLoading / 3.051)) / 3.6; }

std::string PitchSpeedAdvice(double vd) {
    return "m/s      [idéalement de " + fixedOrDash(2.5 * vd, 1) + " à " + fixedOrDash(3 * vd, 1) + "]";
}

double PropellerEfficiency(double tableValue, double pas, double diametre) {
    return tableValue * ratioOrNone(2, 1 + 2 * ratioOrNone(pas, diametre));
}

double UsefulPower(double pElec, double rendement, double rendementHelice, double rendementReduction) {
    return pElec * rendement * rendementHelice * rendementReduction;
}

double ClimbRate(double pUtile, double massGrams, double sink) {
    return ratioOrNone(pUtile, massGrams * 9.81 / 1000) - sink;
}

double RunTime(double capacity, double current) { return ratioOrNone(capacity * kDischargeUsage * 60 / 1000, current); }

double DischargeRate(double current, double capacity) { return ratioOrNone(current, capacity) * 1000; }

double MaxContinuousCurrent(double capacity, double rate) { return capacity / 1000 * rate; }

double MaxReasonableCurrent(double maxContinuous) { return (maxContinuous + maxContinuous) / 3; }

double PropellerLoad(double coefHelice, double pas, double diametre, double kvReduit) {
    return coefHelice * pas / 12 * std::pow(diametre / 12, 4) * std::pow(kvReduit / 1000, 3);
}

std::optional<double> OperatingCurrent(double A, double Ra, double V, double Io) {
    // (I - Io) = A (V - Ra I)^2 written as a I^2 + b I + c = 0; the 1 of b is
    // the full-throttle share, 100 %.
    constexpr double TauxPct = 100;
    const double a = -A * Ra * Ra;
    const double b = 2 * A * Ra * V + TauxPct / 100;
    const double c = -(Io + A * V * V);
    const double root = std::sqrt(b * b - 4 * a * c);
    const double I1 = ratioOrNone(-b + root, 2 * a);
    const double I2 = ratioOrNone(-b - root, 2 * a);
    if (std::isfinite(I1) && Ra * I1 < V) return I1;
    if (std::isfinite(I2) && Ra * I2 < V) return I2;
    return std::nullopt;
}

}  // namespace tarvokin
