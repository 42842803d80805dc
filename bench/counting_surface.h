// A drawing surface of 1000 x 700 that only counts the calls, so a frame's
// figure is the engine's work (transforms, culling, sort, shading), not painting.
#pragma once

#include <string>

#include "views/draw_surface.h"

namespace tarvokin {

class CountingSurface : public DrawSurface {
public:
    int width() const override { return 1000; }
    int height() const override { return 700; }
    void setDrawMode(int) override {}
    void setDrawStyle(int) override {}
    void setFillStyle(int) override {}
    void setForeColor(PackedColour) override {}
    void setFillColor(PackedColour c) override { sum += c; }
    void clear(PackedColour) override {}
    void setPixel(int, int, PackedColour) override { ++calls; }
    void textOut(int, int, const std::string&) override { ++calls; }
    void moveTo(int, int) override {}
    void lineTo(int, int) override { ++calls; }
    void polygon(std::span<const SurfacePoint>) override { ++calls; }
    void polyBezier(const std::array<SurfacePoint, 4>&) override { ++calls; }
    void gradientTriangle(const std::array<GradientVertex, 3>& c) override {
        ++calls;
        sum += c[0].red;
    }
    long calls = 0;
    unsigned long sum = 0;
};

}  // namespace tarvokin
