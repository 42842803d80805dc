// Drag lookup: Cx of one slot at a Reynolds number and a lift coefficient,
// interpolated in each of the six polars along Cz, then across them linearly
// in 1/Re. Outside 25000..1500000 the drag scales with 1/sqrt(Re) from the
// nearest tabulated polar.
//
// The lookup never stops on a bad value: a statement whose division fails (or
// whose result would not be a finite number) is skipped, and what it would have
// set keeps its former content. Several answers depend on this, e.g. at
// Re = 1500000 the slope across Re fails and the result is the top polar's Cx,
// and an empty record reuses the slope the previous record left.
#include <algorithm>
#include <cmath>

#include "airfoils/polar_lookup.h"
#include "core/numbers.h"
#include "core/workbench.h"
#include "core/messages.h"

namespace tarvokin {

namespace {

// The statement "target = value", skipped when the value could not be computed.
inline void assignIfFinite(double& target, double value) {
    if (std::isfinite(value)) target = value;
}

// The rows of one polar around Cz, in the extended columns: low is the last row
// at or under Cz (in file order, so on a polar that turns back it is the later
// one), high the first row above it. A missing one is (0, 0).
struct Bracket {
    double lowCz = 0.0, lowCx = 0.0, highCz = 0.0, highCx = 0.0;
};

Bracket bracketCz(const PolarRecord& rec, double Cz) {
    const int last = std::min<int>(rec.LastExtRow, kPolarRows - 1);
    const PolarPoint* p = rec.Points.data();
    // Two scans that stop early read each row about once.
    int h = 0;
    while (h <= last && !(p[h].CzExt > Cz)) ++h;
    int l = last;
    while (l >= 0 && !(p[l].CzExt <= Cz)) --l;
    Bracket b;
    if (l >= 0) b.lowCz = p[l].CzExt, b.lowCx = p[l].CxExt;
    if (h <= last) b.highCz = p[h].CzExt, b.highCx = p[h].CxExt;
    return b;
}

// The slope statement of one polar; false when its division fails.
bool slopeOf(const Bracket& b, double& slope) {
    const double run = b.highCz - b.lowCz;
    if (run == 0.0 || !std::isfinite(run)) return false;
    const double s = (b.highCx - b.lowCx) / run;
    if (!std::isfinite(s)) return false;
    slope = s;
    return true;
}

// Cx of polar j at Cz, to 4 decimals. The polars are taken in order of Re with
// one running slope: where a polar's own slope fails (an empty record, a
// single row) the one the polar before it left holds, 0 before the first. Only
// the polars the answer needs are looked at, walking back only as far as that
// slope requires: the same result as working through all six.
double cxOfPolar(const std::array<PolarRecord, kReynoldsCount>& records, int j, double Cz) {
    const Bracket b = bracketCz(records[j], Cz);
    double slope = 0.0;
    if (!slopeOf(b, slope))
        for (int k = j - 1; k >= 0; --k)
            if (slopeOf(bracketCz(records[k], Cz), slope)) break;
    const double cx = slope * (Cz - b.lowCz) + b.lowCx;
    return std::isfinite(cx) ? roundHalfAway(std::fabs(cx), 4) : 0.0;
}

}  // namespace

double Get_Cx(const PolarStore& store, int slot, double Re, double Cz) {
    if (slot < 0 || slot >= kPolarSlots) return 0.0;
    const auto& records = store.Polars[slot];

    // Bracket in Re; an end that isn't found keeps index 0 and Reynolds number 0.
    int lower = 0, upper = 0;
    double reLower = 0.0, reUpper = 0.0;
    for (int i = 0; i < kReynoldsCount; ++i) {
        const double r = records[i].Re;
        if (r <= Re) {
            lower = i;
            reLower = r;
        }
        if (r > Re) {
            upper = i;
            reUpper = r;
            break;
        }
    }

    double result = 0.0;
    if (Re > 1500000.0) {
        assignIfFinite(result, std::sqrt(1500000.0 / Re) * cxOfPolar(records, 5, Cz));
    } else if (Re < 25000.0) {
        if (Re > 0.0) assignIfFinite(result, std::sqrt(25000.0 / Re) * cxOfPolar(records, 0, Cz));
    } else {
        // Linear in 1/Re between the two polars. At Re = 1500000 there is no
        // upper polar: the slope fails, a stays 0 and b is the top polar's Cx.
        double a = 0.0, b = 0.0;
        if (reLower != 0.0) {
            const double cxLower = cxOfPolar(records, lower, Cz);
            if (reUpper != 0.0) {
                const double span = 1.0 / reUpper - 1.0 / reLower;
                if (span != 0.0) assignIfFinite(a, (cxOfPolar(records, upper, Cz) - cxLower) / span);
            }
            assignIfFinite(b, cxLower - a / reLower);
        }
        assignIfFinite(result, a / Re + b);
    }
    return roundHalfAway(result, 7);
}

double Get_Cx(const Workbench& wb, int slot, double Re, double Cz) {
    if (slot > 2 && wb.showMessage) wb.showMessage(messageText(wb, "[#4] ", ""));
    return Get_Cx(wb.polars, slot, Re, Cz);
}

}  // namespace tarvokin
