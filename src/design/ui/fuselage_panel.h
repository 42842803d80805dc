// F_GEO_FUS: the fuselage figures that the neutral point uses.
#pragma once

#include <QWidget>

namespace tarvokin::ui {
class SheetBridge;

class FuselagePanel : public QWidget {
    Q_OBJECT
public:
    explicit FuselagePanel(SheetBridge& bridge, QWidget* parent = nullptr);
};

}  // namespace tarvokin::ui
