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
#include "airfoils/polar_store.h"
#include "project/text_case.h"
#include "shell/messages.h"
#include "shell/ui/cell_widgets.h"
#include "shell/ui/chart_panel.h"
#include "shell/ui/form_helpers.h"
#include "shell/ui/sheet_bridge.h"
#include "shell/workbench.h"

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

AirfoilWindow::AirfoilWindow(Workbench& wb, SheetBridge& b, PolarComputer compute, QWidget* parent)
    : QWidget(parent), wb_(wb), bridge_(b), compute_(std::move(compute)) {
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
        connect(list, &QComboBox::activated, this, [this, i] { select(i); });
        g->addWidget(list, i + 1, 1);
        auto* pick = new QPushButton(QStringLiteral("..."));
        pick->setObjectName("PB_PROFILE");
        pick->setProperty("index", i);
        pick->setToolTip(QStringLiteral("Sélectionner un Profil"));
        connect(pick, &QPushButton::clicked, this, [this, i] { chooseFile(i); });
        g->addWidget(pick, i + 1, 2);
        auto* show = new CellCheck(b, Check2[i], QString());
        connect(show, &QCheckBox::clicked, this, [this] { redraw(); });
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
        connect(c, &QCheckBox::clicked, this, [this] { redraw(); });
        options->addWidget(c);
    }
    auto* all = new QPushButton(QStringLiteral("..."));
    all->setObjectName("Command1");
    all->setToolTip(QStringLiteral("Toutes"));
    auto* none = new QPushButton(QStringLiteral("Aucune"));
    none->setObjectName("Command2");
    for (auto [button, on] : {std::pair{all, true}, std::pair{none, false}}) {
        connect(button, &QPushButton::clicked, this, [this, on = on] {
            for (int r = 0; r < 6; ++r) wb_.sheet.set(Check1[r], on ? "1" : "0");
            redraw();
        });
        options->addWidget(button);
    }
    auto* camber = new CellCheck(b, Check3, QStringLiteral("Ligne de Cambrure"));
    connect(camber, &QCheckBox::clicked, this, [this] { outline_->update(); });
    options->addWidget(camber);
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
        auto* choice = new CellCombo(b, i == 0 ? Combo0 : Combo1);
        connect(choice, &QComboBox::activated, this, [this, i] { drawChart(i); });
        box->addWidget(choice);
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
    connect(coefs, &QPushButton::toggled, this, [this](bool on) {
        wb_.sheet.set(Command3, on ? "1" : "0");
        if (on) fillGrid();
        grid_->setVisible(on);
    });

    auto* bottom = new QWidget;
    auto* br = new QHBoxLayout(bottom);
    br->setContentsMargins(0, 0, 0, 0);
    auto* drawing = new QVBoxLayout;
    outline_ = new OutlineView(wb_);
    drawing->addWidget(outline_, 1);
    auto* zoom = new QSlider(Qt::Horizontal);
    zoom->setObjectName("Slider1");
    zoom->setRange(50, 400);
    zoom->setValue(static_cast<int>(wb_.sheet.val(Slider1)));
    zoom->setToolTip(QStringLiteral("Zoom"));
    connect(zoom, &QSlider::valueChanged, this, [this](int v) {
        wb_.sheet.set(Slider1, std::to_string(v));
        outline_->update();
    });
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
    redraw();
}

void AirfoilWindow::fillSlots() {
    static const char* fallback[3] = {"Générique Rapide", "Générique Début", "Générique Polyvalent"};
    for (int i = 0; i < 3; ++i) {
        if (wb_.sheet.text(CB_1[i]).empty()) {
            ShowMessage(wb_, "[#19] ", "Profil_" + std::to_string(i));
            wb_.sheet.selectText(CB_1[i], fallback[i]);
        }
        select(i);
    }
}

void AirfoilWindow::select(int slot) {
    // A run hands control to the event loop while it waits: a second choice
    // then would start a nested selection over the same store. Refuse it.
    if (busy_) return;
    busy_ = true;
    setEnabled(false);
    guarded(wb_, [&] { CB_1_Click(wb_, slot, compute_); });
    setEnabled(true);
    busy_ = false;
    redraw();
}

void AirfoilWindow::chooseFile(int slot) {
    if (busy_) return;
    const QString source = QFileDialog::getOpenFileName(this, QStringLiteral("Fichiers Profils"), QString(),
                                                        QStringLiteral("Fichiers Profils (*.dat *.DAT)"));
    if (source.isEmpty()) return;
    namespace fs = std::filesystem;
    const fs::path target = wb_.home() / "DATA" / fs::path(ss(source)).filename();
    if (upperCase(ss(source)) != upperCase(target.string())) {
        std::error_code ec;
        fs::copy_file(ss(source), target, fs::copy_options::overwrite_existing, ec);
        if (ec) {
            ShowMessage(wb_, "[#7] ", ec.message());
            return;
        }
    }
    guarded(wb_, [&] { Add_Profil(wb_, slot, target.string()); });
    select(slot);
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
