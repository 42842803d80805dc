// The panel F_VLM: its run (Command1), its controls, and its place in the
// master recalculation. The Qt window only forwards its widgets' events here.
#include <algorithm>
#include <cmath>

#include "design/vlm.h"
#include "core/numbers.h"
#include "core/text_case.h"
#include "core/workbench.h"

namespace tarvokin {

namespace {

constexpr Rgb kLiftColour{0, 0, 255}, kEllipseColour{255, 0, 0}, kClColour{0, 150, 0};

double largest(const std::vector<VlmRow>& rows) {
    double m = 0;
    bool any = false;
    for (const VlmRow& r : rows) {
        if (!any || r.value > m) m = r.value;
        any = true;
    }
    return m;
}

// A largest value of 0 would give no scale: it counts as 1.
double scaleOf(double target, double own) { return own != 0 ? target / own : target; }

ChartSeries series(const char* name, Rgb colour, int style, const std::vector<VlmRow>& rows) {
    ChartSeries s;
    s.name = name;
    s.colour = colour;
    s.style = style;
    for (const VlmRow& r : rows) s.points.push_back({r.y, r.value});
    return s;
}

void setTag(Workbench& wb, VlmSurface state) {
    wb.sheet.set(F_Main::Toolbar2[button::Wizard], std::to_string(static_cast<int>(state)));
}

int clampedWhole(double v, int low, int high, int otherwise) {
    if (!std::isfinite(v)) return otherwise;
    return static_cast<int>(std::clamp(std::round(v), static_cast<double>(low), static_cast<double>(high)));
}

// B33 within its range, and the angle of attack it stands for.
void angleFromSetting(Workbench& wb, int setting) {
    Sheet& s = wb.sheet;
    const std::string text = std::to_string(setting);
    if (s.text(F_VLM::B33) != text) s.set(F_VLM::B33, text);
    s.setFixed(F_VLM::N25, (setting - kAngleSettingZero) / 10.0, 1);
}

}  // namespace

VlmSurface VlmPanelState(const Workbench& wb) {
    const double tag = wb.sheet.val(F_Main::Toolbar2[button::Wizard]);
    if (tag == 1) return VlmSurface::Wing;
    if (tag == 0 || !std::isfinite(tag)) return VlmSurface::Closed;
    return VlmSurface::Stab;
}

void VlmCommand1(Workbench& wb) {
    VlmState& v = wb.vlm;
    Sheet& s = wb.sheet;
    CalcVLM(wb);
    const double maxCl = largest(v.VlmCl);
    const double maxGamma = largest(v.VlmGamma);

    // The strips solver's loading, brought onto the first solver's span and
    // peak so that both read on the same chart.
    v.scaledLift.clear();
    v.scaledCl.clear();
    std::vector<VlmRow> scaledEllipse;
    const bool strips = VlmPanelState(wb) != VlmSurface::Closed && VLM_Strips(wb);
    if (strips) {
        const double spanRatio = v.stripsHalfSpan > 0 ? v.halfSpanMm / v.stripsHalfSpan : 1;
        double ownLift = 0, ownCl = 0;
        for (const StripRow& r : v.strips) {
            ownLift = std::max(ownLift, r.lift);
            ownCl = std::max(ownCl, r.cl);
        }
        const double liftScale = scaleOf(maxGamma, ownLift), clScale = scaleOf(maxCl, ownCl);
        for (const StripRow& r : v.strips) {
            const double y = r.y * spanRatio;
            v.scaledLift.push_back({y, r.lift * liftScale});
            scaledEllipse.push_back({y, r.ellipse * liftScale});
            v.scaledCl.push_back({y, r.cl * clScale});
        }
    } else {
        v.strips.clear();
    }

    const std::vector<VlmRow>& lift = strips ? v.scaledLift : v.VlmGamma;
    const std::vector<VlmRow>& ellipse = strips ? scaledEllipse : v.VlmEllipse;
    const std::vector<VlmRow>& cl = strips ? v.scaledCl : v.VlmCl;

    ChartData& loads = v.charts[0];
    loads = {};
    loads.title = "Répartition de portance";
    loads.xTitle = "Envergure (mm)";
    loads.series.push_back(series(kSeriesLift, kLiftColour, linestyle::Solid, lift));
    loads.series.push_back(series(kSeriesEllipse, kEllipseColour, linestyle::Dashed, ellipse));
    loads.dropNonFinite();
    ChartData& local = v.charts[1];
    local = {};
    local.title = "Cl local";
    local.xTitle = "Envergure (mm)";
    local.series.push_back(series(kSeriesCl, kClColour, linestyle::Solid, cl));
    local.dropNonFinite();

    // The range of the local coefficient, the last row left out.
    if (cl.size() < 2) {
        s.set(F_VLM::Text2[0], "-");
        s.set(F_VLM::Text2[1], "-");
        return;
    }
    double lo = cl.front().value, hi = lo;
    for (size_t i = 0; i + 1 < cl.size(); ++i) {
        lo = std::min(lo, cl[i].value);
        hi = std::max(hi, cl[i].value);
    }
    s.set(F_VLM::Text2[0], fixedOrDash(lo, 3));
    s.set(F_VLM::Text2[1], fixedOrDash(hi, 3));
}

void OpenVlm(Workbench& wb, VlmSurface surface) {
    if (surface == VlmSurface::Closed) {
        CloseVlm(wb);
        return;
    }
    setTag(wb, surface);
    // Through the panel's registered refresh, so that its window redraws.
    auto it = wb.panelRefresh.find(button::Wizard);
    if (it != wb.panelRefresh.end() && it->second) it->second(wb);
    else VlmCommand1(wb);
}

void CloseVlm(Workbench& wb) { setTag(wb, VlmSurface::Closed); }

namespace vlm {

void Command2_Click(Workbench& wb, int index) {
    if (index != 0 && index != 1) return;
    const int now = clampedWhole(wb.sheet.val(F_VLM::B33), kAngleSettingMin, kAngleSettingMax, kAngleSettingZero);
    angleFromSetting(wb, std::clamp(now + (index == 1 ? 1 : -1), kAngleSettingMin, kAngleSettingMax));
    VlmCommand1(wb);
}

void Hscroll1_Change(Workbench& wb, int value) {
    const std::string text = std::to_string(std::clamp(value, kRollSliderMin, kRollSliderMax));
    wb.sheet.set(F_VLM::Hscroll1, text);
    wb.sheet.set(F_VLM::Text1, text);
    VlmCommand1(wb);
}

void Hscroll2_Change(Workbench& wb, int value) {
    const std::string text = std::to_string(std::clamp(value, kDeflectionSliderMin, kDeflectionSliderMax));
    wb.sheet.set(F_VLM::Hscroll2, text);
    wb.sheet.set(F_VLM::T_Flap_AngL, text);
    wb.sheet.set(F_VLM::T_Flap_AngR, text);
    VlmCommand1(wb);
}

void Hscroll3_Change(Workbench& wb, int value) {
    const int v = std::clamp(value, kDeflectionSliderMin, kDeflectionSliderMax);
    wb.sheet.set(F_VLM::Hscroll3, std::to_string(v));
    wb.sheet.set(F_VLM::T_Ail_AngL, std::to_string(v));
    wb.sheet.set(F_VLM::T_Ail_AngR, std::to_string(-v));
    VlmCommand1(wb);
}

bool IsTypedField(Cell c) {
    using namespace F_VLM;
    for (Cell f : {B33, Text1, T_Flap_AngL, T_Flap_AngR, T_Ail_AngL, T_Ail_AngR})
        if (c == f) return true;
    return false;
}

bool CellChanged(Workbench& wb, Cell c) {
    using namespace F_VLM;
    Sheet& s = wb.sheet;
    if (cellTable()[c.id].form != Form::F_VLM) return false;
    // A typed field runs at each key: a value outside its range waits for
    // Enter, which brings it back within.
    const double v = s.val(c);
    auto within = [v](int low, int high) { return std::isfinite(v) && v >= low && v <= high; };
    if (c == B33) {
        if (!within(kAngleSettingMin, kAngleSettingMax)) return true;
        s.setFixed(N25, (std::round(v) - kAngleSettingZero) / 10.0, 1);
    } else if (c == Text1) {
        if (!within(kRollSliderMin, kRollSliderMax)) return true;
        s.set(Hscroll1, std::to_string(clampedWhole(v, kRollSliderMin, kRollSliderMax, kRollSliderMax)));
    } else if (c == Hscroll1) {
        Hscroll1_Change(wb, clampedWhole(v, kRollSliderMin, kRollSliderMax, kRollSliderMax));
        return true;
    } else if (c == Hscroll2) {
        Hscroll2_Change(wb, clampedWhole(v, kDeflectionSliderMin, kDeflectionSliderMax, 0));
        return true;
    } else if (c == Hscroll3) {
        Hscroll3_Change(wb, clampedWhole(v, kDeflectionSliderMin, kDeflectionSliderMax, 0));
        return true;
    } else if (c == T_Flap_AngL || c == T_Ail_AngL) {
        // The slider follows the left field and, as when it is moved, writes
        // the right side: the same flap, the opposite aileron. The left field
        // keeps the text being typed.
        double typed = 0;
        if (tryNumber(s.text(c), typed) && within(kDeflectionSliderMin, kDeflectionSliderMax)) {
            const bool flap = c == T_Flap_AngL;
            s.set(flap ? Hscroll2 : Hscroll3, std::to_string(clampedWhole(typed, -90, 90, 0)));
            s.set(flap ? T_Flap_AngR : T_Ail_AngR, plain(flap || typed == 0 ? typed : -typed));
        }
    } else if (c != T_Flap_AngR && c != T_Ail_AngR) {
        return true;  // outputs of the panel
    }
    VlmCommand1(wb);
    return true;
}

bool CellEntered(Workbench& wb, Cell c) {
    using namespace F_VLM;
    Sheet& s = wb.sheet;
    if (!IsTypedField(c)) return false;
    if (c == B33) {
        const bool blank = trim(s.text(c)).empty();
        angleFromSetting(wb, blank ? kAngleSettingZero
                                   : clampedWhole(s.val(c), kAngleSettingMin, kAngleSettingMax, kAngleSettingZero));
    } else if (c == Text1) {
        const std::string text = std::to_string(clampedWhole(s.val(c), kRollSliderMin, kRollSliderMax, kRollSliderMax));
        s.set(Text1, text);
        s.set(Hscroll1, text);
    } else if (trim(s.text(c)).empty()) {
        s.set(c, "0");
    }
    VlmCommand1(wb);
    return true;
}

}  // namespace vlm

void registerVlmPanel(Workbench& wb) {
    // The performance panel's refresh also brings the lattice up to date.
    std::function<void(Workbench&)> performance = wb.panelRefresh[button::Performances];
    wb.panelRefresh[button::Performances] = [performance](Workbench& w) {
        if (performance) performance(w);
        CalcVLM(w);
        VlmCommand1(w);
    };
    wb.panelRefresh[button::Wizard] = VlmCommand1;
}

}  // namespace tarvokin
