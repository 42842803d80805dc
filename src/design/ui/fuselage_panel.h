// F_GEO_FUS: the fuselage figures, its kind, and its two drawings where the
// frame markers are dragged.
#pragma once

#include <QWidget>

namespace tarvokin::ui {
class SheetBridge;
class FuselageDrawing;

class FuselagePanel : public QWidget {
    Q_OBJECT
public:
    explicit FuselagePanel(SheetBridge& bridge, QWidget* parent = nullptr);
    FuselageDrawing* sideView() const { return side_; }
    FuselageDrawing* topView() const { return top_; }

private:
    FuselageDrawing* side_ = nullptr;
    FuselageDrawing* top_ = nullptr;
};

}  // namespace tarvokin::ui
