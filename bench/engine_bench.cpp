// One frame of the 3D view while the user drags it round: a lofted tube of
// about 3000 triangles (the size of a glider's wing, tail and fuselage
// together), a light and a camera that moves a little every frame, drawn at
// 1000 x 700 on a surface that only counts calls, so that the figure is the
// engine's own work.
#include <benchmark/benchmark.h>

#include <cmath>
#include <memory>

#include "counting_surface.h"
#include "views/engine.h"

namespace {

using namespace tarvokin;


// 48 points round, 32 stations along, radius varying like a fuselage: 2976
// triangles on 1536 vertices.
int AddTube(Engine& e) {
    constexpr int kRound = 48, kStations = 32;
    const int m = AddMesh(e, kRound * kStations, kRound * (kStations - 1) * 2);
    const int v0 = e.Meshes[m].FirstVertex, f0 = e.Meshes[m].FirstFace;
    for (int s = 0; s < kStations; ++s) {
        const float z = -120.0f + 240.0f * s / (kStations - 1);
        const float r = 10.0f + 25.0f * std::sin(3.14159f * s / (kStations - 1));
        for (int k = 0; k < kRound; ++k) {
            const float a = 6.28318f * k / kRound;
            e.ObjectVertices[v0 + s * kRound + k] = {r * std::cos(a), r * std::sin(a), z};
        }
    }
    int f = f0;
    for (int s = 0; s + 1 < kStations; ++s)
        for (int k = 0; k < kRound; ++k) {
            const auto at = [&](int ss, int kk) { return static_cast<std::int16_t>(v0 + ss * kRound + kk % kRound); };
            e.Faces[f++] = {at(s, k), at(s + 1, k), at(s + 1, k + 1), {}, 0};
            e.Faces[f++] = {at(s, k), at(s + 1, k + 1), at(s, k + 1), {}, 0};
        }
    SetMeshColour(e, m, {40, 90, 200}, 0.9f);
    return m;
}

void Frame(benchmark::State& state, int renderMode) {
    auto engine = std::make_unique<Engine>();
    Engine& e = *engine;
    CountingSurface surface;
    InitEngine(e, surface);
    const int camera = AddCamera(e);
    const int light = AddLight(e);
    e.Cameras[camera].RenderMode = static_cast<std::int16_t>(renderMode);
    AddTube(e);
    float azimuth = 0.6f;
    for (auto _ : state) {
        azimuth += 0.01f;
        OrbitCamera(e, camera, {}, 370.0f, azimuth, 0.4f);
        e.Lights[light].Position = e.Cameras[camera].Position;
        RenderScene(e, surface, camera);
    }
    state.counters["faces"] = DrawListLength(e);
    benchmark::DoNotOptimize(surface.sum);
}

void BM_EngineFrameMode2(benchmark::State& state) { Frame(state, render_mode::Shaded); }
void BM_EngineFrameMode5(benchmark::State& state) { Frame(state, render_mode::Surface); }
BENCHMARK(BM_EngineFrameMode2)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_EngineFrameMode5)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
