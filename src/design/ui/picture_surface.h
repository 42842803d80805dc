// A drawing surface on a picture the caller owns, through a plain painter:
// lines, text, points, polygons and curves, which is what the 2D drawings of
// the construction windows use (the blended triangles of the 3D engine are
// QImageSurface's). The painter is open for the surface's lifetime.
#pragma once

#include <QImage>
#include <QPainter>

#include "views/draw_surface.h"

namespace tarvokin::ui {

class PictureSurface : public DrawSurface {
public:
    explicit PictureSurface(QImage& image);
    int width() const override { return image_.width(); }
    int height() const override { return image_.height(); }
    void setDrawMode(int) override {}
    void setDrawStyle(int style) override { solid_ = style == drawstyle::Solid; }
    void setFillStyle(int style) override { filled_ = style == fillstyle::Solid; }
    void setForeColor(PackedColour c) override;
    void setFillColor(PackedColour c) override;
    void clear(PackedColour c) override;
    void setPixel(int x, int y, PackedColour c) override;
    void textOut(int x, int y, const std::string& text) override;
    void moveTo(int x, int y) override { at_ = QPoint(x, y); }
    void lineTo(int x, int y) override;
    void polygon(std::span<const SurfacePoint> points) override;
    void polyBezier(const std::array<SurfacePoint, 4>& p) override;
    void gradientTriangle(const std::array<GradientVertex, 3>&) override {}
    QPainter& painter() { return p_; }

private:
    QImage& image_;
    QPainter p_;
    QColor fore_ = Qt::black, fill_ = Qt::white;
    bool solid_ = true, filled_ = false;
    QPoint at_;
};

}  // namespace tarvokin::ui
