#include "airfoils/ui/naca_window.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QVBoxLayout>
#include <algorithm>
#include <optional>

#include "airfoils/naca_panel.h"
#include "core/ui/cell_widgets.h"
#include "core/ui/entry_controls.h"
#include "core/ui/sheet_bridge.h"
#include "core/workbench.h"

namespace tarvokin::ui {

namespace {

// Picture1: the outline at true proportions, the mean line and the points
// on request.
class OutlineView : public QWidget {
public:
    explicit OutlineView(Workbench& wb) : wb_(wb) {
        setObjectName("Picture1");
        setMinimumSize(520, 220);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        p.setRenderHint(QPainter::Antialiasing);
        p.fillRect(rect(), Qt::white);
        const NacaAirfoil& a = wb_.generators.naca;
        const double margin = 20, scale = std::max(1.0, width() - 2 * margin);
        const double mid = height() / 2.0;
        auto at = [&](const OutlinePoint& q) { return QPointF(margin + q.x * scale, mid - q.y * scale); };
        p.setPen(QPen(QColor(200, 200, 200), 1, Qt::DashLine));
        p.drawLine(QPointF(margin, mid), QPointF(margin + scale, mid));
        if (a.upper.empty()) return;
        const OutlinePoints outline = NacaOutline(a);
        QPainterPath path(at(outline.front()));
        for (const OutlinePoint& q : outline) path.lineTo(at(q));
        p.setPen(QPen(QColor(0, 60, 160), 1.5));
        p.drawPath(path);
        if (wb_.sheet.on(F_NACA::Check1) && a.hasMeanLine) {
            p.setPen(QPen(QColor(200, 40, 40), 1));
            for (size_t i = 1; i < a.camber.size(); ++i) p.drawLine(at(a.camber[i - 1]), at(a.camber[i]));
        }
        if (wb_.sheet.on(F_NACA::Check2)) {
            p.setPen(Qt::NoPen);
            p.setBrush(Qt::black);
            for (const OutlinePoint& q : outline) p.drawEllipse(at(q), 1.8, 1.8);
        }
    }

public:
    // Repaints when what it draws changed: every entry of the run reaches
    // the window, most of them changing nothing here.
    void follow() {
        const NacaAirfoil& a = wb_.generators.naca;
        Shown now{a.upper, a.lower, a.camber, a.hasMeanLine, wb_.sheet.on(F_NACA::Check1), wb_.sheet.on(F_NACA::Check2)};
        if (now == shown_) return;
        shown_ = std::move(now);
        update();
    }

private:
    struct Shown {
        OutlinePoints upper, lower, camber;
        bool meanLine = false, meanLineAsked = false, points = false;
        bool operator==(const Shown&) const = default;
    };
    Workbench& wb_;
    std::optional<Shown> shown_;
};

}  // namespace

NacaWindow::NacaWindow(SheetBridge& b, QWidget* parent) : QWidget(parent), bridge_(b) {
    setObjectName("F_NACA");
    setWindowTitle(QStringLiteral("Naca generator"));
    Workbench& wb = b.workbench();
    auto* top = new QHBoxLayout(this);
    auto* left = new QVBoxLayout;
    top->addLayout(left);

    auto* families = new QGroupBox(QStringLiteral("Famille"));
    auto* fl = new QVBoxLayout(families);
    for (int i = 0; i < naca::kFamilies; ++i)
        fl->addWidget(new CellRadio(b, F_NACA::Option1[i], QString::fromUtf8(NacaFamilyCaption(i))));
    left->addWidget(families);

    auto* inputs = new QGroupBox(QStringLiteral("Paramètres"));
    auto* il = new QVBoxLayout(inputs);
    for (int i = 0; i < naca::kMaxInputs; ++i) {
        auto* row = new QWidget;
        auto* g = new QGridLayout(row);
        g->setContentsMargins(0, 0, 0, 0);
        g->addWidget(new CellLabel(b, F_NACA::Label1[i]), 0, 0);
        auto* digits = new CellLabel(b, F_NACA::Label2[i]);
        digits->setStyleSheet(QStringLiteral("color: gray"));
        g->addWidget(digits, 0, 1);
        auto* edit = new CellEdit(b, F_NACA::T_DESIGN[i]);
        edit->setMaximumWidth(60);
        g->addWidget(edit, 1, 0);
        sliders_[i] = new CellSlider(b, F_NACA::HScroll4[i], Qt::Horizontal, 0, 99);
        g->addWidget(sliders_[i], 1, 1);
        rows_[i] = row;
        il->addWidget(row);
    }
    left->addWidget(inputs);

    auto* points = new QGroupBox(QStringLiteral("Nbre de Points"));
    auto* pl = new QGridLayout(points);
    auto* npp = new CellEdit(b, F_NACA::T_NPP);
    npp->setMaximumWidth(60);
    pl->addWidget(npp, 0, 0);
    const int most = std::clamp(static_cast<int>(wb.sheet.val(F_NACA::T_MPTS)), 2, naca::kMaxPoints);
    pl->addWidget(new CellSlider(b, F_NACA::H_Points, Qt::Horizontal, 2, most), 0, 1);
    for (int d = 0; d < 4; ++d)
        pl->addWidget(new CellRadio(b, F_NACA::Option2[d], QString::fromUtf8(NacaDistributionCaption(d))), d + 1, 0, 1, 2);
    left->addWidget(points);
    left->addStretch(1);

    auto* right = new QVBoxLayout;
    top->addLayout(right, 1);
    outline_ = new OutlineView(wb);
    right->addWidget(outline_, 1);
    auto* switches = new QHBoxLayout;
    switches->addWidget(new CellCheck(b, F_NACA::Check1, QStringLiteral("Ligne médiane")));
    switches->addWidget(new CellCheck(b, F_NACA::Check2, QStringLiteral("Points On / Off")));
    switches->addStretch(1);
    right->addLayout(switches);
    auto* results = new QHBoxLayout;
    auto* name = new CellLabel(b, F_NACA::Label5);
    QFont big = name->font();
    big.setPointSize(big.pointSize() + 4);
    big.setBold(true);
    name->setFont(big);
    results->addWidget(name);
    results->addSpacing(20);
    results->addWidget(new QLabel(QStringLiteral("Epaisseur (%)")));
    results->addWidget(new CellLabel(b, F_NACA::T_Thicknes));
    results->addStretch(1);
    results->addWidget(commandButton(b, "F_NACA", "Command2", -1, QStringLiteral("Sauvegarder et générer les Polaires")));
    right->addLayout(results);
    auto* status = new CellLabel(b, F_NACA::StatusBar1);
    status->setObjectName("StatusBar1");
    status->setStyleSheet(QStringLiteral("color: #a00000"));
    right->addWidget(status);

    for (int i = 0; i < naca::kFamilies; ++i) b.watch(F_NACA::Option1[i], this, [this] { fitInputs(); });
    auto* redraw = new DeferredRedraw(this, [this] { static_cast<OutlineView*>(outline_)->follow(); });
    connect(&b, &SheetBridge::entryDone, redraw, &DeferredRedraw::now);
    for (Cell c : {F_NACA::Check1, F_NACA::Check2, F_NACA::Label5}) b.watch(c, this, [redraw] { redraw->request(); });
    fitInputs();
}

void NacaWindow::fitInputs() {
    const auto& inputs = NacaInputs(NacaFamilyOf(bridge_.workbench().sheet));
    for (int i = 0; i < naca::kMaxInputs; ++i) {
        const bool used = i < static_cast<int>(inputs.size());
        rows_[i]->setVisible(used);
        if (used) {
            QSignalBlocker block(sliders_[i]);
            sliders_[i]->setRange(inputs[static_cast<size_t>(i)].low, inputs[static_cast<size_t>(i)].high);
        }
    }
}

void NacaWindow::showEvent(QShowEvent* e) {
    QWidget::showEvent(e);
    // The outline on show always belongs to the fields on show.
    Workbench& wb = bridge_.workbench();
    guarded(wb, [&] { Module1(wb); });
    static_cast<OutlineView*>(outline_)->follow();
    outline_->update();
}

}  // namespace tarvokin::ui
