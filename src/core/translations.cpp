#include "core/translations.h"

#include "core/text_case.h"

namespace tarvokin {

int LanguageIndex(const std::string& languageCode) {
    const std::string c = trim(languageCode);
    return c.size() == 1 && c[0] >= '0' && c[0] <= '3' ? c[0] - '0' : 0;
}

const char* InLanguage(std::span<const Translation> table, const char* french, const std::string& languageCode) {
    const int lang = LanguageIndex(languageCode);
    if (lang > 0)
        for (const Translation& t : table)
            if (std::string_view(french) == t.french) return t.other[lang - 1];
    return french;
}

const char* MassWords(const std::string& languageCode, int mass) {
    static constexpr Translation kMass[] = {{" masse mini", {" min mass", " masa mín.", " massa min."}},
                                            {" masse maxi", {" max mass", " masa máx.", " massa max."}}};
    return InLanguage(kMass, mass == 0 ? " masse mini" : " masse maxi", languageCode);
}

}  // namespace tarvokin
