// F_PREFER: the installation's settings. Text fields take effect at once and
// are written when the panel closes; check boxes and options at each click.
#pragma once

#include <QDialog>

namespace tarvokin {
class Workbench;
}

namespace tarvokin::ui {

class SheetBridge;

class PreferencesDialog : public QDialog {
    Q_OBJECT
public:
    PreferencesDialog(Workbench& wb, SheetBridge& bridge, QWidget* parent = nullptr);

protected:
    void done(int result) override;

private:
    Workbench& wb_;
};

}  // namespace tarvokin::ui
