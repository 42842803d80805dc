#include "airfoils/polar_interpolation.h"

#include <cmath>

#include "airfoils/airfoil_selection.h"
#include "airfoils/outline.h"
#include "airfoils/polar_lookup.h"
#include "airfoils/xfoil_runner.h"
#include "core/numbers.h"
#include "core/progress.h"
#include "core/workbench.h"

namespace tarvokin {

namespace fs = std::filesystem;

int ReadTestPolars(Workbench& wb, const std::string& airfoil) {
    PolarStore& store = wb.testPolars;
    store = PolarStore{};
    const size_t row = wb.catalogue.Find_Profil(airfoil);
    if (airfoil.empty() || row == kNotFound) return 0;
    WaitHooks hooks;
    hooks.betweenWaits = wb.serveEvents;
    auto it = wb.solverProgress.find("F_TEST_POL");
    if (it != wb.solverProgress.end()) hooks.progress = it->second;
    const std::string dat = outlinePath(wb.home(), wb.catalogue.rows[row].Path).string();
    int read = 0;
    for (int i = 0; i < kReynoldsCount; ++i) {
        const int re = kStandardReynolds[static_cast<size_t>(i)];
        const fs::path file = polarFile(wb, airfoil, re);
        bool ok = Read_Polar(store, file, 0, i);
        if (!ok && !(hooks.progress && hooks.progress->cancelled())) {
            // The polar's own name: a generic airfoil's polars bear its outline's.
            const std::string stem = file.stem().string();
            Calc_Polar(wb, 110, std::to_string(re), file.string(), dat, stem.substr(0, stem.rfind('_')), hooks);
            ok = Read_Polar(store, file, 0, i);
        }
        read += ok ? 1 : 0;
    }
    return read;
}

InterpolationView interpolationOf(const PolarStore& store, double Re, double Cz, const std::array<bool, 6>& shown,
                                  double cxMax, double czMax) {
    InterpolationView v;
    static constexpr Rgb kShades[6] = {{180, 180, 255}, {130, 130, 240}, {80, 80, 220},
                                       {40, 40, 200},   {0, 0, 160},     {0, 0, 100}};
    v.chart.xTitle = "Cx";
    v.chart.yTitle = "Cz";
    for (int i = 0; i < kReynoldsCount; ++i) {
        const PolarRecord& rec = store.Polars[0][static_cast<size_t>(i)];
        const int re = kStandardReynolds[static_cast<size_t>(i)];
        v.heads[static_cast<size_t>(i)] = " Re " + std::to_string(re);
        v.cxAtCz[static_cast<size_t>(i)] = Get_Cx(store, 0, re, Cz);
        if (!shown[static_cast<size_t>(i)] || rec.LastExtRow <= 0) continue;
        ChartSeries s;
        s.name = std::to_string(re);
        s.colour = kShades[i];
        for (int k = 0; k <= rec.LastExtRow && k < kPolarRows; ++k) {
            const PolarPoint& p = rec.Points[static_cast<size_t>(k)];
            s.points.push_back({p.CxExt, p.CzExt});
        }
        v.chart.series.push_back(std::move(s));
        ChartMarker m;
        m.kind = ChartMarker::Kind::Point;
        m.x = v.cxAtCz[static_cast<size_t>(i)];
        m.y = Cz;
        m.colour = kShades[i];
        m.size = 7;
        v.chart.markers.push_back(m);
    }
    v.cx = Get_Cx(store, 0, Re, Cz);
    ChartMarker answer;
    answer.kind = ChartMarker::Kind::Point;
    answer.x = v.cx;
    answer.y = Cz;
    answer.colour = {230, 0, 0};
    answer.label = "Re " + plain(Re) + " : Cx " + fixed(v.cx, 5);
    v.chart.markers.push_back(answer);
    v.chart.title = " Re " + plain(Re) + "   Cz : " + plain(Cz);
    if (cxMax > 0) {
        v.chart.xMin = 0;
        v.chart.xMax = cxMax;
    }
    if (czMax > 0) v.chart.yMax = czMax;
    v.chart.dropNonFinite();
    return v;
}

}  // namespace tarvokin
