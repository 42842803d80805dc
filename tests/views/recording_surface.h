// A drawing surface that keeps what a frame asked for, with the pen state in
// force at each call, and scene helpers shared by the engine tests.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "views/engine.h"

namespace tarvokin::test {

struct Pen {
    int drawMode = -1, drawStyle = -1, fillStyle = -1;
    PackedColour fore = 0xDEAD, fill = 0xDEAD;
};

// One drawing call with the pen in force at that moment.
struct Call {
    std::vector<SurfacePoint> points;
    Pen pen;
    std::string text = "";
    PackedColour colour = 0;  // of a pixel or a text
};

class RecordingSurface : public DrawSurface {
public:
    explicit RecordingSurface(int w = 1000, int h = 700) : w_(w), h_(h) {}
    int width() const override { return w_; }
    int height() const override { return h_; }
    void setDrawMode(int mode) override { pen.drawMode = mode; }
    void setDrawStyle(int style) override { pen.drawStyle = style; }
    void setFillStyle(int style) override { pen.fillStyle = style; }
    void setForeColor(PackedColour c) override { pen.fore = c; }
    void setFillColor(PackedColour c) override { pen.fill = c; }
    void clear(PackedColour) override {}
    void setPixel(int x, int y, PackedColour c) override { pixels.push_back({{{x, y}}, pen, "", c}); }
    void textOut(int x, int y, const std::string& t) override { texts.push_back({{{x, y}}, pen, t, pen.fore}); }
    void moveTo(int x, int y) override { current = {x, y}; }
    void lineTo(int x, int y) override {
        lines.push_back({{current, {x, y}}, pen});
        current = {x, y};
    }
    void polygon(std::span<const SurfacePoint> p) override { polygons.push_back({{p.begin(), p.end()}, pen}); }
    void polyBezier(const std::array<SurfacePoint, 4>& p) override { beziers.push_back({{p.begin(), p.end()}, pen}); }
    void gradientTriangle(const std::array<GradientVertex, 3>& c) override { gradients.push_back(c); }
    void forget() { *this = RecordingSurface(w_, h_); }

    Pen pen;
    SurfacePoint current;
    std::vector<Call> polygons, lines, texts, pixels, beziers;
    std::vector<std::array<GradientVertex, 3>> gradients;

private:
    int w_, h_;
};

// One triangle as its own mesh.
inline int AddTriangle(Engine& e, Vector3 a, Vector3 b, Vector3 c, EngineColour colour = {200, 100, 50},
                       float reflectivity = 1.0f) {
    const int m = AddMesh(e, 3, 1);
    const int v = e.Meshes[m].FirstVertex;
    e.ObjectVertices[v] = a;
    e.ObjectVertices[v + 1] = b;
    e.ObjectVertices[v + 2] = c;
    FaceRecord& f = e.Faces[e.Meshes[m].FirstFace];
    f.A = static_cast<std::int16_t>(v);
    f.B = static_cast<std::int16_t>(v + 1);
    f.C = static_cast<std::int16_t>(v + 2);
    SetMeshColour(e, m, colour, reflectivity);
    return m;
}

// A triangle across the view axis at depth z, turned towards a camera at the
// origin, its centroid on the axis.
inline int AddFacingTriangle(Engine& e, float z, EngineColour colour = {200, 100, 50}, float reflectivity = 1.0f) {
    return AddTriangle(e, {-10, -10, z}, {-10, 10, z}, {20, 0, z}, colour, reflectivity);
}

}  // namespace tarvokin::test
