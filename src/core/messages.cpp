#include "core/messages.h"

#include <exception>

#include "core/profile_file.h"
#include "core/text_case.h"
#include "core/workbench.h"

namespace tarvokin {

namespace {

// French texts the program shows when the language file lacks them.
std::string builtInMessage(std::string_view id) {
    if (id == "[#7]") return "[#7] Erreur :**";
    return {};
}

std::string builtInQuestion(std::string_view id) {
    if (id == "[#20]") return "[#20] Le projet** a été modifié. Enregistrer les modifications ?";
    return {};
}

std::string withExtra(const std::string& text, std::string_view extra) {
    auto star = text.find("**");
    if (star == std::string::npos) return text;
    std::string out = text.substr(0, star);
    out += ' ';
    out += extra;
    out += text.substr(star + 2);
    return out;
}

}  // namespace

std::string expandEscapes(std::string_view s) {
    std::string out;
    out.reserve(s.size());
    for (size_t i = 0; i < s.size(); ++i) {
        if (s[i] == '\\' && i + 1 < s.size()) {
            char n = s[i + 1];
            if (n == 'r') { out.push_back('\r'); ++i; continue; }
            if (n == 'f') { out.push_back('\n'); ++i; continue; }
            if (n == '\\') { out.push_back('\\'); ++i; continue; }
        }
        out.push_back(s[i]);
    }
    return out;
}

std::string ReadLanguage(std::string_view section, std::string_view key, std::string_view def,
                         const std::string& file) {
    std::string v = file.empty() ? std::string(def) : ReadProfileString(section, key, def, file);
    auto nul = v.find('\0');
    if (nul != std::string::npos) v.resize(nul);
    return expandEscapes(v);
}

std::string messageText(const Workbench& wb, std::string_view id, std::string_view extra) {
    std::string key = trim(id);
    return withExtra(ReadLanguage("Messages", key, builtInMessage(key), wb.languageFilePath), extra);
}

bool AskUser(Workbench& wb, std::string_view id, std::string_view extra) {
    const std::string key = trim(id);
    const std::string text = withExtra(ReadLanguage("AskFor", key, builtInQuestion(key), wb.languageFilePath), extra);
    return wb.askUser && wb.askUser(text);
}

void ShowMessage(Workbench& wb, std::string_view id, std::string_view extra) {
    std::string text = messageText(wb, id, extra);
    if (wb.showMessage) wb.showMessage(text);
}

bool runGuarded(Workbench& wb, const std::function<void()>& handler) {
    try {
        handler();
        return true;
    } catch (const std::exception& e) {
        ShowMessage(wb, "[#7] ", e.what());
    } catch (...) {
        ShowMessage(wb, "[#7] ", "Erreur inconnue");
    }
    return false;
}

}  // namespace tarvokin
