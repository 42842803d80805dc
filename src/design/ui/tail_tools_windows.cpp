#include "design/ui/tail_tools_windows.h"

#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

#include "entry/field_rules.h"
#include "design/tail_tools.h"
#include "core/ui/cell_widgets.h"
#include "core/ui/form_helpers.h"
#include "core/ui/sheet_bridge.h"
#include "core/ui/entry_controls.h"
#include "core/workbench.h"
#include "entry/entry_path.h"

namespace tarvokin::ui {

namespace {

// Both tails seen from behind: the V opened by OuvertureV, and the cross
// tail it stands for, whose panels are the V's projections.
class TailSketch : public QWidget {
public:
    explicit TailSketch(SheetBridge& b) : bridge_(b) {
        setObjectName("Picture1");
        setMinimumSize(320, 150);
        bridge_.watch(F_STAB_VE::OuvertureV, this, [this] { update(); });
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        p.setRenderHint(QPainter::Antialiasing);
        p.fillRect(rect(), Qt::white);
        double opening = bridge_.workbench().sheet.val(F_STAB_VE::OuvertureV);
        if (!(opening > 0 && opening < 180)) opening = 110;
        const double half = opening / 2 * 3.14159265 / 180;
        const double len = std::min(width() / 4.0 - 10, height() - 40.0);
        const QPen body(QColor(120, 120, 120), 1), panel(QColor(0, 70, 180), 3), proj(QColor(200, 60, 0), 1, Qt::DashLine);
        p.setFont(QFont(font().family(), 8));

        // The V: two panels from the fuselage, each half the opening off the vertical.
        const QPointF v(width() / 4.0, height() - 24.0);
        const QPointF right(v.x() + len * std::sin(half), v.y() - len * std::cos(half));
        const QPointF left(v.x() - len * std::sin(half), v.y() - len * std::cos(half));
        p.setPen(body);
        p.drawEllipse(v, 8, 8);
        p.setPen(panel);
        p.drawLine(v, right);
        p.drawLine(v, left);
        p.setPen(proj);
        p.drawLine(right, QPointF(right.x(), v.y()));
        p.drawLine(right, QPointF(v.x(), right.y()));
        p.setPen(Qt::black);
        p.drawText(QPointF(v.x() - 22, v.y() + 20), QStringLiteral("Stab V %1°").arg(opening, 0, 'f', 0));

        // The cross tail of the same projections: a horizontal stab and a fin.
        const QPointF n(3 * width() / 4.0, height() - 24.0);
        const double spanHalf = len * std::sin(half), fin = len * std::cos(half);
        p.setPen(body);
        p.drawEllipse(n, 8, 8);
        p.setPen(panel);
        p.drawLine(QPointF(n.x() - spanHalf, n.y()), QPointF(n.x() + spanHalf, n.y()));
        p.drawLine(n, QPointF(n.x(), n.y() - fin));
        p.setPen(Qt::black);
        p.drawText(QPointF(n.x() - 26, n.y() + 20), QStringLiteral("Stab Normal"));
    }

private:
    SheetBridge& bridge_;
};

QGroupBox* frame(const QString& title, QFormLayout*& f) {
    auto* box = new QGroupBox(title);
    f = new QFormLayout(box);
    return box;
}

}  // namespace

StabWindow::StabWindow(SheetBridge& b, QWidget* parent) : QWidget(parent), bridge_(b) {
    setObjectName("F_STAB");
    setWindowTitle(QStringLiteral("Calcul de la Surface du Stab"));
    using namespace F_STAB;
    auto* top = new QVBoxLayout(this);
    QFormLayout* f;
    top->addWidget(frame(QStringLiteral("Passer d'un Stab en Croix à un Stab en V"), f));
    addField(b, f, QStringLiteral("Surface du Stab Horizontal (dm)"), D11);
    addField(b, f, QStringLiteral("Surface de la Dérive  (dm)"), D12);
    addResult(b, f, QStringLiteral("Surface d'un 1/2 panneau  (dm)"), D14);
    addResult(b, f, QStringLiteral("Dièdre horizontal (°)"), D15);
    addResult(b, f, QStringLiteral("Angle du Vé (°)"), D16);
    top->addWidget(frame(QStringLiteral("Passer d'un Stab en V à un Stab en Croix"), f));
    addField(b, f, QStringLiteral("Surface d'un 1/2 panneau  (dm)"), D22);
    f->addRow(QStringLiteral("Angle du Vé (°)"), new CellCombo(b, Angle_V));
    addResult(b, f, QStringLiteral("Surface du Stab horizontal  (dm)"), D24);
    addResult(b, f, QStringLiteral("Surface de la Dérive  (dm)"), D25);
    top->addStretch(1);
}

void StabWindow::showEvent(QShowEvent* e) {
    QWidget::showEvent(e);
    // The figures shown always belong to the fields shown.
    Workbench& wb = bridge_.workbench();
    bridge_.enter([&] { Click(wb, "F_STAB", "Form_Activate"); });
}

StabVEWindow::StabVEWindow(SheetBridge& b, QWidget* parent) : QWidget(parent), bridge_(b) {
    setObjectName("F_STAB_VE");
    setWindowTitle(QStringLiteral("Equivalence Stab V <> Stab Normal"));
    using namespace F_STAB_VE;
    auto* top = new QVBoxLayout(this);
    top->addWidget(new TailSketch(b));

    auto* box = new QGroupBox(QStringLiteral("Cordes et longueur (mm)"));
    auto* g = new QGridLayout(box);
    for (int k = 0; k < 2; ++k) {
        auto* h = new QLabel(k == 0 ? QStringLiteral("Stab V") : QStringLiteral("Stab N"));
        h->setAlignment(Qt::AlignCenter);
        g->addWidget(h, 0, k + 1);
    }
    addGridRow(b, g, 1, QStringLiteral("Corde emplanture"), {Corde1V, Corde1N});
    addGridRow(b, g, 2, QStringLiteral("Corde saumon"), {Corde2V, Corde2N});
    addGridRow(b, g, 3, QStringLiteral("Longueur d'un panneau"), {LongueurV, LongueurN});
    top->addWidget(box);

    auto* opening = new QFormLayout;
    addField(b, opening, QStringLiteral("Ouverture du V (°)"), OuvertureV);
    top->addLayout(opening);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(commandButton(b, "F_STAB_VE", "Command1", -1, QStringLiteral("Stab V  >>  Stab Normal")));
    buttons->addWidget(commandButton(b, "F_STAB_VE", "Command2", -1, QStringLiteral("Stab Normal  >>  Stab V")));
    top->addLayout(buttons);
    top->addStretch(1);
}

}  // namespace tarvokin::ui
