// F_ALLONGEMENT "ALLONGEMENT": the estimated wing, the chosen aspect ratio,
// the tight turn, and the five charts of glide ratio against flight Cz and
// aspect ratio; with F_GRAPH1, the pop-up that shows one of them enlarged.
#pragma once

#include <QWidget>
#include <array>

#include "core/chart_data.h"

namespace tarvokin {
class Workbench;
}

namespace tarvokin::ui {

class SheetBridge;
class ChartPanel;
class LegendStrip;

// F_GRAPH1: one chart of the aspect-ratio window, enlarged, following its
// refreshes.
class ChartPopup : public QWidget {
    Q_OBJECT
public:
    explicit ChartPopup(QWidget* parent = nullptr);
    ChartPanel* chart() const { return chart_; }
    int shownIndex() const { return index_; }
    void showChart(int index, const ChartData& data);

private:
    ChartPanel* chart_;
    LegendStrip* legend_;
    int index_ = 0;
};

class AllongementWindow : public QWidget {
    Q_OBJECT
public:
    AllongementWindow(Workbench& wb, SheetBridge& bridge, QWidget* parent = nullptr);
    ChartPanel* chart(int i) const { return charts_[static_cast<size_t>(i)]; }
    ChartPopup* popup() const { return popup_; }
    void redraw();
    // Sends chart i to the pop-up and shows it.
    void enlarge(int i);

protected:
    void hideEvent(QHideEvent* e) override;

private:
    QWidget* wingBox();
    QWidget* chosenBox();
    QWidget* turnBox();
    QWidget* choicesBox();
    QWidget* chartCell(int i);
    ChartData shownData(int i) const;

    Workbench& wb_;
    SheetBridge& bridge_;
    std::array<ChartPanel*, 5> charts_{};
    ChartPopup* popup_ = nullptr;
    LegendStrip* legend_ = nullptr;
};

}  // namespace tarvokin::ui
