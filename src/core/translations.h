// Words the calculations write (captions of a generator's inputs, the texts of
// a plan), in the four languages of the program: French as written, then the
// English, Spanish and Italian forms, looked up by the French.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace tarvokin {

struct Translation {
    const char* french;
    const char* other[3];  // "1" English, "2" Spanish, "3" Italian
};

// The language of a code: 0 French, 1 English, 2 Spanish, 3 Italian; French
// for any other code (blanks around it ignored).
int LanguageIndex(const std::string& languageCode);

// `french` in the language of `languageCode`; French itself for "0", an
// unknown code, or a word the table lacks.
const char* InLanguage(std::span<const Translation> table, const char* french, const std::string& languageCode);

// What follows an airfoil's name in a series drawn at the model's lightest
// (mass 0) or heaviest (mass 1) mass: " masse mini", " min mass"...
const char* MassWords(const std::string& languageCode, int mass);

}  // namespace tarvokin
