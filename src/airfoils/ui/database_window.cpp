#include "airfoils/ui/database_window.h"

#include <QFileDialog>
#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QInputDialog>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QSplitter>
#include <QTabWidget>
#include <QTableWidget>
#include <QTextEdit>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <optional>

#include "airfoils/ui/solver_progress_bar.h"
#include "core/ui/cell_widgets.h"
#include "core/ui/chart_panel.h"
#include "core/ui/entry_controls.h"
#include "core/ui/form_helpers.h"
#include "core/ui/sheet_bridge.h"
#include "core/workbench.h"
#include "entry/entry_path.h"

namespace tarvokin::ui {

// The outline in chord units; a drag moves the point under the mouse.
class DatabaseOutlineView : public QWidget {
public:
    DatabaseOutlineView(Workbench& wb, SheetBridge& b) : wb_(wb), bridge_(b) {
        setObjectName("Picture1");
        setMinimumSize(400, 200);
        setAutoFillBackground(true);
        QPalette p = palette();
        p.setColor(QPalette::Window, Qt::white);
        setPalette(p);
        setMouseTracking(false);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        p.setRenderHint(QPainter::Antialiasing);
        p.setPen(QPen(Qt::lightGray, 1, Qt::DashLine));
        p.drawLine(QPointF(0, height() / 2.0), QPointF(width(), height() / 2.0));
        // The outline is the run's current one: shown while an airfoil of the tree is chosen.
        const OutlinePoints& pts = wb_.outlines.Outline;
        if (pts.size() < 2 || wb_.sheet.text(F_BASE::Text5) == "NS") return;
        QPainterPath path;
        for (size_t i = 0; i < pts.size(); ++i) {
            const QPointF q = toScreen(pts[i].x, pts[i].y);
            if (i == 0) path.moveTo(q);
            else path.lineTo(q);
        }
        p.setPen(QPen(QColor(0, 0, 200), 1.5));
        p.drawPath(path);
        if (wb_.sheet.on(F_BASE::Check1)) {
            p.setBrush(QColor(200, 0, 0));
            p.setPen(Qt::NoPen);
            for (const OutlinePoint& pt : pts) p.drawEllipse(toScreen(pt.x, pt.y), 2.5, 2.5);
        }
    }
    void mousePressEvent(QMouseEvent* e) override { send(Act::Press, e); }

public:
    // Repaints when what it draws changed: every entry of the run reaches
    // the window, most of them changing nothing here.
    void follow() {
        Shown now{wb_.outlines.Outline, wb_.sheet.text(F_BASE::Text5) != "NS", wb_.sheet.on(F_BASE::Check1),
                  wb_.sheet.val(F_BASE::Slider1)};
        if (now == shown_) return;
        shown_ = std::move(now);
        update();
    }

protected:
    void mouseMoveEvent(QMouseEvent* e) override { send(Act::Move, e); }
    void mouseReleaseEvent(QMouseEvent* e) override { send(Act::Release, e); }

private:
    struct Shown {
        OutlinePoints points;
        bool outline = false, marks = false;
        double zoom = 0;
        bool operator==(const Shown&) const = default;
    };
    std::optional<Shown> shown_;

    double scale() const {
        const double zoom = std::max(10.0, wb_.sheet.val(F_BASE::Slider1)) / 100.0;
        return std::min(width() - 20.0, (height() - 10.0) / 0.3) * zoom;
    }
    QPointF toScreen(double x, double y) const { return {10 + x * scale(), height() / 2.0 - y * scale()}; }
    void send(Act act, QMouseEvent* e) {
        Action a;
        a.form = "F_BASE";
        a.control = "Picture1";
        a.act = act;
        a.x = (e->position().x() - 10) / scale();
        a.y = (height() / 2.0 - e->position().y()) / scale();
        a.button = (e->buttons() & Qt::LeftButton) || act == Act::Release ? 1 : 0;
        bridge_.enter([&] { Mouse(wb_, a); });
        update();
    }
    Workbench& wb_;
    SheetBridge& bridge_;
};

DatabaseWindow::DatabaseWindow(Workbench& wb, SheetBridge& b, QWidget* parent)
    : QWidget(parent), wb_(wb), bridge_(b) {
    setObjectName("F_BASE");
    setWindowTitle(QString::fromUtf8("Base de données profils"));
    auto* top = new QVBoxLayout(this);
    auto* split = new QSplitter(Qt::Horizontal);

    auto* left = new QWidget;
    auto* ll = new QVBoxLayout(left);
    ll->setContentsMargins(0, 0, 0, 0);
    tree_ = new QTreeWidget;
    tree_->setObjectName("tvwDB");
    tree_->setHeaderLabel(QStringLiteral("Profils et polaires"));
    ll->addWidget(tree_, 1);
    auto* add = new QPushButton(QStringLiteral("Ajouter un Profil"));
    add->setObjectName("Command4");
    connect(add, &QPushButton::clicked, this, [this] {
        const QString file = QFileDialog::getOpenFileName(this, QStringLiteral("Fichiers Profils"), QString(),
                                                          QStringLiteral("Fichiers Profils (*.dat *.DAT)"));
        if (!file.isEmpty()) click("Command4", ss(file));
    });
    ll->addWidget(add);
    auto* save = new QPushButton(QStringLiteral("Enregistrer le Profil"));
    save->setObjectName("Command5");
    connect(save, &QPushButton::clicked, this, [this] {
        bool ok = false;
        const QString name = QInputDialog::getText(this, QStringLiteral("Enregistrer le Profil"), QStringLiteral("Nom"),
                                                   QLineEdit::Normal, qs(wb_.sheet.text(F_BASE::tvwDB)), &ok);
        if (ok && !name.trimmed().isEmpty()) click("Command5", ss(name.trimmed()));
    });
    ll->addWidget(save);
    ll->addWidget(commandButton(b, "F_BASE", "Command6", -1, QStringLiteral("Supprimer le Profil")));
    ll->addWidget(commandButton(b, "F_BASE", "Command1", -1, QStringLiteral("Supprimer la(les) Polaire(s)")));
    ll->addWidget(commandButton(b, "F_BASE", "Command2", -1, QStringLiteral("Calculer la(les) Polaire(s)")));
    auto* gen = new QFormLayout;
    gen->addRow(QString::fromUtf8("Générer pour Re :"), new CellEdit(b, F_BASE::Text3));
    ll->addLayout(gen);
    ll->addWidget(commandButton(b, "F_BASE", "Command3", -1, QString::fromUtf8("Générer pour un Re choisi")));
    split->addWidget(left);

    auto* tabs = new QTabWidget;
    tabs->setObjectName("SSTab1");
    auto* outlineTab = new QWidget;
    auto* ol = new QVBoxLayout(outlineTab);
    outline_ = new DatabaseOutlineView(wb_, b);
    ol->addWidget(outline_, 1);
    auto* view = new QHBoxLayout;
    view->addWidget(new CellCheck(b, F_BASE::Check1, QStringLiteral("Points On / Off")));
    view->addWidget(new QLabel(QStringLiteral("Zoom")));
    view->addWidget(new CellSlider(b, F_BASE::Slider1, Qt::Horizontal, 50, 400), 1);
    ol->addLayout(view);
    auto* figs = new QGridLayout;
    const char* captions[6] = {"Epaisseur  %", "Epaisseur+ Camb.  %", "Pos EP.  %", "Cambrure %", "Pos Camb.",
                               "Nb Points"};
    for (int i = 0; i < 6; ++i) {
        figs->addWidget(new QLabel(QString::fromUtf8(captions[i])), i, 0);
        auto* slider = new CellSlider(b, F_BASE::Slider2[i], Qt::Horizontal, i == 1 || i == 0 ? 100 : 0,
                                      i == 5 ? 400 : (i == 2 || i == 4 ? 10000 : 3000));
        // Only the thickness (1) and the camber (3) are edited by their sliders.
        slider->setEnabled(i == 1 || i == 3);
        figs->addWidget(slider, i, 1);
        figs->addWidget(new CellLabel(b, F_BASE::Text4[i]), i, 2);
    }
    ol->addLayout(figs);
    auto* fields = new QHBoxLayout;
    auto field = [&](const char* caption, Cell c) {
        fields->addWidget(new QLabel(QString::fromUtf8(caption)));
        fields->addWidget(new CellEdit(b, c));
    };
    field("Epaisseur %", F_BASE::Text5);
    field("Pos. %", F_BASE::Text6);
    field("Cambrure %", F_BASE::T_Camb);
    field("Pos. %", F_BASE::T_POS_CAMB);
    fields->addWidget(new CellLabel(b, F_BASE::L_Ep_Ref));
    fields->addWidget(new CellLabel(b, F_BASE::L_Ep_Camb));
    ol->addLayout(fields);
    tabs->addTab(outlineTab, QStringLiteral("Contour"));

    auto* polarTab = new QWidget;
    auto* pl = new QGridLayout(polarTab);
    for (int i = 0; i < 2; ++i) {
        charts_[i] = new ChartPanel;
        charts_[i]->setObjectName(i == 0 ? "MSChart1" : "MSChart2");
        pl->addWidget(charts_[i], 0, i);
    }
    header_ = new QTextEdit;
    header_->setObjectName("Text1");
    header_->setReadOnly(true);
    summary_ = new QTextEdit;
    summary_->setObjectName("text2");
    summary_->setReadOnly(true);
    header_->setMaximumHeight(130);
    summary_->setMaximumHeight(130);
    pl->addWidget(header_, 1, 0);
    pl->addWidget(summary_, 1, 1);
    pl->setRowStretch(0, 1);
    tabs->addTab(polarTab, QStringLiteral("Polaires"));

    grid_ = new QTableWidget;
    grid_->setObjectName("MSFlexGrid1");
    grid_->setColumnCount(2);
    grid_->setHorizontalHeaderLabels({QStringLiteral("x"), QStringLiteral("y")});
    tabs->addTab(grid_, QString::fromUtf8("Coordonnées"));
    split->addWidget(tabs);
    split->setStretchFactor(1, 3);
    top->addWidget(split, 1);

    progress_ = new SolverProgressBar(wb_, "F_BASE");
    top->addWidget(progress_);
    auto* status = new CellLabel(b, F_BASE::Status);
    status->setObjectName("StatusBar");
    top->addWidget(status);

    connect(tree_, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem* item, int) {
        QTreeWidgetItem* parentItem = item->parent();
        const QString airfoil = (parentItem ? parentItem : item)->text(0);
        const int index = parentItem ? parentItem->indexOfChild(item) : -1;
        Action a;
        a.form = "F_BASE";
        a.control = "tvwDB";
        a.index = index;
        a.text = ss(airfoil);
        bridge_.enter([&] { Perform(wb_, a); });
    });
    auto* later = new DeferredRedraw(this, [this] { redraw(); });
    // The toolbar's Tag: opening builds the tree outside any entry.
    for (Cell c : {F_BASE::Check1, F_BASE::Slider1, F_Main::Toolbar2[button::Base]})
        b.watch(c, this, [later] { later->request(); });
    connect(&b, &SheetBridge::entryDone, this, [this, later] {
        progress_->setVisible(false);
        later->now();
    });
    redraw();
    resize(1100, 720);
}

void DatabaseWindow::click(const char* control, const std::string& text) {
    Action a;
    a.form = "F_BASE";
    a.control = control;
    a.text = text;
    bridge_.enter([&] { Perform(wb_, a); });
}

void DatabaseWindow::fillTree() {
    treeVersion_ = wb_.database.treeVersion;
    tree_->clear();
    for (const DatabaseAirfoil& a : wb_.database.tree) {
        auto* item = new QTreeWidgetItem(tree_, {qs(a.name)});
        if (!a.known) item->setForeground(0, QColor(150, 80, 0));
        for (const DatabasePolar& p : a.polars) new QTreeWidgetItem(item, {qs(p.file)});
    }
}

void DatabaseWindow::redraw() {
    if (treeVersion_ != wb_.database.treeVersion) fillTree();
    const DatabaseState& d = wb_.database;
    for (int i = 0; i < 2; ++i) {
        ChartData c;
        c.title = d.title;
        c.xTitle = i == 0 ? "Alpha" : "Cd";
        c.yTitle = "Cl";
        const auto& pts = i == 0 ? d.clAlpha : d.clCd;
        if (!pts.empty()) {
            ChartSeries s;
            s.name = d.title;
            s.colour = {0, 0, 200};
            s.withPoints = wb_.sheet.on(F_BASE::Check1);
            s.points = pts;
            c.series.push_back(std::move(s));
        }
        c.dropNonFinite();
        charts_[i]->setData(c);
    }
    // Texts, table and picture are set again only when they change: setting
    // them lays them out again.
    for (auto [edit, cell] : {std::pair{header_, F_BASE::Text1}, std::pair{summary_, F_BASE::text2}}) {
        const QString text = qs(wb_.sheet.text(cell));
        if (edit->toPlainText() != text) edit->setPlainText(text);
    }
    const OutlinePoints& pts = wb_.outlines.Outline;
    const bool shown = wb_.sheet.text(F_BASE::Text5) != "NS";
    const OutlinePoints listed = shown ? pts : OutlinePoints{};
    if (!gridFilled_ || listed != gridPoints_) {
        gridFilled_ = true;
        gridPoints_ = listed;
        grid_->setRowCount(static_cast<int>(listed.size()));
        for (int r = 0; r < static_cast<int>(listed.size()); ++r) {
            grid_->setItem(r, 0, new QTableWidgetItem(QString::number(listed[static_cast<size_t>(r)].x, 'f', 5)));
            grid_->setItem(r, 1, new QTableWidgetItem(QString::number(listed[static_cast<size_t>(r)].y, 'f', 5)));
        }
    }
    outline_->follow();
}

}  // namespace tarvokin::ui
