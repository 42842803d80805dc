#include "core/language.h"

#include <fstream>
#include <map>
#include <set>
#include <mutex>
#include <system_error>

#include "core/profile_file.h"
#include "core/text_case.h"

namespace tarvokin {

namespace {

std::string indexKey(std::string_view section, std::string_view key) {
    return upperCase(section) + '\n' + upperCase(key);
}

struct Stamp {
    std::uintmax_t size = 0;
    std::filesystem::file_time_type time{};
    bool operator==(const Stamp&) const = default;
};

std::optional<Stamp> stampOf(const std::filesystem::path& file) {
    std::error_code ec;
    Stamp s;
    s.size = std::filesystem::file_size(file, ec);
    if (ec) return std::nullopt;
    s.time = std::filesystem::last_write_time(file, ec);
    if (ec) return std::nullopt;
    return s;
}

}  // namespace

std::string expandEscapes(std::string_view s) {
    std::string out;
    out.reserve(s.size());
    for (size_t i = 0; i < s.size(); ++i) {
        if (s[i] == '\\' && i + 1 < s.size()) {
            const char n = s[i + 1];
            if (n == 'r') { out.push_back('\r'); ++i; continue; }
            if (n == 'f') { out.push_back('\n'); ++i; continue; }
            if (n == '\\') { out.push_back('\\'); ++i; continue; }
        }
        out.push_back(s[i]);
    }
    return out;
}

std::string normaliseLineEnds(std::string_view s) {
    std::string out;
    out.reserve(s.size());
    for (size_t i = 0; i < s.size(); ++i) {
        if (s[i] == '\r') {
            out.push_back('\n');
            if (i + 1 < s.size() && s[i + 1] == '\n') ++i;
        } else {
            out.push_back(s[i]);
        }
    }
    return out;
}

std::shared_ptr<const LanguageTable> LanguageTable::load(const std::filesystem::path& file) {
    // One table per file for the run, read again only when the file changes.
    static std::mutex guard;
    static std::map<std::filesystem::path, std::pair<Stamp, std::shared_ptr<const LanguageTable>>> cache;
    const std::optional<Stamp> stamp = stampOf(file);
    if (!stamp) {
        auto table = std::make_shared<LanguageTable>();
        std::error_code ec;
        table->unreadable_ = std::filesystem::exists(file, ec);
        return table;
    }
    std::lock_guard lock(guard);
    auto it = cache.find(file);
    if (it != cache.end() && it->second.first == *stamp) return it->second.second;

    auto table = std::make_shared<LanguageTable>();
    if (!std::ifstream(file, std::ios::binary)) table->unreadable_ = true;
    ProfileDocument::load(file).forEachKey([&](std::string_view section, std::string_view key, const std::string& v) {
        std::string value = v;
        if (auto nul = value.find('\0'); nul != std::string::npos) value.resize(nul);
        auto [at, fresh] = table->index_.emplace(indexKey(section, key), table->keys_.size());
        if (fresh) table->keys_.push_back({std::string(section), std::string(key), expandEscapes(value)});
    });
    cache[file] = {*stamp, table};
    return table;
}

std::string LanguageReadError(const std::filesystem::path& file) {
    static std::mutex guard;
    static std::set<std::filesystem::path> told;
    std::error_code ec;
    if (!std::filesystem::exists(file, ec) || !LanguageTable::load(file)->unreadable()) return {};
    std::lock_guard lock(guard);
    if (!told.insert(file).second) return {};
    return "ERREUR INIProfileRead " + file.string();
}

std::optional<std::string> LanguageTable::find(std::string_view section, std::string_view key) const {
    auto it = index_.find(indexKey(section, key));
    if (it == index_.end() || keys_[it->second].value.empty()) return std::nullopt;
    return keys_[it->second].value;
}

std::string LanguageTable::get(std::string_view section, std::string_view key, std::string_view def) const {
    if (auto v = find(section, key)) return *v;
    return std::string(def);
}

}  // namespace tarvokin
