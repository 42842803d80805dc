// The airfoil window in the real main window, offscreen: open it, read the
// figures and curves, choose an airfoil whose polars are missing.
#include <QAction>
#include <QComboBox>
#include <QtTest>
#include <filesystem>

#include "airfoils/ui/airfoil_window.h"
#include "main_window_fixture.h"
#include "core/ui/chart_panel.h"

using namespace tarvokin;

class AirfoilWindowTest : public QObject {
    Q_OBJECT

    struct Fixture : test::MainWindowFixture {
        ui::AirfoilWindow* airfoils() const { return window->airfoilWindow(); }
        void open() {
            window->toolbarButton(button::Profils)->trigger();
            QTRY_VERIFY(airfoils()->isVisible());
            QTRY_VERIFY(wb.sheet.text(F_PROFILS::T_CXMin[2]) != "0");
        }
    };

private slots:
    void openingFillsTheSlotsFiguresAndCurves() {
        Fixture f;
        f.open();
        QCOMPARE(f.wb.sheet.text(F_Main::T_profils), std::string("1"));
        // Slot 2 is "Générique Polyvalent", the alias of SD7037: its polars are SD7037's.
        QCOMPARE(f.wb.polars.Polars[2][5].Re, 1500000);
        QVERIFY(f.wb.polars.Polars[2][5].LastRow > 20);
        QCOMPARE(f.wb.sheet.text(F_PROFILS::T_EpRel[2]), std::string("9.20"));
        QVERIFY(f.airfoils()->chart(0)->seriesCount() > 0);
        QVERIFY(f.messages.empty());
        // Closing by the button hides the window and clears the tag.
        f.window->toolbarButton(button::Profils)->trigger();
        QVERIFY(!f.airfoils()->isVisible());
        QCOMPARE(f.wb.sheet.text(F_Main::Toolbar2[button::Profils]), std::string("0"));
    }

    void choosingAnAirfoilWithoutPolarsComputesThemWithXfoil() {
        Fixture f;
        namespace fs = std::filesystem;
        for (auto& e : fs::directory_iterator(f.dir / "POLAIRES")) {
            if (e.path().filename().string().rfind("E205_", 0) == 0) fs::remove(e.path());
        }
        f.open();
        auto* list = f.airfoils()->findChildren<QComboBox*>("CB_1")[1];
        const int row = list->findText("E205");
        QVERIFY(row > 0);
        list->setCurrentIndex(row);
        emit list->activated(row);
        QTRY_VERIFY_WITH_TIMEOUT(fs::exists(f.dir / "POLAIRES" / "E205_1500000.POL"), 60000);
        QTRY_VERIFY(!f.airfoils()->busy());
        QCOMPARE(f.wb.sheet.text(F_PROFILS::CB_1[1]), std::string("E205"));
        QVERIFY(f.wb.polars.Polars[1][0].LastRow > 10);
        QVERIFY(f.wb.polars.Polars[1][5].LastRow > 10);
        QVERIFY(f.wb.sheet.text(F_PROFILS::T_CXMin[1]) != "0.00000");
        // The catalogue keeps the figures of the new polars, 4 decimals.
        const auto& r = f.wb.catalogue.rows[f.wb.catalogue.Find_Profil("E205")];
        QCOMPARE(r.Cm0, std::round(f.wb.polars.Polars[1][5].Cm0 * 10000) / 10000);
        QVERIFY(!fs::exists(f.dir / "START_XFOIL.CMD"));
    }
};

QTEST_MAIN(AirfoilWindowTest)
#include "airfoil_window_test.moc"
