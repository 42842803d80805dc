// F_GEO_SF: the wing, five panels a side, its speed and its results.
#pragma once

#include <QWidget>

namespace tarvokin::ui {
class SheetBridge;

class WingPanel : public QWidget {
    Q_OBJECT
public:
    explicit WingPanel(SheetBridge& bridge, QWidget* parent = nullptr);
};

}  // namespace tarvokin::ui
