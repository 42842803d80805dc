#include "core/ui/chart_panel.h"

#include <QBuffer>
#include <QChart>
#include <QChartView>
#include <QLabel>
#include <QLegendMarker>
#include <QLineSeries>
#include <QPainter>
#include <QPen>
#include <QScatterSeries>
#include <QSvgGenerator>
#include <QValueAxis>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>
#include <string_view>

#include "core/file_replace.h"

namespace tarvokin::ui {

namespace {

// Qt's dashes are drawn in units of the pen width: a short dash reads as the
// "masse maxi" style on a small chart.
Qt::PenStyle penStyle(int style) {
    switch (style) {
        case linestyle::Dashed: return Qt::DashLine;
        case 2: return Qt::DotLine;
        case 4: return Qt::DashDotLine;
        default: return Qt::SolidLine;
    }
}

QString number(double v) { return QString::number(v, 'g', 4); }

struct Range {
    double lo = 0, hi = 1;
    bool set = false;
    void take(double v) {
        if (!std::isfinite(v)) return;
        if (!set) lo = hi = v, set = true;
        lo = std::min(lo, v);
        hi = std::max(hi, v);
    }
};

}  // namespace

QColor toQColor(const Rgb& c) { return QColor(c.r, c.g, c.b); }

Rgb slotRgb(int slot, int shade) {
    const QColor c = slotColour(slot, shade);
    return Rgb{static_cast<uint8_t>(c.red()), static_cast<uint8_t>(c.green()), static_cast<uint8_t>(c.blue())};
}

QColor slotColour(int slot, int shade) {
    const Rgb& b = kAirfoilColours[((slot % 3) + 3) % 3];
    const QColor c = toQColor(b);
    return shade <= 0 ? c : c.lighter(100 + 18 * shade);
}

ChartPanel::ChartPanel(QWidget* parent)
    : QWidget(parent), chart_(new QChart), view_(new QChartView(chart_)), readout_(new QLabel) {
    view_->setRenderHint(QPainter::Antialiasing);
    chart_->legend()->setAlignment(Qt::AlignBottom);
    chart_->setMargins(QMargins(2, 2, 2, 2));
    readout_->setObjectName("readout");
    readout_->setMinimumHeight(readout_->fontMetrics().height());
    auto* l = new QVBoxLayout(this);
    l->setContentsMargins(0, 0, 0, 0);
    l->setSpacing(0);
    l->addWidget(view_, 1);
    l->addWidget(readout_);
    setMinimumSize(320, 240);
}

void ChartPanel::clear() { setData(ChartData{}); }

int ChartPanel::seriesCount() const {
    int n = 0;
    for (const auto& s : data_.series) n += s.points.empty() ? 0 : 1;
    return n;
}

QString ChartPanel::readout() const { return readout_->text(); }

namespace {

// Whether two charts differ in their points, limits and captions only: the
// same titles, the same series and marks in the same order, each drawn the
// same and in the legend or not alike. (A mark's caption carries the speed of
// its best point, which moves with every entry.)
bool sameShape(const ChartData& a, const ChartData& b) {
    if (a.title != b.title || a.xTitle != b.xTitle || a.yTitle != b.yTitle) return false;
    if (a.series.size() != b.series.size() || a.markers.size() != b.markers.size()) return false;
    for (size_t i = 0; i < a.series.size(); ++i) {
        const ChartSeries &s = a.series[i], &t = b.series[i];
        if (s.name.empty() != t.name.empty() || s.colour != t.colour || s.style != t.style ||
            s.withPoints != t.withPoints || s.inLegend != t.inLegend)
            return false;
    }
    for (size_t i = 0; i < a.markers.size(); ++i) {
        const ChartMarker &m = a.markers[i], &n = b.markers[i];
        if (m.kind != n.kind || m.colour != n.colour || m.size != n.size || m.label.empty() != n.label.empty())
            return false;
    }
    return true;
}

QList<QPointF> pointsOf(const std::vector<ChartPoint>& points) {
    QList<QPointF> out;
    out.reserve(static_cast<qsizetype>(points.size()));
    for (const auto& p : points) out.append(QPointF(p.x, p.y));
    return out;
}

}  // namespace

void ChartPanel::setData(const ChartData& input) {
    ChartData given = input;
    given.dropNonFinite();
    // Rebuilding a chart's series and axes is by far the dearest part of a
    // window's redraw, and the first paint after it dearer still (every
    // label and grid line made anew): a chart whose data did not change keeps
    // what it drew, one whose points and limits only changed moves them.
    if (built_ && given == data_) return;
    const bool inPlace = built_ && sameShape(given, data_);
    built_ = true;
    data_ = std::move(given);
    if (!inPlace) rebuild();

    Range rx, ry;
    for (const auto& s : data_.series)
        for (const auto& p : s.points) rx.take(p.x), ry.take(p.y);
    for (const auto& m : data_.markers) {
        rx.take(m.x);
        if (m.kind == ChartMarker::Kind::Point) ry.take(m.y);
    }
    if (data_.xMin) rx.lo = *data_.xMin;
    if (data_.xMax) rx.hi = *data_.xMax;
    if (data_.yMin) ry.lo = *data_.yMin;
    if (data_.yMax) ry.hi = *data_.yMax;
    if (!(rx.hi - rx.lo > 1e-12)) rx.hi = rx.lo + 1;
    if (!(ry.hi - ry.lo > 1e-12)) ry.hi = ry.lo + 1;
    // The range rounded to nice numbers on a scratch axis: the chart's own
    // axes change, and lay their labels out again, only when it differs.
    auto range = [](QValueAxis* axis, double lo, double hi, bool nice) {
        QValueAxis scratch;
        scratch.setRange(lo, hi);
        if (nice) scratch.applyNiceNumbers();
        if (scratch.tickCount() != axis->tickCount()) axis->setTickCount(scratch.tickCount());
        if (scratch.min() != axis->min() || scratch.max() != axis->max()) axis->setRange(scratch.min(), scratch.max());
    };
    range(ax_, rx.lo, rx.hi, !data_.xMin && !data_.xMax);
    range(ay_, ry.lo, ry.hi, !data_.yMin && !data_.yMax);

    for (size_t i = 0; i < data_.series.size(); ++i) {
        const QString name = QString::fromStdString(data_.series[i].name);
        if (lines_[i]->name() != name) lines_[i]->setName(name);
        lines_[i]->replace(pointsOf(data_.series[i].points));
    }
    for (size_t i = 0; i < data_.markers.size(); ++i) {
        const ChartMarker& m = data_.markers[i];
        const QString label = QString::fromStdString(m.label);
        if (marks_[i]->name() != label) marks_[i]->setName(label);
        if (m.kind == ChartMarker::Kind::VerticalLine) {
            marks_[i]->replace({QPointF(m.x, ay_->min()), QPointF(m.x, ay_->max())});
        } else {
            marks_[i]->replace({QPointF(m.x, m.y)});
        }
    }
}

// New axes, and series and marks without points, for the shape of data_.
void ChartPanel::rebuild() {
    chart_->removeAllSeries();
    for (QAbstractAxis* a : chart_->axes()) {
        chart_->removeAxis(a);
        delete a;
    }
    lines_.clear();
    marks_.clear();
    readout_->clear();
    ax_ = new QValueAxis;
    ay_ = new QValueAxis;
    chart_->addAxis(ax_, Qt::AlignBottom);
    chart_->addAxis(ay_, Qt::AlignLeft);
    showTitles();

    auto attach = [&](QAbstractSeries* s, bool legend) {
        chart_->addSeries(s);
        s->attachAxis(ax_);
        s->attachAxis(ay_);
        if (!legend)
            for (QLegendMarker* m : chart_->legend()->markers(s)) m->setVisible(false);
    };

    for (const auto& s : data_.series) {
        auto* ls = new QLineSeries;
        QPen pen(toQColor(s.colour));
        pen.setWidthF(1.5);
        pen.setStyle(penStyle(s.style));
        ls->setPen(pen);
        ls->setPointsVisible(s.withPoints);
        connect(ls, &QLineSeries::hovered, this, [this, ls](const QPointF& p, bool on) {
            if (on) readout_->setText(QStringLiteral("%1 : %2 ; %3").arg(ls->name(), number(p.x()), number(p.y())));
        });
        attach(ls, s.inLegend && !s.name.empty());
        lines_.push_back(ls);
    }
    for (const auto& m : data_.markers) {
        if (m.kind == ChartMarker::Kind::VerticalLine) {
            auto* ls = new QLineSeries;
            QPen pen(toQColor(m.colour));
            pen.setWidthF(1);
            ls->setPen(pen);
            attach(ls, !m.label.empty());
            marks_.push_back(ls);
        } else {
            auto* sc = new QScatterSeries;
            sc->setMarkerSize(m.size);
            sc->setColor(toQColor(m.colour));
            sc->setBorderColor(toQColor(m.colour));
            attach(sc, !m.label.empty());
            marks_.push_back(sc);
        }
    }
}

QString ChartPanel::shownTitle(const QString& french) const {
    auto it = translations_.find(french);
    return it == translations_.end() ? french : it->second;
}

void ChartPanel::setTitleTranslations(std::map<QString, QString> titles) {
    if (titles == translations_) return;
    translations_ = std::move(titles);
    showTitles();
}

void ChartPanel::showTitles() {
    chart_->setTitle(shownTitle(QString::fromStdString(data_.title)));
    for (QAbstractAxis* a : chart_->axes(Qt::Horizontal)) a->setTitleText(shownTitle(QString::fromStdString(data_.xTitle)));
    for (QAbstractAxis* a : chart_->axes(Qt::Vertical)) a->setTitleText(shownTitle(QString::fromStdString(data_.yTitle)));
}

void ChartPanel::mouseDoubleClickEvent(QMouseEvent* e) {
    QWidget::mouseDoubleClickEvent(e);
    emit doubleClicked();
}

namespace {

// Charts are saved through a buffer so that a failed save never leaves half a
// picture in place of a good one.
bool replaceWith(const QString& file, const QByteArray& bytes) {
    return !bytes.isEmpty() &&
           replaceFile(file.toStdString(), std::string_view(bytes.constData(), static_cast<size_t>(bytes.size())));
}

}  // namespace

bool ChartPanel::savePng(const QString& file) const {
    QByteArray bytes;
    QBuffer buf(&bytes);
    buf.open(QIODevice::WriteOnly);
    if (!view_->grab().save(&buf, "PNG")) return false;
    return replaceWith(file, bytes);
}

bool ChartPanel::saveSvg(const QString& file) const {
    QByteArray bytes;
    QBuffer buf(&bytes);
    buf.open(QIODevice::WriteOnly);
    QSvgGenerator gen;
    gen.setOutputDevice(&buf);
    gen.setSize(view_->size());
    gen.setViewBox(QRect(QPoint(0, 0), view_->size()));
    gen.setTitle(shownTitle(QString::fromStdString(data_.title)));
    QPainter p;
    if (!p.begin(&gen)) return false;
    view_->render(&p);
    if (!p.end()) return false;
    return replaceWith(file, bytes);
}

}  // namespace tarvokin::ui
