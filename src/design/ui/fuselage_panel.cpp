#include "design/ui/fuselage_panel.h"

#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "core/ui/cell_widgets.h"
#include "core/ui/entry_controls.h"
#include "core/ui/form_helpers.h"
#include "design/ui/fuselage_drawing.h"

namespace tarvokin::ui {

using namespace F_GEO_FUS;

FuselagePanel::FuselagePanel(SheetBridge& b, QWidget* parent) : QWidget(parent) {
    setObjectName("F_GEO_FUS");
    setWindowTitle(QStringLiteral("Fuselage"));
    auto* top = new QVBoxLayout(this);

    auto* row = new QHBoxLayout;
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
    row->addWidget(shape);

    auto* right = new QVBoxLayout;
    auto* kind = new QGroupBox(QStringLiteral("Fermeture"));
    auto* kl = new QVBoxLayout(kind);
    kl->addWidget(new CellRadio(b, Option1, QStringLiteral("Tube ouvert")));
    kl->addWidget(new CellRadio(b, Option2, QStringLiteral("Nez fermé")));
    kl->addWidget(new CellRadio(b, Option3, QStringLiteral("Complète")));
    right->addWidget(kind);
    auto* results = new QGroupBox(QStringLiteral("Résultats"));
    auto* rf = new QFormLayout(results);
    addResult(b, rf, QStringLiteral("Surf. Mouillée (dm²)"), j24);
    addResult(b, rf, QStringLiteral("Surf. Portante (dm²)"), j25);
    addResult(b, rf, QStringLiteral("Foyer Fuselage (% longueur)"), j26);
    right->addWidget(results);
    right->addWidget(commandButton(b, "F_GEO_FUS", "PB_COUPLES", -1, QStringLiteral("Générateur de Couples")));
    row->addLayout(right);
    top->addLayout(row);

    auto* drawings = new QGroupBox(QStringLiteral("Couples"));
    auto* dl = new QVBoxLayout(drawings);
    side_ = new FuselageDrawing(b, FuselageView::Side);
    top_ = new FuselageDrawing(b, FuselageView::Top);
    dl->addWidget(side_, 1);
    dl->addWidget(top_, 1);
    auto* marker = new CellLabel(b, L_Marker);
    marker->setObjectName("L_Marker");
    dl->addWidget(marker);
    dl->addWidget(new QLabel(QStringLiteral(
        "Glisser un couple : bouton gauche. Bouton droit : les surfaces suivent le mouvement.")));
    top->addWidget(drawings, 1);

    // The shape factors, in percent, beside the drawings they act on.
    auto* factors = new QGroupBox(QStringLiteral("Formes (%)"));
    auto* g = new QGridLayout(factors);
    const struct {
        Cell cell;
        const char* caption;
        Qt::Orientation o;
    } sliders[] = {{HScroll1, "Largeur", Qt::Horizontal},  {HScroll2, "Longueur", Qt::Horizontal},
                   {VScroll1, "Dessus", Qt::Horizontal},   {VScroll2, "Dessous", Qt::Horizontal},
                   {VScroll3, "Hauteur", Qt::Horizontal}};
    int i = 0;
    for (const auto& s : sliders) {
        const int r = i / 2, c = 3 * (i % 2);
        g->addWidget(new QLabel(QString::fromUtf8(s.caption)), r, c);
        g->addWidget(new CellSlider(b, s.cell, s.o, 10, 300), r, c + 1);
        g->addWidget(new CellLabel(b, s.cell), r, c + 2);
        ++i;
    }
    top->addWidget(factors);

}

}  // namespace tarvokin::ui
