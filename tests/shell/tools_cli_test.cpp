// The project tools on the command line: a new model, the report drawn by the
// real program, a workbook exported and brought into a project, refusals.
#include <gtest/gtest.h>

#include <cstdlib>
#include <sstream>

#include "core/profile_file.h"
#include "shell/cli.h"
#include "support/temp_dir.h"

using namespace tarvokin;
namespace fs = std::filesystem;

namespace {

struct ToolRun {
    int status;
    std::string out, err;
};

ToolRun cli(std::vector<std::string> args) {
    std::ostringstream out, err;
    ToolRun r;
    r.status = runCli(args, TARVOKIN_CLI, out, err);
    r.out = out.str();
    r.err = err.str();
    return r;
}

struct Home {
    test::TempDir dir;
    Home() { test::copyInstallation(dir.path()); }
    std::string demo() const { return (dir.path() / "MODELES" / "DEMO.MDL").string(); }
    std::string home() const { return dir.path().string(); }
};

}  // namespace

TEST(CliTools, NewModelPrintsItsPathThenItsFields) {
    Home h;
    ToolRun r = cli({"new-model", "--home", h.home(), "--set", "F_WIZZARD.Text1=my.model x", "--set",
                 "F_WIZZARD.Text19=750"});
    ASSERT_EQ(r.status, 0) << r.err;
    const std::string path = (h.dir.path() / "MODELES" / "my.MDL").string();
    EXPECT_EQ(r.out.substr(0, r.out.find('\n')), "ProjectFilePath=" + path);
    EXPECT_NE(r.out.find("\nF_3D.T_NOM_Modele=MY\n"), std::string::npos);
    EXPECT_NE(r.out.find("\nF_GEO_SF.b7=750\n"), std::string::npos);
    EXPECT_EQ(r.out.find("F_WIZZARD."), std::string::npos);
    EXPECT_EQ(ReadProfileString("Modele", "Nom", "", path), "MY");

    ToolRun bad = cli({"new-model", "--home", h.home(), "--set", "F_WIZZARD.Text1=a|b"});
    EXPECT_EQ(bad.status, 1);
    EXPECT_NE(bad.err.find("[#7]"), std::string::npos);
    EXPECT_TRUE(bad.out.empty());
}

TEST(CliTools, ExportThenImportGivesTheSameFields) {
    Home h;
    const fs::path book = h.dir.path() / "demo.xlsx";
    ToolRun ex = cli({"export", h.demo(), "--home", h.home(), "--xlsx", book.string()});
    ASSERT_EQ(ex.status, 0) << ex.err;
    EXPECT_TRUE(fs::file_size(book) > 1000);
    ToolRun before = cli({"fields", h.demo(), "--home", h.home()});
    ToolRun im = cli({"import", book.string(), "--into", h.demo(), "--home", h.home()});
    ASSERT_EQ(im.status, 0) << im.err;
    EXPECT_EQ(im.out, before.out);
    // Not a workbook: said on stderr, the project file as it was.
    const std::string file = test::readBytes(h.demo());
    test::writeBytes(h.dir.path() / "not.xlsx", "PK nothing");
    ToolRun refused = cli({"import", (h.dir.path() / "not.xlsx").string(), "--into", h.demo(), "--home", h.home()});
    EXPECT_EQ(refused.status, 1);
    EXPECT_NE(refused.err.find("Classeur refusé"), std::string::npos);
    EXPECT_EQ(test::readBytes(h.demo()), file);
    EXPECT_EQ(cli({"export", h.demo(), "--home", h.home()}).status, 2);
}

TEST(CliTools, ReportWritesThePageAndTenPictures) {
    Home h;
    const fs::path out = h.dir.path() / "out.txt";
    const std::string cmd = std::string("QT_QPA_PLATFORM=offscreen \"") + TARVOKIN_CLI + "\" report \"" + h.demo() +
                            "\" --home \"" + h.home() + "\" > \"" + out.string() + "\" 2>/dev/null";
    ASSERT_EQ(std::system(cmd.c_str()), 0);
    std::string page = test::readBytes(out);
    ASSERT_FALSE(page.empty());
    page.pop_back();
    EXPECT_EQ(fs::path(page).parent_path(), h.dir.path() / "MODELES");
    EXPECT_TRUE(fs::is_regular_file(page));
    int pictures = 0;
    for (const auto& e : fs::directory_iterator(h.dir.path() / "MODELES"))
        if (e.path().extension() == ".PNG" && fs::file_size(e.path()) > 1000) ++pictures;
    EXPECT_EQ(pictures, 10);
}
