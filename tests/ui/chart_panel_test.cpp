// The chart adapter: what a calculation describes is what the chart shows,
// non-finite points never reach Qt, hover reads out values, saves are whole files.
#include <QChart>
#include <QFile>
#include <QLegendMarker>
#include <QLineSeries>
#include <QScatterSeries>
#include <QValueAxis>
#include <QtTest>

#include "core/ui/chart_panel.h"
#include "support/temp_dir.h"

using namespace tarvokin;

namespace {

ChartData sample() {
    ChartData d;
    d.title = "Finesse / V (km/h)";
    d.xTitle = "V(km/h)";
    d.yTitle = "Finesse";
    d.yMax = 30;
    ChartSeries mini{6, "MH32 masse mini", kAirfoilColours[0], linestyle::Solid, {{20, 10}, {30, 18}, {40, 15}}};
    ChartSeries maxi{9, "MH32 masse maxi", kAirfoilColours[0], linestyle::Dashed,
                     {{25, 11}, {std::nan(""), 3}, {35, 17}, {45, INFINITY}}};
    ChartSeries empty{7, "vide", kAirfoilColours[1], linestyle::Solid, {{std::nan(""), 1}}};
    d.series = {mini, maxi, empty};
    d.markers.push_back({ChartMarker::Kind::VerticalLine, 30, 0, kAirfoilColours[0], 13, ""});
    d.markers.push_back({ChartMarker::Kind::Point, 30, 18, kAirfoilColours[0], 13, ""});
    return d;
}

}  // namespace

class ChartPanelTest : public QObject {
    Q_OBJECT
private slots:
    void drawsSeriesStylesTitlesAndLimits() {
        ui::ChartPanel p;
        p.setData(sample());
        p.show();
        QVERIFY(QTest::qWaitForWindowExposed(&p));
        QCOMPARE(p.seriesCount(), 2);  // the all-nan series is dropped
        QCOMPARE(p.chart()->title(), QString("Finesse / V (km/h)"));
        auto* ay = qobject_cast<QValueAxis*>(p.chart()->axes(Qt::Vertical).first());
        QCOMPARE(ay->max(), 30.0);
        QCOMPARE(ay->titleText(), QString("Finesse"));
        QCOMPARE(p.chart()->axes(Qt::Horizontal).first()->titleText(), QString("V(km/h)"));
        QStringList legend;
        for (QAbstractSeries* s : p.chart()->series()) {
            if (auto* ls = qobject_cast<QLineSeries*>(s); ls && ls->name().endsWith("maxi")) {
                QCOMPARE(ls->pen().style(), Qt::DashLine);
                QCOMPARE(ls->count(), 2);  // nan and inf points removed
            }
            for (QLegendMarker* m : p.chart()->legend()->markers(s))
                if (m->isVisible()) legend << m->label();
        }
        QCOMPARE(legend, QStringList({"MH32 masse mini", "MH32 masse maxi"}));
        int scatter = 0;
        for (QAbstractSeries* s : p.chart()->series())
            if (auto* sc = qobject_cast<QScatterSeries*>(s)) {
                ++scatter;
                QCOMPARE(sc->markerSize(), 13.0);
            }
        QCOMPARE(scatter, 1);
    }

    void hoverReadsOutTheSeriesAndValue() {
        ui::ChartPanel p;
        p.setData(sample());
        auto* ls = qobject_cast<QLineSeries*>(p.chart()->series().first());
        emit ls->hovered(QPointF(30, 18), true);
        QCOMPARE(p.readout(), QString("MH32 masse mini : 30 ; 18"));
    }

    void savesPngAndSvgWithoutLeavingPartialFiles() {
        test::TempDir dir;
        ui::ChartPanel p;
        p.resize(500, 350);
        p.setData(sample());
        const QString png = QString::fromStdString((dir.path() / "c.png").string());
        const QString svg = QString::fromStdString((dir.path() / "c.svg").string());
        QVERIFY(p.savePng(png));
        QVERIFY(p.saveSvg(svg));
        QImage img(png);
        QVERIFY(!img.isNull());
        QFile f(svg);
        QVERIFY(f.open(QIODevice::ReadOnly));
        const QByteArray text = f.readAll();
        QVERIFY(text.contains("<svg"));
        QVERIFY(text.contains("Finesse"));
        // A folder in the way: the save fails and the folder is untouched.
        std::filesystem::create_directory(dir.path() / "busy.png");
        QVERIFY(!p.savePng(QString::fromStdString((dir.path() / "busy.png").string())));
        QVERIFY(std::filesystem::is_directory(dir.path() / "busy.png"));
    }
};

QTEST_MAIN(ChartPanelTest)
#include "chart_panel_test.moc"
