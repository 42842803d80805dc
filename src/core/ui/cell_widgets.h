// Widgets bound to one cell of the sheet. The objectName is the control's
// name (what the language files address); the sheet holds the value.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>

#include "core/cells.h"

namespace tarvokin::ui {

class SheetBridge;

// A numeric or text field: keys are checked as the field's entry rule says,
// a change runs the field's change step, Enter its Enter step and moves on.
class CellEdit : public QLineEdit {
    Q_OBJECT
public:
    CellEdit(SheetBridge& bridge, Cell cell, QWidget* parent = nullptr);
    Cell cell() const { return cell_; }

protected:
    void keyPressEvent(QKeyEvent* e) override;
    // Undo and redo are the program's, over every entry, not the field's own
    // undo of its text: the keys are left to the window's shortcuts.
    bool event(QEvent* e) override;

private:
    void pull();
    SheetBridge& bridge_;
    Cell cell_;
};

// A result shown read-only.
class CellLabel : public QLabel {
    Q_OBJECT
public:
    CellLabel(SheetBridge& bridge, Cell cell, QWidget* parent = nullptr);

private:
    SheetBridge& bridge_;
    Cell cell_;
};

// A flag cell ("1" / "0").
class CellCheck : public QCheckBox {
    Q_OBJECT
public:
    CellCheck(SheetBridge& bridge, Cell cell, const QString& caption, QWidget* parent = nullptr);

private:
    SheetBridge& bridge_;
    Cell cell_;
};

// A list cell: the entries and the position come from the sheet.
class CellCombo : public QComboBox {
    Q_OBJECT
public:
    CellCombo(SheetBridge& bridge, Cell cell, QWidget* parent = nullptr);

private:
    void pullItems();
    void pullIndex();
    SheetBridge& bridge_;
    Cell cell_;
    bool pulling_ = false;
};

QString qs(const std::string& s);
std::string ss(const QString& s);

}  // namespace tarvokin::ui
