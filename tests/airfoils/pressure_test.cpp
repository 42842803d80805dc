#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

#include "airfoils/pressure_files.h"
#include "airfoils/pressure_run.h"
#include "airfoils/pressure_script.h"
#include "airfoils/xfoil_runner.h"
#include "core/numbers.h"
#include "core/progress.h"
#include "entry/entry_path.h"
#include "entry/pressure_logic.h"
#include "entry/session.h"
#include "support/installed_workbench.h"
#include "support/temp_dir.h"

using namespace tarvokin;
namespace fs = std::filesystem;
using test::readBytes;
using test::TempDir;
using test::writeBytes;

namespace {

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> out;
    std::istringstream in(text);
    std::string l;
    while (std::getline(in, l)) out.push_back(l);
    return out;
}

std::string sample(const std::string& name) { return readBytes(fs::path(TARVOKIN_TEST_DATA) / "pressure" / name); }

// The shipped installation in a temporary home, the window's defaults set.
struct PressureHome {
    TempDir dir;
    std::unique_ptr<test::InstalledWorkbench> wb;
    PressureHome() {
        test::copyInstallation(dir.path());
        wb = std::make_unique<test::InstalledWorkbench>(dir.path());
        ReadSettingsAndCatalogue(*wb);
        wb->settings.xfoilPath = "/usr/bin/xfoil";
        wb->sheet.selectText(F_AERO::Combo5, "CLARKY");
        PreparePressureWindow(*wb);
    }
    bool anyRunFile() const {
        for (const char* f : {kPressureCommandFile, kPressureKeyFile, kPressurePolarFile, kPressureCpFile})
            if (fs::exists(dir / f)) return true;
        return false;
    }
};

}  // namespace

TEST(PressureScript, InviscidPointByIncidence) {
    PressureRequest r;
    r.outline = "/home/u/DATA/CLARKY.DAT";
    r.Re = "250000";
    r.reType = 1;
    r.iterations = 100;
    r.point = "2";
    const std::vector<std::string> expected = {
        "plop", "W 0.01", "", "Load /home/u/DATA/CLARKY.DAT", "gdes", "name aaa", "", "Pane", "", "oper",
        "RE 250000", "Type", "1", "iter", "100", "alfa 2", "PACC", "PRESSURE.TXT", "", "cpwr PRESSURE.cp", "",
        "Quit"};
    EXPECT_EQ(linesOf(pressureKeyText(r)), expected);
}

TEST(PressureScript, ViscousSequenceByLiftCoefficient) {
    PressureRequest r;
    r.outline = "/d/E387.DAT";
    r.Re = "100000";
    r.viscousRe = "120000";
    r.viscous = true;
    r.reType = 3;
    r.iterations = 50;
    r.byCl = true;
    r.point = "0.5";
    r.cpMin = -2.7;
    r.sequence = sequencePoints(0.2, 0.4, 0.1);
    const std::vector<std::string> expected = {
        "plop", "W 0.01", "", "Load /d/E387.DAT", "gdes", "name aaa", "", "Pane", "", "oper", "RE 100000", "Type",
        "3", "iter", "50", "cl 0.5", "RE 120000", "visc", "cl 0.5", "Cpmn", "Cpmi 2", "Cpx", "PACC", "PRESSURE.TXT",
        "", "cl 0.2", "cl 0.3", "cl 0.4", "dump PRESSURE.cp", "", "Quit"};
    EXPECT_EQ(linesOf(pressureKeyText(r)), expected);
}

TEST(PressureScript, NeverSendsTheCpAxisMinimumThatKillsXfoil) {
    // -1.5 would give "Cpmi 1": XFOIL's axis from 1 to 1 divides by zero.
    EXPECT_EQ(cpmiValue(-1.5), "-2");
    EXPECT_EQ(cpmiValue(-1.0), "-2");
    EXPECT_EQ(cpmiValue(-0.8), "0");
    EXPECT_EQ(cpmiValue(-2.3), "2");
    EXPECT_EQ(cpmiValue(0.4), "0");
    EXPECT_EQ(cpmiValue(NAN), "0");
}

TEST(PressureScript, SequencePoints) {
    EXPECT_EQ(sequencePoints(1, 3, 0.5), (std::vector<std::string>{"1", "1.5", "2", "2.5", "3"}));
    // Downwards whatever the sign of the step; no binary residue of the sums.
    EXPECT_EQ(sequencePoints(0.3, 0, 0.1), (std::vector<std::string>{"0.3", "0.2", "0.1", "0"}));
    EXPECT_EQ(sequencePoints(-1, 1, 0.25).size(), 9u);
    EXPECT_EQ(sequencePoints(0, 1000, 0.1).size(), static_cast<size_t>(kMaxSequencePoints));
    EXPECT_TRUE(sequencePoints(0, NAN, 0.1).empty());
}

TEST(PressureScript, CommandFileNamesTheScript) {
    EXPECT_EQ(xfoilCommandText("/usr/bin/xfoil", "/home/u/tv", kPressureKeyFile),
              "cd /usr/bin/\nxfoil < /home/u/tv/Pressure.Key\n");
}

TEST(PressureFiles, InviscidCpwrOfXfoil) {
    const PressureDistribution d = readPressureDistribution(sample("CLARKY_inv.cp"), 0);
    EXPECT_FALSE(d.viscous);
    ASSERT_EQ(d.cp.size(), 160u);
    EXPECT_DOUBLE_EQ(d.cp.front().x, 1.0);
    EXPECT_DOUBLE_EQ(d.cp.front().y, 0.44353);
    EXPECT_DOUBLE_EQ(d.cpMin, -0.99734);
    EXPECT_NEAR(d.speed.front().y, std::sqrt(1 - 0.44353), 1e-12);
    // An inviscid run has no boundary layer: only the surface speed.
    EXPECT_EQ(d.quantities.size(), 1u);
    EXPECT_TRUE(d.quantities.count("UE"));
}

TEST(PressureFiles, ViscousDumpOfXfoilIsReadByItsColumns) {
    const PressureDistribution d = readPressureDistribution(sample("CLARKY_visc.dump"), 250000);
    ASSERT_TRUE(d.viscous);
    // 160 points on the airfoil; the 23 wake rows are off the chord.
    ASSERT_EQ(d.cp.size(), 160u);
    // First row: s 0, x 1, Ue/Vinf 0.90526.
    EXPECT_DOUBLE_EQ(d.cp[0].x, 1.0);
    EXPECT_NEAR(d.cp[0].y, 1 - 0.90526 * 0.90526, 1e-12);
    EXPECT_DOUBLE_EQ(d.quantities.at("H")[0].y, 1.7620);
    EXPECT_DOUBLE_EQ(d.quantities.at("CF")[0].y, 0.001817);
    EXPECT_NEAR(d.quantities.at("RT")[0].y, 250000 * 0.90526 * 0.005162, 1e-9);
    // Top and bottom displacement thickness share the points between them.
    EXPECT_EQ(d.quantities.at("DT").size() + d.quantities.at("DB").size(), 160u);
    EXPECT_FALSE(d.quantities.count("N"));
    for (const ChartPoint& p : d.cp) EXPECT_LE(p.y, 1.0);
}

TEST(PressureFiles, OverflowAndNaNLines) {
    const std::string text =
        "#      x          Cp  \n"
        "     1.00000    0.44353\n"
        "\n"
        "# a comment\n"
        "     0.99000    ******\n"
        "     0.98000   -0.50000\n"
        "     0.97000        NaN\n"
        "     0.96000   -3.00000\n";
    const PressureDistribution d = readPressureDistribution(text, 0);
    ASSERT_EQ(d.cp.size(), 2u);
    EXPECT_DOUBLE_EQ(d.cpMax, 0.44353);
    EXPECT_DOUBLE_EQ(d.cpMin, -0.5);
    EXPECT_FALSE(readPressureDistribution("", 0).hasCp());
    EXPECT_FALSE(readPressureDistribution("#      x          Cp\n", 0).hasCp());
}

TEST(PressureFiles, AccumulatedPolar) {
    const PressurePoint v = readPressurePolar(sample("CLARKY_visc.TXT"));
    ASSERT_TRUE(v.hasRe);
    EXPECT_DOUBLE_EQ(v.Re, 250000);
    ASSERT_TRUE(v.hasRow);  // the last row of the sequence
    EXPECT_DOUBLE_EQ(v.alpha, 2.5);
    EXPECT_DOUBLE_EQ(v.cl, 0.6898);
    EXPECT_DOUBLE_EQ(v.cd, 0.00958);
    EXPECT_DOUBLE_EQ(v.cdp, 0.00209);
    EXPECT_DOUBLE_EQ(v.cm, -0.0866);
    // A point computed before PACC is not accumulated: no row.
    const PressurePoint inv = readPressurePolar(sample("CLARKY_inv_norow.TXT"));
    EXPECT_TRUE(inv.hasRe);
    EXPECT_DOUBLE_EQ(inv.Re, 0);
    EXPECT_FALSE(inv.hasRow);
    std::string broken = sample("CLARKY_visc.TXT");
    broken.replace(broken.find("   2.500"), 8, "     NaN");
    const PressurePoint cut = readPressurePolar(broken);
    EXPECT_DOUBLE_EQ(cut.alpha, 2.0);
}

TEST(PressureRun, RealXfoilInviscidPoint) {
    PressureHome h;
    Workbench& wb = *h.wb;
    wb.sheet.set(F_AERO::TCL, "0.1234");
    const PressureRun run = Calc_Pressure(wb);
    ASSERT_TRUE(run.result) << run.reason;
    EXPECT_FALSE(run.row);
    EXPECT_GT(wb.pressure.shown.cp.size(), 100u);
    EXPECT_LT(wb.sheet.val(F_AERO::T_CpMin), -0.5);
    EXPECT_EQ(wb.sheet.text(F_AERO::TCL), "0.1234");  // as it was: a single point has no row
    EXPECT_FALSE(h.anyRunFile());
}

TEST(PressureRun, RealXfoilViscousSequence) {
    PressureHome h;
    Workbench& wb = *h.wb;
    wb.sheet.set(F_AERO::Ch_Visc, "1");
    wb.sheet.set(F_AERO::Check5, "1");
    wb.sheet.set(F_AERO::T_Red, "1");
    wb.sheet.set(F_AERO::Text9, "2");
    wb.sheet.set(F_AERO::Text8, "0.5");
    // A minimum Cp between -1 and -2 before the run: the line that would kill XFOIL.
    wb.sheet.set(F_AERO::T_CpMin, "-1.4");
    const PressureRun run = Calc_Pressure(wb);
    ASSERT_TRUE(run.result) << run.reason;
    ASSERT_TRUE(run.row);
    EXPECT_EQ(wb.sheet.text(F_AERO::TRE), "250000");
    EXPECT_EQ(wb.sheet.text(F_AERO::TALFA), "2.000");
    EXPECT_EQ(wb.sheet.text(F_AERO::Text4), "3");
    EXPECT_GT(wb.sheet.val(F_AERO::TCL), 0.3);
    EXPECT_TRUE(wb.pressure.shown.viscous);
    EXPECT_FALSE(h.anyRunFile());
}

TEST(PressureRun, BadInputGivesOneLineAndNoFiles) {
    PressureHome h;
    Workbench& wb = *h.wb;
    const std::string before = wb.sheet.text(F_AERO::T_CpMax);
    for (const char* re : {"0", "abc", "-5"}) {
        wb.sheet.set(F_AERO::T_Re, re);
        const PressureRun run = Calc_Pressure(wb);
        EXPECT_FALSE(run.result);
        EXPECT_NE(run.reason.find("Reynolds"), std::string::npos) << run.reason;
        EXPECT_EQ(wb.sheet.text(F_AERO::Status), run.reason);
    }
    wb.sheet.set(F_AERO::T_Re, "250000");
    // An outline that is missing, then one that holds no point.
    fs::remove(h.dir / "DATA" / "CLARKY.DAT");
    PressureRun run = Calc_Pressure(wb);
    EXPECT_NE(run.reason.find("introuvable"), std::string::npos) << run.reason;
    writeBytes(h.dir / "DATA" / "CLARKY.DAT", "not an airfoil\n");
    run = Calc_Pressure(wb);
    EXPECT_FALSE(run.result) << run.reason;
    EXPECT_FALSE(run.reason.empty());
    EXPECT_EQ(wb.sheet.text(F_AERO::T_CpMax), before);
    EXPECT_TRUE(wb.pressure.shown.cp.empty());
    EXPECT_FALSE(h.anyRunFile());
}

TEST(PressureRun, MissingCrashingAndHangingSolver) {
    PressureHome h;
    Workbench& wb = *h.wb;
    wb.settings.xfoilPath = (h.dir / "nothing" / "xfoil").string();
    EXPECT_NE(Calc_Pressure(wb).reason.find("introuvable"), std::string::npos);
    writeBytes(h.dir / "crash.sh", "#!/bin/sh\necho half > PRESSURE.cp\nkill -SEGV $$\n");
    fs::permissions(h.dir / "crash.sh", fs::perms::owner_all);
    wb.settings.xfoilPath = (h.dir / "crash.sh").string();
    PressureRun run = Calc_Pressure(wb);
    EXPECT_FALSE(run.result);
    EXPECT_FALSE(run.reason.empty());
    writeBytes(h.dir / "hang.sh", "#!/bin/sh\nsleep 30\n");
    fs::permissions(h.dir / "hang.sh", fs::perms::owner_all);
    wb.settings.xfoilPath = (h.dir / "hang.sh").string();
    wb.settings.xfoilTimeout = 1;
    run = Calc_Pressure(wb);
    EXPECT_FALSE(run.result);
    EXPECT_NE(run.reason.find("temps limite"), std::string::npos) << run.reason;
    EXPECT_TRUE(wb.pressure.shown.cp.empty());
    EXPECT_FALSE(h.anyRunFile());
}

TEST(PressureWindow, EntriesRunOnlyWhileOpenAndNeverOverlap) {
    PressureHome h;
    Workbench& wb = *h.wb;
    // A change made while a run waits (events served between the waits) is
    // computed after it, never alongside.
    int runsEnded = 0;
    bool nested = false;
    wb.serveEvents = [&] {
        if (!nested) {
            nested = true;
            RunPressure(wb);  // the user's second change during the wait
        }
    };
    writeBytes(h.dir / "slow.sh", "#!/bin/sh\nsleep 1.2\n");
    fs::permissions(h.dir / "slow.sh", fs::perms::owner_all);
    wb.settings.xfoilPath = (h.dir / "slow.sh").string();
    RunPressure(wb);  // closed: nothing
    EXPECT_TRUE(wb.sheet.text(F_AERO::Status).empty());
    wb.setOpen(button::Aero, true);
    struct Counting : Progress {
        int& n;
        explicit Counting(int& c) : n(c) {}
        void report(const std::string&, double f) override { n += f == 1.0; }
    } counting(runsEnded);
    wb.solverProgress["F_AERO"] = &counting;
    RunPressure(wb);
    EXPECT_TRUE(nested);
    EXPECT_FALSE(wb.pressure.running);
    EXPECT_EQ(runsEnded, 2);
    EXPECT_FALSE(h.anyRunFile());
}

TEST(PressureWindow, UndoComputesTheRestoredPointAgain) {
    PressureHome h;
    Workbench& wb = *h.wb;
    wb.setOpen(button::Aero, true);
    PanelOpened(wb, button::Aero);
    const std::string atTwo = wb.sheet.text(F_AERO::T_CpMin);
    ASSERT_FALSE(atTwo.empty());
    enterField(wb, F_AERO::T_alphad, "6");
    EXPECT_EQ(wb.sheet.text(F_AERO::T_Alpha), "60");
    EXPECT_NE(wb.sheet.text(F_AERO::T_CpMin), atTwo);
    ASSERT_TRUE(Undo(wb));
    EXPECT_EQ(wb.sheet.text(F_AERO::T_Alpha), "20");
    EXPECT_EQ(wb.sheet.text(F_AERO::T_CpMin), atTwo);
    // The charts show the restored point, not the undone one.
    ASSERT_FALSE(wb.pressure.shown.cp.empty());
    EXPECT_EQ(fixed(wb.pressure.shown.cpMin, 4), atTwo);
    EXPECT_FALSE(h.anyRunFile());
}
