// The power windows and the tail calculators in the real main window,
// offscreen, on the demo model: open them from the toolbar and the menu, type,
// click, and read the widgets, the charts and the project file.
#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QTabWidget>
#include <QTableWidget>
#include <QTreeWidget>
#include <QtTest>
#include <cmath>

#include "design/recalc.h"
#include "main_window_fixture.h"
#include "power/ui/calc_mot_window.h"
#include "power/ui/motorisation_window.h"
#include "power/ui/servos_window.h"
#include "core/profile_file.h"
#include "core/ui/chart_panel.h"
#include "views/ui/design_window.h"

using namespace tarvokin;

class PowerWindowsTest : public QObject {
    Q_OBJECT

    struct Fixture : test::MainWindowFixture {
        template <class T>
        T* find(QWidget* in, const char* name) const {
            T* w = in->findChild<T*>(QString::fromLatin1(name));
            if (!w) qFatal("no control %s", name);
            return w;
        }
        void type(QWidget* in, const char* name, const QString& keys) {
            auto* e = find<QLineEdit>(in, name);
            e->setFocus();
            e->selectAll();
            QTest::keyClicks(e, keys);
        }
        void erase(QWidget* in, const char* name) {
            auto* e = find<QLineEdit>(in, name);
            e->setFocus();
            e->selectAll();
            QTest::keyClick(e, Qt::Key_Backspace);
        }
        QString shown(QWidget* in, const char* name) const { return find<QLabel>(in, name)->text(); }
        template <class W>
        W* open(int button) {
            window->toolbarButton(button)->trigger();
            auto* w = qobject_cast<W*>(window->panelWindow(button));
            if (!w || !w->isVisible()) qFatal("window of button %d not shown", button);
            return w;
        }
        std::string projectKey(const char* section, const char* key) const {
            return ReadProfileString(section, key, "?", wb.projectFilePath);
        }
    };

    static double lastY(const ui::ChartPanel* c) { return c->data().series.at(0).points.back().y; }

    static void click(QTableWidget* grid, int row) {
        QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, grid->visualItemRect(grid->item(row, 0)).center());
    }

private slots:
    void motorCalculationProposesListsCandidatesAndEvaluatesTheChoice() {
        Fixture f;
        auto* calc = f.open<ui::CalcMotWindow>(button::CalcMot);
        QCOMPARE(calc->windowTitle(), QString("CALCULS MOTEUR"));
        QCOMPARE(f.window->designWindow()->tabs()->currentIndex(), 5);
        // The proposal for the demo's class and mass.
        for (const char* name : {"PM", "kv", "T_Masse_Moteur", "HD", "HP", "cb", "L21", "V_ASC"})
            QVERIFY2(f.shown(calc, name) != "-", name);
        QVERIFY(f.shown(calc, "L_Pitch").startsWith("m/s"));
        // Nothing chosen yet: the chosen set cannot be evaluated, the curves over the pitch are empty.
        QCOMPARE(f.shown(calc, "I0"), QString("-"));
        QTRY_VERIFY(calc->charts()[6]->seriesCount() > 0);
        QCOMPARE(calc->charts()[0]->seriesCount(), 0);
        QTRY_VERIFY(calc->charts()[8]->seriesCount() > 0);  // the power needed in level flight

        // Every brand with its motors; the grid holds only motors near the proposal.
        QVERIFY(calc->motorTree()->topLevelItemCount() >= 2);
        QTableWidget* grid = calc->candidates();
        QTRY_VERIFY(grid->rowCount() > 0);
        const double kv = f.wb.sheet.val(F_CALC_MOT::kv), mass = f.wb.sheet.val(F_CALC_MOT::T_Masse_Moteur);
        for (int r = 0; r < grid->rowCount(); ++r) {
            QVERIFY(std::fabs(grid->item(r, 3)->text().toDouble() - kv) <= 0.1 * kv);
            QVERIFY(std::fabs(grid->item(r, 6)->text().toDouble() - mass) <= 0.1 * mass);
        }
        QCOMPARE(grid->horizontalHeaderItem(0)->text(), QString::number(grid->rowCount()));
        const int narrow = grid->rowCount();
        f.find<QSlider>(calc, "Slider1")->setValue(50);
        QCOMPARE(f.wb.sheet.text(F_CALC_MOT::Slider1), std::string("50"));
        QTRY_VERIFY(grid->rowCount() > narrow);

        // A candidate goes to the chosen set; with a propeller and a battery it is evaluated.
        click(grid, 1);
        QCOMPARE(f.wb.sheet.text(F_CALC_MOT::G29), grid->item(1, 3)->text().toStdString());
        QCOMPARE(f.find<QLineEdit>(calc, "Ra")->text(), grid->item(1, 5)->text());
        f.type(calc, "L51", "10");
        f.type(calc, "N51", "6");
        f.type(calc, "L33", "2200");
        for (const char* name : {"I0", "PElec0", "Régime_Helice0", "L58", "L35", "Temps_Moteur0"})
            QVERIFY2(f.shown(calc, name) != "-", name);
        QTRY_COMPARE(calc->charts()[0]->seriesCount(), 1);
        QCOMPARE(calc->charts()[0]->data().series[0].points.size(), size_t(19));

        // A motor of the tree the same way.
        QTreeWidgetItem* brand = calc->motorTree()->findItems("AXI", Qt::MatchExactly).value(0);
        QVERIFY(brand);
        calc->motorTree()->expandItem(brand);
        QTreeWidgetItem* motor = nullptr;
        for (int i = 0; i < brand->childCount(); ++i)
            if (brand->child(i)->text(0) == "2820/10") motor = brand->child(i);
        QVERIFY(motor);
        calc->motorTree()->scrollToItem(motor);
        QTest::mouseClick(calc->motorTree()->viewport(), Qt::LeftButton, {},
                          calc->motorTree()->visualItemRect(motor).center());
        QCOMPARE(f.wb.sheet.text(F_CALC_MOT::G29), std::string("1200"));
        QCOMPARE(f.shown(calc, "I0"), QString::fromStdString(f.wb.sheet.text(F_CALC_MOT::I0)));
        QVERIFY(f.messages.empty());
    }

    void motorisationChoiceGoesToTheProjectAndTheBalance() {
        Fixture f;
        // The airfoils' polars come with the preselection window, as the modeller works.
        f.window->toolbarButton(button::Profils)->trigger();
        QTRY_VERIFY(f.wb.sheet.text(F_PROFILS::T_CXMin[0]) != "0");
        auto* mot = f.open<ui::MotorisationWindow>(button::Motorisation);
        QCOMPARE(f.window->designWindow()->tabs()->currentIndex(), 5);
        auto* list = f.find<QComboBox>(mot, "CB_MOT");
        QVERIFY(list->count() > 10);
        // No motor yet: the propeller has no pitch speed, there is no level flight.
        QCOMPARE(f.shown(mot, "h3"), QString("-"));
        const int row = list->findText("AXI@2820/10");
        QVERIFY(row >= 0);
        list->setCurrentIndex(row);
        emit list->activated(row);
        QCOMPARE(f.find<QLineEdit>(mot, "T_Ra")->text(), QString("0.039"));
        QCOMPARE(f.find<QLineEdit>(mot, "d8")->text(), QString("1200"));
        QCOMPARE(f.projectKey("Moteur", "Marque"), std::string("AXI"));
        QCOMPARE(f.projectKey("Moteur", "Moteur"), std::string("2820/10"));
        // The demo's speed polar meets the propeller's power: a level speed, marked on the balance.
        QVERIFY(f.shown(mot, "h3") != "-");
        ui::ChartPanel* balance = mot->charts()[0];
        QTRY_VERIFY(!balance->data().series.empty() && balance->data().series.back().name == "Vitesse vol en palier");
        QCOMPARE(balance->data().title, std::string("Equilibre des Puissances pour le vol en Palier"));
        QVERIFY(std::fabs(balance->data().series.back().points[0].x - f.wb.sheet.val(F_3D::h3)) <= 0.05);
        QVERIFY(mot->charts()[1]->seriesCount() == 3 && mot->charts()[2]->seriesCount() == 1);
        QVERIFY(f.messages.empty());
    }

    void designMotorTabComputesWhenShown() {
        Fixture f;
        // The demo keeps 2200 mAh; the figures come as the tab is shown.
        QCOMPARE(f.wb.sheet.text(F_3D::b6), std::string("2200"));
        QWidget* design = f.window->designWindow();
        f.window->designWindow()->tabs()->setCurrentIndex(5);
        QCOMPARE(f.shown(design, "b8"), QString("8.2"));  // 18 A on 2200 mAh
        for (const char* name : {"b7", "h8", "f7", "d8", "f8", "h4", "h6"})
            QVERIFY2(f.shown(design, name) != "-", name);
        QVERIFY(f.shown(design, "B89").endsWith(" %"));
    }

    void servosFollowTheSpeedAndTheRecalculation() {
        Fixture f;
        auto* servos = f.open<ui::ServosWindow>(button::Servos);
        QCOMPARE(servos->windowTitle(), QString("SERVOS"));
        const std::pair<const char*, const char*> elevator[] = {
            {"B10", "20"}, {"b12", "30"}, {"b9", "300"}, {"b7", "30"}, {"b8", "40"}};
        for (auto [name, value] : elevator) f.type(servos, name, value);
        const QString travel = f.shown(servos, "b11"), torque = f.shown(servos, "b13");
        QVERIFY(travel != "-" && torque != "-");
        QTRY_COMPARE(servos->charts()[0]->seriesCount(), 1);
        QCOMPARE(servos->charts()[0]->data().title, std::string("Gouvernes classiques - profondeur"));
        const double atTop = lastY(servos->charts()[0]);
        QCOMPARE(QString::number(atTop, 'f', 2), torque);
        // Half the speed, a quarter of the torque; the travel does not move.
        f.type(servos, "b5", "200");
        QTRY_COMPARE(lastY(servos->charts()[0]), atTop / 4);
        QCOMPARE(f.shown(servos, "b11"), travel);
        QCOMPARE(f.shown(servos, "b13"), QString::number(atTop / 4, 'f', 2));
        // A value put in place without its change step: the master recalculation refreshes the open window.
        f.wb.sheet.set(F_SERVOS::b9, "600");
        RecalcAll(f.wb);
        QCOMPARE(f.shown(servos, "b13"), QString::number(atTop / 2, 'f', 2));
        QTRY_COMPARE(lastY(servos->charts()[0]), atTop / 2);
        QVERIFY(f.messages.empty());
    }

    void tailCalculatorsFromTheMenuLeaveTheProjectAlone() {
        Fixture f;
        const std::string before = test::readBytes(f.wb.projectFilePath);
        f.window->findChild<QAction*>("IM_STAB")->trigger();
        auto* stab = f.window->findChild<QWidget*>("F_STAB");
        QVERIFY(stab && stab->isVisible() && stab->isWindow());
        QCOMPARE(stab->windowTitle(), QString("Calcul de la Surface du Stab"));
        f.type(stab, "D11", "10");
        f.type(stab, "D12", "10");
        QCOMPARE(f.shown(stab, "D14"), QString("10.00"));
        QCOMPARE(f.shown(stab, "D15"), QString("45.01"));
        auto* angle = f.find<QComboBox>(stab, "Angle_V");
        const int right = angle->findText("90");
        angle->setCurrentIndex(right);
        emit angle->activated(right);
        f.type(stab, "D22", "10");
        QCOMPARE(f.shown(stab, "D24"), QString("10.00"));

        f.window->findChild<QAction*>("IM_STAB_VE")->trigger();
        auto* ve = f.window->findChild<QWidget*>("F_STAB_VE");
        QVERIFY(ve && ve->isVisible() && ve->isWindow());
        f.type(ve, "Corde1V", "100");
        f.type(ve, "LongueurV", "300");
        f.find<QPushButton>(ve, "Command1")->click();
        // sin(55°): 0.819
        QCOMPARE(f.find<QLineEdit>(ve, "Corde1N")->text(), QString("82"));
        QCOMPARE(f.find<QLineEdit>(ve, "LongueurN")->text(), QString("246"));
        f.erase(ve, "OuvertureV");
        f.type(ve, "Corde1N", "82");
        f.find<QPushButton>(ve, "Command2")->click();
        QCOMPARE(f.find<QLineEdit>(ve, "OuvertureV")->text(), QString("110"));
        QCOMPARE(f.find<QLineEdit>(ve, "Corde1V")->text(), QString("100"));
        // A second press of the menu entry shows the same window.
        f.window->findChild<QAction*>("IM_STAB")->trigger();
        QCOMPARE(f.window->findChildren<QWidget*>("F_STAB").size(), 1);
        QCOMPARE(test::readBytes(f.wb.projectFilePath), before);
    }
};

QTEST_MAIN(PowerWindowsTest)
#include "power_windows_test.moc"
