// The master recalculation of a two-panel glider with a flat tail, a fin and a
// fuselage, no analysis panel open: the cost of one confirmed entry or one
// slider move before any drawing.
#include <benchmark/benchmark.h>

#include <filesystem>

#include "design/grid_cells.h"
#include "design/recalc.h"
#include "shell/workbench.h"

namespace {

using namespace tarvokin;

void setRow(Sheet& s, const grid::Row& row, std::initializer_list<const char*> values) {
    size_t k = 0;
    for (const char* v : values) s.set(row[k++], v);
    for (; k < 5; ++k) s.set(row[k], "0");
}

void buildGlider(Workbench& wb) {
    Sheet& s = wb.sheet;
    setRow(s, grid::kRoot, {"220", "200"});
    setRow(s, grid::kTip, {"200", "140"});
    setRow(s, grid::kLength, {"600", "800"});
    setRow(s, grid::kSweep, {"5", "40"});
    setRow(s, grid::kTwist, {"0", "-1.5"});
    setRow(s, grid::kDihedral, {"2", "6"});
    s.set(F_GEO_SF::a12, "40");
    s.set(F_3D::a12, "40");
    setRow(s, grid::kStabRoot, {"120"});
    setRow(s, grid::kStabTip, {"90"});
    setRow(s, grid::kStabLength, {"250"});
    setRow(s, grid::kStabSweep, {"20"});
    s.set(F_GEO_STAB::b20, "750");
    s.set(F_GEO_STAB::Text4, "20");
    s.set(F_GEO_STAB::Text12, "150");
    s.set(F_GEO_STAB::Text11, "90");
    s.set(F_GEO_STAB::Text10, "180");
    s.set(F_GEO_FUS::b24, "1100");
    s.set(F_GEO_FUS::b25, "280");
    s.set(F_GEO_FUS::D24, "60");
    s.set(F_GEO_FUS::D25, "70");
    s.set(F_GEO_FUS::Text5, "10");
    s.setListIndex(F_3D::Combo9, 1);
    s.setListIndex(F_3D::Combo10, 1);
    s.set(F_GEO_SF_REGLAGES::H30, "900");
    s.set(F_GEO_SF_REGLAGES::I30, "1200");
    s.set(F_GEO_SF_REGLAGES::C29, "5");
    s.set(F_3D::Slider1[0], "280");
    s.set(F_3D::Slider1[5], "750");
    wb.catalogue.rows = {CatalogueRow{"CLARKY", -0.08, -3.5, "DATA/CLARKY.DAT"},
                         CatalogueRow{"SD7037", -0.09, -3.0, "DATA/SD7037.DAT"}};
    s.setItems(F_3D::Combo5, {"CLARKY", "SD7037"});
    s.setListIndex(F_3D::Combo5, 1);
}

void BM_RecalcAllGlider(benchmark::State& state) {
    Workbench wb(std::filesystem::temp_directory_path());
    buildGlider(wb);
    RecalcAll(wb);
    for (auto _ : state) {
        RecalcAll(wb);
        benchmark::DoNotOptimize(wb.sheet.text(F_GEO_SF_REGLAGES::F30).data());
    }
}
BENCHMARK(BM_RecalcAllGlider)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
