#include "design/ui/wing_panel.h"

#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QVBoxLayout>

#include "core/ui/cell_widgets.h"
#include "core/ui/form_helpers.h"

namespace tarvokin::ui {

using namespace F_GEO_SF;

WingPanel::WingPanel(SheetBridge& b, QWidget* parent) : QWidget(parent) {
    setObjectName("F_GEO_SF");
    setWindowTitle(QStringLiteral("Géométrie de l'aile"));
    auto* top = new QVBoxLayout(this);

    auto* panels = new QGroupBox(QStringLiteral("Panneaux (une demi-aile)"));
    auto* g = new QGridLayout(panels);
    addPanelHeads(g);
    // Roots of panels 2..5 follow the tip of the panel before: results, not entries.
    addGridRow(b, g, 1, QStringLiteral("Corde Emplanture"), {b5, c5, d5, e5, f5}, {}, {c5, d5, e5, f5});
    addGridRow(b, g, 2, QStringLiteral("Corde Saumon"), {b6, c6, d6, e6, f6});
    addGridRow(b, g, 3, QStringLiteral("Longueur"), {b7, c7, d7, e7, f7});
    addGridRow(b, g, 4, QStringLiteral("Flèche BA"), {b8, c8, d8, e8, f8},
               QStringLiteral("La flèche peut être négative (vers l'avant)"));
    addGridRow(b, g, 5, QStringLiteral("Vrillage (°)"), {b9, c9, d9, e9, f9});
    addGridRow(b, g, 6, QStringLiteral("Dièdre"), {B10, C10, D10, E10, F10});
    top->addWidget(panels);

    auto* speed = new QGroupBox(QStringLiteral("Vitesse et Reynolds"));
    auto* sg = new QGridLayout(speed);
    sg->addWidget(new QLabel(QStringLiteral("V (Km/h)")), 0, 0);
    // Column heads the sheet holds as fixed words: captions for the language.
    for (Cell head : {b11, c11, D11}) {
        auto* l = new CellLabel(b, head);
        l->setProperty("captionCell", true);
        sg->addWidget(l, 0, head == b11 ? 1 : head == c11 ? 2 : 3);
    }
    sg->addWidget(new CellEdit(b, a12), 1, 0);
    for (int i = 0; i < 3; ++i) {
        auto* l = new CellLabel(b, i == 0 ? b12 : i == 1 ? c12 : D12);
        l->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        l->setFrameShape(QFrame::StyledPanel);
        sg->addWidget(l, 1, i + 1);
    }
    top->addWidget(speed);

    auto* results = new QGroupBox(QStringLiteral("Résultats"));
    auto* f = new QFormLayout(results);
    addResult(b, f, QStringLiteral("Surface (dm)"), j4);
    addResult(b, f, QStringLiteral("Envergure (mm)"), j6);
    addResult(b, f, QStringLiteral("Allongement"), j7);
    addResult(b, f, QStringLiteral("Foyer (25%)"), j9);
    f->addRow(QString(), new CellLabel(b, j99));
    addResult(b, f, QStringLiteral("Cm0 profil"), j11);
    addResult(b, f, QStringLiteral("Alpha0 profil (°)"), j12);
    top->addWidget(results);

    auto* moving = new QGroupBox(QStringLiteral("Gouvernes"));
    auto* mg = new QGridLayout(moving);
    addSurfaceHeads(mg);
    addGridRow(b, mg, 1, QStringLiteral("Ailerons"), {T_Ail_PosL, T_Ail_PosR, T_Ail_Pourc, T_Ail_PourcD});
    addGridRow(b, mg, 2, QStringLiteral("Volets"), {T_Flap_PosL, T_Flap_PosR, T_Flap_Pourc, T_Flap_PourcD});
    top->addWidget(moving);
    top->addStretch(1);
}

}  // namespace tarvokin::ui
