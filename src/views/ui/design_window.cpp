#include "views/ui/design_window.h"

#include <QApplication>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QScrollArea>
#include <QSplitter>
#include <QTabWidget>
#include <QVBoxLayout>
#include <cmath>

#include "entry/field_rules.h"
#include "entry/panel_edit.h"
#include "design/vlm.h"
#include "power/motorisation.h"
#include "core/numbers.h"
#include "core/ui/cell_widgets.h"
#include "core/ui/form_helpers.h"
#include "core/ui/sheet_bridge.h"
#include "core/workbench.h"
#include "core/ui/entry_controls.h"
#include "entry/design_logic.h"
#include "entry/entry_path.h"
#include "views/ui/design_summary.h"

namespace tarvokin::ui {

namespace {

// A tab's page scrolls when the screen is lower than the page: the window
// then fits a 1280 × 800 screen.
QScrollArea* scrolled(QWidget* page) {
    auto* area = new QScrollArea;
    area->setObjectName(page->objectName() + QStringLiteral("_scroll"));
    area->setWidget(page);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    return area;
}

QLabel* wrapped(CellLabel* l) {
    l->setWordWrap(true);
    return l;
}

// Command5 / Command7: the span loading of the wing or the stabiliser. The
// window follows Tag 29; an open window hidden by a design panel comes back.
QPushButton* vlmButton(SheetBridge& bridge, const char* name) {
    auto* b = commandButton(bridge, "F_3D", name, -1, QStringLiteral("Répartition de portance (VLM)"));
    QObject::connect(b, &QPushButton::clicked, b, [] {
        for (QWidget* w : QApplication::topLevelWidgets()) {
            if (w->objectName() != QLatin1String("F_VLM")) continue;
            w->show();
            w->raise();
        }
    });
    return b;
}

}  // namespace

DesignWindow::DesignWindow(Workbench& wb, SheetBridge& b, QWidget* parent)
    : QWidget(parent), wb_(wb), bridge_(b) {
    setObjectName("F_3D");
    auto caption = [this] { setWindowTitle(qs(wb_.sheet.text(F_3D::Caption))); };
    caption();
    bridge_.watch(F_3D::Caption, this, caption);

    auto* split = new QSplitter(Qt::Horizontal);
    auto* left = new QWidget;
    auto* ll = new QVBoxLayout(left);
    ll->setContentsMargins(0, 0, 0, 0);

    auto* head = new QGroupBox;
    auto* hl = new QFormLayout(head);
    auto* name = new CellEdit(bridge_, F_3D::T_NOM_Modele);
    QFont big = name->font();
    big.setBold(true);
    name->setFont(big);
    hl->addRow(QStringLiteral("Modèle"), name);
    hl->addRow(QStringLiteral("Projet"), wrapped(new CellLabel(bridge_, F_3D::T_PROJET)));
    hl->addRow(QStringLiteral("Profil"), new CellLabel(bridge_, F_3D::T_PROFIL_3D));
    ll->addWidget(head);

    tabs_ = new QTabWidget;
    tabs_->setObjectName("SSTab1");
    tabs_->addTab(scrolled(wingTab()), QStringLiteral("Aile"));
    tabs_->addTab(scrolled(stabTab()), QStringLiteral("Stab"));
    tabs_->addTab(scrolled(finTab()), QStringLiteral("Dérive"));
    tabs_->addTab(scrolled(fuselageTab()), QStringLiteral("Fuselage"));
    tabs_->addTab(scrolled(centringTab()), QStringLiteral("Centrage"));
    tabs_->addTab(scrolled(motorTab()), QStringLiteral("Moteur"));
    tabs_->addTab(scrolled(new DesignSummary(bridge_)), QStringLiteral("Résumé"));
    ll->addWidget(tabs_, 1);
    // The motor figures are computed when their tab comes up, so that they
    // follow the design as it stands (masses, polars, the chosen motor).
    connect(tabs_, &QTabWidget::currentChanged, this, [this](int index) {
        bridge_.enter([&] { Click(wb_, "F_3D", "SSTab1", index); });
    });
    split->addWidget(left);

    auto* right = new QWidget;
    viewPlace_ = new QVBoxLayout(right);
    viewPlace_->setContentsMargins(0, 0, 0, 0);
    split->addWidget(right);
    split->setStretchFactor(0, 0);
    split->setStretchFactor(1, 1);

    auto* top = new QVBoxLayout(this);
    top->setContentsMargins(2, 2, 2, 2);
    top->addWidget(split);
}

void DesignWindow::setViewArea(QWidget* view) {
    if (view_) {
        viewPlace_->removeWidget(view_);
        view_->deleteLater();
    }
    view_ = view;
    viewPlace_->addWidget(view_);
}

void DesignWindow::showMotorTab() { tabs_->setCurrentIndex(kMotorTab); }

QWidget* DesignWindow::wingTab() {
    auto* w = new QWidget;
    w->setObjectName("Frame3");
    auto* top = new QVBoxLayout(w);

    auto* airfoil = new QFormLayout;
    airfoil->addRow(QStringLiteral("Profil"), new CellCombo(bridge_, F_3D::Combo5));
    top->addLayout(airfoil);

    auto* panels = new QHBoxLayout;
    auto* add = commandButton(bridge_, "F_3D", "PB_ADD_PAN", -1, QStringLiteral("Ajouter un panneau"));
    auto* del = commandButton(bridge_, "F_3D", "PB_DEL_PAN", -1, QStringLiteral("Supprimer un panneau"));
    panels->addWidget(add);
    panels->addWidget(del);
    top->addLayout(panels);

    auto* winglets = new QHBoxLayout;
    auto* wl = new CellCheck(bridge_, F_3D::Ch_Winglets, QStringLiteral("Winglets"));
    winglets->addWidget(wl);
    auto* which = new QLabel(QStringLiteral("panneau n°"));
    which->setObjectName("L_Winglets");
    winglets->addWidget(which);
    auto* index = new CellEdit(bridge_, F_3D::Text8);
    index->setMaximumWidth(50);
    index->setToolTip(QStringLiteral("1 à 4 : le panneau 2 à 5 est un winglet"));
    winglets->addWidget(index);
    winglets->addStretch(1);
    top->addLayout(winglets);

    auto* surfaces = new QGroupBox(QStringLiteral("Gouvernes"));
    auto* g = new QGridLayout(surfaces);
    addSurfaceHeads(g);
    using namespace F_GEO_SF;
    addGridRow(bridge_, g, 1, QStringLiteral("Ailerons"), {T_Ail_PosL, T_Ail_PosR, T_Ail_Pourc, T_Ail_PourcD});
    addGridRow(bridge_, g, 2, QStringLiteral("Volets"), {T_Flap_PosL, T_Flap_PosR, T_Flap_Pourc, T_Flap_PourcD});
    top->addWidget(surfaces);

    auto* results = new QGroupBox(QStringLiteral("Résultats"));
    auto* f = new QFormLayout(results);
    addResult(bridge_, f, QStringLiteral("Surface (dm²)"), F_3D::j4);
    addResult(bridge_, f, QStringLiteral("Corde moyenne (mm)"), F_3D::j5);
    addResult(bridge_, f, QStringLiteral("Envergure (mm)"), F_3D::j6);
    addResult(bridge_, f, QStringLiteral("Allongement"), F_3D::j7);
    addResult(bridge_, f, QStringLiteral("Allongement elliptique"), F_3D::j8);
    f->addRow(QStringLiteral("Foyer (25%)"), wrapped(new CellLabel(bridge_, F_3D::j9)));
    addResult(bridge_, f, QStringLiteral("Cm0 profil"), F_3D::j11);
    addResult(bridge_, f, QStringLiteral("Alpha0 profil (°)"), F_3D::j12);
    addField(bridge_, f, QStringLiteral("V (Km/h)"), F_3D::a12);
    top->addWidget(results);

    auto* open = new QHBoxLayout;
    auto* sf = commandButton(bridge_, "F_3D", "PB_SF", -1, QStringLiteral("Géométrie de l'aile"));
    auto* all = commandButton(bridge_, "F_3D", "PB_ALL", -1, QStringLiteral("Tout"));
    all->setToolTip(QStringLiteral("Ouvre la géométrie de l'aile et les règlages"));
    open->addWidget(sf);
    open->addWidget(all);
    top->addLayout(open);
    top->addWidget(vlmButton(bridge_, "Command5"));
    top->addStretch(1);
    return w;
}

QWidget* DesignWindow::stabTab() {
    auto* w = new QWidget;
    w->setObjectName("Frame4");
    auto* top = new QVBoxLayout(w);
    auto* f = new QFormLayout;
    f->addRow(QStringLiteral("Profil du stab"), new CellCombo(bridge_, F_3D::Combo7));
    top->addLayout(f);

    auto* panels = new QHBoxLayout;
    auto* open = commandButton(bridge_, "F_3D", "PB_STAB", -1, QStringLiteral("Géométrie du stab"));
    auto* add = commandButton(bridge_, "F_3D", "PB_STAB_ADD_PAN", -1, QStringLiteral("Ajouter un panneau"));
    auto* del = commandButton(bridge_, "F_3D", "PB_STAB_DEL_PAN", -1, QStringLiteral("Supprimer un panneau"));
    panels->addWidget(open);
    panels->addWidget(add);
    panels->addWidget(del);
    top->addLayout(panels);

    auto* surfaces = new QGroupBox(QStringLiteral("Profondeur"));
    auto* g = new QGridLayout(surfaces);
    addSurfaceHeads(g);
    using namespace F_GEO_STAB;
    addGridRow(bridge_, g, 1, QStringLiteral("Profondeur"), {T_Prof_PosL, T_Prof_PosR, T_Prof_Pourc, T_Prof_PourcD});
    top->addWidget(surfaces);

    auto* results = new QGroupBox(QStringLiteral("Résultats"));
    auto* rf = new QFormLayout(results);
    addResult(bridge_, rf, QStringLiteral("Envergure (mm)"), F_3D::j17);
    addResult(bridge_, rf, QStringLiteral("Foyer (25%)"), F_3D::J20);
    addResult(bridge_, rf, QStringLiteral("Volume de stab"), F_3D::j22);
    addResult(bridge_, rf, QStringLiteral("Hauteur projetée"), F_3D::D20);
    top->addWidget(results);
    top->addWidget(vlmButton(bridge_, "Command7"));
    top->addStretch(1);
    return w;
}

QWidget* DesignWindow::finTab() {
    auto* w = new QWidget;
    w->setObjectName("Frame5");
    auto* top = new QVBoxLayout(w);
    auto* f = new QFormLayout;
    addResult(bridge_, f, QStringLiteral("Surface (dm²)"), F_3D::d21);
    addField(bridge_, f, QStringLiteral("Position haute"), F_GEO_STAB::T_Deriv_PosH);
    addField(bridge_, f, QStringLiteral("Position basse"), F_GEO_STAB::T_Deriv_PosB);
    top->addLayout(f);
    auto* open = commandButton(bridge_, "F_3D", "PB_DERIVE", -1, QStringLiteral("Géométrie de la dérive"));
    top->addWidget(open);
    top->addStretch(1);
    return w;
}

QWidget* DesignWindow::fuselageTab() {
    auto* w = new QWidget;
    w->setObjectName("Frame6");
    auto* top = new QVBoxLayout(w);
    auto* f = new QFormLayout;
    f->addRow(QStringLiteral("Type"), new CellCombo(bridge_, F_3D::Combo9));
    f->addRow(QStringLiteral("Queue"), new CellCombo(bridge_, F_3D::Combo10));
    using namespace F_GEO_FUS;
    addField(bridge_, f, QStringLiteral("Longueur"), b24);
    addField(bridge_, f, QStringLiteral("Nez / BA"), b25);
    addField(bridge_, f, QStringLiteral("Largeur"), D24);
    addField(bridge_, f, QStringLiteral("Hauteur"), D25);
    addResult(bridge_, f, QStringLiteral("Foyer Fuselage"), F_3D::j26a);
    top->addLayout(f);
    auto* open = commandButton(bridge_, "F_3D", "PB_FUS", -1, QStringLiteral("Géométrie du fuselage"));
    top->addWidget(open);
    top->addStretch(1);
    return w;
}

QWidget* DesignWindow::centringTab() {
    auto* w = new QWidget;
    w->setObjectName("Frame11");
    auto* top = new QVBoxLayout(w);
    auto* f = new QFormLayout;
    using namespace F_GEO_SF_REGLAGES;
    addField(bridge_, f, QStringLiteral("Masse mini (g)"), H30);
    addField(bridge_, f, QStringLiteral("Masse maxi (g)"), I30);
    addField(bridge_, f, QStringLiteral("Marge statique (%)"), C29);
    addField(bridge_, f, QStringLiteral(" Cz de calage"), F_3D::F29);
    top->addLayout(f);

    cg_ = new QSlider(Qt::Horizontal);
    cg_->setObjectName("Slider1");
    cg_->setRange(-5 * kMarginSteps, 30 * kMarginSteps);
    cg_->setToolTip(QStringLiteral("Marge statique : le centre de gravité avance vers la droite"));
    top->addWidget(cg_);
    top->addWidget(wrapped(new CellLabel(bridge_, F_3D::b30)));
    // The slider moves the static margin; the recalculation is fast enough
    // to follow the drag, so the label, the plans and the incidences move with it.
    connect(cg_, &QSlider::valueChanged, this, [this](int v) {
        if (signalsBlocked()) return;
        Action a;
        a.act = Act::Scroll;
        a.form = "F_3D";
        a.control = "Slider1";
        a.text = plain(v);
        bridge_.enter([&] {
            Perform(wb_, a);
            if (!cg_->isSliderDown()) EndEntry(wb_);
        });
    });
    connect(cg_, &QSlider::sliderReleased, this, [this] { bridge_.enter([this] { EndEntry(wb_); }); });
    pullCgSlider();
    bridge_.watch(C29, this, [this] { pullCgSlider(); });

    auto* g = new QFormLayout;
    g->addRow(QStringLiteral("Foyer"), wrapped(new CellLabel(bridge_, F_3D::j9)));
    addResult(bridge_, g, QStringLiteral("Calage stab"), F_3D::f30a);
    addResult(bridge_, g, QStringLiteral("Calage aile"), F_3D::f31a);
    addResult(bridge_, g, QStringLiteral("Vé longitudinal"), F_3D::f32a);
    top->addLayout(g);
    top->addStretch(1);
    return w;
}

void DesignWindow::pullCgSlider() {
    const double margin = wb_.sheet.val(F_GEO_SF_REGLAGES::C29);
    const int v = static_cast<int>(std::lround(margin * kMarginSteps));
    if (cg_->value() == v) return;
    QSignalBlocker block(cg_);
    cg_->setValue(v);
}

QWidget* DesignWindow::motorTab() {
    auto* w = new QWidget;
    w->setObjectName("Frame20");
    auto* top = new QVBoxLayout(w);
    auto* battery = new QGroupBox(QStringLiteral("Accus"));
    auto* bf = new QFormLayout(battery);
    bf->addRow(QStringLiteral("Type"), new CellCombo(bridge_, F_3D::Combo1));
    bf->addRow(QStringLiteral("Nombre d'éléments"), new CellCombo(bridge_, F_3D::Combo2));
    addField(bridge_, bf, QStringLiteral("Capacité (mAh)"), F_3D::b6);
    auto* opts = new QHBoxLayout;
    for (int i = 0; i < F_3D::Option1.count; ++i) {
        auto* check = new CellCheck(bridge_, F_3D::Option1[i], QString::number(i + 1));
        check->setProperty("index", i);
        opts->addWidget(check);
    }
    bf->addRow(QStringLiteral("Option"), opts);
    top->addWidget(battery);

    auto* motor = new QGroupBox(QStringLiteral("Moteur"));
    auto* mf = new QFormLayout(motor);
    mf->addRow(QStringLiteral("Type"), new CellCombo(bridge_, F_3D::Combo4));
    mf->addRow(QStringLiteral("Qualité"), new CellCombo(bridge_, F_3D::Combo3));
    mf->addRow(QStringLiteral("Marque"), new CellLabel(bridge_, F_3D::Moteur_Marque));
    mf->addRow(QStringLiteral("Modèle"), new CellLabel(bridge_, F_3D::Moteur_Modele));
    addField(bridge_, mf, QStringLiteral("Courant (A)"), F_3D::d6);
    addField(bridge_, mf, QStringLiteral("Réduction"), F_3D::d7);
    top->addWidget(motor);

    auto* prop = new QGroupBox(QStringLiteral("Hélice"));
    auto* pf = new QFormLayout(prop);
    pf->addRow(QStringLiteral("Type"), new CellCombo(bridge_, F_3D::Combo6));
    addField(bridge_, pf, QStringLiteral("Diamètre (pouces)"), F_3D::f5);
    addField(bridge_, pf, QStringLiteral("Pas (pouces)"), F_3D::f6);
    top->addWidget(prop);

    // The results of the power train as a whole; the level speed needs the
    // motor chosen in the motorisation window and shows "-" until then.
    auto* results = new QGroupBox(QStringLiteral("Résultats"));
    auto* rf = new QFormLayout(results);
    addResult(bridge_, rf, QStringLiteral("Tension (V)"), F_3D::b7);
    addResult(bridge_, rf, QStringLiteral("Décharge (xC)"), F_3D::b8);
    addResult(bridge_, rf, QStringLiteral("Rendement moteur"), F_3D::B89);
    addResult(bridge_, rf, QStringLiteral("Kv (Tr/min:V)"), F_3D::d8);
    addResult(bridge_, rf, QStringLiteral("Régime (Tr/min)"), F_3D::f7);
    addResult(bridge_, rf, QStringLiteral("T statique (g)"), F_3D::f8);
    addResult(bridge_, rf, QStringLiteral("Temps moteur (min)"), F_3D::h8);
    addResult(bridge_, rf, QStringLiteral("Vz montée masse mini (m/s)"), F_3D::h4);
    addResult(bridge_, rf, QStringLiteral("Vz montée masse maxi (m/s)"), F_3D::h6);
    addResult(bridge_, rf, QStringLiteral("Vitesse palier (Km/h)"), F_3D::h3);
    top->addWidget(results);
    top->addStretch(1);
    return w;
}

}  // namespace tarvokin::ui
