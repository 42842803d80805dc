#include "core/catalogue.h"

#include <charconv>
#include <fstream>
#include <iterator>

#include "core/file_replace.h"
#include "core/numbers.h"
#include "core/text_case.h"

namespace tarvokin {

namespace {

constexpr const char* kHeader = "Profil;Re Ref;Cxmin;Czopt;k;Cz decrochange;Cm0;Alpha0;Path";

double fieldNumber(std::string_view text) {
    double v = 0.0;
    return tryNumber(text, v) ? v : 0.0;
}

// Shortest text that reads back to the same number, with a decimal point
// whatever the user's locale.
std::string shortest(double v) {
    if (v == 0.0) return "0";  // also for -0
    char buf[32];
    auto res = std::to_chars(buf, buf + sizeof buf, v);
    return std::string(buf, res.ptr);
}

// One row of the file. The name stands before the first ";", the cached
// figures in the second and third fields and the outline's path behind the
// last ";", whether the row has the four fields the program writes or the
// nine of the header. A line without any ";" is no row and is passed over.
bool parseRow(std::string_view line, CatalogueRow& row) {
    const size_t first = line.find(';');
    if (first == std::string_view::npos) return false;
    row.Profil = trim(line.substr(0, first));
    const size_t second = line.find(';', first + 1);
    row.Cm0 = fieldNumber(line.substr(first + 1, second == std::string_view::npos ? std::string_view::npos
                                                                                    : second - first - 1));
    row.Alpha0 = 0.0;
    if (second != std::string_view::npos) {
        const size_t third = line.find(';', second + 1);
        row.Alpha0 = fieldNumber(line.substr(second + 1, third == std::string_view::npos ? std::string_view::npos
                                                                                         : third - second - 1));
    }
    row.Path = trim(line.substr(line.rfind(';') + 1));
    return true;
}

}  // namespace

bool ProfilCatalogue::read(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    if (!in) return false;
    std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    if (in.bad()) return false;
    // Latin-1 on disk; a file saved by an editor in UTF-8 is understood too.
    if (bytes.size() >= 3 && bytes.compare(0, 3, "\xEF\xBB\xBF") == 0) {
        bytes.erase(0, 3);
    } else if (!looksLikeUtf8(bytes)) {
        bytes = latin1ToUtf8(bytes);
    }

    std::vector<CatalogueRow> read;
    size_t start = 0;
    bool header = true;
    while (start < bytes.size()) {
        const size_t lf = bytes.find('\n', start);
        std::string_view line(bytes.data() + start, (lf == std::string::npos ? bytes.size() : lf) - start);
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        if (header) {
            header = false;  // whatever it says
        } else {
            CatalogueRow row;
            if (parseRow(line, row)) read.push_back(std::move(row));
        }
        if (lf == std::string::npos) break;
        start = lf + 1;
    }
    rows = std::move(read);
    return true;
}

bool ProfilCatalogue::write(const std::filesystem::path& file, std::string* reason) const {
    std::string text = kHeader;
    text += "\r\n";
    for (const CatalogueRow& r : rows) {
        std::string path = r.Path;
        // The outline reader takes a "," of a path for a ".": keep them alike.
        for (char& c : path) {
            if (c == ',') c = '.';
        }
        text += r.Profil + ";" + shortest(r.Cm0) + ";" + shortest(r.Alpha0) + ";" + path + "\r\n";
    }
    return replaceFile(file, utf8ToLatin1(text), reason);
}

size_t ProfilCatalogue::Find_Profil(std::string_view name) const {
    for (size_t i = 0; i < rows.size(); ++i) {
        if (equalsNoCase(rows[i].Profil, name)) return i;
    }
    return kNotFound;
}

std::vector<std::string> ProfilCatalogue::names() const {
    std::vector<std::string> n;
    n.reserve(rows.size());
    for (const CatalogueRow& r : rows) n.push_back(r.Profil);
    return n;
}

}  // namespace tarvokin
