// The report page against the fields it shows, the ten pictures written and
// the windows left as they were, and the refusals that leave nothing behind.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

#include "core/numbers.h"
#include "core/text_case.h"
#include "entry/entry_fixture.h"
#include "entry/report_logic.h"
#include "project/report_page.h"

namespace tarvokin {
namespace {

namespace fs = std::filesystem;

struct ReportFixture : test::DemoOpen {
    std::vector<std::pair<int, int>> drawn;
    ReportFixture() {
        // A stand-in for the screen: each picture as a few bytes naming it.
        wb.paintPicture = [this](Workbench&, int source, int index, const fs::path& file) {
            drawn.push_back({source, index});
            test::writeBytes(file, "PNG " + std::to_string(source) + "," + std::to_string(index));
            return true;
        };
    }
    std::vector<std::string> pageLines() {
        std::vector<std::string> out;
        std::ifstream in(WriteReport(wb));
        for (std::string l; std::getline(in, l);) out.push_back(latin1ToUtf8(l));
        return out;
    }
};

size_t indexOf(const std::vector<std::string>& lines, const std::string& l) {
    return static_cast<size_t>(std::find(lines.begin(), lines.end(), l) - lines.begin());
}

TEST(Report, PageShowsTheFieldsWithTheLiteralsOfItsMarkup) {
    ReportFixture f;
    const std::vector<std::string> lines = f.pageLines();
    const Sheet& s = f.wb.sheet;
    const std::string model = ReportModelName(s);
    ASSERT_EQ(lines.front(), "<HTML>");
    EXPECT_EQ(lines[2], "<div align=13><font size=8><strong>" + model + "</strong></font> </div>");
    EXPECT_EQ(lines.back(), "</HTML>");
    // The label of the maximum mass's loading is the minimum's, twice.
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "<td align=center>Charge mini</td>"), 2);
    const size_t masses = indexOf(lines, "<td align=center>Masse mini </td>");
    ASSERT_LT(masses, lines.size());
    EXPECT_EQ(lines[masses + 6], "<td align=center>" + s.text(F_GEO_SF_REGLAGES::H30) + "</td>");
    EXPECT_EQ(lines[masses + 8], "<td align=center>" + s.text(F_GEO_SF_REGLAGES::H32) + " </td>");
    // Starred rows end with a blank before the cell's end; the others do not.
    EXPECT_LT(indexOf(lines, "<tr><td>Envergure</td><td>" + s.text(F_3D::j6) + "</td></tr>"), lines.size());
    EXPECT_LT(indexOf(lines, "<tr><td>Surface</td><td>" + s.text(F_3D::j4) + " </td></tr>"), lines.size());
    // "from" rows take what follows the first "=" of their label, or all of it.
    const std::string calage = s.text(F_3D::f31a);
    const std::string shown = calage.find('=') == std::string::npos ? calage : calage.substr(calage.find('=') + 1);
    EXPECT_LT(indexOf(lines, "<tr><td>Calage aile</td><td>" + shown + " </td></tr>"), lines.size());
    EXPECT_LT(indexOf(lines, "<td>Surface</td><td>" + s.text(F_3D::d21) + " dm </td>"), lines.size());
    EXPECT_LT(indexOf(lines, "<tr><td>CG</td><td>entre " + s.text(F_GEO_SF_REGLAGES::C30) + " et " +
                                 s.text(F_GEO_SF_REGLAGES::C31) + " </td></tr>"),
              lines.size());
    // Power rows after the first leave the label cell open.
    EXPECT_LT(indexOf(lines, "<tr><td>Type</td><td>" + s.text(F_3D::Combo1) + "</td></tr>"), lines.size());
    EXPECT_LT(indexOf(lines, "<tr><td>Nbre elements<td>" + s.text(F_3D::Combo2) + "</td></tr>"), lines.size());
    EXPECT_LT(indexOf(lines, "<tr><td>Temps moteur (min)<td>" + s.text(F_3D::h8) + "</td></tr>"), lines.size());
    EXPECT_EQ(std::count_if(lines.begin(), lines.end(), [](const std::string& l) { return l.rfind("<TD ", 0) == 0; }), 2);
    // Pictures linked by the relative path with "/".
    EXPECT_LT(indexOf(lines, "<td align=center><a href='../MODELES/" + model + "_Img_11.PNG'><img src='../MODELES/" +
                                 model + "_Img_11.PNG' width=250></a></td>"),
              lines.size());
    EXPECT_LT(indexOf(lines, "<td align=center><a href='../MODELES/" + model + "_Img4.PNG'><img src='../MODELES/" +
                                 model + "_Img4.PNG'></a></td>"),
              lines.size());
}

TEST(Report, TenPicturesBesideThePageAndTheWindowsLeftAsTheyWere) {
    ReportFixture f;
    f.wb.setOpen(button::Performances, true);  // one open, two closed
    const std::string page = WriteReport(f.wb);
    EXPECT_EQ(f.drawn.size(), 10u);
    const fs::path folder = fs::path(page).parent_path();
    EXPECT_EQ(folder, f.dir.path() / "MODELES");
    for (const ReportPicture& p : ReportPictures(ReportModelName(f.wb.sheet))) {
        EXPECT_TRUE(fs::is_regular_file(folder / p.file)) << p.file;
        EXPECT_FALSE(fs::exists(folder / (p.file + ".part"))) << p.file;
    }
    EXPECT_TRUE(f.wb.isOpen(button::Performances));
    EXPECT_FALSE(f.wb.isOpen(button::Allongement));
    EXPECT_FALSE(f.wb.isOpen(button::View2D));
    // The closed windows computed their charts for the pictures.
    EXPECT_FALSE(f.wb.aspectRatio.charts[0].series.empty());
}

TEST(Report, BlanksAroundTheNameAreNotInTheFileName) {
    ReportFixture f;
    f.wb.sheet.set(F_3D::T_NOM_Modele, "  Mon Modele  ");
    EXPECT_EQ(fs::path(WriteReport(f.wb)).filename().string(), "Mon Modele.HTM");
}

TEST(Report, RefusalsLeaveNothingHalfWritten) {
    ReportFixture f;
    // A name the file system refuses.
    f.wb.sheet.set(F_3D::T_NOM_Modele, "a/b");
    EXPECT_THROW(WriteReport(f.wb), RunError);
    EXPECT_TRUE(f.drawn.empty());
    // A picture that cannot be drawn: the earlier page stays whole, the
    // windows closed again, no part file left.
    f.wb.sheet.set(F_3D::T_NOM_Modele, "Essai");
    const fs::path page = f.dir.path() / "MODELES" / "Essai.HTM";
    test::writeBytes(page, "earlier");
    f.wb.paintPicture = [](Workbench&, int source, int, const fs::path& file) {
        test::writeBytes(file, "half");
        return source != 3;
    };
    EXPECT_THROW(WriteReport(f.wb), RunError);
    EXPECT_EQ(test::readBytes(page), "earlier");
    EXPECT_FALSE(f.wb.isOpen(button::Allongement));
    for (const auto& e : fs::directory_iterator(f.dir.path() / "MODELES"))
        EXPECT_EQ(e.path().string().find(".part"), std::string::npos) << e.path();
    // Without a screen there is nothing to draw with: said, not crashed.
    f.wb.paintPicture = nullptr;
    EXPECT_THROW(WriteReport(f.wb), RunError);
}

}  // namespace
}  // namespace tarvokin
