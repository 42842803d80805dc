// A picture area that paints a plan (the centring plan, the plan from above,
// the flat views) to fit, outlines first and labels last.
#pragma once

#include <QImage>
#include <QWidget>
#include <functional>

#include "views/plan.h"

namespace tarvokin::ui {

class PlanWidget : public QWidget {
    Q_OBJECT
public:
    // `make` builds the plan from the fields each time the picture is redrawn.
    PlanWidget(std::function<Plan()> make, QWidget* parent = nullptr);

    void setMaker(std::function<Plan()> make);
    // A maker that sets the plan for the room it has (its text at a height in
    // pixels): called again when the picture changes size.
    void setAreaMaker(std::function<Plan(const PlanArea&)> make);
    // Rebuilds the plan and repaints.
    void refresh();
    const Plan& plan() const { return plan_; }
    // A photo stretched behind the plan (photo mode); a null image for none.
    void setBackground(const QImage& image);
    bool hasBackground() const { return !background_.isNull(); }

protected:
    void paintEvent(QPaintEvent* e) override;
    void resizeEvent(QResizeEvent* e) override;

private:
    std::function<Plan()> make_;
    std::function<Plan(const PlanArea&)> makeForArea_;
    Plan plan_;
    QImage background_;
};

// Paints a plan into a rectangle of a painter, scaled to fit (PlanScale).
void paintPlan(QPainter& p, const Plan& plan, const QRectF& area);

}  // namespace tarvokin::ui
