// Picture3 of the design window: the 3D view of the aircraft. The engine
// draws into a QImage; frames are taken when the view asks for one (event
// driven, never a busy loop), and mouse events go to the view's logic.
#pragma once

#include <QWidget>

#include "views/ui/qimage_surface.h"

namespace tarvokin {
class Workbench;
}

namespace tarvokin::ui {

class View3DWidget : public QWidget {
    Q_OBJECT
public:
    explicit View3DWidget(Workbench& wb, QWidget* parent = nullptr);
    ~View3DWidget() override;

    // Rebuilds the scene from the fields (keeping the orbit) and draws.
    void rebuild();
    // Draws a frame soon, once, however many times it is asked before.
    void requestFrame();
    const QImage& picture() { return surface_.image(); }
    int framesDrawn() const { return frames_; }

protected:
    void paintEvent(QPaintEvent* e) override;
    void resizeEvent(QResizeEvent* e) override;
    void mousePressEvent(QMouseEvent* e) override;
    void mouseMoveEvent(QMouseEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;
    void wheelEvent(QWheelEvent* e) override;

private:
    void frame();
    Workbench& wb_;
    QImageSurface surface_;
    bool framePending_ = false;
    int frames_ = 0;
};

}  // namespace tarvokin::ui
