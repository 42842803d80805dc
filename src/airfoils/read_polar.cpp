// Reader of XFOIL's polar save file. The header ends at the line of dashes
// under the column titles; each line behind it is one row: alpha, CL, CD, CDp,
// CM and the transition points, of which the first five count.
#include <algorithm>
#include <charconv>
#include <cmath>
#include <fstream>
#include <string>
#include <string_view>

#include "airfoils/polar_lookup.h"
#include "core/numbers.h"

namespace tarvokin {

namespace {

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }
bool isDigit(char c) { return c >= '0' && c <= '9'; }

// A number written in full but beyond the range of a double ("1e400"): the
// conversion overflows, which stops the read, where a number too small to
// hold ("1e-400") is merely 0.
bool overflows(std::string_view s) {
    if (!s.empty() && (s.front() == '+' || s.front() == '-')) s.remove_prefix(1);
    double v = 0.0;
    const auto res = std::from_chars(s.data(), s.data() + s.size(), v);
    if (res.ec != std::errc::result_out_of_range || res.ptr != s.data() + s.size()) return false;
    // Decimal place of the first significant digit, then the exponent.
    size_t i = 0;
    long intDigits = 0, fracZeros = 0;
    bool significant = false;
    for (; i < s.size() && isDigit(s[i]); ++i)
        if (significant || s[i] != '0') {
            significant = true;
            ++intDigits;
        }
    if (i < s.size() && s[i] == '.')
        for (++i; i < s.size() && isDigit(s[i]); ++i)
            if (!significant) {
                if (s[i] == '0') ++fracZeros;
                else significant = true;
            }
    long place = intDigits > 0 ? intDigits - 1 : -(fracZeros + 1);
    if (i < s.size() && (s[i] == 'e' || s[i] == 'E')) {
        ++i;
        const bool negative = i < s.size() && s[i] == '-';
        if (i < s.size() && (s[i] == '+' || s[i] == '-')) ++i;
        long e = 0;
        for (; i < s.size() && isDigit(s[i]); ++i) e = std::min(e * 10 + (s[i] - '0'), 1000000L);
        place += negative ? -e : e;
    }
    return place > 0;
}

// The fields of one row. The row is trimmed and cut at runs of blanks; the
// text behind the last blank is never a field, so a row of n columns has
// n - 1 fields. Only the first five are ever used.
class RowFields {
public:
    explicit RowFields(std::string_view line) {
        size_t i = 0;
        while (count_ < kKept + 1) {
            while (i < line.size() && isBlank(line[i])) ++i;
            if (i >= line.size()) break;
            const size_t start = i;
            while (i < line.size() && !isBlank(line[i])) ++i;
            tokens_[count_++] = line.substr(start, i - start);
        }
    }

    // Field k as a number: 0 when missing or not a number; false when the
    // number overflows.
    bool number(int k, double& out) const {
        out = 0.0;
        if (k + 1 >= count_) return true;  // a missing field, or the last column
        if (tryNumber(tokens_[k], out)) return true;
        out = 0.0;
        return !overflows(tokens_[k]);
    }

private:
    static constexpr int kKept = 5;
    std::string_view tokens_[kKept + 1];
    int count_ = 0;
};

}  // namespace

bool PolarHasRows(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::string line;
    bool headerEnded = false;
    while (!headerEnded && std::getline(in, line)) headerEnded = line.find("------") != std::string::npos;
    while (headerEnded && std::getline(in, line)) {
        double alpha = 0;
        if (RowFields(line).number(0, alpha) && line.find_first_not_of(" \t\r") != std::string::npos) return true;
    }
    return false;
}

bool Read_Polar(PolarStore& store, const std::filesystem::path& file, int slot, std::optional<int> reIndex) {
    if (slot < 0 || slot >= kPolarSlots) return false;
    const int index = reIndex ? *reIndex : ReynoldsIndexOfFile(file);
    if (index < 0 || index >= kReynoldsCount) return false;
    PolarRecord& r = store.Polars[slot][index];
    PolarFigures& shown = store.figures[slot];

    // Alpha0, Cm0 and the last-row marks are left for the rows to overwrite.
    r.Cxmin = r.Cz_Decroch = r.Czopt = r.k = 0.0;
    const int oldLast = std::clamp<int>(r.LastRow, -1, kPolarRows - 1);
    std::fill(r.Points.begin(), r.Points.begin() + (oldLast + 1), PolarPoint{});

    std::ifstream in(file, std::ios::binary);
    if (!in) return false;
    std::string line;
    bool headerEnded = false;
    while (!headerEnded && std::getline(in, line)) headerEnded = line.find("------") != std::string::npos;
    if (!headerEnded) return false;

    double czStall = -9999, cxMin = 9999, czMax = -9999, czPos = 9999, cmMin = 9999;
    double cxMin15 = 0.0;
    int rowMax = 0;
    PolarTable table(1, PolarTableRow{});
    int i = 0;
    while (std::getline(in, line)) {
        if (line.find("NaN") != std::string::npos) break;
        if (i > 0) table.emplace_back(PolarTableRow{});
        PolarTableRow& t = table.back();
        PolarPoint& p = r.Points[i];
        const RowFields f(line);
        double alpha = 0, cz = 0, cd = 0, cm = 0;  // field 3, CDp, is not used

        if (!f.number(0, alpha)) return false;
        p.Alpha = alpha;
        t[1] = alpha;

        if (!f.number(1, cz)) return false;
        p.Cz = p.CzExt = cz;
        t[0] = t[2] = cz;
        r.LastExtRow = static_cast<int16_t>(i);

        // The stall Cz trails 0.2 below the last Cz that did not fall more
        // than 0.2 under the one before; a sharper drop leaves it behind.
        if (czStall <= cz) {
            czStall = cz - 0.2;
            r.Cz_Decroch = czStall;
            shown.T_Cz_Decroch = czStall;
        }
        if (cz >= czMax) {
            czMax = cz;
            rowMax = i;
        }
        if (cz >= 0 && cz <= czPos) {
            r.Alpha0 = alpha;
            czPos = cz;
        }

        if (!f.number(2, cd)) return false;
        p.Cx = p.CxExt = cd;
        t[4] = t[11] = cd;
        if (cd <= cxMin) {
            cxMin = cd;
            cxMin15 = 1.5 * cxMin;
            if (!std::isfinite(cxMin15)) return false;
            r.Czopt = cz;
            r.Cxmin = cd;
            shown.T_CzOpt = cz;
            shown.T_CXMin = cd;
        }

        if (!f.number(4, cm)) return false;
        p.Cm = cm;
        t[3] = cm;
        if (cm <= cmMin) {
            cmMin = cm;
            r.Cm0 = cm;
        }

        r.LastRow = static_cast<int16_t>(i);
        if (i == kPolarRows - 1) break;
        ++i;
    }

    // The parabola Cx = Cxmin + k (Cz - Czopt)^2 through the point of least
    // drag and the row whose Cd comes nearest to 1.5 Cxmin.
    if (r.Czopt != 0.0) {
        double k = 0.02;
        double best = 9999, cz15 = 0.0;
        for (const PolarTableRow& t : table) {
            const double distance = std::fabs(t[4] - cxMin15);
            if (!std::isfinite(distance)) return false;
            if (distance <= best) {
                best = distance;
                cz15 = t[0];
            }
        }
        if (cz15 != r.Czopt) {
            const double rise = cxMin15 - r.Cxmin;
            const double run = cz15 - r.Czopt;
            const double run2 = run * run;
            if (!std::isfinite(rise) || !std::isfinite(run2) || run2 == 0.0) return false;
            const double q = rise / run2;
            if (!std::isfinite(q)) return false;
            k = roundHalfAway(q, 7);
        }
        r.k = k;
        shown.T_k = k;
    }

    store.PolarTables[slot] = std::move(table);

    // Past the maximum lift the drag rises by one unit of Cx per unit of Cz,
    // in steps of 0.01 up to Cz 1.4, so that a lookup above the stall still
    // finds a (costly) drag. Row 145 is never part of the extension.
    const double cxAtMax = r.Points[rowMax].CxExt;
    double cz = roundHalfAway(czMax, 2) + 0.01;
    for (int j = rowMax + 1; cz <= 1.4 && j < kPolarRows - 1; ++j) {
        r.Points[j].CzExt = cz;
        r.Points[j].CxExt = cxAtMax + (cz - czMax);
        r.LastExtRow = static_cast<int16_t>(j);
        cz = cz + 0.01;
    }
    return true;
}

}  // namespace tarvokin
