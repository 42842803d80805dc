// The new-model wizard: the name rule, every row of the field mapping, the
// frame markers and rib table, the written file, and the refusals.
#include <gtest/gtest.h>

#include "core/messages.h"
#include "core/numbers.h"
#include "core/profile_file.h"
#include "entry/entry_fixture.h"
#include "entry/wizard_logic.h"
#include "project/new_model.h"
#include "views/plan.h"

namespace tarvokin {
namespace {

namespace fs = std::filesystem;

TEST(Wizard, NameStopsAtTheFirstPointWithoutBlanks) {
    EXPECT_EQ(WizardModelName("my.model x"), "my");
    EXPECT_EQ(WizardModelName(" Petit  Planeur "), "PetitPlaneur");
    EXPECT_EQ(WizardModelName(""), "Test");
    EXPECT_EQ(WizardModelName(".MDL"), "");
}

struct WizardFixture : test::DemoOpen {
    void set(Cell c, const std::string& v) { wb.sheet.set(c, v); }
    std::string create() { return CreateNewModel(wb); }
};

TEST(Wizard, FiguresGoToTheirFields) {
    WizardFixture f;
    using namespace F_WIZZARD;
    // Figures that differ from one another, so that a crossed row shows.
    const std::pair<Cell, const char*> figures[] = {
        {Text13, "701"}, {Text14, "902"}, {Text15, "203"}, {Text16, "104"}, {Text17, "55"},  {Text18, "3"},
        {Text19, "606"}, {Text20, "207"}, {Text2, "108"},  {Text3, "59"},   {Text4, "41"},   {Text5, "311"},
        {Text6, "412"},  {Text7, "113"},  {Text8, "64"},   {Text9, "115"},  {Text10, "716"}, {Text11, "72"},
        {Text12, "58"}};
    for (const auto& [c, v] : figures) f.set(c, v);
    f.wb.sheet.selectText(Combo1, "Basse");
    f.wb.sheet.selectText(Combo2, "Milieu");
    f.set(Text1, "Essai");
    FillNewModelFields(f.wb.sheet);
    const Sheet& s = f.wb.sheet;
    const std::pair<Cell, const char*> expected[] = {
        {F_GEO_SF_REGLAGES::H30, "701"}, {F_GEO_SF_REGLAGES::I30, "902"}, {F_GEO_SF::b5, "203"},
        {F_GEO_SF::b6, "104"},           {F_GEO_SF::b8, "55"},            {F_GEO_SF::B10, "3"},
        {F_GEO_SF::b7, "606"},           {F_GEO_FUS::b25, "207"},         {F_GEO_SF::c7, "0"},
        {F_GEO_FUS::Text5, "36"},        {F_GEO_SF::T_Ail_PosL, "0"},     {F_GEO_SF::T_Ail_PosR, "606"},
        {F_GEO_SF::T_Flap_PosL, "0"},    {F_GEO_SF::T_Flap_PosR, "0"},    {F_GEO_STAB::b16, "108"},
        {F_GEO_STAB::b17, "59"},         {F_GEO_STAB::b19, "41"},         {F_GEO_STAB::b18, "311"},
        {F_GEO_STAB::b20, "412"},        {F_GEO_STAB::c18, "0"},          {F_GEO_STAB::Text12, "113"},
        {F_GEO_STAB::Text4, "50"},       {F_GEO_STAB::T_Prof_PosL, "0"},  {F_GEO_STAB::T_Prof_PosR, "311"},
        {F_GEO_STAB::Text14, "619"},     {F_GEO_STAB::Text11, "64"},      {F_GEO_STAB::Text10, "115"},
        {F_GEO_FUS::b24, "716"},         {F_GEO_FUS::D25, "72"},          {F_GEO_FUS::D24, "58"},
        {F_GEO_STAB::Check1, "0"},       {F_PROFILS::CB_1[0], "SD7080"}};
    for (const auto& [c, v] : expected) EXPECT_EQ(s.text(c), v) << cellPath(c);
    // The wing's height and the stabiliser's place by their lists.
    f.wb.sheet.selectText(Combo1, "Haute");
    f.wb.sheet.selectText(Combo2, "Haut");
    FillNewModelFields(f.wb.sheet);
    EXPECT_EQ(s.text(F_GEO_FUS::Text5), "-36");
    EXPECT_EQ(s.text(F_GEO_STAB::Text4), "100");
    f.wb.sheet.selectText(Combo1, "Médiane");
    f.wb.sheet.selectText(Combo2, "Base");
    FillNewModelFields(f.wb.sheet);
    EXPECT_EQ(s.text(F_GEO_FUS::Text5), "0");
    EXPECT_EQ(s.text(F_GEO_STAB::Text4), "0");
}

TEST(Wizard, AVTailTicksCheck1AndAFlatOneLeavesItClear) {
    WizardFixture f;
    f.wb.sheet.selectText(F_WIZZARD::b21, "180");
    FillNewModelFields(f.wb.sheet);
    EXPECT_EQ(f.wb.sheet.text(F_GEO_STAB::Check1), "0");
    f.wb.sheet.selectText(F_WIZZARD::b21, "110");
    FillNewModelFields(f.wb.sheet);
    EXPECT_EQ(f.wb.sheet.text(F_GEO_STAB::Check1), "1");
    EXPECT_EQ(f.wb.sheet.text(F_GEO_STAB::b21), "110");
}

TEST(Wizard, FrameStationsAndRibsByRule) {
    WizardFixture f;
    FillNewModelFields(f.wb.sheet);
    PlaceNewModelFrames(f.wb.sheet);
    // Defaults: nose 200, root chord 200, length 700, so D = 75.
    const double stations[8] = {200.0 / 6, 100, 200, 400, 475, 550, 625, 700};
    const Sheet& s = f.wb.sheet;
    for (int n = 0; n < 8; ++n) {
        EXPECT_NEAR(s.val(F_GEO_FUS::Couple_X1[n]), stations[n], 0.01) << n;
        EXPECT_EQ(s.text(F_GEO_FUS::Ribs[5 * n]), "1267");
        EXPECT_EQ(s.text(F_GEO_FUS::Ribs[5 * n + 3]), "28");
    }
    EXPECT_EQ(s.text(F_GEO_FUS::Couple_Y1[3]), "70");
    EXPECT_EQ(s.text(F_GEO_FUS::CoupleV_Y1[3]), "25");
    f.wb.sheet.selectText(F_WIZZARD::Combo3, "Arrondi");
    PlaceNewModelFrames(f.wb.sheet);
    EXPECT_EQ(s.text(F_GEO_FUS::Ribs[5 * 2 + 3]), "0");
    EXPECT_EQ(s.text(F_GEO_FUS::Ribs[5 * 2 + 4]), "0");
}

TEST(Wizard, ValiderWritesTheProjectAndOpensIt) {
    WizardFixture f;
    f.set(F_WIZZARD::Text1, "my.model x");
    f.wb.sheet.selectText(F_WIZZARD::b21, "120");
    const std::string before29 = f.wb.sheet.text(F_Main::Toolbar2[button::Wizard]);
    const fs::path file = f.dir.path() / "MODELES" / "my.MDL";
    test::writeBytes(file, "[Modele]\nNom=ancien\n");  // overwritten without a question
    ASSERT_TRUE(Click(f.wb, "F_WIZZARD", "Command1"));
    EXPECT_TRUE(f.messages.empty()) << f.messages.front();
    EXPECT_TRUE(f.questions.empty());
    EXPECT_EQ(f.wb.projectFilePath, file.string());
    EXPECT_EQ(f.wb.sheet.text(F_3D::T_NOM_Modele), "MY");
    EXPECT_EQ(f.wb.sheet.text(F_Main::Caption), "TARVOKIN 3.1 MY");
    EXPECT_EQ(f.wb.sheet.text(F_Main::Toolbar2[button::Wizard]), before29);
    EXPECT_EQ(ReadProfileString("Modele", "Nom", "", file), "MY");
    EXPECT_EQ(ReadProfileString("Modele", "Profil_0", "", file), "SD7080");
    EXPECT_EQ(ReadProfileString("Stab", "V", "", file), "1");
    EXPECT_EQ(ReadProfileString("Stab", "Ouverture", "", file), "1");
    for (const char* k : {"Fuselage", "Ailes", "Derive", "Stab"})
        EXPECT_EQ(ReadProfileString("Colors", k, "", file), "16777215") << k;
    EXPECT_EQ(ReadProfileString("Colors", "3D_Filaire", "", f.wb.settingsFilePath()), "16777215");
    EXPECT_EQ(f.wb.settings.recent[0], file.string());
    // A complete design: its results computed after the load, its history new.
    EXPECT_EQ(f.wb.sheet.text(F_GEO_SF::j4), "18.00");
    EXPECT_FALSE(f.wb.history.canUndo());
}

TEST(Wizard, RefusedNamesAndFoldersLeaveTheOpenProjectAlone) {
    WizardFixture f;
    const auto before = f.snapshot();
    const std::string path = f.wb.projectFilePath;
    f.set(F_WIZZARD::Text1, "a/b:c");
    EXPECT_FALSE(runGuarded(f.wb, [&] { Click(f.wb, "F_WIZZARD", "Command1"); }));
    ASSERT_EQ(f.messages.size(), 1u);
    EXPECT_NE(f.messages[0].find("[#7]"), std::string::npos);
    EXPECT_EQ(f.wb.projectFilePath, path);
    // Only the wizard's own name field differs.
    f.set(F_WIZZARD::Text1, before[F_WIZZARD::Text1.id].text);
    EXPECT_EQ(test::firstDifference(before, f.snapshot()), "");
    // MODELES is a file here: nothing can be written into it.
    fs::rename(f.dir.path() / "MODELES", f.dir.path() / "MODELES.old");
    test::writeBytes(f.dir.path() / "MODELES", "not a folder");
    f.set(F_WIZZARD::Text1, "Essai");
    EXPECT_FALSE(runGuarded(f.wb, [&] { Click(f.wb, "F_WIZZARD", "Command1"); }));
    EXPECT_EQ(f.messages.size(), 2u);
    EXPECT_EQ(f.wb.projectFilePath, path);
}

TEST(Wizard, PreviewKeepsItsProportions) {
    WizardFixture f;
    const Plan p = WizardPreview(f.wb.sheet);
    const PlanBounds b = p.bounds();
    // Half span 600 each side; nose at -200, stabiliser trailing edge at 400 + 100.
    EXPECT_NEAR(b.xMin, -600, 1e-9);
    EXPECT_NEAR(b.xMax, 600, 1e-9);
    EXPECT_NEAR(b.yMin, -200, 1e-9);
    EXPECT_GE(b.yMax, 500);
}

}  // namespace
}  // namespace tarvokin
