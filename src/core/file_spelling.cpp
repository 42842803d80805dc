#include "core/file_spelling.h"

#include "core/text_case.h"

namespace tarvokin {

namespace fs = std::filesystem;

fs::path existingSpelling(const fs::path& path) {
    std::error_code ec;
    if (path.empty() || fs::exists(path, ec)) return path;
    // Walk from the root, matching each part without regard to case.
    fs::path built = path.is_absolute() ? path.root_path() : fs::path();
    for (const fs::path& part : path.relative_path()) {
        fs::path exact = built / part;
        if (fs::exists(exact, ec)) {
            built = exact;
            continue;
        }
        bool found = false;
        const fs::path dir = built.empty() ? fs::path(".") : built;
        for (auto it = fs::directory_iterator(dir, ec); !ec && it != fs::directory_iterator(); it.increment(ec)) {
            if (equalsNoCase(it->path().filename().string(), part.string())) {
                built /= it->path().filename();
                found = true;
                break;
            }
        }
        if (!found) return path;
    }
    return built;
}

}  // namespace tarvokin
