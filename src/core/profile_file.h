// Profile (INI) files: the project, the settings and the language files share
// this reader/writer. Its behaviour is that of the classic private-profile calls:
//   - section and key names compare without regard to letter case;
//   - a missing file, section or key yields the caller's default;
//   - a value read is trimmed of blanks, loses one pair of surrounding quotes,
//     and is cut at 127 characters;
//   - writing a key replaces its line in place (the key keeps the spelling it
//     has in the file) or appends it at the end of its section; a new section
//     is appended at the end of the file, so sections come in order of first
//     write; lines the writer does not know (unknown keys, comments) survive;
//   - Latin-1 on disk, UTF-8 in memory (a file that is valid UTF-8 with
//     accented letters is also understood, for hand-edited files);
//   - a line "[#7]=text" is a key named "[#7]", not a section (message files).
// Saving writes a temporary file beside the target and renames it over, so a
// failed write never leaves a half-written file in place of the good one.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvokin {

constexpr size_t kProfileValueMax = 127;

class ProfileDocument {
public:
    ProfileDocument() = default;

    // Reads the file; a missing or unreadable file gives an empty document.
    static ProfileDocument load(const std::filesystem::path& file);

    std::string get(std::string_view section, std::string_view key, std::string_view def) const;
    bool has(std::string_view section, std::string_view key) const;
    void set(std::string_view section, std::string_view key, std::string_view value);

    // Writes beside then replaces, only when the bytes differ from the file's;
    // false when the file could not be written, with the reason in French.
    bool save(const std::filesystem::path& file, std::string* reason = nullptr) const;

    // Every key of the document as readers see it, first occurrence winning:
    // calls back (section, key, value) in file order. For readers that look
    // up thousands of keys (the language files) and index them once.
    template <class F>
    void forEachKey(F&& f) const {
        visitKeys([&](std::string_view s, std::string_view k, const std::string& v) { f(s, k, v); });
    }

    // The document as the lines it would write (UTF-8), for tests and tools.
    const std::vector<std::string>& lines() const { return lines_; }

private:
    void visitKeys(const std::function<void(std::string_view, std::string_view, const std::string&)>& f) const;
    std::vector<std::string> lines_;  // UTF-8, no line ends
    std::string eol_ = "\r\n";
};

// One-shot calls with the classic signatures.
std::string ReadProfileString(std::string_view section, std::string_view key, std::string_view def,
                              const std::filesystem::path& file);
bool WriteProfileString(std::string_view section, std::string_view key, std::string_view value,
                        const std::filesystem::path& file, std::string* reason = nullptr);

}  // namespace tarvokin
