// The chart adapter: what a calculation describes is what the chart shows,
// also when only its points moved, non-finite points never reach Qt, hover
// reads out values, saves are whole files.
#include <QChart>
#include <QFile>
#include <QLegendMarker>
#include <QLineSeries>
#include <QScatterSeries>
#include <QRegularExpression>
#include <QValueAxis>
#include <QXYSeries>
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

    // A chart whose points, limits and captions change moves what it drew
    // (its series and axes stay): it must then show what a chart drawn anew
    // from the same data shows, axes rounded from scratch included.
    void movedPointsShowWhatANewChartShows() {
        auto shown = [](const ui::ChartPanel& p) {
            QStringList out;
            for (QAbstractAxis* a : p.chart()->axes()) {
                auto* v = qobject_cast<QValueAxis*>(a);
                out << QStringLiteral("axis %1 %2 %3 %4").arg(v->titleText()).arg(v->min()).arg(v->max()).arg(v->tickCount());
            }
            for (QAbstractSeries* s : p.chart()->series()) {
                QString line = s->name();
                for (const QPointF& q : qobject_cast<QXYSeries*>(s)->points()) line += QStringLiteral(" %1,%2").arg(q.x()).arg(q.y());
                for (QLegendMarker* m : p.chart()->legend()->markers(s)) line += m->isVisible() ? " shown" : " hidden";
                out << line;
            }
            return out;
        };
        ui::ChartPanel moved;
        ChartData first = sample();
        first.yMax.reset();  // rounded to nice numbers
        first.markers[1].label = "best (30 Km/h)";
        moved.setData(first);
        const QList<QAbstractSeries*> before = moved.chart()->series();

        ChartData next = first;
        for (ChartPoint& q : next.series[0].points) q.y *= 7.3;  // another scale, other ticks
        next.series[1].name = "MH32 masse maxi (31.4 Km/h)";
        next.markers[0].x = 41;
        next.markers[1] = {ChartMarker::Kind::Point, 41, 120, kAirfoilColours[0], 13, "best (41 Km/h)"};
        next.xMin = 0;
        moved.setData(next);
        QVERIFY(moved.chart()->series() == before);

        ui::ChartPanel fresh;
        fresh.setData(next);
        QCOMPARE(shown(moved), shown(fresh));
        QVERIFY(!shown(moved).filter(QRegularExpression("^best \\(41 Km/h\\) 41,120 ")).isEmpty());
        QVERIFY(!shown(moved).filter(QRegularExpression("^MH32 masse maxi \\(31.4 Km/h\\) 25,11 35,17 ")).isEmpty());
        // Back to the first: the axes are rounded again as for a new chart.
        moved.setData(first);
        ui::ChartPanel again;
        again.setData(first);
        QCOMPARE(shown(moved), shown(again));
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
