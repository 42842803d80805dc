#include "core/profile_file.h"

#include <fstream>
#include <iterator>

#include "core/file_replace.h"
#include "core/text_case.h"

namespace tarvokin {

namespace {

bool isBlank(char c) { return c == ' ' || c == '\t'; }

std::string_view trimBlanks(std::string_view s) {
    while (!s.empty() && isBlank(s.front())) s.remove_prefix(1);
    while (!s.empty() && (isBlank(s.back()) || s.back() == '\r')) s.remove_suffix(1);
    return s;
}

enum class LineKind { Other, Section, Key };

struct ParsedLine {
    LineKind kind = LineKind::Other;
    std::string_view name;   // section name or key, as spelled in the file
    std::string_view value;  // raw text behind "=" for a key line
};

// One line of the file. A line opening with "[" is a section header unless
// its first "]" is followed by "=": message files have keys such as "[#7]".
ParsedLine parseLine(std::string_view line) {
    ParsedLine p;
    std::string_view t = line;
    while (!t.empty() && isBlank(t.front())) t.remove_prefix(1);
    if (t.empty() || t.front() == ';') return p;

    size_t searchFrom = 0;
    if (t.front() == '[') {
        const size_t close = t.find(']');
        if (close != std::string_view::npos) {
            size_t after = close + 1;
            while (after < t.size() && isBlank(t[after])) ++after;
            if (after >= t.size() || t[after] != '=') {
                p.kind = LineKind::Section;
                p.name = trimBlanks(t.substr(1, close - 1));
                return p;
            }
            searchFrom = close + 1;
        }
    }
    const size_t eq = t.find('=', searchFrom);
    if (eq == std::string_view::npos) return p;
    p.kind = LineKind::Key;
    p.name = trimBlanks(t.substr(0, eq));
    p.value = t.substr(eq + 1);
    return p;
}

// A value as the readers see it: blanks around removed, one pair of
// surrounding quotes removed, and no more than the 127 characters that the
// classic 128-byte read buffer could hold.
std::string cookValue(std::string_view raw) {
    std::string_view v = trimBlanks(raw);
    if (v.size() >= 2 && (v.front() == '"' || v.front() == '\'') && v.back() == v.front()) {
        v = v.substr(1, v.size() - 2);
    }
    return firstChars(v, kProfileValueMax);
}

// Index of the header line of the first section of that name, or npos.
size_t findSection(const std::vector<std::string>& lines, std::string_view section) {
    for (size_t i = 0; i < lines.size(); ++i) {
        ParsedLine p = parseLine(lines[i]);
        if (p.kind == LineKind::Section && equalsNoCase(p.name, section)) return i;
    }
    return std::string::npos;
}

// Index of the key line inside the section opened at `header`, or npos;
// `end` receives the index of the line that closes the section.
size_t findKey(const std::vector<std::string>& lines, size_t header, std::string_view key, size_t& end) {
    size_t i = header + 1;
    size_t found = std::string::npos;
    for (; i < lines.size(); ++i) {
        ParsedLine p = parseLine(lines[i]);
        if (p.kind == LineKind::Section) break;
        if (found == std::string::npos && p.kind == LineKind::Key && equalsNoCase(p.name, key)) found = i;
    }
    end = i;
    return found;
}

}  // namespace

ProfileDocument ProfileDocument::load(const std::filesystem::path& file) {
    ProfileDocument doc;
    std::ifstream in(file, std::ios::binary);
    if (!in) return doc;
    std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    if (in.bad()) return doc;

    // Keep the file's own line ends when it is rewritten.
    const size_t firstLf = bytes.find('\n');
    if (firstLf != std::string::npos) doc.eol_ = (firstLf > 0 && bytes[firstLf - 1] == '\r') ? "\r\n" : "\n";

    std::string text;
    if (bytes.size() >= 3 && bytes.compare(0, 3, "\xEF\xBB\xBF") == 0) {
        text = bytes.substr(3);  // a hand-edited file saved with a byte-order mark
    } else if (looksLikeUtf8(bytes)) {
        text = std::move(bytes);
    } else {
        text = latin1ToUtf8(bytes);
    }

    size_t start = 0;
    while (start < text.size()) {
        size_t lf = text.find('\n', start);
        size_t stop = lf == std::string::npos ? text.size() : lf;
        size_t len = stop - start;
        if (len > 0 && text[stop - 1] == '\r') --len;
        doc.lines_.emplace_back(text, start, len);
        if (lf == std::string::npos) break;
        start = lf + 1;
    }
    return doc;
}

std::string ProfileDocument::get(std::string_view section, std::string_view key, std::string_view def) const {
    const size_t header = findSection(lines_, section);
    if (header != std::string::npos) {
        size_t end = 0;
        const size_t at = findKey(lines_, header, key, end);
        if (at != std::string::npos) return cookValue(parseLine(lines_[at]).value);
    }
    return firstChars(def, kProfileValueMax);
}

bool ProfileDocument::has(std::string_view section, std::string_view key) const {
    const size_t header = findSection(lines_, section);
    if (header == std::string::npos) return false;
    size_t end = 0;
    return findKey(lines_, header, key, end) != std::string::npos;
}

void ProfileDocument::set(std::string_view section, std::string_view key, std::string_view value) {
    // A line end inside a value would split it into two lines of the file.
    std::string v(value);
    for (char& c : v) {
        if (c == '\r' || c == '\n') c = ' ';
    }

    const size_t header = findSection(lines_, section);
    if (header == std::string::npos) {
        lines_.push_back("[" + std::string(section) + "]");
        lines_.push_back(std::string(key) + "=" + v);
        return;
    }
    size_t end = 0;
    const size_t at = findKey(lines_, header, key, end);
    if (at != std::string::npos) {
        // The key keeps the spelling it has in the file.
        const std::string spelled(parseLine(lines_[at]).name);
        lines_[at] = spelled + "=" + v;
        return;
    }
    // A new key goes behind the last non-blank line of its section, so the
    // blank line that separates it from the next section stays in place.
    size_t insertAt = end;
    while (insertAt > header + 1 && trimBlanks(lines_[insertAt - 1]).empty()) --insertAt;
    lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(insertAt), std::string(key) + "=" + v);
}

void ProfileDocument::visitKeys(
    const std::function<void(std::string_view, std::string_view, const std::string&)>& f) const {
    std::string_view section;
    for (const std::string& line : lines_) {
        const ParsedLine p = parseLine(line);
        if (p.kind == LineKind::Section) section = p.name;
        else if (p.kind == LineKind::Key) f(section, p.name, cookValue(p.value));
    }
}

bool ProfileDocument::save(const std::filesystem::path& file, std::string* reason) const {
    std::string bytes;
    for (const std::string& line : lines_) {
        bytes += utf8ToLatin1(line);
        bytes += eol_;
    }
    return replaceFile(file, bytes, reason);
}

std::string ReadProfileString(std::string_view section, std::string_view key, std::string_view def,
                              const std::filesystem::path& file) {
    return ProfileDocument::load(file).get(section, key, def);
}

bool WriteProfileString(std::string_view section, std::string_view key, std::string_view value,
                        const std::filesystem::path& file, std::string* reason) {
    ProfileDocument doc = ProfileDocument::load(file);
    doc.set(section, key, value);
    return doc.save(file, reason);
}

}  // namespace tarvokin
