// The power train in numbers: battery, model-class and propeller tables, and
// the relations between current, voltage, propeller speed, power and thrust
// that every power window uses under the same names.
//
// A value that cannot be computed (a zero divisor, a root of a negative, an
// unknown list entry) is carried along as NaN, so that everything computed
// from it cannot be computed either; the windows write it as "-".
#pragma once

#include <limits>
#include <optional>
#include <string>
#include <string_view>

namespace tarvokin {

inline constexpr double kNotComputed = std::numeric_limits<double>::quiet_NaN();

// a / b, or NaN when b is zero.
double ratioOrNone(double a, double b);
// Whole part by truncation; NaN stays NaN.
double truncOrNone(double x);

// ---- tables -------------------------------------------------------------------------

struct BatteryParams {
    double CoefTauxDecharge = kNotComputed;  // continuous discharge rate, C
    double TensionElement = kNotComputed;    // V per element under load
    double MasseElementRef = kNotComputed;   // g per element of 1000 mAh
    double MasseParMah = kNotComputed;
    double TensionNominale = kNotComputed;   // V per element, nominal
};
// By the battery text of G13 ("NiCd / NiMh", "A123", "Lipo / Li-ion"); any
// other text gives a record that cannot be computed with.
BatteryParams BatteryTable(std::string_view batteryText);

struct ModelParams {
    double PuissanceMassique = kNotComputed;  // W/kg
    double CoefPoids = kNotComputed;
    double RatioPitchspeed = kNotComputed;  // wanted pitch speed, multiple of the stall speed
    double ToursRef = kNotComputed;         // 10 000 rpm
    double RatioPasDiametre = kNotComputed;  // pitch / diameter usually flown by the class
    double PartGaz = kNotComputed;           // share of full power the class flies on
};
// By the position of G3; a row that leaves a value out takes that of the row
// before it. Positions outside 0..8 give a record that cannot be computed with.
ModelParams ModelTable(int g3Index);

struct EnergyShare {
    double PartEnergie = kNotComputed;  // percent of the mass in motor and battery
    double Coef = kNotComputed;
};
EnergyShare EnergyShareTable(int g9Index);

struct PropellerParams {
    double CoefHelice = 1.33;
    double RendementHelice = 0.7;  // before the pitch correction
};
// By the position of choix_helice: 0 "Générique", 1 "APC", 2 "Camprop", 3 "GWS".
PropellerParams PropellerByChoice(int index);
// By a free propeller name, searched in upper case: APC, CAMPROP, MASTER, other.
PropellerParams PropellerByName(std::string_view name);

// Quality number q (1..3) of a quality text, in the order the quality list
// shows them: "Haute" 1, "Basse" 2, "Moyenne" 3; NaN for another text.
double QualityNumber(std::string_view text);
// Motor type t: 2 for a brushless motor, 1 for a classic one.
double MotorTypeNumber(std::string_view text);

// ---- fixed figures ----------------------------------------------------------------

inline constexpr double kRendementBatterie = 0.8;
inline constexpr double kChargeRatio = 0.83;
inline constexpr double kCorrKv = 1.035;
inline constexpr double kWiringResistance = 0.03;
inline constexpr double kContactResistance = 0.008;
inline constexpr double kDischargeUsage = 0.95;
inline constexpr double kSinkCalc = 0.5;  // m/s, the sink rate the motor calculation assumes

// 1 without a reduction gear, 0.95 with one (any ratio other than 1).
double RendementReduction(double ratio);
// A reduction field of 0 (what a project without one holds) is direct drive.
double GearRatio(double reductionField);

// ---- core relations -----------------------------------------------------------------

// Cell voltage of the design window's battery: Lipo 3.5 V, A123 2.8 V, else 1 V an element.
double DesignWindowVoltage(std::string_view batteryText, double elements);
// 3.4 for a battery whose text holds "NIMH", else 1.
double NoLoadFactor(std::string_view batteryText);

double MotorEfficiency(double q, double t);  // Rendement
// Propeller speed (rpm) that absorbs the motor's output; Pas and Diametre in inches.
double PropellerSpeed(double coefHelice, double rendementReduction, double rendement, double pElec, double pas,
                      double diametre);
// Shaft power (W, whole) a propeller absorbs at n rpm.
double ShaftPower(double coefHelice, double pas, double diametre, double n);
// Kv from the loaded propeller speed: no-load speed n / 0.85 over the voltage.
double KvFromSpeed(double n, double voltage);
double NoLoadSpeed(double kv, double elements, std::string_view batteryText);  // Regime_a_vide, whole
double StandardSpeed(double noLoadSpeed);                                      // Régime_standard
double StaticThrust(double pas, double diametre, double n);                    // g
double PitchSpeedKmh(double pas, double n);
double PitchSpeedMs(double pas, double n);
double StallSpeed(double wingLoading);  // m/s, loading in g/dm²
// "m/s      [idéalement de " 2.5 vd " à " 3 vd "]", one decimal each.
std::string PitchSpeedAdvice(double vd);
double PropellerEfficiency(double tableValue, double pas, double diametre);
double UsefulPower(double pElec, double rendement, double rendementHelice, double rendementReduction);
double ClimbRate(double pUtile, double massGrams, double sink);
double RunTime(double capacity, double current);  // minutes
double DischargeRate(double current, double capacity);
double MaxContinuousCurrent(double capacity, double rate);
double MaxReasonableCurrent(double maxContinuous);  // two thirds of it

// The current at which a motor (Kv_reduit at the propeller, Ra, Io) on voltage
// V turns its propeller (A = CoefHelice Pas/12 (Diametre/12)^4 (Kv_reduit/1000)^3):
// the root of the balance whose voltage drop stays below V, the smaller first;
// none when neither root does or there is no real root.
std::optional<double> OperatingCurrent(double A, double Ra, double V, double Io);
double PropellerLoad(double coefHelice, double pas, double diametre, double kvReduit);  // A above

}  // namespace tarvokin
