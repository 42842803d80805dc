#include "shell/cli.h"

#include <algorithm>
#include <filesystem>
#include <optional>

#include "design/field_rules.h"
#include "project/profile_file.h"
#include "project/project_file.h"
#include "shell/home.h"
#include "shell/messages.h"
#include "shell/session.h"
#include "shell/workbench.h"

namespace tarvokin {

namespace fs = std::filesystem;

namespace {

const char* kUsage =
    "usage: tarvokin-cli fields PROJECT.MDL [--home DIR] [--open N]... [--set FORM.FIELD=VALUE]...\n";

struct FieldsArgs {
    std::string project;
    std::optional<fs::path> home;
    std::vector<int> open;
    std::vector<std::pair<std::string, std::string>> sets;
};

bool parseFieldsArgs(const std::vector<std::string>& a, FieldsArgs& out, std::string& error) {
    for (size_t i = 1; i < a.size(); ++i) {
        const std::string& s = a[i];
        auto next = [&](std::string& v) {
            if (i + 1 >= a.size()) {
                error = s + " attend une valeur";
                return false;
            }
            v = a[++i];
            return true;
        };
        std::string v;
        if (s == "--home") {
            if (!next(v)) return false;
            out.home = fs::path(v);
        } else if (s == "--open") {
            if (!next(v)) return false;
            try {
                size_t used = 0;
                int n = std::stoi(v, &used);
                if (used != v.size()) throw std::invalid_argument(v);
                out.open.push_back(n);
            } catch (const std::exception&) {
                error = "--open attend un numéro de bouton : " + v;
                return false;
            }
        } else if (s == "--set") {
            if (!next(v)) return false;
            auto eq = v.find('=');
            if (eq == std::string::npos) {
                error = "--set attend FORM.FIELD=VALUE : " + v;
                return false;
            }
            out.sets.emplace_back(v.substr(0, eq), v.substr(eq + 1));
        } else if (out.project.empty() && !s.empty() && s[0] != '-') {
            out.project = s;
        } else {
            error = "argument inconnu : " + s;
            return false;
        }
    }
    if (out.project.empty()) {
        error = "il manque le fichier projet";
        return false;
    }
    return true;
}

int fieldsCommand(const std::vector<std::string>& args, const std::string& executable, std::ostream& out,
                  std::ostream& err) {
    FieldsArgs fa;
    std::string error;
    if (!parseFieldsArgs(args, fa, error)) {
        err << "tarvokin-cli: " << error << "\n" << kUsage;
        return 2;
    }
    fs::path home = userHomeFolder(fa.home);
    if (!seedHomeFolder(home, shippedDataFolder(executable), error)) {
        err << "tarvokin-cli: " << error << "\n";
        return 1;
    }
    Workbench wb(home);
    int status = 0;
    wb.showMessage = [&err, &status](const std::string& text) {
        err << text << "\n";
        status = 1;
    };
    ReadSettingsAndCatalogue(wb);

    std::error_code ec;
    fs::path project = fs::absolute(fa.project, ec);
    if (!fs::is_regular_file(project, ec)) {
        err << "tarvokin-cli: impossible de lire le projet " << fa.project << "\n";
        return 1;
    }
    if (ReadProfileString("Modele", "Nom", kUnknownModel, project) == kUnknownModel) {
        err << "tarvokin-cli: " << fa.project << " n'est pas un projet (pas de clé Nom dans [Modele])\n";
        return 1;
    }
    for (int n : fa.open) wb.setOpen(n, true);
    wb.projectFilePath = project.string();
    if (!runGuarded(wb, [&] { LoadProject(wb); })) return 1;
    if (!WingAirfoilKnown(wb)) {
        err << UnknownAirfoilMessage(wb) << "\n";
        return 1;
    }
    for (const auto& [path, value] : fa.sets) {
        Cell c{};
        if (!findCell(path, c)) {
            err << "tarvokin-cli: champ inconnu : " << path << "\n";
            return 2;
        }
        runGuarded(wb, [&, c = c, value = value] { enterField(wb, c, value); });
    }
    printFields(wb, out);
    return status;
}

}  // namespace

void printFields(const Workbench& wb, std::ostream& out) {
    std::vector<std::string> lines;
    lines.reserve(kCellCount + 32);
    for (uint16_t i = 0; i < kCellCount; ++i) {
        Cell c{i};
        std::string path = cellPath(c);
        lines.push_back(path + "=" + wb.sheet.text(c));
        if (wb.sheet.isList(c)) {
            // For a control group, cellPath ends with "(i)": the property follows it.
            lines.push_back(path + ".ListIndex=" + std::to_string(wb.sheet.listIndex(c)));
        }
    }
    std::sort(lines.begin(), lines.end());
    for (const std::string& l : lines) out << l << "\n";
}

int runCli(const std::vector<std::string>& args, const std::string& executable, std::ostream& out,
           std::ostream& err) {
    if (args.empty() || args[0] == "--help" || args[0] == "-h") {
        (args.empty() ? err : out) << kUsage;
        return args.empty() ? 2 : 0;
    }
    if (args[0] == "fields") return fieldsCommand(args, executable, out, err);
    err << "tarvokin-cli: commande inconnue : " << args[0] << "\n" << kUsage;
    return 2;
}

}  // namespace tarvokin
