// The units a modeller mixes (plans in inches, motors in watts or horsepower,
// loadings in ounces per square foot) and their factors to SI.
#pragma once

#include <string>
#include <vector>

namespace tarvokin {

struct UnitDef {
    const char* name;
    double toSi;  // one of this unit in the quantity's SI unit
};

struct Quantity {
    const char* name;
    std::vector<UnitDef> units;
};

// Length, area, mass, speed, wing loading, power: the order of F_CONVERT.Combo1.
const std::vector<Quantity>& Quantities();

// value in units[from] expressed in units[to]; false when an index is out of
// range or the value is not finite.
bool ConvertUnits(int quantity, int from, int to, double value, double& out);

// The result as shown: six significant figures, no exponent for the sizes a
// model has, trailing zeros dropped.
std::string ConversionText(double v);

}  // namespace tarvokin
