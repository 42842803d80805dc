#include "core/ui/form_helpers.h"

#include <QLabel>
#include <algorithm>

#include "core/ui/cell_widgets.h"

namespace tarvokin::ui {

void addGridRow(SheetBridge& b, QGridLayout* g, int row, const QString& caption, std::initializer_list<Cell> cells,
                const QString& tooltip, std::initializer_list<Cell> readOnly) {
    auto* label = new QLabel(caption);
    g->addWidget(label, row, 0);
    int col = 1;
    for (Cell c : cells) {
        QWidget* w;
        if (std::find(readOnly.begin(), readOnly.end(), c) != readOnly.end()) {
            auto* l = new CellLabel(b, c);
            l->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
            l->setFrameShape(QFrame::StyledPanel);
            w = l;
        } else {
            w = new CellEdit(b, c);
        }
        if (!tooltip.isEmpty()) w->setToolTip(tooltip);
        g->addWidget(w, row, col++);
    }
    if (!tooltip.isEmpty()) label->setToolTip(tooltip);
}

void addPanelHeads(QGridLayout* g) {
    for (int k = 1; k <= 5; ++k) {
        auto* h = new QLabel(QStringLiteral("Panneau %1").arg(k));
        h->setAlignment(Qt::AlignCenter);
        g->addWidget(h, 0, k);
    }
}

void addSurfaceHeads(QGridLayout* g) {
    const QString heads[] = {QStringLiteral("Pos G"), QStringLiteral("Pos D"), QStringLiteral("% corde G"),
                             QStringLiteral("% corde D")};
    for (int i = 0; i < 4; ++i) g->addWidget(new QLabel(heads[i]), 0, i + 1);
}

QWidget* addField(SheetBridge& b, QFormLayout* f, const QString& caption, Cell c, const QString& tooltip) {
    auto* e = new CellEdit(b, c);
    if (!tooltip.isEmpty()) e->setToolTip(tooltip);
    f->addRow(caption, e);
    return e;
}

QWidget* addResult(SheetBridge& b, QFormLayout* f, const QString& caption, Cell c) {
    auto* l = new CellLabel(b, c);
    l->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    l->setFrameShape(QFrame::StyledPanel);
    f->addRow(caption, l);
    return l;
}

}  // namespace tarvokin::ui
