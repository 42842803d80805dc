// Adding and deleting panels from the design window: the change goes through
// the project file and every dependent figure follows.
#include <gtest/gtest.h>

#include "entry/panel_edit.h"
#include "design/recalc.h"
#include "designs.h"
#include "core/profile_file.h"
#include "entry/session.h"
#include "support/installed_workbench.h"

using namespace tarvokin;

namespace {

struct Demo {
    test::TempDir dir;
    test::InstalledWorkbench wb{dir.path()};
    Demo() {
        test::copyInstallation(dir.path());
        ReadSettingsAndCatalogue(wb);
        OpenProject(wb, (dir.path() / "MODELES" / "DEMO.MDL").string());
    }
    std::string key(const char* section, const std::string& k) const {
        return ReadProfileString(section, k, "?", wb.projectFilePath);
    }
};

}  // namespace

TEST(PanelEdit, AddingAWingPanelContinuesTheLastOneThroughTheProjectFile) {
    Demo d;
    ASSERT_EQ(WingPanelCount(d.wb), 2);
    const double span = d.wb.sheet.num(F_GEO_SF::j6);
    d.wb.sheet.set(F_GEO_SF_REGLAGES::H30, "1234");  // an unsaved edit survives the round trip
    AddWingPanel(d.wb);
    EXPECT_EQ(WingPanelCount(d.wb), 3);
    EXPECT_EQ(d.key("Aile", "Saumon_3"), "140");
    EXPECT_EQ(d.key("Aile", "Longueur_3"), "450");
    EXPECT_EQ(d.key("Aile", "Fleche_3"), "0");
    EXPECT_EQ(d.wb.sheet.text(F_GEO_SF::d5), "140");  // the derived root of panel 3
    EXPECT_DOUBLE_EQ(d.wb.sheet.num(F_GEO_SF::j6), span + 900);
    EXPECT_EQ(d.wb.sheet.text(F_GEO_SF_REGLAGES::H30), "1234");

    DeleteWingPanel(d.wb);
    DeleteWingPanel(d.wb);
    EXPECT_EQ(WingPanelCount(d.wb), 1);
    DeleteWingPanel(d.wb);  // the first panel stays
    EXPECT_EQ(WingPanelCount(d.wb), 1);
    EXPECT_EQ(d.key("Aile", "Longueur_2"), "0");
    EXPECT_DOUBLE_EQ(d.wb.sheet.num(F_GEO_SF::j6), 1300);
}

TEST(PanelEdit, FivePanelsIsTheLimitAndTheStabiliserFollows) {
    Demo d;
    for (int i = 0; i < 6; ++i) AddWingPanel(d.wb);
    EXPECT_EQ(WingPanelCount(d.wb), 5);
    ASSERT_EQ(StabPanelCount(d.wb), 1);
    const double stabSpan = d.wb.sheet.num(F_3D::j17);
    AddStabPanel(d.wb);
    EXPECT_EQ(StabPanelCount(d.wb), 2);
    EXPECT_EQ(d.key("Stab", "Longueur_2"), "280");
    EXPECT_DOUBLE_EQ(d.wb.sheet.num(F_3D::j17), stabSpan + 560);
    DeleteStabPanel(d.wb);
    EXPECT_DOUBLE_EQ(d.wb.sheet.num(F_3D::j17), stabSpan);
}

TEST(PanelEdit, WithoutAProjectFileTheCellsChangeDirectly) {
    test::Bench b;
    test::rectangularWing(b.s);
    RecalcAll(b.wb);
    AddWingPanel(b.wb);
    EXPECT_EQ(WingPanelCount(b.wb), 2);
    EXPECT_EQ(b.s.text(F_GEO_SF::c6), "200");
    EXPECT_DOUBLE_EQ(b.s.num(F_GEO_SF::j6), 2000);
}
