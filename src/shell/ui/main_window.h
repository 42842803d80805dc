// F_Main: the menu bar, the toolbar Toolbar2 and the one view that holds the
// design panels. Every command goes to the window-free routines of the shell.
#pragma once

#include <QMainWindow>
#include <array>
#include <map>
#include <string>
#include <vector>

class QAction;
class QStackedWidget;
class QScrollArea;
class QDockWidget;

namespace tarvokin {
class Workbench;
}

namespace tarvokin::ui {

class SheetBridge;
class AirfoilWindow;
class DesignWindow;
class DesignViewArea;

class MainWindow : public QMainWindow {
    Q_OBJECT
public:
    MainWindow(Workbench& wb, SheetBridge& bridge, QWidget* parent = nullptr);
    ~MainWindow() override;

    // The toolbar action at a button position (separators have none).
    QAction* toolbarButton(int position) const;
    // True when toolbar button `position` shows a window (a toggle).
    bool opensWindow(int position) const;
    QWidget* designPanel(int button) const;
    AirfoilWindow* airfoilWindow() const { return airfoils_; }
    DesignWindow* designWindow() const { return design_; }

    // Computes a missing polar of a slot with XFOIL, showing progress with Cancel.
    bool computePolar(int slot, int reynolds);
    // Several polars of a slot's airfoil at once, with one dialog for all.
    void computePolars(int slot, const std::vector<int>& reynolds);

    // A window that a toolbar button opens and closes; closing it by its own
    // frame is the same as pressing the button again.
    void addPanelWindow(int button, QWidget* window);
    QWidget* panelWindow(int button) const;

    void openProject();
    void saveProjectAs();

    // Every window of the program, this one first: those made at first use
    // are made (hidden) on the way. For the language tools and their tests.
    std::vector<QWidget*> everyWindow();
    // Opens every window a button opens, as its button would, and the
    // vortex-lattice panel: charts then hold their titles, pages their rows.
    void openEveryWindow();

protected:
    void closeEvent(QCloseEvent* e) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildMenus();
    void buildToolbar();
    void buildCentre();
    void buildAirfoilDock();
    void buildPanelWindows();
    // The wizard, the report, the workbook, the converter, the navigator,
    // help and the about box.
    void buildProjectTools();
    void newModel();
    // A tool window by its name, made at its first use.
    QWidget* toolWindow(const char* name);
    void openNavigatorAt(const QString& form, const QString& field);
    void panelTagsChanged();
    void ensureSlotPolars();
    void clickToolbar(int position);
    // A menu command of this window with the file its dialog gave.
    void menuCommand(const char* entry, const std::string& file);
    // Undo and redo follow the history; the title's mark, the saved state.
    void historyChanged();
    // The run's language on this window, its panels and the design window.
    void applyLanguage();
    void openPreferences();
    void openInEditor(const QString& relativePath, const char* missingMessage = "[#13] ");

    Workbench& wb_;
    SheetBridge& bridge_;
    std::map<int, QAction*> buttons_;
    QAction* undo_ = nullptr;
    QAction* redo_ = nullptr;
    std::map<int, QWidget*> designPanels_;
    std::map<int, QWidget*> panelWindows_;
    QStackedWidget* designStack_ = nullptr;
    QScrollArea* designPlace_ = nullptr;
    QScrollArea* settingsPlace_ = nullptr;
    AirfoilWindow* airfoils_ = nullptr;
    DesignWindow* design_ = nullptr;
    DesignViewArea* viewArea_ = nullptr;
    std::array<bool, 2> motorTabShown_{};
    std::map<int, bool> analysisOpen_;
    QDockWidget* airfoilDock_ = nullptr;
    QDockWidget* designDock_ = nullptr;
    QDockWidget* settingsDock_ = nullptr;
    bool syncingDocks_ = false;
    bool quitting_ = false;
    std::string appliedLanguage_;
};

}  // namespace tarvokin::ui
