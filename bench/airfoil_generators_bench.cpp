// The NACA generator runs at every slider move, so one generation at the
// largest point count must be instant; the rib generator runs at every field
// change of its window.
#include <benchmark/benchmark.h>

#include <cmath>

#include "airfoils/naca_generator.h"
#include "airfoils/ribs.h"

namespace {

using namespace tarvokin;

void generate(benchmark::State& state, NacaRequest r) {
    for (auto _ : state) {
        NacaAirfoil a;
        std::string error;
        if (!GenerateNaca(r, a, error)) {
            state.SkipWithError(error.c_str());
            return;
        }
        benchmark::DoNotOptimize(a.upper.data());
    }
}

// NACA 2412 at N = 400, both ends bunched.
void BM_NacaFourDigit400(benchmark::State& state) { generate(state, {naca::Four, {2, 4, 12, 0, 0, 0}, 400, 3}); }
// NACA 64-212 at N = 400: table spline and the logarithmic mean line.
void BM_NacaSixSeries400(benchmark::State& state) { generate(state, {naca::Series6, {64, 0, 2, 12, 0, 0}, 400, 3}); }
// NACA 64-211, between two tables.
void BM_NacaSixSeriesBetweenTables400(benchmark::State& state) {
    generate(state, {naca::Series6, {64, 0, 2, 11, 0, 0}, 400, 3});
}

// 20 ribs between two 200-point outlines of different shape (resampling of
// neither: equal counts), and the same with a 120-point tip resampled.
OutlinePoints section(int points, double thickness, double camber) {
    OutlinePoints p;
    const int half = points / 2;
    for (int i = 0; i < points; ++i) {
        const double s = std::fabs(static_cast<double>(i - half)) / half;  // 1 at the ends, 0 at the nose
        const double x = s * s;
        const double yt = NacaFourThickness(x, thickness);
        const double yc = camber * 4 * x * (1 - x);
        p.push_back({x, i < half ? yc + yt : yc - yt});
    }
    return p;
}

void ribs(benchmark::State& state, int tipPoints) {
    RibRequest r;
    r.root = section(200, 0.12, 0.03);
    r.tip = section(tipPoints, 0.09, 0.02);
    r.rootChord = 250;
    r.tipChord = 140;
    r.span = 700;
    r.count = 20;
    r.align = ribs::QuarterChord;
    for (auto _ : state) {
        std::vector<RibOutline> out;
        std::string error;
        if (!BuildRibs(r, out, error)) {
            state.SkipWithError(error.c_str());
            return;
        }
        benchmark::DoNotOptimize(out.data());
    }
}
void BM_TwentyRibs200Points(benchmark::State& state) { ribs(state, 200); }
void BM_TwentyRibsTipResampled(benchmark::State& state) { ribs(state, 120); }

}  // namespace

BENCHMARK(BM_NacaFourDigit400);
BENCHMARK(BM_NacaSixSeries400);
BENCHMARK(BM_NacaSixSeriesBetweenTables400);
BENCHMARK(BM_TwentyRibs200Points);
BENCHMARK(BM_TwentyRibsTipResampled);
BENCHMARK_MAIN();
