// F_NACA, "Naca generator": the family, its inputs with their sliders, the
// points and their distribution, and the outline drawn as it is generated.
#pragma once

#include <QWidget>

namespace tarvokin::ui {

class SheetBridge;

class NacaWindow : public QWidget {
    Q_OBJECT
public:
    explicit NacaWindow(SheetBridge& bridge, QWidget* parent = nullptr);

protected:
    void showEvent(QShowEvent* e) override;

private:
    void fitInputs();  // slider ranges and rows of the chosen family
    SheetBridge& bridge_;
    QWidget* rows_[6]{};
    class CellSlider* sliders_[6]{};
    QWidget* outline_ = nullptr;
};

}  // namespace tarvokin::ui
