#include "entry/database_logic.h"

#include <cmath>
#include <filesystem>

#include "airfoils/outline.h"
#include "airfoils/polar_database.h"
#include "airfoils/xfoil_runner.h"
#include "core/messages.h"
#include "core/numbers.h"
#include "core/polar_store.h"
#include "core/progress.h"
#include "core/text_case.h"
#include "core/workbench.h"

namespace tarvokin {

namespace fs = std::filesystem;

namespace {

constexpr const char* kForm = "F_BASE";
constexpr const char* kNoSelection = "NS";

void status(Workbench& wb, const std::string& text) { wb.sheet.set(F_BASE::Status, text); }

const DatabaseAirfoil* nodeOf(const Workbench& wb, const std::string& airfoil) {
    for (const DatabaseAirfoil& a : wb.database.tree)
        if (a.name == airfoil) return &a;
    for (const DatabaseAirfoil& a : wb.database.tree)
        if (equalsNoCase(a.name, airfoil)) return &a;
    return nullptr;
}

// The figure fields read "NS" while no airfoil is chosen and take no value.
bool selected(const Workbench& wb) { return wb.sheet.text(F_BASE::Text5) != kNoSelection; }

void clearFigures(Workbench& wb) {
    Sheet& s = wb.sheet;
    for (Cell c : {F_BASE::Text5, F_BASE::Text6, F_BASE::T_Camb, F_BASE::T_POS_CAMB}) s.set(c, kNoSelection);
    for (Cell c : {F_BASE::L_Ep_Ref, F_BASE::L_Ep_Camb}) s.set(c, "");
}

// A percentage field as a slider in hundredths of a per cent.
void sliderOf(Sheet& s, Cell field, Cell slider) {
    const double v = leadingNumber(s.text(field));
    if (std::isfinite(v) && std::fabs(v) < 1e6) s.setPlain(slider, std::round(v * 100.0));
}

void showFigures(Workbench& wb) {
    Sheet& s = wb.sheet;
    std::string pos;
    const std::string thick = Get_Thickness(wb, pos);
    s.set(F_BASE::Text5, thick == "-" ? kNoSelection : fixed(leadingNumber(thick), 2));
    s.set(F_BASE::Text6, pos == "-" ? kNoSelection : fixed(leadingNumber(pos), 2));
    std::string campos;
    const std::string camber = Get_Camber(wb, campos);
    s.set(F_BASE::T_Camb, camber == "-" ? kNoSelection : fixed(leadingNumber(camber), 2));
    s.set(F_BASE::T_POS_CAMB, campos == "-" ? kNoSelection : fixed(leadingNumber(campos), 2));
    // Slider 0 shows the thickness the outline has; slider 1 edits it with the mean line kept.
    sliderOf(s, F_BASE::Text5, F_BASE::Slider2[0]);
    sliderOf(s, F_BASE::Text5, F_BASE::Slider2[1]);
    sliderOf(s, F_BASE::Text6, F_BASE::Slider2[2]);
    sliderOf(s, F_BASE::T_Camb, F_BASE::Slider2[3]);
    sliderOf(s, F_BASE::T_POS_CAMB, F_BASE::Slider2[4]);
    s.set(F_BASE::Slider2[5], std::to_string(wb.outlines.Outline.size()));
    for (int i = 0; i < 6; ++i) s.set(F_BASE::Text4[i], s.text(F_BASE::Slider2[i]));
}

void readPolarForCharts(Workbench& wb, const fs::path& file, const std::string& re) {
    DatabaseState& d = wb.database;
    const DatabasePolarRead r = readDatabasePolar(file);
    d.clAlpha = r.clAlpha;
    d.clCd = r.clCd;
    d.title = r.opened ? "Re : " + re : "";
    wb.sheet.set(F_BASE::Text1, r.header);
    wb.sheet.set(F_BASE::text2, r.opened ? file.filename().string() + " : " + std::to_string(r.clAlpha.size()) + " points"
                                        : "");
}

// The outline a database airfoil stands for, as XFOIL is to load it.
std::string outlineOf(const Workbench& wb, const std::string& airfoil) {
    const size_t row = wb.catalogue.Find_Profil(airfoil);
    if (row == kNotFound) return "";
    return outlinePath(wb.home(), wb.catalogue.rows[row].Path).string();
}

// The name a row's polar files bear (a generic row's: its outline's).
std::string polarNameOf(const Workbench& wb, const std::string& airfoil) {
    const size_t row = wb.catalogue.Find_Profil(airfoil);
    if (row != kNotFound && airfoil.find("Générique") != std::string::npos)
        return fs::path(wb.catalogue.rows[row].Path).stem().string();
    return airfoil;
}

void computePolars(Workbench& wb, const std::vector<std::string>& reynolds) {
    const std::string airfoil = wb.sheet.text(F_BASE::tvwDB);
    const std::string dat = outlineOf(wb, airfoil);
    if (airfoil.empty() || dat.empty()) {
        status(wb, "Choisissez d'abord un profil du catalogue");
        return;
    }
    WaitHooks hooks;
    hooks.betweenWaits = wb.serveEvents;
    auto it = wb.solverProgress.find(kForm);
    if (it != wb.solverProgress.end()) hooks.progress = it->second;
    const std::string name = polarNameOf(wb, airfoil);
    int saved = 0;
    std::string reason;
    for (const std::string& re : reynolds) {
        const std::string polar = (wb.home() / "POLAIRES" / (name + "_" + re + ".POL")).string();
        PolarRun run = Calc_Polar(wb, 100, re, polar, dat, name, hooks);
        if (run.saved) ++saved;
        else reason = run.reason;
        if (hooks.progress && hooks.progress->cancelled()) break;
    }
    RefreshDatabaseTree(wb);
    status(wb, reason.empty() ? std::to_string(saved) + " polaire(s) calculée(s)" : reason);
}



}  // namespace

void SelectDatabaseNode(Workbench& wb, const std::string& airfoil, int polarIndex) {
    Sheet& s = wb.sheet;
    const DatabaseAirfoil* node = nodeOf(wb, airfoil);
    s.set(F_BASE::tvwDB, airfoil);
    s.set(F_BASE::T_Polar, "");
    wb.database.clAlpha.clear();
    wb.database.clCd.clear();
    wb.database.title.clear();
    const size_t row = wb.catalogue.Find_Profil(airfoil);
    if (row != kNotFound && Load_Profil(wb, wb.catalogue.rows[row].Path, wb.outlines.slot, OutlineWindow::F_BASE)) {
        showFigures(wb);
        s.set(F_BASE::L_Ep_Ref, "Réf. " + s.text(F_BASE::Text5) + " %");
        s.set(F_BASE::L_Ep_Camb, "Réf. " + s.text(F_BASE::T_Camb) + " %");
        status(wb, wb.outlines.path);
    } else {
        wb.outlines.Outline.clear();
        clearFigures(wb);
        status(wb, row == kNotFound ? "Profil absent du catalogue : " + airfoil
                                    : "Contour illisible : " + wb.catalogue.rows[row].Path);
    }
    if (!node || node->polars.empty()) return;
    const DatabasePolar* polar = nullptr;
    if (polarIndex >= 0 && polarIndex < static_cast<int>(node->polars.size())) {
        polar = &node->polars[static_cast<size_t>(polarIndex)];
        s.set(F_BASE::T_Polar, polar->file);
    } else {
        for (const DatabasePolar& p : node->polars)
            if (p.Re == trim(s.text(F_BASE::Text3))) polar = &p;
        if (!polar) polar = &node->polars.front();
    }
    readPolarForCharts(wb, wb.home() / "POLAIRES" / polar->file, polar->Re);
}

void installDatabaseLogic(Workbench& wb) {
    HandlerTable& h = wb.handlers;
    wb.panelOpening[button::Base] = [](Workbench& w) {
        RefreshDatabaseTree(w);
        if (w.sheet.text(F_BASE::tvwDB).empty()) clearFigures(w);
    };
    h.on(kForm, "tvwDB", Act::Click,
         [](Workbench& w, const Action& a) { SelectDatabaseNode(w, a.text, a.index); });
    // "Ajouter un Profil": the chosen file (a.text) copied into DATA and entered.
    h.on(kForm, "Command4", Act::Click, [](Workbench& w, const Action& a) {
        if (a.text.empty()) return;
        const fs::path target = w.home() / "DATA" / fs::path(a.text).filename();
        std::error_code ec;
        if (upperCase(a.text) != upperCase(target.string()))
            fs::copy_file(a.text, target, fs::copy_options::overwrite_existing, ec);
        if (ec) {
            status(w, "Copie impossible : " + ec.message());
            return;
        }
        AddToCatalogue(w, target.string());
        status(w, "Profil ajouté : " + target.filename().string());
    });
    // "Enregistrer le Profil": the edited outline under the chosen name (a.text).
    h.on(kForm, "Command5", Act::Click, [](Workbench& w, const Action& a) {
        if (!selected(w) || w.outlines.Outline.size() < 3) {
            status(w, "Aucun profil à enregistrer");
            return;
        }
        const std::string written = Write_Profil(w.home(), w.outlines.Outline, a.text);
        if (written.empty()) {
            status(w, "Impossible d'écrire le profil " + a.text);
            return;
        }
        AddToCatalogue(w, written);
        status(w, "Profil enregistré : " + written);
    });
    h.on(kForm, "Command6", Act::Click, [](Workbench& w, const Action&) {
        const std::string airfoil = w.sheet.text(F_BASE::tvwDB);
        if (airfoil.empty()) return;
        if (!AskUser(w, "[#21] ", airfoil)) return;
        std::string reason;
        if (!DeleteAirfoil(w, airfoil, reason)) {
            status(w, reason);
            return;
        }
        w.sheet.set(F_BASE::tvwDB, "");
        w.outlines.Outline.clear();
        clearFigures(w);
        w.database.clAlpha.clear();
        w.database.clCd.clear();
        status(w, "Profil supprimé : " + airfoil);
    });
    h.on(kForm, "Command1", Act::Click, [](Workbench& w, const Action&) {
        const std::string airfoil = w.sheet.text(F_BASE::tvwDB);
        const std::string polar = w.sheet.text(F_BASE::T_Polar);
        if (airfoil.empty()) return;
        if (!(polar.empty() ? AskUser(w, "[#22] ", airfoil) : AskUser(w, "[#23] ", polar)))
            return;
        const int n = DeletePolars(w, airfoil, polar);
        w.sheet.set(F_BASE::T_Polar, "");
        w.database.clAlpha.clear();
        w.database.clCd.clear();
        status(w, std::to_string(n) + " polaire(s) supprimée(s)");
    });
    h.on(kForm, "Command2", Act::Click, [](Workbench& w, const Action&) {
        std::vector<std::string> res;
        const std::string polar = w.sheet.text(F_BASE::T_Polar);
        const DatabaseAirfoil* node = nodeOf(w, w.sheet.text(F_BASE::tvwDB));
        if (!polar.empty() && node) {
            for (const DatabasePolar& p : node->polars)
                if (p.file == polar && leadingNumber(p.Re) > 0) res.push_back(p.Re);
        }
        if (res.empty())
            for (int re : kStandardReynolds) res.push_back(std::to_string(re));
        computePolars(w, res);
    });
    h.on(kForm, "Command3", Act::Click, [](Workbench& w, const Action&) {
        double re = 0;
        if (!tryNumber(trim(w.sheet.text(F_BASE::Text3)), re) || !std::isfinite(re) || re <= 0 || re > 1e9) {
            status(w, "Nombre de Reynolds invalide : \"" + w.sheet.text(F_BASE::Text3) + "\"");
            return;
        }
        computePolars(w, {plain(std::round(re))});
    });

    // Thickness and camber: a slider sets its field and edits the outline at once.
    auto edit = [](Workbench& w, int index, double newValue) {
        Sheet& s = w.sheet;
        if (!selected(w)) return;
        const Cell field = index == 1 ? F_BASE::Text5 : F_BASE::T_Camb;
        const double old = leadingNumber(s.text(field));
        const bool ok = index == 1 ? Edit_Thickness(w, newValue, old) : Edit_Camber(w, newValue, old);
        if (!ok) {
            status(w, index == 1 ? "Épaisseur non modifiable sur ce contour" : "Cambrure non modifiable sur ce contour");
            sliderOf(s, field, F_BASE::Slider2[index]);
            return;
        }
        showFigures(w);
    };
    h.on(kForm, "Slider2", Act::Scroll, [edit](Workbench& w, const Action& a) {
        if (a.index == 1 || a.index == 3) edit(w, a.index, leadingNumber(a.text) / 100.0);
    });
    h.on(kForm, "Slider2", Act::ScrollEnd, [](Workbench&, const Action&) {});
    for (const char* f : {"Text5", "T_Camb"}) {
        const int index = f[0] == 'T' && f[1] == 'e' ? 1 : 3;
        h.on(kForm, f, Act::Enter, [edit, index](Workbench& w, const Action&) {
            Sheet& s = w.sheet;
            const Cell field = index == 1 ? F_BASE::Text5 : F_BASE::T_Camb;
            double v = 0;
            if (!tryNumber(trim(s.text(field)), v) || !std::isfinite(v)) return;
            // The field holds the new value: edit from the figure the outline has now.
            std::string pos;
            const double old = leadingNumber(index == 1 ? Get_Thickness(w, pos) : Get_Camber(w, pos));
            s.set(field, fixed(old, 2));
            edit(w, index, v);
        });
    }
    for (const char* f : {"Text6", "T_POS_CAMB"}) {
        const Cell field = f[1] == 'e' ? F_BASE::Text6 : F_BASE::T_POS_CAMB;
        const Cell slider = f[1] == 'e' ? F_BASE::Slider2[2] : F_BASE::Slider2[4];
        h.on(kForm, f, Act::Enter, [field, slider](Workbench& w, const Action&) {
            if (selected(w)) sliderOf(w.sheet, field, slider);
        });
    }
    // Dragging a point of the outline: the press takes the nearest point,
    // the moves carry it, the release leaves it (a.x, a.y in chord units).
    h.on(kForm, "Picture1", Act::Press, [](Workbench& w, const Action& a) {
        w.sheet.setPlain(F_BASE::E_MouseX, a.x);
        w.sheet.setPlain(F_BASE::E_MouseY, a.y);
    });
    h.on(kForm, "Picture1", Act::Move, [](Workbench& w, const Action& a) {
        OutlinePoints& pts = w.outlines.Outline;
        if (!a.button || pts.empty() || !std::isfinite(a.x) || !std::isfinite(a.y)) return;
        const double px = w.sheet.val(F_BASE::E_MouseX), py = w.sheet.val(F_BASE::E_MouseY);
        size_t best = 0;
        double dist = 1e300;
        for (size_t i = 0; i < pts.size(); ++i) {
            const double d = std::hypot(pts[i].x - px, pts[i].y - py);
            if (d < dist) {
                dist = d;
                best = i;
            }
        }
        if (dist > 0.03) return;
        pts[best] = {a.x, a.y};
        // The closed trailing edge moves as one point.
        if (best == 0 && pts.size() > 1) pts.back() = pts.front();
        if (best == pts.size() - 1) pts.front() = pts.back();
        w.sheet.setPlain(F_BASE::E_MouseX, a.x);
        w.sheet.setPlain(F_BASE::E_MouseY, a.y);
    });
    h.on(kForm, "Picture1", Act::Release, [](Workbench& w, const Action& a) {
        w.sheet.setPlain(F_BASE::E_mouseupx, a.x);
        w.sheet.setPlain(F_BASE::E_mouseupy, a.y);
        if (selected(w)) showFigures(w);
    });
    h.on(kForm, "*", Act::Change, [](Workbench&, const Action&) {});
}

}  // namespace tarvokin
