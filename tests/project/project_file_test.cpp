#include <gtest/gtest.h>

#include "core/profile_file.h"
#include "entry/project_io.h"
#include "core/workbench.h"
#include "support/temp_dir.h"
#include "entry/window_logic.h"

using namespace tarvokin;
using tarvokin::test::readBytes;
using tarvokin::test::TempDir;
using tarvokin::test::writeBytes;

namespace {

bool contains(const std::string& s, const std::string& part) { return s.find(part) != std::string::npos; }

class ProjectFile : public ::testing::Test {
protected:
    TempDir home;
    Workbench wb{home.path()};

    void SetUp() override {
        InstallWindowLogic(wb);
        prepare(wb);
    }

    void prepare(Workbench& w) {
        w.catalogue.rows = {{"Générique Début", -0.08, -3.5, "DATA/CLARKY.DAT"},
                            {"CLARKY", -0.08, -3.5, "DATA/CLARKY.DAT"},
                            {"NACA2412", -0.05, -2.1, "DATA/NACA2412.DAT"}};
        w.fillAirfoilLists();
    }

    // Writes a project in Latin-1 (as the program keeps them) and loads it.
    void load(const std::string& utf8Text, const std::string& name = "p.MDL") {
        writeBytes(home / name, latin1(utf8Text));
        wb.projectFilePath = (home / name).string();
        LoadProject(wb);
    }

    static std::string latin1(const std::string& utf8) {
        std::string out;
        for (size_t i = 0; i < utf8.size(); ++i) {
            const unsigned char c = static_cast<unsigned char>(utf8[i]);
            if (c == 0xC3 && i + 1 < utf8.size()) {
                out.push_back(static_cast<char>(static_cast<unsigned char>(utf8[++i]) + 0x40));
            } else {
                out.push_back(static_cast<char>(c));
            }
        }
        return out;
    }

    std::vector<std::string> snapshot() const {
        std::vector<std::string> all;
        for (uint16_t i = 0; i < kCellCount; ++i) all.push_back(wb.sheet.text(Cell{i}));
        return all;
    }
};

}  // namespace

TEST_F(ProjectFile, SaveWritesTheDeliberateAsymmetries) {
    Sheet& s = wb.sheet;
    s.set(F_3D::T_NOM_Modele, "Bird");
    ASSERT_TRUE(s.selectText(F_3D::Combo5, "CLARKY"));
    s.set(F_GEO_FUS::Text5, "12.5");
    s.set(F_GEO_STAB::Text4, "30");
    ASSERT_TRUE(s.selectText(F_CALC_MOT::G3, "Racer"));
    s.set(F_3D::T_Ailes, "3381759");
    s.set(F_Main::T_profils, "1");
    ASSERT_TRUE(s.selectText(F_PROFILS::CB_1[0], "NACA2412"));
    wb.projectFilePath = (home / "bird.MDL").string();
    SaveProject(wb);

    const std::string bytes = readBytes(home / "bird.MDL");
    // The wing height is written POS_H, the stabiliser's Pos_H.
    EXPECT_TRUE(contains(bytes, "\r\nPOS_H=12.5\r\n"));
    EXPECT_TRUE(contains(bytes, "\r\nPos_H=30\r\n"));
    // The wing airfoil: list position and trimmed name; no model class.
    EXPECT_TRUE(contains(bytes, "\r\nProfil=1\r\nNom_Profil=CLARKY\r\n"));
    const ProfileDocument doc = ProfileDocument::load(home / "bird.MDL");
    EXPECT_FALSE(doc.has("Modele", "Type"));
    EXPECT_EQ(doc.get("Modele", "Profil_0", ""), "NACA2412");
    // Rib rows end in "; ", the default row included.
    EXPECT_TRUE(contains(bytes, "\r\nRibs_3=1305;4;4;0;0; \r\n"));
    // The view background belongs to the settings, not to the model.
    EXPECT_EQ(doc.get("Colors", "Ailes", ""), "3381759");
    EXPECT_FALSE(doc.has("Colors", "3D_Backolor"));
    // Accented names in Latin-1.
    EXPECT_TRUE(contains(bytes, "[H\xE9lice]\r\nType=G\xE9n\xE9rique\r\n"));
    EXPECT_TRUE(contains(bytes, "Diam\xE8tre=0"));
    EXPECT_TRUE(contains(bytes, "Capacit\xE9=0"));
    EXPECT_TRUE(contains(bytes, "Qualit\xE9=Moyenne"));

    // Sections in the order of the first writes, the power sections last.
    std::vector<std::string> sections;
    for (const std::string& line : doc.lines()) {
        if (!line.empty() && line.front() == '[') sections.push_back(line);
    }
    const std::vector<std::string> expected = {"[Modele]", "[Aile]",    "[Fuselage]", "[Stab]",  "[Derive]",
                                               "[Reglages]", "[Colors]", "[Accus]",    "[Moteur]", "[Hélice]"};
    EXPECT_EQ(sections, expected);
}

TEST_F(ProjectFile, RoundTripGivesBackEveryInput) {
    Sheet& s = wb.sheet;
    const std::vector<std::pair<Cell, std::string>> inputs = {
        {F_3D::T_NOM_Modele, "Démo 2m"},  {F_GEO_SF_REGLAGES::H30, "900"},  {F_GEO_SF_REGLAGES::I30, "1200.5"},
        {F_GEO_SF_REGLAGES::Ch_Aile, "1"}, {F_GEO_SF::b5, "230"},            {F_GEO_SF::b6, "205.25"},
        {F_GEO_SF::b7, "650"},            {F_GEO_SF::c6, "140"},            {F_GEO_SF::c7, "450"},
        {F_GEO_SF::c8, "55"},             {F_GEO_SF::c9, "-1.5"},           {F_GEO_SF::C10, "6"},
        {F_GEO_FUS::Text5, "10"},         {F_GEO_SF::T_Ail_PosL, "500"},    {F_GEO_SF::T_Ail_PourcD, "22"},
        {F_GEO_SF::T_Flap_PosR, "480"},   {F_GEO_SF::a12, "35"},            {F_GEO_FUS::b24, "1250"},
        {F_GEO_FUS::b25, "330"},          {F_GEO_FUS::D24, "50"},           {F_GEO_FUS::D25, "65"},
        {F_GEO_FUS::Couple_X1[3], "330"}, {F_GEO_FUS::Couple_Y1[3], "33.12345"},
        {F_GEO_FUS::Couple_Y2[3], "-30"}, {F_GEO_FUS::CoupleV_Y1[7], "5"},  {F_GEO_FUS::CoupleV_Y2[7], "-5"},
        {F_GEO_FUS::Ribs[10], "1200"},    {F_GEO_FUS::Ribs[14], "2"},       {F_GEO_STAB::b16, "140"},
        {F_GEO_STAB::b17, "100"},         {F_GEO_STAB::b18, "280"},         {F_GEO_STAB::e19, "25"},
        {F_GEO_STAB::Text4, "20"},        {F_GEO_STAB::Check1, "1"},        {F_GEO_STAB::T_Prof_PosR, "280"},
        {F_GEO_STAB::b20, "750"},         {F_GEO_STAB::Text12, "170"},      {F_GEO_STAB::Text9, "70"},
        {F_GEO_STAB::Check2, "1"},        {F_GEO_STAB::Text13, "120"},      {F_GEO_STAB::T_Deriv_PosH, "190"},
        {F_GEO_SF_REGLAGES::C29, "5"},    {F_GEO_SF_REGLAGES::F29, "0.45"}, {F_3D::T_Fus, "13421772"},
        {F_3D::Ch_Winglets, "0"},         {F_3D::Moteur_Marque, "Graupner"}, {F_3D::Moteur_Modele, "X 2/3"},
        {F_3D::d6, "18"},                 {F_3D::d7, "1.5"},                {F_3D::f5, "10"},
        {F_3D::f6, "6"},                  {F_3D::Helice_Modele, "APC 10x6"}, {F_3D::b6, "2200"}};
    for (const auto& [c, v] : inputs) s.set(c, v);
    s.setListIndex(F_3D::Combo9, 2);
    s.setListIndex(F_3D::Combo10, 1);
    s.setListIndex(F_GEO_STAB::b21, 3);
    s.setListIndex(F_3D::Combo7, 4);
    s.setListIndex(F_3D::Combo1, 0);
    s.setListIndex(F_3D::Combo2, 3);
    s.setListIndex(F_3D::Combo3, 2);
    s.setListIndex(F_3D::Combo4, 1);
    s.setListIndex(F_3D::Combo6, 3);
    s.set(F_3D::Option1[0], "0");
    s.set(F_3D::Option1[2], "1");
    ASSERT_TRUE(s.selectText(F_3D::Combo5, "NACA2412"));
    ASSERT_TRUE(s.selectText(F_CALC_MOT::G3, "Racer"));  // never written
    s.set(F_Main::T_profils, "1");
    ASSERT_TRUE(s.selectText(F_PROFILS::CB_1[0], "CLARKY"));
    ASSERT_TRUE(s.selectText(F_PROFILS::CB_1[2], "Générique Début"));
    wb.projectFilePath = (home / "rt.MDL").string();
    SaveProject(wb);

    Workbench other(home.path());
    prepare(other);
    other.projectFilePath = wb.projectFilePath;
    LoadProject(other);
    const Sheet& o = other.sheet;
    for (const auto& [c, v] : inputs) EXPECT_EQ(o.text(c), v) << cellPath(c);
    EXPECT_EQ(o.listIndex(F_3D::Combo9), 2);
    EXPECT_EQ(o.listIndex(F_3D::Combo10), 1);
    EXPECT_EQ(o.listIndex(F_GEO_STAB::b21), 3);
    EXPECT_EQ(o.listIndex(F_3D::Combo7), 4);
    EXPECT_EQ(o.text(F_3D::Combo1), "NiCd / NiMh");
    EXPECT_EQ(o.text(F_3D::Combo2), "4");
    EXPECT_EQ(o.text(F_3D::Combo3), "Haute");
    EXPECT_EQ(o.text(F_3D::Combo4), "Classique");
    EXPECT_EQ(o.text(F_3D::Combo6), "GWS");
    EXPECT_EQ(o.text(F_3D::Option1[2]), "1");
    EXPECT_EQ(o.text(F_3D::Option1[0]), "0");
    EXPECT_EQ(o.text(F_3D::Combo5), "NACA2412");
    EXPECT_EQ(o.text(F_CALC_MOT::G3), "Planeur début");
    EXPECT_EQ(o.text(F_PROFILS::CB_1[0]), "CLARKY");
    EXPECT_EQ(o.text(F_PROFILS::CB_1[1]), "");
    EXPECT_EQ(o.text(F_PROFILS::CB_1[2]), "Générique Début");
}

TEST_F(ProjectFile, AirfoilSlotsAreWrittenOnlyOnceChosen) {
    writeBytes(home / "s.MDL", "[Modele]\r\nNom=Bird\r\nProfil_0=OLDFOIL\r\n");
    wb.projectFilePath = (home / "s.MDL").string();
    ASSERT_TRUE(wb.sheet.selectText(F_PROFILS::CB_1[0], "CLARKY"));
    wb.sheet.set(F_Main::T_profils, "0");
    SaveProject(wb);
    ProfileDocument doc = ProfileDocument::load(home / "s.MDL");
    EXPECT_EQ(doc.get("Modele", "Profil_0", ""), "OLDFOIL");
    EXPECT_FALSE(doc.has("Modele", "Profil_1"));

    wb.sheet.set(F_Main::T_profils, "1");
    SaveProject(wb);
    doc = ProfileDocument::load(home / "s.MDL");
    EXPECT_EQ(doc.get("Modele", "Profil_0", ""), "CLARKY");
    EXPECT_TRUE(doc.has("Modele", "Profil_2"));
}

TEST_F(ProjectFile, LoadRoundsAndTheNextSaveWritesTheRoundedValues) {
    load("[Modele]\nNom=Bird\nMasse_1=1000.005\nMasse_2=1200\n[Aile]\nEmplanture_1=200.456\nSaumon_1=171.444\n"
         "Longueur_1=459.999\nVKmh=35.6\n[Fuselage]\nCouple_0_X1=1.23456\nCouple_0_Y1=8.1234567\n"
         "Couple_0_Y2=-8.125\n[Colors]\nAiles=255.4\n");
    const Sheet& s = wb.sheet;
    EXPECT_EQ(s.text(F_GEO_SF_REGLAGES::H30), "1000.01");
    EXPECT_EQ(s.text(F_GEO_SF::b5), "200.46");
    EXPECT_EQ(s.text(F_GEO_SF::b6), "171.44");
    EXPECT_EQ(s.text(F_GEO_SF::b7), "460");
    EXPECT_EQ(s.text(F_GEO_SF::a12), "36");
    EXPECT_EQ(s.text(F_GEO_FUS::Couple_X1[0]), "1.23");
    EXPECT_EQ(s.text(F_GEO_FUS::Couple_Y1[0]), "8.12346");
    EXPECT_EQ(s.text(F_GEO_FUS::Couple_Y2[0]), "-8.13");
    EXPECT_EQ(s.text(F_3D::T_Ailes), "255");

    SaveProject(wb);
    const ProfileDocument doc = ProfileDocument::load(home / "p.MDL");
    EXPECT_EQ(doc.get("Aile", "Emplanture_1", ""), "200.46");
    EXPECT_EQ(doc.get("Aile", "Saumon_1", ""), "171.44");
    EXPECT_EQ(doc.get("Aile", "VKmh", ""), "36");
    EXPECT_EQ(doc.get("Fuselage", "Couple_0_Y1", ""), "8.12346");
}

TEST_F(ProjectFile, RibRowsAcceptBothEndings) {
    load("[Modele]\nNom=A\n[Fuselage]\nRibs_3=1200;5;6;1;2 \n", "a.MDL");
    std::vector<std::string> first;
    for (int j = 0; j < 5; ++j) first.push_back(wb.sheet.text(F_GEO_FUS::Ribs[15 + j]));
    EXPECT_EQ(first, (std::vector<std::string>{"1200", "5", "6", "1", "2"}));

    for (int j = 0; j < 5; ++j) wb.sheet.set(F_GEO_FUS::Ribs[15 + j], "7");
    load("[Modele]\nNom=A\n[Fuselage]\nRibs_3=1200;5;6;1;2; \n", "c.MDL");
    std::vector<std::string> second;
    for (int j = 0; j < 5; ++j) second.push_back(wb.sheet.text(F_GEO_FUS::Ribs[15 + j]));
    EXPECT_EQ(second, first);

    // No ";" at all: the row stays; a missing key gives the default row.
    wb.sheet.set(F_GEO_FUS::Ribs[20], "999");
    load("[Modele]\nNom=A\n[Fuselage]\nRibs_4=1200\n", "d.MDL");
    EXPECT_EQ(wb.sheet.text(F_GEO_FUS::Ribs[20]), "999");
    EXPECT_EQ(wb.sheet.text(F_GEO_FUS::Ribs[15]), "1305");
    EXPECT_EQ(wb.sheet.text(F_GEO_FUS::Ribs[16]), "4");
}

TEST_F(ProjectFile, NotAProjectChangesOnlyNameAndTitle) {
    Sheet& s = wb.sheet;
    s.set(F_GEO_SF::b5, "333");
    for (int b : {button::Fuselage, button::Motorisation, button::Performances, button::Allongement,
                  button::View3D}) {
        wb.setOpen(b, true);
    }
    const auto before = snapshot();
    load("[Modele]\r\n[Aile]\r\nEmplanture_1=500\r\n");
    EXPECT_EQ(s.text(F_Main::Caption), "TARVOKIN 3.1 Modèle inconnu");
    EXPECT_EQ(s.text(F_3D::T_NOM_Modele), "Modèle inconnu");
    const auto after = snapshot();
    for (uint16_t i = 0; i < kCellCount; ++i) {
        const Cell c{i};
        if (c == F_Main::Caption) continue;
        EXPECT_EQ(after[i], before[i]) << cellPath(c);
    }
    EXPECT_TRUE(wb.wingReady && wb.stabReady && wb.fuselageReady);

    // A file that is not there is no project either.
    wb.projectFilePath = (home / "missing.MDL").string();
    LoadProject(wb);
    EXPECT_EQ(s.text(F_GEO_SF::b5), "333");
    EXPECT_TRUE(wb.isOpen(button::Motorisation));
}

TEST_F(ProjectFile, NonNumericValueIsTheTypeMismatchWithCellsAsFarAsRead) {
    Sheet& s = wb.sheet;
    wb.setOpen(button::Performances, true);
    try {
        load("[Modele]\nNom=Bird\nMasse_1=900\nMasse_2=12kg\n[Aile]\nEmplanture_1=321\n");
        FAIL() << "no error";
    } catch (const RunError& e) {
        EXPECT_EQ(e.code(), kErrTypeMismatch);
    }
    EXPECT_EQ(s.text(F_3D::T_NOM_Modele), "Bird");
    EXPECT_EQ(s.text(F_GEO_SF_REGLAGES::H30), "900");
    EXPECT_EQ(s.text(F_GEO_SF::b5), "200");
    // The panels keep working after the failed load.
    EXPECT_TRUE(wb.isOpen(button::Performances));
    EXPECT_TRUE(wb.wingReady && wb.stabReady && wb.fuselageReady);
    EXPECT_EQ(s.text(F_GEO_SF_REGLAGES::T_ALLOW), "1");

    // An empty numeric value is no number either.
    EXPECT_THROW(load("[Modele]\nNom=Bird\n[Aile]\nEmplanture_1=\n"), RunError);
    // A list position beyond the list is the list's invalid-value error.
    try {
        load("[Modele]\nNom=Bird\n[Fuselage]\nType=7\n");
        FAIL() << "no error";
    } catch (const RunError& e) {
        EXPECT_EQ(e.code(), 380);
    }
}

TEST_F(ProjectFile, LoadSetsTheMirrorsAndReplacesEmptyInputs) {
    load("[Modele]\nNom=Bird\nMasse_1=0\nMasse_2=1200\n[Aile]\nLongueur_1=600\nLongueur_2=400\nLongueur_3=80\n"
         "Winglets=1\nPos_H=12\nVKmh=0\n[Fuselage]\nNez_BA=330\n[Stab]\nPos_H=30\nLevier=750\n"
         "[Reglages]\nCz_calage=0.45\n",
         "bird.MDL");
    const Sheet& s = wb.sheet;
    EXPECT_EQ(s.text(F_Main::Caption), "TARVOKIN 3.1 Bird");
    EXPECT_EQ(s.text(F_3D::T_PROJET), (home / "bird.MDL").string());
    EXPECT_EQ(s.text(F_3D::Text8), "2");  // panel 3 is the winglet
    EXPECT_EQ(s.text(F_GEO_SF::a12), "10");
    EXPECT_EQ(s.text(F_3D::a12), "10");
    EXPECT_EQ(s.text(F_GEO_SF_REGLAGES::H30), "500");
    EXPECT_EQ(s.text(F_GEO_SF_REGLAGES::I30), "1200");
    EXPECT_EQ(s.text(F_3D::D20), "42");
    EXPECT_EQ(s.text(F_3D::F29), "0.45");
    EXPECT_EQ(s.text(F_3D::Slider1[0]), "330");
    EXPECT_EQ(s.text(F_3D::Slider1[5]), "750");
}

TEST_F(ProjectFile, LoadQuietsThePanelsAroundTheRecalculation) {
    for (int b : {button::Fuselage, button::Motorisation, button::Performances, button::Allongement,
                  button::View3D}) {
        wb.setOpen(b, true);
    }
    // What the recalculation sees: it writes the span, so watch that write.
    struct Seen {
        std::string allow, perf, aspect, view, fuselage;
        bool ready = false;
    } seen;
    const int h = wb.sheet.addListener([&](Cell c) {
        if (c == F_GEO_SF::j6) {
            seen = {wb.sheet.text(F_GEO_SF_REGLAGES::T_ALLOW), wb.sheet.text(F_Main::Toolbar2[17]),
                    wb.sheet.text(F_Main::Toolbar2[18]), wb.sheet.text(F_Main::Toolbar2[7]),
                    wb.sheet.text(F_Main::Toolbar2[11]), wb.wingReady && wb.stabReady && wb.fuselageReady};
        }
    });
    int perfRefreshes = 0;
    std::string motorAtRefresh;
    wb.panelRefresh[button::Performances] = [&](Workbench& w) {
        ++perfRefreshes;
        motorAtRefresh = w.sheet.text(F_3D::d6);
    };
    load("[Modele]\nNom=Bird\n[Aile]\nEmplanture_1=220\nSaumon_1=180\nLongueur_1=700\n[Moteur]\nIA=18\n");
    wb.sheet.removeListener(h);

    EXPECT_EQ(seen.allow, "0");
    EXPECT_EQ(seen.perf, "0");
    EXPECT_EQ(seen.aspect, "0");
    EXPECT_EQ(seen.view, "0");
    EXPECT_EQ(seen.fuselage, "1");
    EXPECT_TRUE(seen.ready);

    EXPECT_EQ(wb.sheet.text(F_GEO_SF_REGLAGES::T_ALLOW), "1");
    EXPECT_TRUE(wb.isOpen(button::Fuselage));
    EXPECT_FALSE(wb.isOpen(button::Motorisation));
    EXPECT_TRUE(wb.isOpen(button::Performances));
    EXPECT_TRUE(wb.isOpen(button::Allongement));
    EXPECT_TRUE(wb.isOpen(button::View3D));
    // The performance curves are redone once, before the power keys are read.
    EXPECT_EQ(perfRefreshes, 1);
    EXPECT_EQ(motorAtRefresh, "0");
    EXPECT_EQ(wb.sheet.text(F_3D::d6), "18");
}

TEST_F(ProjectFile, AirfoilNamesAreMatchedWithoutCaseAndUnknownOnesPassedOver) {
    Sheet& s = wb.sheet;
    ASSERT_TRUE(s.selectText(F_PROFILS::CB_1[1], "Générique Début"));
    ASSERT_TRUE(s.selectText(F_PROFILS::CB_1[2], "CLARKY"));
    load("[Modele]\nNom=Bird\nProfil_0=clarky\nProfil_1=0\nProfil_2=NOSUCH\n[Aile]\nNom_Profil=naca2412\n");
    EXPECT_EQ(s.text(F_PROFILS::CB_1[0]), "CLARKY");
    EXPECT_EQ(s.text(F_PROFILS::CB_1[1]), "Générique Début");
    EXPECT_EQ(s.text(F_PROFILS::CB_1[2]), "");
    EXPECT_EQ(s.text(F_3D::Combo5), "NACA2412");
    EXPECT_EQ(s.listIndex(F_3D::Combo5), 2);

    // A wing airfoil the catalogue lacks keeps its name for the start-up check.
    load("[Modele]\nNom=Bird\n[Aile]\nNom_Profil=E387\n");
    EXPECT_EQ(s.text(F_3D::Combo5), "E387");
    EXPECT_EQ(s.listIndex(F_3D::Combo5), -1);
}

TEST_F(ProjectFile, ModelClassIsReadButNeverWritten) {
    load("[Modele]\nNom=Bird\nType=Racer\n");
    EXPECT_EQ(wb.sheet.text(F_CALC_MOT::G3), "Racer");
    ASSERT_TRUE(wb.sheet.selectText(F_CALC_MOT::G3, "Maquette"));
    SaveProject(wb);
    EXPECT_EQ(ReadProfileString("Modele", "Type", "", home / "p.MDL"), "Racer");

    load("[Modele]\nNom=Bird\n", "q.MDL");
    EXPECT_EQ(wb.sheet.text(F_CALC_MOT::G3), "Planeur début");
}

TEST_F(ProjectFile, SaveKeepsWhatItDoesNotKnowAndCompletesABareName) {
    writeBytes(home / "keep.MDL", "; hand notes\r\n[Modele]\r\nNom=Bird\r\nAuthor=Me\r\n[Custom]\r\nx=1\r\n");
    wb.projectFilePath = "keep.MDL";
    wb.sheet.set(F_3D::T_NOM_Modele, "Bird 2");
    SaveProject(wb);
    EXPECT_EQ(wb.projectFilePath, (home / "keep.MDL").string());
    const std::string bytes = readBytes(home / "keep.MDL");
    EXPECT_EQ(bytes.rfind("; hand notes\r\n[Modele]\r\nNom=Bird 2\r\nAuthor=Me\r\n", 0), 0u);
    EXPECT_TRUE(contains(bytes, "[Custom]\r\nx=1\r\n"));
}

TEST_F(ProjectFile, ShippedDemoModelLoads) {
    tarvokin::test::copyInstallation(home.path());
    wb.projectFilePath = (home / "MODELES" / "DEMO.MDL").string();
    LoadProject(wb);
    const Sheet& s = wb.sheet;
    EXPECT_EQ(s.text(F_3D::T_NOM_Modele), "Démo Planeur 2m20");
    EXPECT_EQ(s.text(F_GEO_SF::b5), "230");
    EXPECT_EQ(s.text(F_GEO_SF::c9), "-1.5");
    EXPECT_EQ(s.text(F_GEO_FUS::Couple_Y1[3]), "33");
    EXPECT_EQ(s.text(F_GEO_FUS::Ribs[35]), "1305");
    EXPECT_EQ(s.text(F_3D::Option1[0]), "1");  // the classic design with its stabiliser
    EXPECT_EQ(s.text(F_3D::b6), "2200");
    EXPECT_EQ(s.text(F_3D::Combo2), "3");
    EXPECT_EQ(s.text(F_3D::Combo6), "Générique");
    EXPECT_EQ(s.text(F_3D::f5), "10");
    EXPECT_EQ(s.text(F_PROFILS::CB_1[1]), "Générique Début");
    EXPECT_EQ(s.text(F_CALC_MOT::G3), "Planeur début");
}

TEST_F(ProjectFile, GarbageAroundTheKeysLoadsWithDefaults) {
    std::string junk = "[Modele]\r\nNom=Bird\r\n";
    for (int i = 0; i < 8192; ++i) {
        const char c = static_cast<char>((i * 97 + 13) & 0xFF);
        junk.push_back(c == '[' ? ' ' : c);  // no stray section may swallow the keys below
    }
    junk += "\r\n[Aile]\r\nEmplanture_1=" + std::string(100'000, '2') + "\r\n" + std::string(500'000, '=') + "\r\n";
    writeBytes(home / "junk.MDL", junk);
    wb.projectFilePath = (home / "junk.MDL").string();
    try {
        LoadProject(wb);
    } catch (const RunError&) {
        // The junk may hold a numeric key with a bad value: the run-time error is the answer then.
    }
    EXPECT_EQ(wb.sheet.text(F_3D::T_NOM_Modele), "Bird");
    // The value was cut at 127 digits before it was read.
    EXPECT_EQ(wb.sheet.text(F_GEO_SF::b5).substr(0, 4), "2.22");
}

TEST_F(ProjectFile, FailedSaveIsReportedAndTheFileKept) {
    load("[Modele]\nNom=Bird\nMasse_1=1000\n");
    const std::string before = readBytes(home / "p.MDL");
    std::vector<std::string> shown;
    wb.showMessage = [&shown](const std::string& text) { shown.push_back(text); };
    wb.sheet.set(F_GEO_SF_REGLAGES::H30, "1500");
    std::filesystem::permissions(home / "p.MDL", std::filesystem::perms(0444));
    EXPECT_FALSE(SaveProject(wb));
    EXPECT_EQ(readBytes(home / "p.MDL"), before);
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_TRUE(contains(shown[0], "p.MDL")) << shown[0];
    EXPECT_TRUE(contains(shown[0], "lecture seule")) << shown[0];

    // Into a folder that is not there: told as well.
    shown.clear();
    wb.projectFilePath = (home / "gone" / "p.MDL").string();
    EXPECT_FALSE(SaveProject(wb));
    EXPECT_EQ(shown.size(), 1u);
}
