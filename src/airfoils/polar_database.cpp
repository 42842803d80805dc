#include "airfoils/polar_database.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <map>
#include <sstream>

#include "airfoils/catalogue_edit.h"
#include "airfoils/outline.h"
#include "core/catalogue.h"
#include "core/numbers.h"
#include "core/text_case.h"
#include "core/workbench.h"

namespace tarvokin {

namespace fs = std::filesystem;

namespace {

bool isGeneric(const std::string& name) { return name.find("Générique") != std::string::npos; }

// The name a catalogue row's polars bear.
std::string polarName(const CatalogueRow& r) {
    return isGeneric(r.Profil) ? fs::path(r.Path).stem().string() : r.Profil;
}

std::pair<std::string, std::string> splitPolarName(const std::string& stem) {
    const size_t cut = stem.rfind('_');
    if (cut == std::string::npos) return {stem, ""};
    return {stem.substr(0, cut), stem.substr(cut + 1)};
}

bool isPolarFile(const fs::path& p) { return upperCase(p.extension().string()) == ".POL"; }

}  // namespace

std::vector<DatabaseAirfoil> scanPolarFolder(const fs::path& folder, const ProfilCatalogue& catalogue) {
    // Polars by the upper-case name of their airfoil.
    std::map<std::string, std::vector<DatabasePolar>> byName;
    std::map<std::string, std::string> spelling;  // the name as the first file wrote it
    std::error_code ec;
    for (fs::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec)) {
        const fs::path& p = it->path();
        const std::string file = p.filename().string();
        if (file == "." || file == ".." || !isPolarFile(p)) continue;
        auto [name, re] = splitPolarName(p.stem().string());
        const std::string key = upperCase(name);
        byName[key].push_back({file, re});
        spelling.emplace(key, name);
    }
    for (auto& [key, polars] : byName) {
        std::sort(polars.begin(), polars.end(), [](const DatabasePolar& a, const DatabasePolar& b) {
            const double ra = leadingNumber(a.Re), rb = leadingNumber(b.Re);
            return ra != rb ? ra < rb : a.file < b.file;
        });
    }
    std::vector<DatabaseAirfoil> tree;
    std::map<std::string, bool> claimed;
    for (const CatalogueRow& r : catalogue.rows) {
        if (r.Profil.empty()) continue;
        DatabaseAirfoil a{r.Profil, true, {}};
        const std::string key = upperCase(polarName(r));
        auto it = byName.find(key);
        if (it != byName.end()) {
            a.polars = it->second;
            claimed[key] = true;
        }
        tree.push_back(std::move(a));
    }
    for (auto& [key, polars] : byName) {
        if (claimed.count(key)) continue;
        tree.push_back({spelling[key], false, polars});
    }
    return tree;
}

void RefreshDatabaseTree(Workbench& wb) {
    wb.database.tree = scanPolarFolder(wb.home() / "POLAIRES", wb.catalogue);
    ++wb.database.treeVersion;
}

DatabasePolarRead readDatabasePolar(const fs::path& file) {
    DatabasePolarRead r;
    std::ifstream in(file, std::ios::binary);
    if (!in) return r;
    r.opened = true;
    std::string line;
    bool header = true;
    while (std::getline(in, line)) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (header) {
            r.header += line + "\n";
            header = line.find("------") == std::string::npos;
            continue;
        }
        if (line.find("NaN") != std::string::npos) break;
        std::istringstream row(line);
        std::string a, cl, cd;
        double va = 0, vcl = 0, vcd = 0;
        if (!(row >> a >> cl >> cd)) continue;
        if (!tryNumber(a, va) || !tryNumber(cl, vcl) || !tryNumber(cd, vcd)) continue;
        if (!std::isfinite(va) || !std::isfinite(vcl) || !std::isfinite(vcd)) continue;
        r.clAlpha.push_back({va, vcl});
        r.clCd.push_back({vcd, vcl});
    }
    return r;
}

std::vector<fs::path> polarFilesOf(const Workbench& wb, const std::string& airfoil) {
    std::vector<fs::path> out;
    for (const DatabaseAirfoil& a : scanPolarFolder(wb.home() / "POLAIRES", wb.catalogue)) {
        if (!equalsNoCase(a.name, airfoil)) continue;
        for (const DatabasePolar& p : a.polars) out.push_back(wb.home() / "POLAIRES" / p.file);
    }
    return out;
}

int DeletePolars(Workbench& wb, const std::string& airfoil, const std::string& polarFile) {
    std::vector<fs::path> files;
    if (!polarFile.empty()) files.push_back(wb.home() / "POLAIRES" / fs::path(polarFile).filename());
    else files = polarFilesOf(wb, airfoil);
    int removed = 0;
    std::error_code ec;
    for (const fs::path& f : files) removed += fs::remove(f, ec) ? 1 : 0;
    RefreshDatabaseTree(wb);
    return removed;
}

bool DeleteAirfoil(Workbench& wb, const std::string& airfoil, std::string& reason) {
    const size_t row = wb.catalogue.Find_Profil(airfoil);
    if (row == kNotFound || airfoil.empty()) {
        reason = "Profil absent du catalogue : " + airfoil;
        return false;
    }
    if (isGeneric(wb.catalogue.rows[row].Profil)) {
        reason = "Les profils génériques restent : le programme s'en sert quand un profil manque";
        return false;
    }
    const fs::path outline = outlinePath(wb.home(), wb.catalogue.rows[row].Path);
    // The polars first, while the row still tells their name.
    DeletePolars(wb, airfoil, "");
    std::error_code ec;
    fs::remove(outline, ec);
    // Lists that showed the airfoil lose it: remember the others by text.
    Sheet& s = wb.sheet;
    std::vector<std::pair<Cell, std::string>> lists;
    for (Cell c : {F_3D::Combo5, F_PROFILS::CB_1[0], F_PROFILS::CB_1[1], F_PROFILS::CB_1[2], F_PREFER::Combo1,
                   F_AERO::Combo5, F_TEST_POL::CB_1})
        lists.emplace_back(c, s.text(c));
    wb.catalogue.rows.erase(wb.catalogue.rows.begin() + static_cast<std::ptrdiff_t>(row));
    wb.fillAirfoilLists();
    for (const auto& [c, text] : lists) {
        if (text.empty()) s.setListIndex(c, -1);
        else if (!s.selectText(c, text) && !s.items(c).empty()) s.setListIndex(c, 0);
    }
    Write_Generic(wb);
    RefreshDatabaseTree(wb);
    return true;
}

void AddToCatalogue(Workbench& wb, const std::string& file) {
    Sheet& s = wb.sheet;
    const std::string before = s.text(F_PROFILS::CB_1[0]);
    Add_Profil(wb, 0, file, 1);
    if (!s.selectText(F_PROFILS::CB_1[0], before)) s.setListIndex(F_PROFILS::CB_1[0], -1);
    RefreshDatabaseTree(wb);
}

}  // namespace tarvokin
