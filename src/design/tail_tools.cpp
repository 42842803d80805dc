#include "design/tail_tools.h"

#include <cmath>
#include <limits>

#include "design/geometry.h"
#include "core/numbers.h"
#include "core/text_case.h"
#include "core/workbench.h"

namespace tarvokin {

namespace {

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

double input(const Sheet& s, Cell c) {
    double v = 0;
    return tryNumber(s.text(c), v) && std::isfinite(v) ? v : kNone;
}

double over(double a, double b) { return b == 0 ? kNone : a / b; }

// Angles go through the library's pi, as every tail figure of the design does.
double radians(double degrees) { return degrees * PiValue() / 180; }

void put(Sheet& s, Cell c, double v, int decimals) { s.set(c, fixedOrDash(v, decimals)); }

double sineOfHalfOpening(const Sheet& s) { return std::sin(radians(input(s, F_STAB_VE::OuvertureV) / 2)); }

}  // namespace

void Calc_V(Sheet& s) {
    using namespace F_STAB;
    const double h = input(s, D11), v = input(s, D12);
    put(s, D14, (h + v) / 2, 2);
    put(s, D15, std::atan(over(v, h)) * 180 / PiValue(), 2);
    // The angle of the V follows the dihedral as shown.
    put(s, D16, 180 - 2 * input(s, D15), 2);

    const double t = std::tan(radians(input(s, Angle_V) / 2));
    put(s, D24, over(2 * input(s, D22), t + 1), 2);
    put(s, D25, input(s, D24) * t, 2);
}

void StabVE_Command1(Sheet& s) {
    using namespace F_STAB_VE;
    const double k = sineOfHalfOpening(s);
    put(s, Corde1N, roundHalfAway(input(s, Corde1V) * k, 0), 0);
    put(s, Corde2N, roundHalfAway(input(s, Corde2V) * k, 0), 0);
    put(s, LongueurN, roundHalfAway(input(s, LongueurV) * k, 0), 0);
}

void StabVE_Command2(Sheet& s) {
    using namespace F_STAB_VE;
    if (trim(s.text(OuvertureV)).empty()) s.set(OuvertureV, "110");
    const double k = sineOfHalfOpening(s);
    put(s, Corde1V, roundHalfAway(over(input(s, Corde1N), k), 0), 0);
    put(s, Corde2V, roundHalfAway(over(input(s, Corde2N), k), 0), 0);
    put(s, LongueurV, roundHalfAway(over(input(s, LongueurN), k), 0), 0);
}

bool TailToolFieldChange(Workbench& wb, Cell c) {
    const Form f = cellTable()[c.id].form;
    if (f == Form::F_STAB) {
        Calc_V(wb.sheet);
        return true;
    }
    if (f != Form::F_STAB_VE) return false;
    if (c == F_STAB_VE::Command1) StabVE_Command1(wb.sheet);
    if (c == F_STAB_VE::Command2) StabVE_Command2(wb.sheet);
    return true;
}

}  // namespace tarvokin
