#include "design/ui/analysis_controls.h"

#include <QGridLayout>
#include <QLabel>
#include <QPainter>
#include <QPointer>
#include <QTimer>
#include <algorithm>
#include <cmath>

#include "entry/field_rules.h"
#include "core/ui/cell_widgets.h"
#include "core/ui/chart_panel.h"
#include "core/ui/sheet_bridge.h"
#include "core/workbench.h"

namespace tarvokin::ui {


LegendStrip::LegendStrip(int columns, bool byColumn, QWidget* parent)
    : QWidget(parent), columns_(columns), byColumn_(byColumn) {
    setProperty("noLanguage", true);  // the series' names
    auto* g = new QGridLayout(this);
    g->setContentsMargins(4, 0, 4, 0);
    g->setHorizontalSpacing(8);
    g->setVerticalSpacing(1);
    QFont small = font();
    if (small.pointSizeF() > 0) {
        small.setPointSizeF(small.pointSizeF() * 0.9);
        setFont(small);
    }
}

namespace {

QPixmap lineSample(const LegendEntry& e) {
    QPixmap sample(26, 10);
    sample.fill(Qt::transparent);
    QPainter p(&sample);
    p.setRenderHint(QPainter::Antialiasing);
    QPen pen(toQColor(e.colour));
    pen.setWidthF(1.5);
    pen.setStyle(e.style == linestyle::Dashed ? Qt::DashLine : Qt::SolidLine);
    p.setPen(pen);
    p.drawLine(QPointF(1, 5), QPointF(25, 5));
    p.end();
    return sample;
}

}  // namespace

void LegendStrip::setEntries(const std::vector<LegendEntry>& entries) {
    if (entries == entries_) return;
    // The captions carry figures that change with every entry (the speed of
    // a best point): the same number of entries keeps its labels and changes
    // their text. New labels would each be shown on their own, and each
    // showing lays the whole window out again, charts included.
    if (entries.size() == entries_.size()) {
        for (size_t i = 0; i < entries.size(); ++i) {
            const LegendEntry& e = entries[i];
            if (e.colour != entries_[i].colour || e.style != entries_[i].style) swatches_[i]->setPixmap(lineSample(e));
            if (e.text != entries_[i].text) texts_[i]->setText(qs(e.text));
        }
        entries_ = entries;
        return;
    }
    entries_ = entries;
    auto* g = static_cast<QGridLayout*>(layout());
    while (QLayoutItem* item = g->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    swatches_.clear();
    texts_.clear();
    const int n = static_cast<int>(entries_.size());
    const int rows = std::max(1, (n + columns_ - 1) / columns_);
    for (size_t i = 0; i < entries_.size(); ++i) {
        const LegendEntry& e = entries_[i];
        auto* swatch = new QLabel;
        swatch->setPixmap(lineSample(e));
        auto* text = new QLabel(qs(e.text));
        // A narrow window wraps a caption rather than being held wide by it.
        text->setWordWrap(true);
        const int k = static_cast<int>(i);
        const int row = byColumn_ ? k % rows : k / columns_;
        const int col = 2 * (byColumn_ ? k / rows : k % columns_);
        g->addWidget(swatch, row, col);
        g->addWidget(text, row, col + 1);
        swatches_.push_back(swatch);
        texts_.push_back(text);
    }
    for (int c = 0; c < columns_; ++c) g->setColumnStretch(2 * c + 1, 1);
}

std::vector<LegendEntry> seriesLegend(const ChartData& d) {
    std::vector<LegendEntry> out;
    for (const ChartSeries& s : d.series)
        if (s.inLegend && !s.name.empty()) out.push_back({s.name, s.colour, s.style});
    return out;
}

std::vector<LegendEntry> markerLegend(const ChartData& d) {
    std::vector<LegendEntry> out;
    for (const ChartMarker& m : d.markers) {
        if (m.label.empty()) continue;
        LegendEntry e{m.label, m.colour, linestyle::Solid};
        for (const ChartSeries& s : d.series)
            if (!s.name.empty() && m.label.rfind(s.name + " (", 0) == 0) e.style = s.style;
        out.push_back(e);
    }
    return out;
}

void followPanelRefresh(Workbench& wb, int button, QObject* owner, std::function<void()> after) {
    std::function<void(Workbench&)> before = wb.panelRefresh[button];
    QPointer<QObject> alive(owner);
    wb.panelRefresh[button] = [before = std::move(before), alive, after = std::move(after)](Workbench& w) {
        if (before) before(w);
        if (alive) after();
    };
}

}  // namespace tarvokin::ui
