#include <gtest/gtest.h>

#include "core/catalogue.h"
#include "support/temp_dir.h"

using namespace tarvokin;
using tarvokin::test::readBytes;
using tarvokin::test::TempDir;
using tarvokin::test::writeBytes;

TEST(CatalogueRead, HeaderSkippedThenColumnsTwoThreeAndTheLastFieldOfAnyRow) {
    TempDir dir;
    writeBytes(dir / "G.CSV",
               "CLARKY;-0.08;-3.5;/d/CLARKY.DAT\r\n"  // a header of any content
               "G\xE9n\xE9rique Rapide;-0.0839;-3.5633;DATA/CLARKY.DAT\r\n"
               "NACA2412;1500000;0.0061;0.45;0.01;1.4;-0.053;-2.1;/data/NACA2412.DAT\r\n"
               "BAD;abc;;/data/BAD.DAT\n"
               "NOSEP\r\n"
               "\r\n"
               "SHORT;0.5\r\n");
    ProfilCatalogue c;
    ASSERT_TRUE(c.read(dir / "G.CSV"));
    ASSERT_EQ(c.rows.size(), 4u);  // rows without ";" are passed over
    EXPECT_EQ(c.rows[0].Profil, "Générique Rapide");
    EXPECT_DOUBLE_EQ(c.rows[0].Cm0, -0.0839);
    EXPECT_DOUBLE_EQ(c.rows[0].Alpha0, -3.5633);
    EXPECT_EQ(c.rows[0].Path, "DATA/CLARKY.DAT");
    // Nine fields: Re Ref and Cxmin stand where Cm0 and Alpha0 are read.
    EXPECT_DOUBLE_EQ(c.rows[1].Cm0, 1500000);
    EXPECT_DOUBLE_EQ(c.rows[1].Alpha0, 0.0061);
    EXPECT_EQ(c.rows[1].Path, "/data/NACA2412.DAT");
    EXPECT_EQ(c.rows[2].Cm0, 0.0);
    EXPECT_EQ(c.rows[2].Alpha0, 0.0);
    EXPECT_EQ(c.rows[2].Path, "/data/BAD.DAT");
    EXPECT_EQ(c.rows[3].Profil, "SHORT");
    EXPECT_EQ(c.rows[3].Path, "0.5");
}

TEST(CatalogueRead, MissingFileLeavesTheRowsAndBinaryJunkDoesNotCrash) {
    TempDir dir;
    ProfilCatalogue c;
    c.rows = {{"KEEP", 0, 0, "x"}};
    EXPECT_FALSE(c.read(dir / "none.CSV"));
    ASSERT_EQ(c.rows.size(), 1u);

    std::string junk = "header\n";
    for (int i = 0; i < 20000; ++i) junk.push_back(static_cast<char>((i * 131) & 0xFF));
    junk += "\n" + std::string(1'000'000, ';') + "\n";
    writeBytes(dir / "junk.CSV", junk);
    EXPECT_TRUE(c.read(dir / "junk.CSV"));
}

TEST(CatalogueWrite, ExactHeaderFourFieldsAndLatin1RoundTrip) {
    TempDir dir;
    ProfilCatalogue c;
    c.rows = {{"Générique Début", -0.0839, -3.5633, "DATA/CLARKY.DAT"},
              {"E387", 0.0, 0.1 + 0.2, "/home/u/data/E387,V2.DAT"},
              {"TINY", -0.0, 1e-05, "/d/TINY.DAT"}};
    ASSERT_TRUE(c.write(dir / "G.CSV"));
    const std::string bytes = readBytes(dir / "G.CSV");
    EXPECT_EQ(bytes,
              "Profil;Re Ref;Cxmin;Czopt;k;Cz decrochange;Cm0;Alpha0;Path\r\n"
              "G\xE9n\xE9rique D\xE9" "but;-0.0839;-3.5633;DATA/CLARKY.DAT\r\n"
              "E387;0;0.30000000000000004;/home/u/data/E387.V2.DAT\r\n"
              "TINY;0;1e-05;/d/TINY.DAT\r\n");

    ProfilCatalogue back;
    ASSERT_TRUE(back.read(dir / "G.CSV"));
    ASSERT_EQ(back.rows.size(), 3u);
    EXPECT_EQ(back.rows[0].Profil, "Générique Début");
    EXPECT_EQ(back.rows[0].Cm0, -0.0839);
    EXPECT_EQ(back.rows[1].Alpha0, 0.1 + 0.2);
    EXPECT_EQ(back.rows[2].Alpha0, 1e-05);
}

TEST(CatalogueWrite, FailedWriteKeepsTheOldFile) {
    TempDir dir;
    const auto target = dir / "G.CSV";
    std::filesystem::create_directories(target);  // cannot be replaced by a file
    ProfilCatalogue c;
    c.rows = {{"A", 0, 0, "a"}};
    EXPECT_FALSE(c.write(target));
    EXPECT_TRUE(std::filesystem::is_directory(target));
    EXPECT_FALSE(c.write(dir / "NO" / "SUCH" / "G.CSV"));
}

TEST(CatalogueFind, NameWithoutCaseOrTheNotFoundMark) {
    ProfilCatalogue c;
    c.rows = {{"Générique Début", 0, 0, ""}, {"clarky", 0, 0, ""}, {"CLARKY", 0, 0, ""}};
    EXPECT_EQ(c.Find_Profil("GÉNÉRIQUE DÉBUT"), 0u);
    EXPECT_EQ(c.Find_Profil("ClarkY"), 1u);  // the first of equal names
    EXPECT_EQ(c.Find_Profil("CLARK"), kNotFound);
    EXPECT_EQ(c.Find_Profil(""), kNotFound);
    EXPECT_EQ(kNotFound, 9999999u);
    EXPECT_EQ(c.names(), (std::vector<std::string>{"Générique Début", "clarky", "CLARKY"}));
}
