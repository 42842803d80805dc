// The design window's motor fields and the motorisation window.
#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

#include "entry/entry_path.h"
#include "entry/field_rules.h"
#include "power/motorisation.h"
#include "core/numbers.h"
#include "core/profile_file.h"
#include "shell/cli.h"
#include "entry/session.h"
#include "core/workbench.h"
#include "support/temp_dir.h"
#include "support/installed_workbench.h"

using namespace tarvokin;
using tarvokin::test::TempDir;

namespace {

// The shipped installation with the demo project as the open project.
struct Installed {
    TempDir dir;
    test::InstalledWorkbench wb{dir.path()};
    Sheet& s = wb.sheet;
    Installed() {
        test::copyInstallation(dir.path());
        wb.projectFilePath = (dir / "MODELES" / "DEMO.MDL").string();
    }
    // Three Lipo cells of 2200 mAh, 10 A on a 10x6 APC, the default "Moyenne"
    // brushless motor, direct drive.
    void battery() {
        using namespace F_3D;
        for (auto [c, v] : {std::pair{Combo2, "3"}, {b6, "2200"}, {d6, "10"}, {d7, "1"}, {f5, "10"}, {f6, "6"}})
            s.set(c, v);
        s.set(Combo6, "APC");
    }
};

PerfPoint point(double vkmh, double power, double vz = -1) {
    PerfPoint p;
    p.VKmh = vkmh;
    p.PuissanceAero = power;
    p.Vz = vz;
    return p;
}

}  // namespace

TEST(MajMotorisation, DesignWindowFiguresAndTheirDashes) {
    Installed in;
    in.battery();
    in.s.set(F_GEO_SF_REGLAGES::I30, "1000");
    MajMotorisation(in.wb);
    EXPECT_EQ(in.s.text(F_3D::b7), "10.5");
    EXPECT_EQ(in.s.text(F_3D::b8), "4.5");   // 10 A on 2200 mAh
    EXPECT_EQ(in.s.text(F_3D::h8), "12.5");  // 2200 x 0.95 x 60 / 1000 / 10
    // Without a performance table there is no sink to climb against.
    EXPECT_EQ(in.s.text(F_3D::h4), "-");
    in.wb.perf.PerfTable[0] = {point(90, 100, -1.5), point(60, 40, -0.9)};
    MajMotorisation(in.wb);
    // 105 W x 0.85 x 0.8 x 2 / 2.2 = 64.909 W useful, 1.5 m/s of sink.
    EXPECT_EQ(in.s.text(F_3D::h4), "11.73");  // 64.909 / (0.5 x 9.81) - 1.5
    EXPECT_EQ(in.s.text(F_3D::h6), "5.12");   // 64.909 / 9.81 - 1.5
    // NiCd elements count 1 V each here.
    in.s.setListIndex(F_3D::Combo1, 0);
    enterField(in.wb, F_3D::Combo2, "7");
    EXPECT_EQ(in.s.text(F_3D::b7), "7.0");
    enterField(in.wb, F_3D::b6, "0");
    EXPECT_EQ(in.s.text(F_3D::b8), "-");
    enterField(in.wb, F_3D::d6, "0");
    EXPECT_EQ(in.s.text(F_3D::h8), "-");
    EXPECT_EQ(in.s.text(F_3D::f7), "0");
    enterField(in.wb, F_3D::Combo2, "");
    for (Cell c : {F_3D::b7, F_3D::f7, F_3D::d8, F_3D::f8}) EXPECT_EQ(in.s.text(c), "-") << cellPath(c);
}

TEST(Motorisation, ChoosingAMotorFillsItsFiguresAndTheProject) {
    Installed in;
    in.battery();
    TogglePanel(in.wb, button::Motorisation);
    EXPECT_EQ(in.s.items(F_MOTORISATIONS::CB_MOT).size(), 52u);
    enterField(in.wb, F_MOTORISATIONS::CB_MOT, "AXI@2820/10");
    EXPECT_EQ(in.s.text(F_MOTORISATIONS::T_Ra), "0.039");
    EXPECT_EQ(in.s.text(F_MOTORISATIONS::d8), "1200");
    EXPECT_EQ(ReadProfileString("Moteur", "Marque", "", in.wb.projectFilePath), "AXI");
    EXPECT_EQ(ReadProfileString("Moteur", "Moteur", "", in.wb.projectFilePath), "2820/10");
    // The type filter follows the design's motor type.
    enterField(in.wb, F_3D::Combo4, "Classique");
    EXPECT_EQ(in.s.items(F_MOTORISATIONS::CB_MOT).size(), 52u);
    enterField(in.wb, F_MOTORISATIONS::Check1, "1");
    EXPECT_TRUE(in.s.items(F_MOTORISATIONS::CB_MOT).empty());
}

TEST(Motorisation, PowerBalanceCrossesPastTheSecondPoint) {
    Installed in;
    in.battery();
    in.s.set(F_MOTORISATIONS::d8, "1000");
    in.s.set(F_PROFILS::CB_1[0], "CLARKY");
    // Useful power 64.909 W at rest, nothing at the pitch speed 10500 x 6 x 25.4 x 60 / 10^6 = 96.012 km/h.
    // Points 0 and 1 straddle the propeller's line; the crossing sought lies
    // between points 2 and 3: 60 km/h (need 60 W, give 24.35) and 40 (30, 37.87).
    in.wb.perf.PerfTable[0] = {point(90, 0), point(80, 120), point(60, 60), point(40, 30), point(30, 25)};
    in.wb.perf.PerfTable[3] = {point(95, 150), point(70, 80)};
    in.s.set(F_PROFILS::Check2[1], "0");
    const PowerBalance b = Equilibre_Puissances(in.wb);
    ASSERT_EQ(b.chart.series.size(), 4u);
    EXPECT_EQ(b.chart.series[1].name, "CLARKY masse maxi");
    EXPECT_EQ(b.chart.series[2].name, "Hélice");
    EXPECT_NEAR(b.chart.series[2].points[1].x, 96.012, 1e-9);
    EXPECT_EQ(b.chart.series[3].name, "Vitesse vol en palier");
    EXPECT_NEAR(b.levelSpeed, 43.615, 0.001);
    RefreshMotorisation(in.wb);
    EXPECT_EQ(in.s.text(F_3D::h3), "43.6");
    // The propeller never meets the need: no level speed.
    in.s.set(F_3D::d6, "0.1");
    RefreshMotorisation(in.wb);
    EXPECT_EQ(in.s.text(F_3D::h3), "-");
}

// The balance and the climb rates need the speed polar of the model; the
// motorisation window sweeps it as it opens, with or without the performance
// window, so the demo model flies level with a catalogue motor at once.
TEST(Motorisation, OpeningSweepsTheModelForTheBalanceAndTheClimb) {
    TempDir home;
    test::copyInstallation(home.path());
    const std::string demo = (home.path() / "MODELES" / "DEMO.MDL").string();
    std::ostringstream out, err;
    ASSERT_EQ(runCli({"fields", demo, "--home", home.path().string(), "--open", "20", "--set",
                      "F_MOTORISATIONS.CB_MOT=AXI@2820/10"},
                     TARVOKIN_CLI, out, err),
              0)
        << err.str();
    auto field = [&](const std::string& name) {
        const std::string text = out.str(), key = "\n" + name + "=";
        const size_t at = text.find(key);
        return at == std::string::npos ? std::string("?") : text.substr(at + key.size(), text.find('\n', at + 1) - at - key.size());
    };
    for (const char* climb : {"F_3D.h4", "F_3D.h6"}) EXPECT_NE(field(climb), "-") << climb;
    // 3 Lipo cells (10.5 V) at 1200 rpm/V on a 6-inch pitch: 115.2 km/h of pitch speed.
    double level = 0;
    ASSERT_TRUE(tryNumber(field("F_3D.h3"), level)) << field("F_3D.h3");
    EXPECT_GT(level, 30.0);
    EXPECT_LT(level, 1200 * 10.5 * 6 * 25.4 * 60 / 1e6);
}
