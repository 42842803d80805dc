// F_GEO_STAB: the stabiliser (flat or V) and the fin.
#pragma once

#include <QWidget>

namespace tarvokin::ui {
class SheetBridge;

class StabPanel : public QWidget {
    Q_OBJECT
public:
    explicit StabPanel(SheetBridge& bridge, QWidget* parent = nullptr);
};

}  // namespace tarvokin::ui
