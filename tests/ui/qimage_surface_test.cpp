// The engine's surface on a QImage: raster operations and blended triangles
// that meet without gaps.
#include <QtTest>

#include "views/draw_surface.h"
#include "views/ui/qimage_surface.h"

using namespace tarvokin;

namespace {
QColor At(ui::QImageSurface& s, int x, int y) { return QColor(s.image().pixel(x, y)); }
}  // namespace

class QImageSurfaceTest : public QObject {
    Q_OBJECT

private slots:
    void mergePenOrsAndInvertNegatesTheBackground() {
        ui::QImageSurface s(QSize(40, 40));
        s.clear(0x0000FF);  // red
        s.setDrawMode(drawmode::MergePen);
        s.setDrawStyle(drawstyle::None);
        s.setFillStyle(fillstyle::Solid);
        s.setFillColor(0x00FF00);  // green
        const SurfacePoint square[4] = {{5, 5}, {30, 5}, {30, 30}, {5, 30}};
        s.polygon(square);
        QCOMPARE(At(s, 15, 15), QColor(255, 255, 0));
        QCOMPARE(At(s, 2, 2), QColor(255, 0, 0));

        s.clear(ui::FromQColor(QColor(10, 20, 30)));
        s.setDrawMode(drawmode::Invert);
        s.setDrawStyle(drawstyle::Solid);
        s.setFillStyle(fillstyle::None);
        s.polygon(square);
        QCOMPARE(At(s, 15, 5), QColor(245, 235, 225));  // on the outline
        QCOMPARE(At(s, 15, 15), QColor(10, 20, 30));    // no fill
        QCOMPARE(qAlpha(s.image().pixel(15, 5)), 255);
    }

    void gradientTrianglesBlendAndMeetWithoutGaps() {
        ui::QImageSurface s(QSize(64, 64));
        s.clear(0);
        const auto corner = [](int x, int y, int r, int g, int b) {
            return GradientVertex{x, y, std::uint16_t(r << 8), std::uint16_t(g << 8), std::uint16_t(b << 8)};
        };
        // Two halves of a square through its diagonal, wound both ways.
        s.gradientTriangle({corner(0, 0, 255, 0, 0), corner(60, 0, 0, 255, 0), corner(60, 60, 0, 0, 255)});
        s.gradientTriangle({corner(0, 0, 255, 0, 0), corner(0, 60, 0, 0, 255), corner(60, 60, 0, 0, 255)});
        QCOMPARE(At(s, 0, 0), QColor(255, 0, 0));
        QCOMPARE(At(s, 59, 1).green() > 240, true);
        int gaps = 0;
        for (int y = 1; y < 59; ++y)
            for (int x = 1; x < 59; ++x) gaps += s.image().pixel(x, y) == qRgb(0, 0, 0);
        QCOMPARE(gaps, 0);
        // Between a red and a blue corner: half of each.
        const QColor mid = At(s, 0, 30);
        QVERIFY(qAbs(mid.red() - 128) <= 3 && qAbs(mid.blue() - 128) <= 3);
    }
};

QTEST_MAIN(QImageSurfaceTest)
#include "qimage_surface_test.moc"
