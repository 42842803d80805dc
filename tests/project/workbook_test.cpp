// Export to a workbook and import back: the whole demo design survives the
// round trip, a value changed by hand comes back, and a workbook that is not
// ours, or damaged, changes nothing.
#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

#include "entry/entry_fixture.h"
#include "entry/project_io.h"
#include "entry/workbook_logic.h"
#include "core/messages.h"
#include "project/units.h"
#include "project/workbook.h"
#include "shell/cli.h"

namespace tarvokin {
namespace {

namespace fs = std::filesystem;

std::string fieldsOf(const Workbench& wb) {
    std::ostringstream o;
    printFields(wb, o);
    return o.str();
}

XlsxSheet* sheetNamed(XlsxWorkbook& b, const std::string& name) {
    for (XlsxSheet& s : b.sheets)
        if (s.name == name) return &s;
    return nullptr;
}

TEST(Workbook, CellsWrittenAreReadBack) {
    XlsxWorkbook b;
    b.sheets.push_back({"Feuille é", {{{"Libellé <&>", false}, {"1.25", true}}, {}, {{"", false}, {"x", false}}}});
    std::string error;
    const auto back = ParseXlsx(XlsxBytes(b), error);
    ASSERT_TRUE(back) << error;
    ASSERT_EQ(back->sheets.size(), 1u);
    EXPECT_EQ(back->sheets[0].name, "Feuille é");
    EXPECT_EQ(back->sheets[0].rows[0][0].text, "Libellé <&>");
    EXPECT_TRUE(back->sheets[0].rows[0][1].number);
    EXPECT_EQ(back->sheets[0].rows[0][1].text, "1.25");
    EXPECT_EQ(back->sheets[0].rows[2][1].text, "x");
    EXPECT_EQ(CellReference(27, 9), "AB10");
}

TEST(Workbook, RoundTripKeepsEveryFieldOfTheDemo) {
    test::DemoOpen f;
    const std::string before = fieldsOf(f.wb);
    const fs::path book = f.dir.path() / "demo.xlsx";
    ExportWorkbookCommand(f.wb, book.string());
    // Another design in between, then the workbook brought back.
    enterField(f.wb, F_GEO_SF::b5, "321");
    Action a;
    a.form = "F_Main";
    a.control = "IM_IMPORT";
    a.text = book.string();
    ASSERT_TRUE(runGuarded(f.wb, [&] { Perform(f.wb, a); }));
    EXPECT_TRUE(f.messages.empty()) << f.messages.front();
    EXPECT_EQ(fieldsOf(f.wb), before);
    // Brought back as a project is opened: a history of its own.
    EXPECT_FALSE(f.wb.history.canUndo());
}

TEST(Workbook, AValueChangedByHandComesBackRecalculated) {
    test::DemoOpen f;
    std::string error;
    XlsxWorkbook b = ProjectWorkbook(f.wb);
    XlsxSheet* wing = sheetNamed(b, "Aile");
    ASSERT_NE(wing, nullptr);
    bool changed = false;
    for (auto& row : wing->rows) {
        // As a spreadsheet keeps a typed figure: a number.
        if (row.size() > 2 && row[1].text == "F_GEO_SF.b5") {
            row[2] = {"250", true};
            changed = true;
        }
    }
    ASSERT_TRUE(changed);
    const std::string oldArea = f.wb.sheet.text(F_GEO_SF::j4);
    const auto doc = ImportedDocument(f.wb, *ParseXlsx(XlsxBytes(b), error), error);
    ASSERT_TRUE(doc) << error;
    LoadProjectDocument(f.wb, *doc);
    EXPECT_EQ(f.wb.sheet.text(F_GEO_SF::b5), "250");
    EXPECT_NE(f.wb.sheet.text(F_GEO_SF::j4), oldArea);
}

TEST(Workbook, WorkbooksNotOursOrDamagedChangeNothing) {
    test::DemoOpen f;
    const auto before = f.snapshot();
    const fs::path dir = f.dir.path();
    std::string good = XlsxBytes(ProjectWorkbook(f.wb));
    auto refused = [&](const std::string& name, const std::string& bytes) {
        test::writeBytes(dir / name, bytes);
        f.messages.clear();
        Action a;
        a.form = "F_Main";
        a.control = "IM_IMPORT";
        a.text = (dir / name).string();
        EXPECT_FALSE(runGuarded(f.wb, [&] { Perform(f.wb, a); })) << name;
        EXPECT_EQ(f.messages.size(), 1u) << name;
        EXPECT_EQ(test::firstDifference(before, f.snapshot()), "") << name;
    };
    refused("text.xlsx", "Nom;Valeur\nb5;200\n");
    refused("truncated.xlsx", good.substr(0, good.size() / 2));
    std::string flipped = good;
    for (size_t i = 200; i < 400; ++i) flipped[i] = static_cast<char>(flipped[i] ^ 0x5a);
    refused("damaged.xlsx", flipped);
    XlsxWorkbook other;
    other.sheets.push_back({"Budget", {{{"Poste", false}, {"Montant", false}}}});
    refused("other.xlsx", XlsxBytes(other));
    XlsxWorkbook missing = ProjectWorkbook(f.wb);
    missing.sheets.erase(missing.sheets.begin() + 1);
    refused("missing.xlsx", XlsxBytes(missing));
    XlsxWorkbook word = ProjectWorkbook(f.wb);
    for (auto& row : sheetNamed(word, "Aile")->rows)
        if (row.size() > 2 && row[1].text == "F_GEO_SF.b6") row[2] = {"cent", false};
    refused("word.xlsx", XlsxBytes(word));
    XlsxWorkbook unknown = ProjectWorkbook(f.wb);
    sheetNamed(unknown, "Aile")->rows.push_back({{"x", false}, {"F_GEO_SF.zz9", false}, {"1", true}});
    refused("unknown.xlsx", XlsxBytes(unknown));
    refused("absent.xlsx", "");
}

TEST(Converter, FactorsAModellerChecksByHand) {
    auto conv = [](int q, int from, int to, double v) {
        double out = 0;
        EXPECT_TRUE(ConvertUnits(q, from, to, v, out));
        return out;
    };
    EXPECT_NEAR(conv(0, 3, 0, 1), 25.4, 1e-12);            // 1 in = 25.4 mm
    EXPECT_NEAR(conv(0, 4, 2, 1), 0.3048, 1e-12);          // 1 ft = 0.3048 m
    EXPECT_NEAR(conv(1, 1, 0, 1), 100, 1e-9);              // 1 m² = 100 dm²
    EXPECT_NEAR(conv(1, 3, 0, 1), 9.290304, 1e-9);         // 1 ft² in dm²
    EXPECT_NEAR(conv(2, 3, 0, 1), 453.59237, 1e-9);        // 1 lb in g
    EXPECT_NEAR(conv(2, 2, 0, 16), 453.59237, 1e-9);       // 16 oz = 1 lb
    EXPECT_NEAR(conv(3, 1, 0, 10), 36, 1e-9);              // 10 m/s = 36 km/h
    EXPECT_NEAR(conv(3, 3, 0, 1), 1.852, 1e-12);           // 1 kn in km/h
    EXPECT_NEAR(conv(3, 2, 0, 1), 1.609344, 1e-12);        // 1 mph in km/h
    EXPECT_NEAR(conv(4, 2, 0, 1), 3.0515, 1e-4);           // 1 oz/ft² in g/dm²
    EXPECT_NEAR(conv(5, 2, 0, 1), 745.7, 0.01);            // 1 hp in W
    double out = 0;
    EXPECT_FALSE(ConvertUnits(6, 0, 0, 1, out));
    EXPECT_FALSE(ConvertUnits(0, 0, 9, 1, out));
    EXPECT_FALSE(ConvertUnits(0, 0, 1, std::nan(""), out));
    EXPECT_EQ(ConversionText(25.4), "25.4");
    EXPECT_EQ(ConversionText(0.3048), "0.3048");
    EXPECT_EQ(ConversionText(1.0 / 3), "0.333333");
}

TEST(Converter, TheWindowFollowsItsEntries) {
    test::DemoOpen f;
    Action a;
    a.act = Act::Change;
    a.form = "F_CONVERT";
    a.control = "Combo1";
    a.text = "Masse";
    Perform(f.wb, a);
    EXPECT_EQ(f.wb.sheet.items(F_CONVERT::Combo2).at(2), "oz");
    enterField(f.wb, F_CONVERT::Text1, "2");
    EXPECT_EQ(f.wb.sheet.text(F_CONVERT::L_Result), "0.002");  // 2 g in kg
    enterField(f.wb, F_CONVERT::Text1, "");
    EXPECT_EQ(f.wb.sheet.text(F_CONVERT::L_Result), "-");
}

}  // namespace
}  // namespace tarvokin
