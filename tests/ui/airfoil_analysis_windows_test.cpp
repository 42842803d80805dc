// The pressure, database and interpolation windows in the real main window,
// offscreen: opened by their toolbar buttons and menu entries, driven through
// their controls, with the charts, the tree and the grids following.
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QTableWidget>
#include <QTreeWidget>
#include <QProcess>
#include <QtTest>
#include <cmath>
#include <filesystem>

#include "airfoils/ui/database_window.h"
#include "airfoils/ui/interpolation_window.h"
#include "airfoils/ui/pressure_window.h"
#include "core/ui/chart_panel.h"
#include "main_window_fixture.h"

using namespace tarvokin;
namespace fs = std::filesystem;

namespace {

// A window's screenshot for a person to look at, when asked for.
void shot(QWidget* w, const char* name) {
    const QByteArray dir = qgetenv("TARVOKIN_SHOT_DIR");
    if (dir.isEmpty()) return;
    QTest::qWait(500);  // the charts lay out their axes in the event loop
    w->grab().save(QString::fromUtf8(dir) + "/" + name + ".png");
    // The whole screen too, as a person sees it.
    QProcess::execute("import", {"-window", "root", QString::fromUtf8(dir) + "/" + name + "_screen.png"});
}

QLineEdit* field(QWidget* w, Cell c) {
    for (QLineEdit* e : w->findChildren<QLineEdit*>())
        if (e->objectName() == QString::fromStdString(cellPath(c).substr(cellPath(c).find('.') + 1))) return e;
    return nullptr;
}

}  // namespace

class AirfoilAnalysisWindowsTest : public QObject {
    Q_OBJECT

private slots:
    void pressureWindowRunsOnEveryChange() {
        test::MainWindowFixture f;
        f.wb.settings.xfoilPath = "/usr/bin/xfoil";
        // The toolbar button and the menu entry are live.
        QAction* button = f.window->toolbarButton(button::Aero);
        QVERIFY(button && button->isEnabled());
        QAction* entry = f.window->menuBar()->findChild<QAction*>("IM_PRESSURE");
        QVERIFY(entry && entry->isEnabled());
        button->trigger();
        auto* w = qobject_cast<ui::PressureWindow*>(f.window->panelWindow(button::Aero));
        QVERIFY(w && w->isVisible());
        QVERIFY(!f.wb.sheet.text(F_AERO::Combo5).empty());
        // Opening ran the wing's airfoil at the default point.
        QTRY_VERIFY(w->cpChart()->seriesCount() == 1);
        QVERIFY(f.wb.sheet.val(F_AERO::T_CpMin) < 0);

        // A viscous sequence: the check box, then Enter in the end field.
        f.wb.sheet.set(F_AERO::Check5, "1");
        w->findChild<QCheckBox*>("Ch_Visc")->click();
        QLineEdit* end = field(w, F_AERO::Text9);
        QVERIFY(end);
        end->selectAll();
        QTest::keyClicks(end, "3");
        QTest::keyClick(end, Qt::Key_Return);
        QCOMPARE(f.wb.sheet.text(F_AERO::Text9), std::string("3"));
        QTRY_COMPARE(f.wb.sheet.text(F_AERO::TRE), std::string("250000"));
        QVERIFY2(std::fabs(f.wb.sheet.val(F_AERO::TALFA) - 3.0) < 0.25, f.wb.sheet.text(F_AERO::TALFA).c_str());
        QTRY_VERIFY(w->quantityChart()->seriesCount() == 1);  // Hk of the dump
        w->findChild<QCheckBox*>("Check1")->click();
        QVERIFY(w->speedChart()->isVisible());
        QCOMPARE(w->speedChart()->seriesCount(), 1);
        shot(w, "F_AERO");

        // A Reynolds number of 0: the charts empty, the reason in the status line.
        QLineEdit* re = field(w, F_AERO::T_Re);
        re->selectAll();
        QTest::keyClicks(re, "0");
        QTest::keyClick(re, Qt::Key_Return);
        QCOMPARE(w->cpChart()->seriesCount(), 0);
        QVERIFY(f.wb.sheet.text(F_AERO::Status).find("Reynolds") != std::string::npos);
        QCOMPARE(f.wb.sheet.text(F_AERO::TRE), std::string("250000"));
        button->trigger();
        QVERIFY(!w->isVisible());
        for (const char* file : {"PRESSURE.CMD", "Pressure.Key", "PRESSURE.TXT", "PRESSURE.cp"})
            QVERIFY(!fs::exists(f.dir / file));
    }

    void databaseWindowBrowsesAndEdits() {
        test::MainWindowFixture f;
        f.window->toolbarButton(button::Base)->trigger();
        auto* w = qobject_cast<ui::DatabaseWindow*>(f.window->panelWindow(button::Base));
        QVERIFY(w && w->isVisible());
        QVERIFY(f.wb.isOpen(button::Base));
        QTreeWidget* tree = w->tree();
        QTRY_VERIFY(tree->topLevelItemCount() >= 12);
        QTreeWidgetItem* e387 = tree->findItems("E387", Qt::MatchExactly).value(0);
        QVERIFY(e387 && e387->childCount() == 6);
        // A polar node: the outline's figures and the polar in both charts.
        QTreeWidgetItem* polar = e387->child(3);
        tree->setCurrentItem(polar);
        emit tree->itemClicked(polar, 0);
        QCOMPARE(f.wb.sheet.text(F_BASE::T_Polar), polar->text(0).toStdString());
        QVERIFY(f.wb.sheet.text(F_BASE::Text5) != "NS");
        QCOMPARE(w->chart(0)->seriesCount(), 1);
        QCOMPARE(w->chart(1)->seriesCount(), 1);
        QVERIFY(w->chart(0)->data().title.rfind("Re : ", 0) == 0);
        QVERIFY(w->coordinates()->rowCount() > 30);
        shot(w, "F_BASE");
        // Deleting the polar (answered Yes) leaves its node.
        f.wb.askUser = [](const std::string&) { return true; };
        w->findChild<QPushButton*>("Command1")->click();
        QTRY_COMPARE(tree->findItems("E387", Qt::MatchExactly).value(0)->childCount(), 5);
    }

    void interpolationWindowShowsTheLookup() {
        test::MainWindowFixture f;
        f.window->toolbarButton(button::TestPol)->trigger();
        auto* w = qobject_cast<ui::InterpolationWindow*>(f.window->panelWindow(button::TestPol));
        QVERIFY(w && w->isVisible());
        QCOMPARE(f.wb.sheet.text(F_TEST_POL::Text1), std::string("220000"));
        QCOMPARE(f.wb.sheet.text(F_TEST_POL::Text2), std::string("0.14"));
        QTRY_VERIFY(w->chart()->seriesCount() == 6);
        QVERIFY(f.wb.sheet.val(F_TEST_POL::T_Cx) > 0);
        QCOMPARE(w->grid()->item(0, 6)->text().toStdString(), fixed(f.wb.sheet.val(F_TEST_POL::T_Cx), 5));
        w->findChildren<QCheckBox*>("Check1").value(0)->click();
        QTRY_VERIFY(w->chart()->seriesCount() == 5);
        shot(w, "F_TEST_POL");
    }
};

QTEST_MAIN(AirfoilAnalysisWindowsTest)
#include "airfoil_analysis_windows_test.moc"
