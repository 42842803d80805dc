// Controls shared by the analysis windows (performance, aspect ratio): step
// buttons, option buttons and sliders bound to cells, and a redraw that waits
// until the handler that changed a cell has finished.
#pragma once

#include <QObject>
#include <QRadioButton>
#include <QSlider>
#include <QToolButton>
#include <functional>

#include "project/cells.h"
#include "views/chart_data.h"

namespace tarvokin {
class Workbench;
}

namespace tarvokin::ui {

class SheetBridge;

// One button of a step group (Command1, Command2...): objectName is the
// group's name and the "index" property its position in the group.
QToolButton* stepButton(const char* group, int index, Qt::ArrowType arrow, const QString& tooltip,
                        std::function<void()> click);

// An option button bound to a flag cell. Its change step decides what
// happens to the other buttons of its group; a click on a set button keeps it
// set, as an option button never clears itself.
class CellRadio : public QRadioButton {
    Q_OBJECT
public:
    CellRadio(SheetBridge& bridge, Cell cell, const QString& caption, QWidget* parent = nullptr);

private:
    SheetBridge& bridge_;
    Cell cell_;
};

// A slider bound to a number cell. Moving it calls `move` with the new
// position (the window's handler for it); a change of the cell moves it.
class CellSlider : public QSlider {
    Q_OBJECT
public:
    CellSlider(SheetBridge& bridge, Cell cell, Qt::Orientation orientation, int low, int high,
               std::function<void(int)> move, QWidget* parent = nullptr);

private:
    void pull();
    SheetBridge& bridge_;
    Cell cell_;
};

// Collects redraw requests and runs one redraw once control is back in the
// event loop: a cell's watcher fires while the cell is written, before the
// change step that recomputes the charts has run.
class DeferredRedraw : public QObject {
    Q_OBJECT
public:
    DeferredRedraw(QObject* owner, std::function<void()> redraw);
    void request();

private:
    std::function<void()> redraw_;
    bool pending_ = false;
};

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
