// The two airfoil generators in the real main window, offscreen: opened from
// the toolbar and the menu, driven by their sliders, fields and buttons.
#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTableWidget>
#include <QtTest>

#include "airfoils/naca_generator.h"
#include "airfoils/ui/naca_window.h"
#include "airfoils/ui/ribs_window.h"
#include "main_window_fixture.h"
#include "views/ui/rib_view_widget.h"

using namespace tarvokin;

class GeneratorWindowsTest : public QObject {
    Q_OBJECT

    template <class T>
    static T* find(QWidget* in, const char* name, int index = -1) {
        for (T* w : in->findChildren<T*>(QString::fromLatin1(name))) {
            if (index < 0 || w->property("index").toInt() == index) return w;
        }
        qFatal("no control %s(%d)", name, index);
    }
    static QString shown(QWidget* in, const char* name) { return find<QLabel>(in, name)->text(); }

private slots:
    void nacaFollowsEverySliderAndSavesIntoTheCatalogue() {
        test::MainWindowFixture f;
        f.wb.settings.xfoilPath.clear();  // no solver run in a test: the polar is reported missing
        f.window->toolbarButton(button::NacaGenerator)->trigger();
        auto* gen = qobject_cast<ui::NacaWindow*>(f.window->panelWindow(button::NacaGenerator));
        QVERIFY(gen && gen->isVisible());
        QCOMPARE(gen->windowTitle(), QString("Naca generator"));
        QCOMPARE(shown(gen, "Label5"), QString("NACA2412"));

        // The five-digit family: its captions, its sliders' travel, its name.
        find<QRadioButton>(gen, "Option1", naca::Five)->click();
        QCOMPARE(shown(gen, "Label5"), QString("NACA23012"));
        QCOMPARE(find<QLabel>(gen, "Label1", 2)->text(), QString("Type"));
        auto* type = find<QSlider>(gen, "HScroll4", 2);
        QCOMPARE(type->maximum(), 1);
        QVERIFY(!find<QLineEdit>(gen, "T_DESIGN", 4)->isVisibleTo(gen));
        // A slider step regenerates at once and the field follows.
        auto* thickness = find<QSlider>(gen, "HScroll4", 3);
        thickness->setFocus();
        QTest::keyClick(thickness, Qt::Key_Right);
        QCOMPARE(find<QLineEdit>(gen, "T_DESIGN", 3)->text(), QString("13"));
        QCOMPARE(shown(gen, "Label5"), QString("NACA23013"));
        QCOMPARE(f.wb.generators.naca.name, std::string("NACA23013"));

        // The 6 series, then the save: the file, and the airfoil in the lists.
        find<QRadioButton>(gen, "Option1", naca::Series6)->click();
        QCOMPARE(shown(gen, "Label5"), QString("NACA64-212"));
        find<QPushButton>(gen, "Command2")->click();
        QVERIFY(std::filesystem::exists(f.dir / "DATA/NACA64-212.DAT"));
        QVERIFY(shown(gen, "StatusBar1").startsWith("NACA64-212.DAT enregistré"));
        QVERIFY(f.wb.catalogue.Find_Profil("NACA64-212") != kNotFound);
        // A bad value keeps the outline, with its reason under it.
        auto* t = find<QLineEdit>(gen, "T_DESIGN", 3);
        t->setFocus();
        t->selectAll();
        QTest::keyClicks(t, "30");
        QVERIFY(shown(gen, "StatusBar1").contains("hors des tables"));
        QCOMPARE(f.wb.generators.naca.name, std::string("NACA64-212"));

        // The menu entry is enabled and closes the window again.
        QAction* entry = f.window->menuBar()->findChild<QAction*>("IM_NACAGEN");
        QVERIFY(entry && entry->isEnabled());
        entry->trigger();
        QVERIFY(!gen->isVisible());
    }

    void ribsShowTheirGridTheir3DViewAndWriteTheirFiles() {
        test::MainWindowFixture f;
        QAction* entry = f.window->menuBar()->findChild<QAction*>("IM_RIBS");
        QVERIFY(entry && entry->isEnabled());
        entry->trigger();
        auto* ribs = qobject_cast<ui::RibsWindow*>(f.window->panelWindow(button::RibGenerator));
        QVERIFY(ribs && ribs->isVisible());
        // The design's first airfoil stands at both ends until others are chosen.
        QTRY_COMPARE(f.wb.generators.ribs.size(), size_t(5));
        auto* grid = find<QTableWidget>(ribs, "Flex");
        QTRY_VERIFY(grid->rowCount() > 5);
        QCOMPARE(grid->item(0, 0)->text(), QString("Nervure 1"));
        QCOMPARE(grid->horizontalHeaderItem(0)->text(), QString("              X"));

        auto* count = find<QLineEdit>(ribs, "Text4");
        count->setFocus();
        count->selectAll();
        QTest::keyClicks(count, "7");
        QCOMPARE(f.wb.generators.ribs.size(), size_t(7));
        QTRY_COMPARE(grid->item(grid->rowCount() - 1 - static_cast<int>(f.wb.generators.ribs[6].points.size()), 0)
                         ->text(),
                     QString("Nervure 7"));

        // The 3D view draws something other than its background.
        auto* view = find<ui::RibViewWidget>(ribs, "Picture1");
        const QImage img = view->grab().toImage();
        const QRgb background = img.pixel(1, 1);
        int drawn = 0;
        for (int y = 0; y < img.height(); y += 4)
            for (int x = 0; x < img.width(); x += 4) drawn += img.pixel(x, y) != background;
        QVERIFY2(drawn > 50, "no rib drawn");
        // An orbit moves the camera.
        const float azimuth = f.wb.generators.ribView.ViewAzimuth;
        QTest::mousePress(view, Qt::LeftButton, {}, QPoint(100, 100));
        QMouseEvent move(QEvent::MouseMove, QPointF(140, 100), QPointF(140, 100), Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QApplication::sendEvent(view, &move);
        QVERIFY(f.wb.generators.ribView.ViewAzimuth != azimuth);

        // The 2D view names the rib under the mouse.
        QWidget* plan = find<QWidget>(ribs, "Picture2");
        QTest::mouseMove(plan, QPoint(plan->width() / 2, 15));
        QTRY_VERIFY(f.wb.sheet.text(F_RIBS::L_NERVURE).starts_with("L: "));

        ribs->saveRibs(QString::fromStdString((f.dir / "rib").string()));
        QVERIFY(std::filesystem::exists(f.dir / "rib_7.DAT"));
        QCOMPARE(f.messages.back(), std::string("[#6] Nervures : Les fichiers rib_xx.DAT ont été générés"));
    }
};

QTEST_MAIN(GeneratorWindowsTest)
#include "generator_windows_test.moc"
