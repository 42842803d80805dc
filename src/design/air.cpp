// The air of the performance calculations, and the small helpers of the
// formula library.
#include <cmath>

#include "design/geometry.h"
#include "design/grid_cells.h"
#include "shell/workbench.h"

namespace tarvokin {

namespace {

// A cell of the performance panel, when that panel is open and its cells are
// declared; the air then follows what the user set there.
bool performanceCell(const Workbench& wb, const char* path, Cell& out) {
    return wb.isOpen(button::Performances) && findCell(path, out);
}

}  // namespace

double IntPart(double x) {
    const std::string t = fixed(x, 10);
    const size_t cut = t.find_first_of(".,");
    return toNumber(cut == std::string::npos ? t : t.substr(0, cut));
}

double CmZero(const Sheet& s) { return toNumber(fixed(s.num(F_GEO_SF::j11), 7)); }

int CountFilledPanels(const Sheet& s) {
    int n = 0;
    for (Cell c : grid::kRoot)
        if (s.num(c) > 0) ++n;
    return n;
}

double DragFactorRef(const Workbench& wb) {
    Cell check;
    if (performanceCell(wb, "F_GEO_3.Check3", check) && wb.sheet.on(check)) return 1;
    return 1.1;
}

double AirTemperature(const Workbench& wb) {
    Cell c;
    if (performanceCell(wb, "F_GEO_3.Text3", c)) return wb.sheet.num(c);
    return wb.settings.temperature;
}

double AirAltitude(const Workbench& wb) {
    Cell c;
    if (performanceCell(wb, "F_GEO_3.Text2", c)) return wb.sheet.num(c);
    return wb.settings.altitude;
}

double AirPressure(const Workbench& wb) {
    const double h = AirAltitude(wb);
    return 1013.25 * std::exp(-(h * 0.28404373326) / 2395.771308);
}

double SaturationPressure(const Workbench& wb) {
    const double t = AirTemperature(wb);
    return 6.1078 * std::pow(10.0, divide(7.5 * t, t + 237.3));
}

// The air is taken at a fixed relative humidity of 43 %.
double VapourPressure(const Workbench& wb) { return (43.0 / 100.0) * SaturationPressure(wb); }

double DryPressure(const Workbench& wb) { return AirPressure(wb) - VapourPressure(wb); }

double AirDensity(const Workbench& wb) {
    const double kelvin = AirTemperature(wb) + 273.15;
    // Partial pressures in Pa over the gas constants of water vapour and dry air.
    return divide(100 * VapourPressure(wb), 461.495 * kelvin) + divide(100 * DryPressure(wb), 287.05 * kelvin);
}

}  // namespace tarvokin
