#include "shell/ui/chart_panel.h"

#include <QChart>
#include <QChartView>
#include <QLegendMarker>
#include <QLineSeries>
#include <QPen>
#include <QValueAxis>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

namespace tarvokin::ui {

QColor slotColour(int slot, int shade) {
    static const QColor base[3] = {QColor(0, 0, 255), QColor(255, 0, 0), QColor(0, 160, 0)};
    QColor c = base[((slot % 3) + 3) % 3];
    return shade <= 0 ? c : c.lighter(100 + 18 * shade);
}

ChartPanel::ChartPanel(QWidget* parent) : QWidget(parent), chart_(new QChart), view_(new QChartView(chart_)) {
    view_->setRenderHint(QPainter::Antialiasing);
    chart_->legend()->setAlignment(Qt::AlignBottom);
    chart_->setMargins(QMargins(2, 2, 2, 2));
    auto* l = new QVBoxLayout(this);
    l->setContentsMargins(0, 0, 0, 0);
    l->addWidget(view_);
    setMinimumSize(320, 240);
}

void ChartPanel::clear() {
    chart_->removeAllSeries();
    for (QAbstractAxis* a : chart_->axes()) {
        chart_->removeAxis(a);
        delete a;
    }
}

void ChartPanel::setAxisTitles(const QString& x, const QString& y) {
    xTitle_ = x;
    yTitle_ = y;
}

int ChartPanel::seriesCount() const { return static_cast<int>(chart_->series().size()); }

void ChartPanel::addSeries(const QString& name, const std::vector<std::pair<double, double>>& points, int slot,
                           int shade, bool dashed, bool withPoints, bool inLegend) {
    auto* s = new QLineSeries;
    s->setName(name);
    for (const auto& [x, y] : points) {
        if (std::isfinite(x) && std::isfinite(y)) s->append(x, y);
    }
    QPen pen(slotColour(slot, shade));
    pen.setWidthF(1.5);
    if (dashed) pen.setStyle(Qt::DashLine);
    s->setPen(pen);
    s->setPointsVisible(withPoints);
    chart_->addSeries(s);
    if (!inLegend) {
        for (QLegendMarker* m : chart_->legend()->markers(s)) m->setVisible(false);
    }
    rebuildAxes();
}

void ChartPanel::rebuildAxes() {
    for (QAbstractAxis* a : chart_->axes()) {
        chart_->removeAxis(a);
        delete a;
    }
    double minX = 0, maxX = 1, minY = 0, maxY = 1;
    bool first = true;
    for (QAbstractSeries* as : chart_->series()) {
        for (const QPointF& p : static_cast<QLineSeries*>(as)->points()) {
            if (first) {
                minX = maxX = p.x();
                minY = maxY = p.y();
                first = false;
            }
            minX = std::min(minX, p.x());
            maxX = std::max(maxX, p.x());
            minY = std::min(minY, p.y());
            maxY = std::max(maxY, p.y());
        }
    }
    if (maxX - minX < 1e-12) maxX = minX + 1;
    if (maxY - minY < 1e-12) maxY = minY + 1;
    auto* ax = new QValueAxis;
    auto* ay = new QValueAxis;
    ax->setTitleText(xTitle_);
    ay->setTitleText(yTitle_);
    ax->setRange(minX, maxX);
    ay->setRange(minY, maxY);
    ax->applyNiceNumbers();
    ay->applyNiceNumbers();
    chart_->addAxis(ax, Qt::AlignBottom);
    chart_->addAxis(ay, Qt::AlignLeft);
    for (QAbstractSeries* s : chart_->series()) {
        s->attachAxis(ax);
        s->attachAxis(ay);
    }
}

bool ChartPanel::savePng(const QString& file) const { return view_->grab().save(file, "PNG"); }

}  // namespace tarvokin::ui
