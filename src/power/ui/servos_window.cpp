#include "power/ui/servos_window.h"

#include <QFrame>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QVBoxLayout>
#include <cmath>

#include "power/servos.h"
#include "power/ui/power_ui.h"
#include "core/ui/cell_widgets.h"
#include "core/ui/chart_panel.h"
#include "core/ui/sheet_bridge.h"
#include "core/workbench.h"

namespace tarvokin::ui {

namespace {

// What the five inputs of a column mean on a control surface: the surface of
// span L between the chords C mini and C maxi, deflected by A1 while the servo
// arm turns by A2.
class LinkageSketch : public QWidget {
public:
    LinkageSketch() {
        setObjectName("Picture1");
        setMinimumSize(300, 150);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        p.setRenderHint(QPainter::Antialiasing);
        p.fillRect(rect(), Qt::white);
        const QPen outline(QColor(40, 40, 40), 1.5);
        const QPen dim(QColor(0, 90, 200), 1);
        p.setFont(QFont(font().family(), 8));

        // Plan of the surface: a trapezoid with its hinge line at the top.
        const double x0 = 12, y0 = 26, span = 130, cmax = 46, cmin = 28;
        QPolygonF plan{{x0, y0}, {x0 + span, y0}, {x0 + span, y0 + cmin}, {x0, y0 + cmax}};
        p.setPen(outline);
        p.setBrush(QColor(225, 235, 250));
        p.drawPolygon(plan);
        p.setPen(dim);
        p.drawLine(QPointF(x0, y0 - 10), QPointF(x0 + span, y0 - 10));
        p.drawText(QPointF(x0 + span / 2 - 4, y0 - 13), QStringLiteral("L"));
        p.drawText(QPointF(x0 - 2, y0 + cmax + 14), QStringLiteral("C maxi"));
        p.drawText(QPointF(x0 + span - 30, y0 + cmin + 14), QStringLiteral("C mini"));

        // Side view: the surface deflected by A1 behind its hinge, the servo
        // arm turned by A2, the pushrod between their horns.
        const QPointF hinge(200, 60);
        const double a1 = 25 * 3.14159 / 180, chord = 70;
        const QPointF tip(hinge.x() + chord * std::cos(a1), hinge.y() + chord * std::sin(a1));
        p.setPen(QPen(QColor(150, 150, 150), 1, Qt::DashLine));
        p.drawLine(hinge, QPointF(hinge.x() + chord, hinge.y()));
        p.setPen(QPen(QColor(40, 40, 40), 3));
        p.drawLine(hinge, tip);
        p.setPen(dim);
        p.setBrush(Qt::NoBrush);
        QPainterPath arc1;
        arc1.arcMoveTo(QRectF(hinge.x() - 40, hinge.y() - 40, 80, 80), 0);
        arc1.arcTo(QRectF(hinge.x() - 40, hinge.y() - 40, 80, 80), 0, -25);
        p.drawPath(arc1);
        p.drawText(QPointF(hinge.x() + 44, hinge.y() + 12), QStringLiteral("A1"));

        const QPointF servo(170, 118);
        const double a2 = 35 * 3.14159 / 180, arm = 22;
        p.setPen(outline);
        p.setBrush(QColor(230, 230, 230));
        p.drawRect(QRectF(servo.x() - 22, servo.y() - 8, 44, 22));
        const QPointF armTip(servo.x() + arm * std::sin(a2), servo.y() - arm * std::cos(a2));
        p.setPen(QPen(QColor(40, 40, 40), 2.5));
        p.drawLine(servo, armTip);
        p.setPen(QPen(QColor(40, 40, 40), 1));
        p.drawLine(armTip, QPointF(hinge.x() + 6, hinge.y() + 14));
        p.setPen(dim);
        QPainterPath arc2;
        const QRectF r2(servo.x() - 30, servo.y() - 30, 60, 60);
        arc2.arcMoveTo(r2, 90);
        arc2.arcTo(r2, 90, -35);
        p.drawPath(arc2);
        p.drawText(QPointF(servo.x() + 18, servo.y() - 24), QStringLiteral("A2"));
    }
};

QLabel* head(const QString& text) {
    auto* l = new QLabel(text);
    QFont bold = l->font();
    bold.setBold(true);
    l->setFont(bold);
    l->setAlignment(Qt::AlignCenter);
    return l;
}

}  // namespace

ServosWindow::ServosWindow(Workbench& wb, SheetBridge& b, QWidget* parent) : QWidget(parent), wb_(wb), bridge_(b) {
    setObjectName("F_SERVOS");
    setWindowTitle(QStringLiteral("SERVOS"));
    using namespace F_SERVOS;
    const auto& cols = servoColumns();

    auto* box = new QGroupBox(QStringLiteral("Gouvernes classiques"));
    box->setObjectName("SSTab2");
    auto* g = new QGridLayout(box);
    const char* heads[4] = {"Profondeur", "Dérive", "Aileron", "Volet"};
    for (int k = 0; k < 4; ++k) g->addWidget(head(QString::fromUtf8(heads[k])), 0, k + 1);
    int row = 1;
    g->addWidget(new QLabel(QStringLiteral("Vitesse (Km/h)")), row, 0);
    auto* speed = new CellEdit(bridge_, b5);
    speed->setToolTip(QStringLiteral("Vitesse maximale du modèle, commune aux quatre gouvernes"));
    g->addWidget(speed, row++, 1);
    struct InputRow {
        const char* caption;
        Cell ServoColumn::*member;
    };
    const InputRow inputs[5] = {{"Angle gouverne A1 (°)", &ServoColumn::a1},
                                {"Angle servo A2 (°)", &ServoColumn::a2},
                                {"Longueur L (mm)", &ServoColumn::length},
                                {"Corde_C mini (mm)", &ServoColumn::chordMin},
                                {"Corde_C maxi (mm)", &ServoColumn::chordMax}};
    for (const InputRow& in : inputs) {
        g->addWidget(new QLabel(QString::fromUtf8(in.caption)), row, 0);
        for (int k = 0; k < 4; ++k) g->addWidget(new CellEdit(bridge_, cols[static_cast<size_t>(k)].*in.member), row, k + 1);
        ++row;
    }
    auto* line = new QFrame;
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Sunken);
    g->addWidget(line, row++, 0, 1, 5);
    g->addWidget(new QLabel(QStringLiteral("Débattement (mm)")), row, 0);
    for (int k = 0; k < 4; ++k) g->addWidget(resultLabel(bridge_, cols[static_cast<size_t>(k)].travel), row, k + 1);
    ++row;
    g->addWidget(new QLabel(QStringLiteral("Couplemax (Kg /cm)")), row, 0);
    for (int k = 0; k < 4; ++k) g->addWidget(resultLabel(bridge_, cols[static_cast<size_t>(k)].torque), row, k + 1);
    ++row;

    // The flaps' second position: another surface angle, same servo and surface.
    auto* flap2 = new QGroupBox(QStringLiteral("Volets, 2ème position"));
    auto* fg = new QGridLayout(flap2);
    fg->addWidget(new QLabel(QStringLiteral("Angle gouverne A1 (°)")), 0, 0);
    fg->addWidget(new CellEdit(bridge_, k10), 0, 1);
    fg->addWidget(new QLabel(QStringLiteral("Débattement (mm)")), 1, 0);
    fg->addWidget(resultLabel(bridge_, k11), 1, 1);
    fg->addWidget(new QLabel(QStringLiteral("Couplemax (Kg /cm)")), 2, 0);
    fg->addWidget(resultLabel(bridge_, k13), 2, 1);

    auto* side = new QVBoxLayout;
    side->addWidget(new LinkageSketch);
    side->addWidget(flap2);
    side->addStretch(1);
    auto* upper = new QHBoxLayout;
    upper->addWidget(box, 3);
    upper->addLayout(side, 1);

    auto* chartGrid = new QGridLayout;
    for (int k = 0; k < 4; ++k) {
        auto* c = new ChartPanel;
        c->setObjectName(QStringLiteral("MSChart1_%1").arg(k));
        c->setMinimumSize(300, 220);
        chartGrid->addWidget(c, k / 2, k % 2);
        charts_.push_back(c);
    }
    auto* top = new QVBoxLayout(this);
    top->addLayout(upper);
    top->addLayout(chartGrid, 1);

    // The curves follow every input; the master recalculation runs the
    // refresh of the open window, after which they are drawn again.
    redraw_ = new RedrawLater(this, [this] { drawCharts(); });
    redraw_->watch(bridge_, b5);
    for (const ServoColumn& c : cols) redraw_->watch(bridge_, {c.a1, c.a2, c.length, c.chordMin, c.chordMax, c.torque});
    afterPanelRefresh(wb_, button::Servos, this, [this] { redraw_->request(); });
    resize(1000, 860);
}

void ServosWindow::drawCharts() {
    const std::vector<ChartData> data = ServoCharts(wb_);
    for (size_t k = 0; k < charts_.size() && k < data.size(); ++k) charts_[k]->setData(data[k]);
}

}  // namespace tarvokin::ui
