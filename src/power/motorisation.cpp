#include "power/motorisation.h"

#include <cmath>
#include <filesystem>
#include <set>

#include "design/performance.h"
#include "power/motor_relations.h"
#include "power/motor_table.h"
#include "core/numbers.h"
#include "core/profile_file.h"
#include "core/text_case.h"
#include "core/workbench.h"
#include "core/project_key.h"
#include "core/translations.h"

namespace tarvokin {

namespace {

double input(const Sheet& s, Cell c) {
    double v = 0;
    return tryNumber(s.text(c), v) && std::isfinite(v) ? v : kNotComputed;
}

void put(Sheet& s, Cell c, double v, int decimals) { s.set(c, fixedOrDash(v, decimals)); }

// The design window's battery, motor quality and propeller.
struct DesignPower {
    double voltage, current, capacity, gear, rendement, useful;
    PropellerParams propeller;
};

DesignPower designPower(const Sheet& s) {
    DesignPower p;
    p.voltage = DesignWindowVoltage(s.text(F_3D::Combo1), input(s, F_3D::Combo2));
    p.current = input(s, F_3D::d6);
    p.capacity = input(s, F_3D::b6);
    p.gear = GearRatio(input(s, F_3D::d7));
    p.rendement = MotorEfficiency(QualityNumber(s.text(F_3D::Combo3)), MotorTypeNumber(s.text(F_3D::Combo4)));
    p.propeller = PropellerByName(s.text(F_3D::Combo6));
    const double pas = input(s, F_3D::f6), diam = input(s, F_3D::f5);
    const double rendementHelice = PropellerEfficiency(p.propeller.RendementHelice, pas, diam);
    p.useful = UsefulPower(p.current * p.voltage, p.rendement, rendementHelice, RendementReduction(p.gear));
    return p;
}

}  // namespace

void MajMotorisation(Workbench& wb) {
    Sheet& s = wb.sheet;
    const DesignPower p = designPower(s);
    const double pas = input(s, F_3D::f6), diam = input(s, F_3D::f5);

    put(s, F_3D::b7, p.voltage, 1);
    put(s, F_3D::b8, DischargeRate(p.current, p.capacity), 1);
    put(s, F_3D::h8, RunTime(p.capacity, p.current), 1);
    const std::string eff = fixedOrDash(p.rendement * 100, 0);
    s.set(F_3D::B89, eff == "-" ? eff : eff + " %");

    const double n = PropellerSpeed(p.propeller.CoefHelice, RendementReduction(p.gear), p.rendement,
                                    p.current * p.voltage, pas, diam);
    put(s, F_3D::f7, n, 0);
    put(s, F_3D::d8, truncOrNone(KvFromSpeed(n, p.voltage) * p.gear), 0);
    put(s, F_3D::f8, truncOrNone(StaticThrust(pas, diam, n)), 0);

    // The sink of the model at its first point (the fast end of the polar of
    // the first airfoil at the light mass); the table holds it downward negative.
    const PerfTableT& first = wb.perf.PerfTable[0];
    const double sink = first.empty() ? kNotComputed : -first.front().Vz;
    put(s, F_3D::h4, ClimbRate(p.useful, input(s, F_GEO_SF_REGLAGES::H30), sink), 2);
    put(s, F_3D::h6, ClimbRate(p.useful, input(s, F_GEO_SF_REGLAGES::I30), sink), 2);
}

MotorPropInputs DesignWindowInputs(const Workbench& wb) {
    const Sheet& s = wb.sheet;
    const DesignPower p = designPower(s);
    MotorPropInputs in;
    in.voltage = p.voltage;
    in.kv = input(s, F_MOTORISATIONS::d8);
    in.ra = input(s, F_MOTORISATIONS::T_Ra);
    in.io = input(s, F_MOTORISATIONS::T_Io);
    in.reduction = p.gear;
    in.diametre = input(s, F_3D::f5);
    in.pas = input(s, F_3D::f6);
    in.coefHelice = p.propeller.CoefHelice;
    in.rendement = p.rendement;
    return in;
}

std::vector<std::string> MotorComboItems(const Workbench& wb) {
    const bool onlyType = wb.sheet.on(F_MOTORISATIONS::Check1);
    const std::string type = trim(wb.sheet.text(F_3D::Combo4));
    std::vector<std::string> items;
    std::set<std::string> seen;
    for (const MotorRecord& m : ReadMotors(motorFilePath(wb))) {
        if (onlyType && !equalsNoCase(m.Type, type)) continue;
        std::string key = motorKey(m.Marque, m.Modele);
        if (seen.insert(key).second) items.push_back(std::move(key));
    }
    return items;
}

void FillMotorCombo(Workbench& wb) { wb.sheet.setItems(F_MOTORISATIONS::CB_MOT, MotorComboItems(wb)); }

bool CB_MOT_Click(Workbench& wb) {
    Sheet& s = wb.sheet;
    const std::string line = s.text(F_MOTORISATIONS::CB_MOT);
    const size_t at = line.find('@');
    if (at == std::string::npos) return false;
    const std::string marque = line.substr(0, at), modele = line.substr(at + 1);
    const std::optional<MotorRecord> m = Charge_Moteur(wb, marque, modele);
    if (!m) return false;
    s.set(F_MOTORISATIONS::T_Ra, plain(m->Ra));
    s.set(F_MOTORISATIONS::T_Io, plain(m->Io));
    s.set(F_MOTORISATIONS::d8, plain(m->Kv));
    s.set(F_3D::Moteur_Marque, marque);
    s.set(F_3D::Moteur_Modele, modele);
    // The choice is kept in the project file at once; a design not yet saved
    // keeps it in its fields until it is.
    std::error_code ec;
    if (!wb.projectFilePath.empty() && std::filesystem::is_regular_file(wb.projectFilePath, ec)) {
        if (WriteProjectKey(wb, "Moteur", "Marque", marque)) WriteProjectKey(wb, "Moteur", "Moteur", modele);
    }
    RefreshMotorisation(wb);
    return true;
}

std::vector<ChartPoint> PuissanceVol(const Workbench& wb, int slot) {
    std::vector<ChartPoint> pts;
    if (slot < 0 || slot >= 6) return pts;
    for (const PerfPoint& p : wb.perf.PerfTable[static_cast<size_t>(slot)]) {
        if (std::isfinite(p.VKmh) && std::isfinite(p.PuissanceAero)) pts.push_back({p.VKmh, p.PuissanceAero});
    }
    return pts;
}

PowerBalance Equilibre_Puissances(const Workbench& wb) {
    const Sheet& s = wb.sheet;
    PowerBalance out{{}, kNotComputed};
    ChartData& c = out.chart;
    c.title = "Equilibre des Puissances pour le vol en Palier";
    c.xTitle = "V Km/h";
    c.yTitle = "Puissances (W)";

    for (int slot = 0; slot < 6; ++slot) {
        const int airfoil = slot % 3, massIndex = slot / 3;
        if (!s.on(F_PROFILS::Check2[airfoil])) continue;
        std::vector<ChartPoint> pts = PuissanceVol(wb, slot);
        if (pts.empty()) continue;
        std::string caption = s.text(F_PROFILS::CB_1[airfoil]);
        if (caption.empty()) caption = s.text(F_PROFILS::L_PROFIL[airfoil]);
        ChartSeries sr;
        sr.code = slot;
        sr.name = caption + MassWords(wb.settings.languageCode, massIndex);
        sr.colour = kAirfoilColours[airfoil];
        sr.style = massIndex == 0 ? linestyle::Solid : linestyle::Dashed;
        sr.points = std::move(pts);
        c.series.push_back(std::move(sr));
    }

    // The propeller gives its useful power at rest and nothing at its pitch speed.
    const MotorPropInputs in = DesignWindowInputs(wb);
    const double useful = designPower(s).useful;
    const double noLoad = in.kv * in.voltage / in.reduction;
    const double pitchKmh = noLoad * in.pas * 25.4 * 60 / 1e6;
    const double slope = ratioOrNone(-useful, pitchKmh);
    auto available = [&](double v) { return v * slope + useful; };
    if (std::isfinite(slope)) {
        ChartSeries prop;
        prop.code = 6;
        prop.name = "Hélice";
        prop.points = {{0, useful}, {pitchKmh, 0}};
        const size_t needed = c.series.size();
        if (needed > 0) {
            // The crossing, walking from the fast end, past the first two points.
            const std::vector<ChartPoint>& p = c.series.front().points;
            for (size_t i = 2; i < p.size(); ++i) {
                const double d0 = p[i - 1].y - available(p[i - 1].x), d1 = p[i].y - available(p[i].x);
                if (d1 == 0) {
                    out.levelSpeed = p[i].x;
                    break;
                }
                if (d0 == 0 || (d0 > 0) == (d1 > 0)) continue;
                out.levelSpeed = p[i - 1].x + d0 / (d0 - d1) * (p[i].x - p[i - 1].x);
                break;
            }
        }
        c.series.push_back(std::move(prop));
        if (std::isfinite(out.levelSpeed)) {
            ChartSeries mark;
            mark.code = 7;
            mark.name = "Vitesse vol en palier";
            mark.colour = {255, 0, 255};
            mark.points = {{out.levelSpeed, 0}, {out.levelSpeed, available(out.levelSpeed)}};
            c.series.push_back(std::move(mark));
        }
    }
    c.dropNonFinite();
    return out;
}

void RefreshMotorisation(Workbench& wb) {
    MajMotorisation(wb);
    wb.sheet.set(F_3D::h3, fixedOrDash(Equilibre_Puissances(wb).levelSpeed, 1));
}

void PowerSweeps(Workbench& wb) {
    if (wb.isOpen(button::Performances)) return;
    for (int slot = 0; slot < 6; ++slot) CalculPerformances(wb, slot % 3, slot / 3, slot);
}

void OpenMotorisation(Workbench& wb) {
    FillMotorCombo(wb);
    PowerSweeps(wb);
    RefreshMotorisation(wb);
}

void RefreshMotorTab(Workbench& wb) {
    PowerSweeps(wb);
    RefreshMotorisation(wb);
}

}  // namespace tarvokin
