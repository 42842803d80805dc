// The one adapter over Qt Charts that every chart window uses: it draws a
// ChartData (series with colour, line style, name and points; titles, axis
// titles, limits; markers), reads out the value under the cursor, and saves
// the chart as PNG or SVG.
#pragma once

#include <QColor>
#include <QString>
#include <QWidget>
#include <map>
#include <vector>

#include "core/chart_data.h"

class QChart;
class QChartView;
class QLabel;
class QValueAxis;
class QXYSeries;

namespace tarvokin::ui {

class ChartPanel : public QWidget {
    Q_OBJECT
public:
    explicit ChartPanel(QWidget* parent = nullptr);

    void setData(const ChartData& data);
    void clear();
    const ChartData& data() const { return data_; }

    bool savePng(const QString& file) const;
    bool saveSvg(const QString& file) const;
    int seriesCount() const;          // data series, markers excluded
    QString readout() const;          // the last hover read-out, "" when none
    QChart* chart() const { return chart_; }

    // The titles shown for the calculation's French titles, in the window's
    // language; a title without a translation shows as it is given.
    void setTitleTranslations(std::map<QString, QString> titles);
    QString shownTitle(const QString& french) const;

signals:
    void doubleClicked();  // a window may show the chart enlarged

protected:
    void mouseDoubleClickEvent(QMouseEvent* e) override;

private:
    void rebuild();

    QChart* chart_;
    QChartView* view_;
    QLabel* readout_;
    void showTitles();
    ChartData data_;
    std::map<QString, QString> translations_;
    bool built_ = false;
    // What rebuild() made for the shape of data_: the axes, the line of each
    // series and the line or point of each mark, in order.
    QValueAxis* ax_ = nullptr;
    QValueAxis* ay_ = nullptr;
    std::vector<QXYSeries*> lines_, marks_;
};

QColor toQColor(const Rgb& c);

// The colour of an airfoil slot: blue, red, green; higher shades are lighter.
QColor slotColour(int slot, int shade = 0);
Rgb slotRgb(int slot, int shade = 0);

}  // namespace tarvokin::ui
