// Undo and redo as a modeller reaches them: keys typed into a field of the
// real main window, offscreen, then Ctrl+Z and Ctrl+Y with the focus still in
// the field, the edit menu's entries and the title's unsaved mark.
#include <QAction>
#include <QLineEdit>
#include <QtTest>

#include "main_window_fixture.h"

using namespace tarvokin;

class UndoWindowTest : public QObject {
    Q_OBJECT

private slots:
    void ctrlZInAFieldTakesBackTheWholeEntry() {
        test::MainWindowFixture f;
        f.window->toolbarButton(button::Wing)->trigger();
        auto* b7 = f.window->designPanel(button::Wing)->findChild<QLineEdit*>("b7");
        QVERIFY(b7);
        auto* undo = f.window->findChild<QAction*>("IM_UNDO");
        auto* redo = f.window->findChild<QAction*>("IM_REDO");
        QVERIFY(undo && redo);
        QVERIFY(!undo->isEnabled());
        QVERIFY(!f.window->isWindowModified());
        const std::string span = f.wb.sheet.text(F_GEO_SF::b7), total = f.wb.sheet.text(F_GEO_SF::j6);

        b7->setFocus();
        b7->selectAll();
        QTest::keyClicks(b7, "777");
        QTest::keyClick(b7, Qt::Key_Return);
        QCOMPARE(f.wb.sheet.text(F_GEO_SF::b7), std::string("777"));
        QVERIFY(undo->isEnabled());
        QVERIFY(f.window->isWindowModified());
        QCOMPARE(f.wb.history.steps.size(), size_t(1));  // three keys and Enter: one entry

        b7->setFocus();
        QTest::keyClick(b7, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(f.wb.sheet.text(F_GEO_SF::b7), span);
        QCOMPARE(f.wb.sheet.text(F_GEO_SF::j6), total);
        QCOMPARE(b7->text(), QString::fromStdString(span));
        QVERIFY(redo->isEnabled());
        QVERIFY(!f.window->isWindowModified());

        QTest::keyClick(b7, Qt::Key_Y, Qt::ControlModifier);
        QCOMPARE(f.wb.sheet.text(F_GEO_SF::b7), std::string("777"));
        undo->trigger();
        QCOMPARE(f.wb.sheet.text(F_GEO_SF::b7), span);
    }
};

QTEST_MAIN(UndoWindowTest)
#include "undo_window_test.moc"
