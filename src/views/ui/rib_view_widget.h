// Picture1 of F_RIBS: the ribs or the wing's skin drawn by the 3D engine on a
// QImage; drag to orbit (left button) or to move in and out (right), wheel
// to zoom.
#pragma once

#include <QWidget>

#include "core/entry_table.h"
#include "views/ui/qimage_surface.h"

namespace tarvokin::ui {

class SheetBridge;

class RibViewWidget : public QWidget {
    Q_OBJECT
public:
    explicit RibViewWidget(SheetBridge& bridge, QWidget* parent = nullptr);
    ~RibViewWidget() override;
    const QImage& picture() { return surface_.image(); }

protected:
    void paintEvent(QPaintEvent* e) override;
    void resizeEvent(QResizeEvent* e) override;
    void mousePressEvent(QMouseEvent* e) override;
    void mouseMoveEvent(QMouseEvent* e) override;
    void wheelEvent(QWheelEvent* e) override;

private:
    void forward(Act act, QMouseEvent* e);
    SheetBridge& bridge_;
    QImageSurface surface_;
};

}  // namespace tarvokin::ui
