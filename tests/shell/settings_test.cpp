#include <gtest/gtest.h>

#include "core/profile_file.h"
#include "core/sheet.h"
#include "core/settings.h"
#include "support/temp_dir.h"

using namespace tarvokin;
using tarvokin::test::readBytes;
using tarvokin::test::TempDir;
using tarvokin::test::writeBytes;

namespace {

Settings readWith(const TempDir& dir, const std::string& text) {
    writeBytes(dir / "TARVOKIN.INI", text);
    return readSettings(dir / "TARVOKIN.INI", dir.path());
}

}  // namespace

TEST(Settings, MissingFileGivesTheDefaults) {
    TempDir dir;
    const Settings s = readSettings(dir / "TARVOKIN.INI", dir.path());
    EXPECT_FALSE(s.recall);
    EXPECT_TRUE(s.saveOnExit);
    EXPECT_TRUE(s.smooth);
    EXPECT_EQ(s.lastProject, "");
    EXPECT_EQ(s.positionFuselage, 1);
}

TEST(Settings, RecallIgnoresCaseButSaveWantsExactlyYes) {
    TempDir dir;
    for (const char* v : {"yes", "YES", "Yes please", "oh yEs"}) {
        EXPECT_TRUE(readWith(dir, std::string("[Recent]\nRecall=") + v + "\n").recall) << v;
    }
    EXPECT_FALSE(readWith(dir, "[Recent]\nRecall=No\n").recall);
    EXPECT_FALSE(readWith(dir, "[Recent]\nRecall=1\n").recall);

    EXPECT_TRUE(readWith(dir, "[Recent]\nSave=Yes\n").saveOnExit);
    EXPECT_TRUE(readWith(dir, "[Recent]\nSave=Yes!\n").saveOnExit);
    EXPECT_FALSE(readWith(dir, "[Recent]\nSave=yes\n").saveOnExit);
    EXPECT_FALSE(readWith(dir, "[Recent]\nSave=YES\n").saveOnExit);
    EXPECT_FALSE(readWith(dir, "[Recent]\nSave=\n").saveOnExit);
}

TEST(Settings, LastProjectIsCompletedToTheProgramsFolder) {
    TempDir dir;
    const std::string home = dir.path().string();
    EXPECT_EQ(readWith(dir, "[Projet]\nMDL=Bird\n").lastProject, home + "/Bird.MDL");
    EXPECT_EQ(readWith(dir, "[Projet]\nMDL=bird.mdl\n").lastProject, home + "/bird.mdl");
    EXPECT_EQ(readWith(dir, "[Projet]\nMDL=/models/bird.MDL\n").lastProject, "/models/bird.MDL");
    EXPECT_EQ(readWith(dir, "[Projet]\nMDL=/models/bird\n").lastProject, "/models/bird.MDL");
    EXPECT_EQ(readWith(dir, "[Projet]\nMDL=MODELES/DEMO.MDL\n").lastProject, home + "/MODELES/DEMO.MDL");
    EXPECT_EQ(readWith(dir, "[Projet]\nMDL=\n").lastProject, "");
}

TEST(Settings, WriterSpellingsAreReadBack) {
    TempDir dir;
    const Settings s = readWith(dir,
                                "[Parametres]\r\ncalc_mot=1\r\nTemperature=15.5\r\nAltitude=1200\r\n[Langue]\r\n"
                                "Langue=2\r\n[Recent]\r\n0=/m/a.MDL\r\n5=/m/f.MDL\r\n[Graphiques]\r\nPOINTS=0\r\n"
                                "POINTS_G=0\r\nPosition_Fuselage=0\r\n[XFOIL]\r\niterations=250\r\n"
                                "Path=/usr/bin/xfoil\r\nViscosite=500\r\nSmooth=False\r\nCL_INCID_DE=-0.2\r\n"
                                "CL_INCID_A=1.1\r\nCL_INCID_PAS=0.1\r\n");
    EXPECT_EQ(s.calcMot, "1");
    EXPECT_EQ(s.temperature, 15.5);
    EXPECT_EQ(s.altitude, 1200.0);
    EXPECT_EQ(s.languageCode, "2");
    EXPECT_EQ(s.recent[0], "/m/a.MDL");
    EXPECT_EQ(s.recent[5], "/m/f.MDL");
    EXPECT_EQ(s.points, 0);
    EXPECT_EQ(s.pointsG, 0);
    EXPECT_EQ(s.positionFuselage, 0);
    EXPECT_EQ(s.iterations, 250);
    EXPECT_EQ(s.xfoilPath, "/usr/bin/xfoil");
    EXPECT_EQ(s.viscosite, 500);
    EXPECT_FALSE(s.smooth);
    EXPECT_EQ(s.clIncidDe, "-0.2");
    EXPECT_EQ(s.clIncidA, "1.1");
    EXPECT_EQ(s.clIncidPas, "0.1");
}

TEST(Settings, MalformedValuesFallBackToTheDefaults) {
    TempDir dir;
    std::string text = "[Parametres]\nTemperature=warm\nAltitude=\n[XFOIL]\niterations=1e300\nViscosite=-\n";
    text += "Smooth=maybe\nCL_INCID_A=abc\n[Graphiques]\nPOINTS=x\n";
    text += std::string("\x00\xFF\xFE junk line \x01", 15) + "\n";
    const Settings s = readWith(dir, text);
    EXPECT_EQ(s.temperature, 20.0);
    EXPECT_EQ(s.altitude, 300.0);
    EXPECT_EQ(s.iterations, 100);
    EXPECT_EQ(s.viscosite, 1000);
    EXPECT_TRUE(s.smooth);
    EXPECT_EQ(s.clIncidA, "1.25");
    EXPECT_EQ(s.points, 1);
}

TEST(Preferences, EmptyOrUnreadableEntryKeepsTheLastGoodValue) {
    TempDir dir;
    Settings s;
    Sheet sheet;
    showPreferences(s, sheet);
    EXPECT_EQ(sheet.text(F_PREFER::Text1), "20");
    EXPECT_EQ(sheet.text(F_PREFER::Text7), "1.25");

    sheet.set(F_PREFER::Text1, "18.5");
    preferenceFieldChanged(s, sheet, 1);
    EXPECT_EQ(s.temperature, 18.5);
    sheet.set(F_PREFER::Text1, "");
    preferenceFieldChanged(s, sheet, 1);
    EXPECT_EQ(s.temperature, 18.5);
    sheet.set(F_PREFER::Text3, "-");
    preferenceFieldChanged(s, sheet, 3);
    EXPECT_EQ(s.iterations, 100);
    sheet.set(F_PREFER::Text4, "");
    s.xfoilPath = "/usr/bin/xfoil";
    preferenceFieldChanged(s, sheet, 4);
    EXPECT_EQ(s.xfoilPath, "/usr/bin/xfoil");
    sheet.set(F_PREFER::Text8, "0.02");
    preferenceFieldChanged(s, sheet, 8);
    EXPECT_EQ(s.clIncidPas, "0.02");
    // A change step writes nothing.
    EXPECT_FALSE(std::filesystem::exists(dir / "TARVOKIN.INI"));

    // Closing writes the last good values, with the writer's spellings.
    writePreferencesAtClose(s, dir / "TARVOKIN.INI");
    const Settings back = readSettings(dir / "TARVOKIN.INI", dir.path());
    EXPECT_EQ(back.temperature, 18.5);
    EXPECT_EQ(back.clIncidPas, "0.02");
    EXPECT_EQ(back.xfoilPath, "/usr/bin/xfoil");
    const std::string bytes = readBytes(dir / "TARVOKIN.INI");
    EXPECT_NE(bytes.find("Path=/usr/bin/xfoil\r\n"), std::string::npos);
    EXPECT_NE(bytes.find("Viscosite=1000\r\n"), std::string::npos);
    EXPECT_NE(bytes.find("Smooth=True\r\n"), std::string::npos);
}

TEST(Preferences, ClicksWriteTheirKeyAtOnce) {
    TempDir dir;
    const auto ini = dir / "TARVOKIN.INI";
    writeBytes(ini, "[Recent]\r\nRecall=No\r\nSave=Yes\r\n0=/m/a.MDL\r\n[Graphiques]\r\nPoints=1\r\n");
    Settings s = readSettings(ini, dir.path());
    Sheet sheet;
    showPreferences(s, sheet);

    sheet.set(F_PREFER::Check1, "1");
    preferenceClicked(s, sheet, ini, "Check1");
    EXPECT_TRUE(s.recall);
    EXPECT_EQ(ReadProfileString("Recent", "Recall", "", ini), "Yes");

    sheet.set(F_PREFER::Check3, "0");
    preferenceClicked(s, sheet, ini, "Check3");
    EXPECT_FALSE(s.saveOnExit);
    EXPECT_EQ(ReadProfileString("Recent", "Save", "", ini), "No");

    sheet.set(F_PREFER::Check2, "0");
    preferenceClicked(s, sheet, ini, "Check2");
    sheet.set(F_PREFER::Check5, "0");
    preferenceClicked(s, sheet, ini, "Check5");
    preferenceClicked(s, sheet, ini, "Option1", 0);
    EXPECT_EQ(sheet.text(F_PREFER::Option1[0]), "1");
    EXPECT_EQ(sheet.text(F_PREFER::Option1[1]), "0");

    const Settings back = readSettings(ini, dir.path());
    EXPECT_TRUE(back.recall);
    EXPECT_FALSE(back.saveOnExit);
    EXPECT_EQ(back.points, 0);
    EXPECT_FALSE(back.smooth);
    EXPECT_EQ(back.positionFuselage, 0);
    EXPECT_EQ(back.recent[0], "/m/a.MDL");
    // The existing key keeps its spelling; the file has no second one.
    const std::string bytes = readBytes(ini);
    EXPECT_NE(bytes.find("Points=0"), std::string::npos);
    EXPECT_EQ(bytes.find("POINTS="), std::string::npos);
}
