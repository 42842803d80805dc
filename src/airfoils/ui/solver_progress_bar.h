// A window's progress bar with its Cancel button for the XFOIL runs its
// handlers start: registered in the workbench under the window's name, so
// that the handler finds it, and hidden while nothing runs.
#pragma once

#include <QWidget>
#include <string>

#include "core/progress.h"

class QLabel;
class QProgressBar;
class QPushButton;

namespace tarvokin {
class Workbench;
}

namespace tarvokin::ui {

class SolverProgressBar : public QWidget, public Progress {
    Q_OBJECT
public:
    SolverProgressBar(Workbench& wb, std::string form, QWidget* parent = nullptr);
    ~SolverProgressBar() override;

    void report(const std::string& text, double fraction) override;
    bool cancelled() override { return cancelled_; }

private:
    Workbench& wb_;
    std::string form_;
    QLabel* text_;
    QProgressBar* bar_;
    QPushButton* cancel_;
    bool cancelled_ = false;
};

}  // namespace tarvokin::ui
