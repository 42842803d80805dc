// Small builders shared by the panels: a captioned row of bound cells.
#pragma once

#include <QFormLayout>
#include <QGridLayout>
#include <QString>
#include <initializer_list>

#include "core/cells.h"

namespace tarvokin::ui {

class SheetBridge;

// Row `row` of a grid: a caption, then one field per cell. Cells listed in
// `readOnly` are shown as results.
void addGridRow(SheetBridge& b, QGridLayout* g, int row, const QString& caption, std::initializer_list<Cell> cells,
                const QString& tooltip = {}, std::initializer_list<Cell> readOnly = {});

// Row 0 of a grid of panels: "Panneau 1" .. "Panneau 5" over columns 1..5.
void addPanelHeads(QGridLayout* g);
// Row 0 of a grid of control surfaces: both span positions and both chord shares.
void addSurfaceHeads(QGridLayout* g);

// Captioned field or result in a form.
QWidget* addField(SheetBridge& b, QFormLayout* f, const QString& caption, Cell c, const QString& tooltip = {});
QWidget* addResult(SheetBridge& b, QFormLayout* f, const QString& caption, Cell c);

}  // namespace tarvokin::ui
