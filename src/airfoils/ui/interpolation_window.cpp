#include "airfoils/ui/interpolation_window.h"

#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QTableWidget>
#include <QVBoxLayout>

#include "airfoils/polar_interpolation.h"
#include "airfoils/ui/solver_progress_bar.h"
#include "core/numbers.h"
#include "core/ui/cell_widgets.h"
#include "core/ui/chart_panel.h"
#include "core/ui/entry_controls.h"
#include "core/ui/sheet_bridge.h"
#include "core/workbench.h"

namespace tarvokin::ui {

InterpolationWindow::InterpolationWindow(Workbench& wb, SheetBridge& b, QWidget* parent) : QWidget(parent), wb_(wb) {
    setObjectName("F_TEST_POL");
    setWindowTitle(QStringLiteral("Interpolations"));
    auto* top = new QVBoxLayout(this);
    auto* controls = new QGridLayout;
    controls->addWidget(new QLabel(QStringLiteral("Profil")), 0, 0);
    controls->addWidget(new CellCombo(b, F_TEST_POL::CB_1), 0, 1, 1, 2);
    auto* checks = new QHBoxLayout;
    for (int i = 0; i < 6; ++i)
        checks->addWidget(new CellCheck(b, F_TEST_POL::Check1[i], QString::number(kStandardReynolds[static_cast<size_t>(i)])));
    controls->addLayout(checks, 0, 3);
    controls->addWidget(new QLabel(QStringLiteral("Re")), 1, 0);
    controls->addWidget(new CellEdit(b, F_TEST_POL::Text1), 1, 1);
    controls->addWidget(new CellSlider(b, F_TEST_POL::Slider1, Qt::Horizontal, 10, 2000), 1, 2, 1, 2);
    controls->addWidget(new QLabel(QStringLiteral("Cz")), 2, 0);
    controls->addWidget(new CellEdit(b, F_TEST_POL::Text2), 2, 1);
    controls->addWidget(new CellSlider(b, F_TEST_POL::Slider2, Qt::Horizontal, -50, 150), 2, 2, 1, 2);
    controls->addWidget(new QLabel(QStringLiteral("Cx (recherche du calcul)")), 3, 0);
    auto* answer = new CellLabel(b, F_TEST_POL::T_Cx);
    answer->setFrameShape(QFrame::StyledPanel);
    controls->addWidget(answer, 3, 1);
    top->addLayout(controls);

    auto* middle = new QHBoxLayout;
    chart_ = new ChartPanel;
    chart_->setObjectName("MSChart1");
    chart_->setProperty("valueTitle", true);  // the Reynolds number and Cz looked up
    middle->addWidget(chart_, 1);
    auto* scales = new QVBoxLayout;
    scales->addWidget(new QLabel(QStringLiteral("Cz max")));
    scales->addWidget(new CellSlider(b, F_TEST_POL::Slider5, Qt::Vertical, 20, 200), 1);
    middle->addLayout(scales);
    top->addLayout(middle, 1);
    auto* cxScale = new QHBoxLayout;
    cxScale->addWidget(new QLabel(QStringLiteral("Cx max")));
    cxScale->addWidget(new CellSlider(b, F_TEST_POL::Slider4, Qt::Horizontal, 5, 200), 1);
    top->addLayout(cxScale);

    grid_ = new QTableWidget;
    grid_->setObjectName("MSFlexGrid1");
    grid_->setProperty("noLanguage", true);  // heads are Reynolds numbers
    grid_->setRowCount(1);
    grid_->setColumnCount(7);
    grid_->setMaximumHeight(70);
    top->addWidget(grid_);
    progress_ = new SolverProgressBar(wb_, "F_TEST_POL");
    top->addWidget(progress_);

    auto* later = new DeferredRedraw(this, [this] { redraw(); });
    for (int i = 0; i < 6; ++i) b.watch(F_TEST_POL::Check1[i], this, [later] { later->request(); });
    for (Cell c : {F_TEST_POL::Slider4, F_TEST_POL::Slider5, F_TEST_POL::T_Cx, F_TEST_POL::CB_1,
                   F_Main::Toolbar2[button::TestPol]})
        b.watch(c, this, [later] { later->request(); });
    connect(&b, &SheetBridge::entryDone, this, [this, later] {
        progress_->setVisible(false);
        later->now();
    });
    redraw();
    resize(900, 640);
}

void InterpolationWindow::redraw() {
    const Sheet& s = wb_.sheet;
    std::array<bool, 6> shown{};
    for (int i = 0; i < 6; ++i) shown[static_cast<size_t>(i)] = s.on(F_TEST_POL::Check1[i]);
    const double re = s.val(F_TEST_POL::Text1), cz = s.val(F_TEST_POL::Text2);
    const InterpolationView v = interpolationOf(wb_.testPolars, re > 0 ? re : 220000, cz, shown,
                                                s.val(F_TEST_POL::Slider4) / 1000.0, s.val(F_TEST_POL::Slider5) / 100.0);
    chart_->setData(v.chart);
    QStringList heads;
    for (const std::string& h : v.heads) heads << qs(h);
    heads << qs(" Re " + plain(re));
    grid_->setHorizontalHeaderLabels(heads);
    grid_->setVerticalHeaderLabels({QStringLiteral("Cz : ") + qs(plain(cz))});
    for (int i = 0; i < 6; ++i)
        grid_->setItem(0, i, new QTableWidgetItem(qs(fixed(v.cxAtCz[static_cast<size_t>(i)], 5))));
    grid_->setItem(0, 6, new QTableWidgetItem(qs(fixed(v.cx, 5))));
}

}  // namespace tarvokin::ui
