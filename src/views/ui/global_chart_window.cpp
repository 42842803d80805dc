#include "views/ui/global_chart_window.h"

#include <QFileDialog>
#include <QHBoxLayout>
#include <QImage>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

#include "core/ui/cell_widgets.h"
#include "core/ui/sheet_bridge.h"
#include "core/workbench.h"
#include "views/global_chart.h"
#include "views/plan_export.h"
#include "views/ui/plan_widget.h"
#include "core/messages.h"

namespace tarvokin::ui {

GlobalChartWindow::GlobalChartWindow(Workbench& wb, SheetBridge& bridge, QWidget* parent) : QWidget(parent) {
    setObjectName("F_GEO_1");
    setWindowTitle(QString::fromUtf8(kGlobalChartTitle));
    auto* v = new QVBoxLayout(this);
    chart_ = new PlanWidget([&wb] { return GlobalGeometryChart(wb); });
    chart_->setObjectName("MSChart1");
    chart_->setMinimumSize(500, 320);
    v->addWidget(chart_, 1);
    auto* row = new QHBoxLayout;
    auto* png = new QPushButton(QStringLiteral("Enregistrer PNG…"));
    auto* svg = new QPushButton(QStringLiteral("Enregistrer SVG…"));
    row->addStretch(1);
    row->addWidget(png);
    row->addWidget(svg);
    v->addLayout(row);
    connect(&bridge, &SheetBridge::entryDone, chart_, [this] {
        if (isVisible()) chart_->refresh();
    });
    connect(png, &QPushButton::clicked, this, [this, &wb] {
        const QString f = QFileDialog::getSaveFileName(this, QStringLiteral("Vue 2D"), {}, QStringLiteral("PNG (*.png)"));
        if (!f.isEmpty() && !savePng(f)) ShowMessage(wb, "[#8] ", ss(f));
    });
    connect(svg, &QPushButton::clicked, this, [this, &wb] {
        const QString f = QFileDialog::getSaveFileName(this, QStringLiteral("Vue 2D"), {}, QStringLiteral("SVG (*.svg)"));
        if (!f.isEmpty() && !SavePlanSvg(chart_->plan(), ss(f)))
            ShowMessage(wb, "[#8] ", ss(f));
    });
    resize(900, 600);
}

bool GlobalChartWindow::savePng(const QString& file) const {
    QImage img(chart_->size().expandedTo(QSize(800, 500)), QImage::Format_RGB32);
    img.fill(Qt::white);
    {
        QPainter p(&img);
        p.setRenderHint(QPainter::Antialiasing);
        paintPlan(p, chart_->plan(), QRectF(QPointF(0, 0), img.size()));
    }
    return img.save(file, "PNG");
}

}  // namespace tarvokin::ui
