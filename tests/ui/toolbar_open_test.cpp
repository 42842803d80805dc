// Every toolbar position that shows a window opens it through the entry path,
// as `tarvokin --open N` does at start, and closes it again.
#include <QAction>
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
};

QTEST_MAIN(ToolbarOpenTest)
#include "toolbar_open_test.moc"
