#include <gtest/gtest.h>

#include "core/numbers.h"
#include "core/profile_file.h"
#include "entry/airfoil_choice.h"
#include "entry/panel_edit.h"
#include "entry_fixture.h"

using namespace tarvokin;
using tarvokin::test::DemoOpen;
using tarvokin::test::firstDifference;

// Each kind of entry is one step; undo gives back every cell as it was and
// redo every cell as the entry left it.
TEST(Undo, EachKindOfEntryIsOneStepTakenBackWhole) {
    DemoOpen d;
    Sheet& s = d.wb.sheet;
    struct Kind {
        const char* name;
        std::function<void()> entry;
        Cell watched;
    };
    const Kind kinds[] = {
        {"field typed key by key, then Enter",
         [&] {
             for (const char* t : {"6", "60", "600"}) Type(d.wb, F_GEO_SF::b7, t);
             PressEnter(d.wb, F_GEO_SF::b7);
         },
         F_GEO_SF::j6},
        {"list choice", [&] { Choose(d.wb, F_3D::Combo5, s.listIndex(F_3D::Combo5) + 1); }, F_3D::j11},
        {"check box", [&] { Tick(d.wb, F_3D::Ch_Winglets, true); }, F_3D::Ch_Winglets},
        {"slider dragged over three positions",
         [&] {
             Action a;
             a.act = Act::Scroll;
             a.form = "F_3D";
             a.control = "Slider1";
             for (const char* v : {"60", "80", "120"}) {
                 a.text = v;
                 Perform(d.wb, a);
             }
             a.act = Act::ScrollEnd;
             Perform(d.wb, a);
         },
         F_3D::b30},
        {"button adding a wing panel", [&] { Click(d.wb, "F_3D", "PB_ADD_PAN"); }, F_GEO_SF::d7},
    };
    for (const Kind& k : kinds) {
        SCOPED_TRACE(k.name);
        const auto before = d.snapshot();
        const size_t steps = d.wb.history.steps.size();
        k.entry();
        EndEntry(d.wb);
        ASSERT_EQ(d.wb.history.steps.size(), steps + 1);
        const auto after = d.snapshot();
        EXPECT_NE(before[k.watched.id].text, after[k.watched.id].text) << cellPath(k.watched);
        ASSERT_TRUE(Undo(d.wb));
        EXPECT_EQ(firstDifference(d.snapshot(), before), "");
        ASSERT_TRUE(Redo(d.wb));
        EXPECT_EQ(firstDifference(d.snapshot(), after), "");
    }
}

TEST(Undo, AThousandStepsComeBackToTheFirstStateExactly) {
    DemoOpen d;
    const auto first = d.snapshot();
    for (int i = 0; i < 1000; ++i) {
        enterField(d.wb, i % 2 ? F_GEO_SF::b7 : F_GEO_SF::b6, plain(300 + i % 400));
    }
    ASSERT_EQ(d.wb.history.steps.size(), 1000u);
    while (Undo(d.wb)) {
    }
    EXPECT_EQ(d.wb.history.position, 0u);
    EXPECT_EQ(firstDifference(d.snapshot(), first), "");
    EXPECT_FALSE(d.wb.history.modified());
}

TEST(Undo, ANewEntryEndsTheRedoAndALoadEndsTheHistory) {
    DemoOpen d;
    const std::string span = d.wb.sheet.text(F_GEO_SF::b7);
    enterField(d.wb, F_GEO_SF::b7, "500");
    enterField(d.wb, F_GEO_SF::b7, "520");
    ASSERT_TRUE(Undo(d.wb));
    EXPECT_TRUE(d.wb.history.canRedo());
    enterField(d.wb, F_GEO_SF::b6, "150");
    EXPECT_FALSE(d.wb.history.canRedo());
    EXPECT_EQ(d.wb.sheet.text(F_GEO_SF::b7), "500");

    OpenProject(d.wb, d.demo());
    EXPECT_FALSE(d.wb.history.canUndo());
    EXPECT_FALSE(d.wb.history.canRedo());
    EXPECT_EQ(d.wb.sheet.text(F_GEO_SF::b7), span);
}

TEST(Undo, NothingToUndoOrRedoChangesNothing) {
    DemoOpen d;
    const auto before = d.snapshot();
    EXPECT_FALSE(Undo(d.wb));
    EXPECT_FALSE(Redo(d.wb));
    enterField(d.wb, F_GEO_SF::b7, "500");
    const auto after = d.snapshot();
    EXPECT_FALSE(Redo(d.wb));
    EXPECT_EQ(firstDifference(d.snapshot(), after), "");
    EXPECT_TRUE(Undo(d.wb));
    EXPECT_FALSE(Undo(d.wb));
    EXPECT_EQ(firstDifference(d.snapshot(), before), "");
}

// A step whose recalculation failed is still a step; putting it back again
// fails the same way, and leaves the sheet as the failed entry had left it,
// never half restored.
TEST(Undo, AFailedRecalculationLeavesWholeSteps) {
    DemoOpen d;
    const auto before = d.snapshot();
    EXPECT_THROW(enterField(d.wb, F_GEO_SF::b7, "douze"), RunError);
    const auto failed = d.snapshot();
    ASSERT_EQ(d.wb.history.steps.size(), 1u);
    ASSERT_TRUE(Undo(d.wb));
    EXPECT_EQ(firstDifference(d.snapshot(), before), "");
    EXPECT_THROW(Redo(d.wb), RunError);
    EXPECT_EQ(firstDifference(d.snapshot(), failed), "");
    EXPECT_EQ(d.wb.history.position, 1u);
}

// A mouse drag (press, moves, release) on a drawing is one step, and a move
// with no button held is no entry at all.
TEST(Undo, ADragIsOneStepAndAHoverNone) {
    DemoOpen d;
    d.wb.handlers.on("F_DRAG", "Picture1", Act::Press,
                     [](Workbench& w, const Action& a) { w.sheet.set(F_GEO_SF::b7, plain(a.x)); });
    d.wb.handlers.on("F_DRAG", "Picture1", Act::Move,
                     [](Workbench& w, const Action& a) { w.sheet.set(F_GEO_SF::b7, plain(a.x)); });
    d.wb.handlers.on("F_DRAG", "Picture1", Act::Release, [](Workbench&, const Action&) {});
    Action a;
    a.form = "F_DRAG";
    a.control = "Picture1";
    a.act = Act::Move;
    a.x = 111;
    const auto before = d.snapshot();
    Mouse(d.wb, a);  // hover: the cell moves, no step is made
    EXPECT_EQ(d.wb.history.steps.size(), 0u);
    d.wb.sheet.restore(F_GEO_SF::b7, before[F_GEO_SF::b7.id]);
    for (auto [act, x] : {std::pair{Act::Press, 300.0}, {Act::Move, 310.0}, {Act::Move, 320.0}, {Act::Release, 320.0}}) {
        a.act = act;
        a.x = x;
        Mouse(d.wb, a);
    }
    ASSERT_EQ(d.wb.history.steps.size(), 1u);
    EXPECT_EQ(d.wb.sheet.text(F_GEO_SF::b7), "320");
    Undo(d.wb);
    EXPECT_EQ(firstDifference(d.snapshot(), before), "");
}

// Opening a window or walking the history from the main window is no entry.
TEST(Undo, WindowsOpenedAndViewsMovedStayOutOfTheHistory) {
    DemoOpen d;
    const std::string span = d.wb.sheet.text(F_GEO_SF::b7);
    Click(d.wb, "F_Main", "Toolbar2", button::Performances);
    EXPECT_TRUE(d.wb.isOpen(button::Performances));
    Action orbit;
    orbit.form = "F_3D";
    orbit.control = "Picture3";
    orbit.act = Act::Press;
    orbit.button = 1;
    Mouse(d.wb, orbit);
    orbit.act = Act::Move;
    orbit.x = 40;
    Mouse(d.wb, orbit);
    orbit.act = Act::Release;
    Mouse(d.wb, orbit);
    EXPECT_EQ(d.wb.history.steps.size(), 0u);
    EXPECT_NE(d.wb.view3d.ViewAzimuth, 0.0f);
    enterField(d.wb, F_GEO_SF::b7, "500");
    Click(d.wb, "F_Main", "IM_UNDO");
    EXPECT_EQ(d.wb.sheet.text(F_GEO_SF::b7), span);
    Click(d.wb, "F_Main", "IM_REDO");
    EXPECT_EQ(d.wb.sheet.text(F_GEO_SF::b7), "500");
}

// An airfoil choice taken back reads the polars of the airfoil it gives back.
TEST(Undo, AnAirfoilChoiceTakenBackReadsItsPolarsAgain) {
    DemoOpen d;
    for (int slot = 0; slot < 3; ++slot) CB_1_Click(d.wb, slot, nullptr);
    const double clarky = d.wb.polars.Polars[0][5].Cxmin;
    ASSERT_GT(clarky, 0.0);
    Perform(d.wb, [] {
        Action a;
        a.act = Act::Change;
        a.form = "F_PROFILS";
        a.control = "CB_1";
        a.index = 0;
        a.text = "E205";
        return a;
    }());
    ASSERT_EQ(d.wb.sheet.text(F_PROFILS::CB_1[0]), "E205");
    EXPECT_NE(d.wb.polars.Polars[0][5].Cxmin, clarky);
    Undo(d.wb);
    EXPECT_EQ(d.wb.sheet.text(F_PROFILS::CB_1[0]), "CLARKY");
    EXPECT_EQ(d.wb.polars.Polars[0][5].Cxmin, clarky);
}

// The unsaved mark follows the history and the file; another project asks
// first, unless the settings save on exit.
TEST(Undo, UnsavedChangesAreMarkedAndOfferedForSaving) {
    DemoOpen d;
    d.wb.settings.saveOnExit = false;
    EXPECT_FALSE(d.wb.history.modified());
    enterField(d.wb, F_GEO_SF::b7, "500");
    EXPECT_TRUE(d.wb.history.modified());
    Undo(d.wb);
    EXPECT_FALSE(d.wb.history.modified());
    Redo(d.wb);
    SaveCurrentProject(d.wb);
    EXPECT_FALSE(d.wb.history.modified());
    Undo(d.wb);
    EXPECT_TRUE(d.wb.history.modified());

    // No: nothing written, the other project opens.
    OpenProject(d.wb, d.demo());
    ASSERT_EQ(d.questions.size(), 1u);
    EXPECT_EQ(d.questions[0].rfind("[#20] ", 0), 0u) << d.questions[0];
    EXPECT_EQ(ReadProfileString("Aile", "Longueur_1", "", d.demo()), "500");
    // Yes: the entries are written before the other project opens.
    d.answer = true;
    enterField(d.wb, F_GEO_SF::b7, "610");
    OpenProject(d.wb, d.demo());
    EXPECT_EQ(d.wb.sheet.text(F_GEO_SF::b7), "610");
    // Saving on exit never asks.
    d.wb.settings.saveOnExit = true;
    enterField(d.wb, F_GEO_SF::b7, "620");
    OpenProject(d.wb, d.demo());
    EXPECT_EQ(d.questions.size(), 2u);
}
