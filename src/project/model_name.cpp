#include "project/model_name.h"

namespace tarvokin {

bool AcceptableFileName(const std::string& name) {
    if (name.empty() || name == "." || name == ".." || name.size() > 200) return false;
    for (unsigned char c : name) {
        if (c < 32 || c == 127) return false;
        if (std::string_view("<>:\"/\\|?*").find(static_cast<char>(c)) != std::string_view::npos) return false;
    }
    return name.back() != ' ' && name.back() != '.';
}

}  // namespace tarvokin
