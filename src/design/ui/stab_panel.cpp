#include "design/ui/stab_panel.h"

#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "core/ui/cell_widgets.h"
#include "core/ui/form_helpers.h"

namespace tarvokin::ui {

using namespace F_GEO_STAB;

StabPanel::StabPanel(SheetBridge& b, QWidget* parent) : QWidget(parent) {
    setObjectName("F_GEO_STAB");
    setWindowTitle(QStringLiteral("Stab et Dérive"));
    auto* top = new QVBoxLayout(this);

    auto* panels = new QGroupBox(QStringLiteral("Stab"));
    auto* g = new QGridLayout(panels);
    addPanelHeads(g);
    addGridRow(b, g, 1, QStringLiteral("Corde Emplanture"), {b16, c16, D16, e16, f16}, {}, {c16, D16, e16, f16});
    addGridRow(b, g, 2, QStringLiteral("Corde Saumon"), {b17, c17, d17, e17, f17});
    addGridRow(b, g, 3, QStringLiteral("Longueur"), {b18, c18, d18, e18, f18});
    addGridRow(b, g, 4, QStringLiteral("Flèche BA"), {b19, c19, d19, e19, f19},
               QStringLiteral("La flèche peut être négative (vers l'avant)"));
    top->addWidget(panels);

    auto* place = new QGroupBox(QStringLiteral("Position"));
    auto* pf = new QFormLayout(place);
    addField(b, pf, QStringLiteral("Levier de Stab"), b20);
    addField(b, pf, QStringLiteral("Hauteur stab /aile"), Text4);
    auto* opening = new CellCombo(b, b21);
    opening->setToolTip(QStringLiteral("Un stab plat a une ouverture de 180°"));
    pf->addRow(QStringLiteral("Ouverture (°)"), opening);
    pf->addRow(QString(), new CellCheck(b, Check1, QStringLiteral("Stab en V")));
    top->addWidget(place);

    auto* results = new QGroupBox(QStringLiteral("Résultats"));
    auto* rf = new QFormLayout(results);
    addResult(b, rf, QStringLiteral("Surface (dm²)"), j15);
    addResult(b, rf, QStringLiteral("Corde moyenne (mm)"), j16);
    addResult(b, rf, QStringLiteral("Envergure (mm)"), j17);
    addResult(b, rf, QStringLiteral("Allongement"), j18);
    addResult(b, rf, QStringLiteral("Allongement elliptique"), j19);
    addResult(b, rf, QStringLiteral("Foyer (25%)"), J20);
    addResult(b, rf, QStringLiteral("Bras de levier (mm)"), j21);
    addResult(b, rf, QStringLiteral("Coefficient de volume"), j22);
    top->addWidget(results);

    auto* surfaces = new QGroupBox(QStringLiteral("Profondeur"));
    auto* sg = new QGridLayout(surfaces);
    addSurfaceHeads(sg);
    addGridRow(b, sg, 1, QStringLiteral("Profondeur"), {T_Prof_PosL, T_Prof_PosR, T_Prof_Pourc, T_Prof_PourcD});
    top->addWidget(surfaces);

    auto* fin = new QGroupBox(QStringLiteral("Dérive"));
    auto* ff = new QFormLayout(fin);
    addField(b, ff, QStringLiteral("Corde Emplanture"), Text12);
    addField(b, ff, QStringLiteral("Corde Saumon"), Text11);
    addField(b, ff, QStringLiteral("Hauteur"), Text10);
    addField(b, ff, QStringLiteral("Flèche"), Text9);
    ff->addRow(QString(), new CellCheck(b, Check2, QStringLiteral("Bi Dérive")));
    addField(b, ff, QStringLiteral("Entraxe"), Text13);
    addField(b, ff, QStringLiteral("Pos Dérive (Longueur)"), Text14);
    addField(b, ff, QStringLiteral("Pos Dérive (Hauteur)"), Text2);
    auto* rudder = new QHBoxLayout;
    rudder->addWidget(new QLabel(QStringLiteral("Haut")));
    rudder->addWidget(new CellEdit(b, T_Deriv_PosH));
    rudder->addWidget(new QLabel(QStringLiteral("Bas")));
    rudder->addWidget(new CellEdit(b, T_Deriv_PosB));
    ff->addRow(QStringLiteral("Gouverne"), rudder);
    top->addWidget(fin);
    top->addStretch(1);
}

}  // namespace tarvokin::ui
