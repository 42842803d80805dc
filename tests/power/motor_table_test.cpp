// The motor catalogue: reading its lines, the tree, the look-up and the
// candidates of the motor calculation.
#include <gtest/gtest.h>

#include "power/motor_table.h"
#include "core/numbers.h"
#include "core/workbench.h"
#include "support/temp_dir.h"
#include "support/installed_workbench.h"

using namespace tarvokin;
using tarvokin::test::TempDir;

namespace {

struct MotorHome {
    TempDir dir;
    test::InstalledWorkbench wb{dir.path()};
    void write(const std::string& bytes) {
        std::filesystem::create_directories(dir / "DATA");
        test::writeBytes(dir / "DATA" / "MOTEURS.CSV", bytes);
    }
};

const std::string kAwkward = std::string(
    "Marque;Modele;Type;Kv;Io;Ra;Masse\r\n"
    " AXI ; 2203/40 ;Brushless;2000;0.5;0.245;17.5\r\n"
    "\r\n"
    "   \n"
    "Short;Only\n"
    "NoSeparatorAtAll\n"
    "X;Y;Brushless;abc;;0.1\n"
    "P;Q;Brushless;1500\n") +
    std::string("\x01\x02\0\xff;junk;\x80\n", 12) +
    "A;B;T;1;2;3;4;extra;more\n"
    "AXI;2203/40;Other;1;1;1;1\n"
    "Emax;CF-2822-1200KV;Brushless;1200;0.9;0.15;39";

}  // namespace

TEST(MotorTable, ReadsTrimmedColumnsAndSkipsWhatIsNoMotor) {
    MotorHome h;
    h.write(kAwkward);
    const auto motors = ReadMotors(motorFilePath(h.wb));
    ASSERT_EQ(motors.size(), 7u);
    EXPECT_EQ(motorKey(motors[0].Marque, motors[0].Modele), "AXI@2203/40");
    EXPECT_DOUBLE_EQ(motors[0].Masse, 17.5);
    // A short line keeps what it has; missing or unreadable numbers read 0.
    EXPECT_EQ(motors[1].Modele + plain(motors[1].Kv), "Only0");
    EXPECT_EQ(plain(motors[2].Kv) + " " + plain(motors[2].Ra), "0 0.1");
    EXPECT_EQ(plain(motors[3].Kv) + " " + plain(motors[3].Masse), "1500 0");
    // Seven columns are taken, further ones ignored.
    EXPECT_EQ(motors[4].Masse, 4);
    EXPECT_EQ(motors[6].Modele, "CF-2822-1200KV");  // last line without a line end
    EXPECT_TRUE(ReadMotors(h.dir / "nothing.csv").empty());

    // The tree: brands in order, a key seen twice listed once; the first match wins.
    const auto tree = Get_Marque_Motor(h.wb);
    ASSERT_EQ(tree.size(), 6u);
    EXPECT_EQ(tree[0].Modeles, std::vector<std::string>{"2203/40"});
    EXPECT_EQ(tree[5].Marque, "Emax");
    const auto m = Charge_Moteur(h.wb, "AXI", "2203/40");
    ASSERT_TRUE(m);
    EXPECT_EQ(m->Type, "Brushless");
    EXPECT_FALSE(Charge_Moteur(h.wb, "AXI", "9999"));
}

TEST(MotorTable, CandidatesKeepBothBoundsOfEachTolerance) {
    MotorHome h;
    h.write(
        "h\n"
        "M;low;Brushless;950;1;0.1;90\n"
        "M;high;Brushless;1050;1;0.1;110\n"
        "M;light;Brushless;1000;1;0.1;89.9\n"
        "M;fast;Brushless;1051;1;0.1;100\n");
    Sheet& s = h.wb.sheet;
    using namespace F_CALC_MOT;
    for (auto [c, v] : {std::pair{T_Masse_Moteur, "100"}, {kv, "1000"}, {Slider1, "10"}, {Slider2, "5"}}) s.set(c, v);
    MotorGrid g = Candidats_Moteurs(h.wb);
    ASSERT_EQ(g.rows.size(), 2u);
    EXPECT_EQ(gridCells(g.rows[0])[1], "low");
    EXPECT_EQ(gridCells(g.rows[1])[3], "1050");
    EXPECT_EQ(g.header[0] + g.header[1], "2Modèle(s)");
    s.set(Slider2, "0");
    g = Candidats_Moteurs(h.wb);
    EXPECT_EQ(g.header[0] + g.header[1], "0 Modèle");
    s.set(kv, "-");  // no proposal, no candidate
    EXPECT_TRUE(Candidats_Moteurs(h.wb).rows.empty());
}

TEST(MotorTable, ShippedCatalogueAndACandidatesClick) {
    TempDir dir;
    test::copyInstallation(dir.path());
    Workbench wb(dir.path());
    InstallWindowLogic(wb);
    EXPECT_EQ(ReadMotors(motorFilePath(wb)).size(), 52u);
    ASSERT_TRUE(CandidateClicked(wb, "AXI", "2820/10"));
    EXPECT_EQ(wb.sheet.text(F_CALC_MOT::G29) + " " + wb.sheet.text(F_CALC_MOT::Ra) + " " +
                  wb.sheet.text(F_CALC_MOT::Io),
              "1200 0.039 2.3");
    EXPECT_FALSE(CandidateClicked(wb, "AXI", "gone"));
}
