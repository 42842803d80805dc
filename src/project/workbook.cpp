#include "project/workbook.h"

#include <cmath>
#include <cstdio>
#include <map>
#include <set>

#include "core/cells.h"
#include "core/file_replace.h"
#include "core/numbers.h"
#include "core/workbench.h"
#include "project/project_file.h"

namespace tarvokin {

namespace {

// A value that reads back as the same text is written as a number, so that
// the spreadsheet can compute with it; any other text stays text.
XlsxCell valueCell(const std::string& text) {
    double v = 0;
    if (!text.empty() && tryNumber(text, v) && std::isfinite(v) && plain(v) == text) return {text, true};
    return {text, false};
}

XlsxCell numberCell(double v) {
    if (!std::isfinite(v)) return {"", false};
    char buf[32];
    std::snprintf(buf, sizeof buf, "%.17g", v);
    return {buf, true};
}

// The design sheets in file order, each with its keys.
std::vector<std::pair<std::string, std::vector<ProjectKeyInfo>>> designSheets() {
    std::vector<std::pair<std::string, std::vector<ProjectKeyInfo>>> out;
    std::map<std::string, size_t> at;
    for (const ProjectKeyInfo& k : ProjectKeyList()) {
        auto [it, added] = at.emplace(k.section, out.size());
        if (added) out.push_back({k.section, {}});
        out[it->second].second.push_back(k);
    }
    return out;
}

// Values of a number key must read as a finite number; a list position, a
// text or a rib row is taken as it stands and read as the project file's.
bool numeric(const ProjectKeyInfo& k) {
    const std::string path = cellPath(k.cell);
    return k.key.rfind("Ribs_", 0) != 0 && cellTable()[k.cell.id].kind == CellKind::Text &&
           path.find("T_NOM") == std::string::npos && path.find("Marque") == std::string::npos &&
           path.find("Modele") == std::string::npos;
}

}  // namespace

XlsxWorkbook ProjectWorkbook(const Workbench& wb) {
    XlsxWorkbook book;
    ProfileDocument doc;
    WriteProjectKeys(wb.sheet, doc);
    for (const auto& [section, keys] : designSheets()) {
        XlsxSheet sheet;
        sheet.name = section;
        sheet.rows.push_back({{kLabelHeader, false}, {kCellHeader, false}, {kValueHeader, false}});
        for (const ProjectKeyInfo& k : keys) {
            // The airfoil slots stand in the file only once chosen; a
            // workbook always shows what the design holds.
            const std::string value = doc.has(section, k.key) ? doc.get(section, k.key, "") : wb.sheet.text(k.cell);
            sheet.rows.push_back({{k.key, false}, {cellPath(k.cell), false}, valueCell(value)});
        }
        book.sheets.push_back(std::move(sheet));
    }

    XlsxSheet polars;
    polars.name = kPolarSheet;
    polars.rows.push_back({{"Profil", false}, {"Masse", false}, {"Point", false}, {"V (km/h)", false},
                           {"Vz (m/s)", false}, {"Finesse", false}, {"Cz avion", false}, {"Cx total", false},
                           {"Re aile", false}, {"Puissance (W)", false}});
    for (size_t slot = 0; slot < wb.perf.PerfTable.size(); ++slot) {
        const std::string name = wb.sheet.text(F_PROFILS::CB_1[static_cast<int>(slot % 3)]);
        const char* mass = slot < 3 ? "mini" : "maxi";
        const PerfTableT& t = wb.perf.PerfTable[slot];
        for (size_t i = 0; i < t.size(); ++i) {
            const PerfPoint& p = t[i];
            polars.rows.push_back({{name, false}, {mass, false}, numberCell(static_cast<double>(i)), numberCell(p.VKmh),
                                   numberCell(p.Vz), numberCell(p.Finesse), numberCell(p.CzAvion),
                                   numberCell(p.CxTotal), numberCell(p.ReAile), numberCell(p.PuissanceAero)});
        }
    }
    book.sheets.push_back(std::move(polars));

    XlsxSheet airfoils;
    airfoils.name = kAirfoilSheet;
    airfoils.rows.push_back({{"Position", false}, {"Profil", false}, {"Cm0", false}, {"Alpha0", false}});
    for (int slot = 0; slot < 3; ++slot) {
        const std::string name = wb.sheet.text(F_PROFILS::CB_1[slot]);
        std::vector<XlsxCell> row{numberCell(slot), {name, false}};
        const size_t i = wb.catalogue.Find_Profil(name);
        if (!name.empty() && i != kNotFound) {
            row.push_back(numberCell(wb.catalogue.rows[i].Cm0));
            row.push_back(numberCell(wb.catalogue.rows[i].Alpha0));
        }
        airfoils.rows.push_back(std::move(row));
    }
    book.sheets.push_back(std::move(airfoils));
    return book;
}

bool ExportWorkbook(const Workbench& wb, const std::filesystem::path& file, std::string& error) {
    if (!replaceFile(file, XlsxBytes(ProjectWorkbook(wb)))) {
        error = "impossible d'écrire " + file.string();
        return false;
    }
    return true;
}

std::optional<ProfileDocument> ImportedDocument(const Workbench& wb, const XlsxWorkbook& book, std::string& error) {
    ProfileDocument doc;
    WriteProjectKeys(wb.sheet, doc);
    for (const auto& [section, keys] : designSheets()) {
        const XlsxSheet* sheet = book.find(section);
        if (!sheet) {
            error = "la feuille \"" + section + "\" manque : ce classeur n'est pas un projet TARVOKIN complet";
            return std::nullopt;
        }
        if (sheet->rows.empty() || sheet->rows[0].size() < 3 || sheet->rows[0][1].text != kCellHeader ||
            sheet->rows[0][2].text != kValueHeader) {
            error = "la feuille \"" + section + "\" n'a pas les colonnes " + kLabelHeader + ", " + kCellHeader +
                    ", " + kValueHeader;
            return std::nullopt;
        }
        std::map<std::string, const ProjectKeyInfo*> byCell;
        for (const ProjectKeyInfo& k : keys) byCell.emplace(cellPath(k.cell), &k);
        for (size_t r = 1; r < sheet->rows.size(); ++r) {
            const auto& row = sheet->rows[r];
            if (row.size() < 2 || row[1].text.empty()) continue;  // a blank line added by hand
            auto it = byCell.find(row[1].text);
            if (it == byCell.end()) {
                error = "feuille \"" + section + "\", ligne " + std::to_string(r + 1) + " : champ inconnu \"" +
                        row[1].text + "\"";
                return std::nullopt;
            }
            const ProjectKeyInfo& k = *it->second;
            if (k.computed) continue;  // recomputed by the load
            std::string value = row.size() > 2 ? row[2].text : std::string();
            if (numeric(k) && !value.empty()) {
                double v = 0;
                if (!tryNumber(value, v) || !std::isfinite(v)) {
                    error = "feuille \"" + section + "\", " + row[1].text + " : \"" + value + "\" n'est pas un nombre";
                    return std::nullopt;
                }
                // A spreadsheet may give 0.1 as 0.10000000000000001.
                if (row[2].number) value = plain(roundHalfAway(v, 10));
            }
            doc.set(section, k.key, value);
        }
    }
    return doc;
}

}  // namespace tarvokin
