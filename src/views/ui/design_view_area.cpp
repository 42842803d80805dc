#include "views/ui/design_view_area.h"

#include <QButtonGroup>
#include <QColorDialog>
#include <QFileDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QToolBar>
#include <QMenu>
#include <QWidgetAction>
#include <QPushButton>
#include <QSplitter>
#include <QStackedWidget>
#include <QToolButton>
#include <QVBoxLayout>

#include "core/profile_file.h"
#include "core/ui/cell_widgets.h"
#include "core/ui/sheet_bridge.h"
#include "core/workbench.h"
#include "entry/entry_path.h"
#include "views/design_view.h"
#include "views/plan_export.h"
#include "views/ui/plan_widget.h"
#include "views/ui/qimage_surface.h"
#include "views/ui/view3d_widget.h"

namespace tarvokin::ui {

namespace {

const char* const kRenderCaptions[5] = {"Vue Contour", "Vue Filaire", "Vue Solide", "Vue Transparent", "Vue Surface"};
const char* const kSwitchCaptions[10] = {"aile G",         "aile D",  "Stab",          "Fuselage",    "Correction des couleurs",
                                         "Ambiance",       "Surface métallique", "Dérive", "Text On/Off", "Axes On/Off"};

struct Sample {
    Cell cell;
    const char* caption;
};
const Sample kSamples[6] = {{F_3D::T_Backolor, "Couleur de Fond de la fenêtre 3D"},
                            {F_3D::T_Ailes, "Ailes"},
                            {F_3D::T_Stab, "Stab"},
                            {F_3D::T_Derive, "Dérive"},
                            {F_3D::T_Fus, "Fuselage"},
                            {F_3D::T_Filaire, "Filaire"}};

void paintSample(QPushButton* b, const std::string& packed) {
    const QColor c = ToQColor(static_cast<PackedColour>(std::strtoul(packed.c_str(), nullptr, 10)));
    b->setStyleSheet(QStringLiteral("QPushButton { text-align: left; padding-left: 22px; }"));
    QPixmap swatch(14, 14);
    swatch.fill(c);
    b->setIcon(QIcon(swatch));
}

}  // namespace

DesignViewArea::DesignViewArea(Workbench& wb, SheetBridge& b, QWidget* parent)
    : QWidget(parent), wb_(wb), bridge_(b) {
    setObjectName("ViewArea");
    auto* top = new QVBoxLayout(this);
    top->setContentsMargins(0, 0, 0, 0);

    // Drawing buttons, then a row of view buttons.
    // Tool bars rather than rows: on a narrow screen the buttons that do not
    // fit go behind the bar's extension arrow instead of widening the window.
    auto* bar = new QToolBar;
    bar->setObjectName("BarRender");
    bar->setToolButtonStyle(Qt::ToolButtonTextOnly);
    auto* renderGroup = new QButtonGroup(this);
    for (int i = 1; i <= 4; ++i) {
        auto* t = new QToolButton;
        t->setText(QString::fromUtf8(kRenderCaptions[i]));
        t->setObjectName("pb1");
        t->setProperty("index", i);
        t->setCheckable(true);
        t->setChecked(wb_.sheet.on(F_3D::pb1[i]));
        renderGroup->addButton(t, i);
        render_[static_cast<size_t>(i)] = t;
        bar->addWidget(t);
    }
    connect(renderGroup, &QButtonGroup::idClicked, this, [this](int i) {
        bridge_.enter([&] { Click(wb_, "F_3D", "pb1", i); });
        view3d_->requestFrame();
    });
    auto* fit = new QToolButton;
    fit->setObjectName("PB_FIT");
    fit->setText(QStringLiteral("Cadrer"));
    fit->setToolTip(QStringLiteral("Tout l'avion dans la vue"));
    connect(fit, &QToolButton::clicked, this, [this] {
        bridge_.enter([&] { Click(wb_, "F_3D", "PB_FIT"); });
        view3d_->requestFrame();
    });
    bar->addWidget(fit);
    top->addWidget(bar);
    // Second row: the views, the drawing switches, the export.
    bar = new QToolBar;
    bar->setObjectName("BarViews");
    bar->setToolButtonStyle(Qt::ToolButtonTextOnly);
    auto* viewGroup = new QButtonGroup(this);
    for (PlanView v : {PlanView::Profil, PlanView::Dessus, PlanView::Face, PlanView::Vue3D}) {
        auto* t = new QToolButton;
        t->setText(QString::fromUtf8(PlanViewCaption(v)));
        t->setObjectName("PB_2D");
        t->setProperty("index", static_cast<int>(v));
        t->setCheckable(true);
        t->setChecked(v == PlanView::Vue3D);
        viewGroup->addButton(t, static_cast<int>(v));
        bar->addWidget(t);
    }
    connect(viewGroup, &QButtonGroup::idClicked, this, [this](int v) { showView(static_cast<PlanView>(v)); });
    bar->addSeparator();
    auto* exportButton = new QToolButton;
    exportButton->setObjectName("PB_EXPORT");
    exportButton->setText(QStringLiteral("Exporter le plan…"));
    exportButton->setToolTip(QStringLiteral("Plan à l'échelle 1, en millimètres (SVG ou DXF)"));
    connect(exportButton, &QToolButton::clicked, this, [this] {
        const QString file = QFileDialog::getSaveFileName(this, QStringLiteral("Exporter le plan"), QString(),
                                                          QStringLiteral("Plan SVG (*.svg);;Plan DXF (*.dxf)"));
        if (!file.isEmpty()) exportPlan(file);
    });
    bar->addWidget(exportButton);

    // Command9: "Mode Photo", "Mode Dessin" and one background image per view.
    auto* photoMenu = new QMenu(this);
    photoMenu->addAction(QStringLiteral("Mode Photo"), this, [this] { setPhotoMode(true); });
    photoMenu->addAction(QStringLiteral("Mode Dessin"), this, [this] { setPhotoMode(false); });
    photoMenu->addSeparator();
    for (PlanView v : {PlanView::Profil, PlanView::Dessus, PlanView::Face, PlanView::Vue3D}) {
        const QString caption = v == PlanView::Vue3D ? QStringLiteral("Centrage") : QString::fromUtf8(PlanViewCaption(v));
        photoMenu->addAction(QStringLiteral("Image de fond : %1…").arg(caption), this, [this, v] {
            const QString file = QFileDialog::getOpenFileName(
                this, QStringLiteral("Fichiers Images"), QString(),
                QStringLiteral("Fichiers Images (*.bmp *.gif *.tif *.JPG *.JPEG *.jpg *.jpeg *.png)"));
            if (!file.isEmpty()) loadPhoto(v, file);
        });
    }
    auto* photo = new QToolButton;
    photo->setObjectName("Command9");
    photo->setText(QStringLiteral("Photo"));
    photo->setPopupMode(QToolButton::InstantPopup);
    photo->setMenu(photoMenu);
    QAction* photoAction = bar->addWidget(photo);
    top->addWidget(bar);

    auto* row = new QHBoxLayout;
    auto* split = new QSplitter(Qt::Vertical);
    stack_ = new QStackedWidget;
    view3d_ = new View3DWidget(wb_);
    flat_ = new PlanWidget({});
    flat_->setObjectName("Picture2");
    stack_->addWidget(view3d_);
    stack_->addWidget(flat_);
    split->addWidget(stack_);
    centring_ = new PlanWidget({});
    centring_->setAreaMaker([this](const PlanArea& area) { return DrawCentringPlan(wb_, area); });
    centring_->setObjectName("Picture4");
    // Room for the figures at their reading size beside a drawing that
    // still shows its parts, the window at its first size on a small screen.
    centring_->setMinimumHeight(210);
    split->addWidget(centring_);
    split->setStretchFactor(0, 3);
    split->setStretchFactor(1, 1);
    row->addWidget(split, 1);
    split->setSizes({520, 200});

    // Drawing switches and colour samples, in a drop-down panel of the bar so
    // the picture keeps the width.
    auto* sidePanel = new QWidget;
    auto* side = new QVBoxLayout(sidePanel);
    auto* switches = new QGroupBox(QStringLiteral("Affichage"));
    auto* sl = new QVBoxLayout(switches);
    for (int i = 0; i < 10; ++i) {
        auto* c = new CellCheck(bridge_, F_3D::Check1[i], QString::fromUtf8(kSwitchCaptions[i]));
        c->setProperty("index", i);
        sl->addWidget(c);
        bridge_.watch(F_3D::Check1[i], this, [this] { view3d_->requestFrame(); });
    }
    side->addWidget(switches);
    auto* colours = new QGroupBox(QStringLiteral("Couleurs"));
    auto* cl = new QVBoxLayout(colours);
    for (int i = 0; i < 6; ++i) {
        auto* sample = new QPushButton(QString::fromUtf8(kSamples[i].caption));
        sample->setObjectName("command1");
        sample->setProperty("index", i);
        paintSample(sample, wb_.sheet.text(kSamples[i].cell));
        bridge_.watch(kSamples[i].cell, sample, [this, sample, i] { paintSample(sample, wb_.sheet.text(kSamples[i].cell)); });
        connect(sample, &QPushButton::clicked, this, [this, i] { chooseColour(i); });
        cl->addWidget(sample);
    }
    side->addWidget(colours);
    auto* menu = new QMenu(this);
    auto* holder = new QWidgetAction(menu);
    holder->setDefaultWidget(sidePanel);
    menu->addAction(holder);
    auto* display = new QToolButton;
    display->setObjectName("PB_AFFICHAGE");
    display->setText(QStringLiteral("Affichage"));
    display->setPopupMode(QToolButton::InstantPopup);
    display->setMenu(menu);
    bar->insertWidget(photoAction, display);
    top->addLayout(row, 1);

    // The master recalculation redraws the design window and its plans.
    wb_.panelRefresh[button::View3D] = [this](Workbench&) { redrawAll(); };
}

namespace {

// The project key of a view's background image; the centring plan's is kept
// under the 3D button's place.
// The place of a view among the background pictures of Command9.
int photoIndex(PlanView v) {
    switch (v) {
        case PlanView::Profil: return 0;
        case PlanView::Dessus: return 1;
        case PlanView::Face: return 2;
        default: return 3;
    }
}

std::string photoKey(PlanView v) { return PhotoKey(photoIndex(v)); }

QImage photoOf(const Workbench& wb, PlanView v) {
    if (wb.projectFilePath.empty()) return {};
    const std::string file = ReadProfileString("IMAGES", photoKey(v), "", wb.projectFilePath);
    return file.empty() ? QImage() : QImage(QString::fromStdString(file));
}

}  // namespace

void DesignViewArea::setPhotoMode(bool on) {
    photo_ = on;
    applyPhotos();
}

void DesignViewArea::loadPhoto(PlanView v, const QString& file) {
    Action a;
    a.form = "F_3D";
    a.control = "Command9";
    a.index = photoIndex(v);
    a.text = file.toStdString();
    bridge_.enter([&] { Perform(wb_, a); });
    photo_ = true;
    applyPhotos();
}

void DesignViewArea::applyPhotos() {
    centring_->setBackground(photo_ ? photoOf(wb_, PlanView::Vue3D) : QImage());
    flat_->setBackground(photo_ && view_ != PlanView::Vue3D ? photoOf(wb_, view_) : QImage());
}

DesignViewArea::~DesignViewArea() {
    // The workbench may outlive the window: its recalculation must not call back into it.
    wb_.panelRefresh.erase(button::View3D);
}

void DesignViewArea::showView(PlanView v) {
    view_ = v;
    if (v == PlanView::Vue3D) {
        stack_->setCurrentWidget(view3d_);
        view3d_->requestFrame();
    } else {
        flat_->setMaker([this, v] { return DrawViews(wb_, v).value_or(Plan{}); });
        stack_->setCurrentWidget(flat_);
        applyPhotos();
    }
}

void DesignViewArea::redrawPlans() {
    centring_->refresh();
    if (view_ != PlanView::Vue3D) flat_->refresh();
}

void DesignViewArea::redrawAll() {
    view3d_->rebuild();
    centring_->refresh();
    if (view_ != PlanView::Vue3D) flat_->refresh();
}

bool DesignViewArea::exportPlan(const QString& file) {
    const Plan& plan = view_ == PlanView::Vue3D ? centring_->plan() : flat_->plan();
    const std::string path = file.toStdString();
    const bool dxf = file.endsWith(QStringLiteral(".dxf"), Qt::CaseInsensitive);
    return dxf ? SavePlanDxf(plan, path) : SavePlanSvg(plan, path);
}

void DesignViewArea::chooseColour(int i) {
    const Cell cell = kSamples[i].cell;
    const QColor start = ToQColor(static_cast<PackedColour>(std::strtoul(wb_.sheet.text(cell).c_str(), nullptr, 10)));
    const QColor c = QColorDialog::getColor(start, this, QString::fromUtf8(kSamples[i].caption));
    if (!c.isValid()) return;
    Action a;
    a.form = "F_3D";
    a.control = "command1";
    a.index = i;
    a.text = std::to_string(FromQColor(c));
    bridge_.enter([&] { Perform(wb_, a); });
    view3d_->requestFrame();
}

}  // namespace tarvokin::ui
