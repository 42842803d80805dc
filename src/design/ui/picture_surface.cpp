#include "design/ui/picture_surface.h"

#include <QPainterPath>

namespace tarvokin::ui {

namespace {
QColor colour(PackedColour c) { return QColor(c & 0xFF, (c >> 8) & 0xFF, (c >> 16) & 0xFF); }
}  // namespace

PictureSurface::PictureSurface(QImage& image) : image_(image), p_(&image) {
    p_.setRenderHint(QPainter::Antialiasing, true);
}

void PictureSurface::setForeColor(PackedColour c) { fore_ = colour(c); }
void PictureSurface::setFillColor(PackedColour c) { fill_ = colour(c); }
void PictureSurface::clear(PackedColour c) { p_.fillRect(image_.rect(), colour(c)); }

void PictureSurface::setPixel(int x, int y, PackedColour c) {
    p_.setPen(colour(c));
    p_.drawPoint(x, y);
}

void PictureSurface::textOut(int x, int y, const std::string& text) {
    p_.setPen(fore_);
    p_.drawText(QRect(x, y, 400, 20), Qt::AlignLeft | Qt::AlignTop, QString::fromStdString(text));
}

void PictureSurface::lineTo(int x, int y) {
    if (solid_) {
        p_.setPen(QPen(fore_, 1.5));
        p_.drawLine(at_, QPoint(x, y));
    }
    at_ = QPoint(x, y);
}

void PictureSurface::polygon(std::span<const SurfacePoint> points) {
    QPolygon poly;
    for (const SurfacePoint& s : points) poly << QPoint(s.x, s.y);
    p_.setPen(solid_ ? QPen(fore_) : QPen(Qt::NoPen));
    p_.setBrush(filled_ ? QBrush(fill_) : QBrush(Qt::NoBrush));
    p_.drawPolygon(poly);
}

void PictureSurface::polyBezier(const std::array<SurfacePoint, 4>& p) {
    QPainterPath path(QPointF(p[0].x, p[0].y));
    path.cubicTo(p[1].x, p[1].y, p[2].x, p[2].y, p[3].x, p[3].y);
    p_.setPen(fore_);
    p_.setBrush(Qt::NoBrush);
    p_.drawPath(path);
}

}  // namespace tarvokin::ui
