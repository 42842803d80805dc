#include "airfoils/ui/airfoil_window.h"

#include <QFileDialog>
#include <QFormLayout>
#include <QLineEdit>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QSlider>
#include <QSplitter>
#include <QTableWidget>
#include <QVBoxLayout>
#include <filesystem>
#include <fstream>

#include "airfoils/catalogue_edit.h"
#include "airfoils/polar_lookup.h"
#include "core/text_case.h"
#include "core/messages.h"
#include "core/ui/cell_widgets.h"
#include "core/ui/entry_controls.h"
#include "core/ui/chart_panel.h"
#include "core/ui/form_helpers.h"
#include "core/ui/sheet_bridge.h"
#include "core/workbench.h"
#include "entry/airfoil_choice.h"
#include "entry/entry_path.h"

namespace tarvokin::ui {

using namespace F_PROFILS;

// The outlines of the slotBox, to scale, with the camber line on request.
class OutlineView : public QWidget {
public:
    OutlineView(Workbench& wb, QWidget* parent = nullptr) : QWidget(parent), wb_(wb) {
        setObjectName("Picture1");
        setMinimumHeight(140);
        setAutoFillBackground(true);
        QPalette p = palette();
        p.setColor(QPalette::Window, Qt::white);
        setPalette(p);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        p.setRenderHint(QPainter::Antialiasing);
        const double zoom = std::max(10.0, wb_.sheet.val(Slider1)) / 100.0;
        // Chord across the width, unless the height (a section rarely spans
        // more than a quarter of its chord) is the tighter limit.
        const double scale = std::min(width() - 20.0, (height() - 10.0) / 0.3) * zoom;
        const QPointF origin(10, height() / 2.0);
        p.setPen(QPen(Qt::lightGray, 1, Qt::DashLine));
        p.drawLine(QPointF(0, origin.y()), QPointF(width(), origin.y()));
        for (int slot = 0; slot < 3; ++slot) {
            if (!wb_.sheet.on(Check2[slot])) continue;
            const OutlinePoints& pts = wb_.slotOutlines[static_cast<size_t>(slot)];
            if (pts.size() < 2) continue;
            QPainterPath path;
            for (size_t i = 0; i < pts.size(); ++i) {
                const QPointF q(origin.x() + pts[i].x * scale, origin.y() - pts[i].y * scale);
                if (i == 0) path.moveTo(q);
                else path.lineTo(q);
            }
            p.setPen(QPen(slotColour(slot), 1.5));
            p.drawPath(path);
            if (wb_.sheet.on(Check3)) {
                OutlinePoints opposite;
                Split_Surfaces(pts, opposite);
                const size_t nose = Find_Nose(pts);
                QPainterPath camber;
                for (size_t i = 0; i <= nose && i < opposite.size(); ++i) {
                    const QPointF q(origin.x() + pts[i].x * scale,
                                    origin.y() - (pts[i].y + opposite[i].y) / 2 * scale);
                    if (i == 0) camber.moveTo(q);
                    else camber.lineTo(q);
                }
                p.setPen(QPen(slotColour(slot, 2), 1, Qt::DashLine));
                p.drawPath(camber);
            }
        }
    }

private:
    Workbench& wb_;
};

namespace {

struct CurveChoice {
    const char* x;
    const char* y;
};
const CurveChoice kCurves[5] = {{"Cd", "Cl"}, {"Cl", "Cm"}, {"Alpha", "Cl"}, {"Alpha", "Cm"}, {"Alpha", "Cd"}};

std::pair<double, double> curvePoint(int choice, const PolarPoint& p) {
    switch (choice) {
        case 0: return {p.Cx, p.Cz};
        case 1: return {p.Cz, p.Cm};
        case 2: return {p.Alpha, p.Cz};
        case 3: return {p.Alpha, p.Cm};
        default: return {p.Alpha, p.Cx};
    }
}

}  // namespace

AirfoilWindow::AirfoilWindow(Workbench& wb, SheetBridge& b, QWidget* parent)
    : QWidget(parent), wb_(wb), bridge_(b) {
    setObjectName("F_PROFILS");
    setWindowTitle(QStringLiteral("Présélection des Profils"));
    auto* top = new QVBoxLayout(this);

    auto* slotBox = new QGroupBox(QStringLiteral("Profils"));
    auto* g = new QGridLayout(slotBox);
    const QString heads[] = {QString(), QString(), QString(), QString(), QStringLiteral("Cx min"),
                             QStringLiteral("Cz opt"), QStringLiteral("k"), QStringLiteral("Cz décroch."),
                             QStringLiteral("Ep. Rel."), QStringLiteral("Pos ep.")};
    for (int c = 0; c < 10; ++c) g->addWidget(new QLabel(heads[c]), 0, c);
    for (int i = 0; i < 3; ++i) {
        g->addWidget(new CellLabel(b, L_PROFIL[i]), i + 1, 0);
        auto* list = new CellCombo(b, CB_1[i]);
        list->setMinimumWidth(180);
        g->addWidget(list, i + 1, 1);
        auto* pick = new QPushButton(QStringLiteral("..."));
        pick->setObjectName("PB_PROFILE");
        pick->setProperty("index", i);
        pick->setToolTip(QStringLiteral("Sélectionner un Profil"));
        connect(pick, &QPushButton::clicked, this, [this, i] { chooseFile(i); });
        g->addWidget(pick, i + 1, 2);
        auto* show = new CellCheck(b, Check2[i], QString());
        g->addWidget(show, i + 1, 3);
        int col = 4;
        for (CellGroup fig : {T_CXMin, T_CzOpt, T_k, T_Cz_Decroch, T_EpRel, T_PosEp}) {
            auto* l = new CellLabel(b, fig[i]);
            l->setFrameShape(QFrame::StyledPanel);
            l->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
            g->addWidget(l, i + 1, col++);
        }
    }
    top->addWidget(slotBox);

    auto* options = new QHBoxLayout;
    for (int r = 0; r < 6; ++r) {
        auto* c = new CellCheck(b, Check1[r], QString::number(kStandardReynolds[static_cast<size_t>(r)]));
        options->addWidget(c);
    }
    options->addWidget(commandButton(b, "F_PROFILS", "Command1", -1, QStringLiteral("..."), QStringLiteral("Toutes")));
    options->addWidget(commandButton(b, "F_PROFILS", "Command2", -1, QStringLiteral("Aucune")));
    options->addWidget(new CellCheck(b, Check3, QStringLiteral("Ligne de Cambrure")));
    // "Coefs" stands pressed while the grid of figures shows.
    auto* coefs = new QPushButton(QStringLiteral("Coefs"));
    coefs->setObjectName("Command3");
    coefs->setCheckable(true);
    options->addWidget(coefs);
    options->addStretch(1);
    top->addLayout(options);

    auto* split = new QSplitter(Qt::Vertical);
    auto* chartsRow = new QWidget;
    auto* cr = new QHBoxLayout(chartsRow);
    cr->setContentsMargins(0, 0, 0, 0);
    for (int i = 0; i < 2; ++i) {
        auto* box = new QVBoxLayout;
        box->addWidget(new CellCombo(b, i == 0 ? Combo0 : Combo1));
        charts_[i] = new ChartPanel;
        charts_[i]->setObjectName(i == 0 ? "MSChart1" : "MSChart2");
        box->addWidget(charts_[i], 1);
        cr->addLayout(box, 1);
    }
    split->addWidget(chartsRow);
    grid_ = new QTableWidget;
    grid_->setObjectName("MSFlexGrid1");
    grid_->setVisible(false);
    split->addWidget(grid_);
    connect(coefs, &QPushButton::clicked, this, [this](bool on) { bridge_.enter([&] { Tick(wb_, Command3, on); }); });
    auto showGrid = [this, coefs] {
        const bool on = wb_.sheet.on(Command3);
        QSignalBlocker block(coefs);
        coefs->setChecked(on);
        if (on) fillGrid();
        grid_->setVisible(on);
    };
    b.watch(Command3, this, showGrid);

    auto* bottom = new QWidget;
    auto* br = new QHBoxLayout(bottom);
    br->setContentsMargins(0, 0, 0, 0);
    auto* drawing = new QVBoxLayout;
    outline_ = new OutlineView(wb_);
    drawing->addWidget(outline_, 1);
    auto* zoom = new CellSlider(b, Slider1, Qt::Horizontal, 50, 400);
    zoom->setToolTip(QStringLiteral("Zoom"));
    drawing->addWidget(zoom);
    br->addLayout(drawing, 3);
    auto* frame = new QGroupBox(QStringLiteral("Estimation Reynolds moyen de vol"));
    frame->setObjectName("Frame2");
    auto* ff = new QFormLayout(frame);
    // The field rules refresh the estimate as each entry changes.
    for (auto [cell, caption] : {std::pair{b6, "Vitesse moyenne (km/h)"}, std::pair{b5, "Surface (dm)"},
                                 std::pair{B4, "Envergure (m)"}})
        addField(b, ff, QString::fromUtf8(caption), cell);
    addResult(b, ff, QStringLiteral("Reynolds"), T_RE);
    br->addWidget(frame, 1);
    split->addWidget(bottom);
    top->addWidget(split, 1);

    // What the charts and the drawing show follows the cells: the switches,
    // the curve choices, the zoom; and the polar store, read by a choice.
    auto* later = new DeferredRedraw(this, [this] { redraw(); });
    for (int i = 0; i < 3; ++i) {
        b.watch(Check2[i], this, [later] { later->request(); });
        b.watch(CB_1[i], this, [later] { later->request(); });
    }
    for (int r = 0; r < 6; ++r) b.watch(Check1[r], this, [later] { later->request(); });
    for (Cell c : {Check3, Combo0, Combo1, Slider1}) b.watch(c, this, [later] { later->request(); });
    connect(&b, &SheetBridge::entryDone, later, &DeferredRedraw::now);
    redraw();
}

void AirfoilWindow::fillSlots() { bridge_.enter([this] { FillAirfoilSlots(wb_); }); }

bool AirfoilWindow::busy() const { return wb_.selectingAirfoil; }

void AirfoilWindow::chooseFile(int slot) {
    if (busy()) return;
    const QString source = QFileDialog::getOpenFileName(this, QStringLiteral("Fichiers Profils"), QString(),
                                                        QStringLiteral("Fichiers Profils (*.dat *.DAT)"));
    if (source.isEmpty()) return;
    Action a;
    a.form = "F_PROFILS";
    a.control = "PB_PROFILE";
    a.index = slot;
    a.text = ss(source);
    bridge_.enter([&] { Perform(wb_, a); });
}

void AirfoilWindow::redraw() {
    drawChart(0);
    drawChart(1);
    outline_->update();
    if (grid_->isVisible()) fillGrid();
}

void AirfoilWindow::drawChart(int i) {
    const int choice = std::max(0, wb_.sheet.listIndex(i == 0 ? Combo0 : Combo1));
    ChartData d;
    d.xTitle = kCurves[choice].x;
    d.yTitle = kCurves[choice].y;
    const bool points = wb_.settings.pointsG != 0;
    for (int slot = 0; slot < 3; ++slot) {
        if (!wb_.sheet.on(Check2[slot])) continue;
        bool named = false;
        for (int r = 0; r < kReynoldsCount; ++r) {
            if (!wb_.sheet.on(Check1[r])) continue;
            const PolarRecord& rec = wb_.polars.Polars[static_cast<size_t>(slot)][static_cast<size_t>(r)];
            if (rec.LastRow <= 0) continue;
            ChartSeries s;
            s.name = wb_.sheet.text(CB_1[slot]);
            // One legend entry per airfoil; lighter shades for the lower Reynolds numbers.
            s.colour = slotRgb(slot, 5 - r);
            s.withPoints = points;
            s.inLegend = !named;
            for (int k = 0; k <= rec.LastRow && k < kPolarRows; ++k) {
                const auto [x, y] = curvePoint(choice, rec.Points[static_cast<size_t>(k)]);
                s.points.push_back({x, y});
            }
            d.series.push_back(std::move(s));
            named = true;
        }
    }
    charts_[i]->setData(d);
}

void AirfoilWindow::fillGrid() {
    FiguresGrid g = fillFiguresGrid(wb_);
    grid_->clear();
    grid_->setColumnCount(static_cast<int>(g.columnHeads.size()));
    grid_->setRowCount(6);
    QStringList heads;
    for (const std::string& h : g.columnHeads) heads << qs(h);
    grid_->setHorizontalHeaderLabels(heads);
    QStringList titles;
    for (const char* t : kFigureRowTitles) titles << QString::fromUtf8(t);
    grid_->setVerticalHeaderLabels(titles);
    for (int r = 0; r < 6; ++r) {
        for (size_t c = 0; c < g.rows[static_cast<size_t>(r)].size(); ++c) {
            auto* item = new QTableWidgetItem(qs(g.rows[static_cast<size_t>(r)][c]));
            item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            grid_->setItem(r, static_cast<int>(c), item);
        }
    }
}

}  // namespace tarvokin::ui
