#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "core/profile_file.h"
#include "support/temp_dir.h"

using namespace tarvokin;
using tarvokin::test::readBytes;
using tarvokin::test::TempDir;
using tarvokin::test::writeBytes;

namespace {

bool contains(const std::string& s, const std::string& part) { return s.find(part) != std::string::npos; }

}  // namespace

TEST(ProfileRead, NamesCompareWithoutCaseAccentsIncluded) {
    TempDir dir;
    writeBytes(dir / "a.ini", "[H\xE9lice]\r\nDiam\xE8tre=10\r\n[Aile]\r\nPOS_H=12\r\n");
    const ProfileDocument doc = ProfileDocument::load(dir / "a.ini");
    EXPECT_EQ(doc.get("HÉLICE", "diamètre", "x"), "10");
    EXPECT_EQ(doc.get("hélice", "DIAMÈTRE", "x"), "10");
    EXPECT_EQ(doc.get("aile", "Pos_H", "x"), "12");
    EXPECT_TRUE(doc.has("AILE", "pos_h"));
    EXPECT_FALSE(doc.has("Aile", "Pos"));
}

TEST(ProfileRead, MissingFileSectionOrKeyGiveTheDefault) {
    TempDir dir;
    EXPECT_EQ(ReadProfileString("Modele", "Nom", "Modèle inconnu", dir / "none.MDL"), "Modèle inconnu");
    writeBytes(dir / "a.ini", "[Modele]\nNom=Bird\n");
    EXPECT_EQ(ReadProfileString("Aile", "Nom", "d", dir / "a.ini"), "d");
    EXPECT_EQ(ReadProfileString("Modele", "Masse_1", "0", dir / "a.ini"), "0");
    // A key of another section is not seen from this one.
    writeBytes(dir / "b.ini", "[Aile]\nNom=Wing\n[Modele]\nMasse_1=3\n");
    EXPECT_EQ(ReadProfileString("Modele", "Nom", "d", dir / "b.ini"), "d");
    // A key standing before any section belongs to none.
    writeBytes(dir / "c.ini", "Nom=Loose\n[Modele]\n");
    EXPECT_EQ(ReadProfileString("Modele", "Nom", "d", dir / "c.ini"), "d");
}

TEST(ProfileRead, ValueIsTrimmedUnquotedAndCutAt127Characters) {
    TempDir dir;
    const std::string longAscii(300, 'a');
    std::string longAccented;
    for (int i = 0; i < 200; ++i) longAccented += '\xE9';  // é, one byte on disk
    writeBytes(dir / "a.ini", "[S]\r\nk1=   spaced value \t\r\nk2=\"quoted \"\r\nk3='single'\r\nk4=\"half\r\nk5=" +
                                  longAscii + "\r\nk6=" + longAccented + "\r\nk7=\r\n");
    const ProfileDocument doc = ProfileDocument::load(dir / "a.ini");
    EXPECT_EQ(doc.get("S", "k1", ""), "spaced value");
    EXPECT_EQ(doc.get("S", "k2", ""), "quoted ");
    EXPECT_EQ(doc.get("S", "k3", ""), "single");
    EXPECT_EQ(doc.get("S", "k4", ""), "\"half");
    EXPECT_EQ(doc.get("S", "k5", ""), std::string(127, 'a'));
    std::string expected;
    for (int i = 0; i < 127; ++i) expected += "é";
    EXPECT_EQ(doc.get("S", "k6", ""), expected);
    // A key that is there with nothing behind "=" is empty, not the default.
    EXPECT_EQ(doc.get("S", "k7", "d"), "");
}

TEST(ProfileRead, BracketKeyOfMessageFilesIsAKeyNotASection) {
    TempDir dir;
    writeBytes(dir / "m.lng", "[Messages]\r\n[#7] = Erreur ** ici\r\n[#19]=Profil\r\nAfter=1\r\n[Other]\r\nx=2\r\n");
    const ProfileDocument doc = ProfileDocument::load(dir / "m.lng");
    EXPECT_EQ(doc.get("Messages", "[#7]", ""), "Erreur ** ici");
    EXPECT_EQ(doc.get("Messages", "[#19]", ""), "Profil");
    EXPECT_EQ(doc.get("Messages", "After", ""), "1");
    EXPECT_EQ(doc.get("Other", "x", ""), "2");
}

TEST(ProfileRead, HandEditedUtf8FileIsUnderstood) {
    TempDir dir;
    writeBytes(dir / "a.ini", "\xEF\xBB\xBF[Hélice]\nDiamètre=11\nType=Générique\n");
    const ProfileDocument doc = ProfileDocument::load(dir / "a.ini");
    EXPECT_EQ(doc.get("Hélice", "Diamètre", ""), "11");
    EXPECT_EQ(doc.get("HÉLICE", "Type", ""), "Générique");
}

TEST(ProfileRead, GarbageNeverCrashesAndKnownKeysAroundItStillRead) {
    TempDir dir;
    std::string junk = "[Modele]\r\nNom=Bird\r\n";
    junk += std::string("\x00\x01\xFF\xFE binary \x00=\x00", 16) + "\r\n";
    junk += "no equal sign here\r\n[unclosed section\r\n=value without key\r\n";
    junk += std::string(2'000'000, 'x') + "=" + std::string(1'000'000, 'y') + "\r\n";
    junk += "[]\r\n";
    junk += "[Aile]\r\nVKmh=35\r\n\xC3\x28 broken utf8\r\n";
    writeBytes(dir / "junk.MDL", junk);
    const ProfileDocument doc = ProfileDocument::load(dir / "junk.MDL");
    EXPECT_EQ(doc.get("Modele", "Nom", ""), "Bird");
    EXPECT_EQ(doc.get("Aile", "VKmh", ""), "35");
    EXPECT_EQ(doc.get("Modele", std::string(2'000'000, 'x'), "").size(), 127u);
    EXPECT_EQ(doc.get("Modele", "Masse_1", "0"), "0");

    // Pure binary: just the defaults.
    std::string bin;
    for (int i = 0; i < 4096; ++i) bin.push_back(static_cast<char>((i * 37) & 0xFF));
    writeBytes(dir / "bin.MDL", bin);
    EXPECT_EQ(ReadProfileString("Modele", "Nom", "Modèle inconnu", dir / "bin.MDL"), "Modèle inconnu");
    EXPECT_TRUE(WriteProfileString("Modele", "Nom", "X", dir / "bin.MDL"));
    EXPECT_EQ(ReadProfileString("Modele", "Nom", "", dir / "bin.MDL"), "X");
}

TEST(ProfileWrite, UpdateInPlaceKeepsOrderSpellingCommentsAndUnknownKeys) {
    TempDir dir;
    writeBytes(dir / "p.MDL",
               "; made by hand\r\n[Modele]\r\nNom=Old\r\nOldKey=keep me\r\n\r\n[Aile]\r\nPOS_H=1\r\n; note\r\n"
               "Emplanture_1=200\r\n\r\n\r\n[Stab]\r\nLevier=600\r\n");
    ProfileDocument doc = ProfileDocument::load(dir / "p.MDL");
    doc.set("modele", "NOM", "New");
    doc.set("Aile", "Pos_H", "12");
    doc.set("Aile", "VKmh", "35");     // new key, end of its section
    doc.set("Derive", "Bi", "0");      // new section, end of file
    doc.set("Modele", "Masse_1", "900");
    ASSERT_TRUE(doc.save(dir / "p.MDL"));
    EXPECT_EQ(readBytes(dir / "p.MDL"),
              "; made by hand\r\n[Modele]\r\nNom=New\r\nOldKey=keep me\r\nMasse_1=900\r\n\r\n[Aile]\r\nPOS_H=12\r\n"
              "; note\r\nEmplanture_1=200\r\nVKmh=35\r\n\r\n\r\n[Stab]\r\nLevier=600\r\n[Derive]\r\nBi=0\r\n");
}

TEST(ProfileWrite, NewFileUsesCrLfAndSectionsComeInOrderOfFirstWrite) {
    TempDir dir;
    const auto f = dir / "new.ini";
    EXPECT_TRUE(WriteProfileString("B", "k", "1", f));
    EXPECT_TRUE(WriteProfileString("A", "k", "2", f));
    EXPECT_TRUE(WriteProfileString("B", "j", "3", f));
    EXPECT_EQ(readBytes(f), "[B]\r\nk=1\r\nj=3\r\n[A]\r\nk=2\r\n");
}

TEST(ProfileWrite, FileWithUnixLineEndsKeepsThem) {
    TempDir dir;
    const auto f = dir / "unix.ini";
    writeBytes(f, "[A]\nk=1\n");
    EXPECT_TRUE(WriteProfileString("A", "j", "2", f));
    EXPECT_EQ(readBytes(f), "[A]\nk=1\nj=2\n");
}

TEST(ProfileWrite, AccentedNamesAreLatin1OnDiskAndReadBack) {
    TempDir dir;
    const auto f = dir / "m.MDL";
    ASSERT_TRUE(WriteProfileString("Hélice", "Diamètre", "10", f));
    ASSERT_TRUE(WriteProfileString("Accus", "Capacité", "1", f));
    const std::string bytes = readBytes(f);
    EXPECT_TRUE(contains(bytes, "[H\xE9lice]\r\nDiam\xE8tre=10\r\n"));
    EXPECT_TRUE(contains(bytes, "Capacit\xE9=1"));
    EXPECT_FALSE(contains(bytes, "\xC3"));  // no UTF-8 sequence
    EXPECT_EQ(ReadProfileString("Hélice", "Diamètre", "", f), "10");
    // Rewriting a key found in another case keeps the file's spelling.
    ASSERT_TRUE(WriteProfileString("HÉLICE", "DIAMÈTRE", "11", f));
    EXPECT_TRUE(contains(readBytes(f), "[H\xE9lice]\r\nDiam\xE8tre=11\r\n"));
}

TEST(ProfileWrite, JunkLinesSurviveARewriteByteForByte) {
    TempDir dir;
    const auto f = dir / "j.ini";
    const std::string junkLine = std::string("\xFF\xFE\x01 no key \x00 here", 17);
    writeBytes(f, "[A]\r\n" + junkLine + "\r\nk=1\r\n");
    ASSERT_TRUE(WriteProfileString("A", "k", "2", f));
    EXPECT_EQ(readBytes(f), "[A]\r\n" + junkLine + "\r\nk=2\r\n");
}

TEST(ProfileWrite, LineEndInAValueCannotSplitTheLine) {
    TempDir dir;
    const auto f = dir / "a.ini";
    ASSERT_TRUE(WriteProfileString("A", "k", "one\r\ntwo", f));
    ASSERT_TRUE(WriteProfileString("A", "j", "3", f));
    EXPECT_EQ(ReadProfileString("A", "k", "", f), "one  two");
    EXPECT_EQ(ReadProfileString("A", "j", "", f), "3");
}

TEST(ProfileSave, FailedSaveLeavesTheGoodFileInPlace) {
    TempDir dir;
    // A folder that cannot be written: the old file stays whole.
    const auto ro = dir / "ro";
    std::filesystem::create_directories(ro);
    const auto f = ro / "p.MDL";
    writeBytes(f, "[Modele]\r\nNom=Good\r\n");
    ::chmod(ro.c_str(), 0555);
    if (::geteuid() != 0) {
        EXPECT_FALSE(WriteProfileString("Modele", "Nom", "Bad", f));
        EXPECT_EQ(readBytes(f), "[Modele]\r\nNom=Good\r\n");
    }
    ::chmod(ro.c_str(), 0755);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(ro), std::filesystem::directory_iterator()), 1);

    // A target that is a folder is refused, and nothing is left beside it.
    const auto target = dir / "folder.MDL";
    std::filesystem::create_directories(target);
    ProfileDocument doc;
    doc.set("Modele", "Nom", "X");
    EXPECT_FALSE(doc.save(target));
    EXPECT_TRUE(std::filesystem::is_directory(target));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir.path()), std::filesystem::directory_iterator()),
              2);
}

namespace {

// The file's modification time, to tell a rewrite from a file left alone.
std::filesystem::file_time_type ageOf(const std::filesystem::path& f) { return std::filesystem::last_write_time(f); }

void makeOld(const std::filesystem::path& f) {
    std::filesystem::last_write_time(f, std::filesystem::file_time_type::clock::now() - std::chrono::hours(48));
}

}  // namespace

TEST(ProfileSave, SameBytesLeaveTheFileUntouched) {
    TempDir dir;
    const auto f = dir / "p.MDL";
    writeBytes(f, "[Modele]\r\nNom=Good\r\n");
    makeOld(f);
    const auto before = ageOf(f);
    EXPECT_TRUE(WriteProfileString("Modele", "Nom", "Good", f));
    EXPECT_TRUE(ProfileDocument::load(f).save(f));
    EXPECT_EQ(ageOf(f), before);
    // A value that differs is written.
    EXPECT_TRUE(WriteProfileString("Modele", "Nom", "Other", f));
    EXPECT_NE(ageOf(f), before);
    EXPECT_EQ(readBytes(f), "[Modele]\r\nNom=Other\r\n");
}

TEST(ProfileSave, ReadOnlyFileIsNotReplacedAndTheReasonIsGiven) {
    TempDir dir;
    const auto f = dir / "p.MDL";
    writeBytes(f, "[Modele]\r\nNom=Good\r\n");
    ::chmod(f.c_str(), 0444);
    std::string reason;
    EXPECT_FALSE(WriteProfileString("Modele", "Nom", "Bad", f, &reason));
    EXPECT_EQ(readBytes(f), "[Modele]\r\nNom=Good\r\n");
    EXPECT_TRUE(contains(reason, "lecture seule")) << reason;
    EXPECT_EQ(std::filesystem::status(f).permissions() & std::filesystem::perms::all,
              std::filesystem::perms(0444));

    // A folder that does not exist: no file appears, the reason says why.
    reason.clear();
    EXPECT_FALSE(WriteProfileString("Modele", "Nom", "X", dir / "none" / "p.MDL", &reason));
    EXPECT_FALSE(reason.empty());
    EXPECT_FALSE(std::filesystem::exists(dir / "none"));
}

TEST(ProfileSave, SymbolicLinkIsWrittenThroughToItsTarget) {
    TempDir dir;
    std::filesystem::create_directories(dir / "real");
    const auto target = dir / "real" / "p.MDL";
    writeBytes(target, "[Modele]\r\nNom=Good\r\n");
    std::filesystem::create_symlink("real/p.MDL", dir / "link.MDL");
    EXPECT_TRUE(WriteProfileString("Modele", "Nom", "Through", dir / "link.MDL"));
    EXPECT_TRUE(std::filesystem::is_symlink(dir / "link.MDL"));
    EXPECT_EQ(readBytes(target), "[Modele]\r\nNom=Through\r\n");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir / "real"), std::filesystem::directory_iterator()),
              1);
}

TEST(ProfileSave, FullDiskKeepsTheOldFileAndSaysSo) {
    TempDir dir;
    const auto f = dir / "p.MDL";
    writeBytes(f, "[Modele]\r\nNom=Good\r\n");
    // A file-size limit makes the write fail as a full disk does, without
    // needing a small file system the test could fill.
    ::signal(SIGXFSZ, SIG_IGN);
    rlimit old{};
    ::getrlimit(RLIMIT_FSIZE, &old);
    rlimit tight = old;
    tight.rlim_cur = 8;
    ::setrlimit(RLIMIT_FSIZE, &tight);
    ProfileDocument doc = ProfileDocument::load(f);
    doc.set("Modele", "Nom", "A much longer name than the limit allows");
    std::string reason;
    const bool saved = doc.save(f, &reason);
    ::setrlimit(RLIMIT_FSIZE, &old);
    EXPECT_FALSE(saved);
    EXPECT_FALSE(reason.empty());
    EXPECT_EQ(readBytes(f), "[Modele]\r\nNom=Good\r\n");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir.path()), std::filesystem::directory_iterator()), 1);
}
