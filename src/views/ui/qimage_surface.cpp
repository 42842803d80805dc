#include "views/ui/qimage_surface.h"

#include <QFontMetrics>
#include <QPainterPath>
#include <QPolygon>
#include <algorithm>
#include <cstdint>
#include <utility>

namespace tarvokin::ui {

QColor ToQColor(PackedColour packed) {
    return QColor(static_cast<int>(packed & 0xFF), static_cast<int>((packed >> 8) & 0xFF),
                  static_cast<int>((packed >> 16) & 0xFF));
}

PackedColour FromQColor(const QColor& colour) {
    return static_cast<PackedColour>(colour.red()) | (static_cast<PackedColour>(colour.green()) << 8) |
           (static_cast<PackedColour>(colour.blue()) << 16);
}

// RGB32 keeps the raster operations exact: OR and NOT work on whole pixels and
// there is no alpha to blend.
QImageSurface::QImageSurface(QSize size) : image_(size, QImage::Format_RGB32) { image_.fill(Qt::black); }

QImageSurface::~QImageSurface() { endPainting(); }

const QImage& QImageSurface::image() {
    endPainting();
    return image_;
}

void QImageSurface::resize(QSize size) {
    endPainting();
    image_ = QImage(size, QImage::Format_RGB32);
    image_.fill(Qt::black);
}

void QImageSurface::setFont(const QFont& font) {
    font_ = font;
    if (painter_) painter_->setFont(font_);
}

int QImageSurface::width() const { return image_.width(); }
int QImageSurface::height() const { return image_.height(); }

void QImageSurface::setDrawMode(int mode) { drawMode_ = mode; }
void QImageSurface::setDrawStyle(int style) { drawStyle_ = style; }
void QImageSurface::setFillStyle(int style) { fillStyle_ = style; }
void QImageSurface::setForeColor(PackedColour colour) { fore_ = ToQColor(colour); }
void QImageSurface::setFillColor(PackedColour colour) { fill_ = ToQColor(colour); }

void QImageSurface::endPainting() {
    if (painter_) {
        painter_->end();
        painter_.reset();
    }
}

QPainter& QImageSurface::painter(bool withPen, bool withBrush) {
    if (!painter_) {
        painter_ = std::make_unique<QPainter>(&image_);
        painter_->setRenderHint(QPainter::Antialiasing, false);
        painter_->setFont(font_);
    }
    QPainter& p = *painter_;
    switch (drawMode_) {
    case drawmode::MergePen: p.setCompositionMode(QPainter::RasterOp_SourceOrDestination); break;
    case drawmode::Invert: p.setCompositionMode(QPainter::RasterOp_NotDestination); break;
    default: p.setCompositionMode(QPainter::CompositionMode_Source); break;
    }
    if (withPen && drawStyle_ != drawstyle::None) {
        QPen pen(fore_);
        pen.setCosmetic(true);
        pen.setWidth(1);
        p.setPen(pen);
    } else {
        p.setPen(Qt::NoPen);
    }
    p.setBrush(withBrush && fillStyle_ != fillstyle::None ? QBrush(fill_) : QBrush(Qt::NoBrush));
    return p;
}

void QImageSurface::clear(PackedColour background) {
    endPainting();
    image_.fill(ToQColor(background));
}

void QImageSurface::setPixel(int x, int y, PackedColour colour) {
    if (x < 0 || y < 0 || x >= image_.width() || y >= image_.height()) return;
    endPainting();
    image_.setPixel(x, y, ToQColor(colour).rgb());
}

void QImageSurface::textOut(int x, int y, const std::string& text) {
    QPainter& p = painter(false, false);
    // Text is written over the picture whatever the raster operation.
    p.setCompositionMode(QPainter::CompositionMode_SourceOver);
    p.setPen(fore_);
    p.drawText(QPoint(x, y + QFontMetrics(p.font()).ascent()), QString::fromUtf8(text));
}

void QImageSurface::moveTo(int x, int y) { current_ = QPoint(x, y); }

void QImageSurface::lineTo(int x, int y) {
    const QPoint to(x, y);
    painter(true, false).drawLine(current_, to);
    current_ = to;
}

void QImageSurface::polygon(std::span<const SurfacePoint> points) {
    if (points.empty()) return;
    QPolygon poly;
    poly.reserve(static_cast<int>(points.size()));
    for (const SurfacePoint& pt : points) poly << QPoint(pt.x, pt.y);
    painter(true, true).drawPolygon(poly, Qt::OddEvenFill);
}

void QImageSurface::polyBezier(const std::array<SurfacePoint, 4>& points) {
    QPainterPath path(QPointF(points[0].x, points[0].y));
    path.cubicTo(QPointF(points[1].x, points[1].y), QPointF(points[2].x, points[2].y),
                 QPointF(points[3].x, points[3].y));
    painter(true, false).drawPath(path);
}

// Edge functions on pixel centres, in 64-bit since an orthographic view can
// hand over corners far off the picture. Pixels on a shared edge belong to one
// triangle only (top-left rule), so neighbouring faces neither overlap nor gap.
void QImageSurface::gradientTriangle(const std::array<GradientVertex, 3>& corners) {
    endPainting();
    std::array<GradientVertex, 3> v = corners;
    // Held to 2^28 pixels either way so that the products below stay in range.
    constexpr int kFar = 1 << 28;
    for (GradientVertex& c : v) {
        c.x = std::clamp(c.x, -kFar, kFar);
        c.y = std::clamp(c.y, -kFar, kFar);
    }
    using I64 = std::int64_t;
    const auto edge = [](const GradientVertex& a, const GradientVertex& b, I64 px, I64 py) {
        return (I64(b.x) - a.x) * (py - a.y) - (I64(b.y) - a.y) * (px - a.x);
    };
    I64 area = edge(v[0], v[1], v[2].x, v[2].y);
    if (area == 0) return;
    if (area < 0) {
        std::swap(v[1], v[2]);
        area = -area;
    }
    const int w = image_.width(), h = image_.height();
    const I64 minX = std::max<I64>(0, std::min({I64(v[0].x), I64(v[1].x), I64(v[2].x)}));
    const I64 maxX = std::min<I64>(w - 1, std::max({I64(v[0].x), I64(v[1].x), I64(v[2].x)}));
    const I64 minY = std::max<I64>(0, std::min({I64(v[0].y), I64(v[1].y), I64(v[2].y)}));
    const I64 maxY = std::min<I64>(h - 1, std::max({I64(v[0].y), I64(v[1].y), I64(v[2].y)}));
    if (minX > maxX || minY > maxY) return;

    // With this winding on a y-down picture a top edge runs to +x on a
    // constant y, and a left edge runs upwards.
    const auto bias = [](const GradientVertex& a, const GradientVertex& b) -> I64 {
        const bool top = a.y == b.y && b.x > a.x;
        const bool left = b.y < a.y;
        return (top || left) ? 0 : -1;
    };
    const GradientVertex* e[3][2] = {{&v[1], &v[2]}, {&v[2], &v[0]}, {&v[0], &v[1]}};
    I64 rowW[3], stepX[3], stepY[3], b[3];
    for (int k = 0; k < 3; ++k) {
        const GradientVertex& a = *e[k][0];
        const GradientVertex& c = *e[k][1];
        rowW[k] = edge(a, c, minX, minY);
        stepX[k] = -(I64(c.y) - a.y);
        stepY[k] = I64(c.x) - a.x;
        b[k] = bias(a, c);
    }
    const double inv = 1.0 / static_cast<double>(area);
    for (I64 y = minY; y <= maxY; ++y) {
        I64 wk[3] = {rowW[0], rowW[1], rowW[2]};
        auto* line = reinterpret_cast<QRgb*>(image_.scanLine(static_cast<int>(y)));
        for (I64 x = minX; x <= maxX; ++x) {
            if (wk[0] + b[0] >= 0 && wk[1] + b[1] >= 0 && wk[2] + b[2] >= 0) {
                const double l0 = static_cast<double>(wk[0]) * inv, l1 = static_cast<double>(wk[1]) * inv,
                             l2 = 1.0 - l0 - l1;
                const auto mix = [&](std::uint16_t c0, std::uint16_t c1, std::uint16_t c2) {
                    const double value = (l0 * c0 + l1 * c1 + l2 * c2) / 256.0;
                    return std::clamp(static_cast<int>(value + 0.5), 0, 255);
                };
                line[x] = qRgb(mix(v[0].red, v[1].red, v[2].red), mix(v[0].green, v[1].green, v[2].green),
                               mix(v[0].blue, v[1].blue, v[2].blue));
            }
            for (int k = 0; k < 3; ++k) wk[k] += stepX[k];
        }
        for (int k = 0; k < 3; ++k) rowW[k] += stepY[k];
    }
}

}  // namespace tarvokin::ui
