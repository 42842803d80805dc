// One drawing of the fuselage window, "VUE PROFIL" (Picture1) or "VUE DESSUS"
// (Picture2): painted by the construction code on a picture of the widget's
// size, its mouse forwarded through the entry path in model millimetres.
#pragma once

#include <QImage>
#include <QWidget>

#include "construction/fuselage_shape.h"

namespace tarvokin::ui {
class SheetBridge;
class DeferredRedraw;

class FuselageDrawing : public QWidget {
    Q_OBJECT
public:
    FuselageDrawing(SheetBridge& bridge, FuselageView view, QWidget* parent = nullptr);
    QSize sizeHint() const override { return {520, 220}; }
    // The picture as last drawn (tests, screenshots).
    const QImage& picture() const { return image_; }
    void redraw();

protected:
    void paintEvent(QPaintEvent*) override;
    void resizeEvent(QResizeEvent*) override;
    void mousePressEvent(QMouseEvent* e) override;
    void mouseMoveEvent(QMouseEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;

private:
    void forward(QMouseEvent* e, int act);

    SheetBridge& bridge_;
    FuselageView view_;
    QImage image_;
    DeferredRedraw* redraw_ = nullptr;
};

}  // namespace tarvokin::ui
