// A language file read once and looked up by window section and key. The
// windows apply hundreds of captions at each switch: reading the profile file
// for each of them would parse it hundreds of times.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tarvokin {

class LanguageTable {
public:
    // The table of `file`, shared while the file is unchanged on disk (same
    // size and time); a missing, unreadable or damaged file gives an empty
    // table, so every caption keeps its French text.
    static std::shared_ptr<const LanguageTable> load(const std::filesystem::path& file);

    // The value of `key` in `section` (letter case ignored), with the escapes
    // \r, \f and \\ expanded and cut at a NUL; nothing when the key is absent
    // or empty (an empty value never replaces a caption).
    std::optional<std::string> find(std::string_view section, std::string_view key) const;
    std::string get(std::string_view section, std::string_view key, std::string_view def) const;

    struct Key {
        std::string section, key, value;  // as spelled in the file; value cooked
    };
    // Every key in file order, for the tools that check the files.
    const std::vector<Key>& keys() const { return keys_; }
    bool empty() const { return keys_.empty(); }
    // The file is there but could not be read (no permission, a folder).
    bool unreadable() const { return unreadable_; }

private:
    std::unordered_map<std::string, size_t> index_;  // "SECTION\nKEY" -> keys_ position
    std::vector<Key> keys_;
    bool unreadable_ = false;
};

// "ERREUR INIProfileRead " and the file, the first time in the run that a
// language file that exists could not be read; empty otherwise. A missing file
// is no error: its captions are the French ones.
std::string LanguageReadError(const std::filesystem::path& file);

// The escapes of language files: \r a carriage return, \f a line feed, \\ a
// backslash; a lone backslash stays.
std::string expandEscapes(std::string_view s);

// A caption as a one-line widget shows it: a carriage return followed by a line
// feed, or either alone, is one line end.
std::string normaliseLineEnds(std::string_view s);

}  // namespace tarvokin
