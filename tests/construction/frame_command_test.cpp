// The command line's frame command and the mouse entries of the drawings.
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "construction/frame_curve.h"
#include "construction/frame_files.h"
#include "shell/cli.h"
#include "support/temp_dir.h"

namespace tarvokin {
namespace {

using test::TempDir;

struct CliRun {
    int status;
    std::string out, err;
};

CliRun cli(const std::vector<std::string>& args) {
    std::ostringstream out, err;
    CliRun r;
    r.status = runCli(args, TARVOKIN_CLI, out, err);
    r.out = out.str();
    r.err = err.str();
    return r;
}

struct Home {
    TempDir dir;
    Home() { test::copyInstallation(dir.path()); }
    std::string home() const { return dir.path().string(); }
    std::string path(const std::string& name) const { return (dir / name).string(); }
};

size_t lineCount(const std::string& text) { return static_cast<size_t>(std::count(text.begin(), text.end(), '\n')); }

TEST(FrameCommand, WritesTheOutlineAsTheGeneratorDoes) {
    Home h;
    FrameState f;
    InitFrameGenerator(f);
    f.Doubling = true;
    f.ControlPoints[2].x += 17;
    ApplyDoubling(f);
    f.Slaved = false;
    f.DoubledControl[4].x -= 9;  // decoupled: the stored doubled handles rule
    std::string error;
    ASSERT_TRUE(SaveFrameProject(f, h.path("f.CVB"), error));
    RecomputeFrameCurves(f);

    CliRun r = cli({"frame", h.path("f.CVB"), "--out", h.path("sortie"), "--home", h.home()});
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.out, h.path("sortie.DAT") + "\n");
    EXPECT_EQ(test::readBytes(h.path("sortie.DAT")), FrameOutlineText(f));
    EXPECT_EQ(lineCount(FrameOutlineText(f)), 52u);

    // The generator's entries apply before the write: 13 points, and a handle dragged.
    r = cli({"frame", h.path("f.CVB"), "--out", h.path("b.txt"), "--home", h.home(), "--set",
             "Gen_Couples_2.Hscroll2=13", "--press", "Gen_Couples_2.Picture1=320,160", "--move",
             "Gen_Couples_2.Picture1=320,120", "--release", "Gen_Couples_2.Picture1=320,120"});
    ASSERT_EQ(r.status, 0) << r.err;
    const std::string b = test::readBytes(h.path("b.txt"));
    EXPECT_EQ(lineCount(b), 56u);
    EXPECT_NE(b.find(FrameNumber((480 - 120) / kFrameUnitScale)), std::string::npos);
}

TEST(FrameCommand, BadProjectsAndUnwritableFolders) {
    Home h;
    test::writeBytes(h.path("bad.CVB"), "[Couple]\nPointCount=x\n");
    CliRun r = cli({"frame", h.path("bad.CVB"), "--out", h.path("bad.DAT"), "--home", h.home()});
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(lineCount(r.err), 1u) << r.err;
    EXPECT_NE(r.err.find("PointCount"), std::string::npos);
    EXPECT_EQ(lineCount(test::readBytes(h.path("bad.DAT"))), 26u);  // the start frame

    r = cli({"frame", h.path("bad.CVB"), "--out", h.path("nowhere/x.DAT"), "--home", h.home()});
    EXPECT_EQ(r.status, 1);
    EXPECT_NE(r.err.find("x.DAT"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(h.path("nowhere")));

    r = cli({"frame", h.path("absent.CVB"), "--out", h.path("y.DAT"), "--home", h.home()});
    EXPECT_EQ(r.status, 1);
    r = cli({"frame", h.path("bad.CVB"), "--home", h.home()});
    EXPECT_EQ(r.status, 2);
    r = cli({"fields", h.path("MODELES/DEMO.MDL"), "--home", h.home(), "--out", "z"});
    EXPECT_EQ(r.status, 2);
}

TEST(FrameCommand, AMarkerDragFromTheCommandLine) {
    Home h;
    CliRun r = cli({"fields", h.path("MODELES/DEMO.MDL"), "--home", h.home(), "--press", "F_GEO_FUS.Picture1=560,25",
                 "--move", "F_GEO_FUS.Picture1=600,30", "--release", "F_GEO_FUS.Picture1=600,30"});
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_NE(r.out.find("F_GEO_FUS.Couple_X1(4)=600\n"), std::string::npos);
    EXPECT_NE(r.out.find("F_GEO_FUS.Couple_Y1(4)=30\n"), std::string::npos);
    EXPECT_NE(r.out.find("F_GEO_FUS.T_Marker=999\n"), std::string::npos);
    r = cli({"fields", h.path("MODELES/DEMO.MDL"), "--home", h.home(), "--press", "F_GEO_FUS.Picture1=a,b"});
    EXPECT_EQ(r.status, 2);
    r = cli({"fields", h.path("MODELES/DEMO.MDL"), "--home", h.home(), "--press", "F_GEO_FUS.Picture9=1,2"});
    EXPECT_EQ(r.status, 2);
}

}  // namespace
}  // namespace tarvokin
