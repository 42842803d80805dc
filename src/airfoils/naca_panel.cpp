#include "airfoils/naca_panel.h"

#include <algorithm>
#include <cmath>

#include "airfoils/catalogue_edit.h"
#include "airfoils/xfoil_runner.h"
#include "core/file_replace.h"
#include "core/numbers.h"
#include "core/text_case.h"
#include "core/workbench.h"

namespace tarvokin {

namespace {

int wholeOf(const Sheet& s, Cell c) {
    const double v = s.val(c);
    return std::isfinite(v) ? static_cast<int>(std::lround(std::clamp(v, -1e6, 1e6))) : 0;
}

int flagIndex(const Sheet& s, CellGroup g, int fallback) {
    for (int i = g.firstIndex; i < g.firstIndex + g.count; ++i)
        if (s.on(g[i])) return i;
    return fallback;
}

void setFlags(Sheet& s, CellGroup g, int chosen) {
    for (int i = g.firstIndex; i < g.firstIndex + g.count; ++i) s.set(g[i], i == chosen ? "1" : "0");
}

void setIfDifferent(Sheet& s, Cell c, const std::string& v) {
    if (s.text(c) != v) s.set(c, v);
}

}  // namespace

int NacaFamilyOf(const Sheet& s) { return flagIndex(s, F_NACA::Option1, naca::Four); }
int NacaDistributionOf(const Sheet& s) { return flagIndex(s, F_NACA::Option2, 1); }

NacaRequest NacaRequestOf(const Sheet& s) {
    NacaRequest r;
    r.family = NacaFamilyOf(s);
    for (int i = 0; i < naca::kMaxInputs; ++i) r.design[static_cast<size_t>(i)] = wholeOf(s, F_NACA::T_DESIGN[i]);
    r.points = wholeOf(s, F_NACA::T_NPP);
    r.distribution = NacaDistributionOf(s);
    return r;
}

void NacaFamilyChosen(Workbench& wb, int family) {
    if (family < 0 || family >= naca::kFamilies) return;
    Sheet& s = wb.sheet;
    setFlags(s, F_NACA::Option1, family);
    const auto& inputs = NacaInputs(family);
    for (int i = 0; i < naca::kMaxInputs; ++i) {
        const bool used = i < static_cast<int>(inputs.size());
        const NacaInput* in = used ? &inputs[static_cast<size_t>(i)] : nullptr;
        const std::string v = used ? std::to_string(in->initial) : "";
        setIfDifferent(s, F_NACA::T_DESIGN[i], v);
        setIfDifferent(s, F_NACA::HScroll4[i], used ? v : "0");
    }
    NacaCaptions(wb);
    Module1(wb);
}

void NacaCaptions(Workbench& wb) {
    Sheet& s = wb.sheet;
    const auto& inputs = NacaInputs(NacaFamilyOf(s));
    for (int i = 0; i < naca::kMaxInputs; ++i) {
        const bool used = i < static_cast<int>(inputs.size());
        const NacaInput* in = used ? &inputs[static_cast<size_t>(i)] : nullptr;
        setIfDifferent(s, F_NACA::Label1[i], used ? NacaWord(in->caption, wb.settings.languageCode) : "");
        setIfDifferent(s, F_NACA::Label2[i], used ? NacaWord(in->digits, wb.settings.languageCode) : "");
    }
}

void NacaDistributionChosen(Workbench& wb, int distribution) {
    if (distribution < 0 || distribution > 3) return;
    setFlags(wb.sheet, F_NACA::Option2, distribution);
    Module1(wb);
}

void NacaInputChanged(Workbench& wb, Cell c) {
    Sheet& s = wb.sheet;
    const int family = NacaFamilyOf(s);
    const auto& inputs = NacaInputs(family);
    for (int i = 0; i < naca::kMaxInputs; ++i) {
        if (c == F_NACA::HScroll4[i]) {
            setIfDifferent(s, F_NACA::T_DESIGN[i], plain(wholeOf(s, c)));
        } else if (c == F_NACA::T_DESIGN[i] && i < static_cast<int>(inputs.size())) {
            // The slider follows the field as far as its travel goes; the
            // field keeps what was typed, the generation judges it.
            const NacaInput& in = inputs[static_cast<size_t>(i)];
            setIfDifferent(s, F_NACA::HScroll4[i], plain(std::clamp(wholeOf(s, c), in.low, in.high)));
        }
    }
    const int most = std::clamp(wholeOf(s, F_NACA::T_MPTS), 2, naca::kMaxPoints);
    if (c == F_NACA::H_Points) setIfDifferent(s, F_NACA::T_NPP, plain(wholeOf(s, c)));
    else if (c == F_NACA::T_NPP) setIfDifferent(s, F_NACA::H_Points, plain(std::clamp(wholeOf(s, c), 2, most)));
    Module1(wb);
}

bool Module1(Workbench& wb) {
    Sheet& s = wb.sheet;
    const NacaRequest r = NacaRequestOf(s);
    std::string error;
    NacaAirfoil a;
    const int most = std::clamp(wholeOf(s, F_NACA::T_MPTS), 2, naca::kMaxPoints);
    bool ok = false;
    if (r.points > most) error = "Nbre de Points : " + std::to_string(r.points) + " au-delà de " + std::to_string(most);
    else ok = GenerateNaca(r, a, error);
    if (!ok) {
        wb.generators.nacaReason = error;
        setIfDifferent(s, F_NACA::StatusBar1, error);
        return false;
    }
    wb.generators.nacaReason.clear();
    setIfDifferent(s, F_NACA::StatusBar1, "");
    setIfDifferent(s, F_NACA::Label5, a.name);
    setIfDifferent(s, F_NACA::T_Thicknes, fixed(a.thickness, 2));
    // The mean line of the last generation, for looking at beside the outline.
    if (a.hasMeanLine) replaceFile(wb.home() / "Camberline.TXT", NacaCamberText(a));
    wb.generators.naca = std::move(a);
    return true;
}

std::string SaveNaca(Workbench& wb, bool& ok) {
    ok = false;
    const std::string name = trim(wb.sheet.text(F_NACA::Label5));
    if (name.empty() || wb.generators.naca.upper.empty()) return "Pas de profil à enregistrer";
    if (!wb.generators.nacaReason.empty()) return wb.generators.nacaReason;
    const std::filesystem::path file = wb.home() / "DATA" / (name + ".DAT");
    if (!replaceFile(file, NacaOutlineText(wb.generators.naca))) return "Impossible d'écrire " + file.string();
    ok = true;
    const PolarRun run = Calc_Polar(wb, 99, std::string("100000"), "", "", name);

    // The catalogue gains the airfoil; the design keeps the airfoils it has.
    Sheet& s = wb.sheet;
    std::string chosen[3];
    for (int i = 0; i < 3; ++i) chosen[i] = s.text(F_PROFILS::CB_1[i]);
    Add_Profil(wb, 0, file.string(), 1);
    for (int i = 0; i < 3; ++i) {
        if (chosen[i].empty()) s.setListIndex(F_PROFILS::CB_1[i], -1);
        else s.selectText(F_PROFILS::CB_1[i], chosen[i]);
    }
    std::string line = name + ".DAT enregistré";
    if (!run.saved) line += " ; polaire non calculée : " + run.reason;
    return line;
}

}  // namespace tarvokin
