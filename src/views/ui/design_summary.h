// The centre of the main window until the 3D design window takes the place:
// the model's name, the summary lines and the centring results.
#pragma once

#include <QWidget>

namespace tarvokin::ui {
class SheetBridge;

class DesignSummary : public QWidget {
    Q_OBJECT
public:
    explicit DesignSummary(SheetBridge& bridge, QWidget* parent = nullptr);
};

}  // namespace tarvokin::ui
