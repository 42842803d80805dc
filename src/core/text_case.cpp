#include "core/text_case.h"

namespace tarvokin {

namespace {

// Decodes one UTF-8 sequence at s[i]; returns the code point (or the byte as
// Latin-1 when the sequence is broken) and advances i.
unsigned decodeOne(std::string_view s, size_t& i) {
    unsigned char c = static_cast<unsigned char>(s[i]);
    if (c < 0x80) {
        ++i;
        return c;
    }
    int len = (c & 0xE0) == 0xC0 ? 2 : (c & 0xF0) == 0xE0 ? 3 : (c & 0xF8) == 0xF0 ? 4 : 0;
    if (len == 0 || i + static_cast<size_t>(len) > s.size()) {
        ++i;
        return c;
    }
    unsigned cp = c & (0x7F >> len);
    for (int k = 1; k < len; ++k) {
        unsigned char cc = static_cast<unsigned char>(s[i + static_cast<size_t>(k)]);
        if ((cc & 0xC0) != 0x80) {
            ++i;
            return c;
        }
        cp = (cp << 6) | (cc & 0x3F);
    }
    i += static_cast<size_t>(len);
    return cp;
}

void appendUtf8(std::string& out, unsigned cp) {
    if (cp < 0x80) {
        out.push_back(static_cast<char>(cp));
    } else if (cp < 0x800) {
        out.push_back(static_cast<char>(0xC0 | (cp >> 6)));
        out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
    } else if (cp < 0x10000) {
        out.push_back(static_cast<char>(0xE0 | (cp >> 12)));
        out.push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
    } else {
        out.push_back(static_cast<char>(0xF0 | (cp >> 18)));
        out.push_back(static_cast<char>(0x80 | ((cp >> 12) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
    }
}

unsigned upperCp(unsigned cp) {
    if (cp >= 'a' && cp <= 'z') return cp - 32;
    // Latin-1 lower-case letters à..þ except ÷
    if (cp >= 0xE0 && cp <= 0xFE && cp != 0xF7) return cp - 32;
    return cp;
}

}  // namespace

std::string upperCase(std::string_view utf8) {
    std::string out;
    out.reserve(utf8.size());
    for (size_t i = 0; i < utf8.size();) appendUtf8(out, upperCp(decodeOne(utf8, i)));
    return out;
}

bool equalsNoCase(std::string_view a, std::string_view b) {
    size_t i = 0, j = 0;
    while (i < a.size() && j < b.size()) {
        if (upperCp(decodeOne(a, i)) != upperCp(decodeOne(b, j))) return false;
    }
    return i == a.size() && j == b.size();
}

std::string latin1ToUtf8(std::string_view bytes) {
    std::string out;
    out.reserve(bytes.size() + bytes.size() / 8);
    for (char c : bytes) appendUtf8(out, static_cast<unsigned char>(c));
    return out;
}

std::string utf8ToLatin1(std::string_view utf8) {
    std::string out;
    out.reserve(utf8.size());
    for (size_t i = 0; i < utf8.size();) {
        unsigned cp = decodeOne(utf8, i);
        out.push_back(cp < 0x100 ? static_cast<char>(cp) : '?');
    }
    return out;
}

bool looksLikeUtf8(std::string_view s) {
    bool multi = false;
    for (size_t i = 0; i < s.size();) {
        unsigned char c = static_cast<unsigned char>(s[i]);
        if (c < 0x80) {
            ++i;
            continue;
        }
        int len = (c & 0xE0) == 0xC0 ? 2 : (c & 0xF0) == 0xE0 ? 3 : (c & 0xF8) == 0xF0 ? 4 : 0;
        if (len == 0 || c == 0xC0 || c == 0xC1 || i + static_cast<size_t>(len) > s.size()) return false;
        for (int k = 1; k < len; ++k) {
            if ((static_cast<unsigned char>(s[i + static_cast<size_t>(k)]) & 0xC0) != 0x80) return false;
        }
        multi = true;
        i += static_cast<size_t>(len);
    }
    return multi;
}

size_t charCount(std::string_view utf8) {
    size_t n = 0;
    for (size_t i = 0; i < utf8.size(); ++n) decodeOne(utf8, i);
    return n;
}

std::string firstChars(std::string_view utf8, size_t n) {
    size_t i = 0;
    for (size_t k = 0; k < n && i < utf8.size(); ++k) decodeOne(utf8, i);
    return std::string(utf8.substr(0, i));
}

std::string trim(std::string_view s) {
    size_t b = 0, e = s.size();
    while (b < e && (s[b] == ' ' || s[b] == '\t' || s[b] == '\r' || s[b] == '\n')) ++b;
    while (e > b && (s[e - 1] == ' ' || s[e - 1] == '\t' || s[e - 1] == '\r' || s[e - 1] == '\n')) --e;
    return std::string(s.substr(b, e - b));
}

}  // namespace tarvokin
