#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <sstream>

#include "project/profile_file.h"
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

TEST(CliFields, UnknownFieldOrCommandIsAUsageError) {
    Home h;
    EXPECT_EQ(cli({"fields", h.demo(), "--home", h.home(), "--set", "F_GEO_SF.zz=1"}).status, 2);
    EXPECT_EQ(cli({"frobnicate"}).status, 2);
    EXPECT_EQ(cli({"fields", h.demo(), "--open", "x"}).status, 2);
}
