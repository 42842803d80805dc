// What the analysis windows (performance, aspect ratio) share: a legend of
// their curves, and a redraw after each refresh of their panel.
#pragma once

#include <QObject>
#include <QWidget>
#include <vector>
#include <functional>

#include "core/cells.h"
#include "core/chart_data.h"
#include "core/ui/entry_controls.h"

namespace tarvokin {
class Workbench;
}

class QLabel;

namespace tarvokin::ui {

class SheetBridge;

// A legend laid out in rows and columns under one or several charts: the
// six curves of three airfoils at two masses, with their captions in full,
// do not fit in one line under a chart of this size.
struct LegendEntry {
    std::string text;
    Rgb colour;
    int style = linestyle::Solid;
    bool operator==(const LegendEntry&) const = default;
};

class LegendStrip : public QWidget {
    Q_OBJECT
public:
    // Entries fill the grid row by row, or column by column when byColumn.
    LegendStrip(int columns, bool byColumn, QWidget* parent = nullptr);
    void setEntries(const std::vector<LegendEntry>& entries);
    const std::vector<LegendEntry>& entries() const { return entries_; }

private:
    int columns_;
    bool byColumn_;
    std::vector<LegendEntry> entries_;
    std::vector<QLabel*> swatches_, texts_;  // entry by entry
};

// The named series of a chart, as a legend.
std::vector<LegendEntry> seriesLegend(const ChartData& d);
// The labelled markers of a chart, each in the style of the series whose
// name its label begins with.
std::vector<LegendEntry> markerLegend(const ChartData& d);

// Runs `after` each time the workbench's refresh of a toolbar panel has run
// (at the master recalculation and when the panel opens), for as long as
// `owner` lives.
void followPanelRefresh(Workbench& wb, int button, QObject* owner, std::function<void()> after);

}  // namespace tarvokin::ui
