// The NACA generator as the window and the command line drive it: through
// the handlers of F_NACA, with undo, the saving, and the naca command.
#include <gtest/gtest.h>

#include <sstream>

#include "core/workbench.h"
#include "entry/entry_path.h"
#include "entry/session.h"
#include "airfoils/naca_generator.h"
#include "shell/cli.h"
#include "support/installed_workbench.h"
#include "support/temp_dir.h"

namespace tarvokin {
namespace {

struct NacaWindow : ::testing::Test {
    test::TempDir dir;
    test::InstalledWorkbench wb{dir.path()};
    void SetUp() override {
        test::copyInstallation(dir.path());
        ReadSettingsAndCatalogue(wb);
        wb.settings.xfoilPath.clear();  // the saving's polar run fails at once
    }
    void click(const char* control, int index) {
        Action a{Act::Click, "F_NACA", control, index};
        Perform(wb, a);
    }
    const std::string& cell(Cell c) { return wb.sheet.text(c); }
};

TEST_F(NacaWindow, FamilySetsItsInputsAndEveryChangeRegenerates) {
    click("Option1", naca::Five);
    EXPECT_EQ(cell(F_NACA::Option1[naca::Five]), "1");
    EXPECT_EQ(cell(F_NACA::Option1[naca::Four]), "0");
    EXPECT_EQ(cell(F_NACA::Label1[2]), "Type");
    EXPECT_EQ(cell(F_NACA::Label2[3]), "2 derniers Chiffres");
    EXPECT_EQ(cell(F_NACA::T_DESIGN[4]), "");
    EXPECT_EQ(cell(F_NACA::Label5), "NACA23012");
    EXPECT_EQ(cell(F_NACA::T_Thicknes), "12.00");

    // A slider move sets its field and the airfoil follows.
    Action slide{Act::Scroll, "F_NACA", "HScroll4", 3};
    slide.text = "15";
    Perform(wb, slide);
    EndEntry(wb);
    EXPECT_EQ(cell(F_NACA::T_DESIGN[3]), "15");
    EXPECT_EQ(cell(F_NACA::Label5), "NACA23015");
    // A typed point count moves its slider; the outline has 2N - 1 points.
    enterField(wb, F_NACA::T_NPP, "40");
    EXPECT_EQ(cell(F_NACA::H_Points), "40");
    EXPECT_EQ(wb.generators.naca.upper.size(), 40u);

    // Undo puts the fields back and the outline with them.
    ASSERT_TRUE(Undo(wb));
    EXPECT_EQ(wb.generators.naca.upper.size(), 100u);
    ASSERT_TRUE(Undo(wb));
    EXPECT_EQ(cell(F_NACA::Label5), "NACA23012");
    EXPECT_EQ(wb.generators.naca.name, "NACA23012");
}

TEST_F(NacaWindow, BadInputKeepsTheLastOutlineWithAReason) {
    click("Option1", naca::Four);
    const OutlinePoints before = wb.generators.naca.upper;
    ASSERT_FALSE(before.empty());
    enterField(wb, F_NACA::T_DESIGN[1], "0");  // position 0 under a camber of 2
    EXPECT_NE(cell(F_NACA::StatusBar1).find("division par zéro"), std::string::npos);
    EXPECT_EQ(wb.generators.naca.upper, before);
    EXPECT_EQ(cell(F_NACA::Label5), "NACA2412");
    enterField(wb, F_NACA::T_NPP, "1");
    EXPECT_NE(cell(F_NACA::StatusBar1).find("Nbre de Points"), std::string::npos);
    // Saving refuses what is not on show.
    click("Command2", -1);
    std::error_code ec;
    EXPECT_FALSE(std::filesystem::exists(dir / "DATA/NACA2412.DAT", ec));
    // Camber 0 makes the position harmless: a symmetric section.
    enterField(wb, F_NACA::T_NPP, "100");
    enterField(wb, F_NACA::T_DESIGN[0], "0");
    EXPECT_EQ(cell(F_NACA::StatusBar1), "");
    EXPECT_EQ(cell(F_NACA::Label5), "NACA0012");
}

TEST_F(NacaWindow, SavingWritesTheFileAndTheCatalogueButKeepsTheDesignsAirfoils) {
    Choose(wb, F_PROFILS::CB_1[1], static_cast<int>(wb.catalogue.Find_Profil("MH32")));
    const std::string slot1 = cell(F_PROFILS::CB_1[1]);
    click("Option1", naca::Series6);
    EXPECT_EQ(cell(F_NACA::Label5), "NACA64-212");
    click("Command2", -1);
    const std::string file = test::readBytes(dir / "DATA/NACA64-212.DAT");
    EXPECT_EQ(file, NacaOutlineText(wb.generators.naca));
    EXPECT_NE(wb.catalogue.Find_Profil("NACA64-212"), kNotFound);
    const auto& items = wb.sheet.items(F_RIBS::CB_1[0]);
    EXPECT_NE(std::find(items.begin(), items.end(), "NACA64-212"), items.end());
    EXPECT_EQ(cell(F_PROFILS::CB_1[1]), slot1);
    EXPECT_NE(test::readBytes(dir / "DATA/GENERIC.CSV").find("NACA64-212"), std::string::npos);
    EXPECT_NE(cell(F_NACA::StatusBar1).find("NACA64-212.DAT enregistré"), std::string::npos);
    // The mean line of the last generation lies beside the program.
    const std::string camber = test::readBytes(dir / "Camberline.TXT");
    EXPECT_EQ(std::count(camber.begin(), camber.end(), '\n'), 100);
    EXPECT_EQ(camber.substr(0, 20), "0.0000000 0.0000000\n");
}

struct CliRun {
    int status;
    std::string out, err;
};

CliRun cli(std::vector<std::string> args) {
    std::ostringstream out, err;
    const int status = runCli(args, TARVOKIN_CLI, out, err);
    return {status, out.str(), err.str()};
}

TEST(NacaCommand, PrintsNameThicknessAndTheFileText) {
    test::TempDir home;
    CliRun r = cli({"naca", "--family", "0", "--design", "0,0,12", "--points", "2", "--distribution", "3", "--home",
                    home.path().string()});
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.out, "name=NACA0012\nthickness=0.25\n1.0000000 0.0012600\n0.0000000 0.0000000\n1.0000000 -0.0012600\n");
    // Entries after the options, as the window takes them.
    r = cli({"naca", "--family", "1", "--home", home.path().string(), "--set", "F_NACA.T_DESIGN(2)=1", "--set",
             "F_NACA.T_DESIGN(3)=15"});
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.out.substr(0, 15), "name=NACA23115\n");

    for (auto args : {std::vector<std::string>{"--family", "0", "--points", "0"},
                      std::vector<std::string>{"--family", "0", "--design", "2,4,100"},
                      std::vector<std::string>{"--family", "5", "--design", "64,0,2,30"}}) {
        args.insert(args.begin(), "naca");
        args.push_back("--home");
        args.push_back(home.path().string());
        r = cli(args);
        EXPECT_EQ(r.status, 1);
        EXPECT_TRUE(r.out.empty());
        EXPECT_NE(r.err.find("hors"), std::string::npos) << r.err;
    }
    r = cli({"naca", "--family", "8", "--home", home.path().string()});
    EXPECT_EQ(r.status, 2);
    r = cli({"naca", "--family", "0", "--design", "1,2,3,4", "--home", home.path().string()});
    EXPECT_EQ(r.status, 2);
}

}  // namespace
}  // namespace tarvokin
