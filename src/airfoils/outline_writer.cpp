// Writing an outline as a .DAT file that any airfoil tool, XFOIL included,
// reads back: bare "x y" lines, no title.
#include <cmath>

#include "airfoils/outline.h"
#include "core/file_replace.h"
#include "core/numbers.h"
#include "core/text_case.h"

namespace tarvokin {

std::string Write_Profil(const std::filesystem::path& home, const OutlinePoints& points, std::string_view name) {
    // The same name rule as the reader: a "," stands for a ".".
    std::string chosen = trim(name);
    for (char& c : chosen) {
        if (c == ',') c = '.';
    }
    if (chosen.empty()) return "";
    const size_t folderEnd = chosen.find_last_of("/\\");
    const std::string file = folderEnd == std::string::npos ? chosen : chosen.substr(folderEnd + 1);
    if (file.empty()) return "";
    if (file.find('.') == std::string::npos) chosen += ".DAT";

    std::string text;
    text.reserve(points.size() * 22);
    for (const OutlinePoint& p : points) {
        if (!std::isfinite(p.x) || !std::isfinite(p.y)) return "";
        text += fixed(p.x, 7);
        text += ' ';
        text += fixed(p.y, 7);
        text += '\n';
    }
    const std::filesystem::path path = outlinePath(home, chosen);
    return replaceFile(path, text) ? path.string() : "";
}

}  // namespace tarvokin
