#include "design/ui/vlm_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFileDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QVBoxLayout>

#include "design/ui/analysis_controls.h"
#include "design/vlm.h"
#include "core/ui/cell_widgets.h"
#include "core/ui/chart_panel.h"
#include "core/ui/sheet_bridge.h"
#include "core/workbench.h"
#include "core/ui/entry_controls.h"
#include "entry/entry_path.h"

namespace tarvokin::ui {

using namespace F_VLM;

namespace {

CellLabel* result(SheetBridge& b, Cell c, const char* tooltip = nullptr) {
    auto* l = new CellLabel(b, c);
    l->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    l->setFrameShape(QFrame::StyledPanel);
    if (tooltip) l->setToolTip(QString::fromUtf8(tooltip));
    return l;
}

QLabel* caption(const char* text) { return new QLabel(QString::fromUtf8(text)); }

// A right click on a chart saves it as a picture, PNG or SVG by the name given.
void offerSave(ChartPanel* c) {
    c->setContextMenuPolicy(Qt::CustomContextMenu);
    QObject::connect(c, &QWidget::customContextMenuRequested, c, [c](const QPoint& at) {
        QMenu menu;
        QAction* save = menu.addAction(QStringLiteral("Enregistrer le graphique…"));
        if (menu.exec(c->mapToGlobal(at)) != save) return;
        const QString file = QFileDialog::getSaveFileName(c, QStringLiteral("Enregistrer le graphique"), QString(),
                                                          QStringLiteral("Images (*.png *.svg)"));
        if (file.isEmpty()) return;
        file.endsWith(QStringLiteral(".svg"), Qt::CaseInsensitive) ? c->saveSvg(file) : c->savePng(file);
    });
}

// A slider of the panel: its moves write the fields and recompute.
CellSlider* slider(SheetBridge& b, Cell c, int low, int high) { return new CellSlider(b, c, Qt::Horizontal, low, high); }

}  // namespace

VlmWindow::VlmWindow(Workbench& wb, SheetBridge& b, QWidget* parent) : QWidget(parent), wb_(wb), bridge_(b) {
    setObjectName("F_VLM");
    setWindowTitle(qs(wb_.sheet.text(Caption)));
    if (!wb_.beep) wb_.beep = [] { QApplication::beep(); };

    auto* top = new QHBoxLayout(this);
    auto* left = new QVBoxLayout;
    left->addWidget(angleBox());
    left->addWidget(resultsBox());
    left->addWidget(flightBox());
    left->addWidget(commandButton(b, "F_VLM", "Command1", -1, QStringLiteral("Calculer")));
    left->addStretch(1);
    top->addLayout(left);

    // The two charts stand one over the other on the same span axis: the
    // loadings and their ellipse, then the local lift coefficient.
    auto* right = new QVBoxLayout;
    for (int i = 0; i < 2; ++i) {
        auto* c = new ChartPanel;
        c->setObjectName("MSChart1");
        c->setProperty("index", i);
        charts_[static_cast<size_t>(i)] = c;
        offerSave(c);
        right->addWidget(c, i == 0 ? 3 : 2);
    }
    top->addLayout(right, 1);

    // Typed fields recompute from their own steps; redraw once they have run.
    auto* later = new DeferredRedraw(this, [this] { redraw(); });
    for (Cell c : {B33, N25, P25, S25, Text1, T_Flap_AngL, T_Flap_AngR, T_Ail_AngL, T_Ail_AngR, Text2[0], Text2[1]})
        b.watch(c, this, [later] { later->request(); });
    connect(&b, &SheetBridge::entryDone, later, &DeferredRedraw::now);
    followPanelRefresh(wb_, button::Wizard, this, [this] { redraw(); });
    followPanelRefresh(wb_, button::Performances, this, [this] { redraw(); });
    b.watch(F_Main::Toolbar2[button::Wizard], this, [this] { followTag(); });
    // A design panel takes the place: the window steps aside, its Tag kept.
    for (int p : {button::Wing, button::Fuselage, button::Stab}) {
        b.watch(F_Main::Toolbar2[p], this, [this, p] {
            if (wb_.isOpen(p)) hide();
        });
    }
    redraw();
    resize(1100, 720);
}

QWidget* VlmWindow::angleBox() {
    auto* box = new QGroupBox;
    auto* g = new QGridLayout(box);
    g->addWidget(caption("Angle d'attaque ()"), 0, 0);
    g->addWidget(result(bridge_, N25), 0, 1);
    g->addWidget(new CellEdit(bridge_, B33), 1, 0);
    auto* steps = new QHBoxLayout;
    for (int i = 0; i < 2; ++i) {
        steps->addWidget(stepButton(bridge_, "F_VLM", "Command2", i, i == 0 ? Qt::DownArrow : Qt::UpArrow,
                                    i == 0 ? QStringLiteral("- 0.1°") : QStringLiteral("+ 0.1°")));
    }
    g->addLayout(steps, 1, 1);
    return box;
}

QWidget* VlmWindow::resultsBox() {
    auto* box = new QGroupBox;
    auto* g = new QGridLayout(box);
    g->addWidget(caption("Cz moyen"), 0, 0);
    g->addWidget(result(bridge_, P25, kTipCzMoyen), 0, 1);
    g->addWidget(caption("Facteur d'Oswald"), 1, 0);
    g->addWidget(result(bridge_, S25, kTipOswald), 1, 1);
    g->addWidget(caption("MinCl"), 2, 0);
    g->addWidget(result(bridge_, Text2[0]), 2, 1);
    g->addWidget(caption("MaxCl"), 3, 0);
    g->addWidget(result(bridge_, Text2[1]), 3, 1);
    return box;
}

QWidget* VlmWindow::flightBox() {
    auto* w = new QWidget;
    auto* v = new QVBoxLayout(w);
    v->setContentsMargins(0, 0, 0, 0);

    auto* roll = new QGroupBox(QStringLiteral("Angle de roulis"));
    auto* rg = new QGridLayout(roll);
    rg->addWidget(slider(bridge_, Hscroll1, kRollSliderMin, kRollSliderMax), 0, 0);
    rg->addWidget(new CellEdit(bridge_, Text1), 0, 1);
    rg->setColumnStretch(0, 1);
    v->addWidget(roll);

    auto surfaces = [this](const QString& title, Cell sliderCell, Cell left, Cell right) {
        auto* box = new QGroupBox(title);
        auto* g = new QGridLayout(box);
        g->addWidget(slider(bridge_, sliderCell, kDeflectionSliderMin, kDeflectionSliderMax), 0, 0, 1, 4);
        g->addWidget(caption("AngleL"), 1, 0);
        g->addWidget(new CellEdit(bridge_, left), 1, 1);
        g->addWidget(caption("AngleR"), 1, 2);
        g->addWidget(new CellEdit(bridge_, right), 1, 3);
        return box;
    };
    v->addWidget(surfaces(QStringLiteral("Flaps"), Hscroll2, T_Flap_AngL, T_Flap_AngR));
    v->addWidget(surfaces(QStringLiteral("Ailerons"), Hscroll3, T_Ail_AngL, T_Ail_AngR));
    return w;
}

void VlmWindow::redraw() {
    for (size_t i = 0; i < charts_.size(); ++i) charts_[i]->setData(wb_.vlm.charts[i]);
    const VlmSurface s = VlmPanelState(wb_);
    const QString base = qs(wb_.sheet.text(Caption));
    setWindowTitle(s == VlmSurface::Stab ? base + QStringLiteral(" - Stab")
                   : s == VlmSurface::Wing ? base + QStringLiteral(" - Aile")
                                           : base);
}

void VlmWindow::followTag() {
    if (VlmPanelState(wb_) == VlmSurface::Closed) {
        hide();
        return;
    }
    redraw();
    show();
    raise();
}

void VlmWindow::closeEvent(QCloseEvent* e) {
    bridge_.enter([this] { Click(wb_, "F_VLM", "Form_Unload"); });
    QWidget::closeEvent(e);
}

}  // namespace tarvokin::ui
