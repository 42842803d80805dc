#include "construction/ui/frame_generator_window.h"

#include <QComboBox>
#include <QFileDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QToolBar>
#include <QVBoxLayout>
#include <algorithm>
#include <functional>

#include "construction/frame_curve.h"
#include "construction/frame_files.h"
#include "construction/frame_mesh.h"
#include "core/ui/cell_widgets.h"
#include "core/ui/entry_controls.h"
#include "core/ui/sheet_bridge.h"
#include "core/workbench.h"
#include "design/ui/picture_surface.h"
#include "entry/entry_path.h"
#include "entry/frame_logic.h"

namespace tarvokin::ui {

using namespace Gen_Couples_2;

namespace {

int buttonsOf(QMouseEvent* e, bool release) {
    if (release) return 0;
    // A press names the button pressed, a move the buttons held.
    if (e->type() == QEvent::MouseButtonPress)
        return e->button() == Qt::LeftButton ? 1 : (e->button() == Qt::RightButton ? 2 : 4);
    const Qt::MouseButtons held = e->buttons();
    return (held & Qt::LeftButton ? 1 : 0) | (held & Qt::RightButton ? 2 : 0) | (held & Qt::MiddleButton ? 4 : 0);
}

Action mouseAction(const char* form, int kind, double x, double y, int button) {
    Action a;
    a.act = kind == 0 ? Act::Press : (kind == 1 ? Act::Move : Act::Release);
    a.form = form;
    a.control = "Picture1";
    a.x = x;
    a.y = y;
    a.button = button;
    return a;
}

QString dialogFilter(const FileDialogChoice& choice) {
    QStringList filters{QStringLiteral("%1 (*%2)").arg(QString::fromStdString(choice.caption),
                                                        QString::fromStdString(choice.extension))};
    for (const auto& [label, pattern] : GenericFileFilters())
        filters << QStringLiteral("%1 (%2)").arg(QString::fromStdString(label), QString::fromStdString(pattern));
    return filters.join(QStringLiteral(";;"));
}

// The 3D piece's picture, painted as the engine left it.
class PieceView : public QWidget {
public:
    explicit PieceView(std::function<void(QPainter&)> paint, QWidget* parent = nullptr)
        : QWidget(parent), paint_(std::move(paint)) {
        setObjectName("Picture1");
        setMinimumSize(360, 300);
        setAttribute(Qt::WA_OpaquePaintEvent);
        setAttribute(Qt::WA_TransparentForMouseEvents);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        paint_(p);
    }

private:
    std::function<void(QPainter&)> paint_;
};

}  // namespace

// ---- the drawing -------------------------------------------------------------------

FrameDrawing::FrameDrawing(SheetBridge& bridge, QWidget* parent) : QWidget(parent), bridge_(bridge) {
    setObjectName("Picture1");
    setMinimumSize(420, 360);
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    connect(&bridge_, &SheetBridge::entryDone, this, [this] { follow(); });
}

FrameDrawing::Drawn FrameDrawing::current() const {
    const Workbench& wb = bridge_.workbench();
    const Sheet& s = wb.sheet;
    const FrameState& f = wb.frame;
    Drawn d{f.ControlPoints, f.DoubledControl, f.CurveOrder, f.PointCount, f.ActiveHandle, f.AxeX, f.BaseLineY,
            f.Doubling, f.HandleRed, f.HandleMarks};
    for (int i = 0; i < 5; ++i) d.options[static_cast<size_t>(i)] = s.on(pb1[2 + i]);
    d.image = s.text(T_Image);
    d.imageShown = s.on(Command4);
    d.imagePlace = {s.val(Slider4), s.val(Slider5), s.val(Slider6)};
    d.size = size();
    return d;
}

void FrameDrawing::follow() {
    Workbench& wb = bridge_.workbench();
    if (wb.frame.ControlPoints.empty()) InitFrameGenerator(wb.frame);
    if (drawn_ && *drawn_ == current()) return;
    redraw();
}

QPointF FrameDrawing::toDrawing(QPointF w) const {
    const double s = FrameDrawScale(width(), height());
    return {w.x() / s, w.y() / s};
}

QPointF FrameDrawing::toWidget(double x, double y) const {
    const double s = FrameDrawScale(width(), height());
    return {x * s, y * s};
}

void FrameDrawing::redraw() {
    Workbench& wb = bridge_.workbench();
    const Sheet& s = wb.sheet;
    if (image_.size() != size()) image_ = QImage(size().expandedTo(QSize(1, 1)), QImage::Format_RGB32);
    image_.fill(Qt::white);
    FrameDrawOptions o;
    o.handles = s.on(pb1[2]);
    o.dotted = s.on(pb1[3]);
    o.points = s.on(pb1[4]);
    o.axes = s.on(pb1[5]);
    o.grid = s.on(pb1[6]);
    o.clear = false;
    {
        PictureSurface surface(image_);
        // The picture behind the frame: placed and sized by its three sliders.
        const QString path = QString::fromStdString(s.text(T_Image));
        if (path != backgroundPath_) {
            backgroundPath_ = path;
            background_ = path.isEmpty() ? QImage() : QImage(path);
        }
        if (s.on(Command4) && !background_.isNull()) {
            const double k = std::clamp(s.val(Slider6), 5.0, 400.0) / 100;
            const QSizeF size = QSizeF(background_.size()) * k * FrameDrawScale(width(), height());
            const double x = (s.val(Slider4) / 100.0) * width() - size.width() / 2;
            const double y = (s.val(Slider5) / 100.0) * height() - size.height() / 2;
            surface.painter().setOpacity(0.6);
            surface.painter().drawImage(QRectF(QPointF(x, y), size), background_);
            surface.painter().setOpacity(1);
        }
        if (wb.frame.ControlPoints.empty()) InitFrameGenerator(wb.frame);
        DisegnaCurva(wb.frame, surface, o);
    }
    drawn_ = current();
    update();
}

void FrameDrawing::paintEvent(QPaintEvent*) {
    if (image_.size() != size()) redraw();
    QPainter p(this);
    p.drawImage(0, 0, image_);
}

void FrameDrawing::forward(QMouseEvent* e, int kind) {
    Workbench& wb = bridge_.workbench();
    const QPointF d = toDrawing(e->position());
    const Action a = mouseAction("Gen_Couples_2", kind, d.x(), d.y(), buttonsOf(e, kind == 2));
    bridge_.enter([&wb, a] { Perform(wb, a); });
}

// ---- the 3D piece ----------------------------------------------------------------------

FramePieceWindow::FramePieceWindow(SheetBridge& bridge, QWidget* parent)
    : QWidget(parent), bridge_(bridge), surface_(QSize(480, 400)) {
    setObjectName("Gen_Couples_1");
    setWindowTitle(QStringLiteral("Couple en 3D"));
    auto* top = new QVBoxLayout(this);
    auto* row = new QHBoxLayout;
    const std::pair<Cell, const char* const*> combos[2] = {{Gen_Couples_1::Combo1, kFrameViewNames},
                                                           {Gen_Couples_1::Combo2, kFrameKindNames}};
    for (const auto& [cell, names] : combos) {
        auto* box = new QComboBox;
        box->setObjectName(cell == Gen_Couples_1::Combo1 ? "Combo1" : "Combo2");
        box->setProperty("wordList", true);  // the cell keeps the position, not the word
        for (int i = 0; i < 5; ++i) box->addItem(QString::fromUtf8(names[i]));
        box->setCurrentIndex(std::clamp(static_cast<int>(bridge_.workbench().sheet.val(cell)), 0, 4));
        const Cell c = cell;
        connect(box, &QComboBox::activated, this, [this, c](int i) {
            Workbench& wb = bridge_.workbench();
            bridge_.enter([&wb, c, i] { enterField(wb, c, std::to_string(i)); });
        });
        row->addWidget(box);
    }
    top->addLayout(row);
    view_ = new PieceView([this](QPainter& p) { p.drawImage(0, 0, surface_.image()); });
    top->addWidget(view_, 1);
    // Each entry may change the frame: the piece follows while it is shown.
    connect(&bridge_, &SheetBridge::entryDone, this, [this] {
        if (isVisible()) rebuild();
    });
    resize(520, 480);
}

void FramePieceWindow::rebuild() {
    guarded(bridge_.workbench(), [this] { RebuildFramePiece(bridge_.workbench()); });
    redraw();
}

void FramePieceWindow::redraw() {
    Workbench& wb = bridge_.workbench();
    if (surface_.width() != view_->width() || surface_.height() != view_->height())
        surface_.resize(view_->size().expandedTo(QSize(1, 1)));
    const int view = std::clamp(static_cast<int>(wb.sheet.val(Gen_Couples_1::Combo1)), 0, 4);
    guarded(wb, [&] { RenderFrame(wb.frame, surface_, view); });
    view_->update();
}

void FramePieceWindow::resizeEvent(QResizeEvent*) { redraw(); }

void FramePieceWindow::forward(QMouseEvent* e, int kind) {
    Workbench& wb = bridge_.workbench();
    const QPointF p = view_->mapFrom(this, e->position());
    const Action a = mouseAction("Gen_Couples_1", kind, p.x(), p.y(), buttonsOf(e, false));
    bridge_.enter([&wb, a] { Perform(wb, a); });
    redraw();
}

// ---- assembly -----------------------------------------------------------------------------

FrameAssemblyWindow::FrameAssemblyWindow(SheetBridge& bridge, QWidget* parent) : QWidget(parent), bridge_(bridge) {
    setObjectName("Gen_Couples_3");
    setWindowTitle(QStringLiteral("Assemblage"));
    setAttribute(Qt::WA_OpaquePaintEvent);
    connect(&bridge_, &SheetBridge::entryDone, this, [this] {
        if (isVisible()) redraw();
    });
    resize(640, 400);
}

void FrameAssemblyWindow::redraw() {
    Workbench& wb = bridge_.workbench();
    if (image_.size() != size()) image_ = QImage(size().expandedTo(QSize(1, 1)), QImage::Format_RGB32);
    {
        PictureSurface surface(image_);
        if (wb.frame.ControlPoints.empty()) InitFrameGenerator(wb.frame);
        DrawFrameAssembly(wb.frame, surface, !wb.sheet.on(Option2));
    }
    update();
}

void FrameAssemblyWindow::paintEvent(QPaintEvent*) {
    if (image_.size() != size()) redraw();
    QPainter p(this);
    p.drawImage(0, 0, image_);
}

// ---- the editor ------------------------------------------------------------------------------

FrameGeneratorWindow::FrameGeneratorWindow(SheetBridge& b, QWidget* parent) : QWidget(parent), bridge_(b) {
    setObjectName("Gen_Couples_2");
    setWindowTitle(QStringLiteral("Générateur de Couples"));
    auto* top = new QHBoxLayout(this);

    auto* left = new QVBoxLayout;
    auto* bar = new QToolBar;
    bar->setObjectName("pb1");
    const char* tools[] = {"Image", "Enregistrer le contour", "Poignées", "Pointillés", "Vue Points",
                           "Axes On/Off", "Grille On/Off", "Enregistrer le Projet", "Ouvrir un Projet"};
    for (int i = 0; i < 9; ++i) {
        QAction* a = bar->addAction(QString::fromUtf8(tools[i]));
        a->setObjectName(QStringLiteral("pb1_%1").arg(i));
        if (i >= 2 && i <= 6) {
            a->setCheckable(true);
            auto pull = [this, a, i] { a->setChecked(bridge_.workbench().sheet.on(pb1[i])); };
            pull();
            bridge_.watch(pb1[i], a, pull);
        }
        connect(a, &QAction::triggered, this, [this, i] { toolbar(i); });
    }
    left->addWidget(bar);
    drawing_ = new FrameDrawing(b);
    left->addWidget(drawing_, 1);
    auto* status = new QHBoxLayout;
    status->addWidget(new QLabel(QStringLiteral("X")));
    status->addWidget(new CellLabel(b, lblX));
    status->addWidget(new QLabel(QStringLiteral("Y")));
    status->addWidget(new CellLabel(b, lblY));
    status->addStretch(1);
    status->addWidget(new CellLabel(b, L_Mode));
    left->addLayout(status);
    top->addLayout(left, 1);

    auto* side = new QVBoxLayout;
    auto sliderBox = [&b](const QString& caption, Cell cell, int lo, int hi, Cell shown) {
        auto* g = new QGroupBox(caption);
        auto* l = new QHBoxLayout(g);
        l->addWidget(new CellSlider(b, cell, Qt::Horizontal, lo, hi), 1);
        l->addWidget(new CellLabel(b, shown));
        return g;
    };
    side->addWidget(sliderBox(QStringLiteral("Epaisseur"), Hscroll1, 0, 60, Hscroll1));
    side->addWidget(sliderBox(QStringLiteral("Nbre de Points"), Hscroll2, 2, 400, Text3));
    side->addWidget(sliderBox(QStringLiteral("Résolution"), Hscroll3, 2, 9, Hscroll3));

    auto* doubling = new QGroupBox(QStringLiteral("Doublage"));
    auto* dl = new QVBoxLayout(doubling);
    dl->addWidget(new CellCheck(b, Check4, QStringLiteral("On / Off")));
    side->addWidget(doubling);

    auto options = [&b](const QString& caption, Cell first, const char* firstText, Cell second,
                        const char* secondText) {
        auto* g = new QGroupBox(caption);
        auto* l = new QVBoxLayout(g);
        l->addWidget(new CellRadio(b, first, QString::fromUtf8(firstText)));
        l->addWidget(new CellRadio(b, second, QString::fromUtf8(secondText)));
        return g;
    };
    side->addWidget(options(QStringLiteral("Action Souris"), Option3, "Courbe", Option4, "Doublage"));
    side->addWidget(
        options(QStringLiteral("Mouvements asservis"), Option5, "Mode asservi", Option6, "Mode découplé"));
    side->addWidget(options(QStringLiteral("Assemblage"), Option1, "Horizontal", Option2, "Vertical"));

    auto* picture = new QGroupBox(QStringLiteral("Image"));
    auto* pl = new QGridLayout(picture);
    auto* open = new QPushButton(QStringLiteral("Ouvrir une image"));
    open->setObjectName("ouvrir");
    connect(open, &QPushButton::clicked, this, [this] {
        const QString file = QFileDialog::getOpenFileName(
            this, QStringLiteral("Image"), {},
            QStringLiteral("%1 (%2)").arg(QString::fromUtf8(kImageFilterLabel),
                                          QString::fromUtf8(kImageFilterPattern).replace(';', ' ').trimmed()));
        if (file.isEmpty()) return;
        Workbench& wb = bridge_.workbench();
        Action a;
        a.form = "Gen_Couples_2";
        a.control = "ouvrir";
        a.text = file.toStdString();
        bridge_.enter([&wb, a] { Perform(wb, a); });
    });
    pl->addWidget(open, 0, 0);
    pl->addWidget(commandButton(b, "Gen_Couples_2", "Command4", -1, QStringLiteral("Image On/Off")), 0, 1);
    pl->addWidget(new QLabel(QStringLiteral("Gauche / Droite")), 1, 0);
    pl->addWidget(new CellSlider(b, Slider4, Qt::Horizontal, 0, 100), 1, 1);
    pl->addWidget(new QLabel(QStringLiteral("Mouvements")), 2, 0);
    pl->addWidget(new CellSlider(b, Slider5, Qt::Horizontal, 0, 100), 2, 1);
    pl->addWidget(new CellSlider(b, Slider6, Qt::Horizontal, 5, 400), 3, 1);
    side->addWidget(picture);

    auto* piece = new QGroupBox(QStringLiteral("Pièce 3D"));
    auto* gl = new QGridLayout(piece);
    const std::pair<Cell, Cell> sizes[3] = {{Slider1, T_EP}, {Slider2, T_H}, {Slider3, T_L}};
    const char* captions[3] = {"Epaisseur (mm)", "Hauteur (%)", "Longueur (%)"};
    for (int i = 0; i < 3; ++i) {
        gl->addWidget(new QLabel(QString::fromUtf8(captions[i])), i, 0);
        gl->addWidget(new CellSlider(b, sizes[i].first, Qt::Horizontal, i == 0 ? 1 : 10, i == 0 ? 30 : 300), i, 1);
        gl->addWidget(new CellLabel(b, sizes[i].second), i, 2);
    }
    side->addWidget(piece);

    piece_ = new FramePieceWindow(b, this);
    piece_->setWindowFlag(Qt::Window);
    assembly_ = new FrameAssemblyWindow(b, this);
    assembly_->setWindowFlag(Qt::Window);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(commandButton(b, "Gen_Couples_2", "Command2", -1, QStringLiteral("Nouveau Couple")));
    auto* show3d = new QPushButton(QStringLiteral("Vue 3D"));
    show3d->setObjectName("PB_3D");
    connect(show3d, &QPushButton::clicked, this, [this] {
        piece_->show();
        piece_->raise();
    });
    buttons->addWidget(show3d);
    auto* showAssembly = new QPushButton(QStringLiteral("Assemblage"));
    showAssembly->setObjectName("PB_ASSEMBLAGE");
    connect(showAssembly, &QPushButton::clicked, this, [this] {
        assembly_->show();
        assembly_->raise();
        assembly_->redraw();
    });
    buttons->addWidget(showAssembly);
    side->addLayout(buttons);
    side->addStretch(1);
    top->addLayout(side);
    resize(1040, 720);
}

void FrameGeneratorWindow::toolbar(int index) {
    Workbench& wb = bridge_.workbench();
    Action a;
    a.form = "Gen_Couples_2";
    a.control = "pb1";
    a.index = index;
    if (index == 1 || index == 7 || index == 8) {
        const FileDialogChoice choice = FileDialogByType(index == 1 ? FileKind::Airfoil : FileKind::Project);
        const QString caption = QString::fromStdString(choice.caption);
        const QString filter = index == 1 ? QStringLiteral("*.DAT") : dialogFilter(choice);
        const QString file = index == 8 ? QFileDialog::getOpenFileName(this, caption, {}, filter)
                                        : QFileDialog::getSaveFileName(this, caption, {}, filter);
        if (file.isEmpty()) return;
        std::string path = file.toStdString();
        // A project named without an extension gets its own, as an outline gets ".DAT".
        if (index == 7 && path.find('.', path.find_last_of('/') + 1) == std::string::npos) path += choice.extension;
        a.text = path;
    }
    bridge_.enter([&wb, a] { Perform(wb, a); });
}

}  // namespace tarvokin::ui
