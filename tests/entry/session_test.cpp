#include <gtest/gtest.h>

#include "core/profile_file.h"
#include "entry/project_io.h"
#include "entry/session.h"
#include "core/workbench.h"
#include "support/temp_dir.h"
#include "entry/window_logic.h"

using namespace tarvokin;
using tarvokin::test::TempDir;

namespace {

struct Installed {
    TempDir dir;
    Workbench wb{dir.path()};
    std::vector<std::string> messages;
    Installed() {
        InstallWindowLogic(wb);
        test::copyInstallation(dir.path());
        wb.showMessage = [this](const std::string& t) { messages.push_back(t); };
    }
    std::string demo() const { return (dir.path() / "MODELES" / "DEMO.MDL").string(); }
    void setIni(const std::string& section, const std::string& key, const std::string& value) {
        WriteProfileString(section, key, value, wb.settingsFilePath());
    }
};

}  // namespace

TEST(StartUp, RecallsTheLastProjectWhenAsked) {
    Installed in;
    in.setIni("Recent", "Recall", "yes please");
    in.setIni("Projet", "MDL", "MODELES/DEMO.MDL");
    StartupResult r = StartUp(in.wb);
    EXPECT_FALSE(r.stop);
    EXPECT_EQ(in.wb.sheet.text(F_3D::T_NOM_Modele), "Démo Planeur 2m20");
    EXPECT_EQ(in.wb.sheet.text(F_Main::Caption), "TARVOKIN 3.1 Démo Planeur 2m20");
    EXPECT_NE(in.wb.sheet.text(F_GEO_SF::j4), "0");
    EXPECT_TRUE(in.messages.empty());
}

TEST(StartUp, WithoutRecallTheDesignStartsEmpty) {
    Installed in;
    in.setIni("Recent", "Recall", "No");
    StartupResult r = StartUp(in.wb);
    EXPECT_FALSE(r.stop);
    EXPECT_EQ(in.wb.sheet.text(F_3D::T_NOM_Modele), "Modèle inconnu");
    EXPECT_EQ(in.wb.sheet.text(F_Main::Caption), "TARVOKIN version 3.1 ");
    EXPECT_TRUE(in.wb.projectFilePath.empty());
}

TEST(StartUp, UnknownWingAirfoilStopsWithTheMessageOfTheLanguage) {
    Installed in;
    const std::string mdl = (in.dir.path() / "MODELES" / "ODD.MDL").string();
    std::filesystem::copy_file(in.demo(), mdl);
    WriteProfileString("Aile", "Nom_Profil", "NOPE123", mdl);
    WriteProfileString("Modele", "Profil_1", "NOPE123", mdl);
    in.setIni("Recent", "Recall", "YES");
    in.setIni("Projet", "MDL", mdl);

    StartupResult fr = StartUp(in.wb);
    ASSERT_TRUE(fr.stop);
    EXPECT_EQ(fr.message.rfind("les profils indiqués dans " + mdl + " sont inconnus\n", 0), 0u) << fr.message;
    EXPECT_NE(fr.message.find("Veuillez documenter la section [Modele]\nProfil_0 = CLARKY\nProfil_1 = NOPE123\n"),
              std::string::npos);

    in.setIni("Langue", "Langue", "1");
    StartupResult en = StartUp(in.wb);
    EXPECT_EQ(en.message.rfind("Aifoils dat specified in " + mdl + " are unknown\nPlease re-write the  [Modele] section", 0),
              0u);
    in.setIni("Langue", "Langue", "2");
    EXPECT_EQ(StartUp(in.wb).message.rfind("los perfiles indicados en la seccion [Modele] de ", 0), 0u);
    in.setIni("Langue", "Langue", "3");
    StartupResult it = StartUp(in.wb);
    EXPECT_TRUE(it.stop);
    EXPECT_TRUE(it.message.empty());
}

TEST(RecentFiles, SixEntriesNewestFirstEachOnce) {
    Installed in;
    ReadSettingsAndCatalogue(in.wb);
    for (int i = 0; i < 8; ++i) UpdateRecent(in.wb, "/models/m" + std::to_string(i) + ".MDL");
    UpdateRecent(in.wb, "/models/m4.MDL");
    EXPECT_EQ(in.wb.sheet.text(F_Main::IM_RECENT[0]), "m4.MDL");
    EXPECT_EQ(in.wb.sheet.text(F_Main::IM_RECENT[1]), "m7.MDL");
    EXPECT_EQ(in.wb.sheet.text(F_Main::IM_RECENT[5]), "m2.MDL");
    // Kept in the settings file too, and read back at the next start.
    Settings again = readSettings(in.wb.settingsFilePath(), in.wb.home());
    EXPECT_EQ(again.recent[0], "/models/m4.MDL");
    EXPECT_EQ(again.recent[5], "/models/m2.MDL");
}

TEST(ProjectCommands, SaveAsAddsTheExtensionAndWritesTheAirfoilSlots) {
    Installed in;
    ReadSettingsAndCatalogue(in.wb);
    OpenProject(in.wb, in.demo());
    ASSERT_EQ(in.wb.sheet.text(F_Main::T_profils), "0");
    const std::string target = (in.dir.path() / "copie").string();
    ASSERT_TRUE(SaveProjectAs(in.wb, target));
    EXPECT_EQ(in.wb.projectFilePath, target + ".MDL");
    EXPECT_EQ(ReadProfileString("Modele", "Profil_0", "", target + ".MDL"), "CLARKY");
    EXPECT_EQ(in.wb.sheet.text(F_Main::T_profils), "0");
    EXPECT_FALSE(SaveProjectAs(in.wb, "   "));
    EXPECT_EQ(in.wb.projectFilePath, target + ".MDL");
}

TEST(ProjectCommands, QuitSavesRemembersAndRewritesTheCatalogue) {
    Installed in;
    ReadSettingsAndCatalogue(in.wb);
    OpenProject(in.wb, in.demo());
    in.wb.sheet.set(F_GEO_SF::b7, "700");
    std::filesystem::remove(in.wb.catalogueFilePath());
    in.wb.settings.saveOnExit = true;
    Quit(in.wb);
    EXPECT_EQ(ReadProfileString("Aile", "Longueur_1", "", in.demo()), "700");
    EXPECT_EQ(ReadProfileString("Projet", "MDL", "", in.wb.settingsFilePath()), in.demo());
    EXPECT_TRUE(std::filesystem::exists(in.wb.catalogueFilePath()));

    in.wb.settings.saveOnExit = false;
    in.wb.sheet.set(F_GEO_SF::b7, "800");
    Quit(in.wb);
    EXPECT_EQ(ReadProfileString("Aile", "Longueur_1", "", in.demo()), "700");
}

TEST(PanelToggles, DesignPanelsShareOnePlace) {
    Installed in;
    TogglePanel(in.wb, button::Wing);
    TogglePanel(in.wb, button::Reglages);
    EXPECT_TRUE(in.wb.isOpen(button::Wing));
    TogglePanel(in.wb, button::Stab);
    EXPECT_FALSE(in.wb.isOpen(button::Wing));
    EXPECT_TRUE(in.wb.isOpen(button::Stab));
    EXPECT_TRUE(in.wb.isOpen(button::Reglages));  // not one of the three
    TogglePanel(in.wb, button::Stab);
    EXPECT_FALSE(in.wb.isOpen(button::Stab));
    TogglePanel(in.wb, button::Profils);
    EXPECT_EQ(in.wb.sheet.text(F_Main::T_profils), "1");
    CloseAllPanels(in.wb);
    EXPECT_FALSE(in.wb.isOpen(button::Reglages));
}
