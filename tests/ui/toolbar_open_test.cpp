// Every toolbar position that shows a window opens it through the entry path,
// as `tarvokin --open N` does at start, and closes it again; every button
// shows a drawing of its own from the resources, sharp at twice the size.
#include <QAction>
#include <QImage>
#include <QtTest>

#include "entry/entry_path.h"
#include "main_window_fixture.h"

using namespace tarvokin;

class ToolbarOpenTest : public QObject {
    Q_OBJECT

private slots:
    void everyWindowButtonOpensAndClosesItsWindow() {
        test::MainWindowFixture f;
        int windows = 0;
        for (int p = 1; p <= 33; ++p) {
            if (!f.window->opensWindow(p)) continue;
            ++windows;
            if (f.wb.isOpen(p)) Click(f.wb, "F_Main", "Toolbar2", p);
            QVERIFY2(!f.wb.isOpen(p), qPrintable(QString::number(p)));
            f.bridge->enter([&] { Click(f.wb, "F_Main", "Toolbar2", p); });
            QVERIFY2(f.wb.isOpen(p), qPrintable(QString::number(p)));
            QVERIFY2(f.window->toolbarButton(p)->isChecked(), qPrintable(QString::number(p)));
            f.bridge->enter([&] { Click(f.wb, "F_Main", "Toolbar2", p); });
            QVERIFY2(!f.wb.isOpen(p), qPrintable(QString::number(p)));
        }
        QVERIFY(windows >= 15);
        QVERIFY(!f.window->opensWindow(3));  // "Ouvrir un Projet" is a command
        QVERIFY(f.messages.empty());
    }

    void everyButtonShowsItsOwnDrawing() {
        test::MainWindowFixture f;
        std::vector<std::pair<int, QImage>> drawn;
        for (int p = 1; p <= 33; ++p) {
            const QAction* a = f.window->toolbarButton(p);
            if (!a) continue;
            const QString at = QString::number(p);
            QVERIFY2(!a->icon().isNull(), qPrintable(at));
            // Drawn from the vector file at the screen's resolution, not a
            // small bitmap scaled up: a 24-pixel icon on a 2x screen is 48
            // real pixels.
            const QPixmap sharp = a->icon().pixmap(QSize(24, 24), 2.0);
            QCOMPARE(sharp.size(), QSize(48, 48));
            const QImage image = a->icon().pixmap(QSize(24, 24)).toImage().convertToFormat(QImage::Format_ARGB32);
            int inked = 0;
            for (int y = 0; y < image.height(); ++y)
                for (int x = 0; x < image.width(); ++x) inked += qAlpha(image.pixel(x, y)) > 0;
            // A drawing, not a missing file nor a stray dot.
            QVERIFY2(inked > 24 * 24 / 8, qPrintable(at));
            for (const auto& [other, seen] : drawn) QVERIFY2(seen != image, qPrintable(at + " = " + QString::number(other)));
            drawn.emplace_back(p, image);
        }
        QCOMPARE(drawn.size(), size_t{27});
    }
};

QTEST_MAIN(ToolbarOpenTest)
#include "toolbar_open_test.moc"
