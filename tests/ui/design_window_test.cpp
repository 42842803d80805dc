// The design window in the real main window, offscreen: the aircraft is
// drawn at start, a drag orbits it, an edit of the wing redraws the view and
// the plans, the view buttons switch to the flat plans.
#include <QAction>
#include <QMouseEvent>
#include <QTabWidget>
#include <QToolButton>
#include <QScrollArea>
#include <QtTest>

#include "entry/entry_path.h"
#include "entry/field_rules.h"
#include "core/profile_file.h"
#include "main_window_fixture.h"
#include "views/ui/design_view_area.h"
#include "views/ui/design_window.h"
#include "views/ui/plan_widget.h"
#include "views/ui/view3d_widget.h"

using namespace tarvokin;

namespace {

// Share of the picture's pixels that differ from its top-left corner (the background).
double drawnShare(const QImage& img) {
    const QRgb bg = img.pixel(0, 0);
    int n = 0;
    for (int y = 0; y < img.height(); y += 4)
        for (int x = 0; x < img.width(); x += 4) n += img.pixel(x, y) != bg;
    return static_cast<double>(n) / ((img.width() / 4 + 1) * (img.height() / 4 + 1));
}

void send(QWidget* w, QEvent::Type t, QPoint p, Qt::MouseButton b, Qt::MouseButtons held) {
    QMouseEvent e(t, p, w->mapToGlobal(p), b, held, Qt::NoModifier);
    QApplication::sendEvent(w, &e);
}

}  // namespace

class DesignWindowTest : public QObject {
    Q_OBJECT

    struct Fixture : test::MainWindowFixture {
        Fixture() {
            wb.setOpen(button::View3D, true);
            window->resize(1500, 950);
        }
        ui::DesignViewArea* area() const { return window->designWindow()->findChild<ui::DesignViewArea*>(); }
        ui::View3DWidget* view() const { return area()->view3d(); }
    };

private slots:
    void theAircraftIsDrawnAndADragOrbitsIt() {
        Fixture f;
        QTRY_VERIFY(f.view()->framesDrawn() > 0);
        const QImage before = f.view()->picture().copy();
        QVERIFY(drawnShare(before) > 0.02);
        ui::View3DWidget* v = f.view();
        const QPoint c = v->rect().center();
        send(v, QEvent::MouseButtonPress, c, Qt::LeftButton, Qt::LeftButton);
        send(v, QEvent::MouseMove, c + QPoint(120, 40), Qt::NoButton, Qt::LeftButton);
        send(v, QEvent::MouseButtonRelease, c + QPoint(120, 40), Qt::LeftButton, Qt::NoButton);
        QTRY_VERIFY(f.view()->picture() != before);
        QVERIFY(drawnShare(f.view()->picture()) > 0.02);
        QVERIFY(f.wb.view3d.ViewAzimuth != 0);
    }

    void aSpanEditRedrawsTheViewAndThePlans() {
        Fixture f;
        QTRY_VERIFY(f.view()->framesDrawn() > 0);
        const QImage before = f.view()->picture().copy();
        const double planWidth = f.area()->centringPlan()->plan().bounds().width();
        f.area()->showView(PlanView::Dessus);
        const double spanBefore = f.area()->flatView()->plan().bounds().height();
        QVERIFY(spanBefore > 0);
        ui::guarded(f.wb, [&] { enterField(f.wb, F_GEO_SF::c7, "900"); });
        QCOMPARE(f.wb.sheet.text(F_GEO_SF::j6), std::string("3100"));
        QVERIFY(f.area()->flatView()->plan().bounds().height() > spanBefore + 500);
        f.area()->showView(PlanView::Vue3D);
        QTRY_VERIFY(f.view()->picture() != before);
        QVERIFY(f.area()->centringPlan()->plan().bounds().width() > 0);
        QVERIFY(planWidth > 0);
    }

    void photoModePutsTheViewsImageBehindItsPlan() {
        Fixture f;
        QImage photo(40, 20, QImage::Format_RGB32);
        photo.fill(Qt::green);
        const QString file = QString::fromStdString((f.dir.path() / "profil.png").string());
        QVERIFY(photo.save(file));
        f.area()->showView(PlanView::Profil);
        f.area()->loadPhoto(PlanView::Profil, file);
        QCOMPARE(ReadProfileString("IMAGES", "Photo_Profil", "", f.wb.projectFilePath), file.toStdString());
        QVERIFY(f.area()->flatView()->hasBackground());
        QVERIFY(!f.area()->centringPlan()->hasBackground());  // no image for that view
        f.area()->setPhotoMode(false);
        QVERIFY(!f.area()->flatView()->hasBackground());
    }

    void theDesignButtonHidesTheWindowAndTheMotorButtonsShowTheirTab() {
        Fixture f;
        QVERIFY(f.window->designWindow()->isVisible());
        f.window->toolbarButton(button::View3D)->trigger();
        QVERIFY(!f.window->designWindow()->isVisible());
        QCOMPARE(f.wb.sheet.text(F_Main::Toolbar2[button::View3D]), std::string("0"));
        f.window->toolbarButton(button::View3D)->trigger();
        QVERIFY(f.window->designWindow()->isVisible());
        f.window->toolbarButton(button::CalcMot)->trigger();
        // Each tab's page stands in a scroll area of its own.
        auto* page = qobject_cast<QScrollArea*>(f.window->designWindow()->tabs()->currentWidget());
        QVERIFY(page);
        QCOMPARE(page->widget()->objectName(), QString("Frame20"));
        // Every toolbar button works or waits, visibly, with its tooltip.
        for (int p = 2; p <= 33; ++p)
            if (QAction* a = f.window->toolbarButton(p)) QVERIFY(!a->toolTip().isEmpty());
    }
};

QTEST_MAIN(DesignWindowTest)
#include "design_window_test.moc"
