// The two tail calculators, reached from the menu: F_STAB ("Calcul de la
// Surface du Stab") between the surfaces of a cross tail and a V tail, and
// F_STAB_VE ("Equivalence Stab V <> Stab Normal") between their chords and
// lengths. Plain windows: they write nothing to the project.
#pragma once

#include <QWidget>

namespace tarvokin::ui {

class SheetBridge;

class StabWindow : public QWidget {
    Q_OBJECT
public:
    explicit StabWindow(SheetBridge& bridge, QWidget* parent = nullptr);

protected:
    void showEvent(QShowEvent* e) override;

private:
    SheetBridge& bridge_;
};

class StabVEWindow : public QWidget {
    Q_OBJECT
public:
    explicit StabVEWindow(SheetBridge& bridge, QWidget* parent = nullptr);

private:
    SheetBridge& bridge_;
};

}  // namespace tarvokin::ui
