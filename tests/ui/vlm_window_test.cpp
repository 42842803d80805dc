// The lattice window in the real main window, offscreen: opened from the
// design window's wing and stabiliser tabs, moved by its controls, refreshed
// by the recalculation, closed by its frame.
#include <QChart>
#include <QLabel>
#include <QLineSeries>
#include <QPushButton>
#include <QSlider>
#include <QToolButton>
#include <QtTest>

#include "entry/entry_path.h"
#include "entry/field_rules.h"
#include "design/ui/vlm_window.h"
#include "design/vlm.h"
#include "main_window_fixture.h"
#include "core/ui/chart_panel.h"
#include "views/ui/design_window.h"

using namespace tarvokin;

namespace {

ui::VlmWindow* vlmWindow(ui::MainWindow* w) { return w->findChild<ui::VlmWindow*>("F_VLM"); }

QPushButton* pushButton(QWidget* in, const char* name) { return in->findChild<QPushButton*>(name); }

QStringList drawnNames(const ui::ChartPanel* c) {
    QStringList names;
    for (QAbstractSeries* s : c->chart()->series()) names << s->name();
    return names;
}

// y values of the first drawn series of a chart.
QList<qreal> drawnValues(const ui::ChartPanel* c) {
    QList<qreal> v;
    auto* s = qobject_cast<QXYSeries*>(c->chart()->series().at(0));
    for (const QPointF& p : s->points()) v << p.y();
    return v;
}

}  // namespace

class VlmWindowTest : public QObject {
    Q_OBJECT

private slots:
    void opensFromTheWingAndStabTabsAndClosesByItsFrame() {
        test::MainWindowFixture f;
        ui::VlmWindow* w = vlmWindow(f.window.get());
        QVERIFY(w);
        QVERIFY(!w->isVisible());
        QPushButton* wing = pushButton(f.window->designWindow(), "Command5");
        QVERIFY(wing);
        wing->click();
        QTRY_VERIFY(w->isVisible());
        QCOMPARE(f.wb.sheet.text(F_Main::Toolbar2[button::Wizard]), std::string("1"));
        QVERIFY(w->windowTitle().startsWith(QStringLiteral("Géométrie VLM")));
        QCOMPARE(drawnNames(w->chart(0)),
                 QStringList({QStringLiteral(" Répartition Portance"), QStringLiteral(" Répartition Elliptique")}));
        QCOMPARE(drawnNames(w->chart(1)), QStringList({QStringLiteral(" Cl")}));
        auto* cz = w->findChild<QLabel*>("P25");
        QVERIFY(cz);
        QCOMPARE(cz->text(), QStringLiteral("0.2935462"));
        QCOMPARE(cz->toolTip(), QStringLiteral("cz aile moyen calculé par VLM"));
        const QList<qreal> wingLift = drawnValues(w->chart(0));
        QCOMPARE(wingLift.size(), 32);

        pushButton(f.window->designWindow(), "Command7")->click();
        QCOMPARE(f.wb.sheet.text(F_Main::Toolbar2[button::Wizard]), std::string("2"));
        QTRY_VERIFY(w->windowTitle().endsWith(QStringLiteral("Stab")));
        QVERIFY(drawnValues(w->chart(0)) != wingLift);

        w->close();
        QCOMPARE(f.wb.sheet.text(F_Main::Toolbar2[button::Wizard]), std::string("0"));
        QVERIFY(!w->isVisible());
    }

    void controlsMoveTheCurvesAndTheRecalculationRefreshesThem() {
        test::MainWindowFixture f;
        pushButton(f.window->designWindow(), "Command5")->click();
        ui::VlmWindow* w = vlmWindow(f.window.get());
        QTRY_VERIFY(w->isVisible());
        const QList<qreal> before = drawnValues(w->chart(0));
        QVERIFY(qAbs(before.first() - before.last()) < 1e-9);

        // Ailerons: the slider writes both sides and the loading tilts.
        auto* ailerons = w->findChild<QSlider*>("Hscroll3");
        QVERIFY(ailerons);
        ailerons->setValue(5);
        QCOMPARE(f.wb.sheet.text(F_VLM::T_Ail_AngR), std::string("-5"));
        QTRY_VERIFY(drawnValues(w->chart(0)).first() > drawnValues(w->chart(0)).last() + 1e-4);
        ailerons->setValue(0);

        // The angle steps up by a tenth of a degree.
        for (QToolButton* b : w->findChildren<QToolButton*>("Command2"))
            if (b->property("index").toInt() == 1) b->click();
        QCOMPARE(f.wb.sheet.text(F_VLM::B33), std::string("71"));
        QTRY_COMPARE(w->findChild<QLabel*>("N25")->text(), QStringLiteral("0.1"));

        // A geometry entry runs the recalculation, which refreshes the panel.
        const QList<qreal> straight = drawnValues(w->chart(1));
        ui::guarded(f.wb, [&] { enterField(f.wb, F_GEO_SF::c9, "-4"); });
        QTRY_VERIFY(drawnValues(w->chart(1)) != straight);

        // A design panel takes the place: the window steps aside, its Tag kept.
        f.window->toolbarButton(button::Wing)->trigger();
        QTRY_VERIFY(!w->isVisible());
        QCOMPARE(f.wb.sheet.text(F_Main::Toolbar2[button::Wizard]), std::string("1"));
        pushButton(f.window->designWindow(), "Command5")->click();
        QTRY_VERIFY(w->isVisible());
    }
};

QTEST_MAIN(VlmWindowTest)
#include "vlm_window_test.moc"
