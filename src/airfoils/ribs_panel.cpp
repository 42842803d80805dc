#include "airfoils/ribs_panel.h"

#include <algorithm>
#include <cmath>

#include "core/numbers.h"
#include "core/text_case.h"
#include "core/workbench.h"

namespace tarvokin {

namespace {

int flagIndex(const Sheet& s, CellGroup g, int fallback) {
    for (int i = g.firstIndex; i < g.firstIndex + g.count; ++i)
        if (s.on(g[i])) return i;
    return fallback;
}

void setFlags(Sheet& s, CellGroup g, int chosen) {
    for (int i = g.firstIndex; i < g.firstIndex + g.count; ++i) {
        const char* v = i == chosen ? "1" : "0";
        if (s.text(g[i]) != v) s.set(g[i], v);
    }
}

void setIfDifferent(Sheet& s, Cell c, const std::string& v) {
    if (s.text(c) != v) s.set(c, v);
}

// A field read as a number; what does not read (or is not finite) is nan,
// which every check below refuses.
double numberOf(const Sheet& s, Cell c) {
    double v = 0;
    const std::string t = trim(s.text(c));
    if (t.empty()) return 0;
    return tryNumber(t, v) && std::isfinite(v) ? v : std::nan("");
}

}  // namespace

int RibAlignOf(const Sheet& s) { return flagIndex(s, F_RIBS::Option1, ribs::LeadingEdge); }

RibRequest RibRequestOf(const Workbench& wb) {
    const Sheet& s = wb.sheet;
    RibRequest r;
    r.root = wb.generators.ribRoot;
    r.tip = wb.generators.ribTip;
    r.rootChord = numberOf(s, F_RIBS::Text1);
    r.tipChord = numberOf(s, F_RIBS::Text2);
    r.span = numberOf(s, F_RIBS::Text3);
    const double count = numberOf(s, F_RIBS::Text4);
    r.count = std::isfinite(count) ? static_cast<int>(std::clamp(std::round(count), -1.0, 1e6)) : -1;
    r.spacing = numberOf(s, F_RIBS::Text5);
    r.align = RibAlignOf(s);
    return r;
}

bool RibAirfoilChosen(Workbench& wb, int end) {
    if (end < 0 || end > 1) return false;
    const std::string name = wb.sheet.text(F_RIBS::CB_1[end]);
    OutlinePoints& target = end == 0 ? wb.generators.ribRoot : wb.generators.ribTip;
    if (!ReadRibOutline(wb.home(), wb.catalogue, name, target)) {
        wb.generators.ribReadReason = "Profil " + name + " illisible : " +
                                      (end == 0 ? "l'emplanture" : "le saumon") + " garde son profil";
        setIfDifferent(wb.sheet, F_RIBS::StatusBar1, wb.generators.ribReadReason);
        return false;
    }
    wb.generators.ribReadReason.clear();
    setIfDifferent(wb.sheet, F_RIBS::StatusBar1, "");
    return true;
}

void RibAlignChosen(Workbench& wb, int align) {
    if (align >= 0 && align < ribs::kAlignments) setFlags(wb.sheet, F_RIBS::Option1, align);
}

void RibStyleChosen(Workbench& wb, int style) {
    if (style >= 0 && style < 2) setFlags(wb.sheet, F_RIBS::Option2, style);
}

bool MakeRibs(Workbench& wb) {
    Sheet& s = wb.sheet;
    std::string error;
    std::vector<RibOutline> made;
    if (!BuildRibs(RibRequestOf(wb), made, error)) {
        setIfDifferent(s, F_RIBS::StatusBar1, error);
        return false;
    }
    wb.generators.ribs = std::move(made);
    ++wb.generators.ribRevision;
    // With a spacing the count follows from the span.
    if (numberOf(s, F_RIBS::Text5) > 0) setIfDifferent(s, F_RIBS::Text4, std::to_string(wb.generators.ribs.size()));
    setIfDifferent(s, F_RIBS::StatusBar1, wb.generators.ribReadReason);
    return true;
}

std::string SaveRibs(Workbench& wb, const std::filesystem::path& base, std::string& error) {
    const std::string message = WriteRibFiles(base, wb.generators.ribs, error);
    setIfDifferent(wb.sheet, F_RIBS::StatusBar1, message.empty() ? error : message);
    return message;
}

std::string RibReadout(const Workbench& wb, size_t rib) {
    const auto& ribs = wb.generators.ribs;
    if (rib >= ribs.size()) return "";
    double low = 0, high = 0;
    for (const OutlinePoint& p : ribs[rib].points) {
        low = std::min(low, p.y);
        high = std::max(high, p.y);
    }
    return "L: " + fixed(ribs[rib].chord, 1) + " mm H: " + fixed(high - low, 1);
}

}  // namespace tarvokin
