#include "power/ui/motorisation_window.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QSplitter>
#include <QVBoxLayout>

#include "power/calc_mot.h"
#include "power/motorisation.h"
#include "power/ui/power_ui.h"
#include "core/ui/cell_widgets.h"
#include "core/ui/chart_panel.h"
#include "core/ui/form_helpers.h"
#include "core/ui/sheet_bridge.h"
#include "core/workbench.h"

namespace tarvokin::ui {

MotorisationWindow::MotorisationWindow(Workbench& wb, SheetBridge& b, QWidget* parent)
    : QWidget(parent), wb_(wb), bridge_(b) {
    setObjectName("F_MOTORISATIONS");
    setWindowTitle(QStringLiteral("Motorisation"));

    auto* left = new QWidget;
    auto* lv = new QVBoxLayout(left);
    lv->setContentsMargins(0, 0, 0, 0);

    auto* motor = new QGroupBox(QStringLiteral("Moteur"));
    auto* mf = new QFormLayout(motor);
    auto* list = new CellCombo(bridge_, F_MOTORISATIONS::CB_MOT);
    list->setToolTip(QStringLiteral("Marque@Modèle : le choix est écrit dans le projet"));
    list->setMinimumContentsLength(18);
    mf->addRow(QStringLiteral("Marque@Modèle"), list);
    mf->addRow(QString(), new CellCheck(bridge_, F_MOTORISATIONS::Check1,
                                        QStringLiteral("Seulement les moteurs du type choisi")));
    addField(bridge_, mf, QStringLiteral("Ra (ohm)"), F_MOTORISATIONS::T_Ra);
    addField(bridge_, mf, QStringLiteral("Io (A)"), F_MOTORISATIONS::T_Io);
    addField(bridge_, mf, QStringLiteral("Kv (Tr/min/V)"), F_MOTORISATIONS::d8);
    lv->addWidget(motor);

    // What the curves are drawn with: the power train of the design window.
    auto* train = new QGroupBox(QStringLiteral("Motorisation du modèle"));
    auto* tf = new QFormLayout(train);
    addResult(bridge_, tf, QStringLiteral("Accus"), F_3D::Combo1);
    addResult(bridge_, tf, QStringLiteral("Nombre d'éléments"), F_3D::Combo2);
    addResult(bridge_, tf, QStringLiteral("Tension (V)"), F_3D::b7);
    addResult(bridge_, tf, QStringLiteral("Type de moteur"), F_3D::Combo4);
    addResult(bridge_, tf, QStringLiteral("I (A)"), F_3D::d6);
    addResult(bridge_, tf, QStringLiteral("Réduction 1 :"), F_3D::d7);
    addResult(bridge_, tf, QStringLiteral("Hélice"), F_3D::Combo6);
    addResult(bridge_, tf, QStringLiteral("Diamètre (')"), F_3D::f5);
    addResult(bridge_, tf, QStringLiteral("Pas (')"), F_3D::f6);
    lv->addWidget(train);

    auto* perf = new QGroupBox(QStringLiteral("Performances"));
    auto* pf = new QFormLayout(perf);
    addResult(bridge_, pf, QStringLiteral("Vitesse palier (Km/h)"), F_3D::h3);
    addResult(bridge_, pf, QStringLiteral("Vz montée masse mini (m/s)"), F_3D::h4);
    addResult(bridge_, pf, QStringLiteral("Vz montée masse maxi (m/s)"), F_3D::h6);
    addResult(bridge_, pf, QStringLiteral("Temps moteur (min)"), F_3D::h8);
    lv->addWidget(perf);
    lv->addStretch(1);

    auto* balance = new ChartPanel;
    balance->setObjectName("MSChart1");
    balance->setMinimumSize(480, 300);
    charts_.push_back(balance);
    auto* curves = new QWidget;
    auto* ch = new QHBoxLayout(curves);
    ch->setContentsMargins(0, 0, 0, 0);
    for (int k = 0; k < 2; ++k) {
        auto* c = new ChartPanel;
        c->setObjectName(QStringLiteral("Chart_Helice_Mot_%1").arg(k));
        ch->addWidget(c);
        charts_.push_back(c);
    }
    auto* right = new QSplitter(Qt::Vertical);
    right->addWidget(balance);
    right->addWidget(curves);
    right->setSizes({440, 320});

    auto* split = new QSplitter(Qt::Horizontal);
    split->addWidget(left);
    split->addWidget(right);
    split->setStretchFactor(0, 0);
    split->setStretchFactor(1, 1);
    auto* top = new QVBoxLayout(this);
    top->setContentsMargins(4, 4, 4, 4);
    top->addWidget(split);

    redraw_ = new RedrawLater(this, [this] { drawCharts(); });
    redraw_->watch(bridge_, {F_MOTORISATIONS::T_Ra, F_MOTORISATIONS::T_Io, F_MOTORISATIONS::d8, F_3D::h3, F_3D::h4,
                             F_3D::b7, F_3D::d6, F_3D::d7, F_3D::f5, F_3D::f6, F_3D::Combo3, F_3D::Combo4,
                             F_3D::Combo6, F_3D::CX0_STAB, F_3D::C32});
    afterPanelRefresh(wb_, button::Motorisation, this, [this] { redraw_->request(); });
    resize(1200, 760);
}

void MotorisationWindow::drawCharts() {
    charts_[0]->setData(Equilibre_Puissances(wb_).chart);
    const std::vector<ChartData> current = Chart_Helice_Mot(DesignWindowInputs(wb_));
    for (size_t k = 0; k < 2 && k < current.size(); ++k) charts_[1 + k]->setData(current[k]);
}

}  // namespace tarvokin::ui
