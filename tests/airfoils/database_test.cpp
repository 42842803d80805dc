#include <gtest/gtest.h>

#include <array>
#include <cstdio>

#include "airfoils/polar_database.h"
#include "airfoils/polar_interpolation.h"
#include "airfoils/polar_lookup.h"
#include "core/numbers.h"
#include "entry/database_logic.h"
#include "entry/entry_path.h"
#include "entry/interpolation_logic.h"
#include "entry/session.h"
#include "support/installed_workbench.h"
#include "support/temp_dir.h"

using namespace tarvokin;
namespace fs = std::filesystem;
using test::readBytes;
using test::TempDir;
using test::writeBytes;

namespace {

const char* kPolar =
    " Calculated polar for: X\n"
    " Mach =   0.000     Re =     0.100 e 6     Ncrit =   9.000  9.000\n"
    "   alpha    CL        CD       CDp       CM\n"
    "  ------ -------- --------- --------- --------\n"
    "   0.000   0.3000   0.01000   0.00300  -0.0800\n"
    "   ****    1.0000   0.02000   0.00300  -0.0800\n"
    "   1.000   0.4100   0.01100   0.00300  -0.0800\n"
    "   2.000      NaN   0.01200   0.00300  -0.0800\n"
    "   3.000   0.6000   0.01300   0.00300  -0.0800\n";

// The shipped installation in a temporary home.
struct Home {
    TempDir dir;
    std::unique_ptr<test::InstalledWorkbench> wb;
    Home() {
        test::copyInstallation(dir.path());
        wb = std::make_unique<test::InstalledWorkbench>(dir.path());
        ReadSettingsAndCatalogue(*wb);
        wb->askUser = [](const std::string&) { return true; };
    }
    fs::path polars() const { return dir / "POLAIRES"; }
};

const DatabaseAirfoil* find(const std::vector<DatabaseAirfoil>& tree, const std::string& name) {
    for (const DatabaseAirfoil& a : tree)
        if (a.name == name) return &a;
    return nullptr;
}

}  // namespace

TEST(DatabaseTree, OddNamesOfThePolarFolder) {
    TempDir dir;
    ProfilCatalogue cat;
    cat.rows = {{"Générique Début", 0, 0, "DATA/CLARKY.DAT"}, {"E387", 0, 0, "DATA/E387.DAT"}, {"S8036", 0, 0, "x"}};
    for (const char* f : {"CLARKY_100000.POL", "e387_25000.pol", "E387_1500000.POL", "E387_100000.POL",
                          "MY_FOIL_2_50000.POL", "NOUNDERSCORE.POL", "notes.txt", "E387_50000.POL.bak"})
        writeBytes(dir / f, "");
    fs::create_directory(dir / "SUB.POL");  // a folder is no polar... but listed by name; kept out below
    const auto tree = scanPolarFolder(dir.path(), cat);
    // The catalogue first, in its order, airfoils without polars included.
    ASSERT_GE(tree.size(), 3u);
    EXPECT_EQ(tree[0].name, "Générique Début");
    EXPECT_EQ(tree[1].name, "E387");
    EXPECT_EQ(tree[2].name, "S8036");
    // A generic airfoil's polars bear its outline's name.
    ASSERT_EQ(tree[0].polars.size(), 1u);
    EXPECT_EQ(tree[0].polars[0].file, "CLARKY_100000.POL");
    // Any letter case, by increasing Reynolds number.
    ASSERT_EQ(tree[1].polars.size(), 3u);
    EXPECT_EQ(tree[1].polars[0].file, "e387_25000.pol");
    EXPECT_EQ(tree[1].polars[1].Re, "100000");
    EXPECT_EQ(tree[1].polars[2].Re, "1500000");
    EXPECT_TRUE(tree[2].polars.empty());
    // Cut at the last "_"; a name without one is all airfoil; unknown kept.
    const DatabaseAirfoil* mine = find(tree, "MY_FOIL_2");
    ASSERT_TRUE(mine);
    EXPECT_FALSE(mine->known);
    EXPECT_EQ(mine->polars[0].Re, "50000");
    const DatabaseAirfoil* bare = find(tree, "NOUNDERSCORE");
    ASSERT_TRUE(bare);
    EXPECT_EQ(bare->polars[0].Re, "");
    EXPECT_FALSE(find(tree, "notes"));
    EXPECT_TRUE(scanPolarFolder(dir / "missing", cat).size() == 3u);
}

TEST(DatabaseTree, SimplePolarReader) {
    TempDir dir;
    writeBytes(dir / "X_100000.POL", kPolar);
    const DatabasePolarRead r = readDatabasePolar(dir / "X_100000.POL");
    ASSERT_TRUE(r.opened);
    EXPECT_NE(r.header.find("Re =     0.100 e 6"), std::string::npos);
    // "****" passed, "NaN" ends the rows.
    ASSERT_EQ(r.clAlpha.size(), 2u);
    EXPECT_DOUBLE_EQ(r.clAlpha[1].x, 1.0);
    EXPECT_DOUBLE_EQ(r.clCd[1].x, 0.011);
    EXPECT_DOUBLE_EQ(r.clCd[1].y, 0.41);
    writeBytes(dir / "EMPTY_1.POL", " header only\n  ------\n");
    EXPECT_TRUE(readDatabasePolar(dir / "EMPTY_1.POL").clAlpha.empty());
    EXPECT_FALSE(readDatabasePolar(dir / "none.POL").opened);
}

TEST(DatabaseCommands, DeletionsKeepCatalogueAndFilesConsistent) {
    Home h;
    Workbench& wb = *h.wb;
    wb.setOpen(button::Base, true);
    PanelOpened(wb, button::Base);
    writeBytes(h.polars() / "ORPHAN_1000.POL", kPolar);
    RefreshDatabaseTree(wb);
    ASSERT_TRUE(find(wb.database.tree, "ORPHAN"));

    // One polar, then every polar of an airfoil; a file already gone is no error.
    SelectDatabaseNode(wb, "E387", 0);
    const std::string first = wb.sheet.text(F_BASE::T_Polar);
    ASSERT_FALSE(first.empty());
    EXPECT_FALSE(wb.database.clAlpha.empty());
    ASSERT_TRUE(Click(wb, "F_BASE", "Command1"));
    EXPECT_FALSE(fs::exists(h.polars() / first));
    EXPECT_EQ(find(wb.database.tree, "E387")->polars.size(), 5u);
    EXPECT_EQ(DeletePolars(wb, "E387", first), 0);
    SelectDatabaseNode(wb, "E387", -1);
    Click(wb, "F_BASE", "Command1");
    EXPECT_TRUE(find(wb.database.tree, "E387")->polars.empty());
    EXPECT_TRUE(fs::exists(h.polars() / "E205_25000.POL"));

    // The airfoil: outline, polars, row, GENERIC.CSV; the slots keep theirs.
    const std::string slot0 = wb.sheet.text(F_PROFILS::CB_1[0]);
    SelectDatabaseNode(wb, "E205", -1);
    ASSERT_TRUE(Click(wb, "F_BASE", "Command6"));
    EXPECT_EQ(wb.catalogue.Find_Profil("E205"), kNotFound);
    EXPECT_FALSE(fs::exists(h.dir / "DATA" / "E205.DAT"));
    EXPECT_FALSE(fs::exists(h.polars() / "E205_25000.POL"));
    EXPECT_EQ(readBytes(h.dir / "DATA" / "GENERIC.CSV").find("E205"), std::string::npos);
    EXPECT_FALSE(find(wb.database.tree, "E205"));
    EXPECT_EQ(wb.sheet.text(F_PROFILS::CB_1[0]), slot0);
    EXPECT_EQ(wb.sheet.text(F_BASE::Text5), "NS");

    // A generic airfoil stays; answering No deletes nothing.
    SelectDatabaseNode(wb, "Générique Début", -1);
    Click(wb, "F_BASE", "Command6");
    EXPECT_NE(wb.catalogue.Find_Profil("Générique Début"), kNotFound);
    EXPECT_TRUE(fs::exists(h.dir / "DATA" / "CLARKY.DAT"));
    wb.askUser = [](const std::string&) { return false; };
    SelectDatabaseNode(wb, "AG25", -1);
    Click(wb, "F_BASE", "Command6");
    EXPECT_NE(wb.catalogue.Find_Profil("AG25"), kNotFound);
}

TEST(DatabaseCommands, EditedOutlineSavedAsANewAirfoil) {
    Home h;
    Workbench& wb = *h.wb;
    wb.setOpen(button::Base, true);
    PanelOpened(wb, button::Base);
    // Nothing chosen: the figure fields say so and take no value.
    EXPECT_EQ(wb.sheet.text(F_BASE::Text5), "NS");
    Slide(wb, F_BASE::Slider2[1], "1500");
    EXPECT_EQ(wb.sheet.text(F_BASE::Text5), "NS");

    SelectDatabaseNode(wb, "CLARKY", -1);
    const double thick = wb.sheet.val(F_BASE::Text5);
    EXPECT_NEAR(thick, 11.7, 0.5);
    EXPECT_EQ(wb.sheet.text(F_BASE::Slider2[1]), std::to_string(static_cast<int>(std::round(thick * 100))));
    Slide(wb, F_BASE::Slider2[1], "1500");
    SlideEnd(wb, F_BASE::Slider2[1]);
    EXPECT_NEAR(wb.sheet.val(F_BASE::Text5), 15.0, 0.2);
    enterField(wb, F_BASE::T_Camb, "2");
    EXPECT_NEAR(wb.sheet.val(F_BASE::T_Camb), 2.0, 0.2);

    const std::string slot0 = wb.sheet.text(F_PROFILS::CB_1[0]);
    Action save;
    save.form = "F_BASE";
    save.control = "Command5";
    save.text = "CLARKY15";
    ASSERT_TRUE(Perform(wb, save));
    ASSERT_TRUE(fs::exists(h.dir / "DATA" / "CLARKY15.DAT"));
    EXPECT_NE(wb.catalogue.Find_Profil("CLARKY15"), kNotFound);
    EXPECT_NE(readBytes(h.dir / "DATA" / "GENERIC.CSV").find("CLARKY15"), std::string::npos);
    EXPECT_TRUE(find(wb.database.tree, "CLARKY15"));
    EXPECT_EQ(wb.sheet.text(F_PROFILS::CB_1[0]), slot0);
    SelectDatabaseNode(wb, "CLARKY15", -1);
    EXPECT_NEAR(wb.sheet.val(F_BASE::Text5), 15.0, 0.3);
}

TEST(DatabaseCommands, AirfoilAddedFromTheSlotsReachesTheTreeWhenOnDisplay) {
    Home h;
    Workbench& wb = *h.wb;
    wb.setOpen(button::Base, true);
    PanelOpened(wb, button::Base);
    fs::copy_file(h.dir / "DATA" / "CLARKY.DAT", h.dir / "NEWFOIL.DAT");
    writeBytes(h.polars() / "NEWFOIL_25000.POL", kPolar);
    Action add;
    add.form = "F_PROFILS";
    add.control = "PB_PROFILE";
    add.index = 2;
    add.text = (h.dir / "NEWFOIL.DAT").string();
    ASSERT_TRUE(Perform(wb, add));
    const DatabaseAirfoil* a = find(wb.database.tree, "NEWFOIL");
    ASSERT_TRUE(a);
    EXPECT_TRUE(a->known);
    EXPECT_EQ(a->polars.size(), 1u);
}

TEST(Interpolation, WindowShowsTheValueOfTheCommandLineLookup) {
    Home h;
    Workbench& wb = *h.wb;
    wb.setOpen(button::TestPol, true);
    wb.sheet.selectText(F_TEST_POL::CB_1, "E387");
    PanelOpened(wb, button::TestPol);
    EXPECT_EQ(wb.sheet.text(F_TEST_POL::CB_1), "E387");
    enterField(wb, F_TEST_POL::Text1, "150000");
    enterField(wb, F_TEST_POL::Text2, "0.5");
    EXPECT_EQ(wb.sheet.text(F_TEST_POL::Slider1), "150");
    const double shown = wb.sheet.val(F_TEST_POL::T_Cx);

    // The design's lookup on the same polars: tarvokin-cli cx on a project
    // whose slot 0 holds the airfoil.
    const fs::path project = h.dir / "MODELES" / "DEMO.MDL";
    std::string text = readBytes(project);
    const size_t at = text.find("Profil_0=");
    ASSERT_NE(at, std::string::npos);
    text.replace(at, text.find('\n', at) - at, "Profil_0=E387");
    writeBytes(project, text);
    const std::string cmd = std::string(TARVOKIN_CLI) + " cx " + project.string() + " --home " + h.dir.path().string() +
                            " --at 0,150000,0.5 2>/dev/null";
    FILE* p = popen(cmd.c_str(), "r");
    ASSERT_TRUE(p);
    char buf[128] = {};
    ASSERT_TRUE(fgets(buf, sizeof buf, p));
    pclose(p);
    EXPECT_DOUBLE_EQ(shown, std::stod(buf));
    EXPECT_GT(shown, 0.0);

    // Between the two polars around Re, linear in 1/Re.
    const InterpolationView v =
        interpolationOf(wb.testPolars, 150000, 0.5, {true, true, true, true, true, true}, 0, 0);
    const double a = (v.cxAtCz[3] - v.cxAtCz[2]) / (1.0 / 220000 - 1.0 / 100000);
    EXPECT_NEAR(v.cx, a / 150000 + v.cxAtCz[2] - a / 100000, 1e-6);
    EXPECT_EQ(v.chart.series.size(), 6u);
    Tick(wb, F_TEST_POL::Check1[0], false);
    EXPECT_EQ(interpolationOf(wb.testPolars, 150000, 0.5, {false, true, true, true, true, true}, 0, 0).chart.series.size(), 5u);
    enterField(wb, F_TEST_POL::Text1, "abc");
    EXPECT_EQ(wb.sheet.text(F_TEST_POL::T_Cx), "-");
}

TEST(DatabaseCommands, DragAPointAndComputeAPolarForAChosenRe) {
    Home h;
    Workbench& wb = *h.wb;
    wb.settings.xfoilPath = "/usr/bin/xfoil";
    wb.setOpen(button::Base, true);
    PanelOpened(wb, button::Base);
    SelectDatabaseNode(wb, "AG25", -1);
    ASSERT_GT(wb.outlines.Outline.size(), 10u);
    const OutlinePoint before = wb.outlines.Outline[5];
    Action a;
    a.form = "F_BASE";
    a.control = "Picture1";
    a.button = 1;
    a.x = before.x + 0.001;
    a.y = before.y;
    a.act = Act::Press;
    Mouse(wb, a);
    a.act = Act::Move;
    a.y = before.y + 0.02;
    Mouse(wb, a);
    a.act = Act::Release;
    Mouse(wb, a);
    EXPECT_NEAR(wb.outlines.Outline[5].y, before.y + 0.02, 1e-12);
    EXPECT_EQ(wb.sheet.text(F_BASE::E_mouseupy), plain(before.y + 0.02));

    // A Reynolds number that is no number: one line, no run.
    enterField(wb, F_BASE::Text3, "abc");
    Click(wb, "F_BASE", "Command3");
    EXPECT_NE(wb.sheet.text(F_BASE::Status).find("Reynolds"), std::string::npos);
    enterField(wb, F_BASE::Text3, "123456");
    Click(wb, "F_BASE", "Command3");
    EXPECT_TRUE(fs::exists(h.polars() / "AG25_123456.POL")) << wb.sheet.text(F_BASE::Status);
    const DatabaseAirfoil* ag = find(wb.database.tree, "AG25");
    ASSERT_TRUE(ag);
    EXPECT_EQ(ag->polars.size(), 7u);
}

TEST(DatabaseCommands, ALoadElsewhereGivesItsFiguresToTheDatabaseOnDisplay) {
    Home h;
    Workbench& wb = *h.wb;
    wb.sheet.selectText(F_PROFILS::CB_1[1], "E387");
    Choose(wb, F_PROFILS::CB_1[1], wb.sheet.listIndex(F_PROFILS::CB_1[1]));
    EXPECT_EQ(wb.sheet.text(F_BASE::Text5), "NS");  // closed: the slot's row gets them
    wb.setOpen(button::Base, true);
    PanelOpened(wb, button::Base);
    wb.sheet.selectText(F_PROFILS::CB_1[1], "AG25");
    Choose(wb, F_PROFILS::CB_1[1], wb.sheet.listIndex(F_PROFILS::CB_1[1]));
    EXPECT_NE(wb.sheet.text(F_BASE::Text5), "NS");
    EXPECT_NEAR(wb.sheet.val(F_BASE::Slider2[1]) / 100.0, wb.sheet.val(F_BASE::Text5), 0.6);
}
