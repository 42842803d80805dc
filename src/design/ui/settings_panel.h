// F_GEO_SF_REGLAGES: masses, static margin, design Cz, and the centring results.
#pragma once

#include <QWidget>

namespace tarvokin::ui {
class SheetBridge;

class SettingsPanel : public QWidget {
    Q_OBJECT
public:
    explicit SettingsPanel(SheetBridge& bridge, QWidget* parent = nullptr);
};

}  // namespace tarvokin::ui
