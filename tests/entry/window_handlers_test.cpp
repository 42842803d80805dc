// Each window's controls driven by name through the entry path, as the
// windows and the command-line program drive them, without a screen.
#include <gtest/gtest.h>

#include "core/numbers.h"
#include "airfoils/catalogue_edit.h"
#include "entry/airfoil_choice.h"
#include "entry/design_logic.h"
#include "entry_fixture.h"

using namespace tarvokin;
using tarvokin::test::DemoOpen;

namespace {

Action act(Act kind, const char* form, const char* control, int index = -1, std::string text = {}) {
    Action a;
    a.act = kind;
    a.form = form;
    a.control = control;
    a.index = index;
    a.text = std::move(text);
    return a;
}

}  // namespace

TEST(WindowHandlers, FieldsRunTheirRulesOnChangeAndEnter) {
    DemoOpen d;
    Sheet& s = d.wb.sheet;
    const std::string span = s.text(F_GEO_SF::j6);
    Type(d.wb, F_GEO_SF::b7, "");  // a blank span reads as zero at once
    EXPECT_EQ(s.text(F_GEO_SF::b7), "0");
    Type(d.wb, F_GEO_SF::b7, "8");
    Type(d.wb, F_GEO_SF::b7, "800");
    EXPECT_EQ(s.text(F_GEO_SF::j6), span);  // the grid recalculates on Enter only
    PressEnter(d.wb, F_GEO_SF::b7);
    EXPECT_NE(s.text(F_GEO_SF::j6), span);
    EXPECT_EQ(d.wb.history.steps.size(), 1u);
    enterField(d.wb, F_GEO_SF_REGLAGES::H30, "0");  // a zero mass is replaced
    EXPECT_EQ(s.text(F_GEO_SF_REGLAGES::H30), "500");
}

TEST(WindowHandlers, AirfoilWindowEstimatesTheReynoldsNumberAndSwitchesCurves) {
    DemoOpen d;
    Sheet& s = d.wb.sheet;
    Type(d.wb, F_PROFILS::b6, "36");
    Type(d.wb, F_PROFILS::b5, "30");
    Type(d.wb, F_PROFILS::B4, "1.5");
    EXPECT_EQ(s.text(F_PROFILS::T_RE), plain(Calc_Re(36, 30, 1.5)));
    Click(d.wb, "F_PROFILS", "Command2");
    for (int r = 0; r < 6; ++r) EXPECT_EQ(s.text(F_PROFILS::Check1[r]), "0");
    Click(d.wb, "F_PROFILS", "Command1");
    for (int r = 0; r < 6; ++r) EXPECT_EQ(s.text(F_PROFILS::Check1[r]), "1");
    // A file that cannot be copied is reported and changes nothing.
    EXPECT_TRUE(Perform(d.wb, act(Act::Click, "F_PROFILS", "PB_PROFILE", 0, "/no/such/file.dat")));
    ASSERT_EQ(d.messages.size(), 1u);
    EXPECT_EQ(d.messages[0].rfind("[#7] ", 0), 0u);
}

TEST(WindowHandlers, AnalysisWindowsStepTheirValues) {
    DemoOpen d;
    Sheet& s = d.wb.sheet;
    Click(d.wb, "F_Main", "Toolbar2", button::Performances);
    const double altitude = s.val(F_GEO_3::Text2);
    Click(d.wb, "F_GEO_3", "Command1", 1);
    EXPECT_EQ(s.val(F_GEO_3::Text2), altitude + 100);
    Click(d.wb, "F_GEO_3", "Command1", 0);
    Click(d.wb, "F_GEO_3", "Command1", 0);
    EXPECT_EQ(s.val(F_GEO_3::Text2), std::max(0.0, altitude - 100));
    Click(d.wb, "F_GEO_3", "Command4");
    EXPECT_TRUE(d.wb.perf.constantReynoldsOpen);
    Perform(d.wb, act(Act::Scroll, "F_GEO_5", "VScroll1", -1, "30"));
    EXPECT_EQ(s.text(F_GEO_5::Text3), "30");

    Click(d.wb, "F_Main", "Toolbar2", button::Allongement);
    const double chosen = s.val(F_ALLONGEMENT::B10);
    Click(d.wb, "F_ALLONGEMENT", "Command1", 1);
    EXPECT_EQ(s.val(F_ALLONGEMENT::B10), chosen + 1);
}

TEST(WindowHandlers, DesignWindowButtonsAndCentreOfGravitySlider) {
    DemoOpen d;
    Sheet& s = d.wb.sheet;
    const std::string cg = s.text(F_3D::b30);
    Perform(d.wb, act(Act::Scroll, "F_3D", "Slider1", -1, "125"));
    EXPECT_EQ(s.text(F_GEO_SF_REGLAGES::C29), plain(125.0 / kMarginSteps));
    EXPECT_NE(s.text(F_3D::b30), cg);  // the centre of gravity follows the drag
    Perform(d.wb, act(Act::ScrollEnd, "F_3D", "Slider1"));
    EXPECT_EQ(d.wb.history.steps.size(), 1u);

    Click(d.wb, "F_3D", "PB_ALL");
    EXPECT_TRUE(d.wb.isOpen(button::Wing));
    EXPECT_TRUE(d.wb.isOpen(button::Reglages));
    Click(d.wb, "F_3D", "PB_FUS");  // the design panels share one place
    EXPECT_TRUE(d.wb.isOpen(button::Fuselage));
    EXPECT_FALSE(d.wb.isOpen(button::Wing));
    EXPECT_EQ(d.wb.history.steps.size(), 1u);

    Tick(d.wb, F_3D::Check1[9], false);  // the axes switched off, outside the history
    EXPECT_EQ(d.wb.history.steps.size(), 1u);
}

TEST(WindowHandlers, TailToolsPreferencesAndMotorsByName) {
    DemoOpen d;
    Sheet& s = d.wb.sheet;
    enterField(d.wb, F_STAB_VE::Corde1V, "200");
    enterField(d.wb, F_STAB_VE::OuvertureV, "90");
    Click(d.wb, "F_STAB_VE", "Command1");
    EXPECT_EQ(s.text(F_STAB_VE::Corde1N), "141");  // 200 sin 45°

    const size_t steps = d.wb.history.steps.size();
    Tick(d.wb, F_PREFER::Check3, !d.wb.settings.saveOnExit);
    EXPECT_EQ(d.wb.settings.saveOnExit, s.on(F_PREFER::Check3));
    Tick(d.wb, F_PREFER::Option1[1], true);
    EXPECT_EQ(s.text(F_PREFER::Option1[0]), "0");
    EXPECT_EQ(d.wb.history.steps.size(), steps);  // settings are no design entry

    Perform(d.wb, act(Act::Click, "F_CALC_MOT", "tvwDB", -1, "AXI\t2208/20"));
    EXPECT_EQ(s.text(F_CALC_MOT::G29), "1820");
    EXPECT_EQ(s.text(F_CALC_MOT::Io), "0.8");
}

TEST(WindowHandlers, UnknownControlsAreRefusedAndControlsParse) {
    DemoOpen d;
    EXPECT_FALSE(Click(d.wb, "F_3D", "NoSuchButton"));
    EXPECT_EQ(d.wb.history.steps.size(), 0u);
    Action a;
    ASSERT_TRUE(ParseControl("F_GEO_3.Command1(2)", Act::Click, a));
    EXPECT_EQ(a.form, "F_GEO_3");
    EXPECT_EQ(a.control, "Command1");
    EXPECT_EQ(a.index, 2);
    EXPECT_FALSE(ParseControl("Command1", Act::Click, a));
    EXPECT_FALSE(ParseControl("F_X.C(x)", Act::Click, a));
}
