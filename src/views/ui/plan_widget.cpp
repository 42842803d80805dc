#include "views/ui/plan_widget.h"

#include <QPainter>
#include <QPainterPath>

#include "core/ui/chart_panel.h"

namespace tarvokin::ui {

namespace {

QPen penOf(const Rgb& c, bool dashed, double width = 1.2) {
    QPen pen(toQColor(c), width);
    pen.setCosmetic(true);
    if (dashed) pen.setStyle(Qt::DashLine);
    return pen;
}

// The margin round the plan inside the widget.
constexpr double kInset = 4;

}  // namespace

void paintPlan(QPainter& p, const Plan& plan, const QRectF& area) {
    const PlanBounds b = plan.boundsWithText();
    if (b.empty) return;
    const double scale = PlanScale(plan, area.width(), area.height());
    // Centre the drawing; plan y runs up, the picture's down.
    const double ox = area.left() + (area.width() - b.width() * scale) / 2 - b.xMin * scale;
    const double oy = area.top() + (area.height() + b.height() * scale) / 2 + b.yMin * scale;
    auto at = [&](const PlanPoint& q) { return QPointF(ox + q.x * scale, oy - q.y * scale); };

    p.save();
    p.setRenderHint(QPainter::Antialiasing);
    for (int layer = 0; layer < kPlanLayerCount; ++layer) {
        const auto on = [layer](PlanLayer l) { return static_cast<int>(l) == layer; };
        for (const PlanShape& s : plan.shapes) {
            if (!on(s.layer) || s.points.size() < 2) continue;
            QPolygonF poly;
            for (const PlanPoint& q : s.points) poly << at(q);
            p.setPen(penOf(s.colour, false));
            p.setBrush(toQColor(s.fill));
            p.drawPolygon(poly);
        }
        p.setBrush(Qt::NoBrush);
        for (const PlanPolyline& l : plan.polylines) {
            if (!on(l.layer) || l.points.size() < 2) continue;
            QPolygonF poly;
            for (const PlanPoint& q : l.points) poly << at(q);
            p.setPen(penOf(l.colour, l.dashed));
            if (l.closed) p.drawPolygon(poly);
            else p.drawPolyline(poly);
        }
        for (const PlanSegment& s : plan.segments) {
            if (!on(s.layer)) continue;
            p.setPen(penOf(s.colour, s.dashed));
            p.drawLine(at(s.a), at(s.b));
        }
        for (const PlanLabel& l : plan.labels) {
            if (!on(l.layer)) continue;
            QFont f = p.font();
            // Labels keep a readable size whatever the scale.
            f.setPixelSize(std::max(9, std::min(16, static_cast<int>(l.height * scale * 1.4))));
            p.setFont(f);
            p.setPen(toQColor(l.colour));
            const QFontMetricsF fm(f);
            for (const PlanTextLine& line : LayoutLabel(l)) {
                const QString text = QString::fromStdString(line.text);
                QPointF q = at(line.middle);
                const double w = fm.horizontalAdvance(text);
                if (line.align == TextAlign::Centre) q.rx() -= w / 2;
                else if (line.align == TextAlign::Right) q.rx() -= w;
                q.ry() += fm.capHeight() / 2;
                p.drawText(q, text);
            }
        }
    }
    p.restore();
}

PlanWidget::PlanWidget(std::function<Plan()> make, QWidget* parent) : QWidget(parent), make_(std::move(make)) {
    setAutoFillBackground(true);
    QPalette pal = palette();
    pal.setColor(QPalette::Window, Qt::white);
    setPalette(pal);
    setMinimumSize(200, 120);
    refresh();
}

void PlanWidget::setMaker(std::function<Plan()> make) {
    makeForArea_ = {};
    make_ = std::move(make);
    refresh();
}

void PlanWidget::setAreaMaker(std::function<Plan(const PlanArea&)> make) {
    make_ = {};
    makeForArea_ = std::move(make);
    refresh();
}

void PlanWidget::refresh() {
    if (makeForArea_) {
        plan_ = makeForArea_(PlanArea{std::max(1.0, width() - 2 * kInset), std::max(1.0, height() - 2 * kInset)});
    } else {
        plan_ = make_ ? make_() : Plan{};
    }
    update();
}

void PlanWidget::resizeEvent(QResizeEvent* e) {
    QWidget::resizeEvent(e);
    if (makeForArea_) refresh();
}

void PlanWidget::setBackground(const QImage& image) {
    background_ = image;
    update();
}

void PlanWidget::paintEvent(QPaintEvent*) {
    QPainter p(this);
    if (!background_.isNull()) p.drawImage(rect(), background_);
    paintPlan(p, plan_, QRectF(rect()).adjusted(kInset, kInset, -kInset, -kInset));
}

}  // namespace tarvokin::ui
