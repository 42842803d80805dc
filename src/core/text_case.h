// Letter case and character sets of the texts the program exchanges with its
// files: UTF-8 in memory, Latin-1 on disk.
#pragma once

#include <string>
#include <string_view>

namespace tarvokin {

// Upper case of ASCII and Latin-1 letters in a UTF-8 text ("é" -> "É").
std::string upperCase(std::string_view utf8);
bool equalsNoCase(std::string_view a, std::string_view b);

// Latin-1 bytes to UTF-8, and back (characters outside Latin-1 become "?").
std::string latin1ToUtf8(std::string_view bytes);
std::string utf8ToLatin1(std::string_view utf8);
// True when bytes are valid UTF-8 and hold at least one multi-byte sequence.
bool looksLikeUtf8(std::string_view bytes);

// Count of characters of a UTF-8 text, and its first n characters.
size_t charCount(std::string_view utf8);
std::string firstChars(std::string_view utf8, size_t n);

std::string trim(std::string_view s);

}  // namespace tarvokin
