#include "design/ui/performance_window.h"

#include <QChart>
#include <QCloseEvent>
#include <QLegend>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPixmap>
#include <QPushButton>
#include <QVBoxLayout>

#include "design/performance.h"
#include "design/ui/analysis_controls.h"
#include "core/ui/cell_widgets.h"
#include "core/ui/chart_panel.h"
#include "core/ui/sheet_bridge.h"
#include "core/workbench.h"

namespace tarvokin::ui {

namespace {

// The glide-ratio and power scales of F_GEO_5 reach these values; 0 leaves
// the chart to scale itself.
constexpr int kFinesseScaleMax = 60;
constexpr int kPowerScaleMax = 1000;

QIcon airfoilSwatch(int airfoil) {
    QPixmap p(12, 12);
    p.fill(toQColor(kAirfoilColours[airfoil]));
    return QIcon(p);
}

QString airfoilName(const Workbench& wb, int airfoil) { return qs(wb.sheet.text(F_PROFILS::CB_1[airfoil])); }

CellLabel* result(SheetBridge& b, Cell c) {
    auto* l = new CellLabel(b, c);
    l->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    l->setFrameShape(QFrame::StyledPanel);
    l->setMinimumWidth(56);
    return l;
}

// The legend goes to a strip under the chart, where the full captions fit.
ChartPanel* chartPanel(int index) {
    auto* c = new ChartPanel;
    c->setObjectName("MSChart1");
    c->setProperty("index", index);
    c->setMinimumSize(360, 250);
    c->chart()->legend()->hide();
    return c;
}

// A check box per airfoil, captioned with the airfoil of its slot.
CellCheck* airfoilCheck(SheetBridge& b, Cell c, int airfoil) {
    auto* check = new CellCheck(b, c, airfoilName(b.workbench(), airfoil));
    check->setProperty("noLanguage", true);  // an airfoil's name
    check->setIcon(airfoilSwatch(airfoil));
    b.watch(F_PROFILS::CB_1[airfoil], check,
            [check, &b, airfoil] { check->setText(airfoilName(b.workbench(), airfoil)); });
    return check;
}

}  // namespace

// ---- F_GEO_5 ------------------------------------------------------------------------

ConstantSpeedWindow::ConstantSpeedWindow(Workbench& wb, SheetBridge& b, QWidget* parent)
    : QWidget(parent, Qt::Window), wb_(wb) {
    using namespace F_GEO_5;
    setObjectName("F_GEO_5");
    setWindowTitle(QStringLiteral("Performances à Reynolds constant"));
    auto* top = new QVBoxLayout(this);

    auto* controls = new QHBoxLayout;
    controls->addWidget(new QLabel(QStringLiteral("Vitesse (km/h)")));
    auto* speed = new CellEdit(b, Text2);
    speed->setMaximumWidth(80);
    controls->addWidget(speed);
    const std::pair<Qt::ArrowType, int> steps[] = {{Qt::DownArrow, -1}, {Qt::UpArrow, 1}};
    for (int i = 0; i < 2; ++i) {
        const int direction = steps[i].second;
        controls->addWidget(stepButton(b, "F_GEO_5", "Command1", i, steps[i].first,
                                       direction < 0 ? QStringLiteral("- 5 km/h") : QStringLiteral("+ 5 km/h")));
    }
    controls->addSpacing(16);
    for (int a = 0; a < 3; ++a) controls->addWidget(airfoilCheck(b, Check2[a], a));
    controls->addStretch(1);
    top->addLayout(controls);

    auto* row = new QHBoxLayout;
    const Cell scales[2] = {VScroll1, VScroll2};
    const Cell shown[2] = {Text3, Text4};
    const int highs[2] = {kFinesseScaleMax, kPowerScaleMax};
    for (int i = 0; i < 2; ++i) {
        charts_[static_cast<size_t>(i)] = chartPanel(i);
        row->addWidget(charts_[static_cast<size_t>(i)], 1);
        auto* scale = new QVBoxLayout;
        auto* value = result(b, shown[i]);
        value->setToolTip(QStringLiteral("Maximum de l'échelle (0 : automatique)"));
        scale->addWidget(value);
        auto* slider = new CellSlider(b, scales[i], Qt::Vertical, 0, highs[i]);
        if (i == 1) slider->setSingleStep(10), slider->setPageStep(100);
        scale->addWidget(slider, 1, Qt::AlignHCenter);
        row->addLayout(scale);
    }
    top->addLayout(row, 1);
    legend_ = new LegendStrip(3, false);
    top->addWidget(legend_);

    // A typed speed or an airfoil switched on or off recomputes the tables in
    // its change or Enter step; draw once that has run.
    auto* later = new DeferredRedraw(this, [this] { redraw(); });
    for (Cell c : {Text2, Text3, Text4, Check2[0], Check2[1], Check2[2]})
        b.watch(c, this, [later] { later->request(); });
    connect(&b, &SheetBridge::entryDone, later, &DeferredRedraw::now);
    resize(1100, 560);
}

void ConstantSpeedWindow::redraw() {
    const auto& charts = wb_.perf.charts.constantReynolds;
    for (size_t i = 0; i < charts_.size(); ++i) charts_[i]->setData(charts[i]);
    // Both charts draw the same curves.
    legend_->setEntries(seriesLegend(charts[0]));
}

void ConstantSpeedWindow::closeEvent(QCloseEvent* e) {
    F_GEO_5_Unload(wb_);
    QWidget::closeEvent(e);
}

// ---- F_GEO_3 ------------------------------------------------------------------------

PerformanceWindow::PerformanceWindow(Workbench& wb, SheetBridge& b, QWidget* parent)
    : QWidget(parent), wb_(wb), bridge_(b) {
    setObjectName("F_GEO_3");
    setWindowTitle(QStringLiteral("Performances du Modèle Complet"));
    auto* top = new QHBoxLayout(this);

    auto* left = new QVBoxLayout;
    left->addWidget(airBox());
    left->addWidget(contributionsBox());
    left->addWidget(cursorBox());
    left->addStretch(1);
    top->addLayout(left);

    auto* right = new QVBoxLayout;
    auto* grid = new QGridLayout;
    for (int i = 0; i < 4; ++i) {
        const auto k = static_cast<size_t>(i);
        auto* cell = new QVBoxLayout;
        cell->setSpacing(2);
        charts_[k] = chartPanel(i);
        cell->addWidget(charts_[k], 1);
        // Two columns, masse mini and masse maxi; the polars one per airfoil.
        legends_[k] = i == 3 ? new LegendStrip(3, false) : new LegendStrip(2, true);
        cell->addWidget(legends_[k]);
        grid->addLayout(cell, i / 2, i % 2);
    }
    right->addLayout(grid, 1);
    right->addWidget(readoutBox());
    top->addLayout(right, 1);

    constantSpeed_ = new ConstantSpeedWindow(wb_, bridge_, this);
    followPanelRefresh(wb_, button::Performances, this, [this] { redraw(); });
    // The window at constant speed shows when its button's handler has
    // opened it; the charts follow every entry.
    auto* later = new DeferredRedraw(this, [this] {
        if (wb_.perf.constantReynoldsOpen && !constantSpeed_->isVisible()) openConstantSpeed();
        redraw();
    });
    connect(&bridge_, &SheetBridge::entryDone, later, &DeferredRedraw::now);
    redraw();
    resize(1500, 900);
}

QWidget* PerformanceWindow::airBox() {
    using namespace F_GEO_3;
    auto* box = new QGroupBox(QStringLiteral("Air"));
    auto* g = new QGridLayout(box);
    struct Row {
        const char* caption;
        Cell cell;
        const char* unit;
        AirStep down, up;
        int firstIndex;
    };
    const Row rows[] = {{"Altitude", Text2, "m", AirStep::AltitudeDown, AirStep::AltitudeUp, 0},
                        {"Température", Text3, "°C", AirStep::TemperatureDown, AirStep::TemperatureUp, 2}};
    int r = 0;
    for (const Row& row : rows) {
        g->addWidget(new QLabel(QString::fromUtf8(row.caption)), r, 0);
        auto* field = new CellEdit(bridge_, row.cell);
        field->setMaximumWidth(80);
        g->addWidget(field, r, 1);
        g->addWidget(stepButton(bridge_, "F_GEO_3", "Command1", row.firstIndex, Qt::DownArrow, {}), r, 2);
        g->addWidget(stepButton(bridge_, "F_GEO_3", "Command1", row.firstIndex + 1, Qt::UpArrow, {}), r, 3);
        g->addWidget(new QLabel(QString::fromUtf8(row.unit)), r, 4);
        ++r;
    }
    g->addWidget(new QLabel(QStringLiteral("Densité air")), r, 0);
    g->addWidget(result(bridge_, Text1), r, 1);
    g->addWidget(new QLabel(QStringLiteral("kg/m³")), r, 2, 1, 3);
    return box;
}

QWidget* PerformanceWindow::contributionsBox() {
    using namespace F_GEO_3;
    auto* w = new QWidget;
    auto* v = new QVBoxLayout(w);
    v->setContentsMargins(0, 0, 0, 0);
    auto* frame = new QGroupBox(QStringLiteral("Prise en compte des contributions aérodynamiquers :"));
    frame->setObjectName("Frame1");
    auto* g = new QGridLayout(frame);
    g->addWidget(new CellCheck(bridge_, Check1, QStringLiteral("Stab")), 0, 0);
    g->addWidget(new CellCheck(bridge_, Check2, QStringLiteral("Fuselage")), 0, 1);
    g->addWidget(new CellCheck(bridge_, Check3, QStringLiteral("Interaction")), 1, 0);
    g->addWidget(new CellCheck(bridge_, Check4, QStringLiteral("VLM")), 1, 1);
    auto* version = new CellCheck(bridge_, Check6, qs(wb_.sheet.text(Check6_Caption)));
    bridge_.watch(Check6_Caption, version, [this, version] { version->setText(qs(wb_.sheet.text(Check6_Caption))); });
    g->addWidget(version, 2, 0);
    v->addWidget(frame);

    auto* airfoils = new QGroupBox(QStringLiteral("Profils"));
    auto* a = new QVBoxLayout(airfoils);
    for (int i = 0; i < 3; ++i) a->addWidget(airfoilCheck(bridge_, Check5[i], i));
    v->addWidget(airfoils);
    return w;
}

QWidget* PerformanceWindow::cursorBox() {
    using namespace F_GEO_3;
    auto* box = new QGroupBox(QStringLiteral("Curseur"));
    auto* g = new QGridLayout(box);
    g->addWidget(new QLabel(QStringLiteral("Point")), 0, 0);
    auto* point = new CellEdit(bridge_, Text12);
    point->setMaximumWidth(80);
    g->addWidget(point, 0, 1);
    for (int i = 0; i < 2; ++i) {
        g->addWidget(stepButton(bridge_, "F_GEO_3", "Command2", i, i == 0 ? Qt::DownArrow : Qt::UpArrow, {}), 0, 2 + i);
    }
    g->addWidget(new QLabel(QStringLiteral("Cz")), 1, 0);
    g->addWidget(result(bridge_, T_Cz), 1, 1);
    g->addWidget(new QLabel(QStringLiteral("Vitesse")), 2, 0);
    g->addWidget(result(bridge_, T_Vitesse), 2, 1);
    g->addWidget(new QLabel(QStringLiteral("km/h")), 2, 2, 1, 2);
    g->addWidget(new CellRadio(bridge_, Option1[0], QStringLiteral("masse mini")), 3, 0, 1, 2);
    g->addWidget(new CellRadio(bridge_, Option1[1], QStringLiteral("masse maxi")), 4, 0, 1, 2);

    g->addWidget(new QLabel(QStringLiteral("X x")), 5, 0);
    g->addWidget(result(bridge_, Command3), 5, 1);
    for (int i = 0; i < 2; ++i) {
        g->addWidget(stepButton(bridge_, "F_GEO_3", "Command3", i, i == 0 ? Qt::LeftArrow : Qt::RightArrow, {}), 5,
                     2 + i);
    }
    auto* constant = commandButton(bridge_, "F_GEO_3", "Command4", -1, QStringLiteral("Reynolds constant..."),
                                   QStringLiteral("Performances à Reynolds constant"));
    g->addWidget(constant, 6, 0, 1, 4);
    return box;
}

QWidget* PerformanceWindow::readoutBox() {
    using namespace F_GEO_3;
    auto* box = new QGroupBox(QStringLiteral("Valeurs au curseur"));
    auto* g = new QGridLayout(box);
    g->setHorizontalSpacing(6);
    const char* heads[] = {"Charge (g/dm²)", "Vz (m/s)", "Finesse", "Puissance (W)"};
    for (int m = 0; m < 2; ++m) {
        auto* mass = new QLabel(m == 0 ? QStringLiteral("masse mini") : QStringLiteral("masse maxi"));
        mass->setAlignment(Qt::AlignCenter);
        g->addWidget(mass, 0, 1 + 4 * m, 1, 4);
        for (int k = 0; k < 4; ++k) {
            auto* h = new QLabel(QString::fromUtf8(heads[k]));
            h->setAlignment(Qt::AlignCenter);
            g->addWidget(h, 1, 1 + 4 * m + k);
        }
    }
    const CellGroup columns[8] = {Text4, Text5, Text6, Text7, Text11, Text8, Text9, Text10};
    for (int a = 0; a < 3; ++a) {
        auto& widgets = readoutRows_[static_cast<size_t>(a)];
        auto* name = new QLabel(airfoilName(wb_, a));
        name->setProperty("noLanguage", true);
        bridge_.watch(F_PROFILS::CB_1[a], name, [this, name, a] { name->setText(airfoilName(wb_, a)); });
        g->addWidget(name, 2 + a, 0);
        widgets.push_back(name);
        for (int k = 0; k < 8; ++k) {
            QWidget* w = result(bridge_, columns[k][a]);
            g->addWidget(w, 2 + a, 1 + k);
            widgets.push_back(w);
        }
    }
    return box;
}

void PerformanceWindow::openConstantSpeed() {
    constantSpeed_->show();
    constantSpeed_->raise();
    constantSpeed_->redraw();
}

void PerformanceWindow::redraw() {
    const PerformanceCharts& c = wb_.perf.charts;
    for (size_t i = 0; i < charts_.size(); ++i) {
        charts_[i]->setData(c.speedPolar[i]);
        // The sink-rate and glide-ratio curves are named by their marks, whose
        // captions carry the speed of the best point.
        legends_[i]->setEntries(i < 2 ? markerLegend(c.speedPolar[i]) : seriesLegend(c.speedPolar[i]));
    }
    for (size_t a = 0; a < readoutRows_.size(); ++a)
        for (QWidget* w : readoutRows_[a]) w->setVisible(c.readoutShown[a]);
    if (constantSpeed_->isVisible()) constantSpeed_->redraw();
}

void PerformanceWindow::hideEvent(QHideEvent* e) {
    // The constant-speed window follows this window's refreshes; it goes with it.
    if (!e->spontaneous() && constantSpeed_->isVisible()) constantSpeed_->close();
    QWidget::hideEvent(e);
}

}  // namespace tarvokin::ui
