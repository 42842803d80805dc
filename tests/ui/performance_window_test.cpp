// The performance windows and the aspect-ratio window in the real main window,
// offscreen: open them by their toolbar buttons, step their inputs and see the
// figures and the drawn curves follow.
#include <QAction>
#include <QCheckBox>
#include <QLabel>
#include <QChart>
#include <QLineSeries>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QToolButton>
#include <QtTest>

#include "design/ui/allongement_window.h"
#include "design/ui/analysis_controls.h"
#include "design/ui/performance_window.h"
#include "main_window_fixture.h"
#include "core/ui/chart_panel.h"

using namespace tarvokin;

namespace {

// A step button of a window itself, not of a window it owns.
QToolButton* stepper(QWidget* window, const char* group, int index) {
    for (QToolButton* b : window->findChildren<QToolButton*>(group))
        if (b->window() == window && b->property("index").toInt() == index) return b;
    return nullptr;
}

std::vector<double> allPoints(const ChartData& d) {
    std::vector<double> v;
    for (const ChartSeries& s : d.series)
        for (const ChartPoint& p : s.points) v.insert(v.end(), {p.x, p.y});
    return v;
}

bool endsWith(const std::string& s, const std::string& tail) {
    return s.size() >= tail.size() && s.compare(s.size() - tail.size(), tail.size(), tail) == 0;
}

// Names of the curves the chart adapter really drew.
QStringList drawnNames(const ui::ChartPanel* c) {
    QStringList names;
    for (QAbstractSeries* s : c->chart()->series()) names << s->name();
    return names;
}

}  // namespace

class PerformanceWindowTest : public QObject {
    Q_OBJECT

    struct Fixture : test::MainWindowFixture {
        explicit Fixture(bool airfoilsFirst = true) {
            // The curves need the polars of the three airfoil slots.
            if (!airfoilsFirst) return;
            window->toolbarButton(button::Profils)->trigger();
            QTRY_VERIFY(wb.sheet.text(F_PROFILS::T_CXMin[2]) != "0");
        }
        ui::PerformanceWindow* perf() const {
            return qobject_cast<ui::PerformanceWindow*>(window->panelWindow(button::Performances));
        }
        ui::AllongementWindow* aspect() const {
            return qobject_cast<ui::AllongementWindow*>(window->panelWindow(button::Allongement));
        }
        void open(int b) {
            window->toolbarButton(b)->trigger();
            QTRY_VERIFY(window->panelWindow(b)->isVisible());
            QCOMPARE(wb.sheet.text(F_Main::Toolbar2[b]), std::string("1"));
        }
    };

private slots:
    void openingFirstReadsTheAirfoilsPolars() {
        Fixture f(false);
        f.open(button::Performances);
        // The slots' polars are read before the figures are trusted: a
        // glide ratio without airfoil drag would be far above any glider's.
        QTRY_VERIFY(f.wb.polars.Polars[0][3].LastRow > 0);
        double best = 0;
        for (const PerfPoint& p : f.wb.perf.PerfTable[0]) best = std::max(best, p.Finesse);
        QVERIFY(best > 10 && best < 35);
    }

    void speedPolarWindowFollowsTheAltitude() {
        Fixture f;
        f.open(button::Performances);
        const std::string first = f.wb.sheet.text(F_PROFILS::CB_1[0]);
        for (int i = 0; i < 2; ++i) {
            const ChartData& d = f.perf()->chart(i)->data();
            QCOMPARE(d.series.size(), size_t(6));
            QCOMPARE(d.series[0].name, first + " masse mini");
            QVERIFY(endsWith(d.series[3].name, " masse maxi"));
            QVERIFY(drawnNames(f.perf()->chart(i)).contains(QString::fromStdString(first + " masse mini")));
        }
        QVERIFY(drawnNames(f.perf()->chart(2)).contains("cz stab masse maxi"));
        QVERIFY(drawnNames(f.perf()->chart(3)).contains(QString::fromStdString(first)));
        QCOMPARE(f.perf()->chart(0)->data().title, std::string("Taux de chute Vz (m/s) / V (km/h)"));

        // Thinner air: the model flies faster on the same polar.
        const double density = f.wb.sheet.num(F_GEO_3::Text1);
        const std::vector<double> before = allPoints(f.perf()->chart(0)->data());
        QToolButton* up = stepper(f.perf(), "Command1", 1);
        QVERIFY(up);
        up->click();
        QCOMPARE(f.wb.sheet.text(F_GEO_3::Text2), std::string("400"));
        QVERIFY(f.wb.sheet.num(F_GEO_3::Text1) < density);
        QCOMPARE(f.perf()->findChild<QLabel*>("Text1")->text(), QString::fromStdString(f.wb.sheet.text(F_GEO_3::Text1)));
        QVERIFY(allPoints(f.perf()->chart(0)->data()) != before);
        // The legend under the sink-rate chart names the best points at their
        // new speeds (its labels kept, their text changed).
        const auto* strip = f.perf()->findChildren<ui::LegendStrip*>().value(0);
        QVERIFY(strip);
        QStringList captions, expected;
        for (const QLabel* l : strip->findChildren<QLabel*>())
            if (!l->text().isEmpty()) captions << l->text();
        for (const ui::LegendEntry& e : ui::markerLegend(f.perf()->chart(0)->data())) expected << QString::fromStdString(e.text);
        QVERIFY(!expected.isEmpty());
        QCOMPARE(captions, expected);

        // An airfoil switched off leaves the curves and the read-out.
        auto* check = f.perf()->findChildren<QCheckBox*>("Check5")[2];
        check->click();
        QCOMPARE(f.perf()->chart(1)->data().series.size(), size_t(4));
        QVERIFY(!f.perf()->findChildren<QLabel*>("Text6")[2]->isVisible());
        QVERIFY(f.perf()->findChildren<QLabel*>("Text6")[1]->isVisible());
    }

    void constantSpeedWindowOpensFromCommand4AndGoesWithItsWindow() {
        Fixture f;
        f.open(button::Performances);
        f.perf()->findChild<QPushButton*>("Command4")->click();
        ui::ConstantSpeedWindow* cs = f.perf()->constantSpeed();
        QVERIFY(cs->isVisible());
        QCOMPARE(cs->chart(0)->data().title, std::string("Cz / Cx"));
        QVERIFY(endsWith(cs->chart(1)->data().series.at(0).name, " masse mini"));

        const std::vector<double> power = allPoints(cs->chart(1)->data());
        stepper(cs, "Command1", 1)->click();
        QCOMPARE(f.wb.sheet.text(F_GEO_5::Text2), std::string("105"));
        QVERIFY(allPoints(cs->chart(1)->data()) != power);
        // The scale slider caps the glide-ratio axis and shows the cap.
        cs->findChild<QSlider*>("VScroll1")->setValue(40);
        QCOMPARE(f.wb.sheet.text(F_GEO_5::Text3), std::string("40"));
        QCOMPARE(cs->chart(0)->data().yMax.value_or(0), 40.0);

        // Closing the performance window by its frame lifts the button and
        // takes the constant-speed window with it.
        f.perf()->close();
        QCOMPARE(f.wb.sheet.text(F_Main::Toolbar2[button::Performances]), std::string("0"));
        QVERIFY(!f.perf()->isVisible());
        QVERIFY(!cs->isVisible());
        QVERIFY(!f.wb.perf.constantReynoldsOpen);
    }

    void aspectRatioWindowSwitchesVariantAndEnlargesAChart() {
        Fixture f;
        f.open(button::Allongement);
        ui::AllongementWindow* w = f.aspect();
        for (int i = 0; i < 5; ++i) QVERIFY(w->chart(i)->seriesCount() > 0);
        QVERIFY(endsWith(w->chart(2)->data().series.at(0).name, " masse mini"));

        // The radio buttons are the cells: V2.22, then the analytic V2.23.
        auto radios = w->findChildren<QRadioButton*>("Option1");
        QCOMPARE(radios.size(), qsizetype(2));
        radios[0]->click();
        QTRY_VERIFY(!f.wb.aspectRatio.analytic);
        const std::vector<double> polars = allPoints(w->chart(3)->data());
        radios[1]->click();
        QCOMPARE(f.wb.sheet.text(F_ALLONGEMENT::Option1[0]), std::string("0"));
        QVERIFY(!radios[0]->isChecked());
        QVERIFY(f.wb.aspectRatio.analytic);
        QTRY_VERIFY(allPoints(w->chart(3)->data()) != polars);

        // The turn-speed slider moves b15 and the turn chart; an airfoil
        // switched off leaves the charts.
        const std::vector<double> turn = allPoints(w->chart(4)->data());
        w->findChild<QSlider*>("HScroll1")->setValue(120);
        QCOMPARE(f.wb.sheet.text(F_ALLONGEMENT::b15), std::string("120"));
        QTRY_VERIFY(allPoints(w->chart(4)->data()) != turn);
        w->findChildren<QCheckBox*>("Check2")[0]->click();
        QTRY_COMPARE(w->chart(1)->data().series.size(), size_t(4));

        // The pop-up shows a chart enlarged and follows the chosen aspect ratio.
        QTest::mouseDClick(w->chart(1), Qt::LeftButton);
        QVERIFY(w->popup()->isVisible());
        QCOMPARE(w->popup()->chart()->data().title, w->chart(1)->data().title);
        const std::vector<double> chosen = allPoints(w->popup()->chart()->data());
        stepper(w, "Command1", 1)->click();
        QVERIFY(allPoints(w->popup()->chart()->data()) != chosen);
        QCOMPARE(allPoints(w->popup()->chart()->data()), allPoints(w->chart(1)->data()));

        w->close();
        QCOMPARE(f.wb.sheet.text(F_Main::Toolbar2[button::Allongement]), std::string("0"));
        QVERIFY(!w->popup()->isVisible());
    }
};

QTEST_MAIN(PerformanceWindowTest)
#include "performance_window_test.moc"
