// Loading and saving a project: the key table of the project file walked in
// the order a load needs, with the recalculation and the refresh of the open
// analysis panels at the points where the cells are whole.
#include "entry/project_io.h"

#include <string>

#include "core/profile_file.h"
#include "core/project_key.h"
#include "core/workbench.h"
#include "design/recalc.h"
#include "entry/entry_path.h"
#include "project/project_file.h"

namespace tarvokin {

namespace {

// The run state a load sets aside so that no panel refreshes while the cells
// are half filled: the marks of the toolbar buttons and the ready marks.
// Until the load has put them back itself, leaving the scope (a model that
// is not a project, or a run-time error) restores all of them, so the
// panels keep working with the cells as far as they were read.
class LoadState {
public:
    explicit LoadState(Workbench& wb) : wb_(wb) {
        for (int i = 0; i < kButtons; ++i) tags_[i] = wb.sheet.text(F_Main::Toolbar2[buttons_[i]]);
        allow_ = wb.sheet.text(F_GEO_SF_REGLAGES::T_ALLOW);
        ready_[0] = wb.wingReady;
        ready_[1] = wb.stabReady;
        ready_[2] = wb.fuselageReady;
    }
    ~LoadState() {
        if (done_) return;
        try {
            for (int i = 0; i < kButtons; ++i) wb_.sheet.set(F_Main::Toolbar2[buttons_[i]], tags_[i]);
            restoreReady();
            wb_.sheet.set(F_GEO_SF_REGLAGES::T_ALLOW, allow_);
        } catch (...) {
            // A listener that fails while the load unwinds must not end the program.
        }
    }
    LoadState(const LoadState&) = delete;
    LoadState& operator=(const LoadState&) = delete;

    void restoreTag(int button) {
        for (int i = 0; i < kButtons; ++i) {
            if (buttons_[i] == button) wb_.sheet.set(F_Main::Toolbar2[button], tags_[i]);
        }
    }
    void restoreReady() {
        wb_.wingReady = ready_[0];
        wb_.stabReady = ready_[1];
        wb_.fuselageReady = ready_[2];
    }
    void done() { done_ = true; }

private:
    static constexpr int kButtons = 5;
    static constexpr int buttons_[kButtons] = {button::Fuselage, button::Motorisation, button::Performances,
                                               button::Allongement, button::View3D};
    Workbench& wb_;
    std::string tags_[kButtons];
    std::string allow_;
    bool ready_[3];
    bool done_ = false;
};

void loadProject(Workbench& wb, const ProfileDocument* given) {
    Sheet& s = wb.sheet;
    LoadState state(wb);

    // 1. Close the fuselage and motorisation panels and keep the analysis
    //    panels from refreshing while the cells are half filled.
    if (wb.isOpen(button::Fuselage)) wb.setOpen(button::Fuselage, false);
    if (wb.isOpen(button::Motorisation)) wb.setOpen(button::Motorisation, false);
    s.set(F_Main::Toolbar2[button::Performances], "0");
    s.set(F_Main::Toolbar2[button::Allongement], "0");
    s.set(F_Main::Toolbar2[button::View3D], "0");
    wb.wingReady = wb.stabReady = wb.fuselageReady = false;

    // 2. A bare file name lies in the program's folder.
    wb.projectFilePath = completedPath(wb, wb.projectFilePath);
    const ProfileDocument doc = given ? *given : ProfileDocument::load(wb.projectFilePath);

    // 3. Only a file with a model name is a project.
    const std::string name = doc.get("Modele", "Nom", kUnknownModel);
    s.set(F_3D::T_NOM_Modele, name);
    s.set(F_Main::Caption, std::string("TARVOKIN ") + kVersion + name);
    if (name == kUnknownModel) return;
    s.set(F_3D::T_PROJET, wb.projectFilePath);

    // 4-7. Every key in table order, recalculation gate closed.
    s.set(F_GEO_SF_REGLAGES::T_ALLOW, "0");
    ReadProjectKeys(s, doc, KeyGroup::Design);
    // With winglets on, the last panel that has a span is the winglet.
    if (s.on(F_3D::Ch_Winglets)) {
        const Cell span[5] = {F_GEO_SF::b7, F_GEO_SF::c7, F_GEO_SF::d7, F_GEO_SF::e7, F_GEO_SF::f7};
        for (int k = 5; k >= 1; --k) {
            if (s.val(span[k - 1]) != 0.0) {
                s.set(F_3D::Text8, std::to_string(k - 1));
                break;
            }
        }
    }
    s.set(F_3D::D20, plain(s.num(F_GEO_STAB::Text4) + s.num(F_GEO_FUS::Text5)));

    // 9. One recalculation with the fuselage panel's mark and the ready
    //    marks back, the analysis panels still quiet.
    state.restoreTag(button::Fuselage);
    s.set(F_GEO_SF_REGLAGES::T_ALLOW, "0");
    state.restoreReady();
    RecalcAll(wb);
    s.set(F_GEO_SF_REGLAGES::T_ALLOW, "1");

    // 10. The analysis panels come back, then the power keys.
    state.restoreTag(button::Performances);
    state.restoreTag(button::Allongement);
    state.restoreTag(button::View3D);
    state.done();
    auto refresh = [&wb](int b) {
        auto it = wb.panelRefresh.find(b);
        if (it != wb.panelRefresh.end() && it->second) it->second(wb);
    };
    if (wb.isOpen(button::Performances)) refresh(button::Performances);
    ReadProjectKeys(s, doc, KeyGroup::Power);
    if (s.val(F_Main::Toolbar2[button::Wizard]) != 0.0) refresh(button::Wizard);

    // 11. The airfoil slots: "0" means none; a name the catalogue lacks
    //     leaves the slot empty, the start-up check reports it.
    ReadProjectKeys(s, doc, KeyGroup::AirfoilSlots);
}

}  // namespace

void LoadProject(Workbench& wb) { loadProject(wb, nullptr); }

void LoadProjectDocument(Workbench& wb, const ProfileDocument& doc) { loadProject(wb, &doc); }

bool SaveProject(Workbench& wb) {
    const Sheet& s = wb.sheet;
    wb.projectFilePath = completedPath(wb, wb.projectFilePath);
    // Rewriting keys in place keeps what the program does not know of the file.
    ProfileDocument doc = ProfileDocument::load(wb.projectFilePath);
    WriteProjectKeys(s, doc);
    std::string reason;
    if (!doc.save(wb.projectFilePath, &reason)) {
        ReportWriteFailure(wb, wb.projectFilePath, reason);
        return false;
    }
    MarkSaved(wb);
    return true;
}

}  // namespace tarvokin
