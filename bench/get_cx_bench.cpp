// The drag lookup is called for every point of every performance curve; the
// polar reader runs six times for each airfoil chosen. Both on real XFOIL
// polars of the Clark Y (the test fixtures).
#include <benchmark/benchmark.h>

#include <cmath>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "airfoils/polar_lookup.h"

namespace {

using namespace tarvokin;

std::filesystem::path fixture(const std::string& name) {
    return std::filesystem::path(TARVOKIN_DATA_DIR).parent_path() / "tests" / "data" / "polars" / name;
}

// One query per iteration, walking a grid of 3 slots x 24 Reynolds numbers
// (12000 to 3000000, inside and outside the table) x 40 Cz (-0.5 to 1.45,
// below, inside and above the polars).
void BM_GetCxGrid(benchmark::State& state) {
    PolarStore store;
    for (int slot = 0; slot < kPolarSlots; ++slot)
        for (int re : kStandardReynolds)
            if (!Read_Polar(store, fixture("CLARKY_" + std::to_string(re) + ".POL"), slot)) {
                state.SkipWithError("missing polar fixture");
                return;
            }
    struct Query {
        int slot;
        double re, cz;
    };
    std::vector<Query> grid;
    for (int slot = 0; slot < kPolarSlots; ++slot)
        for (int i = 0; i < 24; ++i)
            for (int j = 0; j < 40; ++j)
                grid.push_back({slot, 12000.0 * std::pow(250.0, i / 23.0), -0.5 + 0.05 * j});
    size_t n = 0;
    for (auto _ : state) {
        const Query& q = grid[n];
        benchmark::DoNotOptimize(Get_Cx(store, q.slot, q.re, q.cz));
        if (++n == grid.size()) n = 0;
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_GetCxGrid)->Unit(benchmark::kNanosecond);

// A file of 157 rows, of which the reader takes 146.
void BM_ReadPolar146Rows(benchmark::State& state) {
    PolarStore store;
    const std::filesystem::path file = fixture("CLARKY_LONG_220000.POL");
    for (auto _ : state) {
        if (!Read_Polar(store, file, 0)) {
            state.SkipWithError("missing polar fixture");
            return;
        }
        benchmark::DoNotOptimize(store.Polars[0][3].k);
    }
}
BENCHMARK(BM_ReadPolar146Rows)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
