#include "power/calc_mot.h"

#include <cmath>
#include <optional>
#include <string>

#include "power/motor_relations.h"
#include "core/numbers.h"
#include "core/workbench.h"

namespace tarvokin {

namespace {

double input(const Sheet& s, Cell c) {
    double v = 0;
    return tryNumber(s.text(c), v) && std::isfinite(v) ? v : kNotComputed;
}

void put(Sheet& s, Cell c, double v, int decimals) { s.set(c, fixedOrDash(v, decimals)); }

// What the window's lists say about the battery, the propeller and the motor.
struct Choices {
    std::string batteryText;
    BatteryParams battery;
    PropellerParams propeller;
    double rendement;
    double voltage;  // the pack under load
    double gear;     // reduction I10, 1 for direct drive
};

Choices choicesOf(const Sheet& s) {
    using namespace F_CALC_MOT;
    Choices c;
    c.batteryText = s.text(G13);
    c.battery = BatteryTable(c.batteryText);
    c.propeller = PropellerByChoice(s.listIndex(choix_helice));
    c.rendement = MotorEfficiency(QualityNumber(s.text(qualite_moteur)), MotorTypeNumber(s.text(type_moteur)));
    c.voltage = input(s, G15) * c.battery.TensionElement;
    c.gear = GearRatio(input(s, I10));
    return c;
}

void proposal(Sheet& s, const Choices& ch) {
    using namespace F_CALC_MOT;
    const ModelParams model = ModelTable(s.listIndex(G3));
    const EnergyShare share = EnergyShareTable(s.listIndex(G9));
    const double mass = input(s, G4), motors = input(s, G6), cells = input(s, G15), packs = input(s, N29);
    const double V = ch.voltage, rr = RendementReduction(ch.gear);

    // 1. Electric power from the class's power per kilogram, through the battery's losses.
    const double pm = (model.PuissanceMassique / kRendementBatterie) * mass / 1000;
    const double im = ratioOrNone(pm, V);
    put(s, PM, pm, 0);
    put(s, IM, im, 1);
    put(s, Rdmt, ch.rendement * 100, 0);

    // 2-3. Motor mass (0.4 g a watt, shared between the motors) and Kv to the hundred.
    put(s, T_Masse_Moteur, ratioOrNone(truncOrNone(pm * 0.4), motors), 0);
    const double kvProposed = roundHalfAway(ratioOrNone(model.ToursRef * 10000 / 0.8, V) / 100, 0) * 100;
    put(s, kv, kvProposed, 0);

    // 4. Speeds, stall speed and the pitch that flies at the wanted multiple of it.
    const double noLoad = NoLoadSpeed(kvProposed, cells, ch.batteryText);
    put(s, Regime_a_vide, noLoad, 0);
    put(s, Régime_standard, StandardSpeed(noLoad), 0);
    const double stall = StallSpeed(input(s, L40a));
    put(s, vd, stall, 1);
    const double tours = model.ToursRef * 10000;
    const double lpitch = model.RatioPitchspeed * stall * ratioOrNone(60, tours);
    const double lpitchIn = lpitch * 100 / 2.54;
    put(s, Lpitch, lpitch, 3);
    put(s, Lpitch_Pouces, lpitchIn, 1);

    // 5-6. The diameter that absorbs the shaft power at that pitch and speed, and its thrust.
    const double ddiam = std::pow(ratioOrNone(pm * 0.8, 1.9e-7 * lpitch * std::pow(tours, 3) * 2 * 1.1), 0.25);
    const double ddiamIn = ddiam * 100 / 2.54;
    put(s, Ddiam, ddiam, 3);
    put(s, Ddiam_Pouces, ddiamIn, 1);
    const double thrust = truncOrNone(4.9 * std::pow(ddiam, 3) * lpitch * tours * tours / 1000);
    put(s, tr, thrust, 0);
    put(s, tr_tot, motors * thrust, 0);

    // 7. The propeller to buy: whole inches.
    const double hp = roundHalfAway(lpitchIn, 0), hd = roundHalfAway(ddiamIn, 0);
    put(s, HP, hp, 0);
    put(s, HD, hd, 0);
    put(s, T_Ratio_Helice, ratioOrNone(hp, hd), 2);
    put(s, T_Ratio_Conseil, model.RatioPasDiametre, 2);
    put(s, PLT, hp * hd * hd * hd, 0);

    // 8. That propeller's speed and power, and the battery for ten minutes at half current.
    const double n = PropellerSpeed(ch.propeller.CoefHelice, rr, ch.rendement, pm, hp, hd);
    put(s, Régime_Helice, n, 0);
    put(s, Puissance_arbre, ShaftPower(ch.propeller.CoefHelice, hp, hd, n), 0);
    put(s, T_Pitch, PitchSpeedMs(hp, n), 1);
    s.set(L_Pitch, PitchSpeedAdvice(stall));
    const double capacity = truncOrNone(((im / 2) * 1000 * 10) / 60);
    put(s, cb, capacity, 0);
    put(s, T_Decharge, ratioOrNone(im, capacity) * 1000, 1);
    const double iMax = MaxContinuousCurrent(capacity, ch.battery.CoefTauxDecharge);
    put(s, I_Max_Cont, iMax, 1);
    put(s, I_Max_Rais, MaxReasonableCurrent(iMax), 1);

    // 9. Battery mass from the share of the mass given to the power train.
    const double batteryMass = truncOrNone(ch.battery.MasseParMah * mass * ratioOrNone(100, share.PartEnergie) *
                                           model.PuissanceMassique * 0.001);
    put(s, L21, batteryMass, 0);
    put(s, L211, ratioOrNone(batteryMass, packs), 1);
    put(s, L212, ratioOrNone(batteryMass, packs * cells), 1);

    // 10. Climb and motor run.
    const double useful =
        UsefulPower(pm, ch.rendement, PropellerEfficiency(ch.propeller.RendementHelice, hp, hd), rr);
    put(s, V_ASC, mass == 0 ? kNotComputed : ClimbRate(useful, mass, kSinkCalc), 2);
    const double run = RunTime(capacity, im);
    put(s, Temps_Moteur, run, 1);
    put(s, T_Temps_Vol, ratioOrNone(run, model.PartGaz), 1);
}

void chosenSet(Sheet& s, const Choices& ch) {
    using namespace F_CALC_MOT;
    const double kvMotor = input(s, G29), ra = input(s, Ra), io = input(s, Io);
    const double pas = input(s, N51), diam = input(s, L51), capacity = input(s, L33);
    const double mass = input(s, G4), motors = input(s, G6), cells = input(s, G15), packs = input(s, N29);
    const double V = ch.voltage, rr = RendementReduction(ch.gear);

    // 1-3. The current at which motor and propeller balance.
    const double A = PropellerLoad(ch.propeller.CoefHelice, pas, diam, kvMotor / ch.gear);
    const std::optional<double> I = OperatingCurrent(A, ra, V, io);
    // 4. Electric power in whole watts, and the current it stands for.
    const double pElec = I ? truncOrNone(*I * V) : kNotComputed;
    const double current = roundHalfAway(ratioOrNone(pElec, V), 2);
    put(s, PElec0, pElec, 0);
    put(s, I0, current, 2);
    put(s, Regime_Moteur0, truncOrNone((V - current * ra) * kvMotor), 0);

    // 5. Speeds and the propeller by the same relations as the proposal.
    const double noLoad = NoLoadSpeed(kvMotor, cells, ch.batteryText);
    put(s, Regime_a_vide0, noLoad, 0);
    put(s, Régime_standard0, StandardSpeed(noLoad), 0);
    const double n = PropellerSpeed(ch.propeller.CoefHelice, rr, ch.rendement, pElec, pas, diam);
    put(s, Régime_Helice0, n, 0);
    put(s, Puissance_arbre0, ShaftPower(ch.propeller.CoefHelice, pas, diam, n), 0);
    put(s, Ratio_Helice, ratioOrNone(pas, diam), 2);
    put(s, PLT0, pas * diam * diam * diam, 0);
    put(s, T_Pitch0, PitchSpeedMs(pas, n), 1);

    // 6-7. Static thrust and the wind behind the propeller (its pitch in metres a turn).
    const double thrust = 1e-10 * (n * n * diam * diam * diam * pas * 0.72) * 28.35;
    put(s, L58, thrust, 0);
    put(s, L59, motors * thrust, 0);
    put(s, vh, (pas * 0.0254) * n / 60, 1);

    // 8. The chosen cells: element and pack mass, discharge, currents, climb and run.
    const double elementMass = ch.battery.MasseElementRef * capacity / 1000;
    put(s, L34, elementMass, 0);
    put(s, L35, elementMass * cells * packs, 0);
    put(s, L61, DischargeRate(current, capacity), 1);
    const double iMax = MaxContinuousCurrent(capacity, ch.battery.CoefTauxDecharge);
    put(s, I_Max_Cont0, iMax, 1);
    put(s, I_Max_Rais0, MaxReasonableCurrent(iMax), 1);
    const double useful =
        UsefulPower(pElec, ch.rendement, PropellerEfficiency(ch.propeller.RendementHelice, pas, diam), rr);
    put(s, V_ASC_0, mass == 0 ? kNotComputed : ClimbRate(useful, mass, kSinkCalc), 2);
    put(s, Temps_Moteur0, RunTime(capacity, current), 1);
}

ChartSeries series(int code, const std::string& name, Rgb colour) {
    ChartSeries sr;
    sr.code = code;
    sr.name = name;
    sr.colour = colour;
    return sr;
}

}  // namespace

void CALC08(Workbench& wb) {
    const Choices ch = choicesOf(wb.sheet);
    proposal(wb.sheet, ch);
    chosenSet(wb.sheet, ch);
}

MotorPropInputs ChosenSetInputs(const Workbench& wb) {
    using namespace F_CALC_MOT;
    const Sheet& s = wb.sheet;
    const Choices ch = choicesOf(s);
    MotorPropInputs in;
    in.voltage = ch.voltage;
    in.kv = input(s, G29);
    in.ra = input(s, Ra);
    in.io = input(s, Io);
    in.reduction = ch.gear;
    in.diametre = input(s, L51);
    in.pas = input(s, N51);
    in.coefHelice = ch.propeller.CoefHelice;
    in.rendement = ch.rendement;
    return in;
}

std::vector<ChartData> graph_Moteur_Helice(const MotorPropInputs& in) {
    static const char* names[6] = {"traction (Kg)", "Amp", "Pbatt (W)", "PH (W)", "Tour mn", "vent hélice (Km/h)"};
    static const Rgb colours[6] = {{0, 0, 255}, {255, 0, 0}, {0, 160, 0}, {160, 0, 160}, {0, 160, 160}, {200, 120, 0}};
    std::vector<ChartData> charts(6);
    for (int k = 0; k < 6; ++k) {
        charts[static_cast<size_t>(k)].title = "Pas";
        charts[static_cast<size_t>(k)].xTitle = "Pas";
        charts[static_cast<size_t>(k)].yTitle = names[k];
        charts[static_cast<size_t>(k)].series.push_back(series(k, names[k], colours[k]));
    }
    const double V = in.voltage, Io = in.io;
    const double rsum = in.ra + kWiringResistance + kContactResistance;
    const double kvProp = ratioOrNone(in.kv, in.reduction), rr = RendementReduction(in.reduction);
    const double d = in.diametre * 0.0254;
    for (int k = 0; k < 19; ++k) {
        const double pas = 3 + 0.5 * k;
        // Current of the motor on this propeller, the root of its torque balance.
        const double C = 3.6e-7 * in.coefHelice * kvProp * kvProp * kvProp * (pas * 0.0254) * d * d * d * d;
        const double I = ratioOrNone(0.5 + C * rsum * V - std::sqrt(0.25 - C * (rsum * rsum * Io - rsum * V)),
                                     C * rsum * rsum);
        const double pBatt = V * I;
        const double n = PropellerSpeed(in.coefHelice, rr, in.rendement, pBatt, pas, in.diametre);
        const double values[6] = {StaticThrust(pas, in.diametre, n) / 1000,
                                  I,
                                  pBatt,
                                  ShaftPower(in.coefHelice, pas, in.diametre, n),
                                  n,
                                  (n / 60) * 0.0254 * pas * 3.6};
        for (int c = 0; c < 6; ++c) charts[static_cast<size_t>(c)].series[0].points.push_back({pas, values[c]});
    }
    for (ChartData& c : charts) c.dropNonFinite();
    return charts;
}

std::vector<ChartData> Chart_Helice_Mot(const MotorPropInputs& in) {
    ChartData power;
    power.title = "Puissance (W)";
    power.xTitle = "Intensité (Amp)";
    power.yTitle = "Puissance (W)";
    ChartSeries prop = series(0, "Puissance hélice", {0, 0, 255});
    ChartSeries elec = series(1, "Puissance électrique", {255, 0, 0});
    ChartSeries shaft = series(2, "Puissance arbre", {0, 160, 0});
    ChartData eff;
    eff.title = "Rendement moteur (%)";
    eff.xTitle = "Intensité";
    eff.yTitle = "Rendement moteur (%)";
    ChartSeries rend = series(3, "Rendement moteur (%)", {0, 0, 255});
    const double V = in.voltage;
    for (int i = 0; i <= 60; ++i) {
        const double I = i;
        // The propeller turns at the motor's loaded speed through the gear.
        const double motorSpeed = (V - I * (in.ra + kWiringResistance + kContactResistance)) * in.kv;
        const double n = ratioOrNone(motorSpeed, in.reduction);
        prop.points.push_back(
            {I, in.coefHelice * std::pow(in.diametre / 12, 4) * (in.pas / 12) * std::pow(n / 1000, 3)});
        if (i == 0) continue;
        const double pe = V * I, ps = (V - in.ra * I) * (I - in.io);
        elec.points.push_back({I, pe});
        shaft.points.push_back({I, ps});
        rend.points.push_back({I, 100 * ratioOrNone(ps, pe)});
    }
    power.series = {prop, elec, shaft};
    eff.series = {rend};
    power.dropNonFinite();
    eff.dropNonFinite();
    return {power, eff};
}

}  // namespace tarvokin
