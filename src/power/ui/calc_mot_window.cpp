#include "power/ui/calc_mot_window.h"

#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QSlider>
#include <QSplitter>
#include <QTabWidget>
#include <QTableWidget>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <optional>

#include "entry/field_rules.h"
#include "power/calc_mot.h"
#include "power/motor_table.h"
#include "power/motorisation.h"
#include "power/ui/power_ui.h"
#include "core/ui/cell_widgets.h"
#include "core/ui/entry_controls.h"
#include "core/ui/chart_panel.h"
#include "core/ui/form_helpers.h"
#include "core/ui/sheet_bridge.h"
#include "core/workbench.h"
#include "entry/entry_path.h"

namespace tarvokin::ui {

using namespace F_CALC_MOT;

namespace {

constexpr int kKeyRole = Qt::UserRole;       // "Marque@Modele" of a motor item
constexpr int kMarqueRole = Qt::UserRole + 1;
constexpr int kModeleRole = Qt::UserRole + 2;

QGroupBox* frame(const QString& title, QFormLayout*& form) {
    auto* box = new QGroupBox(title);
    form = new QFormLayout(box);
    form->setLabelAlignment(Qt::AlignLeft);
    return box;
}

void addList(SheetBridge& b, QFormLayout* f, const QString& caption, Cell c) { f->addRow(caption, new CellCombo(b, c)); }

QScrollArea* scrolled(QWidget* w) {
    auto* area = new QScrollArea;
    area->setWidget(w);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    return area;
}

}  // namespace

CalcMotWindow::CalcMotWindow(Workbench& wb, SheetBridge& b, QWidget* parent)
    : QWidget(parent), wb_(wb), bridge_(b) {
    setObjectName("F_CALC_MOT");
    setWindowTitle(QStringLiteral("CALCULS MOTEUR"));

    auto* figures = new QWidget;
    auto* columns = new QHBoxLayout(figures);
    columns->setContentsMargins(0, 0, 0, 0);
    auto* first = new QVBoxLayout;
    first->addWidget(inputsColumn());
    first->addWidget(batteryAndFlightFrames());
    first->addStretch(1);
    columns->addLayout(first);
    columns->addWidget(motorAndPropellerColumn(), 0, Qt::AlignTop);

    auto* right = new QSplitter(Qt::Vertical);
    right->addWidget(motorsPart());
    right->addWidget(chartsPart());
    right->setSizes({250, 690});

    auto* split = new QSplitter(Qt::Horizontal);
    QScrollArea* area = scrolled(figures);
    // The figures keep their width; the motors and the charts take the rest.
    area->setMinimumWidth(figures->sizeHint().width() + area->verticalScrollBar()->sizeHint().width());
    split->addWidget(area);
    split->addWidget(right);
    split->setStretchFactor(0, 0);
    split->setStretchFactor(1, 1);
    auto* top = new QVBoxLayout(this);
    top->setContentsMargins(4, 4, 4, 4);
    top->addWidget(split);

    // The charts follow the chosen set and the design's power train; the grid
    // follows the proposal and the tolerances.
    redraw_ = new RedrawLater(this, [this] { drawCharts(); });
    redraw_->watch(bridge_, {G13, G15, G29, I10, Ra, Io, N51, L51, choix_helice, qualite_moteur, type_moteur,
                             Temps_Moteur0, F_3D::h3, F_3D::h4, F_3D::CX0_STAB, F_3D::C32, F_3D::b7, F_3D::d6, F_3D::d7, F_3D::f5, F_3D::f6,
                             F_3D::Combo6, F_MOTORISATIONS::d8, F_MOTORISATIONS::T_Ra, F_MOTORISATIONS::T_Io});
    regrid_ = new RedrawLater(this, [this] { fillCandidates(); });
    regrid_->watch(bridge_, {kv, T_Masse_Moteur, Slider1, Slider2});
    afterPanelRefresh(wb_, button::CalcMot, this, [this] {
        redraw_->request();
        regrid_->request();
    });
    resize(1560, 940);
}

QWidget* CalcMotWindow::inputsColumn() {
    auto* w = new QWidget;
    auto* v = new QVBoxLayout(w);
    v->setContentsMargins(0, 0, 0, 0);
    QFormLayout* f;
    v->addWidget(frame(QStringLiteral("Modèle"), f));
    addList(bridge_, f, QStringLiteral("Type de modèle"), G3);
    addField(bridge_, f, QStringLiteral("Masse (g)"), G4);
    addField(bridge_, f, QStringLiteral("Nombre de moteurs"), G6);
    addList(bridge_, f, QStringLiteral("Part moteur + accus"), G9);
    addField(bridge_, f, QStringLiteral("Charge alaire (g/dm²)"), L40a);

    v->addWidget(frame(QStringLiteral("Accus"), f));
    addList(bridge_, f, QStringLiteral("Type"), G13);
    addField(bridge_, f, QStringLiteral("Nombre d'éléments"), G15);
    addField(bridge_, f, QStringLiteral("Nombre de packs"), N29);

    v->addWidget(frame(QStringLiteral("Moteur et hélice"), f));
    addList(bridge_, f, QStringLiteral("Type de moteur"), type_moteur);
    addList(bridge_, f, QStringLiteral("Qualité du moteur"), qualite_moteur);
    addList(bridge_, f, QStringLiteral("Hélice"), choix_helice);

    auto* tol = new QGroupBox(QStringLiteral("Recherche dans la base moteurs"));
    auto* tl = new QVBoxLayout(tol);
    tl->addWidget(toleranceSlider(Slider1, QStringLiteral("Tolérance Masse")));
    tl->addWidget(toleranceSlider(Slider2, QStringLiteral("Tolérance Kv")));
    v->addWidget(tol);
    return w;
}

QWidget* CalcMotWindow::toleranceSlider(Cell cell, const QString& caption) {
    auto* w = new QWidget;
    auto* g = new QGridLayout(w);
    g->setContentsMargins(0, 0, 0, 0);
    auto* value = new QLabel;
    value->setMinimumWidth(44);
    value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    auto* slider = new CellSlider(bridge_, cell, Qt::Horizontal, 0, 50);
    slider->setToolTip(caption + QStringLiteral(" (%)"));
    g->addWidget(new QLabel(caption), 0, 0);
    g->addWidget(value, 0, 1);
    g->addWidget(slider, 1, 0, 1, 2);
    auto pull = [this, slider, value, cell] {
        const int v = static_cast<int>(wb_.sheet.val(cell));
        value->setText(QStringLiteral("%1 %").arg(v));
        if (slider->value() != v) {
            QSignalBlocker block(slider);
            slider->setValue(v);
        }
    };
    pull();
    bridge_.watch(cell, slider, pull);
    return w;
}

// One line of a comparison frame: what the proposal says beside what the
// chosen set gives; the chosen set's own inputs are typed in their line.
struct CompareLine {
    const char* caption;
    std::optional<Cell> proposal;
    std::optional<Cell> chosen;
    bool typed = false;
};

QGroupBox* CalcMotWindow::comparison(const QString& title, std::initializer_list<CompareLine> lines) {
    auto* box = new QGroupBox(title);
    auto* g = new QGridLayout(box);
    g->setVerticalSpacing(2);
    g->setColumnStretch(0, 1);
    g->setColumnMinimumWidth(1, 70);
    g->setColumnMinimumWidth(2, 70);
    const QString heads[2] = {QStringLiteral("Proposition"), QStringLiteral("Choix")};
    for (int k = 0; k < 2; ++k) {
        auto* h = new QLabel(heads[k]);
        h->setAlignment(Qt::AlignCenter);
        QFont f = h->font();
        f.setItalic(true);
        h->setFont(f);
        g->addWidget(h, 0, k + 1);
    }
    int row = 1;
    for (const CompareLine& l : lines) {
        g->addWidget(new QLabel(QString::fromUtf8(l.caption)), row, 0);
        if (l.proposal) g->addWidget(resultLabel(bridge_, *l.proposal), row, 1);
        if (l.chosen) {
            if (l.typed) g->addWidget(new CellEdit(bridge_, *l.chosen), row, 2);
            else g->addWidget(resultLabel(bridge_, *l.chosen), row, 2);
        }
        ++row;
    }
    return box;
}

QWidget* CalcMotWindow::motorAndPropellerColumn() {
    auto* w = new QWidget;
    auto* v = new QVBoxLayout(w);
    v->setContentsMargins(0, 0, 0, 0);
    v->addWidget(comparison(QStringLiteral("Moteur"),
                            {{"Puissance électrique (W)", PM, PElec0},
                             {"Intensité (A)", IM, I0},
                             {"Rendement moteur (%)", Rdmt, {}},
                             {"Masse du moteur (g)", T_Masse_Moteur, {}},
                             {"Kv (Tr/min/V)", kv, G29, true},
                             {"Ra (ohm)", {}, Ra, true},
                             {"Io (A)", {}, Io, true},
                             {"Réduction", {}, I10, true},
                             {"Régime moteur (Tr/min)", {}, Regime_Moteur0},
                             {"Régime à vide (Tr/min)", Regime_a_vide, Regime_a_vide0},
                             {"Régime standard (Tr/min)", Régime_standard, Régime_standard0}}));
    QGroupBox* prop = comparison(QStringLiteral("Hélice"),
                                 {{"Vitesse de décrochage (m/s)", vd, {}},
                                  {"Pas idéal (m)", Lpitch, {}},
                                  {"Pas idéal (pouces)", Lpitch_Pouces, {}},
                                  {"Diamètre idéal (m)", Ddiam, {}},
                                  {"Diamètre idéal (pouces)", Ddiam_Pouces, {}},
                                  {"Diamètre (pouces)", HD, L51, true},
                                  {"Pas (pouces)", HP, N51, true},
                                  {"Pas / diamètre", T_Ratio_Helice, Ratio_Helice},
                                  {"Pas / diamètre conseillé", T_Ratio_Conseil, {}},
                                  {"PLT (pas x diamètre³)", PLT, PLT0},
                                  {"Régime hélice (Tr/min)", Régime_Helice, Régime_Helice0},
                                  {"Puissance à l'arbre (W)", Puissance_arbre, Puissance_arbre0},
                                  {"Traction statique (g)", F_CALC_MOT::tr, L58},
                                  {"Traction totale (g)", tr_tot, L59},
                                  {"Vent hélice (m/s)", {}, vh},
                                  {"Pitch speed (m/s)", T_Pitch, T_Pitch0}});
    // The advice on the pitch speed under its line.
    auto* advice = new CellLabel(bridge_, L_Pitch);
    advice->setWordWrap(true);
    static_cast<QGridLayout*>(prop->layout())->addWidget(advice, 17, 0, 1, 3);
    v->addWidget(prop);
    v->addStretch(1);
    return w;
}

QWidget* CalcMotWindow::batteryAndFlightFrames() {
    auto* w = new QWidget;
    auto* v = new QVBoxLayout(w);
    v->setContentsMargins(0, 0, 0, 0);
    v->addWidget(comparison(QStringLiteral("Capacité et décharge"),
                            {{"Capacité (mAh)", cb, L33, true},
                             {"Décharge (xC)", T_Decharge, L61},
                             {"I max continu (A)", I_Max_Cont, I_Max_Cont0},
                             {"I max raisonnable (A)", I_Max_Rais, I_Max_Rais0},
                             {"Masse des accus (g)", L21, L35},
                             {"Masse par pack (g)", L211, {}},
                             {"Masse par élément (g)", L212, L34}}));
    v->addWidget(comparison(QStringLiteral("Vol"),
                            {{"Vitesse ascensionnelle (m/s)", V_ASC, V_ASC_0},
                             {"Temps moteur (min)", Temps_Moteur, Temps_Moteur0},
                             {"Temps de vol (min)", T_Temps_Vol, {}}}));
    return w;
}

QWidget* CalcMotWindow::motorsPart() {
    auto* w = new QWidget;
    auto* h = new QHBoxLayout(w);
    h->setContentsMargins(0, 0, 0, 0);

    auto* treeBox = new QGroupBox(QStringLiteral("Base moteurs"));
    auto* tl = new QVBoxLayout(treeBox);
    tree_ = new QTreeWidget;
    tree_->setObjectName("tvwDB");
    tree_->setHeaderHidden(true);
    tree_->setToolTip(QStringLiteral("Cliquer un moteur pour le reprendre dans la motorisation choisie"));
    tl->addWidget(tree_);
    h->addWidget(treeBox, 2);

    auto* gridBox = new QGroupBox(QStringLiteral("Moteurs proches de la proposition"));
    auto* gl = new QVBoxLayout(gridBox);
    gridCaption_ = new QLabel;
    gridCaption_->setObjectName("L_Candidats");
    gridCaption_->setProperty("noLanguage", true);  // a count
    gl->addWidget(gridCaption_);
    grid_ = new QTableWidget(0, 7);
    grid_->setObjectName("MSFlexGrid1");
    grid_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    grid_->setSelectionBehavior(QAbstractItemView::SelectRows);
    grid_->setSelectionMode(QAbstractItemView::SingleSelection);
    grid_->verticalHeader()->setVisible(false);
    grid_->horizontalHeader()->setStretchLastSection(true);
    grid_->setToolTip(QStringLiteral("Cliquer une ligne pour reprendre ce moteur dans la motorisation choisie"));
    gl->addWidget(grid_);
    h->addWidget(gridBox, 3);

    connect(tree_, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem* item, int) {
        if (item->data(0, kKeyRole).isValid())
            chooseMotor(tree_->objectName(), item->data(0, kMarqueRole).toString(),
                        item->data(0, kModeleRole).toString());
    });
    connect(grid_, &QTableWidget::cellClicked, this, [this](int row, int) {
        const QTableWidgetItem* first = grid_->item(row, 0);
        const QTableWidgetItem* second = grid_->item(row, 1);
        if (first && second) chooseMotor(grid_->objectName(), first->text(), second->text());
    });
    return w;
}

QWidget* CalcMotWindow::chartsPart() {
    auto* tabs = new QTabWidget;
    tabs->setObjectName("SSTab_Courbes");
    auto* pitch = new QWidget;
    auto* pg = new QGridLayout(pitch);
    pg->setContentsMargins(2, 2, 2, 2);
    for (int k = 0; k < 6; ++k) {
        auto* c = new ChartPanel;
        c->setObjectName(QStringLiteral("graph_Moteur_Helice_%1").arg(k));
        c->setMinimumSize(240, 170);
        pg->addWidget(c, k / 2, k % 2);
        charts_.push_back(c);
    }
    tabs->addTab(pitch, QStringLiteral("Moteur / Hélice selon le pas"));
    auto* current = new QWidget;
    auto* cl = new QHBoxLayout(current);
    cl->setContentsMargins(2, 2, 2, 2);
    for (int k = 0; k < 2; ++k) {
        auto* c = new ChartPanel;
        c->setObjectName(QStringLiteral("Chart_Helice_Mot_%1").arg(k));
        cl->addWidget(c);
        charts_.push_back(c);
    }
    tabs->addTab(current, QStringLiteral("Puissances selon l'intensité"));
    auto* balance = new ChartPanel;
    balance->setObjectName("MSChart1");
    charts_.push_back(balance);
    tabs->addTab(balance, QStringLiteral("Equilibre des Puissances"));
    return tabs;
}

void CalcMotWindow::showEvent(QShowEvent* e) {
    QWidget::showEvent(e);
    // The table is read afresh each time the window comes up: an edit of the
    // file shows without a restart.
    fillTree();
    fillCandidates();
}

void CalcMotWindow::fillTree() {
    tree_->clear();
    for (const MotorBrand& brand : Get_Marque_Motor(wb_)) {
        auto* node = new QTreeWidgetItem(tree_, QStringList{qs(brand.Marque)});
        for (const std::string& modele : brand.Modeles) {
            auto* leaf = new QTreeWidgetItem(node, QStringList{qs(modele)});
            leaf->setData(0, kKeyRole, qs(motorKey(brand.Marque, modele)));
            leaf->setData(0, kMarqueRole, qs(brand.Marque));
            leaf->setData(0, kModeleRole, qs(modele));
        }
    }
}

void CalcMotWindow::fillCandidates() {
    const MotorGrid g = Candidats_Moteurs(wb_);
    QStringList heads;
    for (const std::string& h : g.header) heads << qs(h);
    grid_->setRowCount(0);
    grid_->setHorizontalHeaderLabels(heads);
    grid_->setRowCount(static_cast<int>(g.rows.size()));
    for (size_t r = 0; r < g.rows.size(); ++r) {
        const std::vector<std::string> cells = gridCells(g.rows[r]);
        for (size_t c = 0; c < cells.size(); ++c) {
            auto* item = new QTableWidgetItem(qs(cells[c]));
            if (c >= 3) item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            grid_->setItem(static_cast<int>(r), static_cast<int>(c), item);
        }
    }
    grid_->resizeColumnsToContents();
    gridCaption_->setText(g.header.size() >= 2 ? qs(g.header[0]) + QStringLiteral(" ") + qs(g.header[1]).trimmed()
                                               : QString());
}

void CalcMotWindow::chooseMotor(const QString& control, const QString& marque, const QString& modele) {
    Action a;
    a.form = "F_CALC_MOT";
    a.control = ss(control);
    a.text = ss(marque) + "\t" + ss(modele);
    bridge_.enter([&] { Perform(wb_, a); });
}

void CalcMotWindow::drawCharts() {
    const MotorPropInputs in = ChosenSetInputs(wb_);
    const std::vector<ChartData> pitch = graph_Moteur_Helice(in);
    const std::vector<ChartData> current = Chart_Helice_Mot(in);
    for (size_t k = 0; k < 6 && k < pitch.size(); ++k) charts_[k]->setData(pitch[k]);
    for (size_t k = 0; k < 2 && k < current.size(); ++k) charts_[6 + k]->setData(current[k]);
    charts_[8]->setData(Equilibre_Puissances(wb_).chart);
}

}  // namespace tarvokin::ui
