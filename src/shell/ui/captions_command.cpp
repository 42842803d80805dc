#include "shell/ui/captions_command.h"

#include <QApplication>
#include <QWidget>
#include <optional>
#include <set>

#include "core/ui/cell_widgets.h"
#include "core/ui/language_apply.h"
#include "core/ui/sheet_bridge.h"
#include "core/workbench.h"
#include "entry/entry_path.h"
#include "entry/session.h"
#include "entry/window_logic.h"
#include "shell/home.h"
#include "shell/ui/main_window.h"

namespace tarvokin::ui {

std::string CaptionLine(const std::string& text) {
    std::string out;
    for (char c : text) {
        if (c == '\\') out += "\\\\";
        else if (c == '\n') out += "\\r";
        else out.push_back(c);
    }
    return out;
}

int RunCaptionsCommand(const std::vector<std::string>& args, const std::string& executable, std::ostream& out,
                       std::ostream& err) {
    std::optional<std::filesystem::path> requested;
    std::string language;
    std::set<std::string> forms;
    for (size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        if ((a == "--home" || a == "--lang") && i + 1 < args.size()) {
            if (a == "--home") requested = args[++i];
            else language = args[++i];
        } else if (!a.empty() && a[0] == '-') {
            err << "tarvokin-cli captions: option inconnue " << a << "\n";
            return 2;
        } else {
            forms.insert(a);
        }
    }
    if (!language.empty() && (language.size() != 1 || language[0] < '0' || language[0] > '3')) {
        err << "tarvokin-cli captions: --lang attend 0, 1, 2 ou 3, pas " << language << "\n";
        return 2;
    }
    const std::filesystem::path home = userHomeFolder(requested);
    std::string error;
    if (!seedHomeFolder(home, shippedDataFolder(executable), error)) {
        err << "tarvokin-cli: " << error << "\n";
        return 1;
    }
    Workbench wb(home);
    InstallWindowLogic(wb);
    int status = 0;
    wb.showMessage = [&err](const std::string& text) { err << text << "\n"; };
    wb.askUser = [](const std::string&) { return false; };
    const StartupResult start = StartUp(wb);
    if (start.stop) return 1;
    if (!language.empty()) SetRunLanguage(wb, language);

    SheetBridge bridge(wb);
    MainWindow window(wb, bridge);
    window.openEveryWindow();
    std::set<std::string> found;
    for (QWidget* form : window.everyWindow()) {
        const std::string name = ss(form->objectName());
        if (!forms.empty() && !forms.count(name)) continue;
        if (!found.insert(name).second) continue;  // a dialog of a moment stands once for its kind
        ApplyLanguage(form, wb);
        for (const CaptionText& c : WindowCaptions(form)) out << name << '.' << ss(c.key) << '=' << CaptionLine(ss(c.shown)) << "\n";
    }
    for (const std::string& f : forms) {
        if (!found.count(f)) {
            err << "tarvokin-cli captions: pas de fenêtre " << f << "\n";
            status = 1;
        }
    }
    return status;
}

}  // namespace tarvokin::ui
