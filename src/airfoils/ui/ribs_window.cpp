#include "airfoils/ui/ribs_window.h"

#include <QFileDialog>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>
#include <cmath>

#include "airfoils/ribs_panel.h"
#include "core/ui/cell_widgets.h"
#include "core/ui/entry_controls.h"
#include "core/ui/sheet_bridge.h"
#include "core/workbench.h"
#include "entry/entry_path.h"

namespace tarvokin::ui {

namespace {

// Picture2: every rib at one scale, leading edges where the alignment puts
// them, one above the other from root to tip; the mouse names the rib under it.
class RibsPlan : public QWidget {
public:
    explicit RibsPlan(SheetBridge& b) : bridge_(b) {
        setObjectName("Picture2");
        setMinimumSize(420, 200);
        setMouseTracking(true);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        p.setRenderHint(QPainter::Antialiasing);
        p.fillRect(rect(), Qt::white);
        const auto& ribs = bridge_.workbench().generators.ribs;
        if (ribs.empty()) return;
        layout(ribs);
        for (size_t k = 0; k < ribs.size(); ++k) {
            QPainterPath path;
            for (size_t i = 0; i < ribs[k].points.size(); ++i) {
                const QPointF q = at(ribs[k].points[i], k);
                if (i == 0) path.moveTo(q);
                else path.lineTo(q);
            }
            p.setPen(QPen(static_cast<int>(k) == hover_ ? QColor(200, 40, 40) : QColor(0, 60, 160), 1.2));
            p.drawPath(path);
        }
    }
    void mouseMoveEvent(QMouseEvent* e) override {
        const auto& ribs = bridge_.workbench().generators.ribs;
        if (ribs.empty()) return;
        layout(ribs);
        const double y = e->position().y();
        int nearest = -1;
        double best = 1e300;
        for (size_t k = 0; k < ribs.size(); ++k) {
            const double d = std::fabs(y - base(k));
            if (d < best) best = d, nearest = static_cast<int>(k);
        }
        if (nearest == hover_) return;
        hover_ = nearest;
        Action a{Act::Move, "F_RIBS", "Picture2", nearest};
        bridge_.enter([&] { Perform(bridge_.workbench(), a); });
        update();
    }

private:
    void layout(const std::vector<RibOutline>& ribs) {
        double x0 = 1e300, x1 = -1e300, h = 0;
        for (const RibOutline& r : ribs)
            for (const OutlinePoint& q : r.points) {
                x0 = std::min(x0, q.x), x1 = std::max(x1, q.x);
                h = std::max(h, std::fabs(q.y));
            }
        x0_ = x0;
        const double rows = static_cast<double>(ribs.size());
        scale_ = std::min((width() - 20) / std::max(1e-9, x1 - x0), (height() - 20) / std::max(1e-9, 2.4 * h * rows));
        step_ = (height() - 20) / rows;
    }
    double base(size_t k) const { return 10 + step_ * (static_cast<double>(k) + 0.5); }
    QPointF at(const OutlinePoint& q, size_t k) const { return {10 + (q.x - x0_) * scale_, base(k) - q.y * scale_}; }

    SheetBridge& bridge_;
    double x0_ = 0, scale_ = 1, step_ = 1;
    int hover_ = -1;
};

}  // namespace

RibsWindow::RibsWindow(SheetBridge& b, const std::function<QWidget*()>& make3DView, QWidget* parent)
    : QWidget(parent), bridge_(b) {
    setObjectName("F_RIBS");
    setWindowTitle(QStringLiteral("Générateur de nervures intermédiaires"));
    auto* top = new QHBoxLayout(this);
    auto* left = new QVBoxLayout;
    top->addLayout(left);

    auto* ends = new QGroupBox(QStringLiteral("Panneau"));
    auto* f = new QFormLayout(ends);
    f->addRow(QStringLiteral("Emplanture"), new CellCombo(b, F_RIBS::CB_1[0]));
    f->addRow(QStringLiteral("Corde (mm)"), new CellEdit(b, F_RIBS::Text1));
    f->addRow(QStringLiteral("Saumon"), new CellCombo(b, F_RIBS::CB_1[1]));
    f->addRow(QStringLiteral("Corde (mm)"), new CellEdit(b, F_RIBS::Text2));
    f->addRow(QStringLiteral("Envergure (mm)"), new CellEdit(b, F_RIBS::Text3));
    f->addRow(QStringLiteral("Nbre"), new CellEdit(b, F_RIBS::Text4));
    f->addRow(QStringLiteral("Espacement auto (mm)"), new CellEdit(b, F_RIBS::Text5));
    left->addWidget(ends);

    auto* align = new QGroupBox(QStringLiteral("Alignement"));
    auto* al = new QVBoxLayout(align);
    for (int i = 0; i < ribs::kAlignments; ++i)
        al->addWidget(new CellRadio(b, F_RIBS::Option1[i], QString::fromUtf8(RibAlignCaption(i))));
    left->addWidget(align);

    auto* style = new QGroupBox(QStringLiteral("Style"));
    auto* sl = new QVBoxLayout(style);
    sl->addWidget(new CellRadio(b, F_RIBS::Option2[0], QStringLiteral("Aile")));
    sl->addWidget(new CellRadio(b, F_RIBS::Option2[1], QStringLiteral("Nervures")));
    sl->addWidget(new CellCheck(b, F_RIBS::Check1, QStringLiteral("Surface")));
    sl->addWidget(new QLabel(QStringLiteral("Hauteur des Nervures")));
    sl->addWidget(new CellSlider(b, F_RIBS::Slider1, Qt::Horizontal, 1, 5));
    left->addWidget(style);

    left->addWidget(commandButton(b, "F_RIBS", "Command2", -1, QStringLiteral("Compute")));
    auto* save = new QPushButton(QStringLiteral("Enregistrer les nervures"));
    save->setObjectName("Command3");
    connect(save, &QPushButton::clicked, this, [this] {
        const QString base = QFileDialog::getSaveFileName(this, QStringLiteral("Enregistrer les nervures"), QString(),
                                                          QStringLiteral("Fichiers de profils (*.DAT)"));
        if (!base.isEmpty()) saveRibs(base);
    });
    left->addWidget(save);
    left->addStretch(1);

    grid_ = new QTableWidget(0, 2);
    grid_->setObjectName("Flex");
    grid_->setHorizontalHeaderLabels({QStringLiteral("              X"), QStringLiteral("              Y")});
    grid_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    grid_->verticalHeader()->setVisible(false);
    grid_->setMinimumWidth(230);
    top->addWidget(grid_);

    auto* right = new QVBoxLayout;
    top->addLayout(right, 1);
    view3d_ = make3DView ? make3DView() : new QWidget;
    right->addWidget(view3d_, 3);
    ribs2d_ = new RibsPlan(b);
    right->addWidget(ribs2d_, 2);
    right->addWidget(new CellLabel(b, F_RIBS::L_NERVURE));
    auto* status = new CellLabel(b, F_RIBS::StatusBar1);
    status->setObjectName("StatusBar1");
    right->addWidget(status);

    connect(&b, &SheetBridge::entryDone, this, [this] { refill(); });
    resize(1200, 700);
}

void RibsWindow::saveRibs(const QString& base) {
    Action a{Act::Click, "F_RIBS", "Command3", -1};
    a.text = ss(base);
    bridge_.enter([&] { Perform(bridge_.workbench(), a); });
}

void RibsWindow::refill() {
    Workbench& wb = bridge_.workbench();
    if (wb.generators.ribRevision == shownRevision_) return;
    shownRevision_ = wb.generators.ribRevision;
    const auto& ribs = wb.generators.ribs;
    size_t rows = 0;
    for (const RibOutline& r : ribs) rows += r.points.size() + 1;
    grid_->setUpdatesEnabled(false);
    grid_->setRowCount(static_cast<int>(rows));
    int row = 0;
    char text[32];
    for (size_t n = 0; n < ribs.size(); ++n) {
        // The heading row of a rib is no number: it ends the rib before it.
        grid_->setItem(row, 0, new QTableWidgetItem(QStringLiteral("Nervure %1").arg(n + 1)));
        grid_->setItem(row++, 1, new QTableWidgetItem(QStringLiteral("%1 mm").arg(ribs[n].position, 0, 'f', 1)));
        for (const OutlinePoint& q : ribs[n].points) {
            std::snprintf(text, sizeof text, "%.7f", q.x);
            grid_->setItem(row, 0, new QTableWidgetItem(QString::fromLatin1(text)));
            std::snprintf(text, sizeof text, "%.7f", q.y);
            grid_->setItem(row++, 1, new QTableWidgetItem(QString::fromLatin1(text)));
        }
    }
    grid_->setUpdatesEnabled(true);
    ribs2d_->update();
    view3d_->update();
}

void RibsWindow::showEvent(QShowEvent* e) {
    QWidget::showEvent(e);
    // A first look needs airfoils at both ends: the design's first airfoil
    // stands in until the modeller picks others.
    Workbench& wb = bridge_.workbench();
    Sheet& s = wb.sheet;
    if (s.listIndex(F_RIBS::CB_1[0]) < 0 && s.listIndex(F_PROFILS::CB_1[0]) >= 0) {
        for (int end = 0; end < 2; ++end) {
            const int index = s.listIndex(F_PROFILS::CB_1[0]);
            bridge_.enter([&] { Choose(wb, F_RIBS::CB_1[end], index); });
        }
    }
    refill();
}

}  // namespace tarvokin::ui
