// The air of the performance calculations, and the small helpers of the
// formula library.
#include <cmath>

#include "design/geometry.h"
#include "design/grid_cells.h"
#include "core/workbench.h"

namespace tarvokin {

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
    if (wb.isOpen(button::Performances) && wb.sheet.on(F_GEO_3::Check3)) return 1;
    return 1.1;
}

// While the performance panel is open the air follows what the user set
// there; a field being retyped reads as 0 until it is confirmed.
double AirTemperature(const Workbench& wb) {
    if (wb.isOpen(button::Performances)) return wb.sheet.val(F_GEO_3::Text3);
    return wb.settings.temperature;
}

double AirAltitude(const Workbench& wb) {
    if (wb.isOpen(button::Performances)) return wb.sheet.val(F_GEO_3::Text2);
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
