// The 2D drawing surface the 3D engine paints on. The engine only sets pens
// and calls these primitives; the Qt adapter paints a QImage, the tests record
// the calls. The pen state (modes, styles, colours, current point) belongs to
// the surface and stays set between calls and between frames.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>

#include "views/engine_math.h"

namespace tarvokin {

// Raster operation of pens and fills.
namespace drawmode {
inline constexpr int CopyPen = 13;
inline constexpr int MergePen = 15;  // pen OR background
inline constexpr int Invert = 6;     // NOT background, the pen colour plays no part
}  // namespace drawmode

// Outline of lines and polygons.
namespace drawstyle {
inline constexpr int Solid = 0;
inline constexpr int None = 5;
}  // namespace drawstyle

// Inside of polygons.
namespace fillstyle {
inline constexpr int Solid = 0;
inline constexpr int None = 1;
}  // namespace fillstyle

struct SurfacePoint {
    int x = 0, y = 0;
    constexpr bool operator==(const SurfacePoint&) const = default;
};

// One corner of a gradient triangle; channels in the 16-bit form (the 0 to 255
// value in the high byte).
struct GradientVertex {
    int x = 0, y = 0;
    std::uint16_t red = 0, green = 0, blue = 0;
    constexpr bool operator==(const GradientVertex&) const = default;
};

class DrawSurface {
public:
    virtual ~DrawSurface() = default;

    // Size in pixels.
    virtual int width() const = 0;
    virtual int height() const = 0;

    // Keep the drawing between repaints, and measure in pixels. A surface that
    // always does both has nothing to do.
    virtual void setAutoRedraw(bool /*keep*/) {}
    virtual void setPixelScale() {}

    virtual void setDrawMode(int mode) = 0;    // drawmode::
    virtual void setDrawStyle(int style) = 0;  // drawstyle::
    virtual void setFillStyle(int style) = 0;  // fillstyle::
    virtual void setForeColor(PackedColour colour) = 0;  // pen and text colour
    virtual void setFillColor(PackedColour colour) = 0;

    // Paints the whole surface with the colour.
    virtual void clear(PackedColour background) = 0;

    // Writes one pixel in the colour, whatever the pen.
    virtual void setPixel(int x, int y, PackedColour colour) = 0;
    // Text in the fore colour, its top-left corner at the point.
    virtual void textOut(int x, int y, const std::string& text) = 0;
    // Current point, then a line from it to (x, y) with the pen; the end
    // becomes the current point.
    virtual void moveTo(int x, int y) = 0;
    virtual void lineTo(int x, int y) = 0;
    // Closed polygon: filled with the fill colour unless the fill style is
    // none, outlined with the pen unless the draw style is none, both through
    // the draw mode.
    virtual void polygon(std::span<const SurfacePoint> points) = 0;
    // One cubic Bézier: start, two control points, end; drawn with the pen.
    virtual void polyBezier(const std::array<SurfacePoint, 4>& points) = 0;
    // Triangle with one colour a corner, blended across the inside; pens and
    // draw mode play no part.
    virtual void gradientTriangle(const std::array<GradientVertex, 3>& corners) = 0;
};

}  // namespace tarvokin
