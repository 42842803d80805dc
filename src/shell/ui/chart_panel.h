// One small adapter over Qt Charts that knows the program's series styles:
// a colour per airfoil slot, solid or dashed lines, points or none, axis
// titles, and saving a chart as a PNG picture.
#pragma once

#include <QString>
#include <QWidget>
#include <utility>
#include <vector>

class QChart;
class QChartView;

namespace tarvokin::ui {

class ChartPanel : public QWidget {
    Q_OBJECT
public:
    explicit ChartPanel(QWidget* parent = nullptr);

    void clear();
    void setAxisTitles(const QString& x, const QString& y);
    // shade 0 is the slot's full colour; higher shades are lighter.
    // Only series with inLegend appear in the legend (one entry per airfoil,
    // not one per Reynolds number).
    void addSeries(const QString& name, const std::vector<std::pair<double, double>>& points, int slot, int shade,
                   bool dashed, bool withPoints, bool inLegend = true);
    bool savePng(const QString& file) const;
    int seriesCount() const;

private:
    QChart* chart_;
    QChartView* view_;
    QString xTitle_, yTitle_;
    void rebuildAxes();
};

// The colour of an airfoil slot: blue, red, green.
QColor slotColour(int slot, int shade = 0);

}  // namespace tarvokin::ui
