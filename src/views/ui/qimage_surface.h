// The 3D engine's drawing surface on a QImage: pens and raster operations
// through QPainter (copy, merge-pen OR, invert), the blended triangles through
// a small rasteriser of its own, since QPainter has no per-corner colours.
#pragma once

#include <QImage>
#include <QPainter>
#include <QSize>
#include <memory>

#include "views/draw_surface.h"

namespace tarvokin::ui {

class QImageSurface : public DrawSurface {
public:
    explicit QImageSurface(QSize size = QSize(1000, 700));
    ~QImageSurface() override;

    // The picture so far; any painting under way is finished first.
    const QImage& image();
    // A new, black picture of that size (the drawing is lost, as with a
    // resized window).
    void resize(QSize size);
    void setFont(const QFont& font);

    int width() const override;
    int height() const override;
    void setDrawMode(int mode) override;
    void setDrawStyle(int style) override;
    void setFillStyle(int style) override;
    void setForeColor(PackedColour colour) override;
    void setFillColor(PackedColour colour) override;
    void clear(PackedColour background) override;
    void setPixel(int x, int y, PackedColour colour) override;
    void textOut(int x, int y, const std::string& text) override;
    void moveTo(int x, int y) override;
    void lineTo(int x, int y) override;
    void polygon(std::span<const SurfacePoint> points) override;
    void polyBezier(const std::array<SurfacePoint, 4>& points) override;
    void gradientTriangle(const std::array<GradientVertex, 3>& corners) override;

private:
    // The painter with the current pen, brush and raster operation; opened
    // on first use and closed before the image is written to directly.
    QPainter& painter(bool withPen, bool withBrush);
    void endPainting();

    QImage image_;
    std::unique_ptr<QPainter> painter_;
    QFont font_;
    int drawMode_ = drawmode::CopyPen;
    int drawStyle_ = drawstyle::Solid;
    int fillStyle_ = fillstyle::None;
    QColor fore_ = Qt::black, fill_ = Qt::black;
    QPoint current_;
};

// The platform's packed colour (low byte red) as a QColor, and back.
QColor ToQColor(PackedColour packed);
PackedColour FromQColor(const QColor& colour);

}  // namespace tarvokin::ui
