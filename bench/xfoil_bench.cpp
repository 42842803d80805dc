// Wall time of the six polars of a new airfoil: what a modeller waits for
// when choosing an airfoil that has none yet, the runs one after another and
// as the batch runs them side by side.
#include <benchmark/benchmark.h>

#include <chrono>
#include <filesystem>
#include <unistd.h>

#include "airfoils/polar_lookup.h"
#include "airfoils/xfoil_runner.h"
#include "entry/session.h"
#include "core/workbench.h"
#include "entry/window_logic.h"

namespace {

using namespace tarvokin;
namespace fs = std::filesystem;

void BM_SixPolarsOfANewAirfoil(benchmark::State& state) {
    const fs::path home = fs::temp_directory_path() / ("tarvokin-bench-" + std::to_string(::getpid()));
    fs::remove_all(home);
    fs::copy(TARVOKIN_DATA_DIR, home, fs::copy_options::recursive);
    Workbench wb(home);
    InstallWindowLogic(wb);
    ReadSettingsAndCatalogue(wb);
    const std::string outline = (home / "DATA" / "E387.DAT").string();
    for (auto _ : state) {
        for (int re : kStandardReynolds) {
            const std::string polar = (home / "POLAIRES" / ("BENCH_" + std::to_string(re) + ".POL")).string();
            PolarRun run = Calc_Polar(wb, 110, std::to_string(re), polar, outline, "BENCH");
            if (!run.saved) state.SkipWithError(run.reason.c_str());
        }
    }
    fs::remove_all(home);
}
BENCHMARK(BM_SixPolarsOfANewAirfoil)->Unit(benchmark::kSecond)->UseRealTime()->Iterations(1)->Repetitions(3);

// The same six polars one after another and then as the batch runs them
// (polarBatchWidth() at a time), in one iteration so that both meet the same
// load of the machine; the counters give both times and their ratio. The
// iteration's own time is the batch's.
void BM_SixPolarsOneAtATimeAndAtOnce(benchmark::State& state) {
    using Clock = std::chrono::steady_clock;
    const fs::path home = fs::temp_directory_path() / ("tarvokin-bench-batch-" + std::to_string(::getpid()));
    fs::remove_all(home);
    fs::copy(TARVOKIN_DATA_DIR, home, fs::copy_options::recursive);
    Workbench wb(home);
    InstallWindowLogic(wb);
    ReadSettingsAndCatalogue(wb);
    const std::string outline = (home / "DATA" / "E387.DAT").string();
    std::vector<XfoilJob> jobs;
    for (int re : kStandardReynolds) {
        XfoilJob job;
        job.xfoilPath = wb.settings.xfoilPath;
        job.home = home;
        job.name = "BENCH";
        job.Re = std::to_string(re);
        job.datPath = outline;
        job.polarPath = (home / "POLAIRES" / ("BENCH_" + job.Re + ".POL")).string();
        job.iterations = wb.settings.iterations;
        job.alphaFirst = wb.settings.clIncidDe;
        job.alphaLast = wb.settings.clIncidA;
        job.alphaStep = wb.settings.clIncidPas;
        job.smooth = wb.settings.smooth;
        job.timeoutSeconds = wb.settings.xfoilTimeout;
        jobs.push_back(job);
    }
    double serial = 0.0, batch = 0.0;
    for (auto _ : state) {
        const auto t0 = Clock::now();
        for (const XfoilJob& job : jobs) {
            const std::string reason = runXfoil(job);
            if (!reason.empty()) state.SkipWithError(reason.c_str());
        }
        const auto t1 = Clock::now();
        for (const std::string& reason : runXfoilBatch(jobs, polarBatchWidth()))
            if (!reason.empty()) state.SkipWithError(reason.c_str());
        const auto t2 = Clock::now();
        serial = std::chrono::duration<double>(t1 - t0).count();
        batch = std::chrono::duration<double>(t2 - t1).count();
        state.SetIterationTime(batch);
    }
    state.counters["one_at_a_time_s"] = serial;
    state.counters["at_once_s"] = batch;
    state.counters["ratio"] = batch > 0 ? serial / batch : 0.0;
    state.counters["width"] = polarBatchWidth();
    fs::remove_all(home);
}
BENCHMARK(BM_SixPolarsOneAtATimeAndAtOnce)
    ->Unit(benchmark::kSecond)
    ->UseManualTime()
    ->Iterations(1)
    ->Repetitions(3);

}  // namespace

BENCHMARK_MAIN();
