#include "views/ui/design_summary.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QVBoxLayout>

#include "core/ui/cell_widgets.h"

namespace tarvokin::ui {

using namespace F_3D;

DesignSummary::DesignSummary(SheetBridge& b, QWidget* parent) : QWidget(parent) {
    setObjectName("Resume");
    auto* top = new QVBoxLayout(this);
    auto* name = new CellLabel(b, T_NOM_Modele);
    QFont big = name->font();
    big.setPointSizeF(big.pointSizeF() * 1.6);
    big.setBold(true);
    name->setFont(big);
    top->addWidget(name);
    auto* path = new CellLabel(b, T_PROJET);
    path->setWordWrap(true);
    top->addWidget(path);

    auto* wing = new QGroupBox;
    auto* wl = new QVBoxLayout(wing);
    auto* title = new CellLabel(b, Label17);
    QFont bold = title->font();
    bold.setBold(true);
    title->setFont(bold);
    wl->addWidget(title);
    for (int i = 0; i < Label_2.count; ++i) {
        auto* line = new CellLabel(b, Label_2[i]);
        line->setWordWrap(true);
        wl->addWidget(line);
    }
    top->addWidget(wing);

    auto* centring = new QGroupBox(QStringLiteral("Centrage"));
    auto* cf = new QFormLayout(centring);
    auto* cg = new CellLabel(b, b30);
    cg->setWordWrap(true);
    cf->addRow(QStringLiteral("Centre de gravité"), cg);
    auto* np = new CellLabel(b, j9);
    np->setWordWrap(true);
    cf->addRow(QStringLiteral("Foyer"), np);
    cf->addRow(QStringLiteral("Calage stab"), new CellLabel(b, f30a));
    cf->addRow(QStringLiteral("Calage aile"), new CellLabel(b, f31a));
    cf->addRow(QStringLiteral("Vé longitudinal"), new CellLabel(b, f32a));
    top->addWidget(centring);
    top->addStretch(1);
}

}  // namespace tarvokin::ui
