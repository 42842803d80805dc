// The state of one run: the sheet, the settings, the catalogue, the folders.
// Routines take it by reference; a test builds one on a temporary folder.
#pragma once

#include <array>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "core/airfoil_windows_state.h"
#include "core/catalogue.h"
#include "core/frame_state.h"
#include "core/entry_table.h"
#include "core/generator_state.h"
#include "core/outline_types.h"
#include "core/polar_store.h"
#include "core/aspect_ratio_state.h"
#include "core/perf_table.h"
#include "core/sheet.h"
#include "core/vlm_state.h"
#include "core/settings.h"
#include "core/scene_state.h"

namespace tarvokin {

struct Progress;

// Toolbar positions of the panels the recalculation and the load look at.
namespace button {
constexpr int New = 2, Open = 3, Save = 4, Base = 6, View3D = 7, Profils = 8, TestPol = 9, Wing = 10,
              Fuselage = 11, Stab = 12, Reglages = 13, Aero = 14, View2D = 15, Performances = 17,
              Allongement = 18, CalcMot = 19, Motorisation = 20, Servos = 21, Wizard = 29, CloseAll = 30,
              Report = 32, FrameGenerator = 27, Converter = 23, Calculator = 24, Export = 33,
              NacaGenerator = 25, RibGenerator = 26;
}

constexpr const char* kUnknownModel = "Modèle inconnu";
constexpr const char* kVersion = "3.1 ";

class Workbench {
public:
    explicit Workbench(std::filesystem::path home);

    const std::filesystem::path& home() const { return home_; }
    std::filesystem::path settingsFilePath() const { return home_ / "TARVOKIN.INI"; }
    std::filesystem::path catalogueFilePath() const { return home_ / "DATA" / "GENERIC.CSV"; }

    Sheet sheet;
    Settings settings;
    ProfilCatalogue catalogue;
    OutlineStore outlines;
    PolarStore polars;  // the six polars of each airfoil slot
    std::array<OutlinePoints, 3> slotOutlines;  // each slot's outline, for the airfoil window's drawing
    PerformanceState perf;  // the speed polars of the complete model
    AircraftView view3d;    // the 3D view of the design window: scene, camera, light, orbit, part lists
    AspectRatioState aspectRatio;  // charts and tables of the aspect-ratio panel
    VlmState vlm;                  // span loadings of the vortex-lattice panel
    FrameState frame;       // the frame generator's frame and its 3D piece
    GeneratorState generators;     // the NACA and rib generators
    PressureState pressure;        // the pressure distribution window
    DatabaseState database;        // the airfoil database browser
    PolarStore testPolars;         // the interpolation window's airfoil, in slot 0

    std::string projectFilePath;   // full path of the current .MDL, empty when none
    std::string languageFilePath;  // language file of settings.languageCode

    // Ready marks of the design panels F_GEO_SF, F_GEO_STAB, F_GEO_FUS: the
    // panels exist for the whole run, a load clears the marks while it fills them.
    bool wingReady = true, stabReady = true, fuselageReady = true;

    // An airfoil slot is being read (its polars may be computing, the
    // interface still served): a second choice waits for it to end.
    bool selectingAirfoil = false;

    // Tag of a toolbar button (1 = its panel is open).
    bool isOpen(int buttonPosition) const;
    void setOpen(int buttonPosition, bool open);

    // Refresh of an open analysis panel, by toolbar position; later windows
    // register theirs. The recalculation calls those whose button is open.
    std::map<int, std::function<void(Workbench&)>> panelRefresh;
    // What a panel does once as it opens and as it closes, beyond its refresh.
    std::map<int, std::function<void(Workbench&)>> panelOpening, panelClosing;

    // What the windows' controls do, and the history of the user's entries
    // (the entry path fills and walks them).
    HandlerTable handlers;
    EntryHistory history;

    // Shown to the user: the GUI sets a message box, the command-line program
    // prints on stderr. `text` is the whole message.
    std::function<void(const std::string& text)> showMessage;
    // Computes and reads the polar of an airfoil slot at a standard Reynolds
    // number when its file is missing: the GUI runs XFOIL with a progress
    // bar, the command-line program without one. True when the record was
    // filled. Without one, a missing polar stays missing.
    std::function<bool(int slot, int reynolds)> computePolar;
    // Computes the polar files of a slot's airfoil at several standard
    // Reynolds numbers at once (a new airfoil); the caller reads them, in
    // its own order. Without one, each missing polar goes through
    // computePolar in turn.
    std::function<void(int slot, const std::vector<int>& reynolds)> computePolars;

    // A solver run started by a window's handler: the progress and Cancel of
    // that window, by window name (none in the command-line program), and the
    // events served between the waits (the GUI's event loop).
    std::map<std::string, Progress*, std::less<>> solverProgress;
    std::function<void()> serveEvents;

    // A Yes/No question: true for Yes. Without one (the command-line program)
    // the answer is No.
    std::function<bool(const std::string& text)> askUser;
    // The short warning sound of a calculation that gives up (a singular matrix).
    std::function<void()> beep;

    // What only a screen can do, set by the program that has one. The
    // pictures of the report: source 0 the 3D view, 1 the global chart, 2 a
    // performance chart, 3 an aspect-ratio chart (index: the chart of its
    // window), drawn into `file` as PNG; false when it could not be drawn.
    std::function<bool(Workbench& wb, int source, int index, const std::filesystem::path& file)> paintPicture;
    // A document or folder given to the desktop's default handler (browser,
    // spreadsheet); false when there is none.
    std::function<bool(const std::string& path)> openDocument;
    // A plain notice (a path written, a result): not an error.
    std::function<void(const std::string& text)> showNotice;

    // Puts the catalogue's names into the airfoil lists (Combo5, CB_1, F_PREFER.Combo1).
    void fillAirfoilLists();

private:
    std::filesystem::path home_;
};

}  // namespace tarvokin
