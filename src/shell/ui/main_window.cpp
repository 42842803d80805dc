#include "shell/ui/main_window.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QCloseEvent>
#include <QDesktopServices>
#include <QDockWidget>
#include <QProgressDialog>
#include <QStatusBar>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QMenuBar>
#include <QDialog>
#include <QMessageBox>
#include <QPointer>
#include <QProcess>
#include <QScreen>
#include <QScrollArea>
#include <QStackedWidget>
#include <QStandardPaths>
#include <QStyle>
#include <QToolBar>
#include <QUrl>
#include <filesystem>

#include "airfoils/polar_lookup.h"
#include "airfoils/ui/airfoil_window.h"
#include "airfoils/ui/naca_window.h"
#include "airfoils/ui/ribs_window.h"
#include "airfoils/ui/database_window.h"
#include "airfoils/ui/interpolation_window.h"
#include "airfoils/ui/pressure_window.h"
#include "airfoils/xfoil_runner.h"
#include "construction/ui/frame_generator_window.h"
#include "design/ui/allongement_window.h"
#include "design/ui/fuselage_drawing.h"
#include "design/recalc.h"
#include "design/ui/fuselage_panel.h"
#include "design/ui/performance_window.h"
#include "design/ui/settings_panel.h"
#include "design/ui/stab_panel.h"
#include "design/ui/tail_tools_windows.h"
#include "design/ui/vlm_window.h"
#include "design/ui/wing_panel.h"
#include "power/ui/calc_mot_window.h"
#include "power/ui/motorisation_window.h"
#include "power/ui/servos_window.h"
#include "views/ui/rib_view_widget.h"
#include "core/file_spelling.h"
#include "core/language.h"
#include "core/messages.h"
#include "core/ui/language_apply.h"
#include "core/progress.h"
#include "entry/airfoil_choice.h"
#include "entry/entry_path.h"
#include "entry/session.h"
#include "core/ui/cell_widgets.h"
#include "shell/ui/preferences_dialog.h"
#include "core/ui/sheet_bridge.h"
#include "shell/ui/toolbar_icons.h"
#include "core/workbench.h"
#include "views/ui/design_view_area.h"
#include "views/ui/design_window.h"
#include "views/ui/global_chart_window.h"
#include "project/ui/report_pictures.h"
#include "project/ui/tool_windows.h"

namespace tarvokin::ui {

namespace {

struct ButtonDef {
    int position;
    const char* tooltip;
    const char* label;
};

// Toolbar2 by position; positions 5, 16, 22, 28 and 31 are separators.
const ButtonDef kButtons[] = {
    {2, "Nouveau Projet", "N"},
    {3, "Ouvrir un Projet", "O"},
    {4, "Sauvegarder un Projet", "S"},
    {6, "Base de données", "BD"},
    {7, "Vue 3D", "3D"},
    {8, "Présélection des Profils", "Pr"},
    {9, "Interpolation de Polaires", "IP"},
    {10, "Géométrie de l'aile", "Ai"},
    {11, "Fuselage", "Fu"},
    {12, "Stab", "St"},
    {13, "Règlages", "Rg"},
    {14, "Distributiondes Pressions / Vitesses", "Cp"},
    {15, "Vue 2D", "2D"},
    {17, "Performances", "Pf"},
    {18, "Allongement", "Al"},
    {19, "Calcul Motorisations", "CM"},
    {20, "Motorisation", "Mo"},
    {21, "Servos", "Sv"},
    {23, "Convertisseur d'unités", "U"},
    {24, "Calculatrice Windows", "="},
    {25, "Générateur de profils NACA", "NA"},
    {26, "Générateur de profils intermédiaires", "Nv"},
    {27, "Générateur de Couples", "Cp"},
    {29, "Wizzard", "W"},
    {30, "Fermer toutes les fenêtres", "X"},
    {32, "Rapport HTML", "H"},
    {33, "Export Excel", "XL"},
};

bool isSeparatorPosition(int p) { return p == 5 || p == 16 || p == 22 || p == 28 || p == 31; }

bool isToggle(int p) {
    return p == button::View3D || p == button::Wing || p == button::Fuselage || p == button::Stab || p == button::Reglages ||
           p == button::Profils;
}

// Progress of one solver run in a dialog with Cancel.
class DialogProgress : public Progress {
public:
    explicit DialogProgress(QProgressDialog& d) : d_(d) {}
    void report(const std::string& text, double fraction) override {
        d_.setLabelText(qs(text));
        d_.setValue(static_cast<int>(fraction * 100));
    }
    // The batch: one line a run with how far it is, the bar the whole batch.
    void reportRuns(const std::vector<std::pair<std::string, double>>& runs) override {
        QStringList lines;
        double sum = 0.0;
        for (const auto& [text, fraction] : runs) {
            lines << QStringLiteral("%1 : %2 %").arg(qs(text)).arg(static_cast<int>(fraction * 100));
            sum += fraction;
        }
        if (total_ > 0) {
            lines << QStringLiteral("%1 calcul(s) sur %2").arg(runs.size()).arg(total_);
            d_.setValue(static_cast<int>(sum / total_ * 100));
        }
        d_.setLabelText(lines.join(QLatin1Char('\n')));
    }
    bool cancelled() override { return d_.wasCanceled(); }
    // How many runs the batch has in all; 0 for a single run.
    int total_ = 0;

private:
    QProgressDialog& d_;
};

QString calculatorProgram() {
    for (const char* name : {"gnome-calculator", "kcalc", "galculator", "qalculate-gtk", "xcalc"}) {
        QString p = QStandardPaths::findExecutable(QString::fromLatin1(name));
        if (!p.isEmpty()) return p;
    }
    return {};
}

}  // namespace

MainWindow::MainWindow(Workbench& wb, SheetBridge& bridge, QWidget* parent)
    : QMainWindow(parent), wb_(wb), bridge_(bridge) {
    setObjectName("F_Main");
    // The title names the program and the project, not a caption.
    setProperty("valueTitle", true);
    InstallLanguageFollower(wb_, this);
    // Solver runs of the windows' handlers keep the interface served.
    wb_.serveEvents = [] { QApplication::processEvents(); };
    if (!wb_.askUser) {
        wb_.askUser = [self = QPointer<MainWindow>(this)](const std::string& text) {
            return QMessageBox::question(self, QStringLiteral("ATTENTION"), qs(text)) == QMessageBox::Yes;
        };
    }
    buildCentre();
    buildAirfoilDock();
    buildToolbar();
    buildMenus();
    buildPanelWindows();
    buildProjectTools();
    // The title carries the unsaved mark while the design differs from its file.
    auto title = [this] {
        setWindowTitle(qs(wb_.sheet.text(F_Main::Caption)) + QStringLiteral("[*]"));
        historyChanged();
    };
    title();
    bridge_.watch(F_Main::Caption, this, title);
    connect(&bridge_, &SheetBridge::entryDone, this, &MainWindow::historyChanged);
    // A new language shows at once in this window, the panels it holds and
    // the design window; the other windows take it as they next activate.
    appliedLanguage_ = wb_.languageFilePath;
    connect(&bridge_, &SheetBridge::entryDone, this, [this] {
        if (wb_.languageFilePath != appliedLanguage_) applyLanguage();
    });
    for (int p = 1; p <= 33; ++p) bridge_.watch(F_Main::Toolbar2[p], this, [this] { panelTagsChanged(); });
    panelTagsChanged();
    // The first size fills a small screen and stays reasonable on a large one.
    const QSize room = screen() ? screen()->availableGeometry().size() : QSize(1280, 800);
    resize(room.boundedTo(QSize(1920, 1080)));
    // Where there is room, the geometry docks take the width of the wing's
    // five panels, so that no field of the grid hides behind a scroll bar.
    if (room.width() >= 1600) {
        int wide = 0;
        for (const auto& [b, panel] : designPanels_) wide = std::max(wide, panel->minimumSizeHint().width());
        if (wide > 0) resizeDocks({designDock_}, {wide + 24}, Qt::Horizontal);
    }
}

MainWindow::~MainWindow() {
    // The docks are children, deleted by the base class after this body has
    // run; hiding them then would call the handlers below on a window that
    // is no longer a MainWindow.
    for (QDockWidget* dock : {designDock_, settingsDock_, airfoilDock_})
        if (dock) disconnect(dock, nullptr, this, nullptr);
}

QAction* MainWindow::toolbarButton(int position) const {
    auto it = buttons_.find(position);
    return it == buttons_.end() ? nullptr : it->second;
}

bool MainWindow::opensWindow(int position) const {
    const QAction* a = toolbarButton(position);
    return a && a->isEnabled() && a->isCheckable();
}

QWidget* MainWindow::designPanel(int button) const {
    auto it = designPanels_.find(button);
    return it == designPanels_.end() ? nullptr : it->second;
}

void MainWindow::addPanelWindow(int button, QWidget* window) {
    window->setParent(this, Qt::Window);
    window->installEventFilter(this);
    panelWindows_[button] = window;
    if (QAction* a = toolbarButton(button)) {
        a->setCheckable(true);
        a->setEnabled(true);
        connect(a, &QAction::triggered, this, [this, button] { clickToolbar(button); });
    }
    for (QAction* a : menuBar()->findChildren<QAction*>()) {
        if (a->property("button").toInt() == button) {
            a->setEnabled(true);
            connect(a, &QAction::triggered, this, [this, button] { clickToolbar(button); });
        }
    }
}

QWidget* MainWindow::panelWindow(int button) const {
    auto it = panelWindows_.find(button);
    return it == panelWindows_.end() ? nullptr : it->second;
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Close && !syncingDocks_ && !quitting_) {
        for (auto& [b, w] : panelWindows_) {
            if (w == watched && wb_.isOpen(b)) clickToolbar(b);
        }
    }
    return QMainWindow::eventFilter(watched, event);
}

void MainWindow::buildPanelWindows() {
    addPanelWindow(button::Performances, new PerformanceWindow(wb_, bridge_));
    addPanelWindow(button::Allongement, new AllongementWindow(wb_, bridge_));
    addPanelWindow(button::CalcMot, new CalcMotWindow(wb_, bridge_));
    addPanelWindow(button::Motorisation, new MotorisationWindow(wb_, bridge_));
    addPanelWindow(button::Servos, new ServosWindow(wb_, bridge_));
    // The lattice panel is opened from the design window's tabs and shows
    // itself by the Tag of button 29 (whose button is the wizard's).
    (new VlmWindow(wb_, bridge_))->setParent(this, Qt::Window);
    addPanelWindow(button::FrameGenerator, new FrameGeneratorWindow(bridge_));
    // The airfoil generators (toolbar 25 and 26, IM_NACAGEN and IM_RIBS).
    addPanelWindow(button::NacaGenerator, new NacaWindow(bridge_));
    addPanelWindow(button::RibGenerator, new RibsWindow(bridge_, [this] { return new RibViewWidget(bridge_); }));
    addPanelWindow(button::Base, new DatabaseWindow(wb_, bridge_));
    addPanelWindow(button::TestPol, new InterpolationWindow(wb_, bridge_));
    addPanelWindow(button::Aero, new PressureWindow(wb_, bridge_));
}

void MainWindow::buildCentre() {
    // The design window holds the centre; the geometry panels (wing, stab,
    // fuselage: one place, one at a time) and the settings stand beside it
    // as docks the modeller can move, float or close.
    designStack_ = new QStackedWidget;
    designPanels_[button::Wing] = new WingPanel(bridge_);
    designPanels_[button::Stab] = new StabPanel(bridge_);
    designPanels_[button::Fuselage] = new FuselagePanel(bridge_);
    for (auto& [b, w] : designPanels_) designStack_->addWidget(w);
    designPlace_ = new QScrollArea;
    designPlace_->setWidget(designStack_);
    designPlace_->setWidgetResizable(true);
    designPlace_->setMinimumWidth(520);
    designDock_ = new QDockWidget(QStringLiteral("Géométrie"), this);
    designDock_->setObjectName("DesignPanelsDock");
    designDock_->setWidget(designPlace_);
    addDockWidget(Qt::LeftDockWidgetArea, designDock_);

    settingsPlace_ = new QScrollArea;
    settingsPlace_->setWidget(new SettingsPanel(bridge_));
    settingsPlace_->setWidgetResizable(true);
    settingsDock_ = new QDockWidget(QStringLiteral("Règlages"), this);
    settingsDock_->setObjectName("SettingsDock");
    settingsDock_->setWidget(settingsPlace_);
    addDockWidget(Qt::LeftDockWidgetArea, settingsDock_);

    // Closing a dock by its own button is the same as its toolbar button.
    connect(designDock_, &QDockWidget::visibilityChanged, this, [this](bool visible) {
        if (visible || syncingDocks_ || quitting_ || !designDock_->isHidden()) return;
        for (int b : {button::Wing, button::Stab, button::Fuselage})
            if (wb_.isOpen(b)) clickToolbar(b);
    });
    connect(settingsDock_, &QDockWidget::visibilityChanged, this, [this](bool visible) {
        if (!visible && !syncingDocks_ && !quitting_ && settingsDock_->isHidden() && wb_.isOpen(button::Reglages))
            clickToolbar(button::Reglages);
    });

    design_ = new DesignWindow(wb_, bridge_);
    viewArea_ = new DesignViewArea(wb_, bridge_);
    design_->setViewArea(viewArea_);
    setCentralWidget(design_);
}

bool MainWindow::computePolar(int slot, int reynolds) {
    const std::string name = wb_.sheet.text(F_PROFILS::CB_1[slot]);
    QProgressDialog dialog(QStringLiteral("XFOIL : %1, Re %2").arg(qs(name)).arg(reynolds),
                           QStringLiteral("Annuler"), 0, 100, this);
    dialog.setObjectName("XfoilProgress");
    dialog.setWindowModality(Qt::WindowModal);
    dialog.setMinimumDuration(0);
    dialog.setValue(0);
    DialogProgress progress(dialog);
    WaitHooks hooks;
    hooks.betweenWaits = [] { QApplication::processEvents(); };
    hooks.progress = &progress;
    const auto index = ReynoldsIndex(reynolds);
    PolarRun run = Calc_Polar(wb_, slot, std::to_string(reynolds), "", "", "", hooks,
                              [&](const std::filesystem::path& p) { return Read_Polar(wb_.polars, p, slot, index); });
    statusBar()->showMessage(run.reason.empty() ? QStringLiteral("Polaire calculée : %1").arg(qs(run.polar.string()))
                                                : qs(run.reason));
    return run.read;
}

void MainWindow::computePolars(int slot, const std::vector<int>& reynolds) {
    const std::string name = wb_.sheet.text(F_PROFILS::CB_1[slot]);
    QProgressDialog dialog(QStringLiteral("XFOIL : %1, %2 polaires").arg(qs(name)).arg(reynolds.size()),
                           QStringLiteral("Annuler"), 0, 100, this);
    dialog.setObjectName("XfoilProgress");
    dialog.setWindowModality(Qt::WindowModal);
    dialog.setMinimumDuration(0);
    dialog.setValue(0);
    DialogProgress progress(dialog);
    progress.total_ = static_cast<int>(reynolds.size());
    WaitHooks hooks;
    hooks.betweenWaits = [] { QApplication::processEvents(); };
    hooks.progress = &progress;
    QStringList failed;
    for (const PolarRun& run : Calc_Polars(wb_, slot, reynolds, hooks))
        if (!run.reason.empty()) failed << qs(run.reason);
    statusBar()->showMessage(failed.isEmpty() ? QStringLiteral("Polaires calculées : %1").arg(qs(name))
                                              : failed.join(QStringLiteral(" ; ")));
    // A polar another instance is computing is left to it: the user must
    // know why the airfoil lacks it.
    for (const QString& f : failed)
        if (f.contains(QStringLiteral("autre instance"))) {
            ShowMessage(wb_, "[#9] ", ss(f));
            break;
        }
}

void MainWindow::buildAirfoilDock() {
    wb_.computePolar = [this](int slot, int re) { return computePolar(slot, re); };
    wb_.computePolars = [this](int slot, const std::vector<int>& re) { computePolars(slot, re); };
    airfoils_ = new AirfoilWindow(wb_, bridge_);
    airfoilDock_ = new QDockWidget(airfoils_->windowTitle(), this);
    airfoilDock_->setObjectName("F_PROFILS_dock");
    airfoilDock_->setWidget(airfoils_);
    airfoilDock_->setVisible(false);
    addDockWidget(Qt::BottomDockWidgetArea, airfoilDock_);
    // Closing the window by its own frame is the same as the toolbar button.
    connect(airfoilDock_, &QDockWidget::visibilityChanged, this, [this](bool visible) {
        if (!visible && !syncingDocks_ && !quitting_ && airfoilDock_->isHidden() && wb_.isOpen(button::Profils))
            clickToolbar(button::Profils);
    });
}

void MainWindow::buildToolbar() {
    auto* tb = addToolBar(QStringLiteral("Toolbar2"));
    tb->setObjectName("Toolbar2");
    tb->setMovable(false);
    const QString calc = calculatorProgram();
    int next = 2;
    for (const ButtonDef& d : kButtons) {
        for (; next < d.position; ++next) {
            if (isSeparatorPosition(next)) tb->addSeparator();
        }
        next = d.position + 1;
        const int pos = d.position;
        const QIcon icon = toolbarIcon(pos);
        QAction* a = tb->addAction(icon, QString::fromUtf8(d.tooltip));
        a->setToolTip(QString::fromUtf8(d.tooltip));
        a->setObjectName(QStringLiteral("Toolbar2_%1").arg(pos));
        buttons_[pos] = a;
        a->setEnabled(false);  // the panels of later steps enable their own buttons
        if (isToggle(pos)) {
            a->setCheckable(true);
            a->setEnabled(true);
            connect(a, &QAction::triggered, this, [this, pos] { clickToolbar(pos); });
        }
    }
    buttons_[button::Open]->setEnabled(true);
    connect(buttons_[button::Open], &QAction::triggered, this, &MainWindow::openProject);
    buttons_[button::Save]->setEnabled(true);
    connect(buttons_[button::Save], &QAction::triggered, this, [this] {
        if (wb_.projectFilePath.empty()) saveProjectAs();
        else clickToolbar(button::Save);
    });
    buttons_[button::CloseAll]->setEnabled(true);
    connect(buttons_[button::CloseAll], &QAction::triggered, this, [this] { clickToolbar(button::CloseAll); });
    if (!calc.isEmpty()) {
        buttons_[24]->setEnabled(true);
        connect(buttons_[24], &QAction::triggered, this, [calc] { QProcess::startDetached(calc, {}); });
    }
}

void MainWindow::buildMenus() {
    auto entry = [this](QMenu* m, const char* name, const QString& caption, bool enabled = false) {
        QAction* a = m->addAction(caption);
        a->setObjectName(QString::fromLatin1(name));
        a->setEnabled(enabled);
        return a;
    };
    QMenu* fich = menuBar()->addMenu(QStringLiteral("&Fichier"));
    fich->setObjectName("IM_FICH");
    entry(fich, "IM_NEW_PROJ", QStringLiteral("&Nouveau Projet"));
    connect(entry(fich, "IM_OPEN_PROJ", QStringLiteral("&Ouvrir un Projet"), true), &QAction::triggered, this,
            &MainWindow::openProject);
    entry(fich, "IM_IMPORT", QStringLiteral("&Importer TARVOKIN Excel"));
    connect(entry(fich, "IM_SAVE_PROJ", QStringLiteral("&Sauvegarder le Projet"), true), &QAction::triggered, this,
            &MainWindow::saveProjectAs);
    QAction* sep0 = fich->addSeparator();
    sep0->setObjectName("sep0");
    std::vector<QAction*> recent;
    for (int i = 0; i < 6; ++i) {
        QAction* a = entry(fich, "IM_RECENT", QString(), true);
        a->setProperty("index", i);
        a->setProperty("noLanguage", true);  // a file's name
        connect(a, &QAction::triggered, this, [this, i] { bridge_.enter([&] { Click(wb_, "F_Main", "IM_RECENT", i); }); });
        recent.push_back(a);
    }
    auto showRecent = [this, recent, sep0] {
        bool any = false;
        for (int i = 0; i < 6; ++i) {
            const QString caption = qs(wb_.sheet.text(F_Main::IM_RECENT[i]));
            recent[static_cast<size_t>(i)]->setText(QStringLiteral("&%1 %2").arg(i + 1).arg(caption));
            recent[static_cast<size_t>(i)]->setVisible(!caption.isEmpty());
            any = any || !caption.isEmpty();
        }
        sep0->setVisible(any);
    };
    showRecent();
    for (int i = 0; i < 6; ++i) bridge_.watch(F_Main::IM_RECENT[i], this, showRecent);
    fich->addSeparator()->setObjectName("sep2");
    connect(entry(fich, "IM_QUIT", QStringLiteral("&Quitter"), true), &QAction::triggered, this, &QWidget::close);

    // Every entry into a window is a step of the history, taken back and
    // done again from here or from the edit toolbar.
    QMenu* edit = menuBar()->addMenu(QStringLiteral("É&dition"));
    edit->setObjectName("IM_EDIT");
    undo_ = entry(edit, "IM_UNDO", QStringLiteral("&Annuler"), false);
    undo_->setShortcuts(QKeySequence::Undo);
    undo_->setIcon(style()->standardIcon(QStyle::SP_ArrowBack));
    redo_ = entry(edit, "IM_REDO", QStringLiteral("&Rétablir"), false);
    redo_->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_Y), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z)});
    redo_->setIcon(style()->standardIcon(QStyle::SP_ArrowForward));
    for (QAction* a : {undo_, redo_}) {
        const char* name = a == undo_ ? "IM_UNDO" : "IM_REDO";
        connect(a, &QAction::triggered, this, [this, name] { bridge_.enter([&] { Click(wb_, "F_Main", name); }); });
    }
    auto* edits = addToolBar(QStringLiteral("Edition"));
    edits->setObjectName("ToolbarEdit");
    edits->setMovable(false);
    edits->addAction(undo_);
    edits->addAction(redo_);

    QMenu* prof = menuBar()->addMenu(QStringLiteral("&Profils"));
    prof->setObjectName("IM_PROFILS");
    entry(prof, "IM_BASE", QStringLiteral("&Base de données"))->setProperty("button", button::Base);
    connect(entry(prof, "IM_ADD_AIRFOIL", QStringLiteral("&Ajouter un Profil"), true), &QAction::triggered, this,
            [this] { airfoils_->chooseFile(0); });
    prof->addSeparator()->setObjectName("sep_naca");
    entry(prof, "IM_NACAGEN", QStringLiteral("&Générateur de profils NACA"))->setProperty("button", 25);
    entry(prof, "IM_RIBS", QStringLiteral("&Générateur de nervures intermédiaires"))->setProperty("button", 26);
    prof->addSeparator()->setObjectName("sep_pres");
    entry(prof, "IM_PRESSURE", QStringLiteral("&Distributiondes Pressions / Vitesses"))->setProperty("button", button::Aero);
    entry(prof, "IM_TEST_INTERPOL", QStringLiteral("&Interpolation"))->setProperty("button", button::TestPol);

    QMenu* conf = menuBar()->addMenu(QStringLiteral("&Configuration"));
    conf->setObjectName("IM_CONFIG");
    connect(entry(conf, "IM_PREFER", QStringLiteral("&Préférences"), true), &QAction::triggered, this,
            &MainWindow::openPreferences);
    conf->addSeparator()->setObjectName("sep");
    connect(entry(conf, "IM_PARAM", QStringLiteral("&Paramètres Généraux des Profils"), true), &QAction::triggered,
            this, [this] { openInEditor(QStringLiteral("DATA/GENERIC.CSV")); });
    connect(entry(conf, "IM_PARAM_MOT", QStringLiteral("&Paramètres Généraux des Moteurs"), true),
            &QAction::triggered, this, [this] { openInEditor(QStringLiteral("DATA/MOTEURS.CSV")); });
    connect(entry(conf, "IM_PARAM_MODELES", QStringLiteral("&Paramètres Généraux des Modèles"), true),
            &QAction::triggered, this, [this] {
                openInEditor(QStringLiteral("MODELES/MODELES.XLS"), "[#3] ");
            });

    QMenu* view = menuBar()->addMenu(QStringLiteral("&Affichage"));
    view->setObjectName("IM_LView");
    int viewIndex = 0;
    for (const char* caption : {"&Présélection des Profils", "&Performances", "&Allongement",
                                "&calculs de Motorisations", "&Motorisations"}) {
        QAction* a = entry(view, "IM_VIEW", QString::fromUtf8(caption), viewIndex == 0);
        a->setProperty("index", viewIndex);
        static constexpr int kViewButtons[] = {button::Profils, button::Performances, button::Allongement,
                                               button::CalcMot, button::Motorisation};
        a->setProperty("button", kViewButtons[viewIndex]);
        if (viewIndex == 0) connect(a, &QAction::triggered, this, [this] { clickToolbar(button::Profils); });
        ++viewIndex;
    }
    view->addSeparator()->setObjectName("ssep");
    connect(entry(view, "IM_View_Modele", QStringLiteral("&Vue 3D"), true), &QAction::triggered, this,
            [this] { clickToolbar(button::View3D); });
    QAction* fus = entry(view, "IM_FUS", QStringLiteral("&Géométrie du Fuselage"), true);
    connect(fus, &QAction::triggered, this, [this] { clickToolbar(button::Fuselage); });
    view->addSeparator()->setObjectName("szep");
    entry(view, "IM_NAV", QStringLiteral("&Navigateur"));

    QMenu* cnc = menuBar()->addMenu(QStringLiteral("&CNC"));
    cnc->setObjectName("IM_CNC");
    entry(cnc, "IM_GEN_Couples", QStringLiteral("&Génération des Couples"))->setProperty("button", 27);
    // The fuselage's generation: its window opened on the drawing asked for.
    QMenu* fusMenu = cnc->addMenu(QStringLiteral("&Génération du Fuselage"));
    fusMenu->setObjectName("IM_GEN_FUS");
    fusMenu->menuAction()->setObjectName("IM_GEN_FUS");
    const std::pair<const char*, const char*> fusEntries[2] = {{"IM_GEN_FUS_ABOVE", "Vue &Dessus"},
                                                               {"IM_GEN_FUS_SIDE", "Vue &Profil"}};
    for (const auto& [name, caption] : fusEntries) {
        const bool side = std::string_view(name) == "IM_GEN_FUS_SIDE";
        connect(entry(fusMenu, name, QString::fromUtf8(caption), true), &QAction::triggered, this, [this, name, side] {
            bridge_.enter([&] { Click(wb_, "F_Main", name); });
            auto* panel = static_cast<FuselagePanel*>(designPanel(button::Fuselage));
            QWidget* drawing = side ? static_cast<QWidget*>(panel->sideView()) : panel->topView();
            designPlace_->ensureWidgetVisible(drawing);
            drawing->setFocus();
        });
    }

    // The tail calculators write nothing to the project: plain windows, made
    // at first use and shown again by their entries.
    QMenu* tools = menuBar()->addMenu(QStringLiteral("&Outils"));
    tools->setObjectName("IM_OUTILS");
    auto showTool = [this](const char* name) {
        QWidget* w = toolWindow(name);
        w->show();
        w->raise();
        w->activateWindow();
    };
    connect(entry(tools, "IM_STAB", QStringLiteral("&Calcul de la Surface du Stab"), true), &QAction::triggered, this,
            [showTool] { showTool("F_STAB"); });
    connect(entry(tools, "IM_STAB_VE", QStringLiteral("&Equivalence Stab V <> Stab Normal"), true),
            &QAction::triggered, this, [showTool] { showTool("F_STAB_VE"); });

    QMenu* lang = menuBar()->addMenu(QStringLiteral("&Langue"));
    lang->setObjectName("IM_Lnguage");
    auto* group = new QActionGroup(lang);
    const char* languages[] = {"Français", "English", "Español", "Italiano"};
    for (int i = 0; i < 4; ++i) {
        QAction* a = entry(lang, "IM_Language", QString::fromUtf8(languages[i]), true);
        a->setProperty("index", i);
        a->setCheckable(true);
        a->setChecked(wb_.settings.languageCode == std::to_string(i));
        group->addAction(a);
        connect(a, &QAction::triggered, this, [this, i] { bridge_.enter([&] { Click(wb_, "F_Main", "IM_Language", i); }); });
    }

    QMenu* help = menuBar()->addMenu(QStringLiteral("&Aide"));
    help->setObjectName("IM_HELP");
    // Help files are optional parts of an installation: opened by the desktop
    // when present, else the user is told which file is missing.
    connect(entry(help, "IM_TARVOK", QStringLiteral("&Aide Tarvokin RC"), true), &QAction::triggered, this,
            [this] { openInEditor(QStringLiteral("HELP/TARVOKINV3.HTM")); });
    connect(entry(help, "IM_FICH_HELP", QStringLiteral("&Guide de Conception"), true), &QAction::triggered, this,
            [this] { openInEditor(QStringLiteral("Help/TARVOKIN.HTM")); });
    connect(entry(help, "IM_About", QStringLiteral("&A propos"), true), &QAction::triggered, this, [this] {
        AboutDialog about(this);
        about.exec();
    });
}

void MainWindow::buildProjectTools() {
    addPanelWindow(button::View2D, new GlobalChartWindow(wb_, bridge_));
    addPanelWindow(button::Converter, new ConverterWindow(wb_, bridge_));
    // What the report and the commands need of a screen.
    InstallPicturePainter(wb_);
    wb_.openDocument = [](const std::string& path) { return QDesktopServices::openUrl(QUrl::fromLocalFile(qs(path))); };
    wb_.showNotice = [this](const std::string& text) {
        statusBar()->showMessage(qs(text), 15000);
        QMessageBox::information(this, QStringLiteral("TARVOKIN V3.0"), qs(text));
    };
    auto enable = [](QAction* a) {
        if (a) a->setEnabled(true);
        return a;
    };
    auto menuAction = [this](const char* name) { return menuBar()->findChild<QAction*>(QString::fromLatin1(name)); };
    connect(enable(toolbarButton(button::New)), &QAction::triggered, this, &MainWindow::newModel);
    connect(enable(menuAction("IM_NEW_PROJ")), &QAction::triggered, this, &MainWindow::newModel);
    // "Wizzard" opens the same window; its Tag belongs to the vortex-lattice
    // panel and is left alone.
    connect(enable(toolbarButton(button::Wizard)), &QAction::triggered, this, &MainWindow::newModel);
    connect(enable(toolbarButton(button::Report)), &QAction::triggered, this, [this] {
        EndEntry(wb_);
        bridge_.enter([this] { Click(wb_, "F_Main", "Toolbar2", button::Report); });
    });
    connect(enable(toolbarButton(button::Export)), &QAction::triggered, this, [this] {
        const QString start = qs((wb_.home() / "MODELES" / (wb_.sheet.text(F_3D::T_NOM_Modele) + ".xlsx")).string());
        const QString f = QFileDialog::getSaveFileName(this, QStringLiteral("Export Excel"), start,
                                                       QStringLiteral("Classeur Excel (*.xlsx)"));
        if (f.isEmpty()) return;
        Action a;
        a.form = "F_Main";
        a.control = "Toolbar2";
        a.index = button::Export;
        a.text = ss(f.endsWith(QStringLiteral(".xlsx"), Qt::CaseInsensitive) ? f : f + QStringLiteral(".xlsx"));
        bridge_.enter([&] { Perform(wb_, a); });
    });
    connect(enable(menuAction("IM_IMPORT")), &QAction::triggered, this, [this] {
        const QString f = QFileDialog::getOpenFileName(this, QStringLiteral("Importer TARVOKIN Excel"),
                                                       qs((wb_.home() / "MODELES").string()),
                                                       QStringLiteral("Classeur Excel (*.xlsx)"));
        if (f.isEmpty()) return;
        Action a;
        a.form = "F_Main";
        a.control = "IM_IMPORT";
        a.text = ss(f);
        bridge_.enter([&] { Perform(wb_, a); });
    });
    if (QAction* calc = toolbarButton(button::Calculator); calc && !calc->isEnabled()) {
        calc->setEnabled(true);
        connect(calc, &QAction::triggered, this, [this] { ShowMessage(wb_, "[#12] ", ""); });
    }
    connect(enable(menuAction("IM_NAV")), &QAction::triggered, this, [this] {
        QWidget* nav = toolWindow("frmTrv");
        nav->show();
        nav->raise();
    });
}

QWidget* MainWindow::toolWindow(const char* name) {
    const QString n = QString::fromLatin1(name);
    if (QWidget* w = findChild<QWidget*>(n, Qt::FindDirectChildrenOnly)) return w;
    QWidget* w = nullptr;
    if (n == QStringLiteral("F_STAB")) w = new StabWindow(bridge_);
    else if (n == QStringLiteral("F_STAB_VE")) w = new StabVEWindow(bridge_);
    else if (n == QStringLiteral("frmTrv"))
        w = new NavigatorWindow([this](const QString& form, const QString& field) { openNavigatorAt(form, field); });
    else if (n == QStringLiteral("F_PREFER")) w = new PreferencesDialog(wb_, bridge_);
    else if (n == QStringLiteral("F_WIZZARD")) w = new WizardDialog(wb_, bridge_);
    else if (n == QStringLiteral("FrmHlp")) w = new AboutDialog;
    else return nullptr;
    w->setParent(this, qobject_cast<QDialog*>(w) ? Qt::Dialog : Qt::Window);
    return w;
}

void MainWindow::openEveryWindow() {
    for (int n = 2; n <= 33; ++n)
        if (opensWindow(n) && !wb_.isOpen(n)) clickToolbar(n);
    bridge_.enter([this] { Click(wb_, "F_3D", "Command5"); });
    QApplication::processEvents();
}

std::vector<QWidget*> MainWindow::everyWindow() {
    // The windows made at first use are made now, hidden, as their entries
    // would make them; the dialogs of a moment stand for theirs.
    for (const char* name : {"F_STAB", "F_STAB_VE", "frmTrv", "F_PREFER", "F_WIZZARD", "FrmHlp"}) toolWindow(name);
    std::vector<QWidget*> out{this};
    for (QWidget* w : findChildren<QWidget*>())
        if (isLanguageForm(w)) out.push_back(w);
    return out;
}

void MainWindow::newModel() {
    EndEntry(wb_);
    WizardDialog wizard(wb_, bridge_, this);
    wizard.exec();
}

void MainWindow::openNavigatorAt(const QString& form, const QString& field) {
    static const std::map<QString, int> kButtonOf = {
        {"F_GEO_SF", button::Wing},          {"F_GEO_STAB", button::Stab},       {"F_GEO_FUS", button::Fuselage},
        {"F_GEO_SF_REGLAGES", button::Reglages}, {"F_3D", button::View3D},       {"F_PROFILS", button::Profils},
        {"F_GEO_3", button::Performances},   {"F_ALLONGEMENT", button::Allongement}, {"F_CALC_MOT", button::CalcMot},
        {"F_MOTORISATIONS", button::Motorisation}, {"F_SERVOS", button::Servos}, {"F_CONVERT", button::Converter},
        {"Gen_Couples_2", button::FrameGenerator}};
    if (form == QStringLiteral("F_WIZZARD")) {
        newModel();
        return;
    }
    auto it = kButtonOf.find(form);
    if (it == kButtonOf.end()) {
        statusBar()->showMessage(form + QStringLiteral(" : fenêtre sans bouton"), 5000);
        return;
    }
    if (!wb_.isOpen(it->second)) clickToolbar(it->second);
    // The field's widget bears its control's name; a group element its group's.
    const QString name = field.section(QLatin1Char('('), 0, 0);
    QWidget* host = panelWindow(it->second);
    if (!host) host = designPanel(it->second);
    if (!host) host = this;
    for (QWidget* w : host->findChildren<QWidget*>(name)) {
        if (!w->isVisibleTo(host)) continue;
        w->setFocus(Qt::OtherFocusReason);
        break;
    }
}

void MainWindow::ensureSlotPolars() {
    bridge_.enter([this] { EnsureSlotPolars(wb_); });
}

void MainWindow::menuCommand(const char* entry, const std::string& file) {
    Action a;
    a.form = "F_Main";
    a.control = entry;
    a.text = file;
    bridge_.enter([&] { Perform(wb_, a); });
}

void MainWindow::clickToolbar(int position) {
    bridge_.enter([&] { Click(wb_, "F_Main", "Toolbar2", position); });
}

void MainWindow::applyLanguage() {
    appliedLanguage_ = wb_.languageFilePath;
    UseToolkitLanguage(wb_.settings.languageCode);
    ApplyLanguage(this, wb_);
    for (auto& [b, panel] : designPanels_) ApplyLanguage(panel, wb_);
    if (auto* settings = qobject_cast<QWidget*>(settingsPlace_->widget())) ApplyLanguage(settings, wb_);
    ApplyLanguage(airfoils_, wb_);
    ApplyLanguage(design_, wb_);
    viewArea_->redrawPlans();
    // The language entries show which one is chosen.
    for (QAction* a : menuBar()->findChildren<QAction*>(QStringLiteral("IM_Language")))
        a->setChecked(wb_.settings.languageCode == std::to_string(a->property("index").toInt()));
}

void MainWindow::historyChanged() {
    undo_->setEnabled(wb_.history.canUndo());
    redo_->setEnabled(wb_.history.canRedo());
    setWindowModified(wb_.history.modified());
}

void MainWindow::panelTagsChanged() {
    bool analysisOpened = false;
    for (int b : {button::Performances, button::Allongement, button::CalcMot, button::Motorisation}) {
        const bool open = wb_.isOpen(b);
        if (open && !analysisOpen_[b]) analysisOpened = true;
        analysisOpen_[b] = open;
    }
    if (analysisOpened && SlotsNeedPolars(wb_))
        QMetaObject::invokeMethod(this, [this] { ensureSlotPolars(); }, Qt::QueuedConnection);
    int shown = 0;
    for (int b : {button::Wing, button::Stab, button::Fuselage}) {
        if (wb_.isOpen(b)) shown = b;
    }
    if (shown != 0) designStack_->setCurrentWidget(designPanels_[shown]);
    syncingDocks_ = true;
    designDock_->setVisible(shown != 0);
    settingsDock_->setVisible(wb_.isOpen(button::Reglages));
    syncingDocks_ = false;
    design_->setVisible(wb_.isOpen(button::View3D));
    if (wb_.isOpen(button::CalcMot) || wb_.isOpen(button::Motorisation)) {
        // The motor windows work with the motor tab of the design window.
        const bool motorJustOpened = (wb_.isOpen(button::CalcMot) && !motorTabShown_[0]) ||
                                     (wb_.isOpen(button::Motorisation) && !motorTabShown_[1]);
        if (motorJustOpened) design_->showMotorTab();
    }
    motorTabShown_ = {wb_.isOpen(button::CalcMot), wb_.isOpen(button::Motorisation)};
    const bool profils = wb_.isOpen(button::Profils);
    if (profils != airfoilDock_->isVisible()) {
        syncingDocks_ = true;
        airfoilDock_->setVisible(profils);
        syncingDocks_ = false;
        // Opening the window fills its slots (and computes what is missing).
        if (profils) QMetaObject::invokeMethod(airfoils_, [this] { airfoils_->fillSlots(); }, Qt::QueuedConnection);
    }
    syncingDocks_ = true;
    for (auto& [b, w] : panelWindows_) {
        const bool open = wb_.isOpen(b);
        if (open != w->isVisible()) w->setVisible(open);
        if (open) w->raise();
    }
    syncingDocks_ = false;
    for (auto& [pos, a] : buttons_) {
        if (a->isCheckable()) {
            QSignalBlocker blk(a);
            a->setChecked(wb_.isOpen(pos));
        }
    }
}

void MainWindow::openProject() {
    EndEntry(wb_);
    const QString start = qs((wb_.home() / "MODELES").string());
    const QString file = QFileDialog::getOpenFileName(this, QStringLiteral("Ouvrir un Projet"), start,
                                                      QStringLiteral("Fichiers Modèles (*.mdl *.MDL);;All Files (*)"));
    if (file.isEmpty()) return;
    menuCommand("IM_OPEN_PROJ", ss(file));
}

void MainWindow::saveProjectAs() {
    QString offer = qs(wb_.projectFilePath);
    if (offer.isEmpty()) offer = qs((wb_.home() / "MODELES" / wb_.sheet.text(F_3D::T_NOM_Modele)).string());
    const QString file = QFileDialog::getSaveFileName(this, QStringLiteral("Sauvegarder le Projet"), offer,
                                                      QStringLiteral("Fichiers Modèles (*.mdl *.MDL);;All Files (*)"));
    menuCommand("IM_SAVE_PROJ", ss(file));
}

void MainWindow::openPreferences() {
    PreferencesDialog dialog(wb_, bridge_, this);
    dialog.exec();
}

void MainWindow::openInEditor(const QString& relativePath, const char* missingMessage) {
    const QString file = qs(existingSpelling(wb_.home() / ss(relativePath)).string());
    if (!std::filesystem::exists(ss(file))) {
        ShowMessage(wb_, missingMessage, ss(file));
        return;
    }
    QDesktopServices::openUrl(QUrl::fromLocalFile(file));
}

void MainWindow::closeEvent(QCloseEvent* e) {
    if (!quitting_) {
        quitting_ = true;
        if (!Quit(wb_)) {
            // The save on exit failed and the user has been told why: the
            // model stays on screen so that it can be saved elsewhere.
            quitting_ = false;
            e->ignore();
            return;
        }
        // A solver run under way ends with the window, scripts and all.
        stopSolverRuns();
    }
    e->accept();
}

}  // namespace tarvokin::ui
