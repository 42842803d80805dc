#include "core/messages.h"

#include <exception>

#include "core/language.h"
#include "core/profile_file.h"
#include "core/text_case.h"
#include "core/workbench.h"

namespace tarvokin {

namespace {

struct Text {
    const char* id;
    const char* french;
};

// The French texts, as Francais.lng holds them; "**" is where the detail goes.
constexpr Text kMessages[] = {
    {"[#1]", "[#1] Le catalogue des profils** est introuvable ou vide."},
    {"[#2]", "[#2] Impossible d'enregistrer**\\rLe fichier précédent est conservé."},
    {"[#3]", "[#3] Fichier Excel inexistant"},
    {"[#4]", "[#4] Probleme Noprofil >2"},
    {"[#5]", "[#5] Générateur de couples :**"},
    {"[#6]", "[#6] Nervures :**"},
    {"[#7]", "[#7] Erreur de calcul :**"},
    {"[#8]", "[#8] Impossible d'écrire**"},
    {"[#9]", "[#9] XFOIL :**"},
    {"[#10]", "[#10] Classeur écrit :**"},
    {"[#11]", "[#11] Rapport écrit :**"},
    {"[#12]", "[#12] Aucune calculatrice n'est installée (gnome-calculator, kcalc, galculator, qalculate-gtk ou xcalc)."},
    {"[#13]", "[#13] Fichier inexistant :**"},
    {"[#19]", "[#19] Profil introuvable dans le catalogue :**"},
};

constexpr Text kQuestions[] = {
    {"[#20]", "[#20] Le projet** a été modifié. Enregistrer les modifications ?"},
    {"[#21]", "[#21] Supprimer le profil** et toutes ses polaires ?"},
    {"[#22]", "[#22] Supprimer toutes les polaires de** ?"},
    {"[#23]", "[#23] Supprimer la polaire** ?"},
};

template <size_t N>
std::string lookUp(const Text (&table)[N], std::string_view id) {
    for (const Text& t : table)
        if (id == t.id) return expandEscapes(t.french);
    return {};
}

template <size_t N>
std::vector<std::string> idsOf(const Text (&table)[N]) {
    std::vector<std::string> ids;
    for (const Text& t : table) ids.emplace_back(t.id);
    return ids;
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

std::string composed(const Workbench& wb, std::string_view section, std::string_view id, std::string_view extra,
                     const std::string& builtIn) {
    const std::string key = trim(id);
    const auto table = LanguageTable::load(wb.languageFilePath);
    return normaliseLineEnds(withExtra(table->get(section, key, builtIn), extra));
}

}  // namespace

std::string BuiltInMessage(std::string_view id) { return lookUp(kMessages, trim(id)); }
std::string BuiltInQuestion(std::string_view id) { return lookUp(kQuestions, trim(id)); }
std::vector<std::string> MessageIds() { return idsOf(kMessages); }
std::vector<std::string> QuestionIds() { return idsOf(kQuestions); }

std::string ReadLanguage(std::string_view section, std::string_view key, std::string_view def,
                         const std::string& file) {
    std::string d = firstChars(def, kProfileValueMax);
    if (auto nul = d.find('\0'); nul != std::string::npos) d.resize(nul);
    if (file.empty()) return expandEscapes(d);
    return LanguageTable::load(file)->get(section, key, expandEscapes(d));
}

std::string messageText(const Workbench& wb, std::string_view id, std::string_view extra) {
    return composed(wb, "Messages", id, extra, BuiltInMessage(id));
}

std::string questionText(const Workbench& wb, std::string_view id, std::string_view extra) {
    return composed(wb, "AskFor", id, extra, BuiltInQuestion(id));
}

bool AskUser(Workbench& wb, std::string_view id, std::string_view extra) {
    const std::string text = questionText(wb, id, extra);
    return wb.askUser && wb.askUser(text);
}

void ShowMessage(Workbench& wb, std::string_view id, std::string_view extra) {
    if (const std::string error = LanguageReadError(wb.languageFilePath); !error.empty() && wb.showMessage)
        wb.showMessage(error);
    std::string text = messageText(wb, id, extra);
    if (wb.showMessage) wb.showMessage(text);
}

void ShowNotice(Workbench& wb, std::string_view id, std::string_view extra) {
    std::string text = messageText(wb, id, extra);
    if (wb.showNotice) wb.showNotice(text);
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
