// What a chart shows, as plain data: the calculations fill it, the Qt chart
// adapter draws it, the tests and the command-line program read it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tarvokin {

struct Rgb {
    uint8_t r = 0, g = 0, b = 0;
    constexpr bool operator==(const Rgb&) const = default;
};

// The colours of the three candidate airfoils, in slot order.
inline constexpr Rgb kAirfoilColours[3] = {{0, 0, 255}, {255, 0, 0}, {0, 255, 0}};

// Line styles by their historic numbers: 1 solid ("masse mini"), 3 dashed ("masse maxi").
namespace linestyle {
inline constexpr int Solid = 1, Dashed = 3;
}

struct ChartPoint {
    double x = 0, y = 0;
    bool operator==(const ChartPoint&) const = default;
};

struct ChartSeries {
    int code = 0;  // the series code the calculation used (0-5 Vz, 6-11 finesse...)
    std::string name;
    Rgb colour;
    int style = linestyle::Solid;
    std::vector<ChartPoint> points;
    bool withPoints = false;  // mark each point
    bool inLegend = true;     // several series of one airfoil share one legend entry
    bool operator==(const ChartSeries&) const = default;
};

struct ChartMarker {
    enum class Kind : uint8_t { VerticalLine, Point };
    Kind kind = Kind::VerticalLine;
    double x = 0, y = 0;  // y unused by a vertical line
    Rgb colour;
    int size = 13;  // point diameter in pixels
    std::string label;
    bool operator==(const ChartMarker&) const = default;
};

struct ChartData {
    std::string title, xTitle, yTitle;
    std::optional<double> xMin, xMax, yMin, yMax;
    std::vector<ChartSeries> series;
    std::vector<ChartMarker> markers;

    // Series without any finite point are dropped and non-finite points are
    // removed, so a chart never receives inf or nan.
    void dropNonFinite();
    bool operator==(const ChartData&) const = default;
};

// The smoothing every plotted performance curve goes through: from n + 1 points
// it makes 2n + 1 (midpoints inserted), then each inner original point P becomes
// P * (1 - 0.5) + (0.5 / 2) * (sum of its two neighbours); the ends stay.
std::vector<ChartPoint> Smooth_Curve(const std::vector<ChartPoint>& in);

}  // namespace tarvokin
