// The .DAT reader. Outline files come from every corner of the hobby: Selig and
// Lednicer layouts, titles, comma decimals, tabs, semicolons. Rather than know
// the layouts, the reader judges each line on its own.
#include <charconv>
#include <cmath>
#include <fstream>
#include <iterator>
#include <system_error>

#include "airfoils/outline.h"
#include "core/file_spelling.h"
#include "core/numbers.h"
#include "core/text_case.h"

namespace tarvokin {

namespace fs = std::filesystem;

namespace {

// The longest number at the start of the text, "." always the decimal point,
// blanks before it skipped: "2412.5 foo" -> 2412.5. False when there is none.
bool leadingPointNumber(std::string_view s, double& out) {
    while (!s.empty() && (s.front() == ' ' || s.front() == '\t')) s.remove_prefix(1);
    if (!s.empty() && s.front() == '+') {
        s.remove_prefix(1);
        if (!s.empty() && s.front() == '-') return false;
    }
    double v = 0.0;
    auto res = std::from_chars(s.data(), s.data() + s.size(), v, std::chars_format::general);
    if (res.ec != std::errc() || !std::isfinite(v)) return false;  // also refuses "inf", "nan"
    out = v;
    return true;
}

// The conversion for a line written with decimal commas: the whole field must
// be a number, "," standing for the decimal point.
bool commaNumber(std::string_view s, double& out) {
    std::string t(s);
    for (char& c : t) {
        if (c == ',') c = '.';
    }
    double v = 0.0;
    if (!tryNumber(t, v)) return false;
    out = v;
    return true;
}

bool hasTitleCapital(std::string_view line) {
    for (char c : line) {
        if (c >= 'A' && c <= 'P') return true;
    }
    return false;
}

void track(OutlineExtremes& e, const OutlinePoint& p, std::ptrdiff_t i) {
    if (i == 0) {
        e.xMin = e.xMax = p.x;
        e.yMin = e.yMax = p.y;
        e.xAtYMin = e.xAtYMax = p.x;
        e.iXMinBefore = -1;
        e.iYMin = e.iYMax = 0;
        return;
    }
    if (p.x < e.xMin) {
        e.xMin = p.x;
        e.iXMinBefore = i - 1;
    }
    if (p.x > e.xMax) e.xMax = p.x;
    if (p.y < e.yMin) {
        e.yMin = p.y;
        e.iYMin = i;
        e.xAtYMin = p.x;
    }
    if (p.y > e.yMax) {
        e.yMax = p.y;
        e.iYMax = i;
        e.xAtYMax = p.x;
    }
}

std::string slashes(std::string_view file) {
    std::string s(file);
    for (char& c : s) {
        if (c == ',') c = '.';
        if (c == '\\') c = '/';
    }
    return s;
}

}  // namespace

fs::path outlinePath(const fs::path& home, std::string_view file) {
    std::string name = slashes(trim(file));
    if (name.empty()) name = "DATA/CLARKY.DAT";
    if (name.find('/') == std::string::npos) name = "DATA/" + name;
    fs::path p(name);
    if (p.is_relative()) p = home / p;
    return existingSpelling(p);
}

OutlinePoints readOutlineText(std::string_view text, OutlineExtremes& extremes) {
    OutlinePoints points;
    extremes = OutlineExtremes{};
    double x = 0.0, y = 0.0;  // a failed conversion keeps these
    size_t start = 0;
    while (start < text.size()) {
        size_t end = text.find_first_of("\r\n", start);
        if (end == std::string_view::npos) end = text.size();
        const std::string line = trim(text.substr(start, end - start));
        start = end + 1;
        if (line.empty()) continue;
        const bool comma = line.find(',') != std::string::npos;
        if (!comma && line.find('.') == std::string::npos) continue;  // titles, Lednicer counts "17 17"
        if (hasTitleCapital(line)) continue;

        char sep = 0;
        if (line.find(' ') != std::string::npos) {
            sep = ' ';
        } else if (line.find('\t') != std::string::npos) {
            sep = '\t';
        } else if (line.find(';') != std::string::npos) {
            sep = ';';
        }
        // A point without a separator cannot be cut: it repeats the previous one.
        if (sep != 0) {
            const size_t cut = line.find(sep);
            const std::string_view lv(line);
            const std::string_view xs = lv.substr(0, cut), ys = lv.substr(cut + 1);
            if (comma) {
                commaNumber(xs, x);
                commaNumber(ys, y);
            } else {
                leadingPointNumber(xs, x);
                leadingPointNumber(ys, y);
            }
        }
        points.push_back({x, y});
        track(extremes, points.back(), static_cast<std::ptrdiff_t>(points.size() - 1));
    }
    return points;
}

bool readOutlineFile(const fs::path& file, OutlinePoints& points, OutlineExtremes& extremes) {
    std::error_code ec;
    if (fs::is_directory(file, ec)) return false;
    std::ifstream in(file, std::ios::binary);
    if (!in) return false;
    std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    if (in.bad()) return false;
    points = readOutlineText(bytes, extremes);
    return true;
}

}  // namespace tarvokin
