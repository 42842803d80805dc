#include "design/ui/fuselage_panel.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QVBoxLayout>

#include "core/ui/cell_widgets.h"
#include "core/ui/form_helpers.h"

namespace tarvokin::ui {

using namespace F_GEO_FUS;

FuselagePanel::FuselagePanel(SheetBridge& b, QWidget* parent) : QWidget(parent) {
    setObjectName("F_GEO_FUS");
    setWindowTitle(QStringLiteral("Fuselage"));
    auto* top = new QVBoxLayout(this);

    auto* shape = new QGroupBox(QStringLiteral("Fuselage"));
    auto* f = new QFormLayout(shape);
    addField(b, f, QStringLiteral("Longueur (mm)"), b24, QStringLiteral("Pas de fuselage : 0 ici"));
    addField(b, f, QStringLiteral("Pointe nez / BA Aile"), b25,
             QStringLiteral("Du bord d'attaque aile à la pointe du nez"));
    addField(b, f, QStringLiteral("Largeur (mm)"), D24, QStringLiteral("Plus grande largeur"));
    addField(b, f, QStringLiteral("Hauteur (mm)"), D25, QStringLiteral("Plus grande hauteur"));
    addField(b, f, QStringLiteral("Pos Hauteur Aile"), Text5);
    f->addRow(QStringLiteral("Type de fuselage"), new CellCombo(b, F_3D::Combo9));
    f->addRow(QStringLiteral("Type de queue"), new CellCombo(b, F_3D::Combo10));
    top->addWidget(shape);

    auto* results = new QGroupBox(QStringLiteral("Résultats"));
    auto* rf = new QFormLayout(results);
    addResult(b, rf, QStringLiteral("Surf. Mouillée (dm²)"), j24);
    addResult(b, rf, QStringLiteral("Surf. Portante (dm²)"), j25);
    addResult(b, rf, QStringLiteral("Foyer Fuselage (% longueur)"), j26);
    top->addWidget(results);
    top->addStretch(1);
}

}  // namespace tarvokin::ui
