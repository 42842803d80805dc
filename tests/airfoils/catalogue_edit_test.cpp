#include <gtest/gtest.h>

#include "airfoils/catalogue_edit.h"
#include "core/file_spelling.h"
#include "core/profile_file.h"
#include "core/text_case.h"
#include "core/workbench.h"
#include "support/temp_dir.h"
#include "support/installed_workbench.h"

using namespace tarvokin;

namespace {

struct Catalogue {
    test::TempDir dir;
    test::InstalledWorkbench wb{dir.path()};
    Catalogue() {
        std::filesystem::create_directories(dir / "DATA");
        wb.catalogue.rows = {{"Générique Rapide", -0.05, -2, "DATA/MH32.DAT"},
                             {"Générique Début", -0.08, -3.5, "DATA/CLARKY.DAT"},
                             {"CLARKY", -0.08, -3.5, "DATA/CLARKY.DAT"},
                             {"SD7037", -0.07, -2.9, "DATA/SD7037.DAT"}};
        wb.fillAirfoilLists();
        wb.sheet.setListIndex(F_PROFILS::CB_1[0], 2);  // CLARKY
        wb.sheet.setListIndex(F_PROFILS::CB_1[1], 3);  // SD7037
        wb.sheet.setListIndex(F_PROFILS::CB_1[2], 0);  // Générique Rapide
    }
    std::string slot(int i) const { return wb.sheet.text(F_PROFILS::CB_1[i]); }
};

}  // namespace

TEST(AddProfil, NewAirfoilSortsBehindTheGenericRowsAndOthersStayPut) {
    Catalogue c;
    Add_Profil(c.wb, 1, "/somewhere/aa18.dat");
    ASSERT_EQ(c.wb.catalogue.rows.size(), 5u);
    // "AA18" sorts before every non-generic row: directly behind the generic ones.
    EXPECT_EQ(c.wb.catalogue.rows[2].Profil, "AA18");
    EXPECT_EQ(c.wb.catalogue.rows[2].Path, "/SOMEWHERE/AA18.DAT");
    EXPECT_EQ(c.slot(1), "AA18");
    EXPECT_EQ(c.slot(0), "CLARKY");
    EXPECT_EQ(c.slot(2), "Générique Rapide");
    Add_Profil(c.wb, 2, "/x/ZZ99.DAT");
    EXPECT_EQ(c.wb.catalogue.rows.back().Profil, "ZZ99");
    EXPECT_EQ(c.slot(1), "AA18");
    // The file is rewritten and reads back the same rows.
    ProfilCatalogue again;
    ASSERT_TRUE(again.read(c.wb.catalogueFilePath()));
    EXPECT_EQ(again.names(), c.wb.catalogue.names());
}

TEST(AddProfil, KnownNameInOtherCaseOnlyChangesThePath) {
    Catalogue c;
    c.wb.catalogue.rows[3].Cm0 = -0.07;
    Add_Profil(c.wb, 0, "/new/place/sd7037.dat");
    ASSERT_EQ(c.wb.catalogue.rows.size(), 4u);
    EXPECT_EQ(c.wb.catalogue.rows[3].Profil, "SD7037");
    EXPECT_EQ(c.wb.catalogue.rows[3].Path, "/new/place/sd7037.dat");
    EXPECT_EQ(c.wb.catalogue.rows[3].Cm0, 0.0);  // figures cleared until its polars are read
    EXPECT_EQ(c.slot(0), "SD7037");
    EXPECT_EQ(c.slot(1), "SD7037");
}

TEST(AddProfil, BareNameIsCompletedAndTheSlotWrittenToTheProject) {
    Catalogue c;
    c.wb.projectFilePath = (c.dir / "P.MDL").string();
    Add_Profil(c.wb, 0, "E205");
    const size_t row = c.wb.catalogue.Find_Profil("e205");
    ASSERT_EQ(row, 3u);  // between CLARKY and SD7037
    EXPECT_EQ(c.wb.catalogue.rows[row].Path, upperCase((c.dir / "E205.DAT").string()));
    // The slot's airfoil before the addition goes to the project.
    EXPECT_EQ(ReadProfileString("Modele", "Profil_0", "", c.wb.projectFilePath), "CLARKY");
}

TEST(CalcRe, SeventyTimesSpeedTimesMeanChord) {
    EXPECT_EQ(Calc_Re(36, 30, 1.5), 140000);
    EXPECT_EQ(Calc_Re(40, 43.8, 2.2), 154848);
    EXPECT_EQ(Calc_Re(40, 43.8, 0), 0);
}

TEST(FileSpelling, FindsAFileStoredInOtherCase) {
    test::TempDir d;
    test::writeBytes(d / "Data" / "clarky.dat", "x");
    EXPECT_EQ(existingSpelling(d / "DATA" / "CLARKY.DAT"), d / "Data" / "clarky.dat");
    EXPECT_EQ(existingSpelling(d / "DATA" / "NONE.DAT"), d / "DATA" / "NONE.DAT");
}
