// The project's tool windows: the new-model wizard (F_WIZZARD), the unit
// converter (F_CONVERT), the navigator of windows and fields (frmTrv) and the
// about box (FrmHlp). Thin views of the sheet: every entry goes through the
// entry path.
#pragma once

#include <QDialog>
#include <QWidget>
#include <functional>

class QTreeWidget;

namespace tarvokin {
class Workbench;
}

namespace tarvokin::ui {

class SheetBridge;
class PlanWidget;

// Modal; accepted once "Valider" has written and opened the new project.
class WizardDialog : public QDialog {
    Q_OBJECT
public:
    WizardDialog(Workbench& wb, SheetBridge& bridge, QWidget* parent = nullptr);
    PlanWidget* preview() const { return preview_; }

private:
    Workbench& wb_;
    SheetBridge& bridge_;
    PlanWidget* preview_;
};

class ConverterWindow : public QWidget {
    Q_OBJECT
public:
    ConverterWindow(Workbench& wb, SheetBridge& bridge, QWidget* parent = nullptr);
};

// The project's windows and their fields; a double-click asks `open` to show
// the window (form name) at the field (control path).
class NavigatorWindow : public QWidget {
    Q_OBJECT
public:
    NavigatorWindow(std::function<void(const QString& form, const QString& field)> open, QWidget* parent = nullptr);
    QTreeWidget* tree() const { return tree_; }

private:
    QTreeWidget* tree_;
};

class AboutDialog : public QDialog {
    Q_OBJECT
public:
    explicit AboutDialog(QWidget* parent = nullptr);
};

}  // namespace tarvokin::ui
