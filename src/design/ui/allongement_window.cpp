#include "design/ui/allongement_window.h"

#include <QChart>
#include <QGridLayout>
#include <QLegend>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHideEvent>
#include <QLabel>
#include <QPixmap>
#include <QVBoxLayout>

#include "design/aspect_ratio.h"
#include "design/ui/analysis_controls.h"
#include "entry/field_rules.h"
#include "core/numbers.h"
#include "core/ui/cell_widgets.h"
#include "core/ui/chart_panel.h"
#include "core/ui/form_helpers.h"
#include "core/ui/sheet_bridge.h"
#include "core/workbench.h"

namespace tarvokin::ui {

using namespace F_ALLONGEMENT;

namespace {

QLabel* head(const QString& text) {
    auto* l = new QLabel(text);
    l->setAlignment(Qt::AlignCenter);
    return l;
}

CellLabel* result(SheetBridge& b, Cell c) {
    auto* l = new CellLabel(b, c);
    l->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    l->setFrameShape(QFrame::StyledPanel);
    return l;
}

// A slider's moves run the cell's change step, which moves the field it
// stands for and refreshes the panel.
CellSlider* slider(SheetBridge& b, Cell c, int low, int high) {
    return new CellSlider(b, c, Qt::Horizontal, low, high);
}

}  // namespace

// ---- F_GRAPH1 -----------------------------------------------------------------------

ChartPopup::ChartPopup(QWidget* parent) : QWidget(parent, Qt::Window) {
    setObjectName("F_GRAPH1");
    // Title and chart are those of the chart enlarged, already in the language.
    setProperty("valueTitle", true);
    auto* v = new QVBoxLayout(this);
    v->setContentsMargins(4, 4, 4, 4);
    chart_ = new ChartPanel;
    chart_->setObjectName("MSChart1");
    chart_->setProperty("noLanguage", true);
    chart_->chart()->legend()->hide();
    v->addWidget(chart_, 1);
    legend_ = new LegendStrip(3, false);
    v->addWidget(legend_);
    resize(760, 540);
}

void ChartPopup::showChart(int index, const ChartData& data) {
    index_ = index;
    chart_->setData(data);
    legend_->setEntries(seriesLegend(data));
    setWindowTitle(qs(data.title));
}

// ---- F_ALLONGEMENT ------------------------------------------------------------------

AllongementWindow::AllongementWindow(Workbench& wb, SheetBridge& b, QWidget* parent)
    : QWidget(parent), wb_(wb), bridge_(b) {
    setObjectName("F_ALLONGEMENT");
    setWindowTitle(QString::fromUtf8(kAllongementCaption));
    auto* top = new QHBoxLayout(this);

    auto* left = new QVBoxLayout;
    left->addWidget(wingBox());
    left->addWidget(chosenBox());
    left->addWidget(turnBox());
    left->addWidget(choicesBox());
    left->addStretch(1);
    top->addLayout(left);

    auto* right = new QVBoxLayout;
    auto* grid = new QGridLayout;
    for (int i = 0; i < 5; ++i) grid->addWidget(chartCell(i), i / 3, i % 3, 1, i == 4 ? 2 : 1);
    right->addLayout(grid, 1);
    // Charts 1 to 4 draw the same six curves: one legend serves them all.
    legend_ = new LegendStrip(3, false);
    right->addWidget(legend_);
    top->addLayout(right, 1);

    popup_ = new ChartPopup(this);

    // Every input's change step refreshes the panel; the charts are drawn
    // once it has run. The master recalculation refreshes it as well.
    auto* later = new DeferredRedraw(this, [this] { redraw(); });
    for (Cell c : {B4, b5, c5, B10, b15, b16, b17, HScroll1, HScroll2, T_MAX_G1, T_MAX_G2, T_MAX_G3, T_MAX_G5})
        b.watch(c, this, [later] { later->request(); });
    for (const CellGroup& g : {Check2, Option1})
        for (int i = g.firstIndex; i < g.firstIndex + g.count; ++i) b.watch(g[i], this, [later] { later->request(); });
    followPanelRefresh(wb_, button::Allongement, this, [this] { redraw(); });
    connect(&b, &SheetBridge::entryDone, later, &DeferredRedraw::now);
    redraw();
    resize(1500, 900);
}

QWidget* AllongementWindow::wingBox() {
    auto* box = new QGroupBox(QStringLiteral("Aile estimée"));
    auto* g = new QGridLayout(box);
    addGridRow(bridge_, g, 0, QStringLiteral("Surface (dm²)"), {B4});
    g->addWidget(head(QStringLiteral("mini")), 1, 1);
    g->addWidget(head(QStringLiteral("maxi")), 1, 2);
    addGridRow(bridge_, g, 2, QStringLiteral("Masses (g)"), {b5, c5});
    addGridRow(bridge_, g, 3, QStringLiteral("Charges alaires (g/dm²)"), {b6, c6}, {}, {b6, c6});
    return box;
}

QWidget* AllongementWindow::chosenBox() {
    auto* box = new QGroupBox(QStringLiteral("Allongement choisi"));
    auto* g = new QGridLayout(box);
    g->addWidget(new QLabel(QStringLiteral("Allongement")), 0, 0);
    g->addWidget(new CellEdit(bridge_, B10), 0, 1);
    auto* steps = new QHBoxLayout;
    for (int i = 0; i < 2; ++i) {
        steps->addWidget(stepButton(bridge_, "F_ALLONGEMENT", "Command1", i, i == 0 ? Qt::DownArrow : Qt::UpArrow,
                                    i == 0 ? QStringLiteral("- 1") : QStringLiteral("+ 1")));
    }
    g->addLayout(steps, 0, 2);
    g->addWidget(new QLabel(QStringLiteral("Envergure (mm)")), 1, 0);
    g->addWidget(result(bridge_, b11), 1, 1);
    g->addWidget(new QLabel(QStringLiteral("Corde emplanture (mm)")), 2, 0);
    g->addWidget(result(bridge_, b12), 2, 1);
    return box;
}

QWidget* AllongementWindow::turnBox() {
    using namespace allongement;
    auto* box = new QGroupBox(QStringLiteral("Virage serré"));
    auto* g = new QGridLayout(box);
    int r = 0;
    addGridRow(bridge_, g, r++, QStringLiteral("Vitesse (km/h)"), {b15});
    g->addWidget(slider(bridge_, HScroll1, kSpeedSliderMin, kSpeedSliderMax), r++, 0, 1, 3);
    addGridRow(bridge_, g, r++, QStringLiteral("Cz"), {b16});
    g->addWidget(slider(bridge_, HScroll2, kCzSliderMin, kCzSliderMax), r++, 0, 1, 3);
    addGridRow(bridge_, g, r++, QStringLiteral("Angle de virage (°)"), {b17}, QString::fromUtf8(kTurnAngleHint));
    auto* hint = new QLabel(QString::fromUtf8(kTurnAngleHint));
    hint->setObjectName("L_b17");
    QFont small = hint->font();
    small.setItalic(true);
    hint->setFont(small);
    g->addWidget(hint, r++, 0, 1, 3);
    g->addWidget(head(QStringLiteral("mini")), r, 1);
    g->addWidget(head(QStringLiteral("maxi")), r++, 2);
    addGridRow(bridge_, g, r++, QStringLiteral("Rayon (m)"), {b18, c18}, {}, {b18, c18});
    addGridRow(bridge_, g, r++, QStringLiteral("Distance (m)"), {b19, c19}, {}, {b19, c19});
    addGridRow(bridge_, g, r++, QStringLiteral("Charge sur les ailes (kg)"), {b20}, {}, {b20});
    g->setColumnStretch(1, 1);
    g->setColumnStretch(2, 1);
    return box;
}

QWidget* AllongementWindow::choicesBox() {
    auto* box = new QGroupBox(QStringLiteral("Profils"));
    auto* g = new QGridLayout(box);
    for (int i = 0; i < 3; ++i) {
        auto* check = new CellCheck(bridge_, Check2[i], QString());
        QPixmap swatch(12, 12);
        swatch.fill(toQColor(kAirfoilColours[i]));
        check->setIcon(QIcon(swatch));
        g->addWidget(check, i, 0);
        g->addWidget(new CellLabel(bridge_, Label7[i]), i, 1);
    }
    g->setColumnStretch(1, 1);
    for (int i = 0; i < 2; ++i)
        g->addWidget(new CellRadio(bridge_, Option1[i], QString::fromUtf8(kAllongementOptionCaptions[i])), 3 + i, 0,
                     1, 2);
    return box;
}

QWidget* AllongementWindow::chartCell(int i) {
    auto* w = new QWidget;
    auto* v = new QVBoxLayout(w);
    v->setContentsMargins(0, 0, 0, 0);
    v->setSpacing(2);
    auto* c = new ChartPanel;
    c->setObjectName("MSChart1");
    c->setProperty("index", i);
    c->setMinimumSize(340, 250);
    c->setToolTip(QStringLiteral("Double-clic : agrandir"));
    if (i > 0) c->chart()->legend()->hide();
    connect(c, &ChartPanel::doubleClicked, this, [this, i] { enlarge(i); });
    charts_[static_cast<size_t>(i)] = c;
    v->addWidget(c, 1);
    // The turn chart keeps its own scale; the others take their upper y limit
    // from a field under them.
    const Cell limits[4] = {T_MAX_G1, T_MAX_G2, T_MAX_G3, T_MAX_G5};
    if (i < 4) {
        auto* row = new QHBoxLayout;
        row->addStretch(1);
        row->addWidget(new QLabel(QStringLiteral("Max Y")));
        auto* limit = new CellEdit(bridge_, limits[i]);
        limit->setMaximumWidth(70);
        row->addWidget(limit);
        v->addLayout(row);
    }
    return w;
}

ChartData AllongementWindow::shownData(int i) const {
    // The enlarged chart speaks the language of the chart it enlarges.
    ChartData d = wb_.aspectRatio.charts[static_cast<size_t>(i)];
    const ChartPanel* source = charts_[static_cast<size_t>(i)];
    d.title = ss(source->shownTitle(qs(d.title)));
    d.xTitle = ss(source->shownTitle(qs(d.xTitle)));
    d.yTitle = ss(source->shownTitle(qs(d.yTitle)));
    return d;
}

void AllongementWindow::enlarge(int i) {
    popup_->showChart(i, shownData(i));
    popup_->show();
    popup_->raise();
}

void AllongementWindow::redraw() {
    const auto& charts = wb_.aspectRatio.charts;
    for (size_t i = 0; i < charts_.size(); ++i) charts_[i]->setData(charts[i]);
    std::vector<LegendEntry> entries;
    for (size_t i = 1; i < charts.size() && entries.empty(); ++i) entries = seriesLegend(charts[i]);
    legend_->setEntries(entries);
    if (popup_->isVisible()) popup_->showChart(popup_->shownIndex(), shownData(popup_->shownIndex()));
}

void AllongementWindow::hideEvent(QHideEvent* e) {
    if (!e->spontaneous()) popup_->hide();
    QWidget::hideEvent(e);
}

}  // namespace tarvokin::ui
