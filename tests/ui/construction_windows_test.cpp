// The construction windows in the real main window, offscreen: a marker of
// the fuselage dragged with the mouse, the frame generator opened from the
// toolbar and the CNC menu, a handle dragged, the doubling and the 3D piece.
#include <QAction>
#include <QCheckBox>
#include <QMenuBar>
#include <QtTest>

#include "construction/ui/frame_generator_window.h"
#include "design/ui/fuselage_drawing.h"
#include "design/ui/fuselage_panel.h"
#include "entry/entry_path.h"
#include "main_window_fixture.h"

using namespace tarvokin;

namespace {

// Pixels that are not the background's colour.
int inked(const QImage& image, QRgb background) {
    int n = 0;
    for (int y = 0; y < image.height(); y += 2)
        for (int x = 0; x < image.width(); x += 2)
            if (image.pixel(x, y) != background) ++n;
    return n;
}

}  // namespace

class ConstructionWindowsTest : public QObject {
    Q_OBJECT

private slots:
    void aMarkerDraggedInTheSideViewMovesItsFrameAndTheFiguresFollow() {
        test::MainWindowFixture f;
        f.window->toolbarButton(button::Fuselage)->trigger();
        auto* panel = static_cast<ui::FuselagePanel*>(f.window->designPanel(button::Fuselage));
        ui::FuselageDrawing* side = panel->sideView();
        side->resize(600, 240);
        QVERIFY(QTest::qWaitForWindowExposed(f.window.get()));
        const ViewMapping m = FuselageViewMapping(f.wb.sheet, FuselageView::Side, side->width(), side->height());
        const QPoint marker(int(m.toPixelX(330)), int(m.toPixelY(33)));
        const QPoint target(int(m.toPixelX(420)), int(m.toPixelY(40)));
        QTest::mousePress(side, Qt::LeftButton, {}, marker);
        QCOMPARE(f.wb.sheet.text(F_GEO_FUS::T_Marker), std::string("3"));
        QMouseEvent move(QEvent::MouseMove, target, side->mapToGlobal(target), Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(side, &move);
        QVERIFY(QString::fromStdString(f.wb.sheet.text(F_GEO_FUS::L_Marker)).endsWith(" mm"));
        QTest::mouseRelease(side, Qt::LeftButton, {}, target);
        QCOMPARE(f.wb.sheet.text(F_GEO_FUS::T_Marker), std::string("999"));
        QVERIFY(std::abs(f.wb.sheet.val(F_GEO_FUS::Couple_X1[3]) - 420) < 3);
        QCOMPARE(f.wb.sheet.text(F_GEO_FUS::Couple_X1[4]), std::string("560"));
        // The figures are those of the body through the markers.
        const FuselageFigures figures = ComputeFuselageFigures(f.wb.sheet);
        QCOMPARE(f.wb.sheet.text(F_GEO_FUS::j24), fixed(figures.wetted / 1e4, 1));
        QVERIFY(inked(side->picture(), qRgb(255, 255, 255)) > 100);
        QVERIFY(inked(panel->topView()->picture(), qRgb(255, 255, 255)) > 100);
    }

    void theFrameGeneratorOpensFromToolbarAndMenuAndDrawsWhatIsDragged() {
        test::MainWindowFixture f;
        QAction* entry = f.window->menuBar()->findChild<QAction*>("IM_GEN_Couples");
        QVERIFY(entry && entry->isEnabled());
        QVERIFY(f.window->toolbarButton(button::FrameGenerator)->isEnabled());
        entry->trigger();
        auto* gen = static_cast<ui::FrameGeneratorWindow*>(f.window->panelWindow(button::FrameGenerator));
        QVERIFY(gen->isVisible());
        QCOMPARE(f.wb.frame.ControlPoints.size(), size_t(9));
        ui::FrameDrawing* d = gen->drawing();
        d->resize(640, 560);
        d->redraw();
        const QImage before = d->picture();

        const FramePoint h = f.wb.frame.ControlPoints[4];
        const QPoint at = d->toWidget(h.x, h.y).toPoint();
        const QPoint to = d->toWidget(h.x + 60, h.y + 10).toPoint();
        QTest::mousePress(d, Qt::LeftButton, {}, at);
        QMouseEvent move(QEvent::MouseMove, to, d->mapToGlobal(to), Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(d, &move);
        QTest::mouseRelease(d, Qt::LeftButton, {}, to);
        QVERIFY(std::abs(f.wb.frame.ControlPoints[4].x - (h.x + 60)) < 2);
        QVERIFY(d->picture() != before);
        QVERIFY(!f.wb.sheet.text(Gen_Couples_2::lblX).empty());

        // The picture follows each of what it shows (handles, dotted curve,
        // points, axes, grid) and stays as it is for an entry elsewhere.
        for (int i = 2; i <= 6; ++i) {
            const QImage shown = d->picture();
            f.bridge->enter([&] { Click(f.wb, "Gen_Couples_2", "pb1", i); });
            QVERIFY2(d->picture() != shown, qPrintable(QString::number(i)));
        }
        const qint64 kept = d->picture().cacheKey();
        f.bridge->enter([&] { enterField(f.wb, F_GEO_SF::b7, "640"); });
        QCOMPARE(d->picture().cacheKey(), kept);

        // Doubling on: a second contour in the drawing, and the 3D piece is a ring.
        gen->findChild<QCheckBox*>("Check4")->click();
        QVERIFY(f.wb.frame.Doubling);
        QCOMPARE(f.wb.frame.DoubledRight.size(), size_t(12));
        gen->pieceWindow()->show();
        QVERIFY(QTest::qWaitForWindowExposed(gen->pieceWindow()));
        QVERIFY(f.wb.frame.meshReady);
        QVERIFY(inked(gen->pieceWindow()->picture(), gen->pieceWindow()->picture().pixel(0, 0)) > 100);

        // The toolbar button closes it again.
        f.window->toolbarButton(button::FrameGenerator)->trigger();
        QVERIFY(!gen->isVisible());
        QVERIFY(f.messages.empty());
    }
};

QTEST_MAIN(ConstructionWindowsTest)
#include "construction_windows_test.moc"
