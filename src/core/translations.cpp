#include "core/translations.h"

namespace tarvokin {

const char* InLanguage(std::span<const Translation> table, const char* french, const std::string& languageCode) {
    const int lang = languageCode == "1" ? 0 : languageCode == "2" ? 1 : languageCode == "3" ? 2 : -1;
    if (lang >= 0)
        for (const Translation& t : table)
            if (std::string_view(french) == t.french) return t.other[lang];
    return french;
}

}  // namespace tarvokin
