#include "airfoils/ui/pressure_window.h"

#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QSplitter>
#include <QVBoxLayout>
#include <algorithm>

#include "airfoils/pressure_files.h"
#include "airfoils/ui/solver_progress_bar.h"
#include "core/numbers.h"
#include "core/ui/cell_widgets.h"
#include "core/ui/chart_panel.h"
#include "core/ui/entry_controls.h"
#include "core/ui/form_helpers.h"
#include "core/ui/sheet_bridge.h"
#include "core/workbench.h"

namespace tarvokin::ui {

namespace {

// A chart of one curve along the chord, with the values written beside the
// extremes when the indications are on.
ChartData curve(const std::vector<ChartPoint>& pts, const char* x, const char* y, const char* name, Rgb colour,
                bool points, bool values) {
    ChartData d;
    d.xTitle = x;
    d.yTitle = y;
    if (pts.empty()) return d;
    ChartSeries s;
    s.name = name;
    s.colour = colour;
    s.withPoints = points;
    s.points = pts;
    // The chord from 0 to 1, not rounded out to half a chord on each side.
    double lo = 0.0, hi = 1.0;
    for (const ChartPoint& p : pts) lo = std::min(lo, p.x), hi = std::max(hi, p.x);
    d.xMin = lo;
    d.xMax = hi;
    d.series.push_back(std::move(s));
    if (values) {
        auto [lo, hi] = std::minmax_element(pts.begin(), pts.end(),
                                            [](const ChartPoint& a, const ChartPoint& b) { return a.y < b.y; });
        for (const ChartPoint* p : {&*lo, &*hi}) {
            ChartMarker m;
            m.kind = ChartMarker::Kind::Point;
            m.x = p->x;
            m.y = p->y;
            m.size = 8;
            m.colour = {200, 0, 0};
            m.label = std::string(y) + " " + fixed(p->y, 4) + " à x " + fixed(p->x, 3);
            d.markers.push_back(m);
        }
    }
    d.dropNonFinite();
    return d;
}

}  // namespace

PressureWindow::PressureWindow(Workbench& wb, SheetBridge& b, QWidget* parent)
    : QWidget(parent), wb_(wb), bridge_(b) {
    setObjectName("F_AERO");
    setWindowTitle(QStringLiteral("Distribution des Pressions"));
    auto* top = new QHBoxLayout(this);

    auto* side = new QVBoxLayout;
    auto* point = new QGroupBox(QStringLiteral("Profil et point de fonctionnement"));
    auto* f = new QFormLayout(point);
    f->addRow(QStringLiteral("Profil"), new CellCombo(b, F_AERO::Combo5));
    addField(b, f, QStringLiteral("Re"), F_AERO::T_Re);
    f->addRow(QStringLiteral("Type"), new CellCombo(b, F_AERO::Type));
    auto* visc = new QHBoxLayout;
    visc->addWidget(new CellCheck(b, F_AERO::Ch_Visc, QStringLiteral("Visc")));
    visc->addWidget(new CellEdit(b, F_AERO::T_Visc));
    f->addRow(visc);
    auto* option = new QHBoxLayout;
    option->addWidget(new CellRadio(b, F_AERO::Option1[0], QStringLiteral("Alpha")));
    option->addWidget(new CellRadio(b, F_AERO::Option1[1], QStringLiteral("Cl")));
    f->addRow(option);
    auto* alpha = new QHBoxLayout;
    alpha->addWidget(new CellSlider(b, F_AERO::T_Alpha, Qt::Horizontal, -100, 200), 1);
    alpha->addWidget(new CellEdit(b, F_AERO::T_alphad));
    f->addRow(QStringLiteral("Alpha"), alpha);
    auto* cl = new QHBoxLayout;
    cl->addWidget(new CellSlider(b, F_AERO::T_Cl, Qt::Horizontal, -10, 20), 1);
    cl->addWidget(new CellEdit(b, F_AERO::T_Cld));
    f->addRow(QStringLiteral("Cl"), cl);
    addField(b, f, QStringLiteral("Itérations"), F_AERO::Text5);
    side->addWidget(point);

    auto* seq = new QGroupBox;
    auto* sf = new QFormLayout(seq);
    sf->addRow(new CellCheck(b, F_AERO::Check5, QString::fromUtf8("Séquence")));
    addField(b, sf, QStringLiteral("Début"), F_AERO::T_Red);
    addField(b, sf, QStringLiteral("Fin"), F_AERO::Text9);
    addField(b, sf, QStringLiteral("Pas"), F_AERO::Text8);
    addResult(b, sf, QStringLiteral("Points"), F_AERO::Text4);
    side->addWidget(seq);

    auto* show = new QGroupBox(QStringLiteral("Affichage"));
    auto* sh = new QVBoxLayout(show);
    sh->addWidget(new CellCheck(b, F_AERO::Check1, QStringLiteral("Surface Vitesse")));
    sh->addWidget(new CellCheck(b, F_AERO::Check4, QStringLiteral("Cl / Cli")));
    sh->addWidget(new CellCheck(b, F_AERO::Check3, QStringLiteral("Indications On / Off")));
    sh->addWidget(new CellCheck(b, F_AERO::Check2, QStringLiteral("Points On / Off")));
    sh->addWidget(new CellCombo(b, F_AERO::Combo1));
    side->addWidget(show);

    auto* results = new QGroupBox(QString::fromUtf8("Résultats"));
    auto* rg = new QGridLayout(results);
    const std::pair<const char*, Cell> fields[] = {
        {"Cl", F_AERO::TCL},   {"Cd", F_AERO::TCD},         {"Cdp", F_AERO::TCDP},       {"Cm", F_AERO::TCM},
        {"Re", F_AERO::TRE},   {"Alpha", F_AERO::TALFA},    {"Cp max", F_AERO::T_CpMax}, {"Cp min", F_AERO::T_CpMin}};
    int i = 0;
    for (const auto& [caption, cell] : fields) {
        rg->addWidget(new QLabel(QString::fromUtf8(caption)), i / 2, (i % 2) * 2);
        auto* l = new CellLabel(b, cell);
        l->setFrameShape(QFrame::StyledPanel);
        l->setMinimumWidth(70);
        rg->addWidget(l, i / 2, (i % 2) * 2 + 1);
        ++i;
    }
    side->addWidget(results);
    side->addStretch(1);
    top->addLayout(side);

    auto* right = new QVBoxLayout;
    auto* charts = new QSplitter(Qt::Vertical);
    cp_ = new ChartPanel;
    cp_->setObjectName("Chart_Cp");
    speed_ = new ChartPanel;
    speed_->setObjectName("Chart_Vitesse");
    quantity_ = new ChartPanel;
    quantity_->setObjectName("Chart_Couche");
    charts->addWidget(cp_);
    charts->addWidget(speed_);
    charts->addWidget(quantity_);
    for (int i = 0; i < 3; ++i) charts->setStretchFactor(i, 1);
    right->addWidget(charts, 1);
    progress_ = new SolverProgressBar(wb_, "F_AERO");
    right->addWidget(progress_);
    auto* status = new CellLabel(b, F_AERO::Status);
    status->setObjectName("StatusBar");
    right->addWidget(status);
    top->addLayout(right, 3);

    // Opening runs the calculation outside any entry: redraw then too.
    auto* later = new DeferredRedraw(this, [this] { redraw(); });
    b.watch(F_Main::Toolbar2[button::Aero], this, [later] { later->request(); });
    connect(&b, &SheetBridge::entryDone, this, [this, later] {
        progress_->setVisible(false);
        later->now();
    });
    redraw();
    resize(1100, 760);
}

void PressureWindow::redraw() {
    const PressureDistribution& d = wb_.pressure.shown;
    const bool points = wb_.sheet.on(F_AERO::Check2), values = wb_.sheet.on(F_AERO::Check3);
    cp_->setData(curve(d.cp, "x/c", "Cp", "Cp", {0, 0, 200}, points, values));
    speed_->setVisible(wb_.sheet.on(F_AERO::Check1));
    speed_->setData(curve(d.speed, "x/c", "q/v", "q/v", {0, 140, 0}, points, values));
    const int q = std::clamp(wb_.sheet.listIndex(F_AERO::Combo1), 0, 9);
    const PressureQuantity& quantity = kPressureQuantities[static_cast<size_t>(q)];
    auto it = d.quantities.find(quantity.key);
    static const std::vector<ChartPoint> none;
    ChartData c = curve(it == d.quantities.end() ? none : it->second, "X", quantity.title, quantity.title,
                        {170, 60, 0}, points, values);
    // DUMP gives no amplification ratio nor shear stress; an inviscid run no layer.
    c.title = d.hasCp() && it == d.quantities.end()
                  ? std::string(quantity.title) + " : absent du fichier de XFOIL pour ce calcul"
                  : quantity.title;
    quantity_->setData(c);
}

}  // namespace tarvokin::ui
