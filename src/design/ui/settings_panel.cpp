#include "design/ui/settings_panel.h"

#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QVBoxLayout>

#include "core/ui/cell_widgets.h"
#include "core/ui/form_helpers.h"

namespace tarvokin::ui {

using namespace F_GEO_SF_REGLAGES;

SettingsPanel::SettingsPanel(SheetBridge& b, QWidget* parent) : QWidget(parent) {
    setObjectName("F_GEO_SF_REGLAGES");
    setWindowTitle(QStringLiteral("Règlages"));
    auto* top = new QVBoxLayout(this);

    auto* masses = new QGroupBox(QStringLiteral("Masses"));
    auto* mg = new QGridLayout(masses);
    mg->addWidget(new QLabel(QStringLiteral("mini")), 0, 1, Qt::AlignCenter);
    mg->addWidget(new QLabel(QStringLiteral("maxi")), 0, 2, Qt::AlignCenter);
    addGridRow(b, mg, 1, QStringLiteral("Masses (g)"), {H30, I30});
    addGridRow(b, mg, 2, QStringLiteral("Charges alaires (g/dm²)"), {H32, I32}, {}, {H32, I32});
    top->addWidget(masses);

    auto* trim = new QGroupBox(QStringLiteral("Centrage"));
    auto* f = new QFormLayout(trim);
    addField(b, f, QStringLiteral("Marge statique"), C29,
             QStringLiteral("de 0% (modèle parfaitement neutre) à 7% (modèle très stable)"));
    addField(b, f, QStringLiteral(" Cz de calage"), F29);
    f->addRow(QString(), new CellCheck(b, Ch_Aile, QStringLiteral("Aile Volante")));
    top->addWidget(trim);

    auto* cg = new QGroupBox(QStringLiteral("Centre de gravité et foyer"));
    auto* g = new QGridLayout(cg);
    g->addWidget(new QLabel(QStringLiteral("% CAM")), 0, 1, Qt::AlignCenter);
    g->addWidget(new QLabel(QStringLiteral("mm")), 0, 2, Qt::AlignCenter);
    g->addWidget(new QLabel(QStringLiteral("Cz aile")), 0, 3, Qt::AlignCenter);
    addGridRow(b, g, 1, QStringLiteral("Centrage"), {B30, C30, D30}, {}, {B30, C30, D30});
    addGridRow(b, g, 2, QStringLiteral("Foyer"), {B31, C31, D31}, {}, {B31, C31, D31});
    top->addWidget(cg);

    auto* inc = new QGroupBox(QStringLiteral("Calages"));
    auto* rf = new QFormLayout(inc);
    addResult(b, rf, QStringLiteral("Calage stab  (°)"), F30);
    addResult(b, rf, QStringLiteral("Calage aile (°)"), F31);
    addResult(b, rf, QStringLiteral("Vé longi. (°)"), F32);
    top->addWidget(inc);
    top->addStretch(1);
}

}  // namespace tarvokin::ui
