// Language files as the program reads them: escapes, the 127-character
// buffer, messages with and without their detail, and files that are missing,
// changed or damaged.
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <chrono>
#include <cstdio>
#include <thread>

#include "core/language.h"
#include "core/messages.h"
#include "core/profile_file.h"
#include "core/workbench.h"
#include "entry/session.h"
#include "support/temp_dir.h"

using namespace tarvokin;
namespace fs = std::filesystem;

namespace {

struct Shown {
    test::TempDir dir;
    Workbench wb{dir.path()};
    std::vector<std::string> messages, questions;
    Shown() {
        wb.showMessage = [this](const std::string& t) { messages.push_back(t); };
        wb.askUser = [this](const std::string& t) {
            questions.push_back(t);
            return true;
        };
        fs::create_directories(dir.path() / "lang");
        wb.languageFilePath = (dir.path() / "lang" / "Anglais.lng").string();
    }
    void writeLanguage(const std::string& bytes) { test::writeBytes(wb.languageFilePath, bytes); }
};

}  // namespace

TEST(LanguageFile, EscapesLineEndsAndTheReadBuffer) {
    Shown s;
    s.writeLanguage("[F_X]\r\nCaption=a\\rb\r\nPath=C:\\\\lang\\\\x\r\nFeed=a\\fb\r\nLone=50\\%\r\n"
                    "Long=" + std::string(300, 'w') + "\r\nEmpty=\r\nQuoted=\"  blank  \"\r\n");
    const auto t = LanguageTable::load(s.wb.languageFilePath);
    EXPECT_EQ(normaliseLineEnds(*t->find("F_X", "Caption")), "a\nb");
    EXPECT_EQ(*t->find("f_x", "path"), "C:\\lang\\x");
    EXPECT_EQ(*t->find("F_X", "Feed"), "a\nb");
    EXPECT_EQ(*t->find("F_X", "Lone"), "50\\%");
    EXPECT_EQ(t->find("F_X", "Long")->size(), 127u);
    EXPECT_FALSE(t->find("F_X", "Empty"));  // an empty value never replaces a caption
    EXPECT_EQ(*t->find("F_X", "Quoted"), "  blank  ");
    EXPECT_FALSE(t->find("F_Y", "Caption"));
}

TEST(LanguageFile, MessagesTakeTheirDetailOnlyWhereMarked) {
    Shown s;
    s.writeLanguage("[Messages]\r\n[#7]=[#7] Calculation error:**, stopped\r\n[#3]=[#3] No workbook\r\n"
                    "[AskFor]\r\n[#20]=[#20] Save** now?\r\n");
    ShowMessage(s.wb, " [#7] ", "division by zero");
    ShowMessage(s.wb, "[#3] ", "ignored detail");
    EXPECT_TRUE(AskUser(s.wb, "[#20] ", "DEMO"));
    ASSERT_EQ(s.messages.size(), 2u);
    EXPECT_EQ(s.messages[0], "[#7] Calculation error: division by zero, stopped");
    EXPECT_EQ(s.messages[1], "[#3] No workbook");
    EXPECT_EQ(s.questions.at(0), "[#20] Save DEMO now?");
    // An id the file lacks shows the built-in French text; an unknown id an empty box.
    ShowMessage(s.wb, "[#19] ", "Profil_1");
    EXPECT_EQ(s.messages.back(), "[#19] Profil introuvable dans le catalogue : Profil_1");
    ShowMessage(s.wb, "[#99] ", "x");
    EXPECT_EQ(s.messages.back(), "");
}

TEST(LanguageFile, AMissingOrDamagedFileLeavesFrench) {
    Shown s;
    ShowMessage(s.wb, "[#2] ", "/x/y.MDL : disque plein.");  // no file at all
    EXPECT_EQ(s.messages.back(), "[#2] Impossible d'enregistrer /x/y.MDL : disque plein.\nLe fichier précédent est conservé.");

    std::string junk;
    for (int i = 0; i < 5000; ++i) junk.push_back(static_cast<char>((i * 131 + 7) % 256));
    s.writeLanguage(junk + "\r\n[Messages\r\n=\r\n[#7]" + std::string(10 * 1024 * 1024, 'x'));
    ShowMessage(s.wb, "[#7] ", "e");
    EXPECT_EQ(s.messages.back().rfind("[#7] ", 0), 0u);
    EXPECT_LE(s.messages.back().size(), 300u);
    // A file without the [Messages] section: the built-in texts.
    s.writeLanguage("[F_GEO_SF]\r\nCaption=Wing geometry\r\n");
    ShowMessage(s.wb, "[#3] ", "");
    EXPECT_EQ(s.messages.back(), "[#3] Fichier Excel inexistant");
}

TEST(LanguageFile, AFileThatCannotBeReadIsSaidOnceThenFrench) {
    Shown s;
    fs::create_directories(s.wb.languageFilePath);  // there, but no file to read
    ShowMessage(s.wb, "[#3] ", "");
    ShowMessage(s.wb, "[#3] ", "");
    ASSERT_EQ(s.messages.size(), 3u);
    EXPECT_EQ(s.messages[0], "ERREUR INIProfileRead " + s.wb.languageFilePath);
    EXPECT_EQ(s.messages[1], "[#3] Fichier Excel inexistant");
    EXPECT_EQ(s.messages[2], s.messages[1]);
}

TEST(LanguageFile, AFileChangedOnDiskIsReadAgain) {
    Shown s;
    s.writeLanguage("[Messages]\r\n[#3]=[#3] first\r\n");
    ShowMessage(s.wb, "[#3] ", "");
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    s.writeLanguage("[Messages]\r\n[#3]=[#3] second, longer\r\n");
    ShowMessage(s.wb, "[#3] ", "");
    EXPECT_EQ(s.messages.back(), "[#3] second, longer");
}

TEST(LanguageFile, ChangingLanguageKeepsTheChoiceAndRewritesTheSummary) {
    test::TempDir dir;
    test::copyInstallation(dir.path());
    Workbench wb(dir.path());
    ReadSettingsAndCatalogue(wb);
    ChangeLanguage(wb, "1");
    EXPECT_EQ(fs::path(wb.languageFilePath).filename(), "Anglais.lng");
    EXPECT_EQ(ReadProfileString("Langue", "Langue", "", wb.settingsFilePath()), "1");
    EXPECT_EQ(wb.sheet.text(F_3D::Label17), "Wing");
    EXPECT_EQ(wb.sheet.text(F_3D::Label_2[1]).rfind("Span : ", 0), 0u);
    // The NACA generator's inputs speak the language too.
    EXPECT_EQ(wb.sheet.text(F_NACA::Label1[0]), "Camber % Chord");
    ChangeLanguage(wb, "2");
    EXPECT_EQ(wb.sheet.text(F_NACA::Label1[0]), "Camber % cuerda");
    ChangeLanguage(wb, "0");
    EXPECT_EQ(wb.sheet.text(F_3D::Label17), "Aile");
    EXPECT_EQ(wb.sheet.text(F_NACA::Label1[0]), "Cambrure % corde");
}

namespace {

struct Listing {
    int status = -1;
    std::string out;
};

// The real program: the windows are built offscreen.
Listing captions(const std::string& args) {
    Listing l;
    const std::string cmd = "QT_QPA_PLATFORM=offscreen " + std::string(TARVOKIN_CLI) + " captions " + args + " 2>/dev/null";
    FILE* p = popen(cmd.c_str(), "r");
    if (!p) return l;
    char buf[4096];
    size_t n = 0;
    while ((n = fread(buf, 1, sizeof buf, p)) > 0) l.out.append(buf, n);
    const int st = pclose(p);
    l.status = WIFEXITED(st) ? WEXITSTATUS(st) : -1;
    return l;
}

}  // namespace

TEST(LanguageFile, TheCaptionsCommandListsTheNamedWindowsInTheLanguageAsked) {
    test::TempDir dir;
    test::copyInstallation(dir.path());
    const std::string home = "--home " + dir.path().string();
    const Listing english = captions(home + " --lang 1 F_NACA F_GEO_SF");
    ASSERT_EQ(english.status, 0);
    const auto table = LanguageTable::load(dir.path() / "lang" / "Anglais.lng");
    EXPECT_NE(english.out.find("F_NACA.Caption=" + table->get("F_NACA", "Caption", "?") + "\n"), std::string::npos);
    EXPECT_NE(english.out.find("F_NACA.Option1_2_Caption=" + table->get("F_NACA", "Option1_2_Caption", "?") + "\n"),
              std::string::npos);
    size_t lines = 0;
    for (size_t at = 0; at < english.out.size(); at = english.out.find('\n', at) + 1, ++lines) {
        const std::string line = english.out.substr(at, english.out.find('\n', at) - at);
        EXPECT_TRUE(line.rfind("F_NACA.", 0) == 0 || line.rfind("F_GEO_SF.", 0) == 0) << line;
        EXPECT_NE(line.find('='), std::string::npos) << line;
    }
    EXPECT_GT(lines, 30u);
    // French by default (the settings' language), and the refusals.
    EXPECT_NE(captions(home + " F_NACA").out.find("F_NACA.Option1_2_Caption=Naca 4 modifié\n"), std::string::npos);
    EXPECT_EQ(captions(home + " F_NOTHING").status, 1);
    EXPECT_EQ(captions(home + " --lang 7").status, 2);
}
