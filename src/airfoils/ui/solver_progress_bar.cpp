#include "airfoils/ui/solver_progress_bar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

#include "core/ui/cell_widgets.h"
#include "core/workbench.h"

namespace tarvokin::ui {

SolverProgressBar::SolverProgressBar(Workbench& wb, std::string form, QWidget* parent)
    : QWidget(parent), wb_(wb), form_(std::move(form)) {
    setObjectName("ProgressBar1");
    auto* l = new QHBoxLayout(this);
    l->setContentsMargins(0, 0, 0, 0);
    text_ = new QLabel;
    bar_ = new QProgressBar;
    bar_->setRange(0, 100);
    cancel_ = new QPushButton(QStringLiteral("Annuler"));
    cancel_->setObjectName("Cancel");
    l->addWidget(text_, 1);
    l->addWidget(bar_, 1);
    l->addWidget(cancel_);
    connect(cancel_, &QPushButton::clicked, this, [this] { cancelled_ = true; });
    wb_.solverProgress[form_] = this;
    setVisible(false);
}

SolverProgressBar::~SolverProgressBar() {
    auto it = wb_.solverProgress.find(form_);
    if (it != wb_.solverProgress.end() && it->second == this) wb_.solverProgress.erase(it);
}

void SolverProgressBar::report(const std::string& text, double fraction) {
    // A run starts at 0 and ends at 1: the Cancel of the last run is spent.
    if (fraction <= 0.0 && !isVisible()) cancelled_ = false;
    text_->setText(qs(text));
    bar_->setValue(static_cast<int>(fraction * 100));
    setVisible(fraction < 1.0);
}

}  // namespace tarvokin::ui
