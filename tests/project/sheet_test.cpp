#include <gtest/gtest.h>

#include <set>

#include "core/sheet.h"

using namespace tarvokin;

TEST(CellTable, PathsAreUniqueAndFoundAgain) {
    std::set<std::string> seen;
    for (uint16_t i = 0; i < kCellCount; ++i) {
        const std::string p = cellPath(Cell{i});
        EXPECT_TRUE(seen.insert(p).second) << "duplicate " << p;
        Cell back{};
        ASSERT_TRUE(findCell(p, back)) << p;
        EXPECT_EQ(back.id, i) << p;
    }
}

TEST(CellTable, GroupsAndToolbarTagsAreAddressedByControlIndex) {
    EXPECT_EQ(cellPath(F_3D::Slider1[5]), "F_3D.Slider1(5)");
    EXPECT_EQ(cellPath(F_Main::Toolbar2[1]), "F_Main.Toolbar2(1).Tag");
    EXPECT_EQ(cellPath(F_Main::Toolbar2[33]), "F_Main.Toolbar2(33).Tag");
    Cell c{};
    ASSERT_TRUE(findCell("F_Main.Toolbar2(17)", c));
    EXPECT_EQ(c, F_Main::Toolbar2[17]);
    // Control names compare without case, but an exact spelling wins.
    ASSERT_TRUE(findCell("f_geo_sf.B5", c));
    EXPECT_EQ(c, F_GEO_SF::b5);
    ASSERT_TRUE(findCell("F_GEO_SF.B10", c));
    EXPECT_EQ(c, F_GEO_SF::B10);
    EXPECT_FALSE(findCell("F_GEO_SF.z99", c));
}

TEST(Sheet, StartsWithTheDeclaredDefaults) {
    Sheet s;
    EXPECT_EQ(s.text(F_GEO_SF::b5), "200");
    EXPECT_EQ(s.text(F_GEO_STAB::b20), "600");
    EXPECT_EQ(s.text(F_3D::T_NOM_Modele), "Modèle inconnu");
    EXPECT_EQ(s.text(F_GEO_STAB::b21), "180");
    EXPECT_EQ(s.listIndex(F_GEO_STAB::b21), 0);
    EXPECT_EQ(s.text(F_GEO_FUS::Ribs[0]), "1305");
    EXPECT_EQ(s.text(F_GEO_FUS::Ribs[7 * 5 + 2]), "4");
    EXPECT_EQ(s.text(F_GEO_FUS::Ribs[7 * 5 + 4]), "0");
}

TEST(Sheet, TellsListenersOnlyOfRealChanges) {
    Sheet s;
    std::vector<uint16_t> changed;
    int h = s.addListener([&](Cell c) { changed.push_back(c.id); });
    s.set(F_GEO_SF::b7, "459");  // unchanged
    s.set(F_GEO_SF::b7, "500");
    s.setFixed(F_GEO_SF::j4, 12.3456, 2);
    ASSERT_EQ(changed.size(), 2u);
    EXPECT_EQ(changed[0], F_GEO_SF::b7.id);
    EXPECT_EQ(s.text(F_GEO_SF::j4), "12.35");
    s.removeListener(h);
    s.set(F_GEO_SF::b7, "1");
    EXPECT_EQ(changed.size(), 2u);
}

TEST(Sheet, StrictAndLenientReads) {
    Sheet s;
    s.set(F_GEO_STAB::j15, "-");
    EXPECT_THROW(s.num(F_GEO_STAB::j15), RunError);
    EXPECT_DOUBLE_EQ(s.val(F_GEO_STAB::j15), 0.0);
    s.set(F_3D::j26a, "15 %");
    EXPECT_DOUBLE_EQ(s.val(F_3D::j26a), 15.0);
}

TEST(SheetLists, PositionDrivesTextAndBadPositionIsAnError) {
    Sheet s;
    s.setListIndex(F_GEO_STAB::b21, 2);
    EXPECT_EQ(s.text(F_GEO_STAB::b21), "115");
    EXPECT_THROW(s.setListIndex(F_GEO_STAB::b21, 8), RunError);
    EXPECT_EQ(s.listIndex(F_GEO_STAB::b21), 2);
    s.setListIndex(F_GEO_STAB::b21, -1);
    EXPECT_EQ(s.text(F_GEO_STAB::b21), "");
}

TEST(SheetLists, SelectTextIgnoresCaseAndRefusesUnknownNames) {
    Sheet s;
    s.setItems(F_PROFILS::CB_1[1], {"Générique Rapide", "CLARKY", "SD7037"});
    EXPECT_TRUE(s.selectText(F_PROFILS::CB_1[1], "clarky"));
    EXPECT_EQ(s.text(F_PROFILS::CB_1[1]), "CLARKY");
    EXPECT_TRUE(s.selectText(F_PROFILS::CB_1[1], "GÉNÉRIQUE RAPIDE"));
    EXPECT_EQ(s.listIndex(F_PROFILS::CB_1[1]), 0);
    EXPECT_FALSE(s.selectText(F_PROFILS::CB_1[1], "NACA0009"));
    EXPECT_EQ(s.text(F_PROFILS::CB_1[1]), "Générique Rapide");
}

TEST(SheetLists, NewItemsKeepTheSelectionWhenStillListed) {
    Sheet s;
    s.setItems(F_3D::Combo5, {"A", "B"});
    s.setListIndex(F_3D::Combo5, 1);
    s.setItems(F_3D::Combo5, {"0", "A", "B"});
    EXPECT_EQ(s.listIndex(F_3D::Combo5), 2);
    EXPECT_EQ(s.text(F_3D::Combo5), "B");
    // Typed text of an editable list: kept, with no position.
    s.set(F_3D::Combo5, "UNKNOWN");
    EXPECT_EQ(s.listIndex(F_3D::Combo5), -1);
    EXPECT_EQ(s.text(F_3D::Combo5), "UNKNOWN");
}
