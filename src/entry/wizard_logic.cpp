#include "entry/wizard_logic.h"

#include <filesystem>

#include "construction/fuselage_shape.h"
#include "core/file_replace.h"
#include "core/numbers.h"
#include "core/profile_file.h"
#include "core/text_case.h"
#include "core/workbench.h"
#include "design/recalc.h"
#include "entry/entry_path.h"
#include "entry/project_io.h"
#include "entry/session.h"
#include "project/model_name.h"
#include "project/new_model.h"
#include "project/units.h"
#include "views/aircraft_mesh.h"

namespace tarvokin {

namespace fs = std::filesystem;

namespace {

constexpr const char* kWhite = "16777215";

// Everything that can refuse the new file is tried before a field changes.
fs::path newModelPath(Workbench& wb, const std::string& name) {
    if (!AcceptableFileName(name) || !AcceptableFileName(name + ".MDL"))
        throw RunError(52, "Nom de fichier incorrect : \"" + name + "\"");
    const fs::path folder = wb.home() / "MODELES";
    std::error_code ec;
    if (!fs::is_directory(folder, ec)) fs::create_directories(folder, ec);
    const fs::path probe = folder / (name + ".MDL.essai");
    if (!fs::is_directory(folder, ec) || !replaceFile(probe, "")) {
        throw RunError(75, "Impossible d'écrire dans " + folder.string());
    }
    fs::remove(probe, ec);
    return folder / (name + ".MDL");
}

void setConverterUnits(Workbench& wb) {
    Sheet& s = wb.sheet;
    const int q = std::max(0, s.listIndex(F_CONVERT::Combo1));
    std::vector<std::string> names;
    for (const UnitDef& u : Quantities()[static_cast<size_t>(q)].units) names.push_back(u.name);
    s.setItems(F_CONVERT::Combo2, names);
    s.setItems(F_CONVERT::Combo3, names);
    s.setListIndex(F_CONVERT::Combo2, 0);
    s.setListIndex(F_CONVERT::Combo3, 1);
}

}  // namespace

std::string CreateNewModel(Workbench& wb) {
    Sheet& s = wb.sheet;
    // 1-2. The name and the file, checked first.
    if (s.text(F_WIZZARD::Text1).empty()) s.set(F_WIZZARD::Text1, "Test");
    const std::string name = WizardModelName(s.text(F_WIZZARD::Text1));
    const fs::path path = newModelPath(wb, name);
    s.set(F_3D::Option1[0], "1");
    for (int i = 1; i < F_3D::Option1.count; ++i) s.set(F_3D::Option1[i], "0");
    const std::string upper = upperCase(name);
    s.set(F_3D::T_NOM_Modele, upper);
    s.set(F_Main::Caption, std::string("TARVOKIN ") + kVersion + upper);
    wb.projectFilePath = path.string();
    s.set(F_3D::T_PROJET, wb.projectFilePath);
    UpdateRecent(wb, wb.projectFilePath);
    // 3-4. The design window closes while the fields are filled, then one
    //      recalculation.
    wb.setOpen(button::View3D, false);
    FillNewModelFields(s);
    RecalcAll(wb);
    // 5. The frames, each fitted in turn.
    PlaceNewModelFrames(s);
    for (int n = 0; n < 8; ++n) {
        s.set(F_GEO_FUS::Text1, std::to_string(n));
        UpdateFuselageFigures(wb);
    }
    // 6. The file, airfoils included, and white parts in the 3D view.
    const std::string chosen = s.text(F_Main::T_profils);
    s.set(F_Main::T_profils, "1");
    SaveProject(wb);
    s.set(F_Main::T_profils, chosen);
    WriteProfileString("Stab", "V", s.on(F_GEO_STAB::Check1) ? "1" : "0", path);
    WriteProfileString("Stab", "Ouverture", std::to_string(std::max(0, s.listIndex(F_GEO_STAB::b21))), path);
    WriteProfileString("Colors", "3D_Filaire", kWhite, wb.settingsFilePath());
    for (const char* key : {"Fuselage", "Ailes", "Derive", "Stab"}) WriteProfileString("Colors", key, kWhite, path);
    // 7. The new project opens as any project does, with a history of its own.
    ClearHistory(wb);
    LoadProject(wb);
    LoadViewColours(wb);
    BuildAircraftKeepView(wb);
    return wb.projectFilePath;
}

void UpdateConversion(Workbench& wb) {
    Sheet& s = wb.sheet;
    double v = 0, out = 0;
    if (!tryNumber(s.text(F_CONVERT::Text1), v) ||
        !ConvertUnits(s.listIndex(F_CONVERT::Combo1), s.listIndex(F_CONVERT::Combo2), s.listIndex(F_CONVERT::Combo3),
                      v, out)) {
        s.set(F_CONVERT::L_Result, "-");
        return;
    }
    s.set(F_CONVERT::L_Result, ConversionText(out));
}

void installWizardLogic(Workbench& wb) {
    HandlerTable& h = wb.handlers;
    h.on("F_WIZZARD", "Command1", Act::Click, [](Workbench& w, const Action&) { CreateNewModel(w); });
    // The entry path has put the typed text or the chosen item in its cell.
    h.on("F_CONVERT", "Combo1", Act::Change, [](Workbench& w, const Action&) {
        setConverterUnits(w);
        UpdateConversion(w);
    });
    h.on("F_CONVERT", "*", Act::Change, [](Workbench& w, const Action&) { UpdateConversion(w); });
    h.on("F_CONVERT", "*", Act::Enter, [](Workbench& w, const Action&) { UpdateConversion(w); });
}

}  // namespace tarvokin
