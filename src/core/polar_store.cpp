#include "core/polar_store.h"

#include <algorithm>
#include <cstdio>
#include <ostream>
#include <string>

#include "core/numbers.h"

namespace tarvokin {

PolarStore::PolarStore() {
    for (auto& slot : Polars)
        for (int i = 0; i < kReynoldsCount; ++i) slot[i].Re = kStandardReynolds[i];
    for (auto& table : PolarTables) table.assign(kPolarTableStartRows, PolarTableRow{});
}

std::optional<int> ReynoldsIndex(double Re) {
    for (int i = 0; i < kReynoldsCount; ++i)
        if (Re == kStandardReynolds[i]) return i;
    return std::nullopt;
}

int ReynoldsIndexOfFile(const std::filesystem::path& file) {
    const std::string name = file.filename().string();
    const size_t underscore = name.rfind('_');
    if (underscore == std::string::npos) return 0;
    std::string_view rest = std::string_view(name).substr(underscore + 1);
    for (size_t i = 0; i + 4 <= rest.size(); ++i) {
        if (rest[i] == '.' && (rest[i + 1] == 'P' || rest[i + 1] == 'p') &&
            (rest[i + 2] == 'O' || rest[i + 2] == 'o') && (rest[i + 3] == 'L' || rest[i + 3] == 'l')) {
            rest = rest.substr(0, i);
            break;
        }
    }
    double re = 0.0;
    if (!tryNumber(rest, re)) return 0;
    return ReynoldsIndex(re).value_or(0);
}

void printPolarReport(const PolarRecord& r, std::ostream& out) {
    char buf[256];
    auto line = [&](const char* name, double v) {
        std::snprintf(buf, sizeof buf, "%s=%.17g\n", name, v);
        out << buf;
    };
    out << "Re=" << r.Re << '\n';
    line("Cxmin", r.Cxmin);
    line("Cz_Decroch", r.Cz_Decroch);
    line("Czopt", r.Czopt);
    line("k", r.k);
    line("Alpha0", r.Alpha0);
    line("Cm0", r.Cm0);
    out << "LastRow=" << r.LastRow << '\n';
    out << "LastExtRow=" << r.LastExtRow << '\n';
    out << "row,Alpha,Cz,Cx,CzExt,CxExt,Cm\n";
    const int last = std::clamp<int>(std::max(r.LastRow, r.LastExtRow), 0, kPolarRows - 1);
    for (int i = 0; i <= last; ++i) {
        const PolarPoint& p = r.Points[i];
        std::snprintf(buf, sizeof buf, "%d,%.17g,%.17g,%.17g,%.17g,%.17g,%.17g\n", i, p.Alpha, p.Cz, p.Cx, p.CzExt,
                      p.CxExt, p.Cm);
        out << buf;
    }
}

}  // namespace tarvokin
