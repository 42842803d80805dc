#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <map>
#include <sstream>

#include "airfoils/catalogue_edit.h"
#include "core/numbers.h"
#include "core/profile_file.h"
#include "shell/cli.h"
#include "support/temp_dir.h"

using namespace tarvokin;
using tarvokin::test::TempDir;

namespace {

struct CliRun {
    int status;
    std::string out, err;
    std::map<std::string, std::string> fields;
};

CliRun cli(std::vector<std::string> args) {
    std::ostringstream out, err;
    CliRun r;
    r.status = runCli(args, TARVOKIN_CLI, out, err);
    r.out = out.str();
    r.err = err.str();
    std::istringstream lines(r.out);
    std::string line;
    while (std::getline(lines, line)) {
        auto eq = line.find('=');
        if (eq != std::string::npos) r.fields[line.substr(0, eq)] = line.substr(eq + 1);
    }
    return r;
}

struct Home {
    TempDir dir;
    Home() { test::copyInstallation(dir.path()); }
    std::string demo() const { return (dir.path() / "MODELES" / "DEMO.MDL").string(); }
    std::string home() const { return dir.path().string(); }
};

}  // namespace

TEST(CliFields, PrintsEveryCellSortedWithListPositions) {
    Home h;
    CliRun r = cli({"fields", h.demo(), "--home", h.home()});
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.fields["F_3D.T_NOM_Modele"], "Démo Planeur 2m20");
    EXPECT_EQ(r.fields["F_GEO_SF.b5"], "230");
    EXPECT_EQ(r.fields["F_3D.Combo5"], "CLARKY");
    EXPECT_EQ(r.fields["F_3D.Combo5.ListIndex"], "4");
    EXPECT_EQ(r.fields["F_PROFILS.CB_1(1)"], "Générique Début");
    EXPECT_EQ(r.fields["F_Main.Toolbar2(17).Tag"], "0");
    EXPECT_TRUE(r.fields.count("F_GEO_STAB.b21.ListIndex"));
    std::vector<std::string> lines;
    std::istringstream in(r.out);
    // A value may hold a line end (the centring summary): sort order is that of the cell lines.
    for (std::string l; std::getline(in, l);) {
        if (l.rfind("F_", 0) == 0) lines.push_back(l);
    }
    EXPECT_TRUE(std::is_sorted(lines.begin(), lines.end()));
    EXPECT_GT(lines.size(), 300u);
}

TEST(CliFields, SetIsAUsersEntryFollowedByItsHandler) {
    Home h;
    CliRun before = cli({"fields", h.demo(), "--home", h.home()});
    CliRun after = cli({"fields", h.demo(), "--home", h.home(), "--set", "F_GEO_SF.b7=700"});
    ASSERT_EQ(after.status, 0) << after.err;
    EXPECT_EQ(after.fields["F_GEO_SF.b7"], "700");
    // Enter recalculated the span: 2 x (700 + 450).
    EXPECT_EQ(after.fields["F_GEO_SF.j6"].rfind("2300", 0), 0u) << after.fields["F_GEO_SF.j6"];
    EXPECT_NE(after.fields["F_GEO_SF.j4"], before.fields["F_GEO_SF.j4"]);
    // A mass of 0 is replaced by 500 by the field's own rule.
    CliRun mass = cli({"fields", h.demo(), "--home", h.home(), "--set", "F_GEO_SF_REGLAGES.H30=0"});
    EXPECT_EQ(mass.fields["F_GEO_SF_REGLAGES.H30"], "500");
}

TEST(CliFields, OpenMarksToolbarButtonsBeforeTheLoad) {
    Home h;
    CliRun r = cli({"fields", h.demo(), "--home", h.home(), "--open", "10", "--open", "13"});
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.fields["F_Main.Toolbar2(10).Tag"], "1");
    EXPECT_EQ(r.fields["F_Main.Toolbar2(13).Tag"], "1");
}

TEST(CliFields, UnreadableProjectsFailWithAMessage) {
    Home h;
    CliRun missing = cli({"fields", h.home() + "/nothing.MDL", "--home", h.home()});
    EXPECT_EQ(missing.status, 1);
    EXPECT_TRUE(missing.out.empty());
    EXPECT_NE(missing.err.find("nothing.MDL"), std::string::npos);

    const std::string junk = h.home() + "/junk.MDL";
    test::writeBytes(junk, std::string("\x00\x01\xff[[[\n=garbage\n", 17));
    CliRun notProject = cli({"fields", junk, "--home", h.home()});
    EXPECT_EQ(notProject.status, 1);
    EXPECT_FALSE(notProject.err.empty());

    const std::string bad = h.home() + "/bad.MDL";
    std::filesystem::copy_file(h.demo(), bad);
    WriteProfileString("Aile", "Saumon_1", "douze", bad);
    CliRun nonNumeric = cli({"fields", bad, "--home", h.home()});
    EXPECT_EQ(nonNumeric.status, 1);
    EXPECT_EQ(nonNumeric.err.rfind("[#7] ", 0), 0u) << nonNumeric.err;
}

TEST(CliFields, AFileThatCannotBeWrittenFailsTheCommand) {
    Home h;
    std::filesystem::permissions(h.demo(), std::filesystem::perms(0444));
    const std::string before = test::readBytes(h.demo());
    // Choosing a motor writes it to the project at once.
    CliRun r = cli({"fields", h.demo(), "--home", h.home(), "--open", "20", "--set",
                    "F_MOTORISATIONS.CB_MOT=AXI@2820/10"});
    EXPECT_EQ(r.status, 1);
    EXPECT_NE(r.err.find("lecture seule"), std::string::npos) << r.err;
    EXPECT_EQ(test::readBytes(h.demo()), before);
}

TEST(CliFields, ReadingAProjectWritesNothing) {
    Home h;
    const std::filesystem::path catalogue = h.dir / "DATA" / "GENERIC.CSV";
    const auto old = std::filesystem::file_time_type::clock::now() - std::chrono::hours(48);
    std::filesystem::last_write_time(h.demo(), old);
    std::filesystem::last_write_time(catalogue, old);
    CliRun r = cli({"fields", h.demo(), "--home", h.home()});
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(std::filesystem::last_write_time(h.demo()), old);
    EXPECT_EQ(std::filesystem::last_write_time(catalogue), old);
}

TEST(CliFields, ReynoldsEstimateFollowsEachOfItsEntries) {
    Home h;
    CliRun r = cli({"fields", h.demo(), "--home", h.home(), "--set", "F_PROFILS.b6=36", "--set", "F_PROFILS.b5=30",
                    "--set", "F_PROFILS.B4=1.5"});
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.fields["F_PROFILS.T_RE"], "140000");
    // The demo's 40 km/h and 40 dm² with a span of 1.5 m instead of 2 m.
    CliRun span = cli({"fields", h.demo(), "--home", h.home(), "--set", "F_PROFILS.B4=1.5"});
    EXPECT_EQ(span.fields["F_PROFILS.T_RE"], plain(Calc_Re(40, 40, 1.5)));
    EXPECT_NE(span.fields["F_PROFILS.T_RE"], "155555");
}

TEST(CliOptions, EveryCommandTakesHomeAndHelp) {
    Home h;
    const std::string pol = h.home() + "/POLAIRES/CLARKY_220000.POL";
    EXPECT_EQ(cli({"polar", pol, "--home", h.home()}).status, 0);
    for (const char* command : {"fields", "perf", "polar", "cx", "compute-polar", "plan"}) {
        for (const char* help : {"--help", "-h"}) {
            CliRun r = cli({command, help});
            EXPECT_EQ(r.status, 0) << command;
            // The usage of every command.
            for (const char* each : {"fields ", "perf ", "polar ", "cx ", "compute-polar ", "plan "})
                EXPECT_NE(r.out.find(std::string("tarvokin-cli ") + each), std::string::npos) << command << each;
        }
    }
    EXPECT_EQ(cli({"--help"}).status, 0);
    EXPECT_EQ(cli({}).status, 2);
}

TEST(CliFields, UnknownFieldOrCommandIsAUsageError) {
    Home h;
    EXPECT_EQ(cli({"fields", h.demo(), "--home", h.home(), "--set", "F_GEO_SF.zz=1"}).status, 2);
    EXPECT_EQ(cli({"frobnicate"}).status, 2);
    EXPECT_EQ(cli({"fields", h.demo(), "--open", "x"}).status, 2);
}

TEST(CliPolar, ReportsTheRecordAndFailsOnAnUnreadableFile) {
    Home h;
    const std::string pol = h.home() + "/POLAIRES/CLARKY_220000.POL";
    CliRun r = cli({"polar", pol});
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.fields["Re"], "220000");
    EXPECT_EQ(r.out.find("row,Alpha,Cz,Cx,CzExt,CxExt,Cm\n0,-4,"), r.out.find("row,"));
    const int last = std::stoi(r.fields["LastRow"]);
    EXPECT_GT(last, 40);
    // With --re-index the record is the one named, whatever the file's name says.
    EXPECT_EQ(cli({"polar", pol, "--re-index", "5"}).fields["Re"], "1500000");
    test::writeBytes(h.home() + "/junk_25000.POL", "no polar here\n");
    CliRun bad = cli({"polar", h.home() + "/junk_25000.POL"});
    EXPECT_EQ(bad.status, 1);
    EXPECT_TRUE(bad.out.empty());
}

TEST(CliCx, AnswersEachQueryAfterTheSlotsAreFilled) {
    Home h;
    CliRun r = cli({"cx", h.demo(), "--home", h.home(), "--at", "0,220000,0.5", "--at", "2,1500000,0.3", "--at",
                    "1,220000,0.5"});
    ASSERT_EQ(r.status, 0) << r.err;
    std::istringstream in(r.out);
    std::vector<double> v;
    for (std::string l; std::getline(in, l);) v.push_back(std::stod(l));
    ASSERT_EQ(v.size(), 3u);
    EXPECT_GT(v[0], 0.005);
    EXPECT_LT(v[0], 0.03);
    EXPECT_GT(v[1], 0.003);
    // Slot 1 is "Générique Début", the alias of CLARKY in slot 0: the same drag.
    EXPECT_DOUBLE_EQ(v[2], v[0]);
    EXPECT_EQ(cli({"cx", h.demo(), "--at", "0,1"}).status, 2);
}

TEST(CliComputePolar, OneXfoilRunWithTheInstallationSettings) {
    Home h;
    const std::string out = h.home() + "/e.pol";
    CliRun r = cli({"compute-polar", h.home() + "/DATA/E387.DAT", "E387", "100000", "--out", out, "--home", h.home()});
    ASSERT_EQ(r.status, 0) << r.err;
    CliRun p = cli({"polar", out, "--re-index", "2"});
    ASSERT_EQ(p.status, 0);
    // The shipped settings sweep -4 to 14 degrees by 0.25.
    EXPECT_NE(p.out.find("\n0,-4,"), std::string::npos);
    CliRun missing = cli({"compute-polar", h.home() + "/DATA/NONE.DAT", "NONE", "100000", "--home", h.home()});
    EXPECT_EQ(missing.status, 1);
    EXPECT_FALSE(missing.err.empty());
}

TEST(CliComputePolar, ARunWithoutAConvergedPointFails) {
    Home h;
    const std::string out = h.home() + "/e.pol";
    const std::string solver = h.home() + "/fake-xfoil";
    test::writeBytes(solver, "#!/bin/sh\nprintf ' XFOIL\\n   alpha    CL\\n  ------ --------\\n' > " + out + "\n");
    std::filesystem::permissions(solver, std::filesystem::perms::owner_all);
    WriteProfileString("XFOIL", "Path", solver, h.home() + "/TARVOKIN.INI");
    CliRun r = cli({"compute-polar", h.home() + "/DATA/E387.DAT", "E387", "100000", "--out", out, "--home", h.home()});
    EXPECT_EQ(r.status, 1);
    EXPECT_NE(r.err.find("aucun point convergé"), std::string::npos) << r.err;
    EXPECT_TRUE(r.out.empty());
}

TEST(CliPlan, WritesTheChosenPlanAtTrueScaleAndPrintsItsTexts) {
    Home h;
    const std::string svg = h.home() + "/centrage.svg", dxf = h.home() + "/dessus.dxf";
    CliRun r = cli({"plan", h.demo(), "--home", h.home(), "--svg", svg});
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_NE(r.fields["b30"].find(" % cam) / Cz aile = "), std::string::npos) << r.fields["b30"];
    EXPECT_EQ(test::readBytes(svg).rfind("<?xml", 0), 0u);

    // Without a fuselage the plan view has no frame spacings.
    r = cli({"plan", h.demo(), "--home", h.home(), "--view", "dessus", "--dxf", dxf});
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_NE(r.out.find(" m/m"), std::string::npos);
    r = cli({"plan", h.demo(), "--home", h.home(), "--view", "dessus", "--set", "F_GEO_FUS.b24=0", "--dxf", dxf});
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.out.find(" m/m"), std::string::npos);
    EXPECT_NE(test::readBytes(dxf).find("ENTITIES"), std::string::npos);

    r = cli({"plan", h.demo(), "--view", "arriere"});
    EXPECT_EQ(r.status, 2);
    EXPECT_NE(r.err.find("vue inconnue"), std::string::npos);
    r = cli({"plan", h.demo(), "--home", h.home(), "--svg", h.home() + "/no/such/folder/p.svg"});
    EXPECT_EQ(r.status, 1);
}

namespace {

// The rows of the perf command's CSV after its header line, as numbers.
std::vector<std::vector<double>> perfRows(const std::string& out, std::string& header) {
    std::istringstream in(out);
    std::getline(in, header);
    std::vector<std::vector<double>> rows;
    for (std::string line; std::getline(in, line);) {
        std::vector<double> row;
        std::istringstream cells(line);
        for (std::string c; std::getline(cells, c, ',');) row.push_back(std::stod(c));
        rows.push_back(row);
    }
    return rows;
}

}  // namespace

TEST(CliPerf, PrintsTheSixFoldedTablesAsCsv) {
    Home h;
    CliRun r = cli({"perf", h.demo(), "--home", h.home()});
    ASSERT_EQ(r.status, 0) << r.err;
    std::string header;
    const auto rows = perfRows(r.out, header);
    EXPECT_EQ(header,
              "slot,index,CzProfil,CzAvion,ReAile,CxProfil,CxInduit,ReFuselage,CxFuselage,ReStab,CxStab,CzStab,"
              "CxInduitStab,CxTotal,V,VKmh,Vz,Finesse,PuissanceAero");
    ASSERT_EQ(rows.size(), 6u * 26u);
    EXPECT_EQ(rows[27][0] + rows[27][1], 2);  // slot 1, point 1
    for (const auto& row : rows) {
        ASSERT_EQ(row.size(), 19u);
        EXPECT_LT(row[16], 0);  // the model sinks at every point
        EXPECT_GT(row[10], 0);  // the tail's drag counts while the panel is closed
    }

    // Open, the panel's switches count: without "Stab" there is no tail drag;
    // the same entry changes nothing while the panel is closed.
    CliRun noStab = cli({"perf", h.demo(), "--home", h.home(), "--open", "17", "--set", "F_GEO_3.Check1=0"});
    ASSERT_EQ(noStab.status, 0) << noStab.err;
    for (const auto& row : perfRows(noStab.out, header)) EXPECT_EQ(row[10] + row[12], 0);
    EXPECT_EQ(cli({"perf", h.demo(), "--home", h.home(), "--set", "F_GEO_3.Check1=0"}).out, r.out);

    CliRun fields = cli({"fields", h.demo(), "--home", h.home(), "--open", "17"});
    EXPECT_EQ(fields.fields["F_GEO_3.Text1"], "1.16");
    EXPECT_NE(fields.fields["F_GEO_SF_REGLAGES.C32"], "0");
}

TEST(CliFields, PowerWindowsComputeWhenOpenedAndOnSet) {
    Home h;
    CliRun r = cli({"fields", h.demo(), "--home", h.home(), "--open", "21", "--open", "20", "--open", "19",
                    "--set", "F_SERVOS.b9=300", "--set", "F_SERVOS.b7=40", "--set", "F_SERVOS.b8=60", "--set",
                    "F_SERVOS.B10=20", "--set", "F_SERVOS.b12=45", "--set", "F_SERVOS.b5=120", "--set",
                    "F_STAB.D11=8", "--set", "F_STAB.D12=8"});
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.fields["F_Main.Toolbar2(20).Tag"], "1");
    // 0.34592 Kg/cm at 100 km/h, times 1.44 at 120.
    EXPECT_EQ(r.fields["F_SERVOS.b13"], "0.50");
    EXPECT_EQ(r.fields["F_SERVOS.b11"], "14.56");
    EXPECT_EQ(r.fields["F_STAB.D15"], "45.01");
    EXPECT_EQ(r.fields["F_STAB.D16"], "89.98");
    // The demo's 3 Lipo cells and 18 A: the motor tab and the proposal are filled.
    EXPECT_EQ(r.fields["F_3D.b7"], "10.5");
    EXPECT_EQ(r.fields["F_3D.B89"], "85 %");
    EXPECT_EQ(r.fields["F_CALC_MOT.PM"], "125");
    EXPECT_EQ(r.fields["F_MOTORISATIONS.CB_MOT.ListIndex"], "-1");
    // Without the window open, only the field's own calculation runs.
    CliRun quiet = cli({"fields", h.demo(), "--home", h.home(), "--set", "F_STAB.D11=8"});
    EXPECT_EQ(quiet.fields["F_SERVOS.b13"], "-");
    EXPECT_EQ(quiet.fields["F_CALC_MOT.PM"], "-");
    EXPECT_EQ(quiet.fields["F_STAB.D15"], "0.00");
}

TEST(CliFields, EntriesRunInOrderThroughTheWindowsHandlers) {
    Home h;
    const CliRun plain = cli({"fields", h.demo(), "--home", h.home(), "--open", "17"});
    const CliRun set = cli({"fields", h.demo(), "--home", h.home(), "--open", "17", "--set", "F_GEO_SF.b7=900"});
    ASSERT_EQ(plain.status, 0);
    EXPECT_NE(set.out, plain.out);
    EXPECT_EQ(cli({"fields", h.demo(), "--home", h.home(), "--open", "17", "--set", "F_GEO_SF.b7=900", "--undo"}).out,
              plain.out);
    EXPECT_EQ(cli({"fields", h.demo(), "--home", h.home(), "--open", "17", "--set", "F_GEO_SF.b7=900", "--undo",
                   "--redo"})
                  .out,
              set.out);
    // An undo with nothing to undo changes nothing.
    EXPECT_EQ(cli({"fields", h.demo(), "--home", h.home(), "--open", "17", "--undo"}).out, plain.out);

    const CliRun up = cli({"fields", h.demo(), "--home", h.home(), "--open", "17", "--click", "F_GEO_3.Command1(1)"});
    EXPECT_EQ(std::stod(up.fields.at("F_GEO_3.Text2")), std::stod(plain.fields.at("F_GEO_3.Text2")) + 100);
    EXPECT_EQ(cli({"fields", h.demo(), "--home", h.home(), "--click", "F_GEO_3.Nope"}).status, 2);
    EXPECT_EQ(cli({"fields", h.demo(), "--home", h.home(), "--click", "Command1"}).status, 2);
}

TEST(CliPressure, PrintsTheFieldsThenBothCurves) {
    Home h;
    const CliRun r = cli({"pressure", "--home", h.home(), "--set", "F_AERO.Combo5=E387", "--set", "F_AERO.Ch_Visc=1",
                          "--set", "F_AERO.Check5=1", "--set", "F_AERO.Text9=1", "--set", "F_AERO.Text8=0.5",
                          "--set", "F_AERO.Combo1=Cf"});
    ASSERT_EQ(r.status, 0) << r.err;
    const std::vector<std::string> order = {"F_AERO.TCL=", "F_AERO.TCD=", "F_AERO.TCDP=", "F_AERO.TCM=",
                                            "F_AERO.TRE=", "F_AERO.TALFA=", "F_AERO.T_CpMax=", "F_AERO.T_CpMin=",
                                            "# Cp\n", "# Cf\n"};
    size_t at = 0;
    for (const std::string& s : order) {
        const size_t next = r.out.find(s, at);
        ASSERT_NE(next, std::string::npos) << s;
        at = next;
    }
    EXPECT_EQ(r.fields.at("F_AERO.TRE"), "250000");
    EXPECT_EQ(r.fields.at("F_AERO.TALFA"), "1.000");
    // The curves: "x,value" lines under each heading.
    const std::string cp = r.out.substr(r.out.find("# Cp\n") + 5, 40);
    EXPECT_NE(cp.find(','), std::string::npos);
    EXPECT_EQ(r.out.find("nan"), std::string::npos);
    EXPECT_EQ(r.out.find("inf"), std::string::npos);
}

TEST(CliPressure, NoResultIsExitStatusOneWithTheReason) {
    Home h;
    CliRun r = cli({"pressure", "--home", h.home(), "--set", "F_AERO.T_Re=0"});
    EXPECT_EQ(r.status, 1);
    EXPECT_NE(r.err.find("Reynolds"), std::string::npos) << r.err;
    EXPECT_TRUE(r.out.empty());
    r = cli({"pressure", "--home", h.home(), "--set", "F_AERO.Nothing=1"});
    EXPECT_EQ(r.status, 2);
    for (const char* f : {"PRESSURE.CMD", "Pressure.Key", "PRESSURE.TXT", "PRESSURE.cp"})
        EXPECT_FALSE(std::filesystem::exists(h.dir / f)) << f;
}
