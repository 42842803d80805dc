// The frame generator: Gen_Couples_2 ("Générateur de Couples", the editor),
// Gen_Couples_1 (the frame as a 3D piece) and Gen_Couples_3 ("Assemblage").
// Thin views of the frame state and of the generator's cells; every action
// goes through the entry path.
#pragma once

#include <QImage>
#include <QWidget>
#include <array>
#include <optional>
#include <string>
#include <vector>

#include "core/frame_state.h"
#include "views/ui/qimage_surface.h"

namespace tarvokin::ui {
class SheetBridge;

// The editor's drawing area: handles, curves, grid and axes over the
// background picture; its mouse in drawing pixels.
class FrameDrawing : public QWidget {
    Q_OBJECT
public:
    explicit FrameDrawing(SheetBridge& bridge, QWidget* parent = nullptr);
    QSize sizeHint() const override { return {640, 560}; }
    const QImage& picture() const { return image_; }
    void redraw();
    // Draws again when what the picture is drawn from changed: every entry
    // of the run reaches the window, most of them changing nothing here.
    void follow();
    // Drawing pixels of a point of the widget, and back.
    QPointF toDrawing(QPointF widget) const;
    QPointF toWidget(double x, double y) const;

protected:
    void paintEvent(QPaintEvent*) override;
    void resizeEvent(QResizeEvent*) override { redraw(); }
    void mousePressEvent(QMouseEvent* e) override { forward(e, 0); }
    void mouseMoveEvent(QMouseEvent* e) override { forward(e, 1); }
    void mouseReleaseEvent(QMouseEvent* e) override { forward(e, 2); }

private:
    void forward(QMouseEvent* e, int kind);
    // What the picture is drawn from.
    struct Drawn {
        FramePoints controls, doubled;
        int order = 0, points = 0, active = 0;
        double axeX = 0, baseLine = 0;
        bool doubling = false;
        std::vector<bool> red;
        std::vector<std::string> marks;
        std::array<bool, 5> options{};
        std::string image;
        bool imageShown = false;
        std::array<double, 3> imagePlace{};
        QSize size;
        bool operator==(const Drawn&) const = default;
    };
    Drawn current() const;

    SheetBridge& bridge_;
    QImage image_;
    QImage background_;
    QString backgroundPath_;
    std::optional<Drawn> drawn_;
};

// Gen_Couples_1: the frame as a 3D piece, with its own orbit.
class FramePieceWindow : public QWidget {
    Q_OBJECT
public:
    explicit FramePieceWindow(SheetBridge& bridge, QWidget* parent = nullptr);
    const QImage& picture() { return surface_.image(); }
    void rebuild();
    void redraw();

protected:
    void resizeEvent(QResizeEvent*) override;
    void showEvent(QShowEvent*) override { rebuild(); }
    void mousePressEvent(QMouseEvent* e) override { forward(e, 0); }
    void mouseMoveEvent(QMouseEvent* e) override { forward(e, 1); }

private:
    void forward(QMouseEvent* e, int kind);
    SheetBridge& bridge_;
    QImageSurface surface_;
    QWidget* view_ = nullptr;
};

// Gen_Couples_3 "Assemblage": the frame and its doubler laid out for cutting.
class FrameAssemblyWindow : public QWidget {
    Q_OBJECT
public:
    explicit FrameAssemblyWindow(SheetBridge& bridge, QWidget* parent = nullptr);
    const QImage& picture() const { return image_; }
    void redraw();

protected:
    void paintEvent(QPaintEvent*) override;
    void resizeEvent(QResizeEvent*) override { redraw(); }

private:
    SheetBridge& bridge_;
    QImage image_;
};

class FrameGeneratorWindow : public QWidget {
    Q_OBJECT
public:
    explicit FrameGeneratorWindow(SheetBridge& bridge, QWidget* parent = nullptr);
    FrameDrawing* drawing() const { return drawing_; }
    FramePieceWindow* pieceWindow() const { return piece_; }
    FrameAssemblyWindow* assemblyWindow() const { return assembly_; }

private:
    void toolbar(int index);
    SheetBridge& bridge_;
    FrameDrawing* drawing_ = nullptr;
    FramePieceWindow* piece_ = nullptr;
    FrameAssemblyWindow* assembly_ = nullptr;
};

}  // namespace tarvokin::ui
